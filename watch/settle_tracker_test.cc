#include "watch/settle_tracker.h"

#include <gtest/gtest.h>

#include <map>

namespace z4400 {
namespace {

using std::chrono::milliseconds;
using Paths = std::vector<std::filesystem::path>;

/// Files as the fake probe reports them; absent ones are gone.
struct FakeFiles {
  std::map<std::filesystem::path, FileState> files;

  void Write(const std::string& name, std::uintmax_t size, int seconds, bool open = false) {
    files[name] =
        FileState{size, std::filesystem::file_time_type(std::chrono::seconds(seconds)), open};
  }
  SettleTracker::Probe Probe() {
    return [this](const std::filesystem::path& path) -> std::optional<FileState> {
      const auto found = files.find(path);
      if (found == files.end()) return std::nullopt;
      return found->second;
    };
  }
};

TEST(SettleTrackerTest, FilesAreHandedOutOncePerVersionWhenSettled) {
  const SettleTracker::Clock::time_point t0{};
  const auto at = [&](int ms) { return t0 + milliseconds(ms); };
  FakeFiles fake;
  SettleTracker tracker(milliseconds(50), fake.Probe());

  // Present at start: handed out together, in the order touched.
  fake.Write("b.xml", 10, 1);
  fake.Write("a.csv", 10, 1);
  tracker.Touch("b.xml", at(0));
  tracker.Touch("a.csv", at(0));
  EXPECT_EQ(tracker.TakeReady(at(0)), Paths{});
  EXPECT_EQ(tracker.TakeReady(at(49)), Paths{});
  EXPECT_TRUE(tracker.Waiting());
  EXPECT_EQ(tracker.TakeReady(at(50)), (Paths{"b.xml", "a.csv"}));
  EXPECT_FALSE(tracker.Waiting());

  // Growing in chunks: each change restarts the settle time.
  fake.Write("slow.xml", 100, 2);
  tracker.Touch("slow.xml", at(100));
  EXPECT_EQ(tracker.TakeReady(at(120)), Paths{});
  fake.Write("slow.xml", 200, 2);
  EXPECT_EQ(tracker.TakeReady(at(160)), Paths{}) << "grew at 160";
  EXPECT_EQ(tracker.TakeReady(at(200)), Paths{});
  fake.Write("slow.xml", 300, 3);
  EXPECT_EQ(tracker.TakeReady(at(205)), Paths{}) << "grew at 205";
  EXPECT_EQ(tracker.TakeReady(at(254)), Paths{});
  EXPECT_EQ(tracker.TakeReady(at(255)), Paths{"slow.xml"});

  // Still open for writing: never ready however long it stays the same.
  fake.Write("held.xml", 10, 4, /*open=*/true);
  tracker.Touch("held.xml", at(300));
  EXPECT_EQ(tracker.TakeReady(at(400)), Paths{});
  EXPECT_EQ(tracker.TakeReady(at(1000)), Paths{});
  fake.Write("held.xml", 10, 4, /*open=*/false);
  EXPECT_EQ(tracker.TakeReady(at(1001)), Paths{}) << "closed at 1001";
  EXPECT_EQ(tracker.TakeReady(at(1051)), Paths{"held.xml"});

  // Touched again unchanged (opened for writing, closed, nothing written):
  // not handed out twice. Rewritten: handed out again.
  tracker.Touch("slow.xml", at(1100));
  EXPECT_EQ(tracker.TakeReady(at(1200)), Paths{});
  EXPECT_FALSE(tracker.Waiting());
  fake.Write("slow.xml", 300, 9);
  tracker.Touch("slow.xml", at(1300));
  EXPECT_EQ(tracker.TakeReady(at(1300)), Paths{});
  EXPECT_EQ(tracker.TakeReady(at(1350)), Paths{"slow.xml"});

  // A touch restarts the wait even when size and time did not change.
  fake.Write("same.xml", 5, 5);
  tracker.Touch("same.xml", at(1400));
  EXPECT_EQ(tracker.TakeReady(at(1420)), Paths{});
  tracker.Touch("same.xml", at(1440));
  EXPECT_EQ(tracker.TakeReady(at(1470)), Paths{}) << "touched again at 1440";
  EXPECT_EQ(tracker.TakeReady(at(1490)), Paths{"same.xml"});

  // Gone before it settled: forgotten.
  fake.Write("gone.xml", 5, 6);
  tracker.Touch("gone.xml", at(1500));
  fake.files.erase("gone.xml");
  EXPECT_EQ(tracker.TakeReady(at(1600)), Paths{});
  EXPECT_FALSE(tracker.Waiting());
}

}  // namespace
}  // namespace z4400
