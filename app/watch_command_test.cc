// End-to-end tests of z4400conv --watch and --summary: the program watches a
// folder that receives files as an instrument and a user would save them.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "app/batch_test_util.h"
#include "summary/summary_workbook.h"
#include "testing/instrument_generator.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/xlsx/xlsx_reader.h"

namespace z4400 {
namespace {

using std::chrono::milliseconds;
using testing::BackgroundRun;
using testing::Lines;
using testing::RunProgram;
using testing::WriteInstrumentFile;

/// Waits up to 30 s for `done`; false when it never came.
template <typename Condition>
bool WaitFor(Condition done) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(milliseconds(20));
  }
  return true;
}

long Count(const std::vector<std::string>& lines, const std::string& line) {
  return std::count(lines.begin(), lines.end(), line);
}

class WatchCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
    std::filesystem::create_directories(in_);
    std::filesystem::create_directories(out_);
  }

  ::z4400::testing::ScratchDir scratch_;
  std::filesystem::path in_ = scratch_ / "in";
  std::filesystem::path out_ = scratch_ / "out";
};

TEST_F(WatchCommandTest, ConvertsEachFileOnceWhenCompleteAndAgainWhenReplaced) {
  // Already there: one file to convert, one whose workbook is up to date.
  WriteInstrumentFile(in_ / "early.xml", 1);
  WriteInstrumentFile(in_ / "sub" / "kept.csv", 2);
  std::filesystem::create_directories(out_ / "sub");
  std::ofstream(out_ / "sub" / "kept.xlsx") << "made before";
  std::filesystem::last_write_time(
      out_ / "sub" / "kept.xlsx",
      std::filesystem::last_write_time(in_ / "sub" / "kept.csv") + std::chrono::seconds(5));
  const std::filesystem::path summary = scratch_ / "summary.xlsx";

  BackgroundRun watch({"--watch", in_.string(), "--output-dir", out_.string(), "--settings-dir",
                       scratch_.path().string(), "--settle", "100", "--summary", summary.string()},
                      scratch_.path(), scratch_.path(), 1);
  ASSERT_GT(watch.pid(), 0);
  ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(out_ / "early.xlsx"); }));

  // A file saved slowly in a new folder: four chunks with pauses longer
  // than the settle time, the file held open throughout; a bad file saved
  // in between.
  GeneratorOptions options;
  options.seed = 3;
  options.points = 201;
  const std::string text = InstrumentXml(GenerateInstrumentFile(options));
  std::filesystem::create_directories(in_ / "day2");
  {
    std::ofstream slow(in_ / "day2" / "slow.xml", std::ios::binary);
    const size_t chunk = text.size() / 4 + 1;
    for (size_t offset = 0; offset < text.size(); offset += chunk) {
      slow << text.substr(offset, chunk) << std::flush;
      if (offset == 0) std::ofstream(in_ / "bad.xml", std::ios::binary) << "<AnalyserData";
      std::this_thread::sleep_for(milliseconds(300));
    }
  }
  ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(out_ / "day2" / "slow.xlsx"); }));

  // A newer measurement saved over the first file, as a copy would.
  const auto first_made = std::filesystem::last_write_time(out_ / "early.xlsx");
  WriteInstrumentFile(scratch_ / "newer.xml", 4);
  std::filesystem::rename(scratch_ / "newer.xml", in_ / "early.xml");
  // The old workbook is removed before the new one is saved, so it may be
  // missing for a moment.
  const auto made_time = [](const std::filesystem::path& path) {
    std::error_code error;
    const auto time = std::filesystem::last_write_time(path, error);
    return error ? std::filesystem::file_time_type::min() : time;
  };
  ASSERT_TRUE(WaitFor([&] {
    const auto made = made_time(out_ / "early.xlsx");
    return made != std::filesystem::file_time_type::min() && made != first_made;
  }));
  // The summary is rewritten after the workbook.
  ASSERT_TRUE(WaitFor([&] { return made_time(summary) >= made_time(out_ / "early.xlsx"); }));
  std::this_thread::sleep_for(milliseconds(300));

  ASSERT_EQ(::kill(watch.pid(), SIGINT), 0);
  const testing::RunResult result = watch.Wait();
  EXPECT_EQ(result.status, 0) << result.err;
  const std::vector<std::string> out = Lines(result.out);
  EXPECT_EQ(Count(out, (out_ / "early.xlsx").string()), 2) << result.out;
  EXPECT_EQ(Count(out, (out_ / "day2" / "slow.xlsx").string()), 1) << result.out;
  EXPECT_EQ(out.size(), 3u) << "only converted workbooks: " << result.out;
  const std::string err = result.err;
  EXPECT_NE(err.find("z4400conv: " + (in_ / "bad.xml").string() + ": "), std::string::npos) << err;
  EXPECT_EQ(err.find("slow.xml: "), err.find("slow.xml: converted")) << err;
  EXPECT_NE(err.find("3 converted, 1 failed"), std::string::npos) << err;

  // The summary lists every file once, the replaced one with its newer
  // content, the bad one failed.
  Application application;
  Workbook& book = application.Workbooks().Add();
  std::string error;
  ASSERT_TRUE(ReadXlsx(summary, &book, &error)) << error;
  const Worksheet& files = book.Worksheets()(std::string(kSummaryFilesSheet));
  std::map<std::string, std::string> status;
  for (int row = 2; row <= files.grid().RowCount(); ++row) {
    status[files.ValueAt(row, 1).ToText()] = files.ValueAt(row, 2).ToText();
  }
  EXPECT_EQ(status, (std::map<std::string, std::string>{
                        {(in_ / "bad.xml").string(), "failed"},
                        {(in_ / "day2" / "slow.xml").string(), "converted"},
                        {(in_ / "early.xml").string(), "converted"},
                        {(in_ / "sub" / "kept.csv").string(), "converted"}}));
}

TEST_F(WatchCommandTest, WrongUsageIsRefusedAtOnce) {
  WriteInstrumentFile(in_ / "a.xml", 1);
  const struct {
    std::vector<std::string> arguments;
    std::string message;
  } cases[] = {
      {{"--watch", (scratch_ / "missing").string()}, "no such folder"},
      {{"--watch", in_.string(), (in_ / "a.xml").string()}, "--watch takes one DIR and no FILE"},
      {{"--watch", in_.string(), "--summary", (scratch_ / "s.csv").string()},
       "the name must end in .xlsx"},
      {{"--batch", (in_ / "a.xml").string(), "--summary", (scratch_ / "no" / "s.xlsx").string()},
       "no such folder"},
      {{"--summary", (scratch_ / "s.xlsx").string()}, "--summary needs --batch or --watch"},
  };
  for (const auto& c : cases) {
    const testing::RunResult result = RunProgram(c.arguments, scratch_.path());
    EXPECT_EQ(result.status, 2) << c.message;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
  }
}

}  // namespace
}  // namespace z4400
