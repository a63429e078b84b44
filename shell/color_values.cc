#include "shell/color_values.h"

#include <cmath>
#include <string>

#include "common/numeric_text.h"
#include "common/runtime_failure.h"
#include "driver/settings.h"

namespace z4400 {
namespace {

constexpr int32_t kPartMaximum = 256;

/// True when the text's number (after leading blanks and tabs) is negative.
bool StartsNegative(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first != std::string_view::npos && text[first] == '-';
}

}  // namespace

ColorParts SplitColor(int32_t color) {
  return ColorParts{color % 256, (color / 256) % 256, color / 65536};
}

int32_t PackParts(const ColorParts& parts) { return PackColor(parts.red, parts.green, parts.blue); }

int32_t ColorPartFromText(std::string_view text) {
  int32_t value = 0;
  try {
    value = RoundToInt16(NumericValue(text));
  } catch (const RuntimeFailure&) {
    // Beyond 16 bits (or beyond a double): as far out as the sign says.
    return StartsNegative(text) ? 0 : kPartMaximum;
  }
  if (value < 0) return 0;
  if (value > kPartMaximum) return kPartMaximum;
  return value;
}

int32_t ColorFromTexts(std::string_view red, std::string_view green, std::string_view blue) {
  return PackParts(
      ColorParts{ColorPartFromText(red), ColorPartFromText(green), ColorPartFromText(blue)});
}

const std::array<int32_t, kPaletteSize>& PaletteColors() {
  // Six rows of eight: pale, light, full, deep and dark shades of red,
  // orange, yellow, green, cyan, blue, violet and magenta, then greys from
  // white to black.
  static constexpr std::array<int32_t, kPaletteSize> kPalette = {
      PackColor(255, 204, 204), PackColor(255, 229, 204), PackColor(255, 255, 204),
      PackColor(204, 255, 204), PackColor(204, 255, 255), PackColor(204, 229, 255),
      PackColor(229, 204, 255), PackColor(255, 204, 255),  //
      PackColor(255, 128, 128), PackColor(255, 191, 128), PackColor(255, 255, 128),
      PackColor(128, 255, 128), PackColor(128, 255, 255), PackColor(128, 170, 255),
      PackColor(191, 128, 255), PackColor(255, 128, 255),  //
      PackColor(255, 0, 0),     PackColor(255, 128, 0),   PackColor(255, 255, 0),
      PackColor(0, 255, 0),     PackColor(0, 255, 255),   PackColor(0, 0, 255),
      PackColor(128, 0, 255),   PackColor(255, 0, 255),  //
      PackColor(192, 0, 0),     PackColor(192, 96, 0),    PackColor(192, 192, 0),
      PackColor(0, 160, 0),     PackColor(0, 160, 160),   PackColor(0, 64, 192),
      PackColor(96, 0, 192),    PackColor(192, 0, 192),  //
      PackColor(128, 0, 0),     PackColor(128, 64, 0),    PackColor(128, 128, 0),
      PackColor(0, 96, 0),      PackColor(0, 96, 96),     PackColor(0, 0, 128),
      PackColor(64, 0, 128),    PackColor(128, 0, 128),  //
      PackColor(255, 255, 255), PackColor(224, 224, 224), PackColor(192, 192, 192),
      PackColor(160, 160, 160), PackColor(128, 128, 128), PackColor(96, 96, 96),
      PackColor(48, 48, 48),    PackColor(0, 0, 0),
  };
  return kPalette;
}

}  // namespace z4400
