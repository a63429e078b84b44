#include <gtest/gtest.h>

#include <cmath>

#include "source/source_test_util.h"

namespace z4400 {
namespace {

using testing::OpenText;
using testing::XmlParameters;
using testing::XmlText;

/// A one-screen XML file with the parameters `screen` and 5 points.
std::unique_ptr<SourceReader> OneScreen(const std::string& screen, int points = 5) {
  auto reader = OpenText(
      "a.xml", XmlText(XmlParameters({{"NBCTXT", "1"}}) + "<Parameter Id=\"TP\" Value=\"" +
                       std::to_string(points) + "\"/><Context Nb=\"0\">" + screen + "</Context>"));
  GeneralInfo info;
  EXPECT_EQ(reader->ReadGeneralInfo(info), 0);
  return reader;
}

TEST(ScreenConfigTest, SpectrumParameters) {
  auto reader = OneScreen(XmlParameters({{"CF", "98000000"},
                                         {"FA", "88000000"},
                                         {"SP", "20000000"},
                                         {"FB", "108000000"},
                                         {"FOON", "on"},
                                         {"FO", "5"},
                                         {"SW", "2000000"},
                                         {"RB", "1000"},
                                         {"VB", "3000"},
                                         {"RL", "-20"},
                                         {"ROON", "ON"},
                                         {"RO", "3"},
                                         {"ATDUALCH", "10"},
                                         {"OHMDUALCH", "75"},
                                         {"DGT_EXE", "OFF"},
                                         {"AUNITS", "dBmV"},
                                         {"DD", "5"},
                                         {"VS", "LOG"}}));
  ScreenInfo info;
  ASSERT_EQ(reader->ReadScreenConfig(0, info), 0);
  EXPECT_EQ(info.CenterFrequency, 98000000);
  EXPECT_EQ(info.StartFrequency, 88000000);
  EXPECT_EQ(info.Span, 20000000);
  EXPECT_EQ(info.StopFrequency, 108000000);
  EXPECT_EQ(info.FrequencyOffset, 0);  // "on" is not "ON"
  EXPECT_EQ(info.SweepTime, 2);        // microseconds in the file
  EXPECT_EQ(info.ReferenceOffset, 3);
  EXPECT_EQ(info.DualChannelImpedance, 75);
  EXPECT_EQ(reader->Levels().Impedance(), 75);
  EXPECT_EQ(info.LevelUnit, "dBmV");
  EXPECT_EQ(info.LevelUnitCode, 1);
  EXPECT_EQ(info.VerticalScale, 5);
  EXPECT_EQ(info.LogScale, -1);
  EXPECT_EQ(info.ScaledReferenceLevel, -20);  // log axis in a dB unit: unchanged
  EXPECT_EQ(reader->Vertical(0).VerticalUnit, "dBmV");
  EXPECT_EQ(reader->Vertical(0).VerticalFactor, 1);
  const ScreenSummary& summary = reader->Summary(0);
  EXPECT_EQ(summary.Span, 20000000);
  EXPECT_EQ(summary.SweepTime, 2);
  EXPECT_EQ(summary.LevelUnit, "dBmV");
  EXPECT_EQ(summary.DualChannelImpedance, 75);
}

TEST(ScreenConfigTest, LevelUnitsAndDigitalFunctions) {
  struct Case {
    std::string parameters;
    const char* unit;
    int32_t code;
    double scale;
  };
  const Case cases[] = {
      {XmlParameters({{"AUNITS", "dBuVemf"}, {"DD", "2"}}), "dBuVemf", 3, 2},
      {XmlParameters({{"AUNITS", "Watts"}, {"DD", "2"}}), "Watts", 5, 2},
      {XmlParameters({{"AUNITS", "furlongs"}, {"DD", "2"}}), "furlongs", 42, 2},  // code kept
      {XmlParameters({{"DGT_EXE", "ON"},
                      {"DGT_MEASFUNCTION", "IQ-Time"},
                      {"AUNITS", "dBm"},
                      {"DGT_VERTSCALE_IQ", "0.1"},
                      {"DD", "7"}}),
       "V", 10, 0.1},
      {XmlParameters(
           {{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", "Freq-Time"}, {"DGT_VERTSCALE_FREQ", "25000"}}),
       "Hz", 7, 25000},
      {XmlParameters(
           {{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", "Phase-Time"}, {"DGT_VERTSCALE_PHASE", "45"}}),
       "deg", 8, 45},
      {XmlParameters(
           {{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", "Power-Time"}, {"DGT_VERTSCALE_POWER", "10"}}),
       "dBm", 9, 10},
      {XmlParameters(
           {{"DGT_EXE", "ON"}, {"DGT_MEASFUNCTION", "PartialFFT"}, {"DGT_VERTSCALE_PARTFFT", "5"}}),
       "dBm", 11, 5},
      {XmlParameters({{"DGT_EXE", "ON"},
                      {"DGT_MEASFUNCTION", "Phase-Freq"},
                      {"DGT_VERTSCALE_PHAFREQ", "30"}}),
       "deg", 12, 30},
  };
  for (const Case& c : cases) {
    auto reader = OneScreen(c.parameters + XmlParameters({{"VS", "LOG"}}));
    ScreenInfo info;
    info.LevelUnitCode = 42;
    ASSERT_EQ(reader->ReadScreenConfig(0, info), 0) << c.unit;
    EXPECT_EQ(info.LevelUnit, c.unit);
    EXPECT_EQ(info.LevelUnitCode, c.code) << c.unit;
    EXPECT_EQ(info.VerticalScale, c.scale) << c.unit;
  }
}

TEST(ScreenConfigTest, UnknownDigitalFunctionStopsTheRead) {
  auto reader = OneScreen(XmlParameters({{"SP", "5"},
                                         {"DGT_EXE", "ON"},
                                         {"DGT_MEASFUNCTION", "Freq-time"},
                                         {"VS", "LOG"},
                                         {"DGT_STOPTIME", "100"}}));
  ScreenInfo info;
  info.LevelUnit = "before";
  EXPECT_EQ(reader->ReadScreenConfig(0, info), 1);
  EXPECT_EQ(info.Span, 5);              // read before the function
  EXPECT_EQ(info.LevelUnit, "before");  // later fields untouched
  EXPECT_EQ(info.LogScale, 0);
  EXPECT_EQ(reader->Summary(0).Span, 0);  // summary untouched
  EXPECT_EQ(reader->Digital(0).StopTime, 100);
}

TEST(ScreenConfigTest, LinearScaleConvertsTheReferenceLevelToVolts) {
  struct Case {
    const char* unit;
    const char* rl;
    const char* ohms;
    double reference;  // the reference level left in the record
    double volts;
    const char* vertical_unit;
  };
  const double v0_50 = std::pow(10.0, -0.6505149);
  // Volts go through dBm and back with the rounded constants, so they come
  // back close to, not exactly at, where they were.
  auto volts_round_trip = [](double v) {
    return std::pow(10.0, (20 * std::log(v) / std::log(10.0) + 13.01029) / 20 - 0.6505149);
  };
  const Case cases[] = {
      {"Volts", "0", "50", v0_50, volts_round_trip(v0_50), "mV"},  // 0 V: the level of 0 dBm
      {"Volts", "2", "50", 2, volts_round_trip(2), "V"},
      {"dBm", "0", "50", 0, v0_50, "mV"},
      {"dBm", "0", "75", 0, std::pow(10.0, -0.562469), "mV"},
      {"Watts", "0.01", "50", 0.01, std::pow(10.0, 0.5 - 0.6505149), "mV"},
  };
  for (const Case& c : cases) {
    auto reader = OneScreen(XmlParameters(
        {{"AUNITS", c.unit}, {"RL", c.rl}, {"OHMDUALCH", c.ohms}, {"VS", "LIN"}, {"DD", "1"}}));
    ScreenInfo info;
    ASSERT_EQ(reader->ReadScreenConfig(0, info), 0);
    EXPECT_NEAR(info.ReferenceLevel, c.reference, 1e-12) << c.unit << " " << c.rl;
    EXPECT_NEAR(info.ScaledReferenceLevel, c.volts, 1e-9) << c.unit << " " << c.rl;
    const VerticalAxis& axis = reader->Vertical(0);
    EXPECT_EQ(axis.VerticalUnit, c.vertical_unit);
    EXPECT_NEAR(axis.VerticalFactor, c.volts >= 1 ? 1 : 1000, 1e-9) << c.unit;
  }
  // A log axis in watts shows the reference level in dBm.
  auto reader = OneScreen(XmlParameters({{"AUNITS", "Watts"}, {"RL", "-1"}, {"VS", "LOG"}}));
  ScreenInfo info;
  ASSERT_EQ(reader->ReadScreenConfig(0, info), 0);
  EXPECT_NEAR(info.ReferenceLevel, 0.001, 1e-15);
  EXPECT_NEAR(info.ScaledReferenceLevel, 0, 1e-12);
  // A level so low that its volts underflow to 0 cannot be scaled.
  reader = OneScreen(XmlParameters({{"AUNITS", "dBm"}, {"RL", "-9000"}, {"VS", "LIN"}}));
  EXPECT_THROW(reader->ReadScreenConfig(0, info), RuntimeFailure);
}

TEST(ScreenConfigTest, ScreensOutsideTheTablesAreRunTimeFailures) {
  auto reader = OneScreen(XmlParameters({{"CF", "1"}}));
  ScreenInfo info;
  EXPECT_THROW(reader->ReadScreenConfig(3, info), RuntimeFailure);
  EXPECT_THROW(reader->ReadScreenConfig(-1, info), RuntimeFailure);
  EXPECT_THROW(reader->XAxisData(3), RuntimeFailure);
  EXPECT_THROW(reader->ReadMarkers(3), RuntimeFailure);
  EXPECT_THROW(reader->SetTimeAxis(info, 11), RuntimeFailure);
  EXPECT_NO_THROW(reader->SetTimeAxis(info, 10));
}

TEST(XAxisDataTest, ValuesFollowTheScreenKind) {
  struct Case {
    const char* what;
    std::string parameters;
    double first, last;
  };
  const Case cases[] = {
      {"spectrum", XmlParameters({{"SP", "100"}, {"FA", "1000"}, {"FB", "1100"}}), 1000, 1100},
      {"zero span", XmlParameters({{"SP", "0"}, {"FA", "5"}, {"SW", "4000"}}), 0, 0.004},
      {"digital time",
       XmlParameters({{"DGT_EXE", "ON"},
                      {"DGT_MEASFUNCTION", "IQ-Time"},
                      {"DGT_HORIZPOSITION", "-10"},
                      {"DGT_STOPTIME", "190"},
                      {"FA", "1"},
                      {"FB", "2"}}),
       -10, 190},
      {"digital frequency",
       XmlParameters({{"DGT_EXE", "ON"},
                      {"DGT_MEASFUNCTION", "PartialFFT"},
                      {"SP", "0"},
                      {"FA", "1000"},
                      {"FB", "2000"},
                      {"DGT_STOPTIME", "190"}}),
       1000, 2000},
  };
  for (const Case& c : cases) {
    auto reader = OneScreen(c.parameters + XmlParameters({{"VS", "LOG"}}));
    ScreenInfo info;
    ASSERT_EQ(reader->ReadScreenConfig(0, info), 0) << c.what;
    const XAxisValues x = reader->XAxisData(0);
    ASSERT_EQ(x.Values.size(), 5u) << c.what;
    EXPECT_EQ(x.Indexes, (std::vector<double>{0, 1, 2, 3, 4})) << c.what;
    EXPECT_DOUBLE_EQ(x.Values.front(), c.first) << c.what;
    EXPECT_DOUBLE_EQ(x.Values.back(), c.last) << c.what;
    for (size_t i = 0; i < 5; ++i) {
      // Difference times i, then divided by the four steps, then the start.
      EXPECT_EQ(x.Values[i], c.first + (c.last - c.first) * static_cast<double>(i) / 4)
          << c.what << " " << i;
    }
  }
}

TEST(XAxisDataTest, PointCountsOfZeroAndOne) {
  auto reader = OneScreen(XmlParameters({{"SP", "1"}}), 0);
  ScreenInfo info;
  ASSERT_EQ(reader->ReadScreenConfig(0, info), 0);
  EXPECT_TRUE(reader->XAxisData(0).Values.empty());
  reader = OneScreen(XmlParameters({{"SP", "1"}}), 1);
  ASSERT_EQ(reader->ReadScreenConfig(0, info), 0);
  EXPECT_THROW(reader->XAxisData(0), RuntimeFailure);  // divides by N - 1 = 0
}

}  // namespace
}  // namespace z4400
