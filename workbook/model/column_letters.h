// Column letters of the sheets: the conversions between a column number and
// its letters that every sheet writer uses, kept with their historical
// behaviour for odd input.
#ifndef Z4400_WORKBOOK_MODEL_COLUMN_LETTERS_H_
#define Z4400_WORKBOOK_MODEL_COLUMN_LETTERS_H_

#include <string>
#include <string_view>

namespace z4400 {

/// The letters of column `column` (1 → "A", 27 → "AA", 703 → "AAA"). No
/// check of the column: 0 gives the character with code 64 ("@") and smaller
/// values the characters before it. Throws `RuntimeFailure` ("Overflow")
/// when `column` or `column` − 1 does not fit 16 bits signed, and
/// ("Invalid procedure call") when a character code would fall below 0.
std::string ExcelColNumber2ColLetter(int column);

/// The number of the column named `letters` ("A" and "a" → 1, "AZ" → 52,
/// "" → 0). Characters are not validated: each counts as its upper-case
/// code − 64. Throws `RuntimeFailure` ("Overflow") when the result leaves
/// the 16-bit signed range.
int ExcelColLetter2ColNumber(std::string_view letters);

/// The letters of the column `offset` columns to the right of `letters`
/// (left when negative): ("B", 3) → "E", ("Z", 1) → "AA". Overflow of the
/// 16-bit sum throws `RuntimeFailure`.
std::string ExcelDecallageColumn(std::string_view letters, int offset);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_COLUMN_LETTERS_H_
