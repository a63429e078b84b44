#include "workbook/reports/raw_data_sheet.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "common/runtime_failure.h"
#include "workbook/reports/report_sheets_test_util.h"

namespace z4400 {
namespace {

using testing::At;
using testing::SheetOf;
using testing::StartWithResultSheets;

/// The per-screen tables of one screen, owned by the test.
struct Tables {
  DigitalValues digital;
  VerticalAxis vertical{"dBm", 1};
  TimeAxisEntry time_axis;
  ScreenUnits units;
  XAxisScale scale;
  RawScreenTables View() { return RawScreenTables{digital, vertical, time_axis, units, scale}; }
};

std::vector<double> Indexes(int n) {
  std::vector<double> v(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) v[static_cast<size_t>(i)] = i;
  return v;
}

/// X values from `start` to `stop` over n points, as the screen reader
/// spreads them.
std::vector<double> Spread(double start, double stop, int n) {
  std::vector<double> v(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) v[static_cast<size_t>(i)] = start + (stop - start) * i / (n - 1);
  return v;
}

TEST(RawDataSheetTest, BlockRowsAndColumnsFor401Points) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& raw = SheetOf(excel, "Raw Data");
  constexpr int kPoints = 401;
  Tables tables;
  tables.units.XUnit = "GHz";
  tables.units.XFactor = 1e9;
  const std::vector<double> index = Indexes(kPoints);
  const std::vector<double> x = Spread(2.35e9, 2.45e9, kPoints);
  std::vector<double> levels(kPoints);
  for (int i = 0; i < kPoints; ++i) levels[static_cast<size_t>(i)] = -80 + 0.1 * i;
  RawDataState state;
  for (const int32_t screen : {0, 1}) {
    WriteRawDataBlock(raw, RawBlock{screen, -1, index, x, kPoints, "GHz", "GHz"}, tables.View(), {},
                      state);
    for (const int32_t trace : {0, 1}) {
      WriteRawDataBlock(raw, RawBlock{screen, trace, levels, levels, kPoints, "dBm", "dBm"},
                        tables.View(), {}, state);
    }
  }
  // Screen 0 from row 9, screen 1 from row (401 + 6) + 9 = 416.
  for (const int top : {9, 416}) {
    const int screen_number = top == 9 ? 1 : 2;
    EXPECT_EQ(raw.Cells(top, 5).Value(), CellValue("Screen ")) << top;
    EXPECT_EQ(raw.Cells(top, 6).Value(), CellValue(screen_number));
    EXPECT_EQ(raw.Cells(top, 6).NumberFormat(), "0.###");
    EXPECT_TRUE(raw.Cells(top, 5).Font().Bold());
    EXPECT_TRUE(raw.Cells(top, 6).Font().Bold());
    EXPECT_TRUE(raw.Cells(top + 1, 5).Value().IsEmpty());
    EXPECT_EQ(raw.Cells(top + 2, 5).Value(), CellValue("X raw GHz"));
    EXPECT_EQ(raw.Cells(top + 2, 6).Value(), CellValue("X GHz"));
    EXPECT_TRUE(raw.Cells(top + 2, 6).Font().Bold());
    // Trace A in I and J, trace B in M and N, headers on the X line's row.
    EXPECT_EQ(raw.Cells(top + 2, 9).Value(), CellValue("Y(A) raw dBm"));
    EXPECT_EQ(raw.Cells(top + 2, 10).Value(), CellValue("Y(A) dBm"));
    EXPECT_TRUE(raw.Cells(top + 2, 9).Font().Bold());
    EXPECT_EQ(raw.Cells(top + 2, 13).Value(), CellValue("Y(B) raw dBm"));
    EXPECT_TRUE(raw.Cells(top, 9).Value().IsEmpty());
    // Data from row top + 3 to top + 3 + 400; the row after stays empty.
    const int first = top + 3;
    const int last = first + kPoints - 1;
    EXPECT_EQ(raw.Cells(first, 5).Value(), CellValue(0.0));
    EXPECT_DOUBLE_EQ(raw.Cells(first, 6).Value().Number(), 2.35);
    EXPECT_EQ(raw.Cells(last, 5).Value(), CellValue(400.0));
    EXPECT_DOUBLE_EQ(raw.Cells(last, 6).Value().Number(), 2.45);
    EXPECT_DOUBLE_EQ(raw.Cells(first, 9).Value().Number(), -80);
    EXPECT_DOUBLE_EQ(raw.Cells(last, 14).Value().Number(), levels.back());
    for (const int column : {5, 6, 7, 9, 10, 11}) {
      EXPECT_TRUE(raw.Cells(last + 1, column).Value().IsEmpty()) << column;
    }
    // Nothing in the third column of a linear X axis.
    EXPECT_TRUE(raw.Cells(first, 7).Value().IsEmpty());
  }
  EXPECT_EQ(RawBlockRow(kPoints, 1), 416);
  EXPECT_EQ(state.LogXFirstRow, 0);
}

TEST(RawDataSheetTest, FactorsByKindOfScreen) {
  const struct {
    const char* name;
    bool digital;
    const char* function;
    bool zero_span;
    double factor;  // the factor the configuration block settled
    bool x_group;
    double first, second;              // one input point
    double shown_first, shown_second;  // what the sheet must show
  } kCases[] = {
      // Spectrum X: hertz ÷ hertz per display unit.
      {"spectrum X", false, "", false, 1e9, true, 7, 2.4e9, 7, 2.4},
      // Zero span: seconds × display units per second (4615 us → msec).
      {"zero span X", false, "", true, 1000, true, 7, 0.004615, 7, 4.615},
      // Spectrum trace: the first column × the vertical factor (volts → mV).
      {"spectrum trace", false, "", false, 1000, false, 0.05, 0.05, 50, 0.05},
      // Digital time X: microseconds × units per second ÷ 1,000,000.
      {"digital X usec", true, "Freq-Time", false, 1e6, true, 3, 288.5, 3, 288.5},
      {"digital X msec", true, "Phase-Time", false, 1000, true, 3, 2500, 3, 2.5},
      // Digital frequency functions: hertz × display units per hertz.
      {"PartialFFT X", true, "PartialFFT", false, 1e-9, true, 3, 2.5e9, 3, 2.5},
      {"Phase-Freq X", true, "Phase-Freq", false, 1e-6, true, 3, 9e8, 3, 900},
      // Digital trace: the first column ÷ base units per display unit.
      {"digital trace", true, "IQ-Time", false, 0.001, false, 0.16168, 0.16168, 161.68, 0.16168},
  };
  for (const auto& c : kCases) {
    ExcelApp excel = StartWithResultSheets();
    Worksheet& raw = SheetOf(excel, "Raw Data");
    Tables tables;
    if (c.digital) {
      tables.digital.DigitalMode = "ON";
      tables.digital.MeasurementFunction = c.function;
      (c.x_group ? tables.units.TimeFactor : tables.units.VerticalFactor) = c.factor;
    } else if (c.zero_span) {
      tables.time_axis.IsTime = -1;
      tables.time_axis.Factor = c.factor;
      tables.units.XFactor = 1e9;  // not used by a zero-span X group
    } else {
      (c.x_group ? tables.units.XFactor : tables.vertical.VerticalFactor) = c.factor;
    }
    const std::vector<double> first = {c.first, c.first};
    const std::vector<double> second = {c.second, c.second};
    RawDataState state;
    WriteRawDataBlock(raw, RawBlock{0, c.x_group ? -1 : 0, first, second, 2, "u", "v"},
                      tables.View(), {}, state);
    const int column = c.x_group ? 5 : 9;
    EXPECT_NEAR(raw.Cells(12, column).Value().Number(), c.shown_first,
                1e-12 * std::abs(c.shown_first))
        << c.name;
    EXPECT_NEAR(raw.Cells(12, column + 1).Value().Number(), c.shown_second,
                1e-12 * std::abs(c.shown_second))
        << c.name;
  }
}

TEST(RawDataSheetTest, LogXAxisColumnAndFirstRow) {
  constexpr int kPoints = 11;
  // From −10 MHz to 90 MHz in steps of 10 MHz, shown in MHz.
  const std::vector<double> x = Spread(-10e6, 90e6, kPoints);
  const std::vector<double> index = Indexes(kPoints);
  const struct {
    const char* name;
    int16_t start_negative;
    bool log_x_option;
    int16_t log_x_in_use;
    double threshold;
    bool moves;         // AxisMin and LogXFirstRow set
    int first_k;        // the first point at or above the threshold
    bool third_column;  // column G written
  } kCases[] = {
      {"negative start, option on", -1, true, 0, 1000, true, 2, false},
      {"threshold at 25 MHz", -1, true, 0, 25e6, true, 4, false},
      {"threshold never reached", -1, true, 0, 1e9, false, 0, false},
      {"option off", -1, false, 0, 1000, false, 0, false},
      {"start not negative", 0, true, 0, 1000, false, 0, false},
      {"log-X in use writes G", 0, true, 1, 1000, false, 0, true},
  };
  for (const auto& c : kCases) {
    ExcelApp excel = StartWithResultSheets();
    Worksheet& raw = SheetOf(excel, "Raw Data");
    Tables tables;
    tables.units.XFactor = 1e6;
    tables.scale = XAxisScale{100, 1, 90, -10, c.start_negative, -1};
    RawDataSettings settings{c.log_x_in_use, c.threshold, c.log_x_option};
    RawDataState state{77};
    WriteRawDataBlock(raw, RawBlock{1, -1, index, x, kPoints, "MHz", "MHz"}, tables.View(),
                      settings, state);
    const int first_row = (kPoints + 6) * 1 + 12;
    if (c.moves) {
      EXPECT_EQ(state.LogXFirstRow, first_row + c.first_k) << c.name;
      const double reached = x[static_cast<size_t>(c.first_k)] / 1e6;
      // The largest power of ten not above the reached value (with 10 %
      // slack), counted down from 10^10.
      double below = 1e10;
      while (reached * 1.1 < below) below /= 10;
      EXPECT_DOUBLE_EQ(tables.scale.AxisMin, below) << c.name;
    } else {
      EXPECT_EQ(state.LogXFirstRow, 77) << c.name;
      EXPECT_EQ(tables.scale.AxisMin, 1) << c.name;
    }
    EXPECT_DOUBLE_EQ(raw.Cells(first_row + 3, 6).Value().Number(), 20) << c.name;
    if (c.third_column) {
      // 20 MHz mapped from the data range −10..90 onto the axis 1..100.
      const double expected = 1.0 + (20.0 + 10.0) * (100.0 - 1.0) / (90.0 + 10.0);
      EXPECT_DOUBLE_EQ(raw.Cells(first_row + 3, 7).Value().Number(), expected) << c.name;
      EXPECT_TRUE(raw.Cells(first_row + kPoints, 7).Value().IsEmpty()) << c.name;
    } else {
      EXPECT_TRUE(raw.Cells(first_row + 3, 7).Value().IsEmpty()) << c.name;
    }
  }
}

TEST(RawDataSheetTest, BadBlocksFail) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& raw = SheetOf(excel, "Raw Data");
  Tables tables;
  RawDataState state;
  {
    // 1002 points fit the buffer; the range's extra row is emptied.
    const std::vector<double> v = Indexes(1002);
    WriteRawDataBlock(raw, RawBlock{0, -1, v, v, 1002, "Hz", "Hz"}, tables.View(), {}, state);
    EXPECT_EQ(raw.Cells(12 + 1001, 6).Value(), CellValue(1001.0));
    EXPECT_TRUE(raw.Cells(12 + 1002, 6).Value().IsEmpty());
  }
  {
    // One more fails at point 1002.
    const std::vector<double> v = Indexes(1003);
    EXPECT_THROW(
        WriteRawDataBlock(raw, RawBlock{0, 0, v, v, 1003, "dBm", "dBm"}, tables.View(), {}, state),
        RuntimeFailure);
  }
  const std::vector<double> v = Indexes(5);
  // Screens have three slots.
  EXPECT_THROW(WriteRawDataBlock(raw, RawBlock{3, 0, v, v, 5, "", ""}, tables.View(), {}, state),
               RuntimeFailure);
  // Fewer values than points.
  EXPECT_THROW(WriteRawDataBlock(raw, RawBlock{0, 0, v, v, 6, "", ""}, tables.View(), {}, state),
               RuntimeFailure);
  // A zero-span screen whose time factor was never set.
  tables.time_axis.IsTime = -1;
  tables.time_axis.Factor = 0;
  EXPECT_THROW(WriteRawDataBlock(raw, RawBlock{0, -1, v, v, 5, "", ""}, tables.View(), {}, state),
               RuntimeFailure);
}

