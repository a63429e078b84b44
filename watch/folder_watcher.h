// Watching a folder tree for instrument files: the files already there
// first, then each file that appears or is rewritten, once per version and
// only when its writer has finished with it.
#ifndef Z4400_WATCH_FOLDER_WATCHER_H_
#define Z4400_WATCH_FOLDER_WATCHER_H_

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "watch/settle_tracker.h"
#include "watch/tree_events.h"

namespace z4400 {

struct WatchOptions {
  /// How long a file's size and time must stay the same, with no writer
  /// holding it open, before it counts as complete.
  std::chrono::milliseconds settle{2000};
  /// How often files waiting to settle are looked at again.
  std::chrono::milliseconds tick{100};
  /// Which files are wanted (the others are never looked at).
  std::function<bool(const std::filesystem::path&)> wanted;
  /// The clock the settle time is measured with.
  std::function<SettleTracker::Clock::time_point()> now = SettleTracker::Clock::now;
};

class FolderWatcher {
 public:
  /// Starts watching `root` and every folder below it; the wanted files
  /// already there are queued in sorted order. Returns null with `*error`
  /// set when the folder cannot be watched.
  static std::unique_ptr<FolderWatcher> Open(const std::filesystem::path& root,
                                             WatchOptions options, std::string* error);

  FolderWatcher(std::unique_ptr<TreeEvents> events, WatchOptions options);

  /// The files that became complete, in the order they were first seen;
  /// waits at most `wait` for one. Returns early, possibly with nothing,
  /// when a signal arrives, so that the caller can check for Ctrl-C.
  std::vector<std::filesystem::path> Next(std::chrono::milliseconds wait);

  /// Why part of the tree is not watched; empty when all is well.
  const std::string& trouble() const { return events_->trouble(); }

 private:
  void Touch(const std::vector<std::filesystem::path>& paths);

  std::unique_ptr<TreeEvents> events_;
  WatchOptions options_;
  SettleTracker tracker_;
};

}  // namespace z4400

#endif  // Z4400_WATCH_FOLDER_WATCHER_H_
