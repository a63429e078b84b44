#include "charts/graph_sheets.h"

#include <memory>

#include "charts/result_sheets.h"
#include "common/sheet_names.h"
#include "workbook/model/application.h"

namespace z4400 {

bool GraphSheetsWanted(int16_t spreadsheet_version, const ChartSettings& settings) {
  return spreadsheet_version < kXlsxSpreadsheetVersion && settings.GraphSheets != 0;
}

std::string GraphSheetName(const std::string& title, int number) {
  return title.empty() || !IsValidSheetName(title) ? "Graph " + std::to_string(number) : title;
}

void CopyGraphSheets(Application& application, int16_t spreadsheet_version,
                     const ChartSettings& settings) {
  if (!GraphSheetsWanted(spreadsheet_version, settings)) return;
  Workbook& workbook = application.ActiveWorkbook();
  Worksheet& report = workbook.Worksheets()(kReportSheet);
  const int count = report.ChartObjects().Count();
  for (int number = 1; number <= count; ++number) {
    const Chart& chart = report.ChartObjects(number).Chart();
    const std::string title = chart.HasTitle() ? chart.ChartTitle().Text() : std::string();
    const std::string stem = GraphSheetName(title, number);
    std::string name = stem;
    for (int copy = 2; workbook.FindSheet(name) != nullptr; ++copy) {
      name = stem + " (" + std::to_string(copy) + ")";
    }
    workbook.InsertSheet(std::make_unique<ChartSheet>(&workbook, name, chart.Clone(&workbook)),
                         workbook.sheets().size());
  }
  report.Activate();
}

}  // namespace z4400
