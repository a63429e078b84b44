// The status line: every stage announces itself here. A status text goes to
// the main window's status label, to the spreadsheet's status bar and, when
// logging is on, to "Log.txt", and advances the progress display by one step.
#ifndef Z4400_DRIVER_STATUS_LINE_H_
#define Z4400_DRIVER_STATUS_LINE_H_

#include <filesystem>
#include <functional>
#include <string>

#include "driver/file_list.h"
#include "driver/run_state.h"
#include "driver/settings.h"
#include "driver/user_interface.h"

namespace z4400 {

/// Name of the log file in the settings folder.
inline constexpr char kLogFileName[] = "Log.txt";

/// The line the log gets at the end of a run: 70 hyphens.
inline constexpr char kLogRunSeparator[] =
    "----------------------------------------------------------------------";

/// The percentage label for a progress counter: the percentage of the run
/// (counter × 100 / 50 per file; one file's worth when the list is empty)
/// rounded to a whole number, shown without digits when it is 0, then "%".
std::string PercentageText(int counter, int file_count);

/// A log text as one line: CR LF pairs, then lone LF, then lone CR removed.
std::string LogLineText(std::string text);

/// A line of "Log.txt" without its line end: the local date and time
/// ("2026/11/21 08:30:05"), a blank and the text as one line.
std::string LogLine(const std::string& text);

/// Status, progress, error messages and the log of one program. It refers to
/// the settings, run state and file list owned by the driver; they must
/// outlive it.
class StatusLine {
 public:
  StatusLine(UserInterface& ui, const Settings& settings, RunState& run, const FileList& files,
             std::filesystem::path folder);

  /// `SetStatus`: shows text in the status label and the spreadsheet's
  /// status bar, appends it to the log when logging is on, then
  /// `UpdateProgress`.
  void SetStatus(const std::string& text);

  /// `UpdateProgress`: one progress step. Redraws the bar and the percentage
  /// while the counter is within the bar's maximum. Throws RuntimeFailure
  /// when the 16-bit counter would overflow.
  void UpdateProgress();

  /// `ShowError`: a critical message box titled "Error Message", then
  /// `SetStatus` with the same text.
  void ShowError(const std::string& text);

  /// `AppendLog`: appends "date time text" as one line to "Log.txt" (created
  /// when missing), or hands the line to the log sink when one is set. A
  /// missing folder shows "Can not find Directory." and writes nothing; a
  /// log that cannot be written throws RuntimeFailure.
  void AppendLog(const std::string& text);

  /// `WaitSeconds`: waits, letting the window process its events meanwhile.
  void WaitSeconds(double seconds);

  /// Start of a run: counter 0, bar from 0 to file count × 50 (50 for an
  /// empty list), percentage label empty.
  void ResetProgress();

  /// End of a run: bar at 0, percentage label "0%".
  void ClearProgress();

  /// Where status texts go besides the status label: the spreadsheet
  /// application's status bar, once it runs. Empty: nowhere.
  void SetStatusBar(std::function<void(const std::string&)> status_bar) {
    status_bar_ = std::move(status_bar);
  }

  /// Where log lines go instead of "Log.txt": each line without its line
  /// end. Empty: to the file.
  void SetLogSink(std::function<void(const std::string& line)> sink) {
    log_sink_ = std::move(sink);
  }

  /// The folder of "Data.ini" and "Log.txt".
  const std::filesystem::path& folder() const { return folder_; }

  UserInterface& ui() { return ui_; }

 private:
  UserInterface& ui_;
  const Settings& settings_;
  RunState& run_;
  const FileList& files_;
  std::filesystem::path folder_;
  std::function<void(const std::string&)> status_bar_;
  std::function<void(const std::string&)> log_sink_;
  /// Set while the missing-folder error of the log is shown, so that its
  /// own status text is not logged again (which would report it forever).
  bool reporting_missing_log_folder_ = false;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_STATUS_LINE_H_
