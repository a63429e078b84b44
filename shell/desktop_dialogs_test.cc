// The window with the desktop's own dialogs: the save dialog and the
// overwrite question are answered by typing and clicking in them, and the
// workbooks on disk are checked.
#include <gtest/gtest.h>

#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "shell/main_window.h"
#include "shell/modal_dialogs.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

/// The desktop's dialogs, except that a finished workbook is not handed to
/// the desktop's spreadsheet application.
class DesktopDialogs : public QtModalDialogs {
 public:
  bool OpenWorkbook(const std::string& /*path*/) override { return true; }
};

/// Answers the modal windows that open, one scripted step each, in order,
/// as a user would: it acts in the window once it is the active modal one.
/// A step that finds another window than it expects fails the test and
/// cancels that window, so that a wrong turn never leaves the test waiting.
class ModalScript {
 public:
  /// Answers `modal`; false when it is not the window the step expects.
  using Step = std::function<bool(QWidget* modal)>;

  ModalScript() {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Poll(); });
    timer_.start(10);
  }
  void Then(Step step) { steps_.push_back(std::move(step)); }
  /// Titles of the modal windows answered, in order.
  const std::vector<std::string>& titles() const { return titles_; }
  bool Finished() const { return next_ == steps_.size(); }

 private:
  void Poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == answered_ || !modal->isVisible() || Finished()) return;
    answered_ = modal;
    titles_.push_back(modal->windowTitle().toStdString());
    if (!steps_[next_++](modal)) {
      ADD_FAILURE() << "unexpected window \"" << titles_.back() << "\"";
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
    }
  }

  QTimer timer_;
  std::vector<Step> steps_;
  std::size_t next_ = 0;
  QPointer<QWidget> answered_;
  std::vector<std::string> titles_;
};

/// In the save dialog: the file name typed over the proposal, then Return.
ModalScript::Step TypeFileName(std::string name, std::vector<std::string>* proposals) {
  return [name = std::move(name), proposals](QWidget* modal) {
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    auto* edit = modal->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    if (dialog == nullptr || edit == nullptr) return false;
    if (proposals != nullptr) proposals->push_back(dialog->selectedFiles().value(0).toStdString());
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, QString::fromStdString(name));
    QTest::keyClick(edit, Qt::Key_Return);
    return true;
  };
}

/// In a Yes/No question: its text noted, then the button clicked.
ModalScript::Step Answer(QMessageBox::StandardButton button, std::vector<std::string>* texts) {
  return [button, texts](QWidget* modal) {
    auto* box = qobject_cast<QMessageBox*>(modal);
    if (box == nullptr || box->button(button) == nullptr) return false;
    texts->push_back(box->text().toStdString());
    QTest::mouseClick(box->button(button), Qt::LeftButton);
    return true;
  };
}

struct DesktopWindowFixture {
  DesktopWindowFixture() {
    testing::EnsureApplication();
    window = std::make_unique<Form1>(dialogs, testing::ScratchWindowOptions(scratch, [] {
                                       return std::string(kDefaultVersion);
                                     }));
    window->show();
    window->StartUp({});
  }
  /// Lists `source` `times` times and presses Start.
  void Convert(const std::string& source, int times = 1) {
    QWidget* list = window->findChild<QListWidget*>(QStringLiteral("List1"))->viewport();
    for (int i = 0; i < times; ++i) testing::DropFiles(list, {source});
    QTest::mouseClick(window->findChild<QAbstractButton*>(QStringLiteral("Command1")),
                      Qt::LeftButton);
  }
  std::filesystem::path Workbook(const char* name) const { return scratch / name; }

  testing::ScratchDir scratch;
  DesktopDialogs dialogs;
  std::unique_ptr<Form1> window;
};

bool IsWorkbook(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  char magic[2] = {};
  in.read(magic, 2);
  return in && magic[0] == 'P' && magic[1] == 'K';
}

TEST(DesktopDialogsTest, NamesTypedWithoutExtensionAreTheFilesWritten) {
  testing::DotFreeFolder sources;
  const std::string source = sources.Copy(testing::Example("band_scan_markers.xml"));
  DesktopWindowFixture fixture;
  ModalScript script;
  std::vector<std::string> proposals;
  script.Then(TypeFileName("renamed_v2", &proposals));
  script.Then(TypeFileName("meas.v2", nullptr));
  script.Then(TypeFileName("report_A", nullptr));
  script.Then(TypeFileName("report_B", nullptr));

  fixture.Convert(source);
  fixture.Convert(source);
  fixture.Convert(source, 2);  // the second replaced the first without a question

  EXPECT_TRUE(script.Finished());
  EXPECT_EQ(script.titles(), std::vector<std::string>(4, "Save Results As"));
  EXPECT_EQ(proposals, std::vector<std::string>{fixture.Workbook("band_scan_markers.xlsx")});
  for (const char* name : {"renamed_v2.xlsx", "meas.v2.xlsx", "report_A.xlsx", "report_B.xlsx"}) {
    EXPECT_TRUE(IsWorkbook(fixture.Workbook(name))) << name;
  }
  for (const char* name : {"renam.xlsx", "me.xlsx", "rep.xlsx", "band_scan_markers.xlsx"}) {
    EXPECT_FALSE(std::filesystem::exists(fixture.Workbook(name))) << name;
  }
  EXPECT_FALSE(fixture.window->Ended());
}

TEST(DesktopDialogsTest, TheOverwriteQuestionIsAskedAboutTheTypedName) {
  testing::DotFreeFolder sources;
  const std::string source = sources.Copy(testing::Example("band_scan_markers.xml"));
  DesktopWindowFixture fixture;
  std::ofstream(fixture.Workbook("report_A.xlsx")) << "not yet a workbook";
  ModalScript script;
  std::vector<std::string> questions;
  script.Then(TypeFileName("report_A", nullptr));
  script.Then(Answer(QMessageBox::No, &questions));
  script.Then(TypeFileName("report_C", nullptr));
  script.Then(TypeFileName("report_A", nullptr));
  script.Then(Answer(QMessageBox::Yes, &questions));

  fixture.Convert(source);
  EXPECT_FALSE(IsWorkbook(fixture.Workbook("report_A.xlsx"))) << "No keeps the file";
  EXPECT_TRUE(IsWorkbook(fixture.Workbook("report_C.xlsx")));
  fixture.Convert(source);

  EXPECT_TRUE(script.Finished());
  const std::string asked_title = fixture.Workbook("report_A.xlsx").string() + " already exists";
  EXPECT_EQ(script.titles(),
            (std::vector<std::string>{"Save Results As", asked_title, "Save Results As",
                                      "Save Results As", asked_title}));
  EXPECT_EQ(questions, std::vector<std::string>(2, "Do you want to overwrite this file"));
  EXPECT_TRUE(IsWorkbook(fixture.Workbook("report_A.xlsx"))) << "Yes replaces it";
}

}  // namespace
}  // namespace z4400
