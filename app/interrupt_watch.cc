#include "app/interrupt_watch.h"

#include <pthread.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <optional>

namespace z4400 {

InterruptWatch::InterruptWatch(std::function<void()> on_interrupt) {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGINT);
  sigaddset(&signals_, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  thread_ = std::thread([this, on_interrupt = std::move(on_interrupt)] {
    using Clock = std::chrono::steady_clock;
    // One Ctrl-C may arrive more than once (sent to the process and to its
    // group, as `timeout` does): a second signal counts only when it comes
    // this long after the first.
    constexpr auto kSecondSignal = std::chrono::milliseconds(500);
    std::optional<Clock::time_point> interrupted;
    for (;;) {
      const int signal = sigwaitinfo(&signals_, nullptr);
      if (done_) return;
      if (signal <= 0) continue;
      if (interrupted) {
        if (Clock::now() - *interrupted < kSecondSignal) continue;
        std::cerr << "\nz4400conv: interrupted again; ending at once\n";
        std::_Exit(kExitInterrupted);
      }
      on_interrupt();
      interrupted = Clock::now();
    }
  });
}

InterruptWatch::~InterruptWatch() {
  // The thread waits for a signal without a time limit: a Ctrl-C sent to it
  // alone (blocked there, so only its wait takes it) wakes it to see that it
  // is done, so that the program ends at once.
  done_ = true;
  pthread_kill(thread_.native_handle(), SIGINT);
  thread_.join();
  pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
}

}  // namespace z4400
