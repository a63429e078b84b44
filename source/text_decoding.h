// Turning the bytes of an instrument's CSV export into the UTF-8 text that
// the rest of the converter (and the workbook) works with.
#ifndef Z4400_SOURCE_TEXT_DECODING_H_
#define Z4400_SOURCE_TEXT_DECODING_H_

#include <string>
#include <string_view>

namespace z4400 {

/// True when `bytes` is well-formed UTF-8 (no overlong forms, no surrogates).
bool IsValidUtf8(std::string_view bytes);

/// The text of a CSV export as UTF-8: a leading UTF-8 byte order mark is
/// dropped; well-formed UTF-8 is kept as it is; anything else is read as
/// Latin-1 (ISO 8859-1), one character per byte, as the instrument writes
/// its micro sign.
std::string DecodeCsvText(std::string_view bytes);

}  // namespace z4400

#endif  // Z4400_SOURCE_TEXT_DECODING_H_
