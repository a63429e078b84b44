#include "watch/settle_tracker.h"

#include <algorithm>

namespace z4400 {

void SettleTracker::Touch(const std::filesystem::path& path, Clock::time_point now) {
  const auto [entry, added] = pending_.try_emplace(path);
  if (added) entry->second.order = next_order_++;
  // A write restarts the wait even when size and time look the same (a
  // rewrite within the file system's time resolution).
  entry->second.stable_since = now;
  entry->second.state = std::nullopt;
}

std::vector<std::filesystem::path> SettleTracker::TakeReady(Clock::time_point now) {
  std::vector<std::pair<std::uint64_t, std::filesystem::path>> ready;
  for (auto it = pending_.begin(); it != pending_.end();) {
    Pending& pending = it->second;
    const std::optional<FileState> state = probe_(it->first);
    if (!state) {
      it = pending_.erase(it);
      continue;
    }
    // Waiting starts at the touch; a change seen since, or a writer still
    // holding the file, starts it again.
    if ((pending.state && !state->SameAs(*pending.state)) || state->open_for_writing) {
      pending.stable_since = now;
    }
    pending.state = state;
    if (now - pending.stable_since < settle_) {
      ++it;
      continue;
    }
    const auto handed = handed_out_.find(it->first);
    if (handed == handed_out_.end() || !handed->second.SameAs(*state)) {
      ready.emplace_back(pending.order, it->first);
      handed_out_[it->first] = *state;
    }
    it = pending_.erase(it);
  }
  std::sort(ready.begin(), ready.end());
  std::vector<std::filesystem::path> paths;
  paths.reserve(ready.size());
  for (auto& [order, path] : ready) paths.push_back(std::move(path));
  return paths;
}

}  // namespace z4400
