// The workbook layer: the one class through which the converter drives the
// workbook — starting and quitting the application, creating, opening,
// saving and closing workbooks, managing worksheets, reading and writing
// cells, and building charts. Each operation keeps its historical contract:
// some fail silently and answer false, some let the error pass to the
// caller as a `RuntimeFailure`, and a few always answer false.
#ifndef Z4400_WORKBOOK_EXCEL_APP_H_
#define Z4400_WORKBOOK_EXCEL_APP_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "workbook/model/application.h"
#include "workbook/model/cell_value.h"
#include "workbook/model/column_letters.h"

namespace z4400 {

/// A scale setting of `Chart_XAxis` / `Chart_YAxis`: the boolean `true`
/// means automatic, a number fixes the bound or step.
using AxisSetting = std::variant<bool, double>;

/// Label number format of `Chart_AddMarker`: "0." followed by `decimals`
/// zeros, `decimals` rounded half to even ("0.000" for 3, "0." for 0 or
/// less). Throws `RuntimeFailure` ("Overflow") when the rounded count does
/// not fit 16 bits.
std::string MarkerLabelFormat(double decimals);

/// The workbook layer. Holds only the reference to the application, empty
/// until `Excel_Start` and after `Excel_Quit`; every other operation works
/// on the application's active workbook and sheet at the time of the call.
/// Before `Excel_Start` operations that need the application fail (silently
/// or with `RuntimeFailure`, as each one says).
class ExcelApp {
 public:
  /// `version` is what the started application reports as its `Version`.
  explicit ExcelApp(std::string version = kDefaultVersion);

  /// The application, shared with the conversion driver; null when not
  /// started.
  const std::shared_ptr<Application>& application() const { return application_; }

  // Application and workbooks.

  /// Creates a new application (replacing the stored one without quitting
  /// it), minimised, `Visible` as given, alerts off. Always false.
  bool Excel_Start(bool visible);
  /// True when the application's window state equals `state`. Error passes.
  bool Excel_WindowState(int32_t state);
  /// With `save_changes` saves every open workbook that has a file of its
  /// own; then quits the application and drops it. Always false. Error
  /// passes.
  bool Excel_Quit(bool save_changes);
  /// Closes workbook `name` without saving. Fails silently.
  bool Workbook_Close(std::string_view name);
  /// True when a file named like `full_name` exists in its folder and its
  /// full path equals `full_name`, both compared in lower case. Error
  /// passes (the application must be running).
  bool Workbook_Exist(std::string_view full_name);
  /// Adds a workbook (from `template_path` unless "") and saves it at once
  /// as `file_name`. Fails silently.
  bool Workbook_New(std::string_view file_name, std::string_view template_path);
  /// Opens the workbook file `file_name`. Fails silently.
  bool Workbook_Open(std::string_view file_name);
  /// Saves workbook `name` to its own file. Fails silently.
  bool Workbook_Save(std::string_view name);
  /// Saves workbook `name` as `file_name`. Fails silently.
  bool Workbook_SaveAs(std::string_view name, std::string_view file_name);
  /// Activates workbook `name`. Always false.
  bool Workbook_Select(std::string_view name);

  // Worksheets and cells.

