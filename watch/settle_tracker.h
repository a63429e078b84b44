// Deciding when a file that is being written has been finished: a file is
// ready once its size and time have stayed the same for the settle time and
// no process has it open for writing. Each version of a file is handed out
// once; a file that changes afterwards is handed out again.
#ifndef Z4400_WATCH_SETTLE_TRACKER_H_
#define Z4400_WATCH_SETTLE_TRACKER_H_

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "watch/file_probe.h"

namespace z4400 {

class SettleTracker {
 public:
  using Clock = std::chrono::steady_clock;
  using Probe = std::function<std::optional<FileState>(const std::filesystem::path&)>;

  /// `probe` tells the state of a file (`ProbeFile`, or a fake in tests).
  SettleTracker(Clock::duration settle, Probe probe) : settle_(settle), probe_(std::move(probe)) {}

  /// Something happened to `path` at `now` (it appeared, was written or
  /// closed): it is looked at again from now on.
  void Touch(const std::filesystem::path& path, Clock::time_point now);

  /// Looks at every file touched and not yet handed out; returns those
  /// that are ready at `now`, in the order they were first touched (then
  /// by name). A file that is gone is forgotten.
  std::vector<std::filesystem::path> TakeReady(Clock::time_point now);

  /// Whether files are waiting to settle (the watcher then looks again
  /// soon rather than waiting for the next event).
  bool Waiting() const { return !pending_.empty(); }

 private:
  struct Pending {
    std::uint64_t order = 0;
    Clock::time_point stable_since;
    std::optional<FileState> state;  ///< as last seen
  };

  Clock::duration settle_;
  Probe probe_;
  std::uint64_t next_order_ = 0;
  std::map<std::filesystem::path, Pending> pending_;
  /// The version of each file last handed out.
  std::map<std::filesystem::path, FileState> handed_out_;
};

}  // namespace z4400

#endif  // Z4400_WATCH_SETTLE_TRACKER_H_
