// z4400conv --watch DIR: converts every .xml and .csv file that appears in a
// folder tree, as the batch command would, until Ctrl-C or SIGTERM.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <thread>

#include "app/batch_sources.h"
#include "app/commands.h"
#include "app/interrupt_watch.h"
#include "app/summary_file.h"
#include "driver/batch_runner.h"
#include "driver/file_dialogs.h"
#include "driver/settings_file.h"
#include "watch/folder_watcher.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

constexpr int kExitDone = 0;
constexpr int kExitUsage = 2;
/// How often the loop looks at the stop request while nothing happens.
constexpr std::chrono::milliseconds kStopCheck{200};

void Note(const std::string& text) { std::cerr << "z4400conv: " << text << "\n" << std::flush; }

/// Files the batch would convert: ".xml" and ".csv" in lower case, not
/// hidden (the temporary files of saves in progress are).
bool IsWatchedSource(const std::filesystem::path& path) {
  const std::string name = path.filename().string();
  return !name.empty() && name[0] != '.' && ExtensionRefusal(name).empty();
}

/// Where the workbooks go and which version they are written for.
struct WatchTarget {
  std::filesystem::path root;   ///< the watched folder, absolute
  std::string shown_root;       ///< as the user named it
  std::string output_root;      ///< --output-dir, absolute; empty: as "Data.ini" says
  std::string settings_folder;  ///< for the output folder of "Data.ini"
  std::string data_ini_folder;  ///< "Data.ini"'s folder when its check box is on
  int16_t version = 16;
};

BatchEntry EntryOf(const WatchTarget& target, const std::filesystem::path& path) {
  const std::filesystem::path relative = path.lexically_relative(target.root);
  BatchEntry entry;
  entry.Source = path.string();
  entry.Name = (std::filesystem::path(target.shown_root) / relative).string();
  if (!target.output_root.empty()) {
    entry.OutputFolder = (std::filesystem::path(target.output_root) / relative.parent_path())
                             .lexically_normal()
                             .string();
    if (entry.OutputFolder.ends_with('/')) entry.OutputFolder.pop_back();
  }
  return entry;
}

/// The workbook `entry` would be saved as, when a name can be formed.
std::string WorkbookOf(const WatchTarget& target, const BatchEntry& entry) {
  std::string folder = entry.OutputFolder.empty() ? target.data_ini_folder : entry.OutputFolder;
  if (folder.empty()) folder = std::filesystem::current_path().string();
  try {
    return ProposeOutputPath(entry.Source, folder, target.version).path;
  } catch (const std::exception&) {
    return {};  // no name: the batch reports why
  }
}

/// A workbook is up to date when it was written after its source.
bool IsUpToDate(const std::string& source, const std::string& workbook) {
  if (workbook.empty()) return false;
  std::error_code error;
  const auto made = std::filesystem::last_write_time(workbook, error);
  if (error) return false;
  const auto changed = std::filesystem::last_write_time(source, error);
  return !error && made >= changed;
}

void PrintResult(const FileReport& report, Verbosity verbosity) {
  if (report.Status == FileStatus::kConverted) {
    std::cout << report.Workbook << '\n' << std::flush;
    if (verbosity != Verbosity::kQuiet) std::cerr << report.Name << ": converted\n" << std::flush;
    return;
  }
  if (verbosity == Verbosity::kVerbose) {
    for (const std::string& text : report.StatusTexts) std::cerr << text << '\n';
  }
  Note(report.Name + ": " + report.Reason);
}

}  // namespace

