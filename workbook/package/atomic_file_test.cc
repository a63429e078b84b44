#include "workbook/package/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>

#include "testing/test_files.h"

namespace z4400 {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool WriteText(const std::filesystem::path& path, const std::string& text) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out << text;
  return static_cast<bool>(out);
}

std::set<std::string> FolderNames(const std::filesystem::path& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

TEST(WriteAtomicallyTest, ReplacesOnlyWhenTheWriteSucceeds) {
  testing::ScratchDir scratch;
  const auto target = scratch / "book.xlsx";
  ASSERT_TRUE(WriteText(target, "old"));
  ::chmod(target.c_str(), 0640);
  std::string error;

  // A failing write: the old file stays, the temporary goes.
  std::filesystem::path seen;
  EXPECT_FALSE(WriteAtomically(
      target,
      [&](const std::filesystem::path& temporary) {
        seen = temporary;
        WriteText(temporary, "half");
        return false;
      },
      &error));
  EXPECT_EQ(ReadAll(target), "old");
  EXPECT_EQ(seen.parent_path(), target.parent_path());
  EXPECT_FALSE(std::filesystem::exists(seen));
  EXPECT_FALSE(error.empty());
  EXPECT_EQ(FolderNames(scratch.path()), std::set<std::string>{"book.xlsx"});

  // The callback's own message is kept.
  error.clear();
  EXPECT_FALSE(WriteAtomically(
      target,
      [&](const std::filesystem::path&) {
        error = "disk on fire";
        return false;
      },
      &error));
  EXPECT_EQ(error, "disk on fire");

  // A succeeding write replaces the file and keeps its permissions.
  error.clear();
  EXPECT_TRUE(WriteAtomically(
      target, [](const std::filesystem::path& temporary) { return WriteText(temporary, "new"); },
      &error))
      << error;
  EXPECT_EQ(ReadAll(target), "new");
  struct stat info;
  ASSERT_EQ(::stat(target.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0640u);
  EXPECT_EQ(FolderNames(scratch.path()), std::set<std::string>{"book.xlsx"});

  // A new file in a folder that has none yet.
  EXPECT_TRUE(WriteAtomically(
      scratch / "fresh.xlsx",
      [](const std::filesystem::path& temporary) { return WriteText(temporary, "x"); }, &error));
  EXPECT_EQ(ReadAll(scratch / "fresh.xlsx"), "x");
}

TEST(WriteAtomicallyTest, TemporaryNamesDiffer) {
  testing::ScratchDir scratch;
  std::set<std::filesystem::path> names;
  for (int i = 0; i < 20; ++i) {
    WriteAtomically(
        scratch / "book.xlsx",
        [&](const std::filesystem::path& temporary) {
          names.insert(temporary);
          return true;
        },
        nullptr);
  }
  EXPECT_EQ(names.size(), 20u);
}

TEST(WriteAtomicallyTest, Failures) {
  testing::ScratchDir scratch;
  std::string error;
  bool called = false;
  const auto write = [&](const std::filesystem::path& temporary) {
    called = true;
    return WriteText(temporary, "x");
  };
  // No folder to write in: the callback never runs.
  EXPECT_FALSE(WriteAtomically(scratch / "no" / "book.xlsx", write, &error));
  EXPECT_FALSE(called);
  EXPECT_NE(error.find("Cannot create a file in"), std::string::npos) << error;

  // The target name is taken by a folder: the rename fails, nothing is left.
  std::filesystem::create_directories(scratch / "taken" / "inside");
  error.clear();
  EXPECT_FALSE(WriteAtomically(scratch / "taken", write, &error));
  EXPECT_TRUE(called);
  EXPECT_NE(error.find("Cannot replace"), std::string::npos) << error;
  EXPECT_EQ(FolderNames(scratch.path()), std::set<std::string>{"taken"});
}

TEST(WriteAtomicallyTest, AbandonedSavesReplaceNothingAndLeaveNoTemporary) {
  // Abandoning is for good, so it runs in a child process of its own.
  testing::ScratchDir scratch;
  const auto during = scratch / "during.xlsx";
  const auto after = scratch / "after.xlsx";
  ASSERT_TRUE(WriteText(during, "old"));
  EXPECT_EXIT(
      {
        std::string error;
        // Abandoned while the bytes are written: the temporary goes, the
        // target stays.
        const bool saved = WriteAtomically(
            during,
            [](const std::filesystem::path& temporary) {
              AbandonSaves();
              return WriteText(temporary, "new") || true;
            },
            &error);
        const bool later = WriteAtomically(
            after, [](const std::filesystem::path& temporary) { return WriteText(temporary, "x"); },
            nullptr);
        const bool kept = ReadAll(during) == "old" && !std::filesystem::exists(after) &&
                          FolderNames(scratch.path()) == std::set<std::string>{"during.xlsx"};
        std::exit(!saved && !later && kept && error.find("interrupted") != std::string::npos ? 0
                                                                                             : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace z4400
