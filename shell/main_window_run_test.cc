// Runs of the main window over the real conversion stages and the example
// instrument files.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <string>

#include "driver/settings_file.h"
#include "shell/main_window.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::DropFiles;
using testing::WindowFixture;

constexpr const char* kFirstExample = "band_scan_markers.xml";
constexpr const char* kSecondExample = "log_x_axis.csv";

using SourceFolder = testing::DotFreeFolder;

/// An example copied into `sources`.
std::string CopiedExample(const SourceFolder& sources, const char* name) {
  return sources.Copy(testing::Example(name));
}

/// Where the save dialog proposes the workbook of `source`: the dialog
/// folder, the name up to its first dot, and the default version's "xlsx".
std::string ProposedWorkbook(const WindowFixture& fixture, const std::string& source) {
  const std::string name = std::filesystem::path(source).filename().string();
  return (fixture.scratch / (name.substr(0, name.find('.') + 1) + "xlsx")).string();
}

/// What the controls of a run show, read while a save dialog is open.
struct ControlsSeen {
  bool start = false;
  bool add_file = false;
  bool folder_box = false;
  bool start_menu = false;
  bool list_drops = false;
};

/// What the window and its converter hold at one moment of the start-up.
struct StartUpMoment {
  int listed = 0;
  std::string first_listed;
  std::string run_output_folder;
  bool kept_on_top = false;
  bool on_top_hint = false;
  std::string folder_box;
  bool folder_check = false;
  bool start_enabled = false;
  int list_lines = 0;
};

StartUpMoment SeenNow(const WindowFixture& fixture) {
  Converter& converter = fixture.window->converter();
  const FileList& files = converter.files();
  return {files.FileCount(),
          files.FileCount() > 0 ? files.Entry(0).Path : "",
          converter.run().OutputDirectory,
          fixture.window->KeptOnTop(),
          fixture.window->windowFlags().testFlag(Qt::WindowStaysOnTopHint),
          fixture.Find<QLineEdit>("Text1")->text().toStdString(),
          fixture.Find<QCheckBox>("Check1")->isChecked(),
          fixture.Button("Command1")->isEnabled(),
          fixture.Find<QListWidget>("List1")->count()};
}

TEST(MainWindowRunTest, StartUpTakesItsStepsInOrder) {
  // The steps: defaults, "Data.ini", its folder as the run's output folder,
  // the command line's files, always on top, the folder box and check box,
  // the run reset, the conversion, the list cleared. Each is seen from the
  // moments in between: the "Error" of the 101st command-line file (step 4)
  // and the save dialog of the first file (step 8).
  WindowFixture fixture;
  SourceFolder sources;
  const std::string example = sources.Copy(testing::Example("band_scan_markers.xml"));
  Settings stored;
  stored.OutputDirectory = (fixture.scratch / "out").string();
  std::filesystem::create_directories(stored.OutputDirectory);
  stored.UseOutputDirectory = 1;
  stored.AlwaysOnTop = 1;
  ASSERT_EQ(WriteSettingsFile(fixture.scratch.path(), stored, nullptr), SettingsFileStatus::kDone);
  // A file listed before the start-up, which the defaults forget.
  fixture.window->converter().AddFile((fixture.scratch / "stale.xml").string());
  std::vector<std::string> command_line = {example};
  for (int i = 1; i <= kAddFileLimit; ++i) {
    command_line.push_back((sources.path() / ("m" + std::to_string(i) + ".xml")).string());
  }
  std::vector<StartUpMoment> at_error;
  std::vector<StartUpMoment> at_save_dialog;
  fixture.dialogs.during_message = [&] { at_error.push_back(SeenNow(fixture)); };
  fixture.dialogs.during_save_dialog = [&] { at_save_dialog.push_back(SeenNow(fixture)); };
  fixture.dialogs.ui.save_answers = {""};  // cancelled: the run stops quietly

  fixture.window->StartUp(command_line);

  EXPECT_EQ(fixture.dialogs.MessagesTitled("Error Message"), std::vector<std::string>{"Error"});
  ASSERT_EQ(at_error.size(), 1u);
  const StartUpMoment& adding = at_error.front();
  EXPECT_EQ(adding.listed, kAddFileLimit) << "the list starts empty";
  EXPECT_EQ(adding.first_listed, example);
  EXPECT_EQ(adding.run_output_folder, stored.OutputDirectory)
      << "Data.ini was read and its folder taken before the files are added";
  EXPECT_FALSE(adding.kept_on_top) << "always on top comes after the files";
  EXPECT_EQ(adding.folder_box, "") << "the folder box is filled after the files";

  ASSERT_EQ(at_save_dialog.size(), 1u)
      << "the run reset emptied the run's output folder, so the file is named in the dialog";
  const StartUpMoment& converting = at_save_dialog.front();
  EXPECT_EQ(converting.run_output_folder, "");
  EXPECT_TRUE(converting.kept_on_top);
  EXPECT_FALSE(converting.on_top_hint) << "left while the dialog is open";
  EXPECT_EQ(converting.folder_box, stored.OutputDirectory);
  EXPECT_TRUE(converting.folder_check);
  EXPECT_FALSE(converting.start_enabled);
  EXPECT_EQ(converting.list_lines, kAddFileLimit) << "the list is cleared after the conversion";
  EXPECT_EQ(fixture.dialogs.ui.save_dialogs.front().initial_name,
            ProposedWorkbook(fixture, example));

  const StartUpMoment after = SeenNow(fixture);
  EXPECT_EQ(after.listed, 0);
  EXPECT_EQ(after.list_lines, 0);
  EXPECT_TRUE(after.start_enabled);
  EXPECT_TRUE(after.on_top_hint);
  EXPECT_FALSE(fixture.window->Ended());
}

