#include "app/interrupt_watch.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

namespace z4400 {
namespace {

// A watch that never let its thread go would hold the program at its end;
// the child process gives up after kHangLimit seconds, which fails the test.
constexpr unsigned kHangLimit = 20;

/// In a child process: watches, takes `interrupts` Ctrl-C signals, then ends
/// the watch; exits 0 when each signal was seen once.
void WatchAndEnd(int interrupts) {
  ::alarm(kHangLimit);
  std::atomic<int> seen = 0;
  {
    const InterruptWatch watch([&seen] { ++seen; });
    for (int sent = 0; sent < interrupts; ++sent) {
      ::kill(::getpid(), SIGINT);
      while (seen.load() == sent) ::usleep(1000);
    }
  }
  std::_Exit(seen.load() == interrupts ? 0 : 1);
}

TEST(InterruptWatchTest, EndsWithTheProgramWhetherInterruptedOrNot) {
  for (const int interrupts : {0, 1}) {
    EXPECT_EXIT(WatchAndEnd(interrupts), ::testing::ExitedWithCode(0), "")
        << interrupts << " interrupts";
  }
}

}  // namespace
}  // namespace z4400
