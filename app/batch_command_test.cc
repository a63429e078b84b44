// End-to-end tests of z4400conv --batch: the program is run as a user runs
// it, and its exit status, messages and files are checked.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "testing/test_files.h"

namespace z4400 {
namespace {

struct RunResult {
  int status = -1;
  std::string out;
  std::string err;
};

std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

/// Runs z4400conv with `arguments` in folder `cwd`; its output is captured
/// in files of `capture` (default: `cwd`).
RunResult RunProgram(const std::vector<std::string>& arguments, const std::filesystem::path& cwd,
                     std::filesystem::path capture = {}) {
  if (capture.empty()) capture = cwd;
  const char* program = std::getenv("Z4400_CONV");
  std::string command = "cd " + Quoted(cwd.string()) + " && " + Quoted(program ? program : "");
  for (const std::string& argument : arguments) command += " " + Quoted(argument);
  const std::filesystem::path out = capture / ".out";
  const std::filesystem::path err = capture / ".err";
  command += " >" + Quoted(out.string()) + " 2>" + Quoted(err.string()) + " </dev/null";
  RunResult result;
  const int raw = std::system(command.c_str());
  result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  result.out = ReadText(out);
  result.err = ReadText(err);
  std::filesystem::remove(out);
  std::filesystem::remove(err);
  return result;
}

/// True when `path` is a zip package (an .xlsx workbook).
bool IsWorkbook(const std::filesystem::path& path) { return ReadText(path).rfind("PK", 0) == 0; }

class BatchCommandTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
  }
  /// Arguments of a batch run with settings and output in the scratch folder.
  std::vector<std::string> Batch(std::vector<std::string> more) const {
    std::vector<std::string> arguments = {"--batch", "--settings-dir", scratch_.path().string(),
                                          "--output-dir", out_.string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  }
  void SetUpOutput() { std::filesystem::create_directories(out_); }

  testing::ScratchDir scratch_;
  std::filesystem::path out_ = scratch_ / "out";
};

TEST_F(BatchCommandTest, ConvertsEveryAcceptedSampleInOneCall) {
  Z4400_REQUIRE_SAMPLES(samples);
  SetUpOutput();
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(samples)) {
    const std::string name = entry.path().filename().string();
    const std::string ext = entry.path().extension().string();
    if ((ext == ".xml" || ext == ".csv") && name != "rejected_model.xml") {
      files.push_back(entry.path().string());
    }
  }
  ASSERT_GE(files.size(), 2u);
  const RunResult run = RunProgram(Batch(files), scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  for (const std::string& file : files) {
    const std::filesystem::path source(file);
    // The workbook is named after the source up to its first dot.
    const std::string stem =
        source.filename().string().substr(0, source.filename().string().find('.'));
    EXPECT_TRUE(IsWorkbook(out_ / (stem + ".xlsx"))) << stem;
  }
  EXPECT_NE(run.err.find("Saving All"), std::string::npos);
  EXPECT_EQ(run.err.substr(run.err.size() - 7), "Finish\n");
}

TEST_F(BatchCommandTest, FailureStopsTheListButKeepsEarlierWorkbooks) {
  Z4400_REQUIRE_SAMPLES(samples);
  SetUpOutput();
  const RunResult run = RunProgram(
      Batch({(samples / "spectrum_dbm_markers.xml").string(),
             (samples / "two_screens_markers.csv").string(),
             (samples / "rejected_model.xml").string(), (samples / "delta_markers.xml").string()}),
      scratch_.path());
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("Error occurred.\nExit from the application\n\nNot MQD data.\n"),
            std::string::npos)
      << run.err;
  EXPECT_TRUE(IsWorkbook(out_ / "spectrum_dbm_markers.xlsx"));
  EXPECT_TRUE(IsWorkbook(out_ / "two_screens_markers.xlsx"));
  EXPECT_FALSE(std::filesystem::exists(out_ / "rejected_model.xlsx"));
  EXPECT_FALSE(std::filesystem::exists(out_ / "delta_markers.xlsx"));
  EXPECT_EQ(run.err.find("Finish"), std::string::npos) << "the failure ends the program";
}

