// z4400conv without --batch: starts the desktop window, a program of its own
// beside z4400conv, so that the command-line paths never load the GUI
// toolkit. Without a display it says so at once and points at --batch.
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "app/commands.h"
#include "driver/settings_file.h"

namespace z4400 {
namespace {

constexpr int kExitUsage = 2;

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && value[0] != '\0';
}

void SayNoWindow(const std::string& reason) {
  std::cerr << "z4400conv: " << reason << "\n"
            << "z4400conv: --batch converts without a window: z4400conv --batch FILE... "
               "(see --help)\n";
}

}  // namespace

int LaunchWindow(const std::vector<std::string>& files,
                 const std::optional<std::string>& settings_dir,
                 const std::optional<int>& excel_version) {
  // A platform named in QT_QPA_PLATFORM (offscreen, vnc, ...) may need no
  // display; the window program reports it if that platform cannot start.
  if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM")) {
    SayNoWindow(
        "no display found (DISPLAY and WAYLAND_DISPLAY are not set), so the window cannot open");
    return kExitUsage;
  }
  const std::filesystem::path program = ProgramFolder() / kWindowProgram;
  std::error_code error;
  if (!std::filesystem::is_regular_file(program, error)) {
    SayNoWindow("the window program " + program.string() + " is not installed");
    return kExitUsage;
  }

  // The settings folder is named explicitly: by default it is the folder of
  // z4400conv, wherever the window program is.
  std::vector<std::string> arguments = {program.string(), "--settings-dir",
                                        settings_dir ? *settings_dir : ProgramFolder().string()};
  if (excel_version) {
    arguments.emplace_back("--excel-version");
    arguments.push_back(std::to_string(*excel_version));
  }
  arguments.emplace_back("--");
  arguments.insert(arguments.end(), files.begin(), files.end());
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  ::execv(program.c_str(), pointers.data());
  SayNoWindow("cannot start the window program " + program.string() + ": " + std::strerror(errno));
  return kExitUsage;
}

}  // namespace z4400
