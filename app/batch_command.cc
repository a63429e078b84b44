// z4400conv --batch: converts files and folders without a window.
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <thread>

#include "app/batch_report.h"
#include "app/batch_sources.h"
#include "app/commands.h"
#include "app/interrupt_watch.h"
#include "app/summary_file.h"
#include "driver/batch_runner.h"
#include "driver/settings_file.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

constexpr int kExitConverted = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitStopped = 3;

int DefaultJobs() {
  const unsigned cores = std::thread::hardware_concurrency();
  return cores == 0 ? 1 : static_cast<int>(cores);
}

}  // namespace

int RunBatch(const BatchOptions& options) {
  const bool terminal = ::isatty(STDERR_FILENO) == 1;
  const auto note = [](const std::string& text) { std::cerr << "z4400conv: " << text << "\n"; };
  if (options.files.empty()) {
    note("--batch needs at least one FILE or DIR to convert (see --help)");
    return kExitUsage;
  }
  if (options.jobs && *options.jobs < 1) {
    note("--jobs needs a number of 1 or more");
    return kExitUsage;
  }
  const std::filesystem::path settings_folder =
      options.settings_dir ? std::filesystem::path(*options.settings_dir) : ProgramFolder();
  std::error_code error;
  if (options.settings_dir && !std::filesystem::is_directory(settings_folder, error)) {
    note(std::string(kMissingFolderMessage) + " (--settings-dir " + *options.settings_dir + ")");
    return kExitUsage;
  }
  if (options.output_dir && !std::filesystem::is_directory(*options.output_dir, error)) {
    note("--output-dir " + *options.output_dir + ": no such folder");
    return kExitUsage;
  }
  std::optional<SummaryFile> summary;
  if (options.summary) {
    if (const std::string refusal = SummaryFile::Refusal(*options.summary); !refusal.empty()) {
      note(refusal);
      return kExitUsage;
    }
    summary.emplace(*options.summary);
  }

  const BatchSources sources = CollectSources(options.files, options.output_dir);
  for (const std::string& skipped : sources.skipped) note(skipped);
  bool any_source = false;
  for (const BatchEntry& entry : sources.entries) any_source = any_source || entry.Refusal.empty();
  if (!any_source) {
    for (const BatchEntry& entry : sources.entries) note(entry.Name + ": " + entry.Refusal);
    note("no .xml or .csv file found");
    return kExitUsage;
  }

  BatchConfig config;
  config.SettingsFolder = settings_folder;
  config.Version =
      options.excel_version ? std::to_string(*options.excel_version) + ".0" : kDefaultVersion;
  config.Overwrite = options.overwrite;
  config.KeepGoing = options.keep_going;
  config.Jobs = options.jobs ? *options.jobs : DefaultJobs();
  BatchRunner runner(config);
  BatchReport report(std::cout, std::cerr, terminal, options.verbosity, sources.entries);
  BatchTotals totals;
  {
    const InterruptWatch watch([&runner] { runner.Interrupt(); });
    totals = runner.Run(sources.entries, [&](const FileReport& file) {
      report.File(file);
      if (summary) summary->Add(file);
    });
  }
  if (totals.Interrupted) {
    report.Note(
        totals.InterruptedName +
        ": interrupted before its workbook was saved; the workbooks finished before it are kept");
  }
  bool summary_written = true;
  if (summary) {
    std::string why;
    summary_written = summary->Write(&why);
    if (!summary_written) report.Note(summary->path() + ": the summary cannot be written: " + why);
  }
  report.Finish(totals);
  if (totals.Interrupted) return kExitInterrupted;
  if (totals.Failed > 0 || !summary_written) return kExitFailed;
  if (totals.Stopped > 0) return kExitStopped;
  return kExitConverted;
}

}  // namespace z4400
