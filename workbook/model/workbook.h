// A workbook: its name and file, its ordered sheets, the shared texts and
// cell styles, and which sheet and chart are active.
#ifndef Z4400_WORKBOOK_MODEL_WORKBOOK_H_
#define Z4400_WORKBOOK_MODEL_WORKBOOK_H_

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/runtime_failure.h"
#include "workbook/model/cell_style.h"
#include "workbook/model/chart.h"
#include "workbook/model/chart_sheet.h"
#include "workbook/model/sheet.h"
#include "workbook/model/sheet_lists.h"
#include "workbook/model/string_table.h"
#include "workbook/model/worksheet.h"

namespace z4400 {

/// Raised by `Workbook::SaveAsNew` when a file of that name exists.
class OutputExists : public RuntimeFailure {
 public:
  using RuntimeFailure::RuntimeFailure;
};

class Application;

/// A workbook open in the application.
class Workbook {
 public:
  /// An empty workbook (no sheets) named `name`, not yet saved.
  Workbook(Application* application, std::string name);
  ~Workbook();
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  Application& Parent() const { return *application_; }

  /// File name ("meas.xlsx"), or "Book1" while never saved.
  const std::string& Name() const { return name_; }
  /// Full path of the file, or the name while never saved.
  std::string FullName() const;
  /// Folder of the file; empty while never saved.
  std::filesystem::path Path() const { return path_.parent_path(); }
  /// True once the workbook has a file of its own.
  bool HasFile() const { return !path_.empty(); }

  SheetList Sheets() { return SheetList(this); }
  WorksheetList Worksheets() { return WorksheetList(this); }
  ChartSheetList Charts() { return ChartSheetList(this); }

  /// The active sheet. Throws `RuntimeFailure` when the workbook has none.
  Sheet& ActiveSheet() const;
  /// The active chart: the chart sheet that is the active sheet, else the
  /// embedded chart activated last on the active sheet. Throws
  /// `RuntimeFailure` when there is none.
  Chart& ActiveChart() const;
  bool HasActiveChart() const;

  /// Makes this the application's active workbook.
  void Activate();
  /// Saves to the workbook's own file. Throws `RuntimeFailure` when it has
  /// none yet or the file cannot be written.
  void Save();
  /// Saves as `path` and takes it as the workbook's file and name. A path
  /// without extension gets ".xlsx" (".xls" when the application's version
  /// is below 12); ".xls" is saved in the old binary format, anything else
  /// as .xlsx. An existing file is replaced. Throws `RuntimeFailure` on
  /// failure.
  void SaveAs(const std::filesystem::path& path);
  /// `SaveAs` into a file that must not exist yet: the name is taken by
  /// creating the file exclusively, so that a file that appeared since the
  /// caller looked is never replaced. Throws `OutputExists` when the file
  /// exists, `RuntimeFailure` on any other failure (no file is left then).
  /// The save does not wait for the disk: the workbook is meant to be saved
  /// again once it is complete.
  void SaveAsNew(const std::filesystem::path& path);
  /// Closes the workbook without saving; it is destroyed.
  void Close();

  /// The texts of the cells.
  StringTable& SharedStrings() { return strings_; }
  const StringTable& SharedStrings() const { return strings_; }
  /// The cell styles.
  StyleTable& Styles() { return styles_; }
  const StyleTable& Styles() const { return styles_; }

  // For the sheet objects, the collections, the file reader and writer.

  /// Every sheet in workbook order.
  const std::vector<std::unique_ptr<Sheet>>& sheets() const { return sheets_; }
  /// Appends a sheet without activating it (file reader). Throws
  /// `RuntimeFailure` when the name is invalid or taken.
  Worksheet& AppendWorksheet(std::string name);
  ChartSheet& AppendChartSheet(std::string name);
  /// Inserts `sheet` at `position` (0-based, clamped) and returns it.
  Sheet& InsertSheet(std::unique_ptr<Sheet> sheet, std::size_t position);
  /// Position (0-based) where a new sheet goes: before `before`, after
  /// `after`, else before the active sheet (else at the end).
  std::size_t InsertPosition(const Sheet* before, const Sheet* after) const;
  /// Removes and destroys `sheet`; the next sheet (or the previous when it
  /// was last) becomes active when it was active.
  void RemoveSheet(const Sheet& sheet);
  /// Moves `sheet` to `position` (0-based among the others).
  void MoveSheet(const Sheet& sheet, std::size_t position);
  /// Position of `sheet` from 0; throws when not in this workbook.
  std::size_t PositionOf(const Sheet& sheet) const;
  /// The sheet named `name` without regard to case, or null.
  Sheet* FindSheet(std::string_view name) const;
  /// A free default name: `stem` followed by the next number ("Sheet2").
  std::string NextSheetName(std::string_view stem);
  void SetActiveSheet(Sheet* sheet);
  /// The active sheet or null.
  Sheet* active_sheet() const { return active_sheet_; }
  /// Records the embedded chart activated last (null clears it).
  void SetActiveEmbeddedChart(Chart* chart) { active_embedded_chart_ = chart; }
  /// Forgets `chart` as the active chart (it is going away).
  void ForgetChart(const Chart* chart);
  /// Updates the chart series that refer to sheet `from` to refer to `to`.
  void RenameReferences(std::string_view from, std::string_view to);
  /// Takes `path` as the workbook's file (and its file name as the name).
  void SetFile(const std::filesystem::path& path);

 private:
  Application* application_;
  std::string name_;
  std::filesystem::path path_;
  std::vector<std::unique_ptr<Sheet>> sheets_;
  Sheet* active_sheet_ = nullptr;
  Chart* active_embedded_chart_ = nullptr;
  StringTable strings_;
  StyleTable styles_;
  int sheet_counter_ = 0;
  int chart_counter_ = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_WORKBOOK_H_
