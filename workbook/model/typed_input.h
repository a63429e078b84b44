// How the workbook takes a text written into a cell: like a user typing it,
// a text that reads as a number, a date or a boolean is stored as that value
// (so the cell's number format applies to it), anything else stays text.
#ifndef Z4400_WORKBOOK_MODEL_TYPED_INPUT_H_
#define Z4400_WORKBOOK_MODEL_TYPED_INPUT_H_

#include <optional>
#include <string_view>

#include "workbook/model/cell_value.h"

namespace z4400 {

/// The value a cell stores when `text` is written to it. Accepted forms,
/// blanks around them ignored:
/// - numbers: optional sign, digits with "." as decimal point (".5" and
///   "5." too), optional exponent ("1E6", "2.5e-3"); no thousands
///   separators, no percent;
/// - dates: year-month-day with "-" or "/" ("2007-03-05", "2007/3/5"), a
///   four-digit year from 1900 to 9999, optionally followed by a blank and a
///   time "hh:mm" or "hh:mm:ss";
/// - booleans: "TRUE" or "FALSE" in any case.
/// A text starting with an apostrophe is stored as the text after it
/// ("'123" → the text "123").
/// The empty text gives the empty value (the cell is cleared); any other
/// text is returned as text unchanged, blanks included.
CellValue ParseTypedInput(std::string_view text);

/// The day serial of a calendar date (1900-01-01 = 1, counting the phantom
/// 1900-02-29 of the spreadsheet's calendar, so 1900-03-01 = 61); nothing
/// when the date does not exist or lies outside 1900-01-01 .. 9999-12-31.
std::optional<double> DateSerial(int year, int month, int day);

/// `value` as the spreadsheet would convert it for arithmetic: empty is 0,
/// a boolean is -1 (true) or 0, a date is its serial, a text must read as a
/// number ("." decimal point). Throws `RuntimeFailure` ("Type mismatch")
/// for any other text.
double NumberOf(const CellValue& value);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_TYPED_INPUT_H_
