#include "shell/main_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "driver/settings.h"
#include "driver/settings_file.h"
#include "shell/options_dialog.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::DropFiles;
using testing::WindowFixture;

constexpr char kErrorTitle[] = "Error Message";

std::vector<std::string> ListLines(const WindowFixture& fixture) {
  std::vector<std::string> lines;
  const auto* list = fixture.Find<QListWidget>("List1");
  lines.reserve(static_cast<size_t>(list->count()));
  for (int row = 0; row < list->count(); ++row)
    lines.push_back(list->item(row)->text().toStdString());
  return lines;
}

std::vector<std::string> NumberedFiles(const std::filesystem::path& folder, int count,
                                       const std::string& extension) {
  std::vector<std::string> paths;
  for (int i = 1; i <= count; ++i) {
    paths.push_back((folder / ("m" + std::to_string(i) + "." + extension)).string());
  }
  return paths;
}

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

TEST(MainWindowTest, DroppedFilesAreListedByKindUpToOneHundred) {
  {
    SCOPED_TRACE("105 files on the list: the first 100 listed, \"Error\" for each further one");
    WindowFixture fixture;
    QWidget* list = fixture.Find<QListWidget>("List1")->viewport();
    const std::vector<std::string> paths = NumberedFiles(fixture.scratch.path(), 105, "xml");
    DropFiles(list, paths);
    EXPECT_EQ(fixture.window->converter().files().FileCount(), kAddFileLimit);
    const std::vector<std::string> lines = ListLines(fixture);
    ASSERT_EQ(lines.size(), 100u);
    EXPECT_EQ(lines.front(), "m1.xml");
    EXPECT_EQ(lines.back(), "m100.xml");
    EXPECT_EQ(fixture.dialogs.MessagesTitled(kErrorTitle), std::vector<std::string>(5, "Error"));
  }
  {
    SCOPED_TRACE("only .csv and .xml, case-sensitive; the window takes drops too");
    WindowFixture fixture;
    const auto in = [&](const char* name) { return (fixture.scratch / name).string(); };
    DropFiles(fixture.Find<QListWidget>("List1")->viewport(),
              {in("a.XML"), in("b.Csv"), in("c.txt"), in("d.xlsx")});
    EXPECT_EQ(fixture.window->converter().files().FileCount(), 0);
    DropFiles(fixture.Find<QLabel>("Label3"), {in("b.csv"), in("a.xml"), in("b.csv")});
    EXPECT_EQ(ListLines(fixture), (std::vector<std::string>{"b.csv", "a.xml", "b.csv"}));
    EXPECT_EQ(fixture.window->converter().files().Entry(1).Path, in("a.xml"));
    EXPECT_TRUE(fixture.dialogs.ui.messages.empty());
  }
  {
    SCOPED_TRACE("a right-button drop on the list toggles the hidden option box");
    WindowFixture fixture;
    QWidget* list = fixture.Find<QListWidget>("List1")->viewport();
    const std::string file = (fixture.scratch / "r.xml").string();
    EXPECT_FALSE(fixture.window->RevealsDebugMode());
    DropFiles(list, {file}, Qt::LeftButton);
    EXPECT_FALSE(fixture.window->RevealsDebugMode());
    DropFiles(list, {file}, Qt::RightButton);
    EXPECT_TRUE(fixture.window->RevealsDebugMode());
    DropFiles(fixture.Find<QLabel>("Label4"), {file}, Qt::RightButton);  // the window, not the list
    EXPECT_TRUE(fixture.window->RevealsDebugMode());
    DropFiles(list, {file}, Qt::RightButton);
    EXPECT_FALSE(fixture.window->RevealsDebugMode());
    EXPECT_EQ(fixture.window->converter().files().FileCount(), 4);
  }
}

