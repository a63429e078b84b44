// The line writers shared by every labelled block of the report sheets: a
// label, its value with a number format and, for most lines, a unit beside
// it. Each line takes one row; the caller's cursor moves down by one.
#ifndef Z4400_WORKBOOK_REPORTS_REPORT_LINES_H_
#define Z4400_WORKBOOK_REPORTS_REPORT_LINES_H_

#include <cstdint>
#include <string_view>

#include "workbook/excel_app.h"
#include "workbook/model/cell_value.h"
#include "workbook/model/worksheet.h"

namespace z4400 {

/// Where the next report line goes: the row moves down one per line, the
/// column (of the label) stays. Rows and columns count from 1.
struct ReportCursor {
  int16_t row = 1;
  int16_t column = 1;
};

/// Label in (row, column), `value` in the next cell taken as typed input
/// (a text that reads as a number or date is stored as one), that cell
/// formatted with `format`. The cell after it is not touched. Advances the
/// cursor's row; a row past 32,767 is a `RuntimeFailure`.
void WriteReportLine(Worksheet& sheet, ReportCursor& cursor, std::string_view label,
                     std::string_view value, std::string_view format);

/// As `WriteReportLine`, with `value` written as given (a number stays a
/// number) and `unit`, without its leading and trailing blanks, in the
/// third cell.
void WriteReportLineUnit(Worksheet& sheet, ReportCursor& cursor, std::string_view label,
                         const CellValue& value, std::string_view unit, std::string_view format);

/// Makes (row, column) and (row, column + 1) bold: the heading cells of a
/// block.
void BoldPair(Worksheet& sheet, int row, int column);

/// The worksheet `name` of the active workbook, made the active sheet.
/// Throws `RuntimeFailure` when the application is not running or the
/// worksheet does not exist.
Worksheet& ActivateWorksheet(const ExcelApp& excel, std::string_view name);

/// The active sheet of the active workbook as a worksheet. Throws
/// `RuntimeFailure` when there is none or it is a chart sheet.
Worksheet& ActiveWorksheet(const ExcelApp& excel);

/// `text` without leading and trailing blanks.
std::string_view TrimBlanks(std::string_view text);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_REPORT_LINES_H_
