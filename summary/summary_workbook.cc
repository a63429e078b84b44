#include "summary/summary_workbook.h"

#include <array>

#include "workbook/model/application.h"
#include "workbook/model/typed_input.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {
namespace {

constexpr std::array<std::string_view, 8> kFileHeaders = {
    "Source file", "Status", "Reason", "Model", "Date", "Title", "Screens", "Workbook"};
constexpr std::array<std::string_view, 9> kMarkerHeaders = {
    "Source file", "Screen", "Marker", "Trace",          "Position",
    "Unit",        "Level",  "Unit",   "Delta reference"};
constexpr std::string_view kPositionFormat = "0.#########";
constexpr std::string_view kDateFormat = "yyyy-mm-dd";
/// Long paths and titles are cut off on screen rather than making the
/// sheet wider than a window.
constexpr double kWidestColumn = 60;

/// A text cell holding `text` exactly: a path or title such as "1e3" or
/// "TRUE" stays text.
void PutText(Worksheet& sheet, int row, int column, const std::string& text) {
  if (!text.empty()) sheet.StoreValue(row, column, CellValue(text));
}

/// The bold header row, frozen, with the filter over the whole table.
template <size_t N>
void FinishTable(Worksheet& sheet, const std::array<std::string_view, N>& headers, int last_row) {
  const int columns = static_cast<int>(N);
  for (int column = 1; column <= columns; ++column) {
    sheet.StoreValue(1, column, CellValue(headers[column - 1]));
    sheet.Cells(1, column).Font().SetBold(true);
  }
  sheet.FreezeTopRows(1);
  sheet.SetAutoFilter({1, 1, last_row, columns});
  for (int column = 1; column <= columns; ++column) {
    const CellRange range = sheet.Columns(column);
    range.AutoFit();
    // Room for the filter button beside the header.
    range.SetColumnWidth(std::min(range.ColumnWidth() + 2, kWidestColumn));
  }
}

void WriteFiles(Worksheet& sheet, const std::vector<FileSummary>& files) {
  int row = 1;
  for (const FileSummary& file : files) {
    ++row;
    PutText(sheet, row, 1, file.source);
    PutText(sheet, row, 2, file.converted ? "converted" : "failed");
    PutText(sheet, row, 3, file.reason);
    PutText(sheet, row, 4, file.model);
    if (const CellValue date = ParseTypedInput(file.date); date.IsDate()) {
      sheet.StoreValue(row, 5, date);
      sheet.Cells(row, 5).SetNumberFormat(kDateFormat);
    } else {
      PutText(sheet, row, 5, file.date);
    }
    PutText(sheet, row, 6, file.title);
    sheet.StoreValue(row, 7, CellValue(file.screens));
    PutText(sheet, row, 8, file.workbook);
  }
  FinishTable(sheet, kFileHeaders, row);
}

void WriteMarkers(Worksheet& sheet, const std::vector<FileSummary>& files) {
  int row = 1;
  for (const FileSummary& file : files) {
    if (!file.converted) continue;
    for (const SummaryMarker& marker : file.markers) {
      ++row;
      const MarkerListEntry& entry = marker.entry;
      PutText(sheet, row, 1, file.source);
      sheet.StoreValue(row, 2, CellValue(marker.screen));
      sheet.StoreValue(row, 3, entry.label);
      PutText(sheet, row, 4, entry.trace);
      sheet.StoreValue(row, 5, CellValue(entry.position.Scaled));
      sheet.Cells(row, 5).SetNumberFormat(kPositionFormat);
      PutText(sheet, row, 6, entry.position.Unit);
      sheet.StoreValue(row, 7, CellValue(entry.level.Scaled));
      sheet.Cells(row, 7).SetNumberFormat(entry.level_format);
      PutText(sheet, row, 8, entry.level.Unit);
      if (marker.delta_reference != 0) sheet.StoreValue(row, 9, CellValue(marker.delta_reference));
    }
  }
  FinishTable(sheet, kMarkerHeaders, row);
}

}  // namespace

bool SaveSummaryWorkbook(const std::vector<FileSummary>& files, const std::filesystem::path& path,
                         std::string* error) {
  Application application;
  Workbook& book = application.Workbooks().Add();
  Worksheet& file_sheet = book.Worksheets()(1);
  file_sheet.SetName(std::string(kSummaryFilesSheet));
  Worksheet& marker_sheet = book.Worksheets().Add(nullptr, &file_sheet);
  marker_sheet.SetName(std::string(kSummaryMarkersSheet));
  WriteFiles(file_sheet, files);
  WriteMarkers(marker_sheet, files);
  file_sheet.Activate();
  return SaveXlsx(book, path, error);
}

}  // namespace z4400
