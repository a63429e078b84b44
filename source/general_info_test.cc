#include <gtest/gtest.h>

#include "source/source_test_util.h"

namespace z4400 {
namespace {

using testing::CsvHeader;
using testing::CsvText;
using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

TEST(ModelClassTest, OnlyTheSevenModelsAreAccepted) {
  SourceReader reader;
  struct Case {
    const char* model;
    const char* expected;
  };
  const Case cases[] = {{"Z4410", "MQD"}, {"Z4420", "MQD"}, {"Z4430", "MQD"}, {"Z4510", "KTR"},
                        {"Z4520", "KTR"}, {"Z4530", "KTR"}, {"Z4540", "KTR"}, {"Z4450", ""},
                        {"Z4420 ", ""},   {"z4420", ""},    {"", ""}};
  for (const Case& c : cases) {
    reader.SetErrorText("");
    EXPECT_EQ(reader.ModelClass(c.model), c.expected) << "\"" << c.model << "\"";
    EXPECT_EQ(reader.ErrorText(), *c.expected ? "" : "Not MQD data.") << c.model;
  }
}

TEST(GeneralInfoTest, XmlAndCsvFillTheSameRecord) {
  const std::string xml =
      XmlText(XmlParameters({{"TITLE", "Test title"}, {"NBCTXT", "2"}, {"TP", "401"}}) +
              "<Context Nb=\"0\"><Trace><Table/></Trace></Context>\n"
              "<Context Nb=\"1\"><Trace><Table/></Trace>"
              "<Trace><Table/></Trace></Context>\n");
  auto from_xml = OpenText("/data/meas.xml", xml);
  GeneralInfo info;
  ASSERT_EQ(from_xml->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.SourcePath, "/data/meas.xml");
  EXPECT_EQ(info.Model, "Z4420");
  EXPECT_EQ(info.Date, "2023-04-18");
  EXPECT_EQ(info.Title, "Test title");
  EXPECT_EQ(info.ContextCount, 2);
  EXPECT_EQ(info.TraceTableCount, 3);
  EXPECT_EQ(info.TracePoints, 401);
  EXPECT_EQ(from_xml->CurrentTracePoints(), 401);
  EXPECT_EQ(info.FixedA, 14592);
  EXPECT_EQ(info.FixedB, 1792);
  EXPECT_EQ(info.FixedC, 10);

  testing::Rows rows = CsvHeader("Z4510", 1, 3);
  rows.insert(rows.end(), {"Context Nb,0", "Trace Nb,1", "TRACE,A", "UNIT,,,dBm", "Point,0,1,2",
                           "Point,1,1,2", "Point,2,1,2", "Trace Nb,2", "UNIT,,,dBm", "Point,0,1,2",
                           "Point,1,1,2", "Point,2,1,2"});
  auto from_csv = OpenText("/data/meas.csv", CsvText(rows));
  GeneralInfo csv_info;
  ASSERT_EQ(from_csv->ReadGeneralInfo(csv_info), 0);
  EXPECT_EQ(csv_info.Model, "Z4510");
  EXPECT_EQ(csv_info.Date, "2021-06-30");
  EXPECT_EQ(csv_info.Title, "Test title");
  EXPECT_EQ(csv_info.ContextCount, 1);
  EXPECT_EQ(csv_info.TraceTableCount, 2);
  EXPECT_EQ(csv_info.TracePoints, 3);
}

TEST(GeneralInfoTest, RejectedAndUnreadableFiles) {
  struct Case {
    const char* what;
    const char* name;
    std::string text;
    const char* error;
  };
  testing::Rows no_day = CsvHeader();
  no_day.erase(no_day.begin() + 3);
  testing::Rows day_last = CsvHeader();
  day_last.erase(day_last.begin() + 3);
  day_last.push_back("DAY 01,YEAR 2020,MONTH 01");  // the last row is never searched
  const std::string tp = XmlParameters({{"NBCTXT", "1"}});
  const Case cases[] = {
      {"trailing blank after the model", "a.xml", XmlText(tp, "Z4420 "), "Not MQD data."},
      {"unknown CSV model", "a.csv", CsvText(CsvHeader("Z4450")), "Not MQD data."},
      {"CSV model with a blank", "a.csv", CsvText(CsvHeader("Z4510 ")), "Not MQD data."},
      {"CSV without a DAY row", "a.csv", CsvText(no_day), "Not MQD Data."},
      {"CSV with the DAY row last", "a.csv", CsvText(day_last), "Not MQD Data."},
      {"XML without Year", "a.xml", "<AnalyserData Model=\"Z4420\" Month=\"1\" Day=\"2\"/>",
       "Not MQD Data."},
      {"XML without Model", "a.xml", "<AnalyserData Year=\"1\" Month=\"1\" Day=\"2\"/>",
       "Not MQD Data."},
      {"XML without AnalyserData", "a.xml", "<Other Model=\"Z4420\"/>", "Not MQD Data."},
      {"XML that does not parse", "a.xml", XmlText(tp) + "<", "Not MQD Data."},
      {"TP beyond 16 bits", "a.xml", XmlText(XmlParameters({{"TP", "40000"}})), "Not MQD Data."},
      {"TP of two thousand million", "a.xml", XmlText(XmlParameters({{"TP", "2000000000"}})),
       "Not MQD Data."},
      {"TP beyond 32 bits", "a.xml", XmlText(XmlParameters({{"TP", "3e9"}})), "Not MQD Data."},
      {"NBCTXT too large for a double", "a.xml", XmlText(XmlParameters({{"NBCTXT", "1e999"}})),
       "Not MQD Data."},
  };
  for (const Case& c : cases) {
    auto reader = OpenText(c.name, c.text);
    GeneralInfo info;
    EXPECT_EQ(reader->ReadGeneralInfo(info), 1) << c.what;
    EXPECT_EQ(reader->ErrorText(), c.error) << c.what;
    EXPECT_EQ(info.SourcePath, c.name) << c.what;
  }
}

TEST(GeneralInfoTest, MissingCountsReadAsZero) {
  auto reader = OpenText("a.xml", XmlText(XmlParameters({{"TITLE", "x"}})));
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.ContextCount, 0);
  EXPECT_EQ(info.TracePoints, 0);
  // Rounded half to even, and a huge screen count is read as it stands.
  reader = OpenText("a.xml", XmlText(XmlParameters({{"NBCTXT", "999999"}, {"TP", "2.5"}})));
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  EXPECT_EQ(info.ContextCount, 999999);
  EXPECT_EQ(info.TracePoints, 2);
  ScreenInfo screen;
  EXPECT_THROW(reader->ReadScreenConfig(3, screen), RuntimeFailure);
}

}  // namespace
}  // namespace z4400
