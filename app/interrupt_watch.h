// Ctrl-C and SIGTERM for the commands that convert without a window: the
// signals are blocked in every thread and a thread of their own waits for
// them, so that no conversion is cut off in the middle of a write.
#ifndef Z4400_APP_INTERRUPT_WATCH_H_
#define Z4400_APP_INTERRUPT_WATCH_H_

#include <atomic>
#include <csignal>
#include <functional>
#include <thread>

namespace z4400 {

/// Exit status of a command stopped by Ctrl-C or SIGTERM.
inline constexpr int kExitInterrupted = 130;

/// While it lives, SIGINT and SIGTERM are blocked in every thread the
/// program starts after it (create it before any other thread): the first
/// signal calls `on_interrupt` on the watch's own thread, a second ends the
/// program at once (a file that blocks the conversion, such as a device,
/// cannot hold it).
class InterruptWatch {
 public:
  explicit InterruptWatch(std::function<void()> on_interrupt);
  ~InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;

 private:
  sigset_t signals_{};
  std::atomic<bool> done_ = false;
  std::thread thread_;
};

}  // namespace z4400

#endif  // Z4400_APP_INTERRUPT_WATCH_H_
