#include "workbook/reports/screen_config_sheet.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/runtime_failure.h"
#include "workbook/reports/report_sheets_test_util.h"

namespace z4400 {
namespace {

using testing::SheetOf;
using testing::StartWithResultSheets;

/// One written row of a block: label, value, unit, number format.
struct Row {
  std::string label;
  CellValue value;
  std::string unit;
  std::string format;
};

/// The rows of the block that starts at `first_row`, up to the first row
/// without a label.
std::vector<Row> BlockRows(Worksheet& sheet, int first_row) {
  std::vector<Row> rows;
  for (int row = first_row; !sheet.Cells(row, 1).Value().IsEmpty(); ++row) {
    rows.push_back(Row{sheet.Cells(row, 1).Value().Text(), sheet.Cells(row, 2).Value(),
                       sheet.Cells(row, 3).Value().Text(), sheet.Cells(row, 2).NumberFormat()});
  }
  return rows;
}

const Row* Find(const std::vector<Row>& rows, std::string_view label) {
  for (const Row& row : rows) {
    if (row.label == label) return &row;
  }
  return nullptr;
}

std::vector<std::string> Labels(const std::vector<Row>& rows) {
  std::vector<std::string> labels;
  labels.reserve(rows.size());
  for (const Row& row : rows) labels.push_back(row.label);
  return labels;
}

ScreenInfo Spectrum() {
  ScreenInfo info;
  info.CenterFrequency = 2.4e9;
  info.Span = 100e6;
  info.StartFrequency = 2.35e9;
  info.StopFrequency = 2.45e9;
  info.SweepTime = 0.01;
  info.ResolutionBandwidth = 100e3;
  info.VideoBandwidth = 30e3;
  info.ReferenceLevel = -10;
  info.ReferenceOffset = 1.5;
  info.LevelUnitCode = 0;
  info.LevelUnit = "dBm";
  info.LogScale = -1;
  info.VerticalScale = 10;
  info.DualChannelAttenuation = 20;
  return info;
}

/// Writes `info` as screen `screen` on "Report" and returns its rows.
struct Written {
  int16_t status;
  std::vector<Row> rows;
  ScreenUnits units;
  TimeAxisEntry zero_span;
};

Written Write(const ScreenInfo& info, const DigitalValues& digital = {}, int16_t screen = 0) {
  ExcelApp excel = StartWithResultSheets();
  ScreenUnitTable units{};
  TimeAxisEntry zero_span{0, info.SweepTime, "sec", 1, info.Span == 0 ? int16_t{-1} : int16_t{0}};
  const int16_t status = WriteScreenConfig(excel, screen, info, digital, units, zero_span);
  return Written{status, BlockRows(SheetOf(excel, "Report"), screen * 17 + 9),
                 units[static_cast<size_t>(screen)], zero_span};
}

TEST(ScreenConfigSheetTest, BlockPlaceAndSpectrumRows) {
  for (const int16_t screen : {0, 1, 2}) {
    ExcelApp excel = StartWithResultSheets();
    ScreenUnitTable units{};
    TimeAxisEntry zero_span;
    ASSERT_EQ(WriteScreenConfig(excel, screen, Spectrum(), {}, units, zero_span), 0);
    Worksheet& report = SheetOf(excel, "Report");
    const int first = 9 + 17 * screen;  // 9, 26, 43
    EXPECT_EQ(report.Cells(first, 1).Value(), CellValue("Screen")) << screen;
    EXPECT_EQ(report.Cells(first, 2).Value(), CellValue(screen + 1));
    EXPECT_EQ(report.Cells(first, 2).NumberFormat(), "##");
    EXPECT_TRUE(report.Cells(first, 1).Font().Bold());
    EXPECT_TRUE(report.Cells(first, 2).Font().Bold());
    EXPECT_FALSE(report.Cells(first + 1, 1).Font().Bold());
    EXPECT_TRUE(report.Cells(first - 1, 1).Value().IsEmpty());
  }

  const Written w = Write(Spectrum());
  ASSERT_EQ(w.status, 0);
  EXPECT_EQ(Labels(w.rows),
            (std::vector<std::string>{"Screen", "Meas. Function", "Center frequency", "Span",
                                      "Start frequency", "Stop frequency", "Frequency offset",
                                      "Sweep time", "RBW", "VBW", "Reference level",
                                      "Reference offset", "Scale", "Attenuation"}));
  EXPECT_LE(w.rows.size(), 17u);
  const struct {
    std::string_view label;
    CellValue value;
    std::string_view unit, format;
  } kRows[] = {
      {"Meas. Function", CellValue("Spectrum Analysis"), "", "0.###"},
      {"Center frequency", CellValue(2.4), "GHz", "General"},
      {"Span", CellValue(100.0), "MHz", "General"},
      {"Start frequency", CellValue(2.35), "GHz", "General"},
      {"Stop frequency", CellValue(2.45), "GHz", "General"},
      {"Frequency offset", CellValue(0.0), "Hz", "General"},
      {"Sweep time", CellValue(10.0), "msec", "0.###"},
      {"RBW", CellValue(100.0), "kHz", "General"},
      {"VBW", CellValue(30.0), "kHz", "General"},
      {"Reference level", CellValue(-10.0), "dBm", "0.##"},
      {"Reference offset", CellValue(1.5), "dB", "0.##"},
      {"Scale", CellValue(10.0), "dB/div", "General"},
      {"Attenuation", CellValue(20.0), "dB", "##.#"},
  };
  for (const auto& expected : kRows) {
    const Row* row = Find(w.rows, expected.label);
    ASSERT_NE(row, nullptr) << expected.label;
    if (expected.value.IsNumber()) {
      EXPECT_NEAR(row->value.Number(), expected.value.Number(), 1e-12) << expected.label;
    } else {
      EXPECT_EQ(row->value, expected.value) << expected.label;
    }
    EXPECT_EQ(row->unit, expected.unit) << expected.label;
    EXPECT_EQ(row->format, expected.format) << expected.label;
  }
}

TEST(ScreenConfigSheetTest, XUnitIsLargerPrefixOfSpanAndStop) {
  const struct {
    const char* name;
    double span, stop;
    std::string_view span_unit, x_unit;
    double x_factor;
  } kCases[] = {
      // An exact power of 1000 falls one prefix short: 1 MHz shows as 1000 kHz.
      {"1 MHz span", 1e6, 2e6, "kHz", "MHz", 1e6},
      {"2 MHz span, 3 GHz stop", 2e6, 3e9, "MHz", "GHz", 1e9},
      // Same prefix: the tie goes to the stop frequency's unit.
      {"same prefix", 20e6, 500e6, "MHz", "MHz", 1e6},
      // A span wider than the stop frequency (start below 0) wins.
      {"span wins", 20e6, 500e3, "MHz", "MHz", 1e6},
  };
  for (const auto& c : kCases) {
    ScreenInfo info = Spectrum();
    info.Span = c.span;
    info.StopFrequency = c.stop;
    const Written w = Write(info);
    EXPECT_EQ(Find(w.rows, "Span")->unit, c.span_unit) << c.name;
    EXPECT_EQ(w.units.XUnit, c.x_unit) << c.name;
    EXPECT_DOUBLE_EQ(w.units.XFactor, c.x_factor) << c.name;
  }
  ScreenInfo one_mhz = Spectrum();
  one_mhz.Span = 1e6;
  const Written written = Write(one_mhz);
  const Row* span = Find(written.rows, "Span");
  EXPECT_DOUBLE_EQ(span->value.Number(), 1000);
  EXPECT_EQ(span->unit, "kHz");
}

TEST(ScreenConfigSheetTest, ZeroSpanShowsSweepTime) {
  ScreenInfo info = Spectrum();
  info.Span = 0;
  info.SweepTime = 4615e-6;
  info.StartFrequency = info.StopFrequency = 1.7475e9;
  const Written w = Write(info);
  ASSERT_EQ(w.status, 0);
  const Row* span = Find(w.rows, "Span");
  EXPECT_NEAR(span->value.Number(), 4.615, 1e-12);
  EXPECT_EQ(span->unit, "msec");
  EXPECT_EQ(span->format, "0.###");
  // The time-axis entry gets the sweep time's unit and display units per
  // second; the X unit stays a frequency (the span's factor is 0).
  EXPECT_EQ(w.zero_span.Unit, "msec");
  EXPECT_NEAR(w.zero_span.Factor, 1000, 1e-9);
  EXPECT_EQ(w.units.XUnit, "GHz");

  info.SweepTime = 0;
  EXPECT_THROW(Write(info), RuntimeFailure);
}

TEST(ScreenConfigSheetTest, ReferenceLevelByUnitCode) {
  const struct {
    int32_t code;
    double level;
    double shown;
    std::string_view unit, format;
  } kCases[] = {
      {0, -10, -10, "dBm", "0.##"},   {1, 30, 30, "dBmV", "0.##"},
      {2, 60, 60, "dBuV", "0.##"},    {3, 66, 66, "dBuVemf", "0.##"},
      {4, 80, 80, "dBpW", "0.##"},    {5, 0.01, 10, "mW", "0.###"},
      {6, 0.5, 500, "mV", "0.###"},   {7, -5, -5, "dBm", "0.##"},
      {9, -5, -5, "dBm", "0.##"},     {12, 3, 3, "dBm", "0.##"},
      {13, 7, 7, "unknown", "0.###"}, {-1, 7, 7, "unknown", "0.###"},
  };
  for (const auto& c : kCases) {
    ScreenInfo info = Spectrum();
    info.LevelUnitCode = c.code;
    info.ReferenceLevel = c.level;
    const Written w = Write(info);
    const Row* row = Find(w.rows, "Reference level");
    ASSERT_NE(row, nullptr) << c.code;
    EXPECT_NEAR(row->value.Number(), c.shown, 1e-12) << c.code;
    EXPECT_EQ(row->unit, c.unit) << c.code;
    EXPECT_EQ(row->format, c.format) << c.code;
  }
}

TEST(ScreenConfigSheetTest, LinearScaleIsTenthOfShownReference) {
  const struct {
    int32_t code;
    double level;
    double scale;
    std::string_view unit;
  } kCases[] = {
      {5, 0.005, 0.5, "mW/div"},  // 5 mW
      {6, 0.5, 50, "mV/div"},     // 500 mV
      {0, -20, -2, "dBm/div"},
  };
  for (const auto& c : kCases) {
    ScreenInfo info = Spectrum();
    info.LogScale = 0;
    info.LevelUnitCode = c.code;
    info.ReferenceLevel = c.level;
    const Written w = Write(info);
    const Row* row = Find(w.rows, "Scale");
    ASSERT_NE(row, nullptr) << c.code;
    EXPECT_NEAR(row->value.Number(), c.scale, 1e-12) << c.code;
    EXPECT_EQ(row->unit, c.unit) << c.code;
    EXPECT_EQ(row->format, "0.##") << c.code;
  }
}

TEST(ScreenConfigSheetTest, ZeroVerticalScaleStopsAfterReferenceLevel) {
  ScreenInfo info = Spectrum();
  info.VerticalScale = 0;
  const Written w = Write(info, {}, 1);
  EXPECT_EQ(w.status, 1);
  EXPECT_EQ(w.units.Message, "Vertical-axis scale is 0");
  ASSERT_FALSE(w.rows.empty());
  EXPECT_EQ(w.rows.back().label, "Reference level");
  EXPECT_EQ(w.rows.size(), 11u);
}

TEST(ScreenConfigSheetTest, DigitalScreens) {
  const struct {
    const char* function;
    std::string_view level_unit;
    int32_t code;
    double vertical_scale;
    double stop_time_us;
    double capture_bandwidth;
    double stop_frequency;
    // Expected.
    double span;
    std::string_view span_unit, time_unit;
    double time_factor;
    double scale;
    std::string_view scale_unit, vertical_unit;
    double vertical_factor;
  } kCases[] = {
      {"Freq-Time", "Hz", 7, 25000, 577, 1e6, 1.75e9,  //
       57.7, "usec", "usec", 1e6, 25, "kHz/div", "kHz", 1000},
      {"Phase-Time", "deg", 8, 45, 5000, 1e6, 1.75e9,  //
       57.7, "usec", "msec", 1000, 45, "deg/div", "deg", 1},
      {"IQ-Time", "V", 10, 0.1, 2e6, 1e6, 1.75e9,  //
       57.7, "usec", "sec", 1, 100, "mV/div", "mV", 0.001},
      {"PartialFFT", "dBm", 11, 10, 577, 20e6, 2.5e9,  //
       20, "MHz", "GHz", 1e-9, 10, "dBm/div", "dBm", 1},
      {"Phase-Freq", "deg", 12, 90, 577, 5e6, 900e6,  //
       5, "MHz", "MHz", 1e-6, 90, "deg/div", "deg", 1},
  };
  for (const auto& c : kCases) {
    ScreenInfo info = Spectrum();
    info.LevelUnit = std::string(c.level_unit);
    info.LevelUnitCode = c.code;
    info.VerticalScale = c.vertical_scale;
    info.StopFrequency = c.stop_frequency;
    DigitalValues digital;
    digital.DigitalMode = "ON";
    digital.MeasurementFunction = c.function;
    digital.HorizontalPosition = 0;
    digital.StopTime = c.stop_time_us;
    digital.HorizontalScale = 57.7;
    digital.CaptureTime = 1000;
    digital.CaptureBandwidth = c.capture_bandwidth;
    const Written w = Write(info, digital, 2);
    ASSERT_EQ(w.status, 0) << c.function;
    EXPECT_EQ(Labels(w.rows),
              (std::vector<std::string>{"Screen", "Meas. Function", "Center frequency", "Span",
                                        "Start time", "Stop time", "Capture time", "Capture BW",
                                        "Reference level", "Scale", "Attenuation"}))
        << c.function;
    EXPECT_EQ(Find(w.rows, "Meas. Function")->value, CellValue(c.function));
    EXPECT_NEAR(Find(w.rows, "Span")->value.Number(), c.span, 1e-9) << c.function;
    EXPECT_EQ(Find(w.rows, "Span")->unit, c.span_unit) << c.function;
    EXPECT_EQ(Find(w.rows, "Capture time")->unit, "msec") << c.function;
    EXPECT_EQ(Find(w.rows, "Reference level")->unit, "dBm") << c.function;
    EXPECT_EQ(w.units.TimeUnit, c.time_unit) << c.function;
    EXPECT_NEAR(w.units.TimeFactor / c.time_factor, 1, 1e-12) << c.function;
    const Row* scale = Find(w.rows, "Scale");
    EXPECT_NEAR(scale->value.Number(), c.scale, 1e-9) << c.function;
    EXPECT_EQ(scale->unit, c.scale_unit) << c.function;
    EXPECT_EQ(scale->format, "General") << c.function;
    EXPECT_EQ(w.units.VerticalUnit, c.vertical_unit) << c.function;
    EXPECT_NEAR(w.units.VerticalFactor / c.vertical_factor, 1, 1e-12) << c.function;
  }
}

TEST(ScreenConfigSheetTest, FailuresForTheCaller) {
  ExcelApp excel = StartWithResultSheets();
  ScreenUnitTable units{};
  TimeAxisEntry zero_span;
  // Only screens 0 to 2 have unit records.
  EXPECT_THROW(WriteScreenConfig(excel, 3, Spectrum(), {}, units, zero_span), RuntimeFailure);
  EXPECT_THROW(WriteScreenConfig(excel, -1, Spectrum(), {}, units, zero_span), RuntimeFailure);
  // A stop frequency of 0 has no X factor.
  ScreenInfo info = Spectrum();
  info.StopFrequency = 0;
  EXPECT_THROW(WriteScreenConfig(excel, 0, info, {}, units, zero_span), RuntimeFailure);
}

}  // namespace
}  // namespace z4400
