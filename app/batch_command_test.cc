// End-to-end tests of z4400conv --batch: the program is run as a user runs
// it on made-up instrument files, and its exit status, output and files are
// checked.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "app/batch_test_util.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

using testing::IsWorkbook;
using testing::Lines;
using testing::ReadText;
using testing::RunProgram;
using testing::RunResult;
using testing::WriteInstrumentFile;

/// The summary line at the end of the error stream, without its seconds.
std::string Summary(const std::string& err) {
  const std::vector<std::string> lines = Lines(err);
  if (lines.empty()) return {};
  const std::string& last = lines.back();
  return last.substr(0, last.find(" in "));
}

/// The files below `folder` with their bytes, by relative path.
std::map<std::string, std::string> FolderContents(const std::filesystem::path& folder) {
  std::map<std::string, std::string> contents;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) {
      contents[entry.path().lexically_relative(folder).string()] = ReadText(entry.path());
    }
  }
  return contents;
}

/// Writes a "Data.ini" into `folder` that saves into `output` and logs when
/// `log` is set.
void WriteSettings(const std::filesystem::path& folder, const std::filesystem::path& output,
                   bool log) {
  std::ofstream(folder / "Data.ini", std::ios::binary)
      << output.string() << "\r\n1\r\n 1\r\n 0\r\n 0\r\n 1\r\n 1\r\n 16711680\r\n 1262987\r\n"
      << " 6053069\r\n 13150975\r\n 38655\r\n 13093064\r\n 13499135\r\n 0\r\n"
      << (log ? " 1" : " 0") << "\r\n 1000\r\n 1\r\n";
}

class BatchCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
    std::filesystem::create_directories(out_);
  }
  /// Arguments of a batch run with settings and output in the scratch folder.
  std::vector<std::string> Batch(std::vector<std::string> more,
                                 const std::filesystem::path& out = {}) const {
    std::vector<std::string> arguments = {"--batch", "--settings-dir", scratch_.path().string(),
                                          "--output-dir", (out.empty() ? out_ : out).string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }

  ::z4400::testing::ScratchDir scratch_;
  std::filesystem::path in_ = scratch_ / "in";
  std::filesystem::path out_ = scratch_ / "out";
};

