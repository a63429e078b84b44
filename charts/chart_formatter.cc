#include "charts/chart_formatter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include "charts/result_sheets.h"
#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "workbook/model/application.h"
#include "workbook/model/cell_address.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_drawing_part.h"

namespace z4400 {
namespace {

/// Height of a row of "Report" in points (the standard row).
constexpr double kRowPoints = 15;
constexpr double kPointsPerPixel = 0.75;
/// Gap kept between the chart and the cells around it, in points.
constexpr double kChartInset = 3;
/// Major ticks across a linear X axis, and divisions of the instrument's
/// screen.
constexpr double kXDivisions = 10;
constexpr double kScreenDivisions = 10;
/// Level-unit codes: dB units up to 4, then watts and volts.
constexpr int32_t kLastDbUnitCode = 4;
constexpr int32_t kWattsCode = 5;
constexpr int32_t kVoltsCode = 6;

/// Left edge of `column` (from 1) on `sheet`, in points.
double ColumnLeft(const Worksheet& sheet, int column) {
  int pixels = 0;
  for (int left = 1; left < column; ++left) pixels += ColumnPixels(sheet.ColumnWidthAt(left));
  return pixels * kPointsPerPixel;
}

/// The number in cell (row, column) of `sheet`, if it holds one.
std::optional<double> NumberAt(const Worksheet& sheet, int row, int column) {
  const CellValue value = sheet.ValueAt(row, column);
  if (!value.IsNumber()) return std::nullopt;
  const double number = value.Number();
  return std::isfinite(number) ? std::optional<double>(number) : std::nullopt;
}

/// The screen's first and last X values as written on "Raw Data", when both
/// are there and span a range.
std::optional<std::pair<double, double>> PlottedXRange(const Worksheet& raw_data,
                                                       const GeneralInfo& general,
                                                       int32_t screen_index) {
  const int64_t points = general.TracePoints;
  if (points < 2) return std::nullopt;
  const int64_t first_row = (points + 6) * screen_index + 12;
  const int64_t last_row = first_row + points - 1;
  if (first_row < 1 || last_row > std::numeric_limits<int16_t>::max()) return std::nullopt;
  const auto start = NumberAt(raw_data, static_cast<int>(first_row), kRawXColumn);
  const auto stop = NumberAt(raw_data, static_cast<int>(last_row), kRawXColumn);
  if (!start || !stop || !(*stop > *start)) return std::nullopt;
  return std::make_pair(*start, *stop);
}

void FormatXScale(Axis& axis, const Worksheet& raw_data, const GeneralInfo& general,
                  int32_t screen_index, const XAxisScale& scale, const ChartSettings& settings) {
  if (UseLogXAxis(scale, settings)) {
    axis.SetScaleType(kXlScaleLogarithmic);
    axis.SetMinimumScale(scale.AxisMin);
    axis.SetMaximumScale(scale.AxisMax);
    return;
  }
  const auto range = PlottedXRange(raw_data, general, screen_index);
  if (!range) return;  // nothing to fix the scale to: automatic
  axis.SetMinimumScale(range->first);
  axis.SetMaximumScale(range->second);
  axis.SetMajorUnit((range->second - range->first) / kXDivisions);
}

/// Whether some series of `chart` plots a finite value from `minimum` to
/// `maximum`.
bool PlotsValueWithin(const Chart& chart, double minimum, double maximum) {
  for (const auto& series : chart.SeriesCollection().items()) {
    const ValueArray values = series->Values();
    for (const CellValue& value : values.values()) {
      if (!value.IsNumber()) continue;
      const double number = value.Number();
      if (std::isfinite(number) && number >= minimum && number <= maximum) return true;
    }
  }
  return false;
}

/// Fixes the Y axis to `y_scale` when the chart shows something within it;
/// otherwise the axis stays automatic, so that no chart comes out empty.
void FormatYScale(Axis& axis, const Chart& chart, const std::optional<YScale>& y_scale) {
  if (!y_scale || !PlotsValueWithin(chart, y_scale->minimum, y_scale->maximum)) return;
  axis.SetMinimumScale(y_scale->minimum);
  axis.SetMaximumScale(y_scale->maximum);
  axis.SetMajorUnit(y_scale->major_unit);
}

}  // namespace

std::optional<YScale> InstrumentYScale(const ScreenInfo& screen, const DigitalValues& digital,
                                       const VerticalAxis& vertical) {
  if (digital.DigitalMode == "ON") return std::nullopt;
  const int32_t code = screen.LevelUnitCode;
  YScale y;
  if (screen.LogScale != 0 && code >= 0 && code <= kLastDbUnitCode) {
    y = {screen.ReferenceLevel - kScreenDivisions * screen.VerticalScale, screen.ReferenceLevel,
         screen.VerticalScale};
  } else if (screen.LogScale == 0 && (code == kWattsCode || code == kVoltsCode)) {
    const double top = screen.ReferenceLevel * vertical.VerticalFactor;
    y = {0, top, top / kScreenDivisions};
  } else {
    return std::nullopt;
  }
  const bool usable = std::isfinite(y.minimum) && std::isfinite(y.maximum) &&
                      std::isfinite(y.major_unit) && y.major_unit > 0 && y.maximum > y.minimum;
  return usable ? std::optional<YScale>(y) : std::nullopt;
}

ChartAxisUnits ChartAxisUnitsOf(const ScreenInfo& screen, const DigitalValues& digital,
                                const ScreenUnits& units, const TimeAxisEntry& zero_span,
                                const VerticalAxis& vertical) {
  if (digital.DigitalMode == "ON") return {units.TimeUnit, units.VerticalUnit};
  if (screen.Span == 0 && zero_span.IsTime != 0) return {zero_span.Unit, vertical.VerticalUnit};
  return {units.XUnit, vertical.VerticalUnit};
}

int32_t ReportBlockRow(int32_t screen_index) {
  const int64_t row = static_cast<int64_t>(screen_index) * kReportBlockRows + 9;
  if (row < 1 || row > kMaxRows) {
    throw RuntimeFailure("Overflow: configuration block of screen " + std::to_string(screen_index));
  }
  return static_cast<int32_t>(row);
}

std::string YAxisTitle(int32_t level_unit_code, const std::string& vertical_unit) {
  std::string prefix = "Level (";
  if (level_unit_code == 7) {
    prefix = "Freq (";
  } else if (level_unit_code == 8 || level_unit_code == 12) {
    prefix = "Degree (";
  } else if (level_unit_code == 10) {
    prefix = "Volts (";
  }
  return prefix + vertical_unit + ")";
}

std::string XAxisTitle(double span, const std::string& x_unit) {
  return (span != 0 ? "Frequency (" : "Time (") + x_unit + ")";
}

std::string ChartTitleText(int32_t screen_index) {
  return "Screen " + std::to_string(static_cast<int64_t>(screen_index) + 1) + " Traces";
}

bool UseLogXAxis(const XAxisScale& scale, const ChartSettings& settings) {
  if (scale.LogX == 0) return false;
  const bool negative_start_plotted =
      scale.StartNegative != 0 && settings.LogXOption == 0 && settings.LogXInUse == 0;
  if (negative_start_plotted) return false;
  return std::isfinite(scale.AxisMin) && std::isfinite(scale.AxisMax) && scale.AxisMin > 0 &&
         scale.AxisMax > scale.AxisMin;
}

void PlaceScreenChart(ChartObject& object, const Worksheet& report, int32_t screen_index) {
  const double left = ColumnLeft(report, kChartFirstColumn);
  const double right = ColumnLeft(report, kChartLastColumn + 1);
  const double top = (ReportBlockRow(screen_index) - 1) * kRowPoints;
  object.SetLeft(left + kChartInset);
  object.SetTop(top + kChartInset);
  object.SetWidth(std::max(0.0, right - left - 2 * kChartInset));
  object.SetHeight(kReportBlockRows * kRowPoints - 2 * kChartInset);
}

void FormatScreenChart(Application& application, const ScreenInfo& screen,
                       const GeneralInfo& general, int32_t screen_index,
                       const ChartAxisUnits& units, const XAxisScale& scale,
                       const std::optional<YScale>& y_scale, const ChartSettings& settings,
                       ChartFeedback& feedback) {
  feedback.SetStatus(kFormattingStatus);
  Workbook& workbook = application.ActiveWorkbook();
  Worksheet& report = workbook.Worksheets()(kReportSheet);
  const Worksheet& raw_data = workbook.Worksheets()(kRawDataSheet);
  if (screen_index < 0 || screen_index >= std::numeric_limits<int32_t>::max()) {
    throw RuntimeFailure("Subscript out of range: chart of screen " + std::to_string(screen_index));
  }
  ChartObject& object = report.ChartObjects(screen_index + 1);
  Chart& chart = object.Chart();

  chart.SetHasTitle(true);
  chart.ChartTitle().SetText(ChartTitleText(screen_index));
  chart.SetHasLegend(true);
  chart.Legend().SetPosition(kXlLegendPositionBottom);

  Axis& x_axis = chart.Axes(kXlCategory);
  x_axis.SetHasTitle(true);
  x_axis.AxisTitle().SetText(XAxisTitle(screen.Span, units.x_unit));
  FormatXScale(x_axis, raw_data, general, screen_index, scale, settings);
  x_axis.TickLabels().SetNumberFormat(kXAxisNumberFormat);
  x_axis.SetHasMajorGridlines(true);
  x_axis.MajorGridlines().Border().SetColor(settings.DivisionLineColor);

  Axis& y_axis = chart.Axes(kXlValue);
  y_axis.SetHasTitle(true);
  y_axis.AxisTitle().SetText(YAxisTitle(screen.LevelUnitCode, units.vertical_unit));
  FormatYScale(y_axis, chart, y_scale);
  y_axis.TickLabels().SetNumberFormat(kYAxisNumberFormat);
  y_axis.SetHasMajorGridlines(true);
  y_axis.MajorGridlines().Border().SetColor(settings.DivisionLineColor);
  // Each axis crosses the other at its low end, so that the tick labels stay
  // at the left and at the bottom whatever the sign of the values.
  x_axis.SetCrosses(kXlAxisCrossesMinimum);
  y_axis.SetCrosses(kXlAxisCrossesMinimum);

  chart.PlotArea().Interior().SetColor(settings.PlotAreaColor);
  PlaceScreenChart(object, report, screen_index);
}

}  // namespace z4400
