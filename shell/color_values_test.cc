#include "shell/color_values.h"

#include <gtest/gtest.h>

#include <set>

#include "driver/settings.h"

namespace z4400 {
namespace {

TEST(ColorValuesTest, TypedPartsAreClampedToZeroAnd256) {
  struct Case {
    const char* text;
    int32_t part;
  };
  const Case cases[] = {
      {"0", 0},       {"128", 128},   {"255", 255},  {"256", 256},   {"257", 256},
      {"-1", 0},      {"-300", 0},    {"", 0},       {"abc", 0},     {"12abc", 12},
      {" 7", 7},      {"2.5", 2},     {"3.5", 4},    {"255.5", 256}, {"1e2", 100},
      {"32767", 256}, {"99999", 256}, {"-99999", 0}, {"1e400", 256}, {"-1e400", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(ColorPartFromText(c.text), c.part);
  }
  // The three boxes packed as they are clamped, a 256 carrying into the
  // next part.
  EXPECT_EQ(ColorFromTexts("10", "20", "30"), PackColor(10, 20, 30));
  EXPECT_EQ(ColorFromTexts("300", "-5", "x"), 256);
}

TEST(ColorValuesTest, SplittingUndoesPacking) {
  for (const int32_t color : {0, 255, 256, 65535, 65536, 16777215, 16777216}) {
    SCOPED_TRACE(color);
    const ColorParts parts = SplitColor(color);
    EXPECT_EQ(PackParts(parts), color);
    EXPECT_LT(parts.red, 256);
    EXPECT_LT(parts.green, 256);
  }
  for (const int32_t color : kDefaultChartColors) {
    EXPECT_EQ(SplitColor(color), (ColorParts{color & 0xFF, (color >> 8) & 0xFF, color >> 16}));
  }
}

TEST(ColorValuesTest, PaletteHoldsDistinctColours) {
  const auto& palette = PaletteColors();
  EXPECT_EQ(std::set<int32_t>(palette.begin(), palette.end()).size(), palette.size());
  for (const int32_t color : palette) {
    const ColorParts parts = SplitColor(color);
    EXPECT_LE(parts.blue, 255) << color;
  }
}

}  // namespace
}  // namespace z4400
