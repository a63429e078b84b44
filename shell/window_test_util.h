// Test helpers of the desktop window: one application object for the test
// program, scripted dialogs that record what the window asked, and a main
// window over a scratch settings folder.
#ifndef Z4400_SHELL_WINDOW_TEST_UTIL_H_
#define Z4400_SHELL_WINDOW_TEST_UTIL_H_

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"
#include "workbook/application.h"

namespace z4400::testing {

/// The test program's QApplication, once made; released by the test
/// environment before the program exits (Qt must not outlive main()).
inline std::unique_ptr<QApplication>& ApplicationHolder() {
  static std::unique_ptr<QApplication> holder;
  return holder;
}

/// Makes the program's one QApplication (offscreen unless a platform is
/// set) when there is none yet.
inline void EnsureApplication() {
  if (QApplication::instance() != nullptr) return;
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "shell_tests";
  static char* argv[] = {name, nullptr};
  ApplicationHolder() = std::make_unique<QApplication>(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
}

/// A base of fixtures whose members are widgets: the application exists
/// before they are built.
struct ApplicationReady {
  ApplicationReady() { EnsureApplication(); }
};

/// Dialogs answered by a RecordingUi (its queues and records), with a folder
/// browser and a record of the workbooks handed to the desktop. A hook runs
/// inside each save dialog, while the run that asked is under way.
class ScriptedDialogs : public ModalDialogs {
 public:
  RecordingUi ui;
  std::deque<std::string> folder_answers;
  std::vector<std::string> opened_workbooks;
  std::function<void()> during_save_dialog;

  void ShowMessage(QWidget*, MessageKind kind, const std::string& title,
                   const std::string& text) override {
    ui.ShowMessage(kind, title, text);
  }
  bool AskYesNo(QWidget*, const std::string& title, const std::string& text) override {
    return ui.AskYesNo(title, text);
  }
  std::string ChooseOpenFile(QWidget*, const FileDialogRequest& request) override {
    return ui.ChooseOpenFile(request);
  }
  std::string ChooseSaveFile(QWidget*, const FileDialogRequest& request) override {
    if (during_save_dialog) during_save_dialog();
    return ui.ChooseSaveFile(request);
  }
  std::string ChooseFolder(QWidget*, const std::string& title,
                           const std::string& initial_folder) override {
    ui.ChooseFolder(title, initial_folder);
    if (folder_answers.empty()) return {};
    std::string answer = folder_answers.front();
    folder_answers.pop_front();
    return answer;
  }
  bool OpenWorkbook(const std::string& path) override {
    opened_workbooks.push_back(path);
    return true;
  }

  /// Texts of the message boxes shown with `title`.
  std::vector<std::string> MessagesTitled(const std::string& title) const {
    std::vector<std::string> texts;
    for (const RecordedMessage& message : ui.messages) {
      if (message.title == title) texts.push_back(message.text);
    }
    return texts;
  }
};

/// A main window over a scratch folder (settings and output), with the real
/// conversion stages and scripted dialogs.
struct WindowFixture {
  ScratchDir scratch;
  ScriptedDialogs dialogs;
  std::unique_ptr<Form1> window;

  explicit WindowFixture(SpreadsheetVersionProbe probe = [] {
    return std::string(kDefaultVersion);
  }) {
    EnsureApplication();
    WindowOptions options;
    options.settings_folder = scratch.path();
    options.make_stages = WorkbookStagesFactory(kDefaultVersion);
    options.version_probe = std::move(probe);
    options.data_folder = scratch.path().string();
    options.remembered_folders_file = scratch / "config" / "folders.ini";
    window = std::make_unique<Form1>(dialogs, std::move(options));
    window->show();
  }

  template <typename Widget>
  Widget* Find(const char* name) const {
    return window->findChild<Widget*>(QString::fromLatin1(name));
  }
  QAction* Action(const char* name) const { return Find<QAction>(name); }
  QAbstractButton* Button(const char* name) const { return Find<QAbstractButton>(name); }
};

/// Drag data carrying local files in order.
inline std::unique_ptr<QMimeData> FilesData(const std::vector<std::string>& paths) {
  auto data = std::make_unique<QMimeData>();
  QList<QUrl> urls;
  for (const std::string& path : paths) urls << QUrl::fromLocalFile(QString::fromStdString(path));
  data->setUrls(urls);
  return data;
}

/// Clicks a check box on its tick mark (a click beyond its caption misses).
inline void ClickCheckBox(QCheckBox* box) {
  QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(8, box->height() / 2));
}

/// Delivers a drop of `paths` on `target` as the desktop would: the drag
/// enters, then the files are dropped with `buttons` held.
inline void DropFiles(QWidget* target, const std::vector<std::string>& paths,
                      Qt::MouseButtons buttons = Qt::LeftButton) {
  const std::unique_ptr<QMimeData> data = FilesData(paths);
  const QPoint where = target->rect().center();
  QDragEnterEvent enter(where, Qt::CopyAction, data.get(), buttons, Qt::NoModifier);
  QApplication::sendEvent(target, &enter);
  QDropEvent drop(QPointF(where), Qt::CopyAction, data.get(), buttons, Qt::NoModifier);
  QApplication::sendEvent(target, &drop);
}

}  // namespace z4400::testing

#endif  // Z4400_SHELL_WINDOW_TEST_UTIL_H_