TEST_F(BatchCommandTest, ExistingWorkbooks) {
  Z4400_REQUIRE_SAMPLES(samples);
  SetUpOutput();
  const std::string source = (samples / "delta_markers.xml").string();
  const std::filesystem::path existing = out_ / "delta_markers.xlsx";
  std::ofstream(existing) << "an older workbook";

  const RunResult refused = RunProgram(Batch({source}), scratch_.path());
  EXPECT_EQ(refused.status, 3);
  EXPECT_NE(refused.err.find(existing.string() + " already exists"), std::string::npos)
      << refused.err;
  EXPECT_EQ(ReadText(existing), "an older workbook");

  const RunResult replaced = RunProgram(Batch({"--overwrite", source}), scratch_.path());
  EXPECT_EQ(replaced.status, 0) << replaced.err;
  EXPECT_TRUE(IsWorkbook(existing));
}

TEST_F(BatchCommandTest, SettingsFolderLogAndRelativePaths) {
  Z4400_REQUIRE_SAMPLES(samples);
  // Logging on, the output directory taken from Data.ini, a relative path
  // with "." and "..".
  SetUpOutput();
  std::ofstream(scratch_ / "Data.ini", std::ios::binary)
      << out_.string() << "\r\n1\r\n 1\r\n 0\r\n 0\r\n 1\r\n 1\r\n 16711680\r\n 1262987\r\n"
      << " 6053069\r\n 13150975\r\n 38655\r\n 13093064\r\n 13499135\r\n 0\r\n 1\r\n 1000\r\n 1\r\n";
  const std::string relative = "./../" + samples.filename().string() + "/delta_markers.xml";
  const RunResult run = RunProgram(
      {"--batch", "--settings-dir", scratch_.path().string(), relative}, samples, scratch_.path());
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(IsWorkbook(out_ / "delta_markers.xlsx"));
  const std::string log = ReadText(scratch_ / "Log.txt");
  EXPECT_NE(log.find(" Analyzing the source file\r\n"), std::string::npos) << log;
  EXPECT_NE(log.find(" Finish\r\n"), std::string::npos);
  EXPECT_EQ(log.substr(log.size() - 72), std::string(70, '-') + "\r\n");
}

TEST_F(BatchCommandTest, WrongUsageAndOldSpreadsheet) {
  Z4400_REQUIRE_SAMPLES(samples);
  SetUpOutput();
  const std::string source = (samples / "delta_markers.xml").string();
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
      {"only other kinds", Batch({(scratch_ / "notes.txt").string()}), 2, "notes.txt"},
      {"unknown option", {"--batch", "--frobnicate", source}, 2, "frobnicate"},
      {"spreadsheet version 8", Batch({"--excel-version", "8", source}), 1,
       "Error occurred.\nExit from the application\n\n"},
  };
  for (const Case& c : cases) {
    const RunResult run = RunProgram(c.arguments, scratch_.path());
    EXPECT_EQ(run.status, c.status) << c.name << "\n" << run.err;
    EXPECT_NE((run.err + run.out).find(c.message), std::string::npos) << c.name << "\n" << run.err;
  }
  EXPECT_FALSE(std::filesystem::exists(out_ / "delta_markers.xlsx"))
      << "version 8 ends before any workbook is saved";
}

TEST_F(BatchCommandTest, HelpAndVersion) {
  const RunResult help = RunProgram({"--help"}, scratch_.path());
  EXPECT_EQ(help.status, 0);
  for (const char* option : {"--batch", "--output-dir", "--settings-dir", "--overwrite",
                             "--excel-version", "--version", "--dump", "exit status"}) {
    EXPECT_NE(help.out.find(option), std::string::npos) << option;
  }
  const RunResult version = RunProgram({"--version"}, scratch_.path());
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out.rfind("z4400conv ", 0), 0u) << version.out;
}

}  // namespace
}  // namespace z4400
