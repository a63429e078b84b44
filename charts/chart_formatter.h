// The finishing touches of a screen's chart once its traces are drawn: the
// title, the axis titles, scales and number formats, the plot area and
// gridline colours, and the chart's place on "Report" beside the screen's
// configuration block.
#ifndef Z4400_CHARTS_CHART_FORMATTER_H_
#define Z4400_CHARTS_CHART_FORMATTER_H_

#include <cstdint>
#include <optional>
#include <string>

#include "charts/chart_settings.h"
#include "source/records.h"
#include "source/screen_tables.h"
#include "workbook/reports/screen_units.h"

namespace z4400 {

class Application;
class ChartObject;
class Worksheet;

inline constexpr char kFormattingStatus[] = "Formatting the graph";
/// Number formats of the tick labels.
inline constexpr char kXAxisNumberFormat[] = "0.00";
inline constexpr char kYAxisNumberFormat[] = "0.0";

/// First row of screen `screen_index`'s configuration block on "Report"; a
/// block is at most this many rows. Throws `RuntimeFailure` for a screen
/// whose block would lie outside the worksheet.
int32_t ReportBlockRow(int32_t screen_index);
inline constexpr int kReportBlockRows = 17;
/// Columns the chart covers on "Report": D to I, between the configuration
/// block (A to C) and the marker list (from J).
inline constexpr int kChartFirstColumn = 4;
inline constexpr int kChartLastColumn = 9;

/// The units the axis titles show: the X values' unit on "Raw Data" and the
/// screen's vertical unit.
struct ChartAxisUnits {
  std::string x_unit;
  std::string vertical_unit;
};

/// The units of a screen's axes as "Raw Data" and the configuration block
/// show them: X in the time unit of a digital screen, the sweep time's unit
/// of a zero-span screen (`zero_span`, its time-axis entry) or the X unit of
/// a spectrum screen; vertically the unit of a digital screen's "Scale" row,
/// or the spectrum screen's vertical unit (`vertical`).
ChartAxisUnits ChartAxisUnitsOf(const ScreenInfo& screen, const DigitalValues& digital,
                                const ScreenUnits& units, const TimeAxisEntry& zero_span,
                                const VerticalAxis& vertical);

/// "Freq (" for level-unit code 7, "Degree (" for 8 and 12, "Volts (" for
/// 10, "Level (" for any other, then `vertical_unit` and ")".
std::string YAxisTitle(int32_t level_unit_code, const std::string& vertical_unit);
/// "Frequency (" when `span` is not 0, "Time (" otherwise, then `x_unit`
/// and ")".
std::string XAxisTitle(double span, const std::string& x_unit);
/// "Screen " + (screen_index + 1) + " Traces".
std::string ChartTitleText(int32_t screen_index);

/// A fixed scale of the Y axis, in the unit of the plotted values.
struct YScale {
  double minimum = 0;
  double maximum = 0;
  double major_unit = 0;
  friend bool operator==(const YScale&, const YScale&) = default;
};

/// The Y scale of the instrument's own screen: the reference level at the
/// top and ten divisions of the scale below it, in the unit the chart plots.
/// A spectrum screen in a dB unit with a logarithmic vertical scale runs
/// from the reference level down ten divisions of its "dB/div"; one in
/// "Watts" or "Volts" with a linear scale from its reference level (the
/// levels' unit times the screen's `VerticalFactor`, as the series plot
/// them) down to 0 in ten steps. Any other screen (digital, dB levels on a
/// linear scale, watts or volts on a logarithmic one), a scale that is not
/// above 0 or bounds that are not finite give none.
std::optional<YScale> InstrumentYScale(const ScreenInfo& screen, const DigitalValues& digital,
                                       const VerticalAxis& vertical);

/// Whether the screen's X axis is drawn logarithmically: its scale record is
/// marked so, the plotted X values are all above 0 (a negative start is
/// either skipped by the log-X option or mapped by the log-X-in-use flag),
/// and its bounds make a logarithmic axis.
bool UseLogXAxis(const XAxisScale& scale, const ChartSettings& settings);

/// Places `object` on `report` beside the configuration block of screen
/// `screen_index`: over columns D to I and the block's 17 rows, a little
/// inside them.
void PlaceScreenChart(ChartObject& object, const Worksheet& report, int32_t screen_index);

/// Formats chart object `screen_index` + 1 of "Report" (announcing
/// "Formatting the graph"): chart title, axis titles, X scale from the
/// screen's first to its last X value on "Raw Data" with a tenth of the
/// range as major unit (or the logarithmic bounds of `scale`), the Y scale
/// `y_scale` when the chart plots a value inside it (else automatic), tick
/// label formats, plot area and gridline colours from the
/// settings, legend below the plot, and its place on the sheet. A missing
/// chart object throws `RuntimeFailure`.
void FormatScreenChart(Application& application, const ScreenInfo& screen,
                       const GeneralInfo& general, int32_t screen_index,
                       const ChartAxisUnits& units, const XAxisScale& scale,
                       const std::optional<YScale>& y_scale, const ChartSettings& settings,
                       ChartFeedback& feedback);

}  // namespace z4400

#endif  // Z4400_CHARTS_CHART_FORMATTER_H_
