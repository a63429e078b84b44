#include "watch/folder_watcher.h"

#include <algorithm>
#include <system_error>

namespace z4400 {

std::unique_ptr<FolderWatcher> FolderWatcher::Open(const std::filesystem::path& root,
                                                   WatchOptions options, std::string* error) {
  std::unique_ptr<TreeEvents> events = TreeEvents::Open(root, error);
  if (events == nullptr) return nullptr;
  auto watcher = std::make_unique<FolderWatcher>(std::move(events), std::move(options));
  std::vector<std::filesystem::path> present;
  std::error_code walk_error;
  for (std::filesystem::recursive_directory_iterator it(root, walk_error), end;
       !walk_error && it != end; it.increment(walk_error)) {
    present.push_back(it->path());
  }
  std::sort(present.begin(), present.end());
  watcher->Touch(present);
  return watcher;
}

FolderWatcher::FolderWatcher(std::unique_ptr<TreeEvents> events, WatchOptions options)
    : events_(std::move(events)),
      options_(std::move(options)),
      tracker_(options_.settle, ProbeFile) {}

void FolderWatcher::Touch(const std::vector<std::filesystem::path>& paths) {
  const auto now = options_.now();
  for (const std::filesystem::path& path : paths) {
    if (!options_.wanted || options_.wanted(path)) tracker_.Touch(path, now);
  }
}

std::vector<std::filesystem::path> FolderWatcher::Next(std::chrono::milliseconds wait) {
  std::vector<std::filesystem::path> ready = tracker_.TakeReady(options_.now());
  if (!ready.empty()) return ready;
  Touch(events_->Wait(tracker_.Waiting() ? std::min(wait, options_.tick) : wait));
  return tracker_.TakeReady(options_.now());
}

}  // namespace z4400
