// The one interface through which the conversion driver, the settings and
// the output naming talk to the user: the status line and progress display,
// message boxes, questions, file dialogs, the main window's controls and its
// file list, and the workbooks saved and closed. The desktop window
// implements it, so does the headless batch command, and the tests use a
// recording fake.
#ifndef Z4400_DRIVER_USER_INTERFACE_H_
#define Z4400_DRIVER_USER_INTERFACE_H_

#include <string>
#include <vector>

namespace z4400 {

/// Icon of a message box; every message box has one OK button.
enum class MessageKind {
  kCritical,     ///< critical-stop icon ("Error Message")
  kInformation,  ///< information icon
  kWarning,      ///< exclamation icon ("Warning !!!")
};

/// What an open or save dialog shows.
struct FileDialogRequest {
  /// Window title, e.g. "Open Z4400 Family source file", "Save Results As".
  std::string title;
  /// Filter in the spreadsheet's form: label and pattern pairs separated by
  /// commas, "XML Files Z4420 family (*.xml),*.xml,(*.csv),*.csv". A label
  /// may be empty. The first pair is the selected one.
  std::string filter;
  /// Initial file name or full path shown in the dialog (save dialog: the
  /// proposed output path); empty for none.
  std::string initial_name;
  /// Folder the dialog starts in when initial_name has none; empty means
  /// the current folder.
  std::string initial_folder;
};

/// The user's side of the converter. Every call is made on the one thread of
/// the program; modal calls return when the user has answered.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Shows a status text in the status label ("Ready" at start). The text
  /// may hold carriage returns (the failure message has three).
  virtual void ShowStatus(const std::string& text) = 0;

  /// Sets the progress bar's range (minimum 0, maximum file count × 50).
  virtual void SetProgressRange(int minimum, int maximum) = 0;

  /// Moves the progress bar to value (within the range last set).
  virtual void SetProgressValue(int value) = 0;

  /// Shows the percentage label text as it stands ("50%", "%", "0%", "").
  virtual void ShowPercentage(const std::string& text) = 0;

  /// Modal message box with one OK button. An empty title means the
  /// program's own name (the default title).
  virtual void ShowMessage(MessageKind kind, const std::string& title, const std::string& text) = 0;

  /// Modal Yes/No question; true when the user answers Yes.
  virtual bool AskYesNo(const std::string& title, const std::string& text) = 0;

  /// Open dialog for one existing file. Returns the chosen full path, or the
  /// empty text when the user cancels.
  virtual std::string ChooseOpenFile(const FileDialogRequest& request) = 0;

  /// Save dialog. Returns the chosen full path, or the empty text when the
  /// user cancels.
  virtual std::string ChooseSaveFile(const FileDialogRequest& request) = 0;

  /// Folder browser. Returns the chosen folder, or the empty text on cancel.
  virtual std::string ChooseFolder(const std::string& title, const std::string& initial_folder) = 0;

  /// The folder the file dialogs start in when nothing else is set (the
  /// user's documents folder on the desktop, the current folder in batch).
  virtual std::string DefaultDataFolder() const = 0;

  /// Enables (after a run) or disables (during a run) the controls that may
  /// not be used while files are converted, and dropping on the list.
  virtual void SetControlsEnabled(bool enabled) = 0;

  /// The source-file list changed: names are the file names of every entry,
  /// in list order (empty after the list was cleared).
  virtual void ShowFileList(const std::vector<std::string>& names) = 0;

  /// Lets the window process its pending events (repaint, input). Called
  /// inside waits, so that a long stage keeps the window responsive.
  virtual void ProcessEvents() = 0;

  /// The workbook of the file being converted was saved to `path` (its full
  /// file name, with the extension the spreadsheet version gives it). It
  /// stays open in the spreadsheet application until `SpreadsheetQuit`: with
  /// a single file, after the run, for the user to look at. Only the window
  /// acts on it; by default nothing happens.
  virtual void WorkbookSaved(const std::string& /*path*/) {}

  /// The shared spreadsheet application quit, closing the workbooks saved
  /// before (with two or more files after each file, and after a failure).
  /// By default nothing happens.
  virtual void SpreadsheetQuit() {}

  /// Ends the whole program after a conversion failure: the window closes
  /// (the batch command exits with status 1). The driver returns at once
  /// after this call and converts nothing more.
  virtual void EndProgram() = 0;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_USER_INTERFACE_H_
