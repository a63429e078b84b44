// Graph sheets: for the old spreadsheet versions, each screen's chart of
// "Report" also gets a chart sheet of its own, where it fills the window.
#ifndef Z4400_CHARTS_GRAPH_SHEETS_H_
#define Z4400_CHARTS_GRAPH_SHEETS_H_

#include <cstdint>
#include <string>

#include "charts/chart_settings.h"

namespace z4400 {

class Application;

/// First spreadsheet version whose workbooks are ".xlsx".
inline constexpr int16_t kXlsxSpreadsheetVersion = 12;

/// Whether the charts are copied: a version below 12 with the graph-sheets
/// option on.
bool GraphSheetsWanted(int16_t spreadsheet_version, const ChartSettings& settings);

/// Name of the chart sheet that copies chart `number` titled `title`: the
/// title, or "Graph " + `number` when the title cannot name a sheet.
std::string GraphSheetName(const std::string& title, int number);

/// When `GraphSheetsWanted`, copies every chart object of "Report", in
/// order, to a new chart sheet after the last sheet (a name already taken
/// gets " (2)", " (3)" …): the same series,
/// formats and markers, referring to the same cells. "Report" stays the
/// active sheet. Does nothing otherwise.
void CopyGraphSheets(Application& application, int16_t spreadsheet_version,
                     const ChartSettings& settings);

}  // namespace z4400

#endif  // Z4400_CHARTS_GRAPH_SHEETS_H_