TEST_F(BatchCommandTest, ConvertsAnyNumberOfFilesInListOrder) {
  // More than the window's list holds (100), in one call.
  constexpr int kFiles = 250;
  std::vector<std::string> files;
  for (int i = 0; i < kFiles; ++i) {
    const std::string name = "m" + std::to_string(1000 + i) + (i % 5 == 0 ? ".csv" : ".xml");
    WriteInstrumentFile(in_ / name, static_cast<uint64_t>(i));
    files.push_back((in_ / name).string());
  }
  const RunResult run = RunProgram(Batch(files), scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  const std::vector<std::string> written = Lines(run.out);
  ASSERT_EQ(written.size(), static_cast<size_t>(kFiles)) << run.err;
  for (int i = 0; i < kFiles; ++i) {
    const std::filesystem::path expected = out_ / ("m" + std::to_string(1000 + i) + ".xlsx");
    EXPECT_EQ(written[i], expected.string());
    EXPECT_TRUE(IsWorkbook(expected)) << expected;
  }
  // Piped: one line per file, then the summary.
  const std::vector<std::string> lines = Lines(run.err);
  ASSERT_EQ(lines.size(), static_cast<size_t>(kFiles + 1)) << run.err;
  EXPECT_EQ(lines[0], "[  1/250] " + files[0] + ": converted");
  EXPECT_EQ(lines[249], "[250/250] " + files[249] + ": converted");
  EXPECT_EQ(Summary(run.err), "z4400conv: 250 converted, 0 failed, 0 skipped");
}

TEST_F(BatchCommandTest, AFolderTreeIsMirroredInTheOutputFolder) {
  WriteInstrumentFile(in_ / "b" / "late.xml", 1);
  WriteInstrumentFile(in_ / "a" / "deep" / "meas.csv", 2);
  WriteInstrumentFile(in_ / "a" / "meas.xml", 3);
  WriteInstrumentFile(in_ / "top.xml", 4);
  WriteInstrumentFile(in_ / "a" / "SHOUT.XML", 5);
  std::ofstream(in_ / "a" / "notes.txt") << "not a measurement";

  const RunResult run = RunProgram(Batch({"in"}), scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  // Sorted by path, each workbook in the mirrored folder.
  const std::vector<std::string> expected = {
      (out_ / "a" / "deep" / "meas.xlsx").string(), (out_ / "a" / "meas.xlsx").string(),
      (out_ / "b" / "late.xlsx").string(), (out_ / "top.xlsx").string()};
  EXPECT_EQ(Lines(run.out), expected) << run.err;
  for (const std::string& workbook : expected) EXPECT_TRUE(IsWorkbook(workbook)) << workbook;
  EXPECT_NE(run.err.find("z4400conv: in/a/SHOUT.XML: skipped: the extension must be \".xml\" or "
                         "\".csv\" in lower case"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(run.err.find("notes.txt"), std::string::npos) << run.err;
  EXPECT_EQ(Summary(run.err), "z4400conv: 4 converted, 0 failed, 0 skipped");

  // Without --output-dir the workbooks go where "Data.ini" says (here:
  // the output folder it names), not mirrored.
  WriteSettings(scratch_.path(), scratch_ / "flat", false);
  std::filesystem::create_directories(scratch_ / "flat");
  const RunResult flat =
      RunProgram({"--batch", "--settings-dir", scratch_.path().string(), (in_ / "b").string()},
                 scratch_.path());
  EXPECT_EQ(flat.status, 0) << flat.err;
  EXPECT_EQ(flat.out, (scratch_ / "flat" / "late.xlsx").string() + "\n");
}

TEST_F(BatchCommandTest, AFailingFileInTheMiddleGivesTheSameResultsWithEveryNumberOfJobs) {
  std::vector<std::string> files;
  for (int i = 0; i < 9; ++i) {
    const std::filesystem::path file = in_ / ("f" + std::to_string(i) + ".xml");
    // The fifth file is of a model the converter rejects.
    WriteInstrumentFile(file, static_cast<uint64_t>(i), i == 0 ? 1001 : 11 + i * 100,
                        i == 4 ? "Q9999" : "Z4420");
    files.push_back(file.string());
  }
  // A file whose workbook has the name of the first one's.
  WriteInstrumentFile(in_ / "again" / "f0.xml", 10, 11);
  const std::string again = (in_ / "again" / "f0.xml").string();
  const std::string rejected = "z4400conv: " + files[4] + ": Not MQD data.\n";
  struct Case {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    int converted;
    std::string message;
    const char* summary;
  };
  std::vector<std::string> same_name = {files[0], again, files[1], files[2]};
  same_name.insert(same_name.begin(), "--keep-going");
  const std::vector<Case> cases = {
      {"stops at the failure", files, 1, 4, rejected,
       "z4400conv: 4 converted, 1 failed, 4 skipped"},
      {"keeps going", {}, 1, 8, rejected, "z4400conv: 8 converted, 1 failed, 0 skipped"},
      {"one workbook name twice", same_name, 3, 3, again + ": ",
       "z4400conv: 3 converted, 0 failed, 1 skipped"},
  };
  for (Case c : cases) {
    SCOPED_TRACE(c.name);
    if (c.arguments.empty()) {
      c.arguments = files;
      c.arguments.insert(c.arguments.begin(), "--keep-going");
    }
    std::map<std::string, std::string> first_workbooks;
    RunResult first;
    for (const char* jobs : {"1", "2", "3"}) {
      SCOPED_TRACE(std::string("--jobs ") + jobs);
      const std::filesystem::path out = scratch_ / "jobs";
      std::filesystem::remove_all(out);
      std::filesystem::create_directories(out);
      std::vector<std::string> arguments = {"--jobs", jobs};
      arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
      const RunResult run = RunProgram(Batch(arguments, out), scratch_.path());
      EXPECT_EQ(run.status, c.status) << run.err;
      EXPECT_EQ(Lines(run.out).size(), static_cast<size_t>(c.converted)) << run.out;
      EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
      EXPECT_EQ(Summary(run.err), c.summary) << run.err;
      EXPECT_FALSE(std::filesystem::exists(out / "f4.xlsx")) << "rejected before any workbook";
      const std::map<std::string, std::string> workbooks = FolderContents(out);
      if (std::string(jobs) == "1") {
        first = run;
        first_workbooks = workbooks;
        continue;
      }
      EXPECT_EQ(run.status, first.status);
      EXPECT_EQ(run.out, first.out);
      EXPECT_EQ(run.err.substr(0, run.err.rfind(" in ")),
                first.err.substr(0, first.err.rfind(" in ")));
      EXPECT_EQ(workbooks, first_workbooks) << "the same workbooks, byte for byte";
    }
  }
}

TEST_F(BatchCommandTest, RefusedSourcesAreNamedAtOnce) {
  WriteInstrumentFile(in_ / "good.xml", 1);
  WriteInstrumentFile(in_ / "UPPER.XML", 2);
  ASSERT_EQ(std::system(("mkfifo " + testing::Quoted((in_ / "pipe.xml").string())).c_str()), 0);
  std::filesystem::create_directories(in_ / "folder.xml");
  struct Case {
    const char* file;
    const char* reason;
  };
  const std::vector<Case> cases = {
      {"pipe.xml", "not a regular file"},
      {"missing.xml", "No such file or directory"},
      {"UPPER.XML", "the extension must be \".xml\" or \".csv\" in lower case"},
      {"notes.txt", "not an .xml or .csv file"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.file);
    const std::string file = (in_ / c.file).string();
    // Alone, and between two good files with --keep-going.
    const RunResult alone = RunProgram(Batch({file}), scratch_.path());
    const int alone_status =
        std::string(c.file) == "notes.txt" || std::string(c.file) == "UPPER.XML"
            ? 2  // no .xml or .csv file at all
            : 1;
    EXPECT_EQ(alone.status, alone_status) << alone.err;
    EXPECT_NE(alone.err.find("z4400conv: " + file + ": " + c.reason + "\n"), std::string::npos)
        << alone.err;
    const std::string good = (in_ / "good.xml").string();
    std::filesystem::remove(out_ / "good.xlsx");
    const RunResult between =
        RunProgram(Batch({"--keep-going", "--overwrite", good, file, good}), scratch_.path());
    EXPECT_EQ(between.status, 1) << between.err;
    EXPECT_EQ(Lines(between.out).size(), 2u) << between.err;
    EXPECT_NE(between.err.find("z4400conv: " + file + ": " + c.reason + "\n"), std::string::npos)
        << between.err;
    EXPECT_EQ(Summary(between.err), "z4400conv: 2 converted, 1 failed, 0 skipped");
  }
  // A folder named like a source is a folder to walk (empty here).
  const RunResult folder = RunProgram(Batch({(in_ / "folder.xml").string()}), scratch_.path());
  EXPECT_EQ(folder.status, 2) << folder.err;
  EXPECT_NE(folder.err.find("no .xml or .csv file found"), std::string::npos) << folder.err;
}

TEST_F(BatchCommandTest, OutputLinesQuietAndVerbose) {
  WriteInstrumentFile(in_ / "one.xml", 1);
  WriteInstrumentFile(in_ / "two.csv", 2);
  const std::string one = (in_ / "one.xml").string();
  const std::string two = (in_ / "two.csv").string();
  struct Case {
    const char* name;
    std::vector<std::string> options;
    std::vector<std::string> err_lines;  ///< without the summary
  };
  const std::vector<Case> cases = {
      {"normal", {}, {"[1/2] " + one + ": converted", "[2/2] " + two + ": converted"}},
      {"quiet", {"--quiet"}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> options = c.options;
    options.insert(options.end(), {"--overwrite", one, two});
    const RunResult run = RunProgram(Batch(options), scratch_.path());
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, (out_ / "one.xlsx").string() + "\n" + (out_ / "two.xlsx").string() + "\n");
    std::vector<std::string> lines = Lines(run.err);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(Summary(run.err), "z4400conv: 2 converted, 0 failed, 0 skipped");
    lines.pop_back();
    EXPECT_EQ(lines, c.err_lines);
  }
  // Verbose: every stage of every file, in order.
  const RunResult verbose =
      RunProgram(Batch({"--verbose", "--overwrite", one, two}), scratch_.path());
  EXPECT_EQ(verbose.status, 0) << verbose.err;
  const size_t first = verbose.err.find("Analyzing the source file\n");
  const size_t saved = verbose.err.find("Saving All\n");
  const size_t done = verbose.err.find("[1/2] " + one + ": converted\n");
  const size_t second = verbose.err.find("Analyzing the source file\n", done);
  EXPECT_TRUE(first < saved && saved < done && done < second && second != std::string::npos)
      << verbose.err;
}

TEST_F(BatchCommandTest, ExistingWorkbooksAndOutputNames) {
  WriteInstrumentFile(in_ / "meas.xml", 1);
  const std::string source = (in_ / "meas.xml").string();
  const std::filesystem::path existing = out_ / "meas.xlsx";
  std::ofstream(existing) << "an older workbook";

  const RunResult refused = RunProgram(Batch({source}), scratch_.path());
  EXPECT_EQ(refused.status, 3);
  EXPECT_NE(refused.err.find("z4400conv: " + source + ": " + existing.string() +
                             " already exists; not overwritten (use --overwrite to replace it)"),
            std::string::npos)
      << refused.err;
  EXPECT_EQ(refused.out, "");
  EXPECT_EQ(ReadText(existing), "an older workbook");

  const RunResult replaced = RunProgram(Batch({"--overwrite", source}), scratch_.path());
  EXPECT_EQ(replaced.status, 0) << replaced.err;
  EXPECT_TRUE(IsWorkbook(existing));
  EXPECT_TRUE(testing::Temporaries(out_).empty()) << "the replaced workbook's second name is gone";

  // A dot in a folder name: the workbook would be named after the path up to
  // that dot, which cannot be saved.
  WriteInstrumentFile(scratch_ / "proj-v1" / "meas.xml", 2);
  std::filesystem::rename(scratch_ / "proj-v1", scratch_ / "proj-v1.2");
  const std::string dotted = (scratch_ / "proj-v1.2" / "meas.xml").string();
  const RunResult cut = RunProgram(Batch({dotted}), scratch_.path());
  EXPECT_EQ(cut.status, 3) << cut.err;
  EXPECT_NE(cut.err.find("z4400conv: " + dotted +
                         ": Can't be saved. The workbook is named after "
                         "the path up to its first dot, which stands in the folder name "
                         "\"proj-v1.2\""),
            std::string::npos)
      << cut.err;
}

TEST_F(BatchCommandTest, SettingsFolderLogAndRelativePaths) {
  // Logging on, the output directory taken from Data.ini, a relative path
  // with "." and "..", two jobs: the log holds the files' lines in list order.
  WriteSettings(scratch_.path(), out_, true);
  testing::WriteLargestFile(in_ / "big.xml", 1);
  WriteInstrumentFile(in_ / "small.xml", 2);
  const RunResult run = RunProgram({"--batch", "--jobs", "2", "--settings-dir",
                                    scratch_.path().string(), "./../in/big.xml", "../in/small.xml"},
                                   in_, scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(IsWorkbook(out_ / "big.xlsx"));
  EXPECT_TRUE(IsWorkbook(out_ / "small.xlsx"));
  const std::string log = ReadText(scratch_ / "Log.txt");
  const size_t big = log.find(" Analyzing the source file\r\n");
  const size_t big_saved = log.find(" Saving All\r\n");
  const size_t small = log.find(" Analyzing the source file\r\n", big + 1);
  const size_t small_saved = log.find(" Saving All\r\n", big_saved + 1);
  EXPECT_TRUE(big < big_saved && big_saved < small && small < small_saved &&
              small_saved != std::string::npos)
      << log;
  EXPECT_NE(log.find(" Finish\r\n"), std::string::npos);
  EXPECT_EQ(log.substr(log.size() - 72), std::string(70, '-') + "\r\n");
}

TEST_F(BatchCommandTest, WrongUsageAndOldSpreadsheet) {
  WriteInstrumentFile(in_ / "meas.xml", 1);
  const std::string source = (in_ / "meas.xml").string();
  struct Case {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    const char* message;
  };
  const std::vector<Case> cases = {
      {"no file", {"--batch", "--output-dir", out_.string()}, 2, "FILE"},
      {"missing settings folder",
       {"--batch", "--settings-dir", (scratch_ / "nowhere").string(), source},
       2,
       "Can not find Directory."},
      {"missing output folder",
       {"--batch", "--settings-dir", scratch_.path().string(), "--output-dir",
        (scratch_ / "nowhere").string(), source},
       2,
       "nowhere"},
      {"no jobs", Batch({"--jobs", "0", source}), 2, "--jobs"},
      {"quiet and verbose", Batch({"--quiet", "--verbose", source}), 2, "excludes"},
      {"only other kinds", Batch({(scratch_ / "notes.txt").string()}), 2,
       "no .xml or .csv file found"},
      {"unknown option", {"--batch", "--frobnicate", source}, 2, "frobnicate"},
      {"spreadsheet version 8", Batch({"--excel-version", "8", source}), 1,
       ": Run-time failure: type mismatch: \"Your Excel version is \" + 8\n"},
  };
  for (const Case& c : cases) {
    const RunResult run = RunProgram(c.arguments, scratch_.path());
    EXPECT_EQ(run.status, c.status) << c.name << "\n" << run.err;
    EXPECT_NE((run.err + run.out).find(c.message), std::string::npos) << c.name << "\n" << run.err;
  }
  EXPECT_FALSE(std::filesystem::exists(out_ / "meas.xlsx"))
      << "version 8 ends before any workbook is saved";
}

TEST_F(BatchCommandTest, DumpOfSeveralFilesIsJsonLines) {
  WriteInstrumentFile(in_ / "one.xml", 1);
  WriteInstrumentFile(in_ / "two.csv", 2);
  WriteInstrumentFile(in_ / "bad.xml", 3, 11, "Q9999");
  const std::string one = (in_ / "one.xml").string();
  const std::string two = (in_ / "two.csv").string();
  const std::string bad = (in_ / "bad.xml").string();
  const RunResult run = RunProgram({"--dump", one, bad, two}, scratch_.path());
  EXPECT_EQ(run.status, 1);
  const std::vector<std::string> lines = Lines(run.out);
  ASSERT_EQ(lines.size(), 2u) << run.out;
  EXPECT_EQ(lines[0].rfind("{\"File\":\"" + one + "\",\"GeneralInfo\":{", 0), 0u) << lines[0];
  EXPECT_EQ(lines[1].rfind("{\"File\":\"" + two + "\",\"GeneralInfo\":{", 0), 0u) << lines[1];
  EXPECT_EQ(run.err, "z4400conv: " + bad + ": Not MQD data.\n");

  const RunResult single = RunProgram({"--dump", one}, scratch_.path());
  EXPECT_EQ(single.status, 0) << single.err;
  EXPECT_EQ(single.out.rfind("{\n  \"GeneralInfo\": {", 0), 0u) << "one file: indented";
}

TEST_F(BatchCommandTest, HelpAndVersion) {
  const RunResult help = RunProgram({"--help"}, scratch_.path());
  EXPECT_EQ(help.status, 0);
  for (const char* text :
       {"--batch", "--output-dir", "--settings-dir", "--overwrite", "--excel-version", "--version",
        "--dump", "--keep-going", "--jobs", "--quiet", "--verbose", "exit status", "130"}) {
    EXPECT_NE(help.out.find(text), std::string::npos) << text;
  }
  const RunResult version = RunProgram({"--version"}, scratch_.path());
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.rfind("z4400conv ", 0), 0u) << version.out;
}

}  // namespace
}  // namespace z4400