TEST(RawDataSheetTest, XDataAndTraceLabels) {
  ExcelApp excel = StartWithResultSheets();
  Tables tables;
  tables.units.XUnit = "GHz";
  tables.units.XFactor = 1e9;
  tables.vertical = VerticalAxis{"mW", 1000};
  const XAxisValues x{Indexes(3), Spread(1e9, 2e9, 3)};
  ScreenInfo info;
  info.Span = 1e9;
  RawDataState state;
  WriteRawXData(excel, 0, x, info, 3, tables.View(), {}, state);
  Worksheet& raw = SheetOf(excel, "Raw Data");
  EXPECT_EQ(&excel.application()->ActiveSheet(), &raw);
  EXPECT_EQ(At(raw, "E11"), CellValue("X raw GHz"));
  EXPECT_EQ(At(raw, "F11"), CellValue("X GHz"));
  EXPECT_DOUBLE_EQ(At(raw, "F14").Number(), 2);

  TraceData trace;
  trace.Values = trace.Copy = {0.001, 0.002, 0.003};
  trace.Unit = " Watts ";
  WriteRawTraceData(excel, 0, 2, trace, 3, tables.View(), {}, state);
  EXPECT_EQ(At(raw, "Q11"), CellValue("Y(C) raw mW"));
  EXPECT_EQ(At(raw, "R11"), CellValue("Y(C) Watts"));
  EXPECT_DOUBLE_EQ(At(raw, "Q13").Number(), 2);
  EXPECT_DOUBLE_EQ(At(raw, "R13").Number(), 0.002);

  // A zero-span screen is labelled "sec" whatever its time unit.
  info.Span = 0;
  tables.time_axis = TimeAxisEntry{0, 0.004615, "msec", 1000, -1};
  WriteRawXData(excel, 1, x, info, 3, tables.View(), {}, state);
  EXPECT_EQ(raw.Cells(9 + 9 + 2, 5).Value(), CellValue("X raw sec"));
  EXPECT_EQ(raw.Cells(9 + 9 + 2, 6).Value(), CellValue("X msec"));
}

}  // namespace
}  // namespace z4400
