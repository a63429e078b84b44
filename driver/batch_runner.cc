#include "driver/batch_runner.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <map>
#include <memory>
#include <system_error>
#include <thread>
#include <utility>

#include "driver/batch_file_ui.h"
#include "driver/batch_stages.h"
#include "driver/console_ui.h"
#include "driver/converter.h"
#include "driver/file_dialogs.h"
#include "driver/file_list.h"
#include "driver/settings_file.h"
#include "driver/status_line.h"
#include "workbook/package/atomic_file.h"

namespace z4400 {
namespace {

std::string CurrentFolder() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::current_path(error);
  return error ? std::string() : folder.string();
}

/// "Can't be saved." and, when the first dot of the source's path stands in
/// a folder name, why.
std::string CannotSaveReason(const std::string& source) {
  std::string reason = kCannotSaveMessage;
  const size_t dot = source.find('.');
  const size_t separator = source.find_last_of("\\/");
  if (dot == std::string::npos || separator == std::string::npos || dot > separator) {
    return reason;
  }
  const size_t start = source.find_last_of("\\/", dot) + 1;
  const size_t end = source.find_first_of("\\/", dot);
  return reason + " The workbook is named after the path up to its first dot, which stands" +
         " in the folder name \"" + source.substr(start, end - start) +
         "\": move or rename the folder";
}

/// The result of a file as the driver ended it.
FileReport ReportOf(const BatchEntry& entry, const FileOutcome& outcome, const FileNotes& notes,
                    const BatchStages& stages) {
  FileReport report;
  report.Source = entry.Source;
  report.Name = entry.Name;
  report.StatusTexts = notes.StatusTexts;
  if (outcome.Result == 0) {
    report.Status = FileStatus::kConverted;
    report.Workbook = outcome.WorkbookPath;
    return report;
  }
  if (outcome.Result == kStoppedQuietly) {
    report.Status = FileStatus::kStopped;
    const bool cannot_save = std::find(notes.Messages.begin(), notes.Messages.end(),
                                       kCannotSaveMessage) != notes.Messages.end();
    if (!notes.RefusedOverwrite.empty()) {
      report.Reason = notes.RefusedOverwrite +
                      " already exists; not overwritten (use --overwrite to replace it)";
    } else if (cannot_save) {
      report.Reason = CannotSaveReason(entry.Source);
    } else {
      report.Reason = "no workbook name can be formed for this file";
    }
    return report;
  }
  if (stages.output_taken()) {
    report.Status = FileStatus::kStopped;
    report.Reason = outcome.WorkbookPath +
                    " appeared while this file was converted; not overwritten (use --overwrite "
                    "to replace it)";
    return report;
  }
  report.Status = FileStatus::kFailed;
  if (!outcome.ErrorText.empty()) {
    report.Reason = OneLine(outcome.ErrorText);
  } else if (!outcome.FailureDetail.empty()) {
    report.Reason = "Run-time failure: " + outcome.FailureDetail;
  } else {
    report.Reason = kErrorOccurred;
  }
  if (stages.created()) report.Workbook = outcome.WorkbookPath;
  return report;
}

/// Appends lines to "Log.txt" in `folder`.
void AppendLogLines(const std::filesystem::path& folder, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::ofstream log(folder / kLogFileName, std::ios::binary | std::ios::app);
  for (const std::string& line : lines) log << line << "\r\n";
}

/// The workbook name a file would get, for keeping files of one name on one
/// worker: its output folder and its file name up to the first dot.
std::string OutputKey(const BatchEntry& entry) {
  const std::string name = FileNamePart(entry.Source);
  return entry.OutputFolder + "/" + name.substr(0, name.find('.'));
}

}  // namespace

/// A file's result and what the batch must do once its turn comes.
struct BatchRunner::Slot {
  bool done = false;
  FileReport report;
  std::vector<std::string> log_lines;
  std::string workbook;          ///< the workbook path the file was given
  bool created = false;          ///< the file created that workbook
  std::string backup;            ///< second name of the workbook it replaced
  bool after_interrupt = false;  ///< finished after the batch was interrupted
};

/// One worker: a converter of its own over the files given to it.
class BatchRunner::Worker {
 public:
  Worker(BatchRunner& runner, const std::vector<BatchEntry>& entries, std::vector<size_t> files)
      : runner_(runner),
        entries_(entries),
        files_(std::move(files)),
        ui_(runner.config_.Overwrite, CurrentFolder()),
        converter_(ui_, runner.config_.SettingsFolder, BatchStagesFactory(runner.config_.Version)) {
  }

