// End-to-end tests of what z4400conv --batch must never do to the user's
// files: leave a temporary file after Ctrl-C, lose a finished workbook, or
// replace a workbook that another run saved meanwhile.
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

#include "app/batch_test_util.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

using testing::BackgroundRun;
using testing::IsWorkbook;
using testing::ReadText;
using testing::RunProgram;
using testing::RunResult;
using testing::Temporaries;
using testing::WriteInstrumentFile;
using testing::WriteLargestFile;

class BatchSafetyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
    std::filesystem::create_directories(out_);
  }
  std::vector<std::string> Batch(std::vector<std::string> more) const {
    std::vector<std::string> arguments = {"--batch", "--settings-dir", scratch_.path().string(),
                                          "--output-dir", out_.string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }

  ::z4400::testing::ScratchDir scratch_;
  std::filesystem::path in_ = scratch_ / "in";
  std::filesystem::path out_ = scratch_ / "out";
};

TEST_F(BatchSafetyTest, InterruptDuringASaveLeavesNoTemporaryAndKeepsEarlierWorkbooks) {
  WriteInstrumentFile(in_ / "a.xml", 1);
  WriteInstrumentFile(in_ / "b.xml", 2);
  WriteLargestFile(in_ / "long.xml", 3);
  WriteInstrumentFile(in_ / "z.xml", 4);
  // A workbook the interrupted file was going to replace comes back.
  std::ofstream(out_ / "long.xlsx") << "an older workbook";

  BackgroundRun run(
      Batch({"--jobs", "1", "--overwrite", (in_ / "a.xml").string(), (in_ / "b.xml").string(),
             (in_ / "long.xml").string(), (in_ / "z.xml").string()}),
      scratch_.path(), scratch_.path(), 1);
  ASSERT_GT(run.pid(), 0);
  // Wait for the save of long.xlsx: its temporary file appears.
  bool saving = false;
  for (int i = 0; i < 3000 && !saving; ++i) {
    for (const std::string& name : Temporaries(out_)) {
      saving = saving || name.rfind(".long.xlsx.", 0) == 0;
    }
    if (!saving) std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  ASSERT_TRUE(saving) << "no save of long.xlsx seen";
  ::kill(run.pid(), SIGINT);
  const RunResult result = run.Wait();

  EXPECT_EQ(result.status, 130) << result.err;
  EXPECT_TRUE(Temporaries(out_).empty()) << Temporaries(out_).front();
  EXPECT_NE(result.err.find("z4400conv: " + (in_ / "long.xml").string() + ": interrupted"),
            std::string::npos)
      << result.err;
  EXPECT_EQ(result.out, (out_ / "a.xlsx").string() + "\n" + (out_ / "b.xlsx").string() + "\n");
  EXPECT_TRUE(IsWorkbook(out_ / "a.xlsx"));
  EXPECT_TRUE(IsWorkbook(out_ / "b.xlsx"));
  EXPECT_EQ(ReadText(out_ / "long.xlsx"), "an older workbook");
  EXPECT_FALSE(std::filesystem::exists(out_ / "z.xlsx"));
}

TEST_F(BatchSafetyTest, TwoRunsSavingOneNameAtOnceReplaceNothing) {
  // Two sources of one name in two folders: both would be saved as
  // out/meas.xlsx. Started together, one run saves and the other stops.
  WriteLargestFile(in_ / "x" / "meas.xml", 1);
  WriteLargestFile(in_ / "y" / "meas.xml", 2);
  for (int attempt = 0; attempt < 3; ++attempt) {
    std::filesystem::remove(out_ / "meas.xlsx");
    BackgroundRun first(Batch({(in_ / "x" / "meas.xml").string()}), scratch_.path(),
                        scratch_.path(), 1);
    BackgroundRun second(Batch({(in_ / "y" / "meas.xml").string()}), scratch_.path(),
                         scratch_.path(), 2);
    const RunResult one = first.Wait();
    const RunResult two = second.Wait();
    const bool first_saved = one.status == 0;
    EXPECT_EQ(first_saved ? two.status : one.status, 3) << one.err << two.err;
    EXPECT_EQ(first_saved ? one.status : two.status, 0) << one.err << two.err;
    const RunResult& stopped = first_saved ? two : one;
    EXPECT_NE(stopped.err.find("not overwritten"), std::string::npos) << stopped.err;
    EXPECT_EQ(stopped.out, "");
    EXPECT_TRUE(Temporaries(out_).empty());

    // The workbook is the one of the run that saved it, whole.
    const std::string saved = ReadText(out_ / "meas.xlsx");
    const std::filesystem::path alone = scratch_ / "alone";
    std::filesystem::create_directories(alone);
    const RunResult again = RunProgram(
        {"--batch", "--overwrite", "--settings-dir", scratch_.path().string(), "--output-dir",
         alone.string(), (in_ / (first_saved ? "x" : "y") / "meas.xml").string()},
        scratch_.path());
    ASSERT_EQ(again.status, 0) << again.err;
    EXPECT_EQ(saved, ReadText(alone / "meas.xlsx"));
  }
}

TEST_F(BatchSafetyTest, ASaveRemovesTemporariesOfProcessesThatNoLongerExist) {
  // A process that has ended, and this one, which still runs.
  const pid_t ended = fork();
  if (ended == 0) _exit(0);
  ASSERT_GT(ended, 0);
  waitpid(ended, nullptr, 0);
  const std::string stale = ".meas.xlsx." + std::to_string(ended) + "-0123456789abcdef.tmp";
  const std::string live = ".meas.xlsx." + std::to_string(::getpid()) + "-0123456789abcdef.tmp";
  std::ofstream(out_ / stale) << "left by a killed save";
  std::ofstream(out_ / live) << "a save in progress";
  std::ofstream(out_ / ".notes.tmp") << "not a temporary of ours";

  WriteInstrumentFile(in_ / "meas.xml", 1);
  const RunResult run = RunProgram(Batch({(in_ / "meas.xml").string()}), scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_FALSE(std::filesystem::exists(out_ / stale));
  EXPECT_TRUE(std::filesystem::exists(out_ / live));
  EXPECT_TRUE(std::filesystem::exists(out_ / ".notes.tmp"));
}

}  // namespace
}  // namespace z4400
