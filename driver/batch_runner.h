// A batch: converts an ordered list of source files without a window, each
// file as the conversion driver converts it, with several workers at once.
// Whatever the number of workers, the results come in list order and the
// workbooks, the log and the results are those of one worker.
#ifndef Z4400_DRIVER_BATCH_RUNNER_H_
#define Z4400_DRIVER_BATCH_RUNNER_H_

#include <condition_variable>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace z4400 {

/// One source file of a batch.
struct BatchEntry {
  std::string Source;        ///< full path, as the driver's list takes it
  std::string Name;          ///< how messages name it (as the user gave it)
  std::string OutputFolder;  ///< folder of its workbook; empty: as "Data.ini" says
  std::string Refusal;       ///< non-empty: refused without converting, this is why
};

/// What became of one file.
enum class FileStatus {
  kConverted,  ///< its workbook was written
  kFailed,     ///< refused or failed (a partial workbook may stay)
  kStopped,    ///< stopped without an error: its workbook exists, or no name
  kSkipped,    ///< not converted: the batch stopped before it
};

/// The result of one file, handed over in list order.
struct FileReport {
  size_t Index = 0;  ///< position in the list
  std::string Source;
  std::string Name;
  FileStatus Status = FileStatus::kSkipped;
  std::string Reason;    ///< why it failed, stopped or was skipped; empty when converted
  std::string Workbook;  ///< workbook written (converted, or kept partial); else empty
  std::vector<std::string> StatusTexts;  ///< the driver's status texts of the file
};

/// How a batch converts.
struct BatchConfig {
  std::filesystem::path SettingsFolder;  ///< "Data.ini" and "Log.txt"
  std::string Version;                   ///< spreadsheet version text ("16.0")
  bool Overwrite = false;                ///< replace existing workbooks
  bool KeepGoing = false;                ///< go on after a file that failed or stopped
  int Jobs = 1;                          ///< workers converting at once
};

/// Counts of a batch.
struct BatchTotals {
  int Converted = 0;
  int Failed = 0;
  int Stopped = 0;
  int Skipped = 0;
  bool Interrupted = false;
  std::string InterruptedName;  ///< the first file not finished when interrupted
};

/// Converts lists of files. Each worker owns a converter of its own, fed
/// with runs of at most 100 files; the results of files converted ahead of
/// their turn are held back and given out in list order. Without
/// `KeepGoing` the first file that fails or stops ends the batch: files
/// after it are reported skipped and any workbook a worker made for them
/// ahead of their turn is removed again (a replaced one comes back).
class BatchRunner {
 public:
  using FileCallback = std::function<void(const FileReport&)>;

  explicit BatchRunner(BatchConfig config);
  ~BatchRunner();
  BatchRunner(const BatchRunner&) = delete;
  BatchRunner& operator=(const BatchRunner&) = delete;

  /// Converts `entries`; `on_file` is called on this thread for every file in
  /// list order (also for the skipped ones, at the end). The lines of
  /// "Log.txt" are written in list order when logging is on.
  BatchTotals Run(const std::vector<BatchEntry>& entries, const FileCallback& on_file);

  /// Stops a running batch from any thread: the saves in progress are
  /// abandoned (their temporary files removed), workbooks of unfinished
  /// files removed (a replaced one comes back), finished ones kept. `Run`
  /// then returns with `Interrupted` set.
  void Interrupt();

 private:
  struct Slot;
  class Worker;

  /// Hands a file's result over from a worker; false when that worker is to
  /// stop after it.
  bool Post(size_t index, Slot slot);
  /// True when a worker is not to start the file at `index`.
  bool ShouldStop(size_t index);

  BatchConfig config_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<Slot> slots_;
  size_t stop_index_ = 0;  ///< the file that ends the batch; the list size when none
  bool interrupted_ = false;
  bool finished_ = false;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_BATCH_RUNNER_H_
