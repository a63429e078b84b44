#include "workbook/excel_app.h"

#include <cmath>
#include <exception>
#include <filesystem>
#include <system_error>

#include "common/checked16.h"
#include "common/runtime_failure.h"
#include "workbook/model/name_compare.h"
#include "workbook/model/typed_input.h"
#include "workbook/spreadsheet_files.h"

namespace z4400 {
namespace {

// Runs `action` the "fails silently" way: any failure ends it where it got
// to and answers false.
template <typename Action>
bool Silently(Action action) {
  try {
    action();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

Worksheet& AsWorksheet(Sheet& sheet) {
  if (sheet.Type() != SheetType::kWorksheet) {
    throw RuntimeFailure("Sheet " + sheet.Name() + " is not a worksheet");
  }
  return static_cast<Worksheet&>(sheet);
}

// "A5:A105" for column 1 from row 5 over 100 further rows.
std::string ColumnRangeText(int column, int first_row, int row_count) {
  const std::string letters = ExcelColNumber2ColLetter(column);
  return letters + std::to_string(first_row) + ":" + letters +
         std::to_string(Checked16(static_cast<int64_t>(first_row) + row_count));
}

}  // namespace

std::string MarkerLabelFormat(double decimals) {
  const double rounded = std::nearbyint(decimals);  // half to even
  if (!(std::fabs(rounded) <= INT16_MAX)) throw RuntimeFailure("Overflow");
  std::string format = "0.";
  for (int i = 1; i <= static_cast<int>(rounded); ++i) format += '0';
  return format;
}

ExcelApp::ExcelApp(std::string version) : version_(std::move(version)) {}

Application& ExcelApp::App() const {
  if (application_ == nullptr) throw RuntimeFailure("The spreadsheet application is not started");
  application_->CheckRunning();
  return *application_;
}

Chart& ExcelApp::ChartNamed(std::string_view name) const {
  return App().ActiveWorkbook().Charts()(name).Chart();
}

bool ExcelApp::Excel_Start(bool visible) {
  application_ = std::make_shared<Application>(version_, std::make_shared<SpreadsheetFiles>());
  application_->SetWindowState(kXlMinimized);
  application_->SetVisible(visible);
  application_->SetDisplayAlerts(false);
  return false;
}

bool ExcelApp::Excel_WindowState(int32_t state) { return App().WindowState() == state; }

bool ExcelApp::Excel_Quit(bool save_changes) {
  Application& app = App();
  if (save_changes) {
    // A workbook that never had a file of its own has nowhere to go: quitting
    // discards it like the others.
    for (const auto& book : app.workbooks()) {
      if (book->HasFile()) book->Save();
    }
  }
  app.Quit();
  application_.reset();
  return false;
}

bool ExcelApp::Workbook_Close(std::string_view name) {
  return Silently([&] { App().Workbooks()(name).Close(); });
}

bool ExcelApp::Workbook_Exist(std::string_view full_name) {
  App();
  const std::filesystem::path wanted{std::string(full_name)};
  if (!wanted.has_filename()) return false;
  const std::string wanted_file = AsciiLower(wanted.filename().string());
  const std::string wanted_full = AsciiLower(full_name);
  std::error_code error;
  const std::filesystem::path folder =
      wanted.has_parent_path() ? wanted.parent_path() : std::filesystem::current_path(error);
  bool found = false;
  // Every file of that name is compared, whatever its case; the search
  // reports full paths.
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (!entry.is_regular_file(error)) continue;
    if (AsciiLower(entry.path().filename().string()) != wanted_file) continue;
    const std::filesystem::path full = std::filesystem::absolute(entry.path(), error);
    if (AsciiLower(full.lexically_normal().string()) == wanted_full) found = true;
  }
  return found;
}

bool ExcelApp::Workbook_New(std::string_view file_name, std::string_view template_path) {
  return Silently([&] {
    Workbook& book = App().Workbooks().Add(std::filesystem::path(std::string(template_path)));
    book.SaveAs(std::filesystem::path(std::string(file_name)));
  });
}

bool ExcelApp::Workbook_Open(std::string_view file_name) {
  return Silently([&] { App().Workbooks().Open(std::filesystem::path(std::string(file_name))); });
}

bool ExcelApp::Workbook_Save(std::string_view name) {
  return Silently([&] { App().Workbooks()(name).Save(); });
}

bool ExcelApp::Workbook_SaveAs(std::string_view name, std::string_view file_name) {
  return Silently(
      [&] { App().Workbooks()(name).SaveAs(std::filesystem::path(std::string(file_name))); });
}

bool ExcelApp::Workbook_Select(std::string_view name) {
  Silently([&] { App().Workbooks()(name).Activate(); });
  return false;
}

bool ExcelApp::Worksheet_Delete(std::string_view name) {
  return Silently([&] { App().ActiveWorkbook().Sheets()(name).Delete(); });
}

CellValue ExcelApp::Worksheet_GetCellValue(int16_t row, int16_t column) {
  return AsWorksheet(App().ActiveSheet()).Cells(row, column).Value();
}

CellValue ExcelApp::Worksheet_MoveToEnd(std::string_view name) {
  CellValue result;
  Silently([&] {
    Workbook& book = App().ActiveWorkbook();
    SheetList sheets = book.Sheets();
    sheets(name).Move(nullptr, &sheets(sheets.Count()));
    result = CellValue(true);
  });
  return result;
}

bool ExcelApp::Worksheet_Copy(std::string_view name, std::string_view new_name) {
  Silently([&] {
    Workbook& book = App().ActiveWorkbook();
    book.Worksheets()(name).Copy(&book.Sheets()(1), nullptr);
    book.Worksheets()(1).SetName(new_name);
  });
  return false;
}

bool ExcelApp::Worksheet_New(std::string_view name) {
  bool added = false;
  Silently([&] {
    Workbook& book = App().ActiveWorkbook();
    WorksheetList worksheets = book.Worksheets();
    const std::string wanted = AsciiLower(name);
    for (int i = 1; i <= worksheets.Count(); ++i) {
      if (AsciiLower(worksheets(i).Name()) == wanted) return;
    }
    Worksheet& sheet = worksheets.Add(&worksheets(1), nullptr);
    sheet.SetName(name);
    added = true;
  });
  return added;
}

bool ExcelApp::Worksheet_Protect(std::string_view name) {
  return Silently([&] { App().ActiveWorkbook().Worksheets()(name).Protect(); });
}

bool ExcelApp::Worksheet_Unprotect(std::string_view name) {
  return Silently([&] { App().ActiveWorkbook().Worksheets()(name).Unprotect(); });
}

CellValue ExcelApp::Worksheet_ReadCell(std::string_view address) {
  return AsWorksheet(App().ActiveWorkbook().ActiveSheet()).Range(address).Value();
}

bool ExcelApp::Worksheet_Select(std::string_view name) {
  Silently([&] { App().ActiveWorkbook().Worksheets()(name).Select(); });
  return false;
}

void ExcelApp::Worksheet_SetCellValue(int16_t row, int16_t column, const CellValue& value) {
  AsWorksheet(App().ActiveSheet()).Cells(row, column).SetValue(value);
}

void ExcelApp::Worksheet_WriteCell(std::string_view address, const CellValue& value) {
  AsWorksheet(App().ActiveWorkbook().ActiveSheet()).Range(address).SetValue(value);
}

bool ExcelApp::Worksheet_Rename(std::string_view new_name) {
  return Silently([&] { App().ActiveSheet().SetName(new_name); });
}

bool ExcelApp::Worksheet_Exist(std::string_view name) {
  SheetList sheets = App().ActiveWorkbook().Sheets();
  for (int i = 1; i <= sheets.Count(); ++i) {
    if (sheets(i).Name() == name) return true;
  }
  return false;
}

std::vector<std::string> ExcelApp::Worksheet_WorksheetsNames() {
  WorksheetList worksheets = App().ActiveWorkbook().Worksheets();
  if (worksheets.Count() == 0) throw RuntimeFailure("Subscript out of range: no worksheets");
  std::vector<std::string> names;
  names.reserve(static_cast<std::size_t>(worksheets.Count()));
  for (int i = 1; i <= worksheets.Count(); ++i) names.push_back(worksheets(i).Name());
  return names;
}

bool ExcelApp::Chart_New(std::string_view name) {
  return Silently([&] { App().ActiveWorkbook().Charts().Add().SetName(name); });
}

void ExcelApp::Chart_AddData(std::string_view chart_name, std::string_view sheet_name,
                             int16_t x_column, int16_t y_column, int16_t first_row,
                             int16_t row_count, std::string_view series_name) {
  Silently([&] {
    const std::string x_text = ColumnRangeText(x_column, first_row, row_count);
    const std::string y_text = ColumnRangeText(y_column, first_row, row_count);
    Workbook& book = App().ActiveWorkbook();
    Worksheet& data = AsWorksheet(book.Sheets()(sheet_name));
    const CellRange x_range = data.Range(x_text);
    const CellRange y_range = data.Range(y_text);
    Chart& chart = book.Charts()(chart_name).Chart();
    SeriesList& collection = chart.SeriesCollection();
    int n = collection.Count();
    // A new chart may carry one placeholder series of a single value: the
    // first data fills it instead of adding a second series.
    if (!(n == 1 && collection(1).Values().UBound() == 1)) {
      collection.NewSeries();
      ++n;
    }
    Series& series = collection(n);
    series.SetName(series_name);
    series.SetXValues(x_range);
    series.SetValues(y_range);
  });
}

void ExcelApp::Chart_AddMarker(std::string_view chart_name, int16_t series_index, double x,
                               bool show_label, double decimals) {
  const std::string label_format = MarkerLabelFormat(decimals);
  Series& series = ChartNamed(chart_name).SeriesCollection(series_index);
  const ValueArray x_values = series.XValues();
  const int count = x_values.UBound();
  // The walk stops after the first point at or beyond x, with i one past it.
  int i = 1;
  bool found = false;
  while (i <= count) {
    const bool reached = NumberOf(x_values(i)) >= x;
    ++i;
    if (reached) {
      found = true;
      break;
    }
  }
  if (!found) return;
  // The point marked is the one after the point found. Its neighbour check
  // compares a distance with itself and so never moves the point.
  const int point = i;
  if (i >= count) {
    // The neighbour is read at 2 × i, beyond the values: a marker at or next
    // to the last point is never drawn and the caller gets the error.
    x_values(2 * i);
  }
  series.Points(point).SetMarkerStyle(kXlMarkerStyleAutomatic);
  if (show_label) {
    series.Points(point).ApplyDataLabels(kXlDataLabelsShowValue, true, false);
    series.DataLabels().SetNumberFormat(label_format);
  }
}

void ExcelApp::Chart_Type(std::string_view chart_name, int32_t chart_type) {
  ChartNamed(chart_name).SetChartType(chart_type);
}

void ExcelApp::Chart_Legend(std::string_view chart_name, bool has_legend, int32_t position) {
  Chart& chart = ChartNamed(chart_name);
  chart.SetHasLegend(has_legend);
  if (has_legend) chart.Legend().SetPosition(position);
}

void ExcelApp::Chart_Location(std::string_view chart_name, int32_t where,
                              std::string_view sheet_name) {
  ChartNamed(chart_name).Location(where, sheet_name);
}

void ExcelApp::Chart_Title(std::string_view chart_name, bool has_title, std::string_view title) {
  Chart& chart = ChartNamed(chart_name);
  chart.SetHasTitle(has_title);
  if (has_title) chart.ChartTitle().SetText(title);
}

void ExcelApp::SetAxis(std::string_view chart_name, int32_t type, bool has_title,
                       const AxisSetting& minimum, const AxisSetting& maximum,
                       const AxisSetting& major_unit, std::string_view title) {
  Axis& axis = ChartNamed(chart_name).Axes(type, kXlPrimary);
  axis.SetHasTitle(has_title);
  // True means automatic; false counts as the number 0.
  auto is_auto = [](const AxisSetting& setting) {
    return std::holds_alternative<bool>(setting) && std::get<bool>(setting);
  };
  auto number = [](const AxisSetting& setting) {
    return std::holds_alternative<double>(setting) ? std::get<double>(setting) : 0.0;
  };
  if (is_auto(minimum)) {
    axis.SetMinimumScaleIsAuto(true);
  } else {
    axis.SetMinimumScale(number(minimum));
  }
  if (is_auto(maximum)) {
    axis.SetMaximumScaleIsAuto(true);
  } else {
    axis.SetMaximumScale(number(maximum));
  }
  if (is_auto(major_unit)) {
    axis.SetMajorUnitIsAuto(true);
  } else {
    axis.SetMajorUnit(number(major_unit));
  }
  if (has_title) axis.AxisTitle().SetText(title);
}

void ExcelApp::Chart_XAxis(std::string_view chart_name, bool has_title, AxisSetting minimum,
                           AxisSetting maximum, AxisSetting major_unit, std::string_view title) {
  SetAxis(chart_name, kXlCategory, has_title, minimum, maximum, major_unit, title);
}

void ExcelApp::Chart_YAxis(std::string_view chart_name, bool has_title, AxisSetting minimum,
                           AxisSetting maximum, AxisSetting major_unit, std::string_view title) {
  SetAxis(chart_name, kXlValue, has_title, minimum, maximum, major_unit, title);
}

void ExcelApp::Chart_XLabelPosition(std::string_view chart_name, int32_t position) {
  ChartNamed(chart_name).Axes(kXlCategory).SetTickLabelPosition(position);
}

void ExcelApp::Chart_YLabelPosition(std::string_view chart_name, int32_t position) {
  ChartNamed(chart_name).Axes(kXlValue).SetTickLabelPosition(position);
}

}  // namespace z4400
