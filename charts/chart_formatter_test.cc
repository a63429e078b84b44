#include "charts/chart_formatter.h"

#include <gtest/gtest.h>

#include <string>

#include "charts/chart_test_util.h"
#include "charts/trace_series.h"
#include "common/runtime_failure.h"
#include "workbook/xlsx/xlsx_drawing_part.h"

namespace z4400 {
namespace {

using testing::RecordingFeedback;
using testing::ResultWorkbook;

TEST(ChartFormatterTest, TitlesFollowTheUnitCodeAndTheSpan) {
  const struct {
    int32_t code;
    const char* prefix;
  } codes[] = {{0, "Level ("},   {5, "Level ("},  {6, "Level ("},  {7, "Freq ("},
               {8, "Degree ("},  {9, "Level ("},  {10, "Volts ("}, {11, "Level ("},
               {12, "Degree ("}, {13, "Level ("}, {-1, "Level ("}};
  for (const auto& c : codes) {
    EXPECT_EQ(YAxisTitle(c.code, "kHz"), std::string(c.prefix) + "kHz)") << c.code;
  }
  EXPECT_EQ(XAxisTitle(100e6, "GHz"), "Frequency (GHz)");
  EXPECT_EQ(XAxisTitle(-1, "MHz"), "Frequency (MHz)");
  EXPECT_EQ(XAxisTitle(0, "msec"), "Time (msec)");
  EXPECT_EQ(ChartTitleText(0), "Screen 1 Traces");
  EXPECT_EQ(ChartTitleText(2), "Screen 3 Traces");
  EXPECT_EQ(ReportBlockRow(0), 9);
  EXPECT_EQ(ReportBlockRow(2), 43);
  EXPECT_THROW(ReportBlockRow(-1), RuntimeFailure);
  EXPECT_THROW(ReportBlockRow(0x7fffffff), RuntimeFailure);
}

TEST(ChartFormatterTest, AxisUnitsAreThoseOfTheRawDataAndTheBlock) {
  ScreenUnits units;
  units.TimeUnit = "usec";
  units.XUnit = "GHz";
  units.VerticalUnit = "kHz";
  VerticalAxis vertical{"mV", 1000};
  TimeAxisEntry zero_span;
  zero_span.IsTime = -1;
  zero_span.Unit = "msec";
  DigitalValues digital;
  digital.DigitalMode = "ON";
  ScreenInfo screen;
  screen.Span = 0;
  const ChartAxisUnits digital_units =
      ChartAxisUnitsOf(screen, digital, units, zero_span, vertical);
  EXPECT_EQ(digital_units.x_unit, "usec");
  EXPECT_EQ(digital_units.vertical_unit, "kHz");
  digital.DigitalMode = "OFF";
  const ChartAxisUnits time_units = ChartAxisUnitsOf(screen, digital, units, zero_span, vertical);
  EXPECT_EQ(time_units.x_unit, "msec");
  EXPECT_EQ(time_units.vertical_unit, "mV");
  screen.Span = 1e6;
  zero_span.IsTime = 0;
  EXPECT_EQ(ChartAxisUnitsOf(screen, digital, units, zero_span, vertical).x_unit, "GHz");
}

TEST(ChartFormatterTest, LogarithmicAxisOnlyForPositivePlottedValues) {
  XAxisScale scale;
  scale.LogX = -1;
  scale.AxisMin = 1e-6;
  scale.AxisMax = 1;
  ChartSettings settings;
  EXPECT_TRUE(UseLogXAxis(scale, settings));
  scale.StartNegative = -1;
  EXPECT_TRUE(UseLogXAxis(scale, settings)) << "option on: starts at the threshold";
  settings.LogXOption = 0;
  EXPECT_FALSE(UseLogXAxis(scale, settings)) << "negative X values plotted";
  settings.LogXInUse = 1;
  EXPECT_TRUE(UseLogXAxis(scale, settings)) << "mapped onto the log range";
  scale.AxisMin = 0;
  EXPECT_FALSE(UseLogXAxis(scale, settings));
  scale = XAxisScale{};
  scale.AxisMin = 1;
  scale.AxisMax = 10;
  EXPECT_FALSE(UseLogXAxis(scale, ChartSettings{})) << "linear screen";
}

TEST(ChartFormatterTest, FormatsTheScreenChartBesideItsBlock) {
  for (const int screen : {0, 1, 2}) {
    SCOPED_TRACE(screen);
    ResultWorkbook result;
    RecordingFeedback feedback;
    ChartSettings settings;
    settings.PlotAreaColor = 111;
    settings.DivisionLineColor = 222;
    GeneralInfo general;
    general.TracePoints = 11;
    // The screen's X values on "Raw Data": 2.35 to 2.45 in the display unit.
    Worksheet& raw = result.sheet("Raw Data");
    const int first_row = (general.TracePoints + 6) * screen + 12;
    for (int k = 0; k < general.TracePoints; ++k) {
      raw.Cells(first_row + k, 6).SetValue(2.35 + 0.01 * k);
    }
    for (int chart = 0; chart <= screen; ++chart) {
      CellRange x_range =
          PrepareScreenChart(result.application(), first_row, first_row + general.TracePoints);
      AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range,
                     {static_cast<int16_t>(first_row),
                      static_cast<int16_t>(first_row + general.TracePoints), 0},
                     chart, settings, feedback);
    }
    ScreenInfo info;
    info.Span = 100e6;
    info.LevelUnitCode = 0;
    FormatScreenChart(result.application(), info, general, screen, {"GHz", "dBm"}, XAxisScale{},
                      settings, feedback);

    EXPECT_EQ(feedback.statuses.back(), "Formatting the graph");
    Worksheet& report = result.sheet("Report");
    ChartObject& object = report.ChartObjects(screen + 1);
    const Chart& chart = object.Chart();
    EXPECT_EQ(chart.ChartTitle().Text(), "Screen " + std::to_string(screen + 1) + " Traces");
    const Axis& x = chart.Axes(kXlCategory);
    EXPECT_EQ(x.AxisTitle().Text(), "Frequency (GHz)");
    EXPECT_DOUBLE_EQ(x.MinimumScale(), 2.35);
    EXPECT_DOUBLE_EQ(x.MaximumScale(), 2.45);
    EXPECT_NEAR(x.MajorUnit(), 0.01, 1e-12);
    EXPECT_FALSE(x.MinimumScaleIsAuto());
    EXPECT_EQ(x.ScaleType(), kXlScaleLinear);
    EXPECT_EQ(x.TickLabels().NumberFormat(), "0.00");
    const Axis& y = chart.Axes(kXlValue);
    EXPECT_EQ(y.AxisTitle().Text(), "Level (dBm)");
    EXPECT_TRUE(y.MinimumScaleIsAuto());
    EXPECT_EQ(y.TickLabels().NumberFormat(), "0.0");
    EXPECT_TRUE(x.HasMajorGridlines());
    EXPECT_TRUE(y.HasMajorGridlines());
    EXPECT_EQ(x.MajorGridlines().Border().Color(), 222);
    EXPECT_EQ(y.MajorGridlines().Border().Color(), 222);
    EXPECT_EQ(chart.PlotArea().Interior().Color(), 111);

    // Within columns D to I and the block's 17 rows.
    const CellOffset left = ColumnAt(report, object.Left());
    const CellOffset right = ColumnAt(report, object.Left() + object.Width());
    const CellOffset top = RowAt(object.Top());
    const CellOffset bottom = RowAt(object.Top() + object.Height());
    EXPECT_EQ(left.index, 3) << "column D";
    EXPECT_EQ(right.index, 8) << "column I";
    EXPECT_EQ(top.index, screen * 17 + 8);
    EXPECT_EQ(bottom.index, screen * 17 + 8 + 16);
    EXPECT_GT(object.Width(), 250);
    EXPECT_GT(object.Height(), 200);
  }
}

TEST(ChartFormatterTest, LogarithmicScreensTakeTheAxisBounds) {
  ResultWorkbook result;
  RecordingFeedback feedback;
  CellRange x_range = PrepareScreenChart(result.application(), 12, 112);
  ScreenInfo info;
  info.Span = 0;
  info.LogX = -1;
  AddTraceSeries(result.application(), info, 0, x_range, {12, 112, 0}, 0, ChartSettings{},
                 feedback);
  XAxisScale scale;
  scale.LogX = -1;
  scale.AxisMin = 0.1;
  scale.AxisMax = 1;
  GeneralInfo general;
  general.TracePoints = 101;
  FormatScreenChart(result.application(), info, general, 0, {"msec", "dBm"}, scale, ChartSettings{},
                    feedback);
  const Axis& x = result.sheet("Report").ChartObjects(1).Chart().Axes(kXlCategory);
  EXPECT_EQ(x.ScaleType(), kXlScaleLogarithmic);
  EXPECT_DOUBLE_EQ(x.MinimumScale(), 0.1);
  EXPECT_DOUBLE_EQ(x.MaximumScale(), 1);
  EXPECT_EQ(x.AxisTitle().Text(), "Time (msec)");
}

TEST(ChartFormatterTest, WithoutXValuesTheScaleStaysAutomatic) {
  ResultWorkbook result;
  RecordingFeedback feedback;
  CellRange x_range = PrepareScreenChart(result.application(), 12, 112);
  AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range, {12, 112, 0}, 0, ChartSettings{},
                 feedback);
  GeneralInfo general;
  general.TracePoints = 101;
  FormatScreenChart(result.application(), ScreenInfo{}, general, 0, {"sec", "dBm"}, XAxisScale{},
                    ChartSettings{}, feedback);
  const Axis& x = result.sheet("Report").ChartObjects(1).Chart().Axes(kXlCategory);
  EXPECT_TRUE(x.MinimumScaleIsAuto());
  EXPECT_TRUE(x.MajorUnitIsAuto());
}

}  // namespace
}  // namespace z4400
