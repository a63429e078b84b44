#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "source/source_test_util.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

using testing::CsvHeader;
using testing::CsvText;
using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

TEST(OpenSourceTest, TheKindIsTheLastThreeCharactersExactly) {
  struct Case {
    const char* path;
    int16_t status;
  };
  const std::string csv = CsvText(CsvHeader());
  const Case cases[] = {{"m.xml", 0}, {"m.csv", 0}, {"m.XML", 1}, {"m.CSV", 1}, {"m.Xml", 1},
                        {"m.txt", 1}, {"xml", 0},   {"ml", 1},    {"", 1},      {"mxml", 0}};
  for (const Case& c : cases) {
    SourceReader reader;
    EXPECT_EQ(reader.OpenSourceBytes(c.path, csv), c.status) << c.path;
    EXPECT_EQ(reader.SourcePath(), c.path);
  }
}

TEST(OpenSourceTest, FilesOnDisk) {
  ::z4400::testing::ScratchDir dir;
  SourceReader reader;
  // A missing CSV cannot be read as a grid; a missing XML opens empty and
  // fails at the general information.
  EXPECT_EQ(reader.OpenSource((dir / "missing.csv").string()), -1);
  EXPECT_EQ(reader.ErrorText(), "ファイルが不正です");
  EXPECT_EQ(reader.OpenSource((dir / "missing.xml").string()), 0);
  GeneralInfo info;
  EXPECT_EQ(reader.ReadGeneralInfo(info), 1);
  EXPECT_EQ(reader.ErrorText(), "Not MQD Data.");

  // A file over 100 MB is refused before it is read (a sparse file here).
  for (const char* name : {"huge.xml", "huge.csv"}) {
    const std::filesystem::path huge = dir / name;
    std::ofstream(huge).put('x');
    std::filesystem::resize_file(huge, kMaxSourceBytes + 1);
    EXPECT_EQ(reader.OpenSource(huge.string()), -1) << name;
    EXPECT_EQ(reader.ErrorText(), "The file is larger than 100 MB.");
  }

  const std::filesystem::path good = dir / "good.csv";
  std::ofstream(good, std::ios::binary) << CsvText(CsvHeader());
  EXPECT_EQ(reader.OpenSource(good.string()), 0);
  EXPECT_EQ(reader.CsvValue("MODEL"), "Z4510");
}

TEST(OpenSourceTest, OneReaderReadsFileAfterFileOnDisk) {
  ::z4400::testing::ScratchDir dir;
  const auto write = [&](const char* name, const std::string& text) {
    std::ofstream(dir / name, std::ios::binary) << text;
    return (dir / name).string();
  };
  // A long file, a short one, a broken one: the reader keeps its memory
  // from file to file, and each file answers for itself alone, also after
  // its document was given back once everything was read.
  const std::string padding(200000, ' ');
  const std::string large =
      write("large.xml", XmlText(padding + XmlParameters({{"TITLE", "first"}, {"TP", "501"}})));
  const std::string small = write("small.xml", XmlText(XmlParameters({{"TITLE", "second"}})));
  const std::string broken = write("broken.xml", "<AnalyserData Model=\"Z4420\"><Parameter");
  struct Case {
    const std::string& path;
    const char* title;
    const char* points;
  };
  const Case cases[] = {{large, "first", "501"},
                        {small, "second", ""},
                        {broken, "", ""},  // nothing left of the file before
                        {large, "first", "501"},
                        {small, "second", ""}};
  SourceReader reader;
  for (const Case& c : cases) {
    ASSERT_EQ(reader.OpenSource(c.path), 0) << c.path;
    EXPECT_EQ(reader.FileParameter("TITLE"), c.title) << c.path;
    EXPECT_EQ(reader.FileParameter("TP"), c.points) << c.path;
    reader.ReleaseDocument();
    EXPECT_EQ(reader.FileParameter("TITLE"), "") << c.path;
  }
}

TEST(ScreenParameterTest, CsvTakesALaterScreensValueWhenMissing) {
  testing::Rows rows = CsvHeader("Z4510", 3);
  rows.insert(rows.end(), {"Context Nb,0", "CF,100", "Context Nb,1", "CF,200", "SP,5",
                           "Context Nb,2", "CF,300", "RB,7", "end,0"});
  auto reader = OpenText("a.csv", CsvText(rows));
  struct Case {
    const char* id;
    int screen;
    const char* expected;
  };
  const Case cases[] = {
      {"CF", 0, "100"}, {"CF", 1, "200"},
      {"CF", 2, "300"}, {"SP", 0, "5"},  // missing on screen 0: the next screen's value
      {"SP", 2, ""},                     // missing on the last screen: empty
      {"RB", 0, "7"},   {"XX", 0, ""},
      {"CF", 5, "100"},  // no such screen: the search starts at the top
  };
  for (const Case& c : cases) {
    EXPECT_EQ(reader->ScreenParameter(c.id, c.screen), c.expected) << c.id << " " << c.screen;
  }
}

