#include "driver/batch_file_ui.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "driver/console_ui.h"
#include "workbook/package/atomic_file.h"

namespace z4400 {
namespace {

constexpr char kAlreadyExists[] = " already exists";
constexpr int kLinkAttempts = 16;

}  // namespace

std::string LinkBackup(const std::string& path) {
  for (int attempt = 0; attempt < kLinkAttempts; ++attempt) {
    const std::filesystem::path backup = TemporarySibling(path);
    if (::link(path.c_str(), backup.c_str()) == 0) return backup.string();
    if (errno != EEXIST) break;
  }
  return {};
}

BatchFileUi::BatchFileUi(bool overwrite, std::string data_folder)
    : overwrite_(overwrite), data_folder_(std::move(data_folder)) {}

void BatchFileUi::ShowStatus(const std::string& text) {
  notes_.StatusTexts.push_back(OneLine(text));
}

void BatchFileUi::ShowMessage(MessageKind /*kind*/, const std::string& /*title*/,
                              const std::string& text) {
  notes_.Messages.push_back(OneLine(text));
}

bool BatchFileUi::AskYesNo(const std::string& title, const std::string& /*text*/) {
  const size_t suffix = title.rfind(kAlreadyExists);
  const std::string path = suffix == std::string::npos ? title : title.substr(0, suffix);
  if (!overwrite_) {
    refused_path_ = path;
    return false;
  }
  notes_.Backup = LinkBackup(path);
  return true;
}

std::string BatchFileUi::ChooseSaveFile(const FileDialogRequest& request) {
  if (!refused_path_.empty()) {
    notes_.RefusedOverwrite = std::move(refused_path_);
    refused_path_.clear();
    return {};
  }
  return request.initial_name;
}

FileNotes BatchFileUi::TakeNotes() {
  FileNotes notes = std::move(notes_);
  notes_ = FileNotes{};
  refused_path_.clear();
  return notes;
}

void BatchFileUi::DropNotes() { TakeNotes(); }

}  // namespace z4400
