// Helpers of the end-to-end tests of z4400conv --batch: running the program
// as a user does (to the end, or in the background), made-up instrument
// files, and reading what the program left.
#ifndef Z4400_APP_BATCH_TEST_UTIL_H_
#define Z4400_APP_BATCH_TEST_UTIL_H_

#include <spawn.h>
#include <sys/wait.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "app/shell_commands_test_util.h"
#include "testing/instrument_generator.h"

namespace z4400::testing {

struct RunResult {
  int status = -1;
  std::string out;
  std::string err;
};

/// The shell command that runs z4400conv with `arguments` in `cwd`, its
/// output going to `out` and `err`. A run that hangs is ended after 60 s
/// (killed 5 s later if it does not end then).
inline std::string ProgramCommand(const std::vector<std::string>& arguments,
                                  const std::filesystem::path& cwd,
                                  const std::filesystem::path& out,
                                  const std::filesystem::path& err) {
  const char* program = std::getenv("Z4400_CONV");
  std::string command = "cd " + Quoted(cwd.string()) + " && exec timeout -k 5 60 " +
                        Quoted(program != nullptr ? program : "");
  for (const std::string& argument : arguments) command += " " + Quoted(argument);
  return command + " >" + Quoted(out.string()) + " 2>" + Quoted(err.string()) + " </dev/null";
}

/// Runs z4400conv to its end; its output is captured in files of `capture`
/// (default: `cwd`).
inline RunResult RunProgram(const std::vector<std::string>& arguments,
                            const std::filesystem::path& cwd, std::filesystem::path capture = {}) {
  if (capture.empty()) capture = cwd;
  const std::filesystem::path out = capture / ".out";
  const std::filesystem::path err = capture / ".err";
  RunResult result;
  const int raw = std::system(ProgramCommand(arguments, cwd, out, err).c_str());
  result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
  result.out = ReadText(out);
  result.err = ReadText(err);
  std::filesystem::remove(out);
  std::filesystem::remove(err);
  return result;
}

/// z4400conv started in the background (its output in `capture`/.out.N and
/// .err.N); `Wait` collects it.
class BackgroundRun {
 public:
  BackgroundRun(const std::vector<std::string>& arguments, const std::filesystem::path& cwd,
                const std::filesystem::path& capture, int number)
      : out_(capture / (".out." + std::to_string(number))),
        err_(capture / (".err." + std::to_string(number))) {
    const std::string command = ProgramCommand(arguments, cwd, out_, err_);
    const char* argv[] = {"/bin/sh", "-c", command.c_str(), nullptr};
    // The shell execs timeout, which runs the program as its child.
    if (posix_spawn(&pid_, "/bin/sh", nullptr, nullptr, const_cast<char**>(argv), environ) != 0) {
      pid_ = -1;
    }
  }
  pid_t pid() const { return pid_; }
  RunResult Wait() {
    RunResult result;
    int raw = 0;
    if (pid_ > 0 && waitpid(pid_, &raw, 0) == pid_) {
      result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    }
    result.out = ReadText(out_);
    result.err = ReadText(err_);
    return result;
  }

 private:
  std::filesystem::path out_;
  std::filesystem::path err_;
  pid_t pid_ = -1;
};

/// True when `path` is a zip package (an .xlsx workbook).
inline bool IsWorkbook(const std::filesystem::path& path) {
  return ReadText(path).rfind("PK", 0) == 0;
}

/// Writes a made-up instrument file (XML, or CSV for a ".csv" name).
inline void WriteInstrumentFile(const std::filesystem::path& path, uint64_t seed, int points = 11,
                                const std::string& model = "Z4420") {
  GeneratorOptions options;
  options.seed = seed;
  options.points = points;
  options.model = model;
  const GeneratedFile file = GenerateInstrumentFile(options);
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary)
      << (path.extension() == ".csv" ? InstrumentCsv(file) : InstrumentXml(file));
}

/// Writes the largest instrument file the converter takes: 3 screens of 5
/// traces of 1001 points, 10 markers each.
inline void WriteLargestFile(const std::filesystem::path& path, uint64_t seed) {
  GeneratorOptions options;
  options.seed = seed;
  options.points = 1001;
  options.traces = 5;
  options.markers = 10;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kSpectrum, ScreenKind::kSpectrum};
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << InstrumentXml(GenerateInstrumentFile(options));
}

/// The lines of `text`.
inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

/// The hidden temporary files left in `folder` and below.
inline std::vector<std::string> Temporaries(const std::filesystem::path& folder) {
  std::vector<std::string> found;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.size() > 4 && name.substr(name.size() - 4) == ".tmp") found.push_back(name);
  }
  return found;
}

}  // namespace z4400::testing

#endif  // Z4400_APP_BATCH_TEST_UTIL_H_