TEST(ScreenParameterTest, XmlAnswersAsTheQueriesWould) {
  const std::string body = XmlParameters({{"TITLE", "first"}, {"TITLE", "second"}}) +
                           "<Context Nb=\"0\">" +
                           XmlParameters({{"CF", "1"}, {"CF", "2"}, {"SP", ""}}) +
                           "<Parameter Id=\"NOVALUE\"/></Context>\n"
                           "<Context Nb=\"00\">" +
                           XmlParameters({{"RB", "9"}}) +
                           "</Context>\n"
                           "<Context Nb=\"1\">" +
                           XmlParameters({{"CF", "3"}}) +
                           "</Context>\n"
                           "<Context Nb=\"0\">" +
                           XmlParameters({{"RB", "4"}}) +
                           "</Context>\n"
                           "<Other><Context Nb=\"2\">" +
                           XmlParameters({{"CF", "5"}}) + "</Context></Other>\n";
  auto reader = OpenText("a.xml", XmlText(body));
  struct Case {
    const char* id;
    int screen;
    const char* expected;
  };
  const Case cases[] = {
      {"CF", 0, "1"},                  // first in document order
      {"CF", 1, "3"}, {"RB", 0, "4"},  // "00" is not screen 0, a later "0" is
      {"SP", 0, ""},  {"NOVALUE", 0, ""},
      {"XX", 0, ""},  {"CF", 2, ""},  // only contexts directly under AnalyserData
  };
  for (const Case& c : cases) {
    EXPECT_EQ(reader->ScreenParameter(c.id, c.screen), c.expected) << c.id << " " << c.screen;
  }
  EXPECT_EQ(reader->FileParameter("TITLE"), "first");
  EXPECT_EQ(reader->FileParameter("CF"), "");
}

TEST(ScreenParameterTest, EntityDeclarationsExpandNothing) {
  const std::string text =
      "<?xml version=\"1.0\"?>\n<!DOCTYPE AnalyserData [<!ENTITY big \"EXPANDED\">]>\n"
      "<AnalyserData Model=\"Z4420\" Year=\"2023\" Month=\"04\" Day=\"18\">"
      "<Parameter Id=\"TITLE\" Value=\"&big;\"/></AnalyserData>";
  auto reader = OpenText("a.xml", text);
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.Title.find("EXPANDED"), std::string::npos) << info.Title;
}

TEST(TraceCountTest, CsvScreensHoldAtMostTenTraceTables) {
  for (const int tables : {0, 1, 10, 11}) {
    testing::Rows rows = CsvHeader("Z4510", 2, 1);
    rows.push_back("Context Nb,0");
    for (int t = 1; t <= tables; ++t) {
      rows.insert(rows.end(), {"Trace Nb," + std::to_string(t), "UNIT,,,dBm", "Point,0,1,2"});
    }
    rows.insert(rows.end(), {"Context Nb,1", "Trace Nb,1", "UNIT,,,dBm", "Point,0,1,2", "end"});
    auto reader = OpenText("a.csv", CsvText(rows));
    if (tables <= 10) {
      EXPECT_EQ(reader->ScreenTraceCount(0), tables);
      EXPECT_EQ(reader->TraceTableRows()[static_cast<size_t>(tables)], -1);
      EXPECT_EQ(reader->ScreenTraceCount(1), 1);
      EXPECT_EQ(reader->TraceTableCount(), tables + 1);
    } else {
      EXPECT_THROW(reader->ScreenTraceCount(0), RuntimeFailure);
    }
  }
}

TEST(TraceCountTest, XmlCountsTheScreensTables) {
  const std::string body =
      "<Context Nb=\"0\"><Trace><Table/></Trace><Trace><Table/><Table/></Trace></Context>"
      "<Context Nb=\"1\"><Trace/></Context><Trace><Table/></Trace>";
  auto reader = OpenText("a.xml", XmlText(body));
  EXPECT_EQ(reader->ScreenTraceCount(0), 3);
  EXPECT_EQ(reader->ScreenTraceCount(1), 0);
  EXPECT_EQ(reader->ScreenTraceCount(2), 0);
  EXPECT_EQ(reader->TraceTableCount(), 4);
}

}  // namespace
}  // namespace z4400
