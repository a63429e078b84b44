// Test helpers of the desktop window: one application object for the test
// program, scripted dialogs that record what the window asked, and a main
// window over a scratch settings folder.
#ifndef Z4400_SHELL_WINDOW_TEST_UTIL_H_
#define Z4400_SHELL_WINDOW_TEST_UTIL_H_

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>
#include <QWindow>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The drops of the tests come through the window-system interface, as the
// desktop's drops do.
#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>

#include "driver/workbook_stages.h"
#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"

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
/// browser and a record of the workbooks handed to the desktop. For every
/// file and folder dialog it notes whether the window was kept on top while
/// it was open. Hooks run inside each save dialog and message box.
class ScriptedDialogs : public ModalDialogs {
 public:
  RecordingUi ui;
  std::deque<std::string> folder_answers;
  std::vector<std::string> folder_starts;
  std::vector<bool> on_top_during_dialogs;
  std::vector<std::string> opened_workbooks;
  std::function<void()> during_save_dialog;
  std::function<void()> during_message;

  void ShowMessage(QWidget*, MessageKind kind, const std::string& title,
                   const std::string& text) override {
    if (during_message) during_message();
    ui.ShowMessage(kind, title, text);
  }
  bool AskYesNo(QWidget*, const std::string& title, const std::string& text) override {
    return ui.AskYesNo(title, text);
  }
  std::string ChooseOpenFile(QWidget* parent, const FileDialogRequest& request) override {
    NoteOnTop(parent);
    return ui.ChooseOpenFile(request);
  }
  std::string ChooseSaveFile(QWidget* parent, const FileDialogRequest& request) override {
    NoteOnTop(parent);
    if (during_save_dialog) during_save_dialog();
    return ui.ChooseSaveFile(request);
  }
  std::string ChooseFolder(QWidget* parent, const std::string& title,
                           const std::string& initial_folder) override {
    NoteOnTop(parent);
    folder_starts.push_back(initial_folder);
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

  void NoteOnTop(const QWidget* parent) {
    on_top_during_dialogs.push_back(parent->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
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

/// What a test window is built with: "Data.ini", the dialogs' start folder
/// and the remembered folders all in `scratch`, the real conversion stages.
inline WindowOptions ScratchWindowOptions(const ScratchDir& scratch,
                                          SpreadsheetVersionProbe probe) {
  WindowOptions options;
  options.settings_folder = scratch.path();
  options.make_stages = WorkbookStagesFactory(kDefaultVersion);
  options.version_probe = std::move(probe);
  options.data_folder = scratch.path().string();
  options.remembered_folders_file = scratch / "config" / "folders.ini";
  return options;
}

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
    window = std::make_unique<Form1>(dialogs, ScratchWindowOptions(scratch, std::move(probe)));
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

/// Drags `paths` from elsewhere on the desktop over the middle of `target`
/// with `buttons` held and drops them there, as the window system delivers
/// it: the drag moves over the window with the buttons reported, and the
/// drop comes when they are released, so it reports none. Which widget
/// takes the drop is for the window to find out, as on the desktop.
inline void DropFiles(QWidget* target, const std::vector<std::string>& paths,
                      Qt::MouseButtons buttons = Qt::LeftButton) {
  const std::unique_ptr<QMimeData> data = FilesData(paths);
  QWidget* window = target->window();
  QWindow* surface = window->windowHandle();
  ASSERT_NE(surface, nullptr) << "the window is shown";
  const QPoint center = target->rect().center();
  for (const QPoint& where : {center - QPoint(2, 2), center}) {
    QWindowSystemInterface::handleDrag(surface, data.get(), target->mapTo(window, where),
                                       Qt::CopyAction, buttons, Qt::NoModifier);
  }
  QWindowSystemInterface::handleDrop(surface, data.get(), target->mapTo(window, center),
                                     Qt::CopyAction, Qt::NoButton, Qt::NoModifier);
}

/// A folder without a dot in its path, for source files: the output is
/// named after the source path up to its first dot, and a scratch folder's
/// name holds the test's name with a dot in it.
class DotFreeFolder {
 public:
  DotFreeFolder()
      : path_(std::filesystem::temp_directory_path() /
              ("z4400_shell_sources_" + std::to_string(QCoreApplication::applicationPid()))) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~DotFreeFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  DotFreeFolder(const DotFreeFolder&) = delete;
  DotFreeFolder& operator=(const DotFreeFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

  /// Copies `source` in; the copy's path.
  std::string Copy(const std::filesystem::path& source) const {
    const std::filesystem::path copy = path_ / source.filename();
    std::filesystem::copy_file(source, copy, std::filesystem::copy_options::overwrite_existing);
    return copy.string();
  }

 private:
  std::filesystem::path path_;
};

/// An instrument file of the source tree's examples (no shared samples
/// needed).
inline std::filesystem::path Example(const char* name) { return SourceDir() / "examples" / name; }

}  // namespace z4400::testing

#endif  // Z4400_SHELL_WINDOW_TEST_UTIL_H_
