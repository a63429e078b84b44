// The three result sheets of every output workbook and the empty chart that
// each screen with traces gets on "Report" before its traces are drawn.
#ifndef Z4400_CHARTS_RESULT_SHEETS_H_
#define Z4400_CHARTS_RESULT_SHEETS_H_

#include <cstdint>
#include <string>

#include "workbook/model/cell_range.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/markers_details_sheet.h"

namespace z4400 {

class Application;
class Sheet;
class Worksheet;

/// Status bar text while the sheets are made.
inline constexpr char kCreatingSheetsStatus[] = "Creating/formatting the various result sheets";

/// Column of "Raw Data" that holds the X values of a screen's points (F).
inline constexpr int kRawXColumn = 6;

/// Saves the active workbook as `output_file_name` (the extension follows
/// the application's version; an existing file is replaced without a
/// question), then reduces it to "Report", "Raw Data" and "Markers Details"
/// in that order, the former first sheet becoming "Raw Data". The column
/// settings all go to "Raw Data", the sheet active when they start: columns
/// A to F end 10 wide and A italic, while "Report" and "Markers Details"
/// keep the default widths. "Markers Details" is active at the end.
/// Failures of the workbook (a file that cannot be written) throw
/// `RuntimeFailure` to the caller.
void CreateResultSheets(Application& application, const std::string& output_file_name);

/// Adds a chart sheet, makes its chart an XY chart with straight lines and
/// no point markers, and moves it onto "Report" as the next chart object
/// (the active chart). Widens column D of "Raw Data" to 12 and narrows H to
/// 1. Returns the X values of the screen: "Raw Data" F`first_row` to
/// F`last_row`.
CellRange PrepareScreenChart(Application& application, int16_t first_row, int16_t last_row);

/// `sheet` as a worksheet; throws `RuntimeFailure` for a chart sheet.
Worksheet& AsWorksheet(Sheet& sheet);

}  // namespace z4400

#endif  // Z4400_CHARTS_RESULT_SHEETS_H_