TEST(MainWindowRunTest, CommandLineFilesAreConvertedAtOnceAndTheListEndsEmpty) {
  WindowFixture fixture;
  SourceFolder sources;
  const std::string first = CopiedExample(sources, kFirstExample);
  const std::string second = CopiedExample(sources, kSecondExample);
  std::vector<ControlsSeen> seen;
  fixture.dialogs.during_save_dialog = [&] {
    seen.push_back(
        {fixture.Button("Command1")->isEnabled(), fixture.Button("Command4")->isEnabled(),
         fixture.Find<QLineEdit>("Text1")->isEnabled(), fixture.Action("startmnu")->isEnabled(),
         fixture.Find<QListWidget>("List1")->acceptDrops()});
    // A drop during the run lists nothing.
    DropFiles(fixture.Find<QListWidget>("List1")->viewport(),
              {(fixture.scratch / "late.xml").string()});
  };

  fixture.window->StartUp({first, second});

  // The run reset empties the output folder value, so each file is named
  // through the save dialog, whose proposal is accepted.
  ASSERT_EQ(fixture.dialogs.ui.save_dialogs.size(), 2u);
  EXPECT_EQ(fixture.dialogs.ui.save_dialogs[0].initial_name, ProposedWorkbook(fixture, first));
  EXPECT_EQ(fixture.dialogs.ui.save_dialogs[1].initial_name, ProposedWorkbook(fixture, second));
  EXPECT_TRUE(std::filesystem::exists(ProposedWorkbook(fixture, first)));
  EXPECT_TRUE(std::filesystem::exists(ProposedWorkbook(fixture, second)));
  ASSERT_EQ(seen.size(), 2u);
  for (const ControlsSeen& during : seen) {
    EXPECT_FALSE(during.start || during.add_file || during.folder_box || during.start_menu ||
                 during.list_drops);
  }
  EXPECT_EQ(fixture.window->converter().files().FileCount(), 0);
  EXPECT_EQ(fixture.Find<QListWidget>("List1")->count(), 0);
  EXPECT_TRUE(fixture.Button("Command1")->isEnabled());
  EXPECT_TRUE(fixture.Find<QListWidget>("List1")->acceptDrops());
  EXPECT_EQ(fixture.Find<QLabel>("Label4")->text().toStdString(), "Finish");
  EXPECT_EQ(fixture.Find<QLabel>("Label1")->text().toStdString(), "0%");
  EXPECT_TRUE(fixture.dialogs.ui.messages.empty());
  // Two files: the spreadsheet was quit after each, nothing is left open.
  EXPECT_TRUE(fixture.dialogs.opened_workbooks.empty());
  EXPECT_FALSE(fixture.window->Ended());
}

TEST(MainWindowRunTest, StartConvertsIntoTheFolderAndOpensASingleWorkbook) {
  WindowFixture fixture;
  SourceFolder sources;
  fixture.window->StartUp({});
  const std::filesystem::path out = fixture.scratch / "out";
  std::filesystem::create_directories(out);
  auto* folder = fixture.Find<QLineEdit>("Text1");
  folder->setText(QString::fromStdString(out.string()));
  auto* check = fixture.Find<QCheckBox>("Check1");
  if (!check->isChecked()) testing::ClickCheckBox(check);
  const std::string source = CopiedExample(sources, kFirstExample);
  DropFiles(fixture.window.get(), {source});

  QTest::mouseClick(fixture.Button("Command1"), Qt::LeftButton);

  const std::string workbook = (out / "band_scan_markers.xlsx").string();
  EXPECT_TRUE(fixture.dialogs.ui.save_dialogs.empty());
  EXPECT_TRUE(std::filesystem::exists(workbook));
  EXPECT_EQ(fixture.dialogs.opened_workbooks, std::vector<std::string>{workbook});
  EXPECT_EQ(fixture.Find<QListWidget>("List1")->count(), 0);
  EXPECT_EQ(fixture.Find<QProgressBar>("ProgressBar1")->value(), 0);
}

TEST(MainWindowRunTest, ClosingDuringARunStopsItAndEndsTheProgram) {
  WindowFixture fixture;
  SourceFolder sources;
  const std::string first = CopiedExample(sources, kFirstExample);
  const std::string second = CopiedExample(sources, kSecondExample);
  QSignalSpy ending(fixture.window.get(), &Form1::ProgramEnding);
  fixture.dialogs.during_save_dialog = [&] {
    fixture.window->close();
    EXPECT_EQ(ending.count(), 0) << "the run ends first";
  };

  fixture.window->StartUp({first, second});

  // The first file stops at the stage boundary right after its output was
  // named, before its workbook was first saved under that name; the second
  // file is never reached.
  EXPECT_EQ(fixture.dialogs.ui.save_dialogs.size(), 1u);
  EXPECT_FALSE(std::filesystem::exists(ProposedWorkbook(fixture, first)));
  EXPECT_FALSE(std::filesystem::exists(ProposedWorkbook(fixture, second)));
  EXPECT_EQ(ending.count(), 1);
  EXPECT_TRUE(fixture.window->Ended());
  EXPECT_TRUE(fixture.dialogs.opened_workbooks.empty());
}

}  // namespace
}  // namespace z4400
