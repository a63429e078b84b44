#include "charts/chart_formatter.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

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
                      std::nullopt, settings, feedback);

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
  FormatScreenChart(result.application(), info, general, 0, {"msec", "dBm"}, scale, std::nullopt,
                    ChartSettings{}, feedback);
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
                    std::nullopt, ChartSettings{}, feedback);
  const Axis& x = result.sheet("Report").ChartObjects(1).Chart().Axes(kXlCategory);
  EXPECT_TRUE(x.MinimumScaleIsAuto());
  EXPECT_TRUE(x.MajorUnitIsAuto());
}

TEST(ChartFormatterTest, YScaleOfTheInstrumentScreen) {
  const VerticalAxis millivolts{"mV", 1000};
  const struct {
    const char* name;
    int32_t code;
    int16_t log_scale;
    double reference;
    double scale;
    const char* digital_mode;
    std::optional<YScale> expected;
  } cases[] = {
      {"dBm, log", 0, -1, 10, 10, "OFF", YScale{-90, 10, 10}},
      {"dBuVemf, log, 5 dB/div", 3, -1, 80, 5, "OFF", YScale{30, 80, 5}},
      {"watts, linear: 10 mW as plotted", 5, 0, 0.01, 0.001, "OFF", YScale{0, 10, 1}},
      {"volts, linear", 6, 0, 0.5, 0.05, "OFF", YScale{0, 500, 50}},
      {"dBm on a linear scale", 0, 0, 10, 1, "OFF", std::nullopt},
      {"watts on a log scale", 5, -1, 0.01, 10, "OFF", std::nullopt},
      {"unknown unit", 13, -1, 0, 10, "OFF", std::nullopt},
      {"digital screen", 0, -1, 0, 10, "ON", std::nullopt},
      {"scale 0", 0, -1, 0, 0, "OFF", std::nullopt},
      {"negative scale", 0, -1, 0, -10, "OFF", std::nullopt},
      {"reference not finite", 0, -1, std::numeric_limits<double>::infinity(), 10, "OFF",
       std::nullopt},
      {"linear reference 0", 6, 0, 0, 1, "OFF", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ScreenInfo screen;
    screen.LevelUnitCode = c.code;
    screen.LogScale = c.log_scale;
    screen.ReferenceLevel = c.reference;
    screen.VerticalScale = c.scale;
    DigitalValues digital;
    digital.DigitalMode = c.digital_mode;
    const std::optional<YScale> y = InstrumentYScale(screen, digital, millivolts);
    ASSERT_EQ(y.has_value(), c.expected.has_value());
    if (!y) continue;
    EXPECT_DOUBLE_EQ(y->minimum, c.expected->minimum);
    EXPECT_DOUBLE_EQ(y->maximum, c.expected->maximum);
    EXPECT_DOUBLE_EQ(y->major_unit, c.expected->major_unit);
  }
}

TEST(ChartFormatterTest, YAxisClipsGapsUnlessNothingIsInside) {
  // Plotted values in column I of "Raw Data": levels around 5 with the
  // -200000 of a missing point; the screen runs from 0 to 10.
  const struct {
    const char* name;
    std::vector<double> values;
    bool fixed;
  } cases[] = {
      {"a gap is clipped", {4, 5, -200000, 6}, true},
      {"a value at the top edge is inside", {10, -200000}, true},
      {"nothing inside: automatic", {-200000, 20, -5}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ResultWorkbook result;
    RecordingFeedback feedback;
    Worksheet& raw = result.sheet("Raw Data");
    const int last_row = 12 + static_cast<int>(c.values.size()) - 1;
    for (std::size_t k = 0; k < c.values.size(); ++k) {
      raw.Cells(12 + static_cast<int>(k), 6).SetValue(static_cast<double>(k));
      raw.Cells(12 + static_cast<int>(k), 9).SetValue(c.values[k]);
    }
    CellRange x_range = PrepareScreenChart(result.application(), 12, last_row);
    AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range,
                   {12, static_cast<int16_t>(last_row), 0}, 0, ChartSettings{}, feedback);
    GeneralInfo general;
    general.TracePoints = static_cast<int32_t>(c.values.size());
    FormatScreenChart(result.application(), ScreenInfo{}, general, 0, {"MHz", "mV"}, XAxisScale{},
                      YScale{0, 10, 1}, ChartSettings{}, feedback);
    const Axis& y = result.sheet("Report").ChartObjects(1).Chart().Axes(kXlValue);
    EXPECT_EQ(!y.MinimumScaleIsAuto(), c.fixed);
    EXPECT_EQ(!y.MaximumScaleIsAuto(), c.fixed);
    EXPECT_EQ(!y.MajorUnitIsAuto(), c.fixed);
    if (c.fixed) {
      EXPECT_EQ(y.MinimumScale(), 0);
      EXPECT_EQ(y.MaximumScale(), 10);
      EXPECT_EQ(y.MajorUnit(), 1);
    }
  }
}

}  // namespace
}  // namespace z4400
