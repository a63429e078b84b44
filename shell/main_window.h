// The main window (`Form1`): the list of source files, the output folder,
// the Start button, the status line with the progress display, and the
// menus that reach the options dialog and the environment reports. It is
// the converter's user interface on the desktop.
#ifndef Z4400_SHELL_MAIN_WINDOW_H_
#define Z4400_SHELL_MAIN_WINDOW_H_

#include <QMainWindow>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "driver/converter.h"
#include "driver/user_interface.h"
#include "shell/environment_reports.h"
#include "shell/remembered_folders.h"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace z4400 {

class FileDropList;
class Form2;
class ModalDialogs;

/// The window's caption, also the first line of the version message.
inline constexpr char kWindowTitle[] = "Z4400 Converter";
/// The version label (`Label5`).
inline constexpr char kVersionLabel[] = "Ver 2.1";

/// What the window is built with besides its dialogs.
struct WindowOptions {
  /// Folder of "Data.ini" and "Log.txt".
  std::filesystem::path settings_folder;
  /// The conversion stages of a run.
  StagesFactory make_stages;
  /// Reads the spreadsheet application's version for "Excel version".
  SpreadsheetVersionProbe version_probe;
  /// Folder the file dialogs start in; empty means the user's documents.
  std::string data_folder;
  /// File that keeps the folders the dialogs were last used in across runs;
  /// empty means `RememberedFolders::DefaultFile()`.
  std::filesystem::path remembered_folders_file;
};

/// `Form1`. Every modal box and dialog goes through `dialogs`, which must
/// outlive the window. Closing the window ends the program without saving
/// the settings; `ProgramEnding` tells the application to quit. The open
/// dialogs start in the folder of the file picked last and "Browse..." in
/// the folder chosen last, remembered across runs; the Delete key in the
/// list removes the selected files; each line's tooltip is its full path.
class Form1 : public QMainWindow, public UserInterface {
  Q_OBJECT

 public:
  Form1(ModalDialogs& dialogs, WindowOptions options, QWidget* parent = nullptr);
  ~Form1() override;

  /// The window's start-up: defaults, "Data.ini", the files given on the
  /// command line added, the always-on-top state, the output folder and
  /// check box shown, the run reset; files given are converted at once
  /// (and a single finished workbook opened); the list ends empty.
  void StartUp(const std::vector<std::string>& command_line_files);

  // The converter's user interface.
  void ShowStatus(const std::string& text) override;
  void SetProgressRange(int minimum, int maximum) override;
  void SetProgressValue(int value) override;
  void ShowPercentage(const std::string& text) override;
  void ShowMessage(MessageKind kind, const std::string& title, const std::string& text) override;
  bool AskYesNo(const std::string& title, const std::string& text) override;
  std::string ChooseOpenFile(const FileDialogRequest& request) override;
  std::string ChooseSaveFile(const FileDialogRequest& request) override;
  std::string ChooseFolder(const std::string& title, const std::string& initial_folder) override;
  std::string DefaultDataFolder() const override;
  void SetControlsEnabled(bool enabled) override;
  void ShowFileList(const std::vector<std::string>& names) override;
  void ProcessEvents() override;
  void WorkbookSaved(const std::string& path) override;
  void SpreadsheetQuit() override;
  void EndProgram() override;

  Converter& converter() { return *converter_; }
  /// The options dialog (`Form2`), for the menu and for tests.
  Form2& OptionsDialog() { return *options_dialog_; }
  /// Whether the options dialog shows its otherwise hidden "Debug Mode" box
  /// (toggled by each right-button drop on the list).
  bool RevealsDebugMode() const { return reveal_debug_mode_; }
  /// True while the window is kept above other windows.
  bool KeptOnTop() const { return on_top_; }
  /// True while files are being converted.
  bool Running() const { return running_; }
  /// True once the program was ended (closed, or a failure ended it).
  bool Ended() const { return ended_; }

 signals:
  /// The program ends: the application should quit.
  void ProgramEnding();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void BuildControls();
  void BuildMenus();

  // Button and menu handlers.
  void StartClicked();
  void AddFileClicked();
  void RemoveFileClicked();
  void RemoveAllClicked();
  void BrowseClicked();
  void SaveClicked();
  void OptionClicked();
  void OptionsSaved();
  void VersionClicked();
  void SpreadsheetVersionClicked();
  void OsVersionClicked();
  void EndClicked();

  /// Files dropped on the list; a right-button drop also toggles whether the
  /// options dialog shows "Debug Mode".
  void ListDropped(const std::vector<std::string>& paths, bool right_button);
  /// Files dropped on the window or the list, through `AddFile` one by one.
  void AddDroppedFiles(const std::vector<std::string>& paths);
  /// Converts the list as the command line's files are: controls off,
  /// `ConvertAllFiles`, `FinishRun` unless a failure ended the program.
  void ConvertAtStartUp();
  /// After a run: the workbook of a single converted file opens on the
  /// desktop; a close asked for during the run ends the program now.
  void AfterRun(int32_t result);
  /// Shows setting lines 1 and 2 in `Text1` and `Check1`.
  void ShowOutputSettings();
  /// Where "Browse..." starts: the folder the box shows when it exists, else
  /// the folder chosen last, else the default data folder.
  std::string BrowseStartFolder() const;

  /// Keeps the window above others (or not) from now on.
  void SetAlwaysOnTop(bool on);
  /// Leaves the always-on-top state for a dialog, and takes it up again.
  void LeaveOnTop();
  void TakeUpOnTop();
  void ApplyOnTopHint(bool on);

  /// Runs a handler; a run-time failure that reaches the window (debug
  /// mode, a 102nd listed file) is shown, and ends the program when it
  /// broke off a run.
  template <typename Action>
  void Guarded(Action&& action);

  ModalDialogs& dialogs_;
  WindowOptions options_;
  RememberedFolders folders_;
  /// The workbook saved last and not closed since by quitting the
  /// spreadsheet application; empty when none is left open.
  std::string open_workbook_;
  std::unique_ptr<Converter> converter_;

  FileDropList* list_ = nullptr;            // List1
  QPushButton* add_file_ = nullptr;         // Command4
  QPushButton* remove_file_ = nullptr;      // Command3
  QPushButton* start_ = nullptr;            // Command1
  QPushButton* browse_ = nullptr;           // Command2
  QLineEdit* output_folder_ = nullptr;      // Text1
  QCheckBox* use_output_folder_ = nullptr;  // Check1
  QLabel* status_ = nullptr;                // Label4
  QLabel* percentage_ = nullptr;            // Label1
  QLabel* version_ = nullptr;               // Label5
  QProgressBar* progress_ = nullptr;        // ProgressBar1
  std::vector<QAction*> run_locked_actions_;
  Form2* options_dialog_ = nullptr;

  bool reveal_debug_mode_ = false;
  bool on_top_ = false;
  bool running_ = false;
  bool close_requested_ = false;
  bool ended_ = false;
};

}  // namespace z4400

#endif  // Z4400_SHELL_MAIN_WINDOW_H_
