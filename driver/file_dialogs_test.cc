#include "driver/file_dialogs.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "common/runtime_failure.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

/// ChooseOutputPath with its collaborators; the check box on and the output
/// directory set to `folder` unless a test changes them.
struct Naming {
  explicit Naming(const std::string& folder) : status(ui, settings, run, files, "/") {
    run.OutputDirectory = folder;
    run.UseOutputDirectory = 1;
  }
  std::string Choose(const std::string& source, int16_t version = 16) {
    GeneralInfo info;
    info.SourcePath = source;
    return ChooseOutputPath(info, version, {settings, run, status});
  }
  testing::RecordingUi ui;
  Settings settings;
  RunState run;
  FileList files;
  StatusLine status;
};

void Touch(const std::filesystem::path& path) { std::ofstream(path) << "old"; }

TEST(FileDialogsTest, ProposalFollowsTheFirstDotAndTheVersion) {
  struct Case {
    const char* source;
    const char* folder;
    int16_t version;
    const char* path;
    int extension_length;
  };
  for (const Case& c : std::vector<Case>{
           {"C:\\data\\meas.b.xml", "C:\\out", 11, "C:\\out\\meas.xls", 4},
           {"C:\\data\\meas.b.xml", "C:\\out\\", 12, "C:\\out\\meas.xlsx", 5},
           {"/data/run 1/meas.b.xml", "/out", 16, "/out/meas.xlsx", 5},
           {"/data/meas.csv", "D:\\mixed/out", 9, "D:\\mixed/out/meas.xls", 4},
           {"meas.xml", "/out", 16, "", 0},       // no folder separator
           {"/data/measxml", "/out", 16, "", 0},  // no dot
           {"/data/meas.xml", "", 16, "meas.xlsx", 5},
       }) {
    const OutputProposal proposal = ProposeOutputPath(c.source, c.folder, c.version);
    EXPECT_EQ(proposal.path, c.path) << c.source;
    EXPECT_EQ(proposal.extension_length, c.extension_length) << c.source;
  }
  EXPECT_THROW(ProposeOutputPath("C:\\data.d\\meas.xml", "C:\\out", 11), RuntimeFailure);
  EXPECT_THROW(ProposeOutputPath("/home/u/.cache/meas.xml", "/out", 16), RuntimeFailure);
  EXPECT_EQ(WithFolderSeparator("/out"), "/out/");
  EXPECT_EQ(WithFolderSeparator("C:\\out"), "C:\\out\\");
  EXPECT_EQ(WithFolderSeparator("out"), "out/");
}

TEST(FileDialogsTest, OutputPathWithoutExtension) {
  {
    Naming n("C:\\out");
    EXPECT_EQ(n.Choose("C:\\data\\meas.b.xml", 11), "C:\\out\\meas");
    EXPECT_TRUE(n.ui.save_dialogs.empty()) << "check box on: no dialog";
  }
  {
    Naming n("C:\\out");
    EXPECT_EQ(n.Choose("C:\\data.d\\meas.xml", 11), "");
    ASSERT_EQ(n.ui.messages.size(), 1u);
    EXPECT_EQ(n.ui.messages[0].text, "Can't be saved.");
    EXPECT_EQ(n.ui.statuses, std::vector<std::string>{"Can't be saved."});
  }
  for (const bool check_box : {false, true}) {
    Naming n("/out");
    n.ui.default_data_folder = "/home/u/data";
    n.run.UseOutputDirectory = check_box ? 1 : 0;
    if (check_box) n.run.OutputDirectory.clear();
    n.ui.save_answers = {"/home/u/data/other.name.xlsx"};
    EXPECT_EQ(n.Choose("/data/meas.xml"), "/home/u/data/other.name") << "typed name kept";
    ASSERT_EQ(n.ui.save_dialogs.size(), 1u);
    EXPECT_EQ(n.ui.save_dialogs[0].title, "Save Results As");
    EXPECT_EQ(n.ui.save_dialogs[0].filter, "Excel Files (*.xlsx),*.xlsx");
    EXPECT_EQ(n.ui.save_dialogs[0].initial_name, "/home/u/data/meas.xlsx");
  }
  {
    Naming n("/out");
    n.run.UseOutputDirectory = 0;
    n.ui.save_answers = {""};
    EXPECT_EQ(n.Choose("/data/meas.xml"), "") << "cancel";
    EXPECT_TRUE(n.ui.messages.empty());
  }
  {
    Naming n("/out");
    n.run.UseOutputDirectory = 0;
    n.ui.save_answers = {"a.xl"};  // shorter than the extension it loses
    EXPECT_EQ(n.Choose("/data/meas.xml"), "");
    EXPECT_EQ(n.ui.statuses, std::vector<std::string>{"Can't be saved."});
  }
}

