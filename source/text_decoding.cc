#include "source/text_decoding.h"

#include <cstdint>

namespace z4400 {

bool IsValidUtf8(std::string_view bytes) {
  size_t i = 0;
  const size_t n = bytes.size();
  while (i < n) {
    const auto c = static_cast<uint8_t>(bytes[i]);
    if (c < 0x80) {
      ++i;
      continue;
    }
    int length = 0;
    uint32_t code = 0;
    if (c >= 0xC2 && c <= 0xDF) {
      length = 2;
      code = c & 0x1F;
    } else if (c >= 0xE0 && c <= 0xEF) {
      length = 3;
      code = c & 0x0F;
    } else if (c >= 0xF0 && c <= 0xF4) {
      length = 4;
      code = c & 0x07;
    } else {
      return false;
    }
    if (i + length > n) return false;
    for (int k = 1; k < length; ++k) {
      const auto next = static_cast<uint8_t>(bytes[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    if ((length == 3 && code < 0x800) || (length == 4 && (code < 0x10000 || code > 0x10FFFF)) ||
        (code >= 0xD800 && code <= 0xDFFF)) {
      return false;
    }
    i += length;
  }
  return true;
}

std::string DecodeCsvText(std::string_view bytes) {
  constexpr std::string_view kBom = "\xEF\xBB\xBF";
  if (bytes.substr(0, kBom.size()) == kBom) bytes.remove_prefix(kBom.size());
  if (IsValidUtf8(bytes)) return std::string(bytes);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char byte : bytes) {
    const auto c = static_cast<uint8_t>(byte);
    if (c < 0x80) {
      text.push_back(byte);
    } else {
      text.push_back(static_cast<char>(0xC0 | (c >> 6)));
      text.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }
  return text;
}

}  // namespace z4400
