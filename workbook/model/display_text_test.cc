#include "workbook/model/display_text.h"

#include <gtest/gtest.h>

#include <string>

#include "workbook/model/typed_input.h"

namespace z4400 {
namespace {

TEST(DisplayTextTest, ShowsValuesThroughTheirFormat) {
  const DateValue march_5{*DateSerial(2007, 3, 5)};
  const struct {
    CellValue value;
    std::string format;
    std::string shown;
  } kCases[] = {
      {CellValue(march_5), "dd/mmmm/yyyy", "05/March/2007"},
      {CellValue(march_5), "d/m/yy", "5/3/07"},
      {CellValue(march_5), "mmm d, yyyy", "Mar 5, 2007"},
      {CellValue(march_5), "General", "2007-03-05"},
      {CellValue(DateValue{*DateSerial(1900, 1, 1)}), "yyyy-mm-dd", "1900-01-01"},
      {CellValue(DateValue{60}), "yyyy-mm-dd", "1900-02-29"},  // the phantom day
      {CellValue(DateValue{*DateSerial(1900, 3, 1)}), "yyyy-mm-dd", "1900-03-01"},
      {CellValue(DateValue{*DateSerial(2024, 12, 31)}), "dd/mmmm/yyyy", "31/December/2024"},
      {CellValue(0.5), "General", "0.5"},
      {CellValue(1.23456), "0.###", "1.235"},
      {CellValue(-10.0), "0.##", "-10."},  // the point stays without decimals
      {CellValue(2.0), "##.#", "2."},
      {CellValue(3.0), "##", "3"},
      {CellValue(524750.0), "0.000", "524750.000"},  // "0" places always show
      {CellValue(-0.5), "0.000", "-0.500"},
      {CellValue(93.13333333333), "0.#########", "93.133333333"},
      {CellValue(909.75), "0.#########", "909.75"},
      {CellValue(1e15), "General", "1.00000E+15"},
      {CellValue("dBm"), "0.###", "dBm"},
      {CellValue(true), "General", "TRUE"},
      {CellValue(), "General", ""},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(DisplayText(c.value, c.format), c.shown) << c.format << " " << c.value.ToText();
  }
}

TEST(DisplayTextTest, CountsCharactersNotBytes) {
  EXPECT_EQ(CharacterCount("ファイルが不正です"), 9u);
  EXPECT_EQ(CharacterCount("Résumé"), 6u);
  EXPECT_EQ(CharacterCount(""), 0u);
}

}  // namespace
}  // namespace z4400
