#include "driver/file_list.h"

#include <algorithm>

#include "common/runtime_failure.h"

namespace z4400 {

std::string FileNamePart(std::string_view path) {
  const size_t separator = path.find_last_of("\\/");
  if (separator == std::string_view::npos) return std::string(path);
  return std::string(path.substr(separator + 1));
}

std::string SourceKindOf(std::string_view path) {
  if (path.size() <= 3) return std::string(path);
  return std::string(path.substr(path.size() - 3));
}

bool IsAcceptedKind(std::string_view kind) { return kind == "csv" || kind == "xml"; }

FileList::AddStatus FileList::AddFile(std::string_view path) {
  last_kind_ = SourceKindOf(path);
  if (!IsAcceptedKind(last_kind_)) return AddStatus::kIgnored;
  if (file_count_ >= kAddFileLimit) return AddStatus::kFull;
  entries_[file_count_] = {std::string(path), FileNamePart(path), -1};
  ++file_count_;
  return AddStatus::kAdded;
}

bool FileList::AddDialogResult(std::string_view result) {
  if (result.empty()) return false;
  last_kind_ = SourceKindOf(result);
  if (!IsAcceptedKind(last_kind_)) return false;
  if (file_count_ >= kFileListEntries) {
    throw RuntimeFailure("source-file list full: no entry " + std::to_string(file_count_));
  }
  entries_[file_count_] = {std::string(result), FileNamePart(result), -1};
  ++file_count_;
  return true;
}

void FileList::RemoveSelectedFiles(const std::vector<int>& selected_rows) {
  int kept = 0;
  for (int row = 0; row < file_count_; ++row) {
    const bool selected =
        std::find(selected_rows.begin(), selected_rows.end(), row) != selected_rows.end();
    if (selected) continue;
    if (kept != row) entries_[kept] = std::move(entries_[row]);
    ++kept;
  }
  file_count_ = kept;
}

void FileList::ClearFileList() { file_count_ = 0; }

const SourceFileEntry& FileList::Entry(int index) const {
  if (index < 0 || index >= kFileListEntries) {
    throw RuntimeFailure("source-file list has no entry " + std::to_string(index));
  }
  return entries_[index];
}

std::vector<std::string> FileList::Names() const {
  std::vector<std::string> names;
  names.reserve(file_count_);
  for (int i = 0; i < file_count_; ++i) names.push_back(entries_[i].Name);
  return names;
}

}  // namespace z4400
