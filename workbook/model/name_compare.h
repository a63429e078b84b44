// Comparing names of sheets and workbooks the spreadsheet's way: without
// regard to the case of ASCII letters.
#ifndef Z4400_WORKBOOK_MODEL_NAME_COMPARE_H_
#define Z4400_WORKBOOK_MODEL_NAME_COMPARE_H_

#include <string>
#include <string_view>

namespace z4400 {

/// `text` with ASCII letters in lower case; other bytes unchanged.
std::string AsciiLower(std::string_view text);

/// True when `a` and `b` are equal once ASCII letters are in lower case.
bool SameName(std::string_view a, std::string_view b);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_NAME_COMPARE_H_
