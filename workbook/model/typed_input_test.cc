#include "workbook/model/typed_input.h"

#include <gtest/gtest.h>

#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

// Days between two dates counted on the proleptic calendar, for expected
// serials independent of the code under test: 1899-12-30 is day 0 of the
// spreadsheet count from 1900-03-01 on.
long long DaysSince18991230(int year, int month, int day) {
  long long days = 0;
  auto leap = [](int y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; };
  const int month_days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  days += 2;  // 1899-12-30 → 1900-01-01
  for (int y = 1900; y < year; ++y) days += leap(y) ? 366 : 365;
  for (int m = 1; m < month; ++m) days += month_days[m - 1] + (m == 2 && leap(year) ? 1 : 0);
  return days + day - 1;
}

TEST(TypedInputTest, NumbersReadWithDecimalPoint) {
  const struct {
    std::string text;
    double number;
  } kCases[] = {
      {"1", 1},   {"-10", -10}, {"+2.5", 2.5},           {"0.125", 0.125}, {".5", 0.5},
      {"5.", 5},  {"1E6", 1e6}, {"2.5e-3", 2.5e-3},      {"  42  ", 42},   {"\t7", 7},
      {"007", 7}, {"-0", -0.0}, {"1000000000000", 1e12},
  };
  for (const auto& c : kCases) {
    const CellValue value = ParseTypedInput(c.text);
    ASSERT_TRUE(value.IsNumber()) << c.text;
    EXPECT_EQ(value.Number(), c.number) << c.text;
  }
}

TEST(TypedInputTest, DatesBecomeDaySerials) {
  const struct {
    std::string text;
    int year, month, day;
    double fraction;
  } kCases[] = {
      {"2007-03-05", 2007, 3, 5, 0},
      {"2007/3/5", 2007, 3, 5, 0},
      {"1900-03-01", 1900, 3, 1, 0},
      {"2000-02-29", 2000, 2, 29, 0},
      {"9999-12-31", 9999, 12, 31, 0},
      {"2024-01-31 12:00", 2024, 1, 31, 0.5},
      {"2024-01-31 06:00:36", 2024, 1, 31, (6 * 3600 + 36) / 86400.0},
  };
  for (const auto& c : kCases) {
    const CellValue value = ParseTypedInput(c.text);
    ASSERT_TRUE(value.IsDate()) << c.text;
    EXPECT_DOUBLE_EQ(value.Number(),
                     static_cast<double>(DaysSince18991230(c.year, c.month, c.day)) + c.fraction)
        << c.text;
  }
  // The reference point users know: 2007-03-05 is serial 39146.
  EXPECT_EQ(ParseTypedInput("2007-03-05").Number(), 39146);
  // Before the phantom 1900-02-29 the count is one lower: 1900-01-01 is 1.
  EXPECT_EQ(ParseTypedInput("1900-01-01").Number(), 1);
  EXPECT_EQ(ParseTypedInput("1900-02-28").Number(), 59);
  EXPECT_EQ(ParseTypedInput("1900-03-01").Number(), 61);
}

TEST(TypedInputTest, BooleansInAnyCase) {
  EXPECT_EQ(ParseTypedInput("TRUE"), CellValue(true));
  EXPECT_EQ(ParseTypedInput("false"), CellValue(false));
  EXPECT_EQ(ParseTypedInput(" True "), CellValue(true));
}

TEST(TypedInputTest, EverythingElseStaysText) {
  const std::string kTexts[] = {
      "Z4400A",
      "trace1.xml",
      "1,000",
      "50%",
      "1.2.3",
      "--1",
      "1e",
      "e5",
      "-",
      ".",
      "2007-13-01",
      "2007-02-30",
      "1899-12-31",
      "07-03-05",
      "2007-03-05x",
      "2007-03/05",
      "2007-03-05 25:00",
      "2007-03-05 12:5",
      "1e999",
      "inf",
      "nan",
      "0x10",
      "   ",
      "N(3)",
      "Screen ",
  };
  for (const std::string& text : kTexts) {
    const CellValue value = ParseTypedInput(text);
    ASSERT_TRUE(value.IsText()) << text;
    EXPECT_EQ(value.Text(), text);
  }
  // An apostrophe keeps what follows as text.
  EXPECT_EQ(ParseTypedInput("'123"), CellValue("123"));
  EXPECT_EQ(ParseTypedInput("'2007-03-05"), CellValue("2007-03-05"));
  EXPECT_EQ(ParseTypedInput("'"), CellValue(""));
  // The empty text clears the cell.
  EXPECT_TRUE(ParseTypedInput("").IsEmpty());
}

TEST(TypedInputTest, NumberOfConvertsForArithmetic) {
  const struct {
    CellValue value;
    double number;
  } kCases[] = {{CellValue(), 0},
                {CellValue(2.5), 2.5},
                {CellValue(true), -1},
                {CellValue(false), 0},
                {CellValue(DateValue{61}), 61},
                {CellValue(" 1E3 "), 1000},
                {CellValue("2007-03-05"), 39146}};
  for (const auto& c : kCases) EXPECT_EQ(NumberOf(c.value), c.number) << c.value.ToText();
  for (const char* text : {"abc", "TRUE", "1,5", "'5"}) {
    EXPECT_THROW(NumberOf(CellValue(text)), RuntimeFailure) << text;
  }
}

TEST(TypedInputTest, DateSerialRejectsImpossibleDates) {
  EXPECT_FALSE(DateSerial(1900, 2, 29));  // the phantom day is not a typed date
  EXPECT_FALSE(DateSerial(2023, 2, 29));
  EXPECT_FALSE(DateSerial(2023, 4, 31));
  EXPECT_FALSE(DateSerial(1899, 12, 31));
  EXPECT_FALSE(DateSerial(10000, 1, 1));
  EXPECT_FALSE(DateSerial(2023, 0, 1));
  EXPECT_TRUE(DateSerial(2024, 2, 29));
}

}  // namespace
}  // namespace z4400
