#include "workbook/model/column_letters.h"

#include <gtest/gtest.h>

#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

TEST(ColumnLettersTest, NumberToLetters) {
  const struct {
    int column;
    std::string letters;
  } kCases[] = {
      {1, "A"},
      {26, "Z"},
      {27, "AA"},
      {28, "AB"},
      {52, "AZ"},
      {53, "BA"},
      {702, "ZZ"},
      {703, "AAA"},
      {16384, "XFD"},
      // No check of the column: 0 and below give the characters before "A".
      {0, "@"},
      {-1, "?"},
      {-63, "\x01"},
      {-64, std::string(1, '\0')},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ExcelColNumber2ColLetter(c.column), c.letters) << c.column;
  }
}

TEST(ColumnLettersTest, NumberToLettersRoundTripsThroughLetterToNumber) {
  for (int column = 1; column <= 20000; ++column) {
    ASSERT_EQ(ExcelColLetter2ColNumber(ExcelColNumber2ColLetter(column)), column);
  }
}

TEST(ColumnLettersTest, LettersToNumber) {
  const struct {
    std::string letters;
    int column;
  } kCases[] = {
      {"A", 1},
      {"a", 1},
      {"z", 26},
      {"AA", 27},
      {"AZ", 52},
      {"aZ", 52},
      {"XFD", 16384},
      {"", 0},
      // Not validated: a digit counts as its code − 64.
      {"1", '1' - 64},
      {"A1", 26 + '1' - 64},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ExcelColLetter2ColNumber(c.letters), c.column) << c.letters;
  }
}

TEST(ColumnLettersTest, Offsets) {
  const struct {
    std::string letters;
    int offset;
    std::string result;
  } kCases[] = {
      {"B", 3, "E"}, {"Z", 1, "AA"}, {"AA", -1, "Z"}, {"A", 0, "A"}, {"A", -1, "@"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(ExcelDecallageColumn(c.letters, c.offset), c.result) << c.letters << " " << c.offset;
  }
}

TEST(ColumnLettersTest, SixteenBitOverflowRaises) {
  // Beyond 32,767 columns, or one before −32,768, the 16-bit arithmetic
  // overflows.
  EXPECT_THROW(ExcelColNumber2ColLetter(32768), RuntimeFailure);
  EXPECT_THROW(ExcelColNumber2ColLetter(-32768), RuntimeFailure);
  EXPECT_NO_THROW(ExcelColNumber2ColLetter(32767));
  // "AWLH" would be column 33,444.
  EXPECT_THROW(ExcelColLetter2ColNumber("AWLH"), RuntimeFailure);
  EXPECT_THROW(ExcelColLetter2ColNumber("ZZZZ"), RuntimeFailure);
  EXPECT_EQ(ExcelColLetter2ColNumber("AUXZ"), 1 * 17576 + 21 * 676 + 24 * 26 + 26);
  EXPECT_THROW(ExcelDecallageColumn("XFD", 20000), RuntimeFailure);
  // A character code below 0 is an invalid call, not a crash.
  EXPECT_THROW(ExcelColNumber2ColLetter(-65), RuntimeFailure);
}

}  // namespace
}  // namespace z4400
