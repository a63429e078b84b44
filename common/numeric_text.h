// Numbers in instrument files: the value of a parameter text as the
// instrument wrote it, and the rounding of values into the integer widths of
// the measurement records.
#ifndef Z4400_COMMON_NUMERIC_TEXT_H_
#define Z4400_COMMON_NUMERIC_TEXT_H_

#include <cstdint>
#include <string_view>

namespace z4400 {

/// The number at the start of `text`: optional blanks or tabs, an optional
/// sign, digits with "." as the decimal point (whatever the user's locale)
/// and an optional exponent. Text that does not begin with a number gives 0.
/// A number too large for a double throws RuntimeFailure; one too small
/// gives 0.
double NumericValue(std::string_view text);

/// `value` rounded half to even into 32 bits; RuntimeFailure when it does
/// not fit (or is not a number).
int32_t RoundToInt32(double value);

/// `value` rounded half to even into 16 bits; RuntimeFailure when it does
/// not fit (or is not a number).
int16_t RoundToInt16(double value);

/// `numerator / denominator`; RuntimeFailure when the denominator is 0 or
/// the quotient overflows, as the readers' arithmetic has always stopped
/// there rather than carrying infinities into the workbook.
double CheckedDivide(double numerator, double denominator);

/// `value` itself; RuntimeFailure when it is infinite or not a number.
double CheckedFinite(double value, const char* what);

}  // namespace z4400

#endif  // Z4400_COMMON_NUMERIC_TEXT_H_
