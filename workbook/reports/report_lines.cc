#include "workbook/reports/report_lines.h"

#include <limits>
#include <string>

#include "common/runtime_failure.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

void NextRow(ReportCursor& cursor) {
  if (cursor.row == std::numeric_limits<int16_t>::max()) {
    throw RuntimeFailure("Overflow: report row beyond 32767");
  }
  ++cursor.row;
}

Application& RunningApplication(const ExcelApp& excel) {
  if (excel.application() == nullptr) {
    throw RuntimeFailure("Object variable not set: the spreadsheet application is not running");
  }
  excel.application()->CheckRunning();
  return *excel.application();
}

}  // namespace

void WriteReportLine(Worksheet& sheet, ReportCursor& cursor, std::string_view label,
                     std::string_view value, std::string_view format) {
  sheet.Cells(cursor.row, cursor.column).SetValue(CellValue(label));
  const CellRange value_cell = sheet.Cells(cursor.row, cursor.column + 1);
  value_cell.SetValue(CellValue(value));
  value_cell.SetNumberFormat(format);
  NextRow(cursor);
}

void WriteReportLineUnit(Worksheet& sheet, ReportCursor& cursor, std::string_view label,
                         const CellValue& value, std::string_view unit, std::string_view format) {
  sheet.Cells(cursor.row, cursor.column).SetValue(CellValue(label));
  const CellRange value_cell = sheet.Cells(cursor.row, cursor.column + 1);
  value_cell.SetValue(value);
  value_cell.SetNumberFormat(format);
  sheet.Cells(cursor.row, cursor.column + 2).SetValue(CellValue(TrimBlanks(unit)));
  NextRow(cursor);
}

void BoldPair(Worksheet& sheet, int row, int column) {
  sheet.Range(sheet.Cells(row, column), sheet.Cells(row, column + 1)).Font().SetBold(true);
}

Worksheet& ActivateWorksheet(const ExcelApp& excel, std::string_view name) {
  Worksheet& sheet = RunningApplication(excel).ActiveWorkbook().Worksheets()(name);
  sheet.Activate();
  return sheet;
}

Worksheet& ActiveWorksheet(const ExcelApp& excel) {
  Sheet& sheet = RunningApplication(excel).ActiveSheet();
  if (sheet.Type() != SheetType::kWorksheet) {
    throw RuntimeFailure("Type mismatch: the active sheet \"" + sheet.Name() +
                         "\" is not a worksheet");
  }
  return static_cast<Worksheet&>(sheet);
}

std::string_view TrimBlanks(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

}  // namespace z4400
