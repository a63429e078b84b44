// The main window as the converter's user interface: status line, progress,
// message boxes and dialogs, the controls of a run, the file list and the
// workbook left open.
#include <QAction>
#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>

#include "shell/file_drop_list.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"

namespace z4400 {
namespace {

/// A status text on the one line of the status label: its line breaks (the
/// failure message has three) shown as single blanks.
QString OneLineStatus(const std::string& text) {
  QString line = QString::fromStdString(text);
  line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
  line.replace(QLatin1Char('\r'), QLatin1Char(' '));
  line.replace(QLatin1Char('\n'), QLatin1Char(' '));
  return line.simplified();
}

}  // namespace

void Form1::ShowStatus(const std::string& text) {
  status_->setText(OneLineStatus(text));
  status_->setToolTip(QString::fromStdString(text));
}

void Form1::SetProgressRange(int minimum, int maximum) { progress_->setRange(minimum, maximum); }

void Form1::SetProgressValue(int value) { progress_->setValue(value); }

void Form1::ShowPercentage(const std::string& text) {
  percentage_->setText(QString::fromStdString(text));
}

void Form1::ShowMessage(MessageKind kind, const std::string& title, const std::string& text) {
  dialogs_.ShowMessage(this, kind, title, text);
}

bool Form1::AskYesNo(const std::string& title, const std::string& text) {
  return dialogs_.AskYesNo(this, title, text);
}

std::string Form1::ChooseOpenFile(const FileDialogRequest& request) {
  FileDialogRequest shown = request;
  const std::string last_folder = folders_.OpenFolder();
  if (shown.initial_name.empty() && !last_folder.empty()) shown.initial_folder = last_folder;
  LeaveOnTop();
  std::string path = dialogs_.ChooseOpenFile(this, shown);
  TakeUpOnTop();
  folders_.RememberOpenedFile(path);
  return path;
}

std::string Form1::ChooseSaveFile(const FileDialogRequest& request) {
  LeaveOnTop();
  std::string path = dialogs_.ChooseSaveFile(this, request);
  TakeUpOnTop();
  return path;
}

std::string Form1::ChooseFolder(const std::string& title, const std::string& initial_folder) {
  LeaveOnTop();
  std::string folder = dialogs_.ChooseFolder(this, title, initial_folder);
  TakeUpOnTop();
  return folder;
}

std::string Form1::DefaultDataFolder() const {
  if (!options_.data_folder.empty()) return options_.data_folder;
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation).toStdString();
}

void Form1::SetControlsEnabled(bool enabled) {
  for (QWidget* control :
       {static_cast<QWidget*>(start_), static_cast<QWidget*>(add_file_),
        static_cast<QWidget*>(remove_file_), static_cast<QWidget*>(browse_),
        static_cast<QWidget*>(use_output_folder_), static_cast<QWidget*>(output_folder_)}) {
    control->setEnabled(enabled);
  }
  for (QAction* action : run_locked_actions_) action->setEnabled(enabled);
  list_->setAcceptDrops(enabled);
}

void Form1::ShowFileList(const std::vector<std::string>& names) {
  list_->clear();
  for (std::size_t i = 0; i < names.size(); ++i) {
    auto* item = new QListWidgetItem(QString::fromStdString(names[i]), list_);
    // Two files of one name from different folders differ in their tooltip.
    if (converter_ && static_cast<int>(i) < converter_->files().FileCount()) {
      item->setToolTip(QString::fromStdString(converter_->files().Entry(static_cast<int>(i)).Path));
    }
  }
}

void Form1::ProcessEvents() { QCoreApplication::processEvents(); }

// The workbook that stays open after the run is opened on the desktop then.
void Form1::WorkbookSaved(const std::string& path) { open_workbook_ = path; }

void Form1::SpreadsheetQuit() { open_workbook_.clear(); }

void Form1::EndProgram() {
  ended_ = true;
  close();
}

}  // namespace z4400