int RunWatch(const BatchOptions& options, const std::string& folder) {
  std::error_code error;
  if (!options.files.empty()) {
    Note("--watch takes one DIR and no FILE (see --help)");
    return kExitUsage;
  }
  if (options.jobs && *options.jobs < 1) {
    Note("--jobs needs a number of 1 or more");
    return kExitUsage;
  }
  if (!std::filesystem::is_directory(folder, error)) {
    Note("--watch " + folder + ": no such folder");
    return kExitUsage;
  }
  const std::filesystem::path settings_folder =
      options.settings_dir ? std::filesystem::path(*options.settings_dir) : ProgramFolder();
  if (options.settings_dir && !std::filesystem::is_directory(settings_folder, error)) {
    Note(std::string(kMissingFolderMessage) + " (--settings-dir " + *options.settings_dir + ")");
    return kExitUsage;
  }
  if (options.output_dir && !std::filesystem::is_directory(*options.output_dir, error)) {
    Note("--output-dir " + *options.output_dir + ": no such folder");
    return kExitUsage;
  }
  std::optional<SummaryFile> summary;
  if (options.summary) {
    if (const std::string refusal = SummaryFile::Refusal(*options.summary); !refusal.empty()) {
      Note(refusal);
      return kExitUsage;
    }
    summary.emplace(*options.summary);
  }

  WatchTarget target;
  target.root = ListedPath(folder);
  target.shown_root = folder;
  if (options.output_dir) target.output_root = ListedPath(*options.output_dir);
  Settings settings;
  ReadSettingsFile(settings_folder, settings);
  if (settings.UseOutputDirectory != 0) target.data_ini_folder = settings.OutputDirectory;
  target.version = static_cast<int16_t>(options.excel_version.value_or(16));

  BatchConfig config;
  config.SettingsFolder = settings_folder;
  config.Version =
      options.excel_version ? std::to_string(*options.excel_version) + ".0" : kDefaultVersion;
  // Watching keeps the workbooks up to date: one older than its source is
  // replaced, one newer is left alone.
  config.Overwrite = true;
  config.KeepGoing = true;
  config.Jobs =
      options.jobs.value_or(std::max(1, static_cast<int>(std::thread::hardware_concurrency())));
  BatchRunner runner(config);
  std::atomic<bool> stop = false;
  const InterruptWatch interrupt([&] {
    stop = true;
    runner.Interrupt();
  });

  WatchOptions watch;
  watch.settle = std::chrono::milliseconds(options.settle_ms.value_or(2000));
  watch.wanted = IsWatchedSource;
  std::string watch_error;
  const std::unique_ptr<FolderWatcher> watcher =
      FolderWatcher::Open(target.root, watch, &watch_error);
  if (watcher == nullptr) {
    Note("--watch " + watch_error);
    return kExitUsage;
  }
  if (!watcher->trouble().empty()) Note(folder + ": " + watcher->trouble());
  if (options.verbosity != Verbosity::kQuiet) {
    Note("watching " + folder + " for .xml and .csv files; Ctrl-C ends");
  }

  int converted = 0;
  int failed = 0;
  bool summary_written = false;
  const auto write_summary = [&] {
    std::string why;
    if (!summary->Write(&why)) Note(summary->path() + ": the summary cannot be written: " + why);
    summary_written = true;
  };
  const auto start = std::chrono::steady_clock::now();
  while (!stop) {
    bool listed = false;
    std::vector<BatchEntry> entries;
    for (const std::filesystem::path& path : watcher->Next(kStopCheck)) {
      BatchEntry entry = EntryOf(target, path);
      const std::string workbook = WorkbookOf(target, entry);
      if (IsUpToDate(entry.Source, workbook)) {
        if (options.verbosity == Verbosity::kVerbose) Note(entry.Name + ": up to date");
        if (summary) summary->AddUpToDate(entry.Source, workbook);
        listed = true;
        continue;
      }
      entries.push_back(std::move(entry));
    }
    if (!entries.empty()) {
      const BatchTotals totals = runner.Run(entries, [&](const FileReport& report) {
        if (report.Status == FileStatus::kSkipped) return;
        PrintResult(report, options.verbosity);
        ++(report.Status == FileStatus::kConverted ? converted : failed);
        if (summary) summary->Add(report);
        listed = true;
      });
      if (totals.Interrupted) {
        Note(totals.InterruptedName + ": interrupted before its workbook was saved");
      }
    }
    if (summary && listed) write_summary();
  }
  if (summary && !summary_written) write_summary();
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  char time[32];
  std::snprintf(time, sizeof time, "%.1f", seconds);
  Note("stopped watching " + folder + ": " + std::to_string(converted) + " converted, " +
       std::to_string(failed) + " failed in " + time + " s");
  return kExitDone;
}

}  // namespace z4400