TEST(MainWindowTest, RemoveFileTakesTheSelectedLinesAndRemoveAllEmptiesTheList) {
  WindowFixture fixture;
  auto* list = fixture.Find<QListWidget>("List1");
  DropFiles(list->viewport(), NumberedFiles(fixture.scratch.path(), 4, "csv"));

  QTest::mouseClick(fixture.Button("Command3"), Qt::LeftButton);
  EXPECT_EQ(ListLines(fixture).size(), 4u) << "nothing selected changes nothing";

  const auto click_row = [&](int row, Qt::KeyboardModifiers modifiers) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, modifiers,
                      list->visualItemRect(list->item(row)).center());
  };
  click_row(1, Qt::NoModifier);
  click_row(3, Qt::ControlModifier);
  QTest::mouseClick(fixture.Button("Command3"), Qt::LeftButton);
  EXPECT_EQ(ListLines(fixture), (std::vector<std::string>{"m1.csv", "m3.csv"}));
  const FileList& files = fixture.window->converter().files();
  ASSERT_EQ(files.FileCount(), 2);
  EXPECT_EQ(files.Entry(1).Path, (fixture.scratch / "m3.csv").string());

  fixture.Action("RmvAllmnu")->trigger();
  EXPECT_TRUE(ListLines(fixture).empty());
  EXPECT_EQ(files.FileCount(), 0);
}

TEST(MainWindowTest, DeleteKeyRemovesTheSelectedLinesAndEachLineShowsItsPath) {
  WindowFixture fixture;
  fixture.window->StartUp({});
  auto* list = fixture.Find<QListWidget>("List1");
  const std::filesystem::path second_folder = fixture.scratch / "second";
  const std::vector<std::string> paths = {(fixture.scratch / "m.xml").string(),
                                          (second_folder / "m.xml").string(),
                                          (fixture.scratch / "n.csv").string()};
  DropFiles(list->viewport(), paths);
  ASSERT_EQ(list->count(), 3);
  for (int row = 0; row < list->count(); ++row) {
    EXPECT_EQ(list->item(row)->toolTip().toStdString(), paths[static_cast<std::size_t>(row)]);
  }

  list->setFocus();
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(list->count(), 3) << "nothing selected changes nothing";
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                    list->visualItemRect(list->item(0)).center());
  QTest::keyClick(list, Qt::Key_Delete);
  EXPECT_EQ(ListLines(fixture), (std::vector<std::string>{"m.xml", "n.csv"}));
  EXPECT_EQ(fixture.window->converter().files().Entry(0).Path, paths[1]);
  EXPECT_EQ(list->item(0)->toolTip().toStdString(), paths[1]) << "the tooltips follow";
  EXPECT_EQ(list->item(1)->toolTip().toStdString(), paths[2]);
}

