// What `z4400conv --batch` prints: the path of each workbook written on
// standard output, and on the error stream the files' results, the errors
// naming their file, and a closing summary.
#ifndef Z4400_APP_BATCH_REPORT_H_
#define Z4400_APP_BATCH_REPORT_H_

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

#include "driver/batch_runner.h"

namespace z4400 {

/// How much the error stream carries.
enum class Verbosity {
  kQuiet,    ///< errors and the summary
  kNormal,   ///< also one line per file (a live line on a terminal)
  kVerbose,  ///< also the driver's status texts of every file
};

/// Prints a batch's progress and results.
class BatchReport {
 public:
  /// `live`: the error stream is a terminal, redrawn on one line.
  BatchReport(std::ostream& out, std::ostream& err, bool live, Verbosity verbosity,
              const std::vector<BatchEntry>& entries);
  ~BatchReport();
  BatchReport(const BatchReport&) = delete;
  BatchReport& operator=(const BatchReport&) = delete;

  /// "z4400conv: TEXT" on the error stream.
  void Note(const std::string& text);
  /// The result of one file (called in list order).
  void File(const FileReport& report);
  /// The summary line: converted, failed, skipped, seconds.
  void Finish(const BatchTotals& totals);

 private:
  /// Redraws the live line for the next file.
  void DrawLive();
  /// Ends the live line so that the next text starts on a line of its own.
  void ClearLive();

  std::ostream& out_;
  std::ostream& err_;
  bool live_;
  Verbosity verbosity_;
  const std::vector<BatchEntry>& entries_;
  size_t finished_ = 0;
  bool live_drawn_ = false;
  std::chrono::steady_clock::time_point start_;
};

}  // namespace z4400

#endif  // Z4400_APP_BATCH_REPORT_H_
