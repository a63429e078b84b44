// The user interface of the headless batch conversion: status texts and
// progress on the error stream, messages printed, questions answered from
// the command line's options, dialogs that accept what they propose.
#ifndef Z4400_DRIVER_CONSOLE_UI_H_
#define Z4400_DRIVER_CONSOLE_UI_H_

#include <ostream>
#include <string>
#include <vector>

#include "driver/user_interface.h"

namespace z4400 {

/// A user interface without a window. The overwrite question is answered by
/// `overwrite`; a refused overwrite makes the next save dialog cancel (no
/// one could type another name) after naming the existing file.
class ConsoleUi : public UserInterface {
 public:
  /// `out` receives everything; `live` draws the progress as one redrawn
  /// line (a terminal) instead of one line per status text.
  ConsoleUi(std::ostream& out, bool live, bool overwrite, std::string data_folder);
  ~ConsoleUi() override;

  void ShowStatus(const std::string& text) override;
  void SetProgressRange(int minimum, int maximum) override;
  void SetProgressValue(int value) override;
  void ShowPercentage(const std::string& text) override;
  void ShowMessage(MessageKind kind, const std::string& title, const std::string& text) override;
  bool AskYesNo(const std::string& title, const std::string& text) override;
  std::string ChooseOpenFile(const FileDialogRequest& request) override;
  std::string ChooseSaveFile(const FileDialogRequest& request) override;
  std::string ChooseFolder(const std::string& title, const std::string& initial_folder) override;
  std::string DefaultDataFolder() const override { return data_folder_; }
  void SetControlsEnabled(bool /*enabled*/) override {}
  void ShowFileList(const std::vector<std::string>& /*names*/) override {}
  void ProcessEvents() override {}
  void EndProgram() override;

  /// True once a failure ended the program.
  bool ended() const { return ended_; }
  /// Prints a note of the command itself (not of the converter), ending the
  /// live line first.
  void Note(const std::string& text);

 private:
  /// Redraws the live progress line.
  void DrawLive();
  /// Ends the live line so that the next output starts on a line of its own.
  void BreakLive();

  std::ostream& out_;
  bool live_;
  bool overwrite_;
  std::string data_folder_;
  std::string status_;
  int maximum_ = 0;
  int value_ = 0;
  std::string percentage_;
  bool live_line_open_ = false;
  /// The existing file whose overwrite was refused; the next save dialog
  /// reports it and cancels.
  std::string refused_path_;
  bool ended_ = false;
};

/// A text shown on one line: carriage returns and line feeds become " / ",
/// runs of them count once.
std::string OneLine(const std::string& text);

}  // namespace z4400

#endif  // Z4400_DRIVER_CONSOLE_UI_H_