  void Convert() {
    converter_.SetFinishPause(0);
    converter_.InitDefaults();
    converter_.LoadSettings();
    // The command line alone decides about existing workbooks.
    converter_.settings().WarnOnOverwrite = 1;
    // Each file starts from the log-X flag of "Data.ini", whichever files
    // this worker converted before it.
    const int16_t log_x_in_use = converter_.settings().LogXInUse;
    converter_.status().SetLogSink([this](const std::string& line) { ui_.AddLogLine(line); });
    converter_.SetFileObserver([this, log_x_in_use](const FileOutcome& outcome) {
      converter_.settings().LogXInUse = log_x_in_use;
      next_ = run_start_ + static_cast<size_t>(outcome.ListIndex) + 1;
      return Finish(run_.at(outcome.ListIndex), &outcome);
    });
    while (next_ < files_.size() && !runner_.ShouldStop(files_[next_])) ConvertRun();
  }

 private:
  /// Converts the next run: up to 100 files with one output folder.
  void ConvertRun() {
    run_start_ = next_;
    run_.clear();
    const std::string& folder = entries_[files_[next_]].OutputFolder;
    for (size_t i = next_; i < files_.size() && run_.size() < static_cast<size_t>(kAddFileLimit) &&
                           entries_[files_[i]].OutputFolder == folder;
         ++i) {
      run_.push_back(files_[i]);
    }
    converter_.files().ClearFileList();
    for (const size_t index : run_) converter_.AddFile(entries_[index].Source);
    ui_.DropNotes();
    converter_.run().ProgramEnded = false;
    const Settings& settings = converter_.settings();
    std::string output_directory = settings.OutputDirectory;
    bool use_output_directory = settings.UseOutputDirectory != 0;
    if (!folder.empty()) {
      std::error_code ignored;
      std::filesystem::create_directories(folder, ignored);
      output_directory = folder;
      use_output_directory = true;
    }
    next_ = run_start_ + run_.size();
    try {
      converter_.StartConversion(output_directory, use_output_directory);
    } catch (const std::exception& failure) {
      // Debug mode lets run-time failures through the driver.
      const auto current = static_cast<size_t>(converter_.files().CurrentIndex());
      if (current < run_.size()) {
        next_ = run_start_ + current + 1;
        FileOutcome outcome;
        outcome.Result = 1;
        outcome.FailureDetail = failure.what();
        Finish(run_[current], &outcome);
      }
    }
    converter_.QuitSpreadsheet();
  }

  /// Hands the result of the file at `index` over; false to stop.
  bool Finish(size_t index, const FileOutcome* outcome) {
    const auto& stages = static_cast<const BatchStages&>(converter_.stages());
    FileNotes notes = ui_.TakeNotes();
    Slot slot;
    slot.report = ReportOf(entries_[index], *outcome, notes, stages);
    slot.log_lines = std::move(notes.LogLines);
    slot.workbook = outcome->WorkbookPath;
    slot.created = stages.created();
    slot.backup = std::move(notes.Backup);
    return runner_.Post(index, std::move(slot));
  }

  BatchRunner& runner_;
  const std::vector<BatchEntry>& entries_;
  std::vector<size_t> files_;  ///< indices in the batch, in list order
  size_t next_ = 0;            ///< position in `files_` of the next file
  size_t run_start_ = 0;       ///< position in `files_` of the run's first file
  std::vector<size_t> run_;    ///< batch indices of the run's list
  BatchFileUi ui_;
  Converter converter_;
};

BatchRunner::BatchRunner(BatchConfig config) : config_(std::move(config)) {
  config_.Jobs = std::max(config_.Jobs, 1);
}

BatchRunner::~BatchRunner() = default;

bool BatchRunner::Post(size_t index, Slot slot) {
  const std::lock_guard lock(mutex_);
  const FileStatus status = slot.report.Status;
  if (!config_.KeepGoing && (status == FileStatus::kFailed || status == FileStatus::kStopped)) {
    stop_index_ = std::min(stop_index_, index);
  }
  slots_[index] = std::move(slot);
  slots_[index].done = true;
  slots_[index].after_interrupt = interrupted_;
  changed_.notify_all();
  return !interrupted_ && !finished_ && index < stop_index_;
}

bool BatchRunner::ShouldStop(size_t index) {
  const std::lock_guard lock(mutex_);
  return interrupted_ || finished_ || index > stop_index_;
}

