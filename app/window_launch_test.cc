// The split between z4400conv and its window program, run as a user runs
// them: the command-line paths load no GUI toolkit, a missing display is
// reported at once with a pointer at --batch, and `z4400conv FILE...` still
// starts the window program with the files.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "app/commands.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

namespace fs = std::filesystem;

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string ReadText(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// The environment of a run: `env -u NAME` drops a variable, `NAME=VALUE`
/// sets one.
using Environment = std::vector<std::string>;

struct RunResult {
  int status = -1;
  std::string err;
};

/// Runs z4400conv with `environment` and `arguments`; stderr is captured.
RunResult RunConv(const Environment& environment, const std::vector<std::string>& arguments,
                  const fs::path& scratch) {
  std::string command = "env";
  for (const std::string& setting : environment) command += " " + setting;
  command += " " + Quoted(std::getenv("Z4400_CONV"));
  for (const std::string& argument : arguments) command += " " + Quoted(argument);
  const fs::path err = scratch / ".err";
  command += " >/dev/null 2>" + Quoted(err.string()) + " </dev/null";
  RunResult run;
  const int raw = std::system(command.c_str());
  run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  run.err = ReadText(err);
  return run;
}

const Environment kNoDisplay = {"-u", "DISPLAY", "-u", "WAYLAND_DISPLAY", "-u", "QT_QPA_PLATFORM"};

fs::path WindowProgram() {
  return fs::path(std::getenv("Z4400_CONV")).parent_path() / kWindowProgram;
}

class WindowLaunchTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
  }
  testing::ScratchDir scratch_;
};

TEST_F(WindowLaunchTest, CommandLinePathsLoadNoGuiToolkit) {
  const fs::path example = testing::SourceDir() / "examples" / "band_scan_markers.xml";
  const fs::path out = scratch_ / "out";
  fs::create_directories(out);
  const std::vector<std::vector<std::string>> paths = {
      {"--help"},
      {"--version"},
      {"--dump", example.string()},
      {"--batch", "--settings-dir", scratch_.path().string(), "--output-dir", out.string(),
       example.string()},
  };
  for (const auto& arguments : paths) {
    // The dynamic loader names every library it starts.
    const RunResult run = RunConv({"LD_DEBUG=libs"}, arguments, scratch_.path());
    EXPECT_EQ(run.status, 0) << arguments[0];
    EXPECT_NE(run.err.find("calling init"), std::string::npos) << arguments[0];
    EXPECT_EQ(run.err.find("libQt"), std::string::npos) << arguments[0];
  }
}

TEST_F(WindowLaunchTest, WithoutDisplayPointsAtBatchAndExitsTwo) {
  struct Case {
    const char* what;
    Environment environment;
    bool needs_window_program;  // the window program itself finds no display
  };
  Environment unreachable = kNoDisplay;
  unreachable.emplace_back("DISPLAY=:4399");
  Environment unknown_platform = kNoDisplay;
  unknown_platform.emplace_back("QT_QPA_PLATFORM=no-such-platform");
  const std::vector<Case> cases = {
      {"no display variable", kNoDisplay, false},
      {"display that does not answer", unreachable, true},
      {"platform that does not exist", unknown_platform, true},
  };
  const fs::path example = testing::SourceDir() / "examples" / "band_scan_markers.xml";
  for (const Case& c : cases) {
    if (c.needs_window_program && !fs::exists(WindowProgram())) continue;
    const auto start = std::chrono::steady_clock::now();
    const RunResult run = RunConv(c.environment, {example.string()}, scratch_.path());
    const auto seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start);
    EXPECT_EQ(run.status, 2) << c.what << ": " << run.err;
    EXPECT_NE(run.err.find("z4400conv: no display found"), std::string::npos) << c.what << run.err;
    EXPECT_NE(run.err.find("--batch converts without a window"), std::string::npos) << c.what;
    EXPECT_EQ(run.err.find("Reinstalling"), std::string::npos) << c.what << run.err;
    EXPECT_LT(seconds.count(), 30) << c.what;  // never waits for a display
  }
}

TEST_F(WindowLaunchTest, FilesGivenOpenTheWindowProgram) {
  if (!fs::exists(WindowProgram())) GTEST_SKIP() << "built without the window";
  const fs::path example = testing::SourceDir() / "examples" / "band_scan_markers.xml";
  const std::vector<std::string> arguments = {"env",
                                              "QT_QPA_PLATFORM=offscreen",
                                              std::getenv("Z4400_CONV"),
                                              "--settings-dir",
                                              scratch_.path().string(),
                                              "--excel-version",
                                              "14",
                                              example.string()};
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments) {
      argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    ::execvp(argv[0], argv.data());
    ::_exit(127);
  }
  // z4400conv replaces itself by the window program, which stays open (at
  // start-up it asks where to save the file).
  const fs::path proc = fs::path("/proc") / std::to_string(child);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  std::error_code error;
  // The new program's name shows before its arguments do, so wait for both.
  std::string command_line;
  while (std::chrono::steady_clock::now() < deadline) {
    command_line = ReadText(proc / "cmdline");
    if (fs::read_symlink(proc / "exe", error).filename() == kWindowProgram &&
        command_line.find(kWindowProgram) != std::string::npos) {
      break;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(fs::read_symlink(proc / "exe", error).filename(), kWindowProgram);
  std::replace(command_line.begin(), command_line.end(), '\0', ' ');
  EXPECT_NE(command_line.find("--settings-dir " + scratch_.path().string() +
                              " --excel-version 14 -- " + example.string()),
            std::string::npos)
      << command_line;
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  EXPECT_EQ(::waitpid(child, nullptr, WNOHANG), 0) << "the window closed by itself";
  ::kill(child, SIGTERM);
  ::waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace z4400
