// The QApplication of the shell tests goes away at the end of the test
// program, before the program's own teardown.
#include <gtest/gtest.h>

#include "shell/window_test_util.h"

namespace z4400::testing {
namespace {

class QtApplicationEnvironment : public ::testing::Environment {
 public:
  void TearDown() override { ApplicationHolder().reset(); }
};

// Registered before main() runs the tests; gtest owns it.
[[maybe_unused]] ::testing::Environment* const kQtApplicationEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtApplicationEnvironment);

}  // namespace
}  // namespace z4400::testing
