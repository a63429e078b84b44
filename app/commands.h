// The commands of the z4400conv program, one per mode of its command line.
#ifndef Z4400_APP_COMMANDS_H_
#define Z4400_APP_COMMANDS_H_

#include <optional>
#include <string>
#include <vector>

namespace z4400 {

/// Prints the measurement records of one instrument file as JSON on stdout.
/// Returns the process exit status: 0 read, 1 rejected or failed.
int RunDump(const std::string& path);

/// Options of the headless batch conversion.
struct BatchOptions {
  std::vector<std::string> files;
  std::optional<std::string> output_dir;
  std::optional<std::string> settings_dir;
  bool overwrite = false;
  std::optional<int> excel_version;
};

/// Converts the files without a window. Returns 0 when every file was
/// converted, 1 on the failure path, 3 when the run stopped quietly.
int RunBatch(const BatchOptions& options);

/// The desktop window's program, installed beside z4400conv.
inline constexpr char kWindowProgram[] = "z4400conv-window";

/// Replaces this process by the window program (files given are converted
/// at once). Returns 2 after saying why when there is no display or the
/// window program cannot be started.
int LaunchWindow(const std::vector<std::string>& files,
                 const std::optional<std::string>& settings_dir,
                 const std::optional<int>& excel_version);

}  // namespace z4400

#endif  // Z4400_APP_COMMANDS_H_
