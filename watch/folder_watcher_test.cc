#include "watch/folder_watcher.h"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>

#include "testing/instrument_generator.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using testing::ScratchDir;

/// A file handed out by the watcher, and when.
struct Seen {
  std::filesystem::path path;
  Clock::time_point at;
};

bool IsInstrumentFile(const std::filesystem::path& path) {
  return path.extension() == ".xml" || path.extension() == ".csv";
}

std::unique_ptr<FolderWatcher> OpenWatcher(const std::filesystem::path& root, milliseconds settle) {
  std::string error;
  auto watcher = FolderWatcher::Open(root, {settle, milliseconds(5), IsInstrumentFile}, &error);
  EXPECT_NE(watcher, nullptr) << error;
  return watcher;
}

/// Everything `watcher` hands out for `duration`, paths relative to `root`.
std::vector<Seen> Collect(FolderWatcher& watcher, const std::filesystem::path& root,
                          milliseconds duration) {
  std::vector<Seen> seen;
  const auto end = Clock::now() + duration;
  while (Clock::now() < end) {
    for (const auto& path : watcher.Next(milliseconds(10))) {
      seen.push_back({path.lexically_relative(root), Clock::now()});
    }
  }
  return seen;
}

std::vector<std::filesystem::path> Paths(const std::vector<Seen>& seen) {
  std::vector<std::filesystem::path> paths;
  paths.reserve(seen.size());
  for (const Seen& one : seen) paths.push_back(one.path);
  return paths;
}

/// A generated instrument file's text, `seed` telling files apart.
std::string InstrumentText(uint64_t seed) {
  GeneratorOptions options;
  options.seed = seed;
  options.points = 51;
  return InstrumentXml(GenerateInstrumentFile(options));
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

TEST(FolderWatcherTest, FilesPresentFirstThenNewOnesAndNewFolders) {
  ScratchDir scratch;
  const std::filesystem::path& root = scratch.path();
  std::filesystem::create_directories(root / "sub");
  WriteFile(root / "b.xml", InstrumentText(1));
  WriteFile(root / "a.xml", InstrumentText(2));
  WriteFile(root / "sub" / "c.csv", InstrumentText(3));
  WriteFile(root / "notes.txt", "not an instrument file");
  const auto watcher = OpenWatcher(root, milliseconds(30));
  ASSERT_NE(watcher, nullptr);
  EXPECT_EQ(Paths(Collect(*watcher, root, milliseconds(150))),
            (std::vector<std::filesystem::path>{"a.xml", "b.xml", "sub/c.csv"}));

  // A folder made while watching, a file in it at once (before the folder
  // can be watched), a folder inside that one, and a file moved in.
  std::filesystem::create_directories(root / "day2" / "run1");
  WriteFile(root / "day2" / "run1" / "d.xml", InstrumentText(4));
  WriteFile(scratch / "outside.csv", InstrumentText(5));
  WriteFile(root / "day2" / "e.txt", "ignored");
  std::filesystem::rename(scratch / "outside.csv", root / "day2" / "moved.csv");
  auto later = Paths(Collect(*watcher, root, milliseconds(200)));
  std::sort(later.begin(), later.end());
  EXPECT_EQ(later, (std::vector<std::filesystem::path>{"day2/moved.csv", "day2/run1/d.xml"}));
}

TEST(FolderWatcherTest, FilesWrittenSlowlyInChunksAreHandedOutOnceAfterTheLastChunk) {
  ScratchDir scratch;
  const std::filesystem::path& root = scratch.path();
  const auto watcher = OpenWatcher(root, milliseconds(60));
  ASSERT_NE(watcher, nullptr);
  const std::string text = InstrumentText(6);
  const size_t chunk = text.size() / 4 + 1;

  // One writer keeps its file open and pauses longer than the settle time
  // between chunks; another reopens its file for each chunk with short
  // pauses. A bad file arrives in between.
  Clock::time_point held_closed;
  Clock::time_point appended_closed;
  std::thread writers([&] {
    {
      std::ofstream held(root / "held.xml", std::ios::binary);
      for (size_t offset = 0; offset < text.size(); offset += chunk) {
        held << text.substr(offset, chunk) << std::flush;
        std::this_thread::sleep_for(milliseconds(100));
      }
    }
    held_closed = Clock::now();
    WriteFile(root / "bad.xml", "<AnalyserData");
    for (size_t offset = 0; offset < text.size(); offset += chunk) {
      std::ofstream(root / "appended.csv", std::ios::binary | std::ios::app)
          << text.substr(offset, chunk);
      std::this_thread::sleep_for(milliseconds(5));
    }
    appended_closed = Clock::now();
  });
  const std::vector<Seen> seen = Collect(*watcher, root, milliseconds(900));
  writers.join();

  ASSERT_EQ(Paths(seen),
            (std::vector<std::filesystem::path>{"held.xml", "bad.xml", "appended.csv"}));
  EXPECT_GE(seen[0].at, held_closed);
  EXPECT_GE(seen[2].at, appended_closed);
  EXPECT_EQ(std::filesystem::file_size(root / "held.xml"), text.size());
}

TEST(FolderWatcherTest, AFileReplacedByANewerOneIsHandedOutAgain) {
  ScratchDir scratch;
  const std::filesystem::path& root = scratch.path();
  WriteFile(root / "meas.xml", InstrumentText(7));
  const auto watcher = OpenWatcher(root, milliseconds(30));
  ASSERT_NE(watcher, nullptr);
  EXPECT_EQ(Paths(Collect(*watcher, root, milliseconds(120))),
            std::vector<std::filesystem::path>{"meas.xml"});

  // Opened for writing and closed without a change: not again.
  { std::ofstream(root / "meas.xml", std::ios::binary | std::ios::app); }
  EXPECT_EQ(Paths(Collect(*watcher, root, milliseconds(120))),
            std::vector<std::filesystem::path>{});

  // A newer measurement saved under the same name, as a copy would.
  WriteFile(scratch / "newer.xml", InstrumentText(8));
  std::filesystem::rename(scratch / "newer.xml", root / "meas.xml");
  EXPECT_EQ(Paths(Collect(*watcher, root, milliseconds(120))),
            std::vector<std::filesystem::path>{"meas.xml"});
}

TEST(FolderWatcherTest, AFolderThatCannotBeWatchedIsRefusedByName) {
  ScratchDir scratch;
  std::string error;
  EXPECT_EQ(FolderWatcher::Open(scratch / "missing", {}, &error), nullptr);
  EXPECT_EQ(error, (scratch / "missing").string() + ": No such file or directory");
}

}  // namespace
}  // namespace z4400
