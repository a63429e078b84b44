#include "workbook/model/display_text.h"

#include <cmath>
#include <cstdio>

namespace z4400 {
namespace {

constexpr const char* kMonthNames[] = {"January",   "February", "March",    "April",
                                       "May",       "June",     "July",     "August",
                                       "September", "October",  "November", "December"};

struct CivilDate {
  int year;
  int month;
  int day;
};

// The calendar date of a day serial (1 = 1900-01-01; 60 is the phantom
// 1900-02-29, shown as such).
CivilDate DateOfSerial(double serial) {
  long long days = static_cast<long long>(std::floor(serial));
  if (days == 60) return {1900, 2, 29};
  if (days < 60) ++days;  // before the phantom day the count is one short
  // Days since 1970-01-01, then the civil-from-days algorithm.
  long long z = days - 25569 + 719468;
  const long long era = (z >= 0 ? z : z - 146096) / 146097;
  const long long doe = z - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  const int day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  const int year = static_cast<int>(yoe + era * 400 + (month <= 2 ? 1 : 0));
  return {year, month, day};
}

std::string FormatDate(double serial, std::string_view format) {
  if (format.empty() || format == "General") format = "yyyy-mm-dd";
  const CivilDate date = DateOfSerial(serial);
  std::string text;
  std::size_t i = 0;
  while (i < format.size()) {
    const char c = static_cast<char>(format[i] | 0x20);
    std::size_t run = 1;
    while (i + run < format.size() && static_cast<char>(format[i + run] | 0x20) == c) ++run;
    char buffer[16];
    if (c == 'd') {
      std::snprintf(buffer, sizeof buffer, run >= 2 ? "%02d" : "%d", date.day);
      text += buffer;
    } else if (c == 'm') {
      if (run >= 4) {
        text += kMonthNames[date.month - 1];
      } else if (run == 3) {
        text += std::string_view(kMonthNames[date.month - 1]).substr(0, 3);
      } else {
        std::snprintf(buffer, sizeof buffer, run == 2 ? "%02d" : "%d", date.month);
        text += buffer;
      }
    } else if (c == 'y') {
      std::snprintf(buffer, sizeof buffer, run >= 3 ? "%04d" : "%02d",
                    run >= 3 ? date.year : date.year % 100);
      text += buffer;
    } else if (format[i] != '\\' && format[i] != '"') {
      text.append(format.substr(i, run));
    }
    i += run;
  }
  return text;
}

std::string FormatNumber(double number, std::string_view format) {
  if (format.empty() || format == "General") {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.10f", number);
    std::string text = buffer;
    while (text.back() == '0') text.pop_back();
    if (text.back() == '.') text.pop_back();
    if (text.size() > 11) {
      std::snprintf(buffer, sizeof buffer, "%.5E", number);
      text = buffer;
    }
    return text;
  }
  // Decimals: "0" places always show, "#" places only when not zero; a
  // format with a point keeps it even when no decimal is left ("0.##"
  // shows 60 as "60.").
  int required = 0;
  int optional = 0;
  const std::size_t point = format.find('.');
  if (point != std::string_view::npos) {
    for (std::size_t i = point + 1; i < format.size() && (format[i] == '0' || format[i] == '#');
         ++i) {
      (format[i] == '0' ? required : optional) += 1;
    }
  }
  char buffer[400];
  std::snprintf(buffer, sizeof buffer, "%.*f", required + optional, number);
  std::string text = buffer;
  if (point == std::string_view::npos) return text;
  if (required + optional == 0) return text + ".";
  const std::size_t keep = text.find('.') + 1 + static_cast<std::size_t>(required);
  while (text.size() > keep && text.back() == '0') text.pop_back();
  return text;
}

}  // namespace

std::size_t CharacterCount(std::string_view text) {
  std::size_t count = 0;
  for (const char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++count;
  }
  return count;
}

std::string DisplayText(const CellValue& value, std::string_view number_format) {
  switch (value.Kind()) {
    case CellKind::kEmpty:
      return "";
    case CellKind::kText:
      return value.Text();
    case CellKind::kBoolean:
      return value.Boolean() ? "TRUE" : "FALSE";
    case CellKind::kDate:
      return FormatDate(value.Number(), number_format);
    case CellKind::kNumber:
      break;
  }
  return FormatNumber(value.Number(), number_format);
}

}  // namespace z4400
