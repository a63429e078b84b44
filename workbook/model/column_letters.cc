#include "workbook/model/column_letters.h"

#include <cctype>
#include <cstdint>

#include "common/checked16.h"
#include "common/runtime_failure.h"

namespace z4400 {
namespace {

char Character(int code) {
  if (code < 0 || code > 255) throw RuntimeFailure("Invalid procedure call or argument");
  return static_cast<char>(static_cast<unsigned char>(code));
}

}  // namespace

std::string ExcelColNumber2ColLetter(int column) {
  int k = Checked16(static_cast<long long>(Checked16(column)) - 1);
  std::string letters;
  while (k >= 26) {
    letters.insert(letters.begin(), Character('A' + k % 26));
    k = k / 26 - 1;
  }
  letters.insert(letters.begin(), Character('A' + k));
  return letters;
}

int ExcelColLetter2ColNumber(std::string_view letters) {
  int result = 0;
  for (const char c : letters) {
    const int code = std::toupper(static_cast<unsigned char>(c));
    result = Checked16(static_cast<long long>(result) * 26 + (code - 64));
  }
  return result;
}

std::string ExcelDecallageColumn(std::string_view letters, int offset) {
  return ExcelColNumber2ColLetter(
      Checked16(static_cast<long long>(ExcelColLetter2ColNumber(letters)) + Checked16(offset)));
}

}  // namespace z4400
