// One series per trace on its screen's chart: the trace's column block on
// "Raw Data", the cells it plots, its name, colour and line weight.
#ifndef Z4400_CHARTS_TRACE_SERIES_H_
#define Z4400_CHARTS_TRACE_SERIES_H_

#include <cstdint>
#include <string>

#include "charts/chart_settings.h"
#include "source/records.h"
#include "workbook/model/cell_range.h"

namespace z4400 {

class Application;

/// The line colour of the trace lettered `letter` ("A", "B", "C", "M",
/// "O"). Throws `RuntimeFailure` for any other key.
int32_t TraceColor(const ChartSettings& settings, const std::string& letter);

/// The series border weight for the settings' line weight index: 0 hairline
/// (1), 1 thin (2), 2 medium (-4138), 3 thick (4), anything else thin.
int32_t SeriesBorderWeight(int32_t line_weight_index);

/// First column of trace `trace_index`'s block on "Raw Data" (I for trace
/// 0, M for trace 1 …): three value columns and a separator. Throws
/// `RuntimeFailure` when the column number overflows.
int32_t TraceBlockColumn(int32_t trace_index);

/// Where a screen's chart takes the X values and the current trace's values.
struct SeriesRows {
  int16_t first_row = 0;        ///< first data row of the screen's block
  int16_t last_row = 0;         ///< last data row
  int16_t log_x_first_row = 0;  ///< first row at or above the X scale threshold
};

/// Adds trace `trace_index` of the screen to chart object `screen_index` + 1
/// of "Report": sizes the trace's columns on "Raw Data", shifts to the
/// block's second column for a logarithmic dB scale, and, for a logarithmic
/// X axis, replaces `x_range` (kept by the caller for the later traces of
/// the screen) by column F from the threshold row or by column G. Announces
/// "Adding trace " + letter + " to the graph". The series is named "Trace "
/// + (trace_index + 1). Traces must come in order from 0. A missing chart
/// object or series throws `RuntimeFailure`.
void AddTraceSeries(Application& application, const ScreenInfo& screen, int32_t trace_index,
                    CellRange& x_range, const SeriesRows& rows, int32_t screen_index,
                    const ChartSettings& settings, ChartFeedback& feedback);

}  // namespace z4400

#endif  // Z4400_CHARTS_TRACE_SERIES_H_
