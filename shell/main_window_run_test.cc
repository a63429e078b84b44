// Runs of the main window over the real conversion stages and the sample
// instrument files.
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <string>

#include "shell/main_window.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::DropFiles;
using testing::WindowFixture;

constexpr const char* kFirstSample = "spectrum_dbm_markers.xml";
constexpr const char* kSecondSample = "two_screens_markers.csv";

/// A folder for the source files whose path has no dot: the output is named
/// after the source path up to its first dot, and the scratch folder's name
/// holds the test's name with a dot in it.
class SourceFolder {
 public:
  SourceFolder()
      : path_(std::filesystem::temp_directory_path() /
              ("z4400_shell_sources_" + std::to_string(::getpid()))) {
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~SourceFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  SourceFolder(const SourceFolder&) = delete;
  SourceFolder& operator=(const SourceFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A sample copied into `folder`.
std::string CopiedSample(const std::filesystem::path& samples, const SourceFolder& sources,
                         const char* name) {
  const std::filesystem::path& folder = sources.path();
  std::filesystem::copy_file(samples / name, folder / name,
                             std::filesystem::copy_options::overwrite_existing);
  return (folder / name).string();
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

TEST(MainWindowRunTest, CommandLineFilesAreConvertedAtOnceAndTheListEndsEmpty) {
  Z4400_REQUIRE_SAMPLES(samples);
  WindowFixture fixture;
  SourceFolder sources;
  const std::string first = CopiedSample(samples, sources, kFirstSample);
  const std::string second = CopiedSample(samples, sources, kSecondSample);
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
  Z4400_REQUIRE_SAMPLES(samples);
  WindowFixture fixture;
  SourceFolder sources;
  fixture.window->StartUp({});
  const std::filesystem::path out = fixture.scratch / "out";
  std::filesystem::create_directories(out);
  auto* folder = fixture.Find<QLineEdit>("Text1");
  folder->setText(QString::fromStdString(out.string()));
  auto* check = fixture.Find<QCheckBox>("Check1");
  if (!check->isChecked()) testing::ClickCheckBox(check);
  const std::string source = CopiedSample(samples, sources, kFirstSample);
  DropFiles(fixture.window.get(), {source});

  QTest::mouseClick(fixture.Button("Command1"), Qt::LeftButton);

  const std::string workbook = (out / "spectrum_dbm_markers.xlsx").string();
  EXPECT_TRUE(fixture.dialogs.ui.save_dialogs.empty());
  EXPECT_TRUE(std::filesystem::exists(workbook));
  EXPECT_EQ(fixture.dialogs.opened_workbooks, std::vector<std::string>{workbook});
  EXPECT_EQ(fixture.Find<QListWidget>("List1")->count(), 0);
  EXPECT_EQ(fixture.Find<QProgressBar>("ProgressBar1")->value(), 0);
}

TEST(MainWindowRunTest, ClosingDuringARunStopsItAndEndsTheProgram) {
  Z4400_REQUIRE_SAMPLES(samples);
  WindowFixture fixture;
  SourceFolder sources;
  const std::string first = CopiedSample(samples, sources, kFirstSample);
  const std::string second = CopiedSample(samples, sources, kSecondSample);
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
