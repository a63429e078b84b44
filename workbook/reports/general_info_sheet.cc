#include "workbook/reports/general_info_sheet.h"

#include "workbook/reports/report_lines.h"

namespace z4400 {
namespace {

constexpr std::string_view kTextFormat = "0.###";
constexpr std::string_view kDateFormat = "dd/mmmm/yyyy";
constexpr double kLabelColumnWidth = 18;

}  // namespace

int16_t WriteGeneralInfo(const ExcelApp& excel, const GeneralInfo& info, std::string_view file_name,
                         std::string_view sheet_name, std::string_view heading) {
  Worksheet& sheet = ActivateWorksheet(excel, sheet_name);
  const CellRange title_cell = sheet.Range("A1");
  title_cell.SetValue(CellValue(heading));
  title_cell.Font().SetBold(true);

  ReportCursor cursor{2, 1};
  WriteReportLine(sheet, cursor, "File name", file_name, kTextFormat);
  sheet.Cells(cursor.row, 1).Font().SetItalic(false);
  WriteReportLine(sheet, cursor, info.SourcePath, "", kTextFormat);
  WriteReportLine(sheet, cursor, "Instrument reference", info.Model, kTextFormat);
  WriteReportLine(sheet, cursor, "Date", info.Date, kDateFormat);
  WriteReportLine(sheet, cursor, "Title", info.Title, kTextFormat);

  sheet.Columns(2).AutoFit();
  sheet.Columns(1).SetColumnWidth(kLabelColumnWidth);
  return 0;
}

}  // namespace z4400
