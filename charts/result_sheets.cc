#include "charts/result_sheets.h"

#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "workbook/model/application.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {
namespace {

/// Column settings of the result sheets, as (column, width) pairs.
struct ColumnWidth {
  int column;
  double width;
};

}  // namespace

Worksheet& AsWorksheet(Sheet& sheet) {
  if (sheet.Type() != SheetType::kWorksheet) {
    throw RuntimeFailure("Type mismatch: " + sheet.Name() + " is not a worksheet");
  }
  return static_cast<Worksheet&>(sheet);
}

void CreateResultSheets(Application& application, const std::string& output_file_name) {
  Workbook& workbook = application.ActiveWorkbook();
  application.SetDisplayAlerts(false);
  // The output was checked free (or emptied with the user's consent) when it
  // was named; a file that appeared since then is not replaced.
  workbook.SaveAsNew(output_file_name);
  application.SetDisplayAlerts(true);
  application.SetDisplayStatusBar(true);
  application.SetStatusBar(kCreatingSheetsStatus);

  for (int index = workbook.Sheets().Count(); index >= 2; --index) {
    application.SetDisplayAlerts(false);
    workbook.Sheets()(index).Delete();
    application.SetDisplayAlerts(true);
  }
  Sheet& raw_data = workbook.Sheets()(1);
  raw_data.SetName(kRawDataSheet);
  workbook.Worksheets().Add(&raw_data, nullptr).SetName(kReportSheet);
  workbook.Worksheets().Add(nullptr, &raw_data).SetName(kMarkersDetailsSheet);

  // Every column setting goes to the sheet active at this point, "Raw Data",
  // even while the other two sheets are activated in turn: the workbook
  // has always come out this way and the reports are read as such.
  raw_data.Activate();
  Worksheet& target = AsWorksheet(workbook.ActiveSheet());
  target.Columns(1).SetColumnWidth(18);
  target.Columns(1).Font().SetItalic(true);
  for (const ColumnWidth& setting : {ColumnWidth{2, 10}, ColumnWidth{3, 6}, ColumnWidth{4, 18}}) {
    target.Columns(setting.column).SetColumnWidth(setting.width);
  }

  workbook.Worksheets()(kReportSheet).Activate();
  target.Columns(1).Font().SetItalic(true);
  for (const ColumnWidth& setting : {ColumnWidth{1, 18}, ColumnWidth{2, 10}, ColumnWidth{3, 6}}) {
    target.Columns(setting.column).SetColumnWidth(setting.width);
  }

  workbook.Worksheets()(kMarkersDetailsSheet).Activate();
  for (int column = 1; column <= 6; ++column) target.Columns(column).SetColumnWidth(10);
}

CellRange PrepareScreenChart(Application& application, int16_t first_row, int16_t last_row) {
  Workbook& workbook = application.ActiveWorkbook();
  workbook.Charts().Add();
  Chart& chart = workbook.ActiveChart();
  chart.SetChartType(kXlXYScatterLinesNoMarkers);
  chart.Location(kXlLocationAsObject, kReportSheet);

  Worksheet& raw_data = workbook.Worksheets()(kRawDataSheet);
  CellRange x_range =
      raw_data.Range(raw_data.Cells(first_row, kRawXColumn), raw_data.Cells(last_row, kRawXColumn));
  // Three passes over the same column: the block's index column D.
  for (int pass = 1; pass <= 3; ++pass) raw_data.Columns(4).SetColumnWidth(12);
  raw_data.Columns(8).SetColumnWidth(1);
  return x_range;
}

}  // namespace z4400
