#include "workbook/model/name_compare.h"

namespace z4400 {

std::string AsciiLower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool SameName(std::string_view a, std::string_view b) {
  return a.size() == b.size() && AsciiLower(a) == AsciiLower(b);
}

}  // namespace z4400