/// In a child process: names the workbook of "meas.xml" in `locked`, whose
/// old "meas.xlsx" cannot be deleted, and exits 0 when the name is refused
/// with "Can't be saved.", else 1 with what happened on standard error. Root
/// deletes anything, so as root the child first becomes the user "nobody".
[[noreturn]] void RefusesTheUndeletableFile(const std::filesystem::path& locked) {
  if (!testing::DropRootPrivileges()) {
    std::fprintf(stderr, "cannot become the user nobody\n");
    std::_Exit(2);
  }
  Naming n(locked.string());
  n.settings.WarnOnOverwrite = 0;
  const std::string result = n.Choose("/data/meas.xml");
  const bool refused =
      result.empty() && n.ui.statuses == std::vector<std::string>{"Can't be saved."};
  if (!refused) {
    std::fprintf(stderr, "named \"%s\", statuses %s\n", result.c_str(),
                 ::testing::PrintToString(n.ui.statuses).c_str());
  }
  std::_Exit(refused ? 0 : 1);
}

TEST(FileDialogsTest, ExistingOutputFile) {
  testing::ScratchDir scratch;
  const std::string folder = scratch.path().string();
  const std::string existing = (scratch / "meas.xlsx").string();
  {
    SCOPED_TRACE("Yes deletes the old file");
    Touch(existing);
    Naming n(folder);
    n.ui.yes_no_answers = {true};
    EXPECT_EQ(n.Choose("/data/meas.xml"), (scratch / "meas").string());
    ASSERT_EQ(n.ui.questions.size(), 1u);
    EXPECT_EQ(n.ui.questions[0].title, existing + " already exists");
    EXPECT_EQ(n.ui.questions[0].text, "Do you want to overwrite this file");
    EXPECT_FALSE(std::filesystem::exists(existing));
  }
  {
    SCOPED_TRACE("warning off: deleted without a question");
    Touch(existing);
    Naming n(folder);
    n.settings.WarnOnOverwrite = 0;
    EXPECT_EQ(n.Choose("/data/meas.xml"), (scratch / "meas").string());
    EXPECT_TRUE(n.ui.questions.empty());
    EXPECT_FALSE(std::filesystem::exists(existing));
  }
  {
    SCOPED_TRACE("No opens the save dialog, also with the check box on");
    Touch(existing);
    Naming n(folder);
    n.ui.yes_no_answers = {false};
    n.ui.save_answers = {(scratch / "second.xlsx").string()};
    EXPECT_EQ(n.Choose("/data/meas.xml"), (scratch / "second").string());
    ASSERT_EQ(n.ui.save_dialogs.size(), 1u);
    EXPECT_EQ(n.ui.save_dialogs[0].initial_name, existing);
    EXPECT_TRUE(std::filesystem::exists(existing));
  }
  {
    SCOPED_TRACE("an old file that cannot be deleted");
    std::filesystem::remove(existing);
    const std::filesystem::path locked = scratch / "locked";
    std::filesystem::create_directories(locked);
    Touch(locked / "meas.xlsx");
    // Readable by everyone, writable by no one; the scratch folder open to
    // the unprivileged user that stands in for root below.
    using std::filesystem::perms;
    std::filesystem::permissions(locked, perms::owner_read | perms::owner_exec | perms::group_read |
                                             perms::group_exec | perms::others_read |
                                             perms::others_exec);
    std::filesystem::permissions(scratch.path(), perms::group_exec | perms::others_exec,
                                 std::filesystem::perm_options::add);
    EXPECT_EXIT(RefusesTheUndeletableFile(locked), ::testing::ExitedWithCode(0), "");
    std::filesystem::permissions(locked, perms::owner_all);
    EXPECT_TRUE(std::filesystem::exists(locked / "meas.xlsx"));
  }
}

