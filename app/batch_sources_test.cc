#include "app/batch_sources.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "testing/test_files.h"

namespace z4400 {
namespace {

std::vector<std::string> Sorted(std::vector<std::string> lines) {
  std::sort(lines.begin(), lines.end());
  return lines;
}

/// Prints what differs; true when nothing does.
bool Same(const char* what, const std::vector<std::string>& got,
          const std::vector<std::string>& wanted) {
  if (got == wanted) return true;
  std::fprintf(stderr, "%s: got %s, wanted %s\n", what, ::testing::PrintToString(got).c_str(),
               ::testing::PrintToString(wanted).c_str());
  return false;
}

/// In a child process that is not root (root may read every folder): the
/// batch lists of the folder `in` and of its unreadable subfolder.
[[noreturn]] void WalkAsAUser(const std::filesystem::path& in) {
  if (!testing::DropRootPrivileges()) std::_Exit(2);
  const std::string root = in.string();
  const BatchSources walked = CollectSources({root}, std::nullopt);
  std::vector<std::string> names;
  for (const BatchEntry& entry : walked.entries) names.push_back(entry.Name);
  const bool walk_right =
      Same("entries", names, {root + "/good.xml", root + "/sub/deep.csv"}) &&
      Same("skipped", Sorted(walked.skipped),
           {root + "/SHOUT.XML: skipped: the extension must be \".xml\" or \".csv\" in lower case",
            root + "/locked: skipped: cannot read the folder: Permission denied",
            root + "/sub/pipe.xml: skipped: not a regular file"});
  const BatchSources locked = CollectSources({root + "/locked"}, std::nullopt);
  const bool locked_right =
      locked.entries.empty() &&
      Same("locked skipped", locked.skipped,
           {root + "/locked: skipped: cannot read the folder: Permission denied"});
  std::_Exit(walk_right && locked_right ? 0 : 1);
}

TEST(BatchSourcesTest, AFolderWalkNamesWhatItLeavesOut) {
  const testing::ScratchDir scratch;
  const std::filesystem::path in = scratch / "in";
  std::filesystem::create_directories(in / "sub");
  std::filesystem::create_directories(in / "locked");
  std::filesystem::create_directories(in / "folder.xml");
  for (const char* file : {"good.xml", "sub/deep.csv", "SHOUT.XML", "notes.txt", "locked/x.xml"}) {
    std::ofstream(in / file) << "<AnalyserData/>";
  }
  ASSERT_EQ(::mkfifo((in / "sub" / "pipe.xml").c_str(), 0644), 0);
  // Open to the unprivileged user of the child, but for the locked folder.
  using std::filesystem::perms;
  for (const std::filesystem::path& folder : {scratch.path(), in, in / "sub", in / "folder.xml"}) {
    std::filesystem::permissions(folder, perms::all);
  }
  std::filesystem::permissions(in / "locked", perms::none);
  EXPECT_EXIT(WalkAsAUser(in), ::testing::ExitedWithCode(0), "");
  std::filesystem::permissions(in / "locked", perms::owner_all);
}

}  // namespace
}  // namespace z4400
