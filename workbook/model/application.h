// The application object at the root of the workbook model: what the
// converter would ask of a running spreadsheet application (version, status
// bar, alerts, window state) and its list of open workbooks.
#ifndef Z4400_WORKBOOK_MODEL_APPLICATION_H_
#define Z4400_WORKBOOK_MODEL_APPLICATION_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/workbook.h"
#include "workbook/model/workbook_files.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {

class Application;

/// The version the model reports unless the user sets another.
inline constexpr const char* kDefaultVersion = "16.0";

/// The open workbooks, from 1, in order of opening.
class WorkbookList {
 public:
  explicit WorkbookList(Application* application) : application_(application) {}
  int Count() const;
  /// Workbook `index` (from 1) or named `name` (its file name, without
  /// regard to case). Throws `RuntimeFailure` when absent.
  Workbook& Item(int index) const;
  Workbook& Item(std::string_view name) const;
  Workbook& operator()(int index) const { return Item(index); }
  Workbook& operator()(std::string_view name) const { return Item(name); }
  /// Adds a new workbook ("Book n") with `SheetsInNewWorkbook` worksheets,
  /// or, when `template_path` is not empty, a new unsaved workbook holding
  /// the sheets of that file (named after it, "name1"). It becomes the
  /// active workbook. Throws `RuntimeFailure` when the template cannot be
  /// read.
  Workbook& Add(const std::filesystem::path& template_path = {}) const;
  /// Opens the workbook file `path` (.xlsx) and makes it the active
  /// workbook; a workbook of that file already open is just activated.
  /// Throws `RuntimeFailure` when the file cannot be read or another open
  /// workbook has the same file name.
  Workbook& Open(const std::filesystem::path& path) const;

 private:
  Application* application_;
};

/// The root of the model. Not copyable; shared between the workbook layer
/// and the conversion driver.
class Application {
 public:
  /// `files` writes and reads the workbook files; without it saving and
  /// opening throw `RuntimeFailure`.
  explicit Application(std::string version = kDefaultVersion,
                       std::shared_ptr<const WorkbookFiles> files = nullptr);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  /// Version text, "16.0" by default.
  const std::string& Version() const { return version_; }

  const std::string& StatusBar() const { return status_bar_; }
  void SetStatusBar(std::string_view text) { status_bar_ = std::string(text); }
  /// Whether confirmations would be asked (never, in the model; kept).
  bool DisplayAlerts() const { return display_alerts_; }
  void SetDisplayAlerts(bool on) { display_alerts_ = on; }
  bool DisplayStatusBar() const { return display_status_bar_; }
  void SetDisplayStatusBar(bool on) { display_status_bar_ = on; }
  int32_t WindowState() const { return window_state_; }
  void SetWindowState(int32_t state) { window_state_ = state; }
  bool Visible() const { return visible_; }
  void SetVisible(bool visible) { visible_ = visible; }
  /// Worksheets of a new workbook (1 by default).
  int SheetsInNewWorkbook() const { return sheets_in_new_workbook_; }
  /// Throws `RuntimeFailure` outside 1 to 255.
  void SetSheetsInNewWorkbook(int count);

  WorkbookList Workbooks() { return WorkbookList(this); }

  /// The active workbook. Throws `RuntimeFailure` when none is open.
  Workbook& ActiveWorkbook() const;
  bool HasActiveWorkbook() const { return active_workbook_ != nullptr; }
  /// The active sheet of the active workbook. Throws when there is none.
  Sheet& ActiveSheet() const;
  /// The active chart of the active workbook. Throws when there is none.
  Chart& ActiveChart() const;

  /// Closes every workbook without saving and ends the application; later
  /// calls that need it throw `RuntimeFailure`.
  void Quit();
  bool Running() const { return running_; }
  /// Throws `RuntimeFailure` once the application has quit.
  void CheckRunning() const;
  /// What saves and opens the workbooks. Throws `RuntimeFailure` when the
  /// application was given nothing.
  const WorkbookFiles& Files() const;

  // For the workbooks and their collection.

  const std::vector<std::unique_ptr<Workbook>>& workbooks() const { return workbooks_; }
  /// Adds `workbook` at the end of the list and activates it.
  Workbook& AdoptWorkbook(std::unique_ptr<Workbook> workbook);
  void SetActiveWorkbook(Workbook* workbook) { active_workbook_ = workbook; }
  /// Removes and destroys `workbook`; the last remaining one becomes active.
  void RemoveWorkbook(const Workbook& workbook);
  /// A default name for a new workbook: "Book1", "Book2", …
  std::string NextWorkbookName();

 private:
  std::string version_;
  std::shared_ptr<const WorkbookFiles> files_;
  std::string status_bar_;
  bool display_alerts_ = true;
  bool display_status_bar_ = true;
  int32_t window_state_ = kXlNormal;
  bool visible_ = false;
  int sheets_in_new_workbook_ = 1;
  bool running_ = true;
  std::vector<std::unique_ptr<Workbook>> workbooks_;
  Workbook* active_workbook_ = nullptr;
  int book_counter_ = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_APPLICATION_H_
