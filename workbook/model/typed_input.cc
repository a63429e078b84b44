#include "workbook/model/typed_input.h"

#include <charconv>
#include <cmath>
#include <string>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Reads a run of 1 to `max_digits` digits at `text[*i]`.
std::optional<int> ReadDigits(std::string_view text, std::size_t* i, std::size_t max_digits) {
  const std::size_t start = *i;
  int value = 0;
  while (*i < text.size() && IsDigit(text[*i]) && *i - start < max_digits) {
    value = value * 10 + (text[*i] - '0');
    ++*i;
  }
  if (*i == start || (*i < text.size() && IsDigit(text[*i]))) return std::nullopt;
  return value;
}

// sign? (digits ("." digits?)? | "." digits) (("e"|"E") sign? digits)?
std::optional<double> ReadNumber(std::string_view text) {
  std::size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
  std::size_t mantissa_digits = 0;
  while (i < text.size() && IsDigit(text[i])) ++i, ++mantissa_digits;
  if (i < text.size() && text[i] == '.') {
    ++i;
    while (i < text.size() && IsDigit(text[i])) ++i, ++mantissa_digits;
  }
  if (mantissa_digits == 0) return std::nullopt;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    std::size_t exponent_digits = 0;
    while (i < text.size() && IsDigit(text[i])) ++i, ++exponent_digits;
    if (exponent_digits == 0) return std::nullopt;
  }
  if (i != text.size()) return std::nullopt;
  // from_chars takes no leading "+" and wants a digit or "." after the sign.
  std::string_view digits = text;
  if (digits.front() == '+') digits.remove_prefix(1);
  double value = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec != std::errc() || result.ptr != digits.data() + digits.size() ||
      !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

// yyyy(-|/)m(-|/)d [h:mm[:ss]]
std::optional<double> ReadDate(std::string_view text) {
  std::size_t i = 0;
  const std::size_t year_start = i;
  const std::optional<int> year = ReadDigits(text, &i, 4);
  if (!year || i - year_start != 4 || i >= text.size()) return std::nullopt;
  const char separator = text[i];
  if (separator != '-' && separator != '/') return std::nullopt;
  ++i;
  const std::optional<int> month = ReadDigits(text, &i, 2);
  if (!month || i >= text.size() || text[i] != separator) return std::nullopt;
  ++i;
  const std::optional<int> day = ReadDigits(text, &i, 2);
  if (!day) return std::nullopt;
  std::optional<double> serial = DateSerial(*year, *month, *day);
  if (!serial) return std::nullopt;
  if (i == text.size()) return serial;
  if (!IsBlank(text[i])) return std::nullopt;
  while (i < text.size() && IsBlank(text[i])) ++i;
  const std::optional<int> hours = ReadDigits(text, &i, 2);
  if (!hours || i >= text.size() || text[i] != ':') return std::nullopt;
  ++i;
  const std::size_t minutes_start = i;
  const std::optional<int> minutes = ReadDigits(text, &i, 2);
  if (!minutes || i - minutes_start != 2) return std::nullopt;
  int seconds = 0;
  if (i < text.size()) {
    if (text[i] != ':') return std::nullopt;
    ++i;
    const std::size_t seconds_start = i;
    const std::optional<int> read = ReadDigits(text, &i, 2);
    if (!read || i - seconds_start != 2 || i != text.size()) return std::nullopt;
    seconds = *read;
  }
  if (*hours > 23 || *minutes > 59 || seconds > 59) return std::nullopt;
  return *serial + (*hours * 3600 + *minutes * 60 + seconds) / 86400.0;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view upper) {
  if (text.size() != upper.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 32) : text[i];
    if (c != upper[i]) return false;
  }
  return true;
}

// Days from 1970-01-01 of a proleptic Gregorian date.
long long DaysFromCivil(int year, int month, int day) {
  year -= month <= 2 ? 1 : 0;
  const long long era = (year >= 0 ? year : year - 399) / 400;
  const long long year_of_era = year - era * 400;
  const long long day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  const long long day_of_era =
      year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
  return era * 146097 + day_of_era - 719468;
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

}  // namespace

std::optional<double> DateSerial(int year, int month, int day) {
  static constexpr int kDaysInMonth[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (year < 1900 || year > 9999 || month < 1 || month > 12 || day < 1) return std::nullopt;
  const int days = kDaysInMonth[month - 1] + (month == 2 && IsLeapYear(year) ? 1 : 0);
  if (day > days) return std::nullopt;
  // Serial 1 is 1900-01-01; from 1900-03-01 on the count includes the
  // spreadsheet's phantom 1900-02-29, so those dates count from 1899-12-30.
  const long long from_epoch = DaysFromCivil(year, month, day) - DaysFromCivil(1899, 12, 30);
  return static_cast<double>(from_epoch < 61 ? from_epoch - 1 : from_epoch);
}

CellValue ParseTypedInput(std::string_view text) {
  if (text.empty()) return CellValue();
  // A leading apostrophe keeps the rest as text, as when typing it.
  if (text.front() == '\'') return CellValue(std::string(text.substr(1)));
  const std::string_view trimmed = Trim(text);
  if (!trimmed.empty()) {
    if (std::optional<double> number = ReadNumber(trimmed)) return CellValue(*number);
    if (std::optional<double> serial = ReadDate(trimmed)) return CellValue(DateValue{*serial});
    if (EqualsIgnoringCase(trimmed, "TRUE")) return CellValue(true);
    if (EqualsIgnoringCase(trimmed, "FALSE")) return CellValue(false);
  }
  return CellValue(std::string(text));
}

double NumberOf(const CellValue& value) {
  switch (value.Kind()) {
    case CellKind::kEmpty:
      return 0;
    case CellKind::kNumber:
    case CellKind::kDate:
      return value.Number();
    case CellKind::kBoolean:
      return value.Boolean() ? -1 : 0;
    case CellKind::kText:
      break;
  }
  const CellValue typed = ParseTypedInput(value.Text());
  if (typed.IsNumber() || typed.IsDate()) return typed.Number();
  throw RuntimeFailure("Type mismatch");
}

}  // namespace z4400
