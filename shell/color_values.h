// Chart colours as the settings store them (red + 256 × green + 65536 ×
// blue) and as the colour picker shows them: three parts, each with a slider
// and a text box the user may type into.
#ifndef Z4400_SHELL_COLOR_VALUES_H_
#define Z4400_SHELL_COLOR_VALUES_H_

#include <array>
#include <cstdint>
#include <string_view>

namespace z4400 {

/// Number of fixed colours of the colour picker's palette.
inline constexpr int kPaletteSize = 48;

/// Columns of the palette grid.
inline constexpr int kPaletteColumns = 8;

/// The parts of a packed colour.
struct ColorParts {
  int32_t red = 0;
  int32_t green = 0;
  int32_t blue = 0;
  bool operator==(const ColorParts&) const = default;
};

/// Splits a packed colour: red = c mod 256, green = (c div 256) mod 256,
/// blue = c div 65536 (so blue may exceed 255 for a colour packed from a
/// part of 256).
ColorParts SplitColor(int32_t color);

/// Packs three parts as red + 256 × green + 65536 × blue, as they stand.
int32_t PackParts(const ColorParts& parts);

/// The value a colour-part text box stands for: the numeric value of the
/// text (the number at its start, "." as decimal point, 0 when none) as a
/// 16-bit integer rounded half to even; a negative value gives 0 and a value
/// above 256 gives 256. A number beyond the 16-bit range counts as 0 when
/// negative and 256 otherwise.
int32_t ColorPartFromText(std::string_view text);

/// The colour rebuilt from the three text boxes.
int32_t ColorFromTexts(std::string_view red, std::string_view green, std::string_view blue);

/// The palette of the colour picker: 48 distinct packed colours, row by row
/// (8 per row), light and dark shades of the rainbow and a row of greys.
const std::array<int32_t, kPaletteSize>& PaletteColors();

}  // namespace z4400

#endif  // Z4400_SHELL_COLOR_VALUES_H_
