// A running workbook layer with the three result sheets, for the tests of
// the report writers, and short ways to read back what a cell shows.
#ifndef Z4400_WORKBOOK_REPORTS_REPORT_SHEETS_TEST_UTIL_H_
#define Z4400_WORKBOOK_REPORTS_REPORT_SHEETS_TEST_UTIL_H_

#include <string>
#include <string_view>

#include "workbook/excel_app.h"
#include "workbook/model/application.h"
#include "workbook/model/display_text.h"
#include "workbook/model/worksheet.h"

namespace z4400::testing {

/// A started application with one new workbook holding "Report", "Raw Data"
/// and "Markers Details", "Report" active.
inline ExcelApp StartWithResultSheets() {
  ExcelApp excel;
  excel.Excel_Start(false);
  Workbook& workbook = excel.application()->Workbooks().Add();
  Sheet& raw_data = workbook.Sheets()(1);
  raw_data.SetName("Raw Data");
  workbook.Worksheets().Add(nullptr, &raw_data).SetName("Markers Details");
  workbook.Worksheets().Add(&raw_data, nullptr).SetName("Report");
  workbook.Worksheets()("Report").Activate();
  return excel;
}

inline Worksheet& SheetOf(const ExcelApp& excel, std::string_view name) {
  return excel.application()->ActiveWorkbook().Worksheets()(name);
}

/// The value of `address` ("B9") on `sheet`.
inline CellValue At(Worksheet& sheet, std::string_view address) {
  return sheet.Range(address).Value();
}

/// The text `address` shows with its number format.
inline std::string Shown(Worksheet& sheet, std::string_view address) {
  const CellRange cell = sheet.Range(address);
  return DisplayText(cell.Value(), cell.NumberFormat());
}

}  // namespace z4400::testing

#endif  // Z4400_WORKBOOK_REPORTS_REPORT_SHEETS_TEST_UTIL_H_