  /// Deletes sheet `name`. Fails silently.
  bool Worksheet_Delete(std::string_view name);
  /// Value of cell (row, column) of the active sheet. Error passes.
  CellValue Worksheet_GetCellValue(int16_t row, int16_t column);
  /// Moves sheet `name` after the last sheet: the boolean true on success,
  /// the empty value on failure (fails silently).
  CellValue Worksheet_MoveToEnd(std::string_view name);
  /// Copies worksheet `name` before the first sheet and renames the first
  /// worksheet `new_name`. Always false; fails silently.
  bool Worksheet_Copy(std::string_view name, std::string_view new_name);
  /// Adds worksheet `name` before the first worksheet unless a worksheet
  /// has that name in lower case (then false). Fails silently.
  bool Worksheet_New(std::string_view name);
  bool Worksheet_Protect(std::string_view name);
  bool Worksheet_Unprotect(std::string_view name);
  /// Value of `Range(address)` of the active sheet (its top-left cell for a
  /// range of several cells). Error passes.
  CellValue Worksheet_ReadCell(std::string_view address);
  /// Makes worksheet `name` the active sheet. Always false.
  bool Worksheet_Select(std::string_view name);
  /// Sets cell (row, column) of the active sheet. Error passes.
  void Worksheet_SetCellValue(int16_t row, int16_t column, const CellValue& value);
  /// Sets every cell of `Range(address)` of the active sheet. Error passes.
  void Worksheet_WriteCell(std::string_view address, const CellValue& value);
  /// Renames the active sheet. Fails silently.
  bool Worksheet_Rename(std::string_view new_name);
  /// True when a sheet's name equals `name` exactly. Error passes.
  bool Worksheet_Exist(std::string_view name);
  /// Names of the worksheets, element 0 holding worksheet 1. Error passes
  /// (no worksheets is an error).
  std::vector<std::string> Worksheet_WorksheetsNames();

  // Charts (chart sheets of the active workbook, by name).

  /// Adds a chart sheet named `name`. Fails silently.
  bool Chart_New(std::string_view name);
  /// Fills the placeholder series of a new chart or adds a series over
  /// rows first_row to first_row + row_count of the two columns of sheet
  /// `sheet_name`. Fails silently.
  void Chart_AddData(std::string_view chart_name, std::string_view sheet_name, int16_t x_column,
                     int16_t y_column, int16_t first_row, int16_t row_count,
                     std::string_view series_name);
  /// Marks a point of series `series_index`: when point k is the first
  /// whose X value is at least `x`, point k + 1 gets the automatic marker
  /// style and, with `show_label`, a value label, the series' labels taking
  /// the format `MarkerLabelFormat(decimals)`. Nothing is marked when no
  /// point qualifies. When k + 1 is not below the number of points the
  /// error "Subscript out of range" passes to the caller and nothing is
  /// marked. Every other error passes too.
  void Chart_AddMarker(std::string_view chart_name, int16_t series_index, double x, bool show_label,
                       double decimals);
  void Chart_Type(std::string_view chart_name, int32_t chart_type);
  void Chart_Legend(std::string_view chart_name, bool has_legend, int32_t position);
  void Chart_Location(std::string_view chart_name, int32_t where, std::string_view sheet_name);
  void Chart_Title(std::string_view chart_name, bool has_title, std::string_view title);
  void Chart_XAxis(std::string_view chart_name, bool has_title, AxisSetting minimum,
                   AxisSetting maximum, AxisSetting major_unit, std::string_view title);
  void Chart_YAxis(std::string_view chart_name, bool has_title, AxisSetting minimum,
                   AxisSetting maximum, AxisSetting major_unit, std::string_view title);
  void Chart_XLabelPosition(std::string_view chart_name, int32_t position);
  void Chart_YLabelPosition(std::string_view chart_name, int32_t position);

  // Column letters (they need no application).

  static std::string ExcelColNumber2ColLetter(int column) {
    return z4400::ExcelColNumber2ColLetter(column);
  }
  static int ExcelColLetter2ColNumber(std::string_view letters) {
    return z4400::ExcelColLetter2ColNumber(letters);
  }
  static std::string ExcelDecallageColumn(std::string_view letters, int offset) {
    return z4400::ExcelDecallageColumn(letters, offset);
  }

 private:
  /// The running application. Throws `RuntimeFailure` when not started.
  Application& App() const;
  Chart& ChartNamed(std::string_view name) const;
  void SetAxis(std::string_view chart_name, int32_t type, bool has_title,
               const AxisSetting& minimum, const AxisSetting& maximum,
               const AxisSetting& major_unit, std::string_view title);

  std::string version_;
  std::shared_ptr<Application> application_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_EXCEL_APP_H_
