// The small helpers every layer shares.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "common/checked16.h"
#include "common/runtime_failure.h"
#include "common/trace_letters.h"

namespace z4400 {
namespace {

TEST(TraceLettersTest, ByTraceIndex) {
  const struct {
    int32_t trace;
    const char* letter;
  } kCases[] = {{0, "A"}, {1, "B"}, {2, "C"}, {3, "M"}, {4, "O"}, {5, "A"}, {-1, "A"}};
  for (const auto& c : kCases) EXPECT_EQ(TraceLetter(c.trace), c.letter) << c.trace;
}

TEST(Checked16Test, FitsOrOverflowsWithItsMessage) {
  const struct {
    int64_t value;
    const char* what;
    const char* message;  // null when it fits
  } kCases[] = {{32767, "", nullptr},
                {-32768, "row", nullptr},
                {32768, "", "Overflow"},
                {-32769, "", "Overflow"},
                {40000, "raw data row", "Overflow: raw data row 40000"},
                {INT64_MIN, "column", "Overflow: column -9223372036854775808"}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.value);
    if (c.message == nullptr) {
      EXPECT_EQ(Checked16(c.value, c.what), c.value);
      continue;
    }
    try {
      Checked16(c.value, c.what);
      ADD_FAILURE() << "no overflow";
    } catch (const RuntimeFailure& failure) {
      EXPECT_EQ(std::string(failure.what()), c.message);
    }
  }
}

}  // namespace
}  // namespace z4400