void BatchRunner::Interrupt() {
  {
    const std::lock_guard lock(mutex_);
    interrupted_ = true;
  }
  AbandonSaves();
  changed_.notify_all();
}

BatchTotals BatchRunner::Run(const std::vector<BatchEntry>& entries, const FileCallback& on_file) {
  const size_t count = entries.size();
  {
    const std::lock_guard lock(mutex_);
    slots_.assign(count, Slot{});
    finished_ = false;
    stop_index_ = count;
    for (size_t i = 0; i < count && !config_.KeepGoing; ++i) {
      if (!entries[i].Refusal.empty()) {
        stop_index_ = i;
        break;
      }
    }
  }
  Settings settings;
  ReadSettingsFile(config_.SettingsFolder, settings);
  const bool log_enabled = settings.LogEnabled != 0;

  // Files in turn to the workers; files that would get one workbook name go
  // to the same worker, which converts them in list order as one worker would.
  std::vector<std::vector<size_t>> shares(static_cast<size_t>(config_.Jobs));
  std::map<std::string, size_t> worker_of_name;
  size_t turn = 0;
  for (size_t i = 0; i < count; ++i) {
    if (!entries[i].Refusal.empty()) continue;
    const auto [named, added] = worker_of_name.emplace(OutputKey(entries[i]), turn % shares.size());
    if (added) ++turn;
    shares[named->second].push_back(i);
  }
  std::vector<std::unique_ptr<Worker>> workers;
  std::vector<std::jthread> threads;
  for (std::vector<size_t>& share : shares) {
    if (share.empty()) continue;
    workers.push_back(std::make_unique<Worker>(*this, entries, std::move(share)));
    threads.emplace_back([&worker = *workers.back()] { worker.Convert(); });
  }

  BatchTotals totals;
  size_t next = 0;
  bool stopped_by_failure = false;
  for (; next < count; ++next) {
    FileReport report;
    Slot slot;
    {
      std::unique_lock lock(mutex_);
      // A file finished before an interrupt is given out; one that a worker
      // ended after it (its saves refused) is not.
      const auto ready = [&] {
        return (slots_[next].done && !slots_[next].after_interrupt) ||
               !entries[next].Refusal.empty();
      };
      changed_.wait(lock, [&] { return interrupted_ || next > stop_index_ || ready(); });
      if (next > stop_index_ || !ready()) break;
      if (slots_[next].done) slot = std::move(slots_[next]);
    }
    if (!entries[next].Refusal.empty()) {
      report.Source = entries[next].Source;
      report.Name = entries[next].Name;
      report.Status = FileStatus::kFailed;
      report.Reason = entries[next].Refusal;
    } else {
      report = std::move(slot.report);
      if (!slot.backup.empty()) {
        std::error_code ignored;
        std::filesystem::remove(slot.backup, ignored);
      }
      if (log_enabled) AppendLogLines(config_.SettingsFolder, slot.log_lines);
    }
    report.Index = next;
    switch (report.Status) {
      case FileStatus::kConverted:
        ++totals.Converted;
        break;
      case FileStatus::kFailed:
        ++totals.Failed;
        stopped_by_failure = !config_.KeepGoing;
        break;
      case FileStatus::kStopped:
        ++totals.Stopped;
        break;
      case FileStatus::kSkipped:
        break;
    }
    on_file(report);
  }
  {
    const std::lock_guard lock(mutex_);
    finished_ = true;
    totals.Interrupted = interrupted_ && next < count;
  }
  threads.clear();  // joins
  workers.clear();

  // Files after the end of the batch: undo what a worker did ahead of their
  // turn, report them skipped.
  for (size_t i = next; i < count; ++i) {
    Slot& slot = slots_[i];
    if (slot.done) {
      std::error_code ignored;
      if (slot.created && !slot.workbook.empty()) std::filesystem::remove(slot.workbook, ignored);
      if (!slot.backup.empty()) std::filesystem::rename(slot.backup, slot.workbook, ignored);
    }
    FileReport report;
    report.Index = i;
    report.Source = entries[i].Source;
    report.Name = entries[i].Name;
    report.Status = FileStatus::kSkipped;
    report.Reason =
        totals.Interrupted ? "interrupted" : "not converted: the batch stopped before it";
    ++totals.Skipped;
    on_file(report);
  }
  if (totals.Interrupted) totals.InterruptedName = entries[next].Name;
  if (log_enabled && !stopped_by_failure && !totals.Interrupted) {
    AppendLogLines(config_.SettingsFolder, {LogLine("Finish"), kLogRunSeparator});
  }
  return totals;
}

}  // namespace z4400
