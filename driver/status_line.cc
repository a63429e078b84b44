#include "driver/status_line.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <fstream>
#include <limits>
#include <system_error>
#include <thread>
#include <utility>

#include "common/runtime_failure.h"
#include "driver/settings_file.h"

namespace z4400 {
namespace {

/// The local date and time that start a log line: "2026/11/21 08:30:05".
std::string LogTimestamp() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "%Y/%m/%d %H:%M:%S", &local);
  return text;
}

void RemoveAll(std::string& text, const std::string& piece) {
  for (size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at)) {
    text.erase(at, piece.size());
  }
}

}  // namespace

std::string PercentageText(int counter, int file_count) {
  const double percentage =
      file_count < 1 ? counter * 100.0 / kStepsPerFile
                     : (static_cast<double>(counter) / file_count) * 100.0 / kStepsPerFile;
  const long rounded = std::lround(percentage);  // half away from zero
  return (rounded == 0 ? std::string() : std::to_string(rounded)) + "%";
}

std::string LogLineText(std::string text) {
  RemoveAll(text, "\r\n");
  RemoveAll(text, "\n");
  RemoveAll(text, "\r");
  return text;
}

std::string LogLine(const std::string& text) { return LogTimestamp() + ' ' + LogLineText(text); }

StatusLine::StatusLine(UserInterface& ui, const Settings& settings, RunState& run,
                       const FileList& files, std::filesystem::path folder)
    : ui_(ui), settings_(settings), run_(run), files_(files), folder_(std::move(folder)) {}

void StatusLine::SetStatus(const std::string& text) {
  ui_.ShowStatus(text);
  if (status_bar_) status_bar_(text);
  if (settings_.LogEnabled != 0 && !reporting_missing_log_folder_) AppendLog(text);
  UpdateProgress();
}

void StatusLine::UpdateProgress() {
  if (run_.ProgressCounter == std::numeric_limits<int16_t>::max()) {
    throw RuntimeFailure("progress counter overflow");
  }
  ++run_.ProgressCounter;
  if (run_.ProgressMaximum >= run_.ProgressCounter) {
    ui_.SetProgressValue(run_.ProgressCounter);
    ui_.ShowPercentage(PercentageText(run_.ProgressCounter, files_.FileCount()));
  }
}

void StatusLine::ShowError(const std::string& text) {
  ui_.ShowMessage(MessageKind::kCritical, "Error Message", text);
  SetStatus(text);
}

void StatusLine::AppendLog(const std::string& text) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder_, error)) {
    reporting_missing_log_folder_ = true;
    ShowError(kMissingFolderMessage);
    reporting_missing_log_folder_ = false;
    return;
  }
  if (log_sink_) {
    log_sink_(LogLine(text));
    return;
  }
  const std::filesystem::path path = folder_ / kLogFileName;
  std::ofstream log(path, std::ios::binary | std::ios::app);
  log << LogLine(text) << "\r\n";
  log.close();
  if (log.fail()) throw RuntimeFailure("cannot write " + path.string());
}

void StatusLine::WaitSeconds(double seconds) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                   std::chrono::duration<double>(seconds));
  while (Clock::now() < end) {
    ui_.ProcessEvents();
    // A short pause per turn keeps the wait from occupying a whole core.
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

void StatusLine::ResetProgress() {
  run_.ProgressCounter = 0;
  run_.ProgressMaximum =
      files_.FileCount() < 1 ? kStepsPerFile : files_.FileCount() * kStepsPerFile;
  ui_.SetProgressRange(0, run_.ProgressMaximum);
  ui_.ShowPercentage("");
}

void StatusLine::ClearProgress() {
  ui_.SetProgressValue(0);
  ui_.ShowPercentage("0%");
}

}  // namespace z4400
