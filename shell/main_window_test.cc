#include "shell/main_window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
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

#include "driver/settings_file.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::DropFiles;
using testing::WindowFixture;

constexpr char kErrorTitle[] = "Error Message";

std::vector<std::string> ListLines(const WindowFixture& fixture) {
  std::vector<std::string> lines;
  const auto* list = fixture.Find<QListWidget>("List1");
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

TEST(MainWindowTest, ControlsAndMenusCarryTheirNamesAndCaptions) {
  WindowFixture fixture;
  struct Case {
    const char* name;
    const char* caption;
  };
  for (const Case& c : {Case{"Command4", "Add file"}, Case{"Command3", "Remove file"},
                        Case{"Command1", "Start"}, Case{"Command2", "Browse..."}}) {
    SCOPED_TRACE(c.name);
    ASSERT_NE(fixture.Button(c.name), nullptr);
    EXPECT_EQ(fixture.Button(c.name)->text().toStdString(), c.caption);
  }
  for (const Case& c : {Case{"Label2", "Save Directory"}, Case{"Label3", "Open file list"},
                        Case{"Label4", "Ready"}, Case{"Label5", "Ver 2.1"}}) {
    SCOPED_TRACE(c.name);
    ASSERT_NE(fixture.Find<QLabel>(c.name), nullptr);
    EXPECT_EQ(fixture.Find<QLabel>(c.name)->text().toStdString(), c.caption);
  }
  EXPECT_TRUE(fixture.Find<QCheckBox>("Check1")->text().isEmpty());

  // Menus in order, separators between groups.
  const std::vector<std::vector<std::string>> expected = {
      {"File(&F)", "Save(&S)", "-", "Add file(&O)", "Remove file(&R)", "Remove all file(&D)", "-",
       "Start(&E)", "-", "End(&X)"},
      {"Tool(&T)", "Option(&O)"},
      {"Help(&H)", "version(&A)", "-", "Excel version", "OS version"},
  };
  std::vector<std::vector<std::string>> menus;
  for (QAction* top : fixture.window->menuBar()->actions()) {
    std::vector<std::string> entries = {top->text().toStdString()};
    for (QAction* entry : top->menu()->actions()) {
      entries.push_back(entry->isSeparator() ? "-" : entry->text().toStdString());
    }
    menus.push_back(entries);
  }
  EXPECT_EQ(menus, expected);
  for (const char* name : {"Savemnu", "AddFilemnu", "Rmvmnu", "RmvAllmnu", "startmnu", "mnuend",
                           "Optmnu", "hlpver", "mnuxls", "mnuOS"}) {
    EXPECT_NE(fixture.Action(name), nullptr) << name;
  }
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
    DropFiles(fixture.window.get(), {in("b.csv"), in("a.xml"), in("b.csv")});
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
    DropFiles(fixture.window.get(), {file}, Qt::RightButton);  // the window, not the list
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
