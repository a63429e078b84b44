// An estimate of the text a cell shows for its value and number format,
// enough to size a column to its contents (`AutoFit`).
#ifndef Z4400_WORKBOOK_MODEL_DISPLAY_TEXT_H_
#define Z4400_WORKBOOK_MODEL_DISPLAY_TEXT_H_

#include <string>
#include <string_view>

#include "workbook/model/cell_value.h"

namespace z4400 {

/// The text a cell would show: texts as they are, booleans "TRUE"/"FALSE",
/// dates through the day, month and year codes of `number_format` ("d",
/// "dd", "m", "mm", "mmm", "mmmm", "yy", "yyyy"; other characters literal),
/// numbers with at most the decimals the format allows ("0.###" → three,
/// "General" → up to ten significant digits).
std::string DisplayText(const CellValue& value, std::string_view number_format);

/// Number of characters of a UTF-8 text.
std::size_t CharacterCount(std::string_view text);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_DISPLAY_TEXT_H_
