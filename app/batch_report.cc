#include "app/batch_report.h"

#include <cstdio>

namespace z4400 {
namespace {

constexpr char kProgram[] = "z4400conv: ";
constexpr int kBarWidth = 24;
/// Longest file name the live line shows, so that it fits one line.
constexpr size_t kLiveNameWidth = 40;

/// "[ 7/250]": the file's number, padded to the width of the total.
std::string Counter(size_t number, size_t total) {
  const std::string count = std::to_string(total);
  std::string shown = std::to_string(number);
  if (shown.size() < count.size()) shown.insert(0, count.size() - shown.size(), ' ');
  return "[" + shown + "/" + count + "]";
}

}  // namespace

BatchReport::BatchReport(std::ostream& out, std::ostream& err, bool live, Verbosity verbosity,
                         const std::vector<BatchEntry>& entries)
    : out_(out),
      err_(err),
      live_(live && verbosity == Verbosity::kNormal),
      verbosity_(verbosity),
      entries_(entries),
      start_(std::chrono::steady_clock::now()) {
  if (live_ && !entries_.empty()) DrawLive();
}

BatchReport::~BatchReport() { ClearLive(); }

void BatchReport::Note(const std::string& text) {
  ClearLive();
  err_ << kProgram << text << '\n';
  if (live_ && finished_ < entries_.size()) DrawLive();
}

void BatchReport::File(const FileReport& report) {
  if (report.Status == FileStatus::kSkipped) return;
  finished_ = report.Index + 1;
  ClearLive();
  if (verbosity_ == Verbosity::kVerbose) {
    for (const std::string& text : report.StatusTexts) err_ << text << '\n';
  }
  const std::string counter = Counter(finished_, entries_.size());
  switch (report.Status) {
    case FileStatus::kConverted:
      if (verbosity_ != Verbosity::kQuiet && !live_) {
        err_ << counter << ' ' << report.Name << ": converted\n";
      }
      out_ << report.Workbook << '\n' << std::flush;
      break;
    case FileStatus::kFailed:
    case FileStatus::kStopped:
      err_ << kProgram << report.Name << ": " << report.Reason << '\n';
      if (!report.Workbook.empty() && verbosity_ != Verbosity::kQuiet) {
        err_ << kProgram << report.Name << ": the partial workbook is kept: " << report.Workbook
             << '\n';
      }
      break;
    case FileStatus::kSkipped:
      break;
  }
  err_ << std::flush;
  if (live_ && finished_ < entries_.size()) DrawLive();
}

void BatchReport::Finish(const BatchTotals& totals) {
  ClearLive();
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  char time[32];
  std::snprintf(time, sizeof time, "%.1f", seconds);
  err_ << kProgram << totals.Converted << " converted, " << totals.Failed << " failed, "
       << totals.Stopped + totals.Skipped << " skipped in " << time << " s\n"
       << std::flush;
}

void BatchReport::DrawLive() {
  const size_t total = entries_.size();
  const size_t filled = total > 0 ? finished_ * kBarWidth / total : 0;
  std::string name = entries_[finished_].Name;
  if (name.size() > kLiveNameWidth) name = "..." + name.substr(name.size() - kLiveNameWidth + 3);
  err_ << "\r\033[K" << Counter(finished_ + 1, total) << ' ' << name << " ["
       << std::string(filled, '#') << std::string(kBarWidth - filled, ' ') << ']' << std::flush;
  live_drawn_ = true;
}

void BatchReport::ClearLive() {
  if (!live_drawn_) return;
  err_ << "\r\033[K" << std::flush;
  live_drawn_ = false;
}

}  // namespace z4400
