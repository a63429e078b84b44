#include "testing/recording_ui.h"

namespace z4400::testing {

void RecordingUi::ShowStatus(const std::string& text) {
  statuses.push_back(text);
  events.push_back("status: " + text);
}

void RecordingUi::SetProgressRange(int minimum, int maximum) {
  progress_minimum = minimum;
  progress_maximum = maximum;
}

void RecordingUi::SetProgressValue(int value) { progress_values.push_back(value); }

void RecordingUi::ShowPercentage(const std::string& text) { percentages.push_back(text); }

void RecordingUi::ShowMessage(MessageKind kind, const std::string& title, const std::string& text) {
  messages.push_back({kind, title, text});
  events.push_back("message: " + title + ": " + text);
}

bool RecordingUi::AskYesNo(const std::string& title, const std::string& text) {
  questions.push_back({title, text});
  events.push_back("question: " + title + ": " + text);
  if (yes_no_answers.empty()) return false;
  const bool answer = yes_no_answers.front();
  yes_no_answers.pop_front();
  return answer;
}

std::string RecordingUi::ChooseOpenFile(const FileDialogRequest& request) {
  open_dialogs.push_back(request);
  events.push_back("open: " + request.title);
  if (open_answers.empty()) return {};
  std::string answer = open_answers.front();
  open_answers.pop_front();
  return answer;
}

std::string RecordingUi::ChooseSaveFile(const FileDialogRequest& request) {
  save_dialogs.push_back(request);
  events.push_back("save: " + request.initial_name);
  if (save_answers.empty()) return request.initial_name;
  std::string answer = save_answers.front();
  save_answers.pop_front();
  return answer;
}

std::string RecordingUi::ChooseFolder(const std::string& title,
                                      const std::string& /*initial_folder*/) {
  events.push_back("folder: " + title);
  return {};
}

void RecordingUi::SetControlsEnabled(bool enabled) {
  controls_enabled.push_back(enabled);
  events.push_back(enabled ? "controls: on" : "controls: off");
}

void RecordingUi::ShowFileList(const std::vector<std::string>& names) { file_list = names; }

void RecordingUi::WorkbookSaved(const std::string& path) {
  spreadsheet_events.push_back("saved: " + path);
}

void RecordingUi::SpreadsheetQuit() { spreadsheet_events.emplace_back("quit"); }

void RecordingUi::EndProgram() {
  program_ended = true;
  events.push_back("end");
}

}  // namespace z4400::testing
