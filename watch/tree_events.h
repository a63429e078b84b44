// Linux inotify over a whole folder tree: every file written, closed,
// moved in or created anywhere below the folder, sub-folders made later
// included.
#ifndef Z4400_WATCH_TREE_EVENTS_H_
#define Z4400_WATCH_TREE_EVENTS_H_

#include <chrono>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace z4400 {

class TreeEvents {
 public:
  /// Watches `root` and every folder below it. Returns null with `*error`
  /// set when the folder cannot be watched.
  static std::unique_ptr<TreeEvents> Open(const std::filesystem::path& root, std::string* error);
  /// Takes over the inotify descriptor `fd`, which watches `root`; made by
  /// `Open`.
  TreeEvents(int fd, std::filesystem::path root) : fd_(fd), root_(std::move(root)) {}
  ~TreeEvents();
  TreeEvents(const TreeEvents&) = delete;
  TreeEvents& operator=(const TreeEvents&) = delete;

  /// Waits at most `timeout` for events and returns the files they concern
  /// (files of a folder that appeared meanwhile included, since their own
  /// events may have come before the folder was watched). Returns early,
  /// possibly with nothing, when a signal arrives.
  std::vector<std::filesystem::path> Wait(std::chrono::milliseconds timeout);

  /// Why part of the tree is not watched, for the user (too many folders
  /// for the system's limit); empty when all is well.
  const std::string& trouble() const { return trouble_; }

 private:
  /// Watches `folder` and the folders below it; appends the files found
  /// below it to `found` when given. False when `folder` itself cannot be
  /// watched (`errno` says why).
  bool WatchTree(const std::filesystem::path& folder, std::vector<std::filesystem::path>* found);

  int fd_;
  std::filesystem::path root_;
  std::map<int, std::filesystem::path> folders_;  ///< watch descriptor → folder
  std::string trouble_;
};

}  // namespace z4400

#endif  // Z4400_WATCH_TREE_EVENTS_H_
