#include "common/numeric_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

TEST(NumericValueTest, ReadsTheLeadingDecimalNumber) {
  struct Case {
    const char* text;
    double expected;
  };
  const Case cases[] = {
      {"2400000000", 2400000000.0},
      {"-72.38", -72.38},
      {"+5", 5},
      {"  12.5", 12.5},  // blanks before the number are skipped
      {"\t3", 3},
      {"0.16168", 0.16168},
      {".5", 0.5},
      {"5.", 5},
      {"1e3", 1000},
      {"2.5E-3", 0.0025},
      {"1e", 1},  // an exponent without digits is not part of the number
      {"1e+", 1},
      {"12abc", 12},  // the number at the start, whatever follows
      {"12,5", 12},   // "," is never a decimal point
      {"98 MHz", 98},
      {"", 0},
      {"abc", 0},
      {"-", 0},
      {".", 0},
      {"inf", 0},  // only decimal literals count
      {"nan", 0},
      {"0x10", 0},
      {"1e-400", 0},  // too small for a double reads as 0
      {"0.0000e999999999", 0},
      {"0001.5", 1.5},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(NumericValue(c.text), c.expected) << "text: \"" << c.text << "\"";
  }
}

TEST(NumericValueTest, IgnoresTheUserLocale) {
  // A locale with "," as its decimal point must not change how "." reads.
  const std::string previous = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr &&
      std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr) {
    GTEST_SKIP() << "no locale with a decimal comma installed (scripts/install-deps.sh --test "
                    "makes de_DE.UTF-8)";
  }
  EXPECT_EQ(NumericValue("1.25"), 1.25);
  EXPECT_EQ(NumericValue("1,25"), 1);
  std::setlocale(LC_NUMERIC, previous.c_str());
}

TEST(NumericValueTest, TooLargeNumbersAreRunTimeFailures) {
  for (const char* text : {"1e400", "-1e309", "9e99999999999", "1" /* filled below */}) {
    std::string literal = text;
    if (literal == "1") literal = "1" + std::string(400, '0');
    EXPECT_THROW(NumericValue(literal), RuntimeFailure) << literal;
  }
}

TEST(RoundingTest, RoundsHalfToEvenAndChecksTheWidth) {
  struct Case {
    double value;
    int32_t expected;
  };
  const Case cases[] = {{0.5, 0},   {1.5, 2},    {2.5, 2},    {-0.5, 0},  {-1.5, -2},
                        {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {401, 401}, {-7.2, -7}};
  for (const Case& c : cases) {
    EXPECT_EQ(RoundToInt32(c.value), c.expected) << c.value;
    EXPECT_EQ(RoundToInt16(c.value), c.expected) << c.value;
  }
  EXPECT_EQ(RoundToInt32(2147483647.4), 2147483647);
  EXPECT_EQ(RoundToInt32(-2147483648.5), -2147483648);  // ties to the even -2^31
  EXPECT_THROW(RoundToInt32(2147483647.5), RuntimeFailure);
  EXPECT_THROW(RoundToInt32(2000000000000.0), RuntimeFailure);
  EXPECT_EQ(RoundToInt16(32767.4), 32767);
  EXPECT_EQ(RoundToInt16(-32768.5), -32768);
  EXPECT_THROW(RoundToInt16(32767.5), RuntimeFailure);
  EXPECT_THROW(RoundToInt16(-32769), RuntimeFailure);
  EXPECT_THROW(RoundToInt16(std::numeric_limits<double>::quiet_NaN()), RuntimeFailure);
  EXPECT_THROW(RoundToInt32(std::numeric_limits<double>::infinity()), RuntimeFailure);
}

TEST(RoundingTest, DivisionByZeroAndOverflowAreRunTimeFailures) {
  EXPECT_EQ(CheckedDivide(1, 4), 0.25);
  EXPECT_THROW(CheckedDivide(1, 0), RuntimeFailure);
  EXPECT_THROW(CheckedDivide(0, 0), RuntimeFailure);
  EXPECT_THROW(CheckedDivide(1e308, 1e-308), RuntimeFailure);
}

}  // namespace
}  // namespace z4400
