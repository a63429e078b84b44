#include "app/interrupt_watch.h"

#include <pthread.h>

#include <cstdlib>
#include <ctime>
#include <iostream>

namespace z4400 {

InterruptWatch::InterruptWatch(std::function<void()> on_interrupt) {
  sigemptyset(&signals_);
  sigaddset(&signals_, SIGINT);
  sigaddset(&signals_, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &signals_, nullptr);
  thread_ = std::thread([this, on_interrupt = std::move(on_interrupt)] {
    const timespec pause{0, 50'000'000};
    bool interrupted = false;
    while (!done_) {
      if (sigtimedwait(&signals_, nullptr, &pause) <= 0) continue;
      if (interrupted) {
        std::cerr << "\nz4400conv: interrupted again; ending at once\n";
        std::_Exit(kExitInterrupted);
      }
      on_interrupt();
      interrupted = true;
    }
  });
}

InterruptWatch::~InterruptWatch() {
  done_ = true;
  thread_.join();
  pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
}

}  // namespace z4400
