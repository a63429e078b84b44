#include "driver/console_ui.h"

#include <algorithm>

namespace z4400 {
namespace {

constexpr char kProgram[] = "z4400conv: ";
constexpr int kBarWidth = 24;
constexpr char kAlreadyExists[] = " already exists";

/// A message's text with its carriage returns as line breaks.
std::string Lines(const std::string& text) {
  std::string lines;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') {
      lines += '\n';
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      lines += text[i];
    }
  }
  return lines;
}

}  // namespace

std::string OneLine(const std::string& text) {
  std::string line;
  bool in_break = false;
  for (const char c : text) {
    if (c == '\r' || c == '\n') {
      if (!in_break && !line.empty()) line += " / ";
      in_break = true;
    } else {
      line += c;
      in_break = false;
    }
  }
  return line;
}

ConsoleUi::ConsoleUi(std::ostream& out, bool live, bool overwrite, std::string data_folder)
    : out_(out), live_(live), overwrite_(overwrite), data_folder_(std::move(data_folder)) {}

ConsoleUi::~ConsoleUi() { BreakLive(); }

void ConsoleUi::ShowStatus(const std::string& text) {
  status_ = OneLine(text);
  if (live_) {
    DrawLive();
  } else {
    out_ << status_ << '\n';
  }
}

void ConsoleUi::SetProgressRange(int /*minimum*/, int maximum) { maximum_ = maximum; }

void ConsoleUi::SetProgressValue(int value) {
  value_ = value;
  if (live_) DrawLive();
}

void ConsoleUi::ShowPercentage(const std::string& text) {
  percentage_ = text;
  if (live_) DrawLive();
}

void ConsoleUi::ShowMessage(MessageKind kind, const std::string& title, const std::string& text) {
  BreakLive();
  const char* label = kind == MessageKind::kCritical  ? "error"
                      : kind == MessageKind::kWarning ? "warning"
                                                      : "note";
  out_ << kProgram << label;
  if (!title.empty()) out_ << " (" << title << ")";
  out_ << ":\n" << Lines(text) << '\n';
}

bool ConsoleUi::AskYesNo(const std::string& title, const std::string& /*text*/) {
  if (overwrite_) return true;
  const size_t suffix = title.rfind(kAlreadyExists);
  refused_path_ = suffix == std::string::npos ? title : title.substr(0, suffix);
  return false;
}

std::string ConsoleUi::ChooseOpenFile(const FileDialogRequest& /*request*/) { return {}; }

std::string ConsoleUi::ChooseSaveFile(const FileDialogRequest& request) {
  if (!refused_path_.empty()) {
    Note(refused_path_ + " already exists; not overwritten (use --overwrite to replace it)");
    refused_path_.clear();
    return {};
  }
  if (request.initial_name.empty()) {
    Note("no output file name can be formed for this source file");
  }
  return request.initial_name;
}

std::string ConsoleUi::ChooseFolder(const std::string& /*title*/,
                                    const std::string& /*initial_folder*/) {
  return {};
}

void ConsoleUi::EndProgram() { ended_ = true; }

void ConsoleUi::Note(const std::string& text) {
  BreakLive();
  out_ << kProgram << text << '\n';
}

void ConsoleUi::DrawLive() {
  const int filled = maximum_ > 0 ? std::clamp(value_, 0, maximum_) * kBarWidth / maximum_ : 0;
  out_ << "\r\033[K[" << std::string(filled, '#') << std::string(kBarWidth - filled, ' ') << "] "
       << percentage_ << ' ' << status_ << std::flush;
  live_line_open_ = true;
}

void ConsoleUi::BreakLive() {
  if (!live_line_open_) return;
  out_ << '\n' << std::flush;
  live_line_open_ = false;
}

}  // namespace z4400
