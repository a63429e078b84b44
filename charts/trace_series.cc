#include "charts/trace_series.h"

#include <limits>
#include <map>

#include "charts/result_sheets.h"
#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "common/trace_letters.h"
#include "workbook/model/application.h"
#include "workbook/model/xl_constants.h"
#include "workbook/reports/raw_data_sheet.h"

namespace z4400 {
namespace {

/// Highest level-unit code of the dB units ("dBm" … "dBpW").
constexpr int32_t kLastDbUnitCode = 4;
/// Column of "Raw Data" with the X values mapped onto a logarithmic axis.
constexpr int kRawLogXColumn = 7;

}  // namespace

int32_t TraceColor(const ChartSettings& settings, const std::string& letter) {
  const std::map<std::string, int32_t> colors = {{"A", settings.TraceAColor},
                                                 {"B", settings.TraceBColor},
                                                 {"C", settings.TraceCColor},
                                                 {"O", settings.TraceOColor},
                                                 {"M", settings.TraceMColor}};
  const auto found = colors.find(letter);
  if (found == colors.end()) throw RuntimeFailure("No trace colour for trace " + letter);
  return found->second;
}

int32_t SeriesBorderWeight(int32_t line_weight_index) {
  switch (line_weight_index) {
    case 0:
      return kXlHairline;
    case 1:
      return kXlThin;
    case 2:
      return kXlMedium;
    case 3:
      return kXlThick;
    default:
      return kXlThin;
  }
}

int32_t TraceBlockColumn(int32_t trace_index) {
  const int64_t column = 4 * static_cast<int64_t>(trace_index) + 9;
  if (column < std::numeric_limits<int32_t>::min() + 3 ||
      column > std::numeric_limits<int32_t>::max() - 3) {
    throw RuntimeFailure("Overflow: trace column of trace " + std::to_string(trace_index));
  }
  return static_cast<int32_t>(column);
}

void AddTraceSeries(Application& application, const ScreenInfo& screen, int32_t trace_index,
                    CellRange& x_range, const SeriesRows& rows, int32_t screen_index,
                    const ChartSettings& settings, ChartFeedback& feedback) {
  Workbook& workbook = application.ActiveWorkbook();
  Worksheet& raw_data = workbook.Worksheets()(kRawDataSheet);
  const std::string letter = TraceLetter(trace_index);
  const int32_t color = TraceColor(settings, letter);

  int32_t column = TraceBlockColumn(trace_index);
  for (int offset = 0; offset < 3; ++offset) raw_data.Columns(column + offset).SetColumnWidth(12);
  raw_data.Columns(column + 3).SetColumnWidth(1);
  // A logarithmic dB scale plots the block's second column.
  if (screen.LogScale != 0 && screen.LevelUnitCode <= kLastDbUnitCode) ++column;

  int row = rows.first_row;
  if (screen.LogX != 0) {
    int x_column = kRawXColumn;
    if (settings.LogXInUse == 0) {
      if ((screen.StartNegative & settings.LogXOption) != 0) row = rows.log_x_first_row;
    } else {
      x_column = kRawLogXColumn;
    }
    x_range =
        raw_data.Range(raw_data.Cells(row, x_column), raw_data.Cells(rows.last_row, x_column));
  }
  const CellRange values =
      raw_data.Range(raw_data.Cells(row, column), raw_data.Cells(rows.last_row, column));

  feedback.SetStatus("Adding trace " + letter + " to the graph");
  application.SetDisplayAlerts(false);
  Worksheet& report = workbook.Worksheets()(kReportSheet);
  if (screen_index < 0 || screen_index >= std::numeric_limits<int32_t>::max()) {
    throw RuntimeFailure("Subscript out of range: chart of screen " + std::to_string(screen_index));
  }
  report.ChartObjects(screen_index + 1).Activate();
  Chart& chart = workbook.ActiveChart();
  chart.SeriesCollection().NewSeries();
  Series& series = chart.SeriesCollection(trace_index + 1);
  series.SetName("Trace " + std::to_string(trace_index + 1));
  series.SetXValues(x_range);
  series.SetValues(values);
  series.Border().SetColor(color);
  series.Border().SetWeight(SeriesBorderWeight(settings.LineWeightIndex));
}

}  // namespace z4400
