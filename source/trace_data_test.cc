#include <gtest/gtest.h>

#include "source/source_test_util.h"

namespace z4400 {
namespace {

using testing::CsvHeader;
using testing::CsvText;
using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

std::string Items(std::initializer_list<std::pair<const char*, const char*>> items) {
  std::string text;
  for (const auto& [point, level] : items) {
    text += std::string("<Item Point=\"") + point + "\" Lvl=\"" + level + "\"/>";
  }
  return text;
}

TEST(ReadTraceYTest, XmlItemsByPointNumber) {
  const std::string body = XmlParameters({{"TP", "7"}, {"NBCTXT", "1"}}) + "<Context Nb=\"0\">" +
                           XmlParameters({{"AUNITS", "dBm"}, {"VS", "LOG"}}) +
                           "<Trace><Table Unit=\"dBuV\">" +
                           Items({{"0", "-1.5"},
                                  {"1", "2"},
                                  {"2", "3"},
                                  {"2", "99"},
                                  {"03", "4"},
                                  {" 4", "5"},
                                  {"6", "x"},
                                  {"4.0", "7"},
                                  {"-0", "8"},
                                  {"7", "9"}}) +
                           "<Item Point=\"1\"/></Table></Trace>"
                           "<Trace><Table>" +
                           Items({{"1", "10"}}) + "</Table></Trace></Context>";
  auto reader = OpenText("a.xml", XmlText(body));
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  ScreenInfo screen;
  ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
  const TraceData first = reader->ReadTraceY(0, 0);
  // Point 2 twice: the first item counts. "03", " 4", "4.0" and "-0" are not
  // point numbers as written in decimal, so points 3, 4 and 5 are missing.
  EXPECT_EQ(first.Values, (std::vector<double>{-1.5, 2, 3, -200, -200, -200, 0}));
  EXPECT_EQ(first.Copy, first.Values);
  EXPECT_EQ(first.Unit, "dBuV");
  EXPECT_EQ(first.ScreenUnit, "dBm");
  const TraceData second = reader->ReadTraceY(0, 1);
  EXPECT_EQ(second.Values, (std::vector<double>{-200, 10, -200, -200, -200, -200, -200}));
  EXPECT_EQ(second.Unit, "");
  EXPECT_THROW(reader->ReadTraceY(0, 2), RuntimeFailure);  // no third table
  EXPECT_THROW(reader->ReadTraceY(1, 0), RuntimeFailure);
}

testing::Rows CsvScreen(int points) {
  testing::Rows rows = CsvHeader("Z4510", 2, points);
  rows.insert(rows.end(),
              {"Context Nb,0", "AUNITS,dBuV",    "VS,LOG",         "Trace Nb,1",    "TRACE,A",
               "UNIT,,,dBuV",  "Point,0,10,1.5", "Point,1,20,2.5", "Point,2,30,-3", "Trace Nb,2",
               "UNIT,,,V",     "Point,1,10,9",   "Point,0,10,7",   "Point,1,20,8",  "Point,2,20,x9",
               "Trace Nb,3",   "UNIT,,,V",       "Point,1,1,1",    "Context Nb,1",  "AUNITS,dBm",
               "Trace Nb,1",   "UNIT,,,dBm",     "Point,0,1,5",    "Point,1,1,6",   "Point,2,1,7",
               "end,0"});
  return rows;
}

TEST(ReadTraceYTest, CsvTracesStartAtTheirPointZeroRow) {
  auto reader = OpenText("a.csv", CsvText(CsvScreen(3)));
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  ScreenInfo screen;
  ASSERT_EQ(reader->ReadScreenConfig(0, screen), 0);
  ASSERT_EQ(reader->ScreenTraceCount(0), 3);
  const TraceData a = reader->ReadTraceY(0, 0);
  EXPECT_EQ(a.Values, (std::vector<double>{1.5, 2.5, -3}));
  EXPECT_EQ(a.Unit, "dBuV");
  EXPECT_EQ(a.ScreenUnit, "dBuV");
  const TraceData b = reader->ReadTraceY(0, 1);
  EXPECT_EQ(b.Values, (std::vector<double>{7, 8, 0}));  // from "Point,0", level "x9" is 0
  EXPECT_EQ(b.Unit, "9");  // column 3 of the row above "Point,0", here a stray point row
  const TraceData c = reader->ReadTraceY(0, 2);  // no "Point,0" row: zeros and no unit
  EXPECT_EQ(c.Values, (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(c.Unit, "");
  EXPECT_EQ(c.ScreenUnit, "");

  ASSERT_EQ(reader->ScreenTraceCount(1), 1);
  ASSERT_EQ(reader->ReadScreenConfig(1, screen), 0);
  EXPECT_EQ(reader->ReadTraceY(1, 0).Values, (std::vector<double>{5, 6, 7}));
  EXPECT_THROW(reader->ReadTraceY(1, 10), RuntimeFailure);  // past the 11 trace rows
}

TEST(ReadTraceYTest, CsvPointsPastTheGridAreRunTimeFailures) {
  // TP says 30 points, the last trace holds 3.
  auto reader = OpenText("a.csv", CsvText(CsvScreen(30)));
  GeneralInfo info;
  ASSERT_EQ(reader->ReadGeneralInfo(info), 0);
  ASSERT_EQ(reader->ScreenTraceCount(1), 1);
  EXPECT_THROW(reader->ReadTraceY(1, 0), RuntimeFailure);
}

TEST(PowerOfTenTest, AboveAndBelow) {
  struct Case {
    double x;
    double above;
    double below;
  };
  const Case cases[] = {
      {1, 1, 1},     {1.5, 10, 1},  {100, 100, 100}, {95, 100, 100},  // 95 × 1.1 ≥ 100
      {80, 100, 10}, {0.5, 1, 0.1}, {-3, 1, 0},      {9000, 10000, 1000}, {2e10, 1e11, 1e10},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(PowerOfTenAbove(c.x), c.above) << c.x;
    if (c.x > 0) {
      EXPECT_DOUBLE_EQ(PowerOfTenBelow(c.x), c.below) << c.x;
    }
  }
  EXPECT_EQ(PowerOfTenBelow(0), 0);   // runs until the division underflows
  EXPECT_EQ(PowerOfTenBelow(-3), 0);  // and stops there below 0 as well
}

/// A one-screen XML reader whose screen has `parameters`, configuration read.
std::unique_ptr<SourceReader> LogScreen(const std::string& parameters, ScreenInfo& info) {
  auto reader =
      OpenText("a.xml", XmlText(XmlParameters({{"TP", "5"}}) + "<Context Nb=\"0\">" + parameters +
                                XmlParameters({{"VS", "LOG"}}) + "</Context>"));
  GeneralInfo general;
  EXPECT_EQ(reader->ReadGeneralInfo(general), 0);
  EXPECT_EQ(reader->ReadScreenConfig(0, info), 0);
  return reader;
}

TEST(XScaleTypeTest, ZeroSpanAndLinearScreens) {
  ScreenInfo info;
  auto reader = LogScreen(XmlParameters({{"HS", "LOG"}, {"SP", "0"}, {"SW", "50000"}}), info);
  EXPECT_EQ(reader->SetTimeAxis(info, 0).IsTime, -1);
  EXPECT_EQ(reader->TimeAxis(0).Unit, "sec");
  EXPECT_EQ(reader->TimeAxis(0).Factor, 1);
  int16_t in_use = 0;
  const XAxisScale scale = reader->SetXScaleType(0, info, XScaleSettings{}, in_use);
  EXPECT_EQ(scale.LogX, -1);
  EXPECT_EQ(info.LogX, -1);
  EXPECT_EQ(scale.DataMin, 0);
  EXPECT_EQ(scale.DataMax, 0.05);
  EXPECT_EQ(scale.AxisMax, 1);
  EXPECT_EQ(scale.AxisMin, 0.1);

  reader = LogScreen(XmlParameters({{"HS", "log"}, {"SP", "10"}}), info);
  const XAxisScale linear = reader->SetXScaleType(0, info, XScaleSettings{}, in_use);
  EXPECT_EQ(linear.LogX, 0);
  EXPECT_EQ(info.LogX, 0);
  const XAxisKind kind = reader->SetTimeAxis(info, 0);
  EXPECT_EQ(kind.IsTime, 0);
  EXPECT_EQ(reader->TimeAxis(0).IsTime, 0);
}

TEST(XScaleTypeTest, FrequencyAxes) {
  struct Case {
    const char* what;
    const char* fa;
    const char* fb;
    XScaleSettings settings;
    int16_t in_use_before;
    double axis_min, axis_max;
    int16_t start_negative;
    int16_t in_use_after;
  };
  const Case cases[] = {
      {"version 16", "9000", "1000000000", {}, 0, 1000, 1e9, 0, 0},
      {"version 11", "9000", "900000000", {1000, true, 11, 1}, 0, 1000, 1e9, 0, 0},
      {"factor 1000", "9000", "900000000", {1000, true, 16, 1000}, 0, 1, 900000, 0, 0},
      {"negative, option on", "-1000", "90000", {1000, true, 16, 1}, 0, 1000, 90000, -1, 0},
      {"negative, option off", "-1000", "90000", {1000, false, 16, 1}, 0, 10000, 90000, -1, 1},
      {"negative, flag set", "-1000", "90000", {1000, false, 16, 1}, 1, 10000, 90000, 0, 1},
      {"threshold by factor", "-1000", "90000", {500, true, 16, 10}, 0, 50, 9000, -1, 0},
  };
  for (const Case& c : cases) {
    ScreenInfo info;
    auto reader =
        LogScreen(XmlParameters({{"HS", "LOG"}, {"SP", "1"}, {"FA", c.fa}, {"FB", c.fb}}), info);
    int16_t in_use = c.in_use_before;
    const XAxisScale scale = reader->SetXScaleType(0, info, c.settings, in_use);
    EXPECT_DOUBLE_EQ(scale.AxisMin, c.axis_min) << c.what;
    EXPECT_DOUBLE_EQ(scale.AxisMax, c.axis_max) << c.what;
    EXPECT_EQ(scale.StartNegative, c.start_negative) << c.what;
    EXPECT_EQ(info.StartNegative, c.start_negative) << c.what;
    EXPECT_EQ(in_use, c.in_use_after) << c.what;
  }
}

}  // namespace
}  // namespace z4400
