// The user interface each worker of a batch gives its converter: it answers
// as the command line's options say and keeps what the driver shows for the
// file being converted, so that the batch can report it in list order.
#ifndef Z4400_DRIVER_BATCH_FILE_UI_H_
#define Z4400_DRIVER_BATCH_FILE_UI_H_

#include <string>
#include <vector>

#include "driver/user_interface.h"

namespace z4400 {

/// What the driver showed and decided while one file was converted.
struct FileNotes {
  std::vector<std::string> StatusTexts;  ///< status texts, each on one line
  std::vector<std::string> Messages;     ///< message box texts, each on one line
  std::vector<std::string> LogLines;     ///< lines for "Log.txt", without line ends
  /// The existing workbook that was not overwritten (no `--overwrite`).
  std::string RefusedOverwrite;
  /// A second name of the workbook the file replaces, kept until the batch
  /// knows that the file's own workbook stays; empty when none was replaced.
  std::string Backup;
};

/// A user interface without a window for one worker of a batch.
class BatchFileUi : public UserInterface {
 public:
  BatchFileUi(bool overwrite, std::string data_folder);

  void ShowStatus(const std::string& text) override;
  void SetProgressRange(int /*minimum*/, int /*maximum*/) override {}
  void SetProgressValue(int /*value*/) override {}
  void ShowPercentage(const std::string& /*text*/) override {}
  void ShowMessage(MessageKind kind, const std::string& title, const std::string& text) override;
  /// The overwrite question: answered by `overwrite`. A Yes first keeps the
  /// existing workbook under a second, hidden name (see `FileNotes::Backup`).
  bool AskYesNo(const std::string& title, const std::string& text) override;
  std::string ChooseOpenFile(const FileDialogRequest& /*request*/) override { return {}; }
  /// Accepts the proposed name; after a refused overwrite, cancels.
  std::string ChooseSaveFile(const FileDialogRequest& request) override;
  std::string ChooseFolder(const std::string& /*title*/,
                           const std::string& /*initial_folder*/) override {
    return {};
  }
  std::string DefaultDataFolder() const override { return data_folder_; }
  void SetControlsEnabled(bool /*enabled*/) override {}
  void ShowFileList(const std::vector<std::string>& /*names*/) override {}
  void ProcessEvents() override {}
  void EndProgram() override {}

  /// Keeps a line for "Log.txt".
  void AddLogLine(const std::string& line) { notes_.LogLines.push_back(line); }
  /// What was shown since the last call, or since `DropNotes`.
  FileNotes TakeNotes();
  /// Forgets what was shown outside a file (the end of a run).
  void DropNotes();

 private:
  bool overwrite_;
  std::string data_folder_;
  FileNotes notes_;
  /// The existing file whose overwrite was refused; the next save dialog
  /// cancels.
  std::string refused_path_;
};

/// A hidden second name for `path` in its folder, of the form the saves use
/// for their temporary files; empty when the link cannot be made.
std::string LinkBackup(const std::string& path);

}  // namespace z4400

#endif  // Z4400_DRIVER_BATCH_FILE_UI_H_
