// A user interface for tests: it records everything the converter shows and
// answers questions and dialogs from scripted answers.
#ifndef Z4400_TESTING_RECORDING_UI_H_
#define Z4400_TESTING_RECORDING_UI_H_

#include <deque>
#include <string>
#include <vector>

#include "driver/user_interface.h"

namespace z4400::testing {

/// One message box shown.
struct RecordedMessage {
  MessageKind kind = MessageKind::kInformation;
  std::string title;
  std::string text;
};

/// One Yes/No question asked.
struct RecordedQuestion {
  std::string title;
  std::string text;
};

/// Records every call; answers from the queues below, first in first out.
class RecordingUi : public UserInterface {
 public:
  // What the converter showed, in order.
  std::vector<std::string> statuses;
  std::vector<RecordedMessage> messages;
  std::vector<RecordedQuestion> questions;
  std::vector<FileDialogRequest> open_dialogs;
  std::vector<FileDialogRequest> save_dialogs;
  std::vector<std::string> percentages;
  std::vector<int> progress_values;
  int progress_minimum = -1;
  int progress_maximum = -1;
  std::vector<bool> controls_enabled;  ///< every SetControlsEnabled call
  std::vector<std::string> file_list;  ///< the list as last shown
  int processed_events = 0;
  bool program_ended = false;
  /// Every call in order, as "status: text", "message: title: text",
  /// "question: title: text", "open: title", "save: initial name",
  /// "controls: on|off", "end", so tests can check the order of things.
  std::vector<std::string> events;
  /// What the spreadsheet application did with the workbooks, in order:
  /// "saved: path" for each workbook saved, "quit" when it quit.
  std::vector<std::string> spreadsheet_events;

  // Scripted answers. An empty queue answers No, cancels an open dialog
  // and accepts the initial name of a save dialog.
  std::deque<bool> yes_no_answers;
  std::deque<std::string> open_answers;
  std::deque<std::string> save_answers;
  std::string default_data_folder;

  void ShowStatus(const std::string& text) override;
  void SetProgressRange(int minimum, int maximum) override;
  void SetProgressValue(int value) override;
  void ShowPercentage(const std::string& text) override;
  void ShowMessage(MessageKind kind, const std::string& title, const std::string& text) override;
  bool AskYesNo(const std::string& title, const std::string& text) override;
  std::string ChooseOpenFile(const FileDialogRequest& request) override;
  std::string ChooseSaveFile(const FileDialogRequest& request) override;
  std::string ChooseFolder(const std::string& title, const std::string& initial_folder) override;
  std::string DefaultDataFolder() const override { return default_data_folder; }
  void SetControlsEnabled(bool enabled) override;
  void ShowFileList(const std::vector<std::string>& names) override;
  void ProcessEvents() override { ++processed_events; }
  void WorkbookSaved(const std::string& path) override;
  void SpreadsheetQuit() override;
  void EndProgram() override;

  /// The progress bar's value as last set (0 before any).
  int progress_value() const { return progress_values.empty() ? 0 : progress_values.back(); }
};

}  // namespace z4400::testing

#endif  // Z4400_TESTING_RECORDING_UI_H_
