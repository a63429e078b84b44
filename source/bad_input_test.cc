// Files that are not what they claim to be: every one ends in a status, an
// error text or a RuntimeFailure, never in a crash or a hang.
#include <gtest/gtest.h>

#include <string>

#include "source/source_test_util.h"
#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

using testing::CsvHeader;
using testing::CsvText;
using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

/// Reads everything the way a conversion does. Returns "ok", the error text
/// of a refused file, or "failure: …" for a run-time failure.
std::string ReadAll(const std::string& name, const std::string& bytes) {
  SourceReader reader;
  try {
    const int16_t opened = reader.OpenSourceBytes(name, bytes);
    if (opened != 0) return "open " + std::to_string(opened) + ": " + reader.ErrorText();
    GeneralInfo info;
    if (reader.ReadGeneralInfo(info) != 0) return reader.ErrorText();
    ScreenInfo screen;
    for (int s = 0; s < info.ContextCount; ++s) {
      if (reader.ReadScreenConfig(s, screen) != 0) return "unknown function";
      reader.SetTimeAxis(screen, s);
      reader.ReadMarkers(s);
      int16_t in_use = 0;
      reader.SetXScaleType(s, screen, XScaleSettings{}, in_use);
      const int32_t traces = reader.ScreenTraceCount(s);
      if (traces > 0) reader.XAxisData(s);
      for (int t = 0; t < traces; ++t) reader.ReadTraceY(s, t);
    }
    return "ok";
  } catch (const RuntimeFailure& failure) {
    return std::string("failure: ") + failure.what();
  }
}

std::string Generated(bool xml) {
  GeneratorOptions options;
  options.points = 51;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kIqTime};
  const GeneratedFile file = GenerateInstrumentFile(options);
  return xml ? InstrumentXml(file) : InstrumentCsv(file);
}

std::string Repeat(const std::string& text, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

std::string Utf16(const std::string& ascii) {
  std::string out = "\xFF\xFE";
  for (const char c : ascii) {
    out.push_back(c);
    out.push_back('\0');
  }
  return out;
}

TEST(BadInputTest, EachEndsInItsOutcome) {
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>((i * 7919) % 256));
  const std::string xml = Generated(true);
  const std::string csv = Generated(false);
  struct Case {
    const char* what;
    const char* name;
    std::string bytes;
    std::string outcome;  // exact, or a prefix ending in "…"
  };
  const Case cases[] = {
      {"empty XML", "a.xml", "", "Not MQD Data."},
      {"empty CSV", "a.csv", "", "open -1: ファイルが不正です"},
      {"binary XML", "a.xml", binary, "Not MQD Data."},
      {"binary CSV", "a.csv", binary, "Not MQD data."},
      {"NUL bytes CSV", "a.csv", std::string(100, '\0'), "open -1: ファイルが不正です"},
      {"truncated XML", "a.xml", xml.substr(0, xml.size() / 2), "Not MQD Data."},
      {"truncated CSV", "a.csv", csv.substr(0, csv.size() / 2), "failure: …"},
      {"UTF-16 XML with its mark", "a.xml", Utf16(xml), "ok"},
      {"UTF-16 CSV", "a.csv", Utf16(csv), "Not MQD data."},
      {"CSV with a UTF-8 mark", "a.csv", "\xEF\xBB\xBF" + csv, "ok"},
      {"other extension", "a.txt", csv, "open 1: "},
      {"single-field lines", "a.csv", "MODEL\r\nTP\r\n", "open -1: ファイルが不正です"},
      {"huge point count", "a.xml", XmlText(XmlParameters({{"TP", "2000000000"}})),
       "Not MQD Data."},
      {"huge CSV point count", "a.csv",
       CsvText({"MODEL,Z4510", "DAY 1,YEAR 1,MONTH 1", "TP,2000000000", "x,y"}), "Not MQD Data."},
      {"huge screen count", "a.xml", XmlText(XmlParameters({{"NBCTXT", "999999"}})), "failure: …"},
      {"points beyond the CSV traces", "a.csv",
       CsvText({"MODEL,Z4510", "DAY 1,YEAR 1,MONTH 1", "NBCTXT,1", "TP,32767", "Context Nb,0",
                "Trace Nb,1", "UNIT,,,dBm", "Point,0,1,2", "end,1"}),
       "failure: …"},
      {"absurd numbers", "a.xml",
       XmlText(XmlParameters({{"NBCTXT", "1"}, {"TP", "3"}}) + "<Context Nb=\"0\">" +
               XmlParameters({{"SP", "1e308"}, {"FA", "-1e308"}, {"FB", "1e308"}, {"VS", "LOG"}}) +
               "<Trace><Table/></Trace></Context>"),
       "failure: …"},
      {"negative point count", "a.xml",
       XmlText(XmlParameters({{"NBCTXT", "1"}, {"TP", "-5"}}) +
               "<Context Nb=\"0\"><Trace><Table/></Trace></Context>"),
       "ok"},
      {"deep nesting", "a.xml", XmlText(Repeat("<a>", 20000) + Repeat("</a>", 20000)), "ok"},
  };
  for (const Case& c : cases) {
    const std::string outcome = ReadAll(c.name, c.bytes);
    if (c.outcome.size() >= 3 && c.outcome.ends_with("…")) {
      const std::string prefix = c.outcome.substr(0, c.outcome.size() - 3);
      EXPECT_EQ(outcome.substr(0, prefix.size()), prefix) << c.what << ": " << outcome;
    } else {
      EXPECT_EQ(outcome, c.outcome) << c.what;
    }
  }
}

TEST(BadInputTest, CsvTextDecoding) {
  // Latin-1 bytes (the instrument's micro sign) become UTF-8 characters.
  testing::Rows rows = CsvHeader();
  rows[2] = "TITLE,Level in dB\xB5V";
  auto reader = OpenText("a.csv", CsvText(rows));
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.Title, "Level in dB\xC2\xB5V");
  // UTF-8 stays as it is.
  rows[2] = "TITLE,Niveau \xC3\xA9lev\xC3\xA9";
  reader = OpenText("a.csv", CsvText(rows));
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.Title, "Niveau \xC3\xA9lev\xC3\xA9");
}

TEST(BadInputTest, XmlDeclaredLatin1IsDecoded) {
  const std::string text =
      "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
      "<AnalyserData Model=\"Z4420\" Year=\"2023\" Month=\"04\" Day=\"18\">"
      "<Parameter Id=\"TITLE\" Value=\"dB\xB5V\"/></AnalyserData>";
  auto reader = OpenText("a.xml", text);
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.Title, "dB\xC2\xB5V");
}

}  // namespace
}  // namespace z4400
