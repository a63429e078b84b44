// What the main window does: start-up, the buttons and menus, dropped
// files, the always-on-top state and the end of the program.
#include <QCheckBox>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QSysInfo>
#include <exception>

#include "shell/file_drop_list.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "shell/options_dialog.h"

namespace z4400 {
namespace {

/// Title of the box that reports a run-time failure reaching the window.
constexpr char kRunTimeErrorTitle[] = "Run-time error";

}  // namespace

template <typename Action>
void Form1::Guarded(Action&& action) {
  try {
    action();
  } catch (const std::exception& failure) {
    const bool broke_off_run = running_;
    running_ = false;
    ShowMessage(MessageKind::kCritical, kRunTimeErrorTitle, failure.what());
    // A run broken off half way cannot go on: end as the failure path does.
    if (broke_off_run) EndProgram();
  }
}

// ---- Start-up ---------------------------------------------------------------------

void Form1::StartUp(const std::vector<std::string>& command_line_files) {
  Guarded([&] {
    converter_->InitDefaults();
    converter_->LoadSettings();
    converter_->run().OutputDirectory = converter_->settings().OutputDirectory;
    for (const std::string& path : command_line_files) converter_->AddFile(path);
    SetAlwaysOnTop(converter_->settings().AlwaysOnTop != 0);
    ShowOutputSettings();
    converter_->ResetRun();
    if (converter_->files().FileCount() > 0) ConvertAtStartUp();
    if (!ended_) converter_->ClearFileList();
  });
}

void Form1::ConvertAtStartUp() {
  running_ = true;
  SetControlsEnabled(false);
  const int32_t result = converter_->ConvertAllFiles();
  if (!converter_->ProgramEnded()) converter_->FinishRun();
  running_ = false;
  AfterRun(result);
}

void Form1::AfterRun(int32_t result) {
  if (close_requested_) {
    ended_ = true;
    emit ProgramEnding();
    return;
  }
  if (ended_) return;
  if (result == 0 && !open_workbook_.empty()) dialogs_.OpenWorkbook(open_workbook_);
  open_workbook_.clear();
}

void Form1::ShowOutputSettings() {
  output_folder_->setText(QString::fromStdString(converter_->settings().OutputDirectory));
  use_output_folder_->setChecked(converter_->settings().UseOutputDirectory != 0);
}

// ---- Buttons and menus ------------------------------------------------------------------

void Form1::StartClicked() {
  if (running_) return;
  Guarded([&] {
    running_ = true;
    const int32_t result = converter_->StartConversion(output_folder_->text().toStdString(),
                                                       use_output_folder_->isChecked());
    running_ = false;
    AfterRun(result);
  });
}

void Form1::AddFileClicked() {
  if (running_) return;
  Guarded([&] { converter_->AddFileByDialog(); });
}

void Form1::RemoveFileClicked() {
  if (running_) return;
  converter_->RemoveSelectedFiles(list_->SelectedRows());
}

void Form1::RemoveAllClicked() {
  if (running_) return;
  converter_->ClearFileList();
}

std::string Form1::BrowseStartFolder() const {
  const QString shown = output_folder_->text();
  if (!shown.isEmpty() && QFileInfo(shown).isDir()) return shown.toStdString();
  std::string folder = folders_.BrowseFolder();
  if (folder.empty()) folder = DefaultDataFolder();
  return folder;
}

void Form1::BrowseClicked() {
  LeaveOnTop();
  const std::string folder = dialogs_.ChooseFolder(this, "Save Directory", BrowseStartFolder());
  if (!folder.empty()) {
    converter_->settings().OutputDirectory = folder;
    converter_->settings().UseOutputDirectory = 1;
    folders_.RememberBrowseFolder(folder);
  }
  TakeUpOnTop();
  ShowOutputSettings();
}

void Form1::SaveClicked() {
  Guarded([&] {
    converter_->settings().OutputDirectory = output_folder_->text().toStdString();
    converter_->settings().UseOutputDirectory = use_output_folder_->isChecked() ? 1 : 0;
    converter_->SaveSettings();
  });
}

void Form1::OptionClicked() { options_dialog_->Open(converter_->settings(), reveal_debug_mode_); }

void Form1::OptionsSaved() {
  Guarded([&] {
    options_dialog_->CopyInto(converter_->settings());
    converter_->SaveSettings();
  });
}

void Form1::VersionClicked() {
  ShowVersionInfo(*this, windowTitle().toStdString(), version_->text().toStdString());
}

void Form1::SpreadsheetVersionClicked() {
  Guarded([&] {
    ShowSpreadsheetVersion(*this, options_.version_probe, converter_->settings().DebugMode != 0);
  });
}

void Form1::OsVersionClicked() {
  QString version = QSysInfo::kernelVersion();
  if (version.isEmpty()) version = QSysInfo::productVersion();
  ShowOsVersion(*this,
                {OsFacts{QSysInfo::prettyProductName().toStdString(), version.toStdString()}});
}

void Form1::EndClicked() { close(); }

// ---- Dropped files --------------------------------------------------------------------

void Form1::ListDropped(const std::vector<std::string>& paths, bool right_button) {
  if (right_button) reveal_debug_mode_ = !reveal_debug_mode_;
  Guarded([&] { AddDroppedFiles(paths); });
}

void Form1::AddDroppedFiles(const std::vector<std::string>& paths) {
  if (running_) return;
  for (const std::string& path : paths) converter_->AddFile(path);
}

void Form1::dragEnterEvent(QDragEnterEvent* event) {
  if (!running_ && CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void Form1::dragMoveEvent(QDragMoveEvent* event) {
  if (!running_ && CarriesFiles(event->mimeData())) {
    event->acceptProposedAction();
  } else {
    event->ignore();
  }
}

void Form1::dropEvent(QDropEvent* event) {
  const std::vector<std::string> paths = DroppedFiles(event->mimeData());
  if (running_ || paths.empty()) {
    event->ignore();
    return;
  }
  event->acceptProposedAction();
  Guarded([&] { AddDroppedFiles(paths); });
}

// ---- Always on top and the end ---------------------------------------------------------

void Form1::SetAlwaysOnTop(bool on) {
  on_top_ = on;
  ApplyOnTopHint(on);
}

void Form1::LeaveOnTop() {
  if (on_top_) ApplyOnTopHint(false);
}

void Form1::TakeUpOnTop() {
  if (on_top_) ApplyOnTopHint(true);
}

void Form1::ApplyOnTopHint(bool on) {
  if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on) return;
  const bool visible = isVisible();
  setWindowFlag(Qt::WindowStaysOnTopHint, on);
  // Changing a window's flags hides it; show it again where it was.
  if (visible) show();
}

void Form1::closeEvent(QCloseEvent* event) {
  event->accept();
  if (running_ && !ended_) {
    // Closing during a run: the driver stops at its next stage boundary
    // (saving what it has), and the program ends when the run has ended.
    close_requested_ = true;
    converter_->run().CancelRequest = kCancelRequested;
    return;
  }
  ended_ = true;
  emit ProgramEnding();
}

}  // namespace z4400
