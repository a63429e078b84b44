#include "common/numeric_text.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// Integral value of `value` rounded half to even, checked against [low, high].
double RoundHalfEven(double value, double low, double high, const char* width) {
  if (!std::isfinite(value)) {
    throw RuntimeFailure(std::string("value is not a number for a ") + width + " field");
  }
  const double rounded = std::nearbyint(value);  // default mode: to nearest, ties to even
  if (rounded < low || rounded > high) {
    throw RuntimeFailure(std::string("overflow of a ") + width + " field");
  }
  return rounded;
}

}  // namespace

double NumericValue(std::string_view text) {
  size_t pos = 0;
  while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
  bool negative = false;
  if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
    negative = text[pos] == '-';
    ++pos;
  }
  const size_t start = pos;
  size_t digits = 0;
  // Decimal exponent of the first significant digit, to tell an overflow
  // from an underflow when the value does not fit a double.
  long long lead_exponent = 0;
  bool seen_significant = false;
  long long integer_digits = 0;
  while (pos < text.size() && IsDigit(text[pos])) {
    if (text[pos] != '0' && !seen_significant) seen_significant = true;
    if (seen_significant) ++integer_digits;
    ++pos;
    ++digits;
  }
  long long leading_fraction_zeros = 0;
  if (pos < text.size() && text[pos] == '.') {
    ++pos;
    while (pos < text.size() && IsDigit(text[pos])) {
      if (!seen_significant) {
        if (text[pos] == '0') {
          ++leading_fraction_zeros;
        } else {
          seen_significant = true;
        }
      }
      ++pos;
      ++digits;
    }
  }
  if (digits == 0) return 0;
  const size_t mantissa_end = pos;
  long long exponent = 0;
  if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
    size_t e = pos + 1;
    bool exponent_negative = false;
    if (e < text.size() && (text[e] == '+' || text[e] == '-')) {
      exponent_negative = text[e] == '-';
      ++e;
    }
    if (e < text.size() && IsDigit(text[e])) {
      while (e < text.size() && IsDigit(text[e])) {
        if (exponent < 100000) exponent = exponent * 10 + (text[e] - '0');
        ++e;
      }
      if (exponent_negative) exponent = -exponent;
      pos = e;
    }
  }
  const std::string_view literal =
      text.substr(start, (pos > mantissa_end ? pos : mantissa_end) - start);
  double value = 0;
  const auto [end, error] = std::from_chars(literal.data(), literal.data() + literal.size(), value,
                                            std::chars_format::general);
  if (error == std::errc::result_out_of_range) {
    if (!seen_significant) return 0;
    lead_exponent = integer_digits > 0 ? integer_digits - 1 : -(leading_fraction_zeros + 1);
    if (lead_exponent + exponent > 0)
      throw RuntimeFailure("number too large: " + std::string(literal.substr(0, 40)));
    return negative ? -0.0 : 0.0;
  }
  if (error != std::errc()) return 0;
  return negative ? -value : value;
}

int32_t RoundToInt32(double value) {
  return static_cast<int32_t>(RoundHalfEven(value, std::numeric_limits<int32_t>::min(),
                                            std::numeric_limits<int32_t>::max(), "32-bit"));
}

int16_t RoundToInt16(double value) {
  return static_cast<int16_t>(RoundHalfEven(value, std::numeric_limits<int16_t>::min(),
                                            std::numeric_limits<int16_t>::max(), "16-bit"));
}

double CheckedDivide(double numerator, double denominator) {
  if (denominator == 0) throw RuntimeFailure("division by zero");
  return CheckedFinite(numerator / denominator, "quotient");
}

double CheckedFinite(double value, const char* what) {
  if (!std::isfinite(value)) throw RuntimeFailure(std::string("overflow in ") + what);
  return value;
}

}  // namespace z4400
