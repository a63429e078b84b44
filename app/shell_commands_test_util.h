// Test side: running the converter and the tools of a spreadsheet check
// (soffice, pdftotext) through the shell, as a user would on a terminal.
#ifndef Z4400_APP_SHELL_COMMANDS_TEST_UTIL_H_
#define Z4400_APP_SHELL_COMMANDS_TEST_UTIL_H_

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace z4400::testing {

/// `text` quoted for the shell.
inline std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

inline std::string ReadText(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// Runs `command` through the shell; its exit status, and what it wrote to
/// stderr in `*err` when given.
inline int RunShell(const std::string& command, std::string* err = nullptr) {
  char name[] = "/tmp/z4400-e2e-XXXXXX";
  const int fd = ::mkstemp(name);
  if (fd >= 0) ::close(fd);
  const int raw = std::system((command + " 2>" + Quoted(name) + " </dev/null").c_str());
  if (err != nullptr) *err = ReadText(name);
  std::remove(name);
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

inline bool HaveProgram(const std::string& name) {
  return RunShell("command -v " + Quoted(name) + " >/dev/null") == 0;
}

}  // namespace z4400::testing

#endif  // Z4400_APP_SHELL_COMMANDS_TEST_UTIL_H_
