#include "workbook/xls/xls_convert.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "workbook/package/atomic_file.h"
#include "workbook/package/temporary_folder.h"

extern char** environ;

namespace z4400 {
namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(50);

void SetError(std::string* error, std::string message) {
  if (error != nullptr) *error = std::move(message);
}

/// The full path of `program`, or nothing when it is not an executable file.
std::optional<std::filesystem::path> FindProgram(const std::string& program) {
  if (program.empty()) return std::nullopt;
  const auto runnable = [](const std::filesystem::path& candidate) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(candidate, ignored) &&
           ::access(candidate.c_str(), X_OK) == 0;
  };
  if (program.find('/') != std::string::npos) {
    if (runnable(program)) return std::filesystem::path(program);
    return std::nullopt;
  }
  const char* path = std::getenv("PATH");
  std::string_view folders = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
  while (!folders.empty()) {
    const size_t colon = folders.find(':');
    const std::string_view folder = folders.substr(0, colon);
    if (!folder.empty()) {
      const auto candidate = std::filesystem::path(folder) / program;
      if (runnable(candidate)) return candidate;
    }
    if (colon == std::string_view::npos) break;
    folders.remove_prefix(colon + 1);
  }
  return std::nullopt;
}

/// Owns the spawn attributes and file actions of one child process.
class SpawnSetup {
 public:
  SpawnSetup() {
    posix_spawnattr_init(&attributes_);
    posix_spawn_file_actions_init(&actions_);
  }
  ~SpawnSetup() {
    posix_spawn_file_actions_destroy(&actions_);
    posix_spawnattr_destroy(&attributes_);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;

  posix_spawnattr_t* attributes() { return &attributes_; }
  posix_spawn_file_actions_t* actions() { return &actions_; }

 private:
  posix_spawnattr_t attributes_;
  posix_spawn_file_actions_t actions_;
};

enum class RunResult { kSucceeded, kFailed, kTimedOut, kNotStarted };

/// Runs `arguments` (the program first) in a process group of its own, with
/// no input and its output in `log`. When `timeout` passes, the whole group
/// (LibreOffice starts helpers) is killed.
RunResult Run(const std::vector<std::string>& arguments, const std::filesystem::path& log,
              std::chrono::milliseconds timeout) {
  SpawnSetup setup;
  posix_spawnattr_setflags(setup.attributes(), POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(setup.attributes(), 0);
  posix_spawn_file_actions_addopen(setup.actions(), 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(setup.actions(), 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                   0600);
  posix_spawn_file_actions_adddup2(setup.actions(), 1, 2);
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  pid_t child = 0;
  if (posix_spawn(&child, argv[0], setup.actions(), setup.attributes(), argv.data(), environ) !=
      0) {
    return RunResult::kNotStarted;
  }
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  int status = 0;
  while (true) {
    const pid_t done = ::waitpid(child, &status, WNOHANG);
    if (done == child) break;
    if (done < 0 && errno != EINTR) return RunResult::kFailed;
    if (std::chrono::steady_clock::now() >= deadline) {
      ::kill(-child, SIGKILL);
      while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
      }
      return RunResult::kTimedOut;
    }
    std::this_thread::sleep_for(kPollInterval);
  }
  // Helpers left behind by the converter go with it.
  ::kill(-child, SIGKILL);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? RunResult::kSucceeded : RunResult::kFailed;
}

/// The last non-empty line of the converter's output, for the message.
std::string LastLine(const std::filesystem::path& log) {
  std::ifstream in(log);
  std::string line;
  std::string last;
  while (std::getline(in, line)) {
    if (line.find_first_not_of(" \t\r") != std::string::npos) last = line;
  }
  return last;
}

}  // namespace

bool ConvertXlsxToXls(const std::filesystem::path& xlsx, const std::filesystem::path& path,
                      std::string* error, const XlsConversion& conversion) {
  const auto program = FindProgram(conversion.program);
  if (!program) {
    SetError(error, kXlsNeedsLibreOffice);
    return false;
  }
  TemporaryFolder folder("z4400-xls");
  if (!folder.ok()) {
    SetError(error, std::string("Cannot create a temporary folder: ") + std::strerror(errno));
    return false;
  }
  const auto output = folder.path() / "out";
  const auto log = folder.path() / "soffice.log";
  const std::vector<std::string> arguments = {
      program->string(),
      "-env:UserInstallation=file://" + (folder.path() / "profile").string(),
      "--headless",
      "--invisible",
      "--nologo",
      "--norestore",
      "--nodefault",
      "--convert-to",
      "xls",
      "--outdir",
      output.string(),
      std::filesystem::absolute(xlsx).string()};
  const std::string failed =
      "LibreOffice could not convert " + path.filename().string() + " to .xls";
  switch (Run(arguments, log, conversion.timeout)) {
    case RunResult::kSucceeded:
      break;
    case RunResult::kNotStarted:
      SetError(error, failed + ": " + program->string() + " did not start");
      return false;
    case RunResult::kTimedOut:
      SetError(error,
               failed + " within " + std::to_string(conversion.timeout.count() / 1000) + " s");
      return false;
    case RunResult::kFailed: {
      const std::string detail = LastLine(log);
      SetError(error, detail.empty() ? failed : failed + ": " + detail);
      return false;
    }
  }
  const auto converted = output / (xlsx.stem().string() + ".xls");
  std::error_code size_error;
  if (std::filesystem::file_size(converted, size_error) == 0 || size_error) {
    const std::string detail = LastLine(log);
    SetError(error, detail.empty() ? failed : failed + ": " + detail);
    return false;
  }
  return WriteAtomically(
      path,
      [&](const std::filesystem::path& temporary) {
        std::error_code copy_error;
        std::filesystem::copy_file(converted, temporary,
                                   std::filesystem::copy_options::overwrite_existing, copy_error);
        if (copy_error) {
          SetError(error, "Cannot write " + path.string() + ": " + copy_error.message());
        }
        return !copy_error;
      },
      error);
}

bool XlsConverterInstalled(const XlsConversion& conversion) {
  return FindProgram(conversion.program).has_value();
}

}  // namespace z4400
