// The commands of the z4400conv program, one per mode of its command line.
#ifndef Z4400_APP_COMMANDS_H_
#define Z4400_APP_COMMANDS_H_

#include <optional>
#include <string>
#include <vector>

#include "app/batch_report.h"

namespace z4400 {

/// Prints the measurement records of instrument files as JSON on stdout: one
/// indented document for one file; for several, one document per line, each
/// with its "File". Returns the process exit status: 0 every file read, 1
/// when one was rejected or failed (its reason on stderr, naming it).
int RunDump(const std::vector<std::string>& paths);

/// Options of the headless batch conversion.
struct BatchOptions {
  std::vector<std::string> files;
  std::optional<std::string> output_dir;
  std::optional<std::string> settings_dir;
  bool overwrite = false;
  std::optional<int> excel_version;
  bool keep_going = false;
  std::optional<int> jobs;  ///< default: the number of cores
  Verbosity verbosity = Verbosity::kNormal;
  /// `--summary`: the summary workbook of the run.
  std::optional<std::string> summary;
  /// `--settle` (watch mode): how long a file must stay unchanged, in
  /// milliseconds, before it is converted.
  std::optional<int> settle_ms;
};

/// Converts the files and folders without a window. Returns 0 when every
/// file was converted, 1 when one failed, 2 for wrong usage, 3 when the
/// batch stopped without an error, 130 when it was interrupted.
int RunBatch(const BatchOptions& options);

/// Watches `folder` and its sub-folders and converts every .xml and .csv
/// file there, the files already there first, then each file that appears
/// or is replaced, once it is complete; a file is reported by name when it
/// fails and watching goes on. Ends on Ctrl-C or SIGTERM with 0; returns 2
/// for wrong usage or a folder that cannot be watched.
int RunWatch(const BatchOptions& options, const std::string& folder);

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
