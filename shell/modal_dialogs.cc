#include "shell/modal_dialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStringList>
#include <QUrl>

#include "shell/file_filter.h"

namespace z4400 {
namespace {

QString ToQt(const std::string& text) { return QString::fromStdString(text); }

/// Message texts use CR (and CR LF) as line breaks; Qt breaks lines at LF.
QString MessageText(const std::string& text) {
  QString shown = ToQt(text);
  shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return shown;
}

/// A title, or the program's name when the caller gave none.
QString TitleOrName(const std::string& title) {
  return title.empty() ? QApplication::applicationName() : ToQt(title);
}

QMessageBox::Icon IconOf(MessageKind kind) {
  switch (kind) {
    case MessageKind::kCritical:
      return QMessageBox::Critical;
    case MessageKind::kWarning:
      return QMessageBox::Warning;
    case MessageKind::kInformation:
      break;
  }
  return QMessageBox::Information;
}

/// The folder and file name a dialog starts with.
QString StartPath(const FileDialogRequest& request) {
  if (request.initial_name.empty()) return ToQt(request.initial_folder);
  QString name = ToQt(request.initial_name);
  if (request.initial_folder.empty() || !QFileInfo(name).isRelative()) return name;
  return QDir(ToQt(request.initial_folder)).filePath(name);
}

QString NameFilters(const FileDialogRequest& request) {
  QStringList filters;
  for (const std::string& entry : DialogNameFilters(request.filter)) filters << ToQt(entry);
  return filters.join(QStringLiteral(";;"));
}

/// The first filter is the selected one.
QString FirstFilter(const FileDialogRequest& request) {
  const std::vector<std::string> entries = DialogNameFilters(request.filter);
  return entries.empty() ? QString() : ToQt(entries.front());
}

}  // namespace

void QtModalDialogs::ShowMessage(QWidget* parent, MessageKind kind, const std::string& title,
                                 const std::string& text) {
  QMessageBox box(IconOf(kind), TitleOrName(title), MessageText(text), QMessageBox::Ok, parent);
  box.exec();
}

bool QtModalDialogs::AskYesNo(QWidget* parent, const std::string& title, const std::string& text) {
  return QMessageBox::question(parent, TitleOrName(title), MessageText(text),
                               QMessageBox::Yes | QMessageBox::No,
                               QMessageBox::Yes) == QMessageBox::Yes;
}

std::string QtModalDialogs::ChooseOpenFile(QWidget* parent, const FileDialogRequest& request) {
  QString selected = FirstFilter(request);
  return QFileDialog::getOpenFileName(parent, ToQt(request.title), StartPath(request),
                                      NameFilters(request), &selected)
      .toStdString();
}

std::string QtModalDialogs::ChooseSaveFile(QWidget* parent, const FileDialogRequest& request) {
  QString selected = FirstFilter(request);
  const std::string chosen = QFileDialog::getSaveFileName(
                                 parent, ToQt(request.title), StartPath(request),
                                 NameFilters(request), &selected, QFileDialog::DontConfirmOverwrite)
                                 .toStdString();
  // The name as the spreadsheet's save dialog returns it: with the chosen
  // type's extension, so that the overwrite question is asked about the
  // file that will be written.
  return WithFilterExtension(chosen, selected.toStdString());
}

std::string QtModalDialogs::ChooseFolder(QWidget* parent, const std::string& title,
                                         const std::string& initial_folder) {
  return QFileDialog::getExistingDirectory(parent, ToQt(title), ToQt(initial_folder)).toStdString();
}

bool QtModalDialogs::OpenWorkbook(const std::string& path) {
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(path)));
}

}  // namespace z4400