TEST(MainWindowTest, DialogsStartWhereTheUserWasLastTimeAndLeaveAlwaysOnTop) {
  WindowFixture first_run;
  Settings stored;
  stored.AlwaysOnTop = 1;
  ASSERT_EQ(WriteSettingsFile(first_run.scratch.path(), stored, nullptr),
            SettingsFileStatus::kDone);
  first_run.window->StartUp({});
  const std::filesystem::path sources = first_run.scratch / "sources";
  const std::filesystem::path out = first_run.scratch / "out";
  std::filesystem::create_directories(sources);
  std::filesystem::create_directories(out);
  {
    SCOPED_TRACE("nothing remembered yet: the default data folder");
    first_run.dialogs.ui.open_answers = {(sources / "a.xml").string()};
    QTest::mouseClick(first_run.Button("Command4"), Qt::LeftButton);
    first_run.dialogs.folder_answers = {out.string()};
    QTest::mouseClick(first_run.Button("Command2"), Qt::LeftButton);
    ASSERT_EQ(first_run.dialogs.ui.open_dialogs.size(), 1u);
    EXPECT_EQ(first_run.dialogs.ui.open_dialogs[0].initial_folder,
              first_run.scratch.path().string());
    EXPECT_EQ(first_run.dialogs.folder_starts,
              std::vector<std::string>{first_run.scratch.path().string()});
    EXPECT_EQ(first_run.dialogs.on_top_during_dialogs, (std::vector<bool>{false, false}));
    EXPECT_TRUE(first_run.window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  }

  // The next run of the program: a new window over the same folders.
  testing::ScriptedDialogs next_dialogs;
  Form1 next_run(next_dialogs, testing::ScratchWindowOptions(
                                   first_run.scratch, [] { return std::string(kDefaultVersion); }));
  next_run.show();
  next_run.StartUp({});
  auto* folder_box = next_run.findChild<QLineEdit*>(QStringLiteral("Text1"));
  auto* add_file = next_run.findChild<QAbstractButton*>(QStringLiteral("Command4"));
  auto* browse = next_run.findChild<QAbstractButton*>(QStringLiteral("Command2"));
  ASSERT_EQ(folder_box->text(), QString()) << "Data.ini was not saved";
  {
    SCOPED_TRACE("the folder of the file picked last, for Add file and for an empty Start");
    next_dialogs.ui.open_answers = {(sources / "b.csv").string()};
    QTest::mouseClick(add_file, Qt::LeftButton);
    next_run.findChild<QAction*>(QStringLiteral("RmvAllmnu"))->trigger();
    next_run.findChild<QAction*>(QStringLiteral("startmnu"))->trigger();
    ASSERT_EQ(next_dialogs.ui.open_dialogs.size(), 2u);
    EXPECT_EQ(next_dialogs.ui.open_dialogs[0].initial_folder, sources.string());
    EXPECT_EQ(next_dialogs.ui.open_dialogs[1].initial_folder, sources.string());
  }
  {
    SCOPED_TRACE("Browse...: the folder browsed last, unless the box shows a folder");
    QTest::mouseClick(browse, Qt::LeftButton);
    folder_box->setText(QString::fromStdString(sources.string()));
    QTest::mouseClick(browse, Qt::LeftButton);
    std::filesystem::remove_all(out);
    folder_box->clear();
    QTest::mouseClick(browse, Qt::LeftButton);
    EXPECT_EQ(next_dialogs.folder_starts,
              (std::vector<std::string>{out.string(), sources.string(),
                                        first_run.scratch.path().string()}));
  }
}

TEST(MainWindowTest, AddFileAndAnEmptyStartAskThroughTheOpenDialog) {
  WindowFixture fixture;
  fixture.window->StartUp({});
  const std::string listed = (fixture.scratch / "picked.csv").string();
  fixture.dialogs.ui.open_answers = {listed, (fixture.scratch / "trace.XML").string()};
  QTest::mouseClick(fixture.Button("Command4"), Qt::LeftButton);
  fixture.Action("AddFilemnu")->trigger();
  EXPECT_EQ(ListLines(fixture), std::vector<std::string>{"picked.csv"});
  ASSERT_EQ(fixture.dialogs.ui.open_dialogs.size(), 2u);
  EXPECT_EQ(fixture.dialogs.ui.open_dialogs[0].title, "Open Z4400 Family source file");

  // Start with an empty list asks once; a cancelled dialog stops quietly.
  fixture.Action("RmvAllmnu")->trigger();
  fixture.Action("startmnu")->trigger();
  EXPECT_EQ(fixture.dialogs.ui.open_dialogs.size(), 3u);
  EXPECT_TRUE(fixture.dialogs.ui.messages.empty());
  EXPECT_TRUE(fixture.Button("Command1")->isEnabled());
  EXPECT_FALSE(fixture.window->Ended());
}

TEST(MainWindowTest, StartUpShowsTheSettingsAndClosingDoesNotSaveThem) {
  WindowFixture fixture;
  Settings stored;
  stored.OutputDirectory = (fixture.scratch / "out").string();
  stored.UseOutputDirectory = 0;
  stored.AlwaysOnTop = 1;
  ASSERT_EQ(WriteSettingsFile(fixture.scratch.path(), stored, nullptr), SettingsFileStatus::kDone);
  const std::string stored_text = ReadText(fixture.scratch / kSettingsFileName);

  fixture.window->StartUp({});
  auto* folder = fixture.Find<QLineEdit>("Text1");
  auto* check = fixture.Find<QCheckBox>("Check1");
  EXPECT_EQ(folder->text().toStdString(), stored.OutputDirectory);
  EXPECT_FALSE(check->isChecked());
  EXPECT_TRUE(fixture.window->KeptOnTop());
  EXPECT_TRUE(fixture.window->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
  EXPECT_EQ(fixture.Find<QLabel>("Label4")->text().toStdString(), "Ready");

  // Edits reach "Data.ini" only through "Save(&S)"; closing ends the program.
  testing::ClickCheckBox(check);
  folder->clear();
  QTest::keyClicks(folder, "elsewhere");
  QSignalSpy ending(fixture.window.get(), &Form1::ProgramEnding);
  fixture.window->close();
  EXPECT_EQ(ending.count(), 1);
  EXPECT_TRUE(fixture.window->Ended());
  EXPECT_EQ(ReadText(fixture.scratch / kSettingsFileName), stored_text);
}

TEST(MainWindowTest, SaveMenuAndBrowseStoreTheOutputFolder) {
  WindowFixture fixture;
  fixture.window->StartUp({});
  auto* folder = fixture.Find<QLineEdit>("Text1");
  auto* check = fixture.Find<QCheckBox>("Check1");
  Settings read_back;
  {
    SCOPED_TRACE("Save(&S) copies the box and the check box, then writes Data.ini");
    QTest::keyClicks(folder, "typed folder");
    if (check->isChecked()) testing::ClickCheckBox(check);
    fixture.Action("Savemnu")->trigger();
    ASSERT_EQ(ReadSettingsFile(fixture.scratch.path(), read_back), SettingsFileStatus::kDone);
    EXPECT_EQ(read_back.OutputDirectory, "typed folder");
    EXPECT_EQ(read_back.UseOutputDirectory, 0);
  }
  {
    SCOPED_TRACE("Browse... cancelled changes nothing");
    QTest::mouseClick(fixture.Button("Command2"), Qt::LeftButton);
    EXPECT_EQ(folder->text().toStdString(), "typed folder");
    EXPECT_FALSE(check->isChecked());
  }
  {
    SCOPED_TRACE("a chosen folder becomes line 1 with the check box on");
    fixture.dialogs.folder_answers.push_back("/chosen/folder");
    QTest::mouseClick(fixture.Button("Command2"), Qt::LeftButton);
    EXPECT_EQ(folder->text().toStdString(), "/chosen/folder");
    EXPECT_TRUE(check->isChecked());
    EXPECT_EQ(fixture.window->converter().settings().OutputDirectory, "/chosen/folder");
    EXPECT_EQ(fixture.window->converter().settings().UseOutputDirectory, 1);
  }
}

TEST(MainWindowTest, TheWindowHasItsIconAndItsDialogsShareIt) {
  WindowFixture fixture;
  const QImage icon = fixture.window->windowIcon().pixmap(QSize(64, 64)).toImage();
  ASSERT_FALSE(icon.isNull()) << "the icon is drawn (Qt's SVG plug-in is installed)";
  EXPECT_EQ(icon.pixelColor(1, 1).alpha(), 0) << "a corner is transparent";
  EXPECT_GT(icon.pixelColor(32, 32).alpha(), 0) << "the middle is drawn";
  EXPECT_EQ(fixture.window->OptionsDialog().windowIcon().cacheKey(),
            fixture.window->windowIcon().cacheKey());
}

TEST(MainWindowTest, HelpMenuReportsVersionSpreadsheetAndSystem) {
  WindowFixture fixture([] { return std::string("14.0"); });
  fixture.window->StartUp({});
  fixture.Action("hlpver")->trigger();
  fixture.Action("mnuxls")->trigger();
  fixture.Action("mnuOS")->trigger();
  ASSERT_EQ(fixture.dialogs.ui.messages.size(), 3u);
  EXPECT_EQ(fixture.dialogs.ui.messages[0].title, "Version Infomation");
  EXPECT_EQ(fixture.dialogs.ui.messages[0].text, std::string(kWindowTitle) + "\r\nVer 2.1");
  EXPECT_EQ(fixture.dialogs.ui.messages[1].text, "Your Excel version is Excel 2010");
  const std::string os_text = fixture.dialogs.ui.messages[2].text;
  EXPECT_EQ(os_text.rfind(QSysInfo::prettyProductName().toStdString() + "\r\n", 0), 0u) << os_text;
  for (const auto& message : fixture.dialogs.ui.messages) {
    EXPECT_EQ(message.kind, MessageKind::kInformation);
  }
}

}  // namespace
}  // namespace z4400