TEST(FileDialogsTest, SourceFileAndAddFileDialogs) {
  testing::RecordingUi ui;
  FileList files;
  ui.default_data_folder = "/home/u/data";
  ui.open_answers = {"/d/chosen.xml", "False", ""};
  EXPECT_EQ(ChooseSourceFile(files, ui), "/d/chosen.xml");
  EXPECT_EQ(ChooseSourceFile(files, ui), "");
  EXPECT_EQ(ChooseSourceFile(files, ui), "");
  ASSERT_EQ(ui.open_dialogs.size(), 3u);
  EXPECT_EQ(ui.open_dialogs[0].title, "Open Z4400 Family source file");
  EXPECT_EQ(ui.open_dialogs[0].filter,
            "XML Files Z4420 family (*.xml),*.xml,(*.csv),*.csv,All Files (*.*),*.*");
  EXPECT_EQ(ui.open_dialogs[0].initial_folder, "/home/u/data");

  ui.open_answers = {"/d/trace.XML", "False", "", "C:\\d\\a.csv", "/d/b.xml"};
  for (int i = 0; i < 5; ++i) AddFileByDialog(files, ui);
  EXPECT_EQ(ui.open_dialogs.back().filter, "(*.xml),*.xml,(*.csv),*.csv,All Files (*.*),*.*");
  EXPECT_EQ(files.FileCount(), 2);
  EXPECT_EQ(ui.file_list, (std::vector<std::string>{"a.csv", "b.xml"}));
  EXPECT_EQ(files.Entry(0).Path, "C:\\d\\a.csv");
  EXPECT_EQ(files.Entry(0).Flag, -1);

  files.SetCurrentIndex(1);
  EXPECT_EQ(ChooseSourceFile(files, ui), "/d/b.xml");
  files.SetCurrentIndex(101);
  EXPECT_THROW(ChooseSourceFile(files, ui), RuntimeFailure);
}

TEST(FileListTest, LimitsAndRemoval) {
  FileList files;
  for (int i = 0; i < kAddFileLimit; ++i) {
    ASSERT_EQ(files.AddFile("/d/f" + std::to_string(i) + ".csv"), FileList::AddStatus::kAdded);
  }
  EXPECT_EQ(files.AddFile("/d/a.XML"), FileList::AddStatus::kIgnored);
  EXPECT_EQ(files.LastKind(), "XML");
  EXPECT_EQ(files.AddFile("/d/more.xml"), FileList::AddStatus::kFull);
  EXPECT_EQ(files.FileCount(), 100);
  // The dialog allows one more entry, the 101st; the 102nd is a failure.
  EXPECT_TRUE(files.AddDialogResult("/d/last.xml"));
  EXPECT_THROW(files.AddDialogResult("/d/over.xml"), RuntimeFailure);

  files.RemoveSelectedFiles({});
  EXPECT_EQ(files.FileCount(), 101);
  files.RemoveSelectedFiles({100, 0, 2, 2, 500, -1});
  EXPECT_EQ(files.FileCount(), 98);
  EXPECT_EQ(files.Names().front(), "f1.csv");
  EXPECT_EQ(files.Names()[1], "f3.csv");
  EXPECT_EQ(files.Names().back(), "f99.csv");
  files.ClearFileList();
  EXPECT_EQ(files.FileCount(), 0);
  EXPECT_TRUE(files.Names().empty());
}

}  // namespace
}  // namespace z4400
