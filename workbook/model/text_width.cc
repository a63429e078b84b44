#include "workbook/model/text_width.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "workbook/model/cell_range.h"
#include "workbook/model/display_text.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

/// Advance widths of the printable ASCII characters (space to "~") in the
/// regular and bold faces of Calibri, in 1/2048 em; a digit is 1038.
constexpr std::array<uint16_t, 95> kRegular = {
    463,  667,  821,  1020, 1038, 1464, 1397, 452,  621,  621,  1020, 1020, 511,  627,  517,  791,
    1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 548,  548,  1020, 1020, 1020, 949,
    1831, 1185, 1114, 1092, 1260, 1000, 941,  1292, 1276, 516,  653,  1064, 861,  1751, 1322, 1356,
    1058, 1378, 1112, 941,  998,  1314, 1162, 1822, 1063, 998,  959,  628,  791,  628,  1020, 1020,
    596,  981,  1076, 866,  1076, 1019, 625,  964,  1076, 470,  490,  931,  470,  1636, 1076, 1080,
    1076, 1076, 714,  801,  686,  1076, 925,  1464, 887,  927,  809,  644,  943,  644,  1020};
constexpr std::array<uint16_t, 95> kBold = {
    463,  667,  898,  1020, 1038, 1493, 1443, 478,  638,  638,  1020, 1020, 528,  627,  547,  880,
    1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 1038, 565,  565,  1020, 1020, 1020, 949,
    1840, 1241, 1148, 1084, 1291, 999,  940,  1305, 1292, 546,  678,  1120, 866,  1790, 1349, 1385,
    1090, 1405, 1153, 968,  1014, 1337, 1211, 1856, 1128, 1064, 979,  665,  880,  665,  1020, 1020,
    615,  1011, 1099, 857,  1099, 1031, 648,  971,  1099, 503,  523,  983,  503,  1666, 1099, 1101,
    1099, 1099, 728,  817,  710,  1099, 969,  1526, 941,  970,  814,  704,  973,  704,  1020};
constexpr double kDigitAdvance = 1038;
/// Characters beyond ASCII: a little wider than a digit; East Asian wide
/// characters (from U+1100) two digits.
constexpr double kOtherCharacter = 1.2;
constexpr char32_t kFirstWideCharacter = 0x1100;
constexpr double kWideCharacter = 2;

/// A spreadsheet draws a column of width w about w + 5/7 digits wide and
/// keeps a margin of about 1.9 digits around a cell's text; its font may
/// draw digits up to 1 % wider than the width unit.
constexpr double kDigitSlack = 1.01;
constexpr double kCellMargin = 1.25;

/// The code point starting at `text[i]`, advancing `i` past it.
char32_t NextCodePoint(std::string_view text, std::size_t& i) {
  const auto lead = static_cast<unsigned char>(text[i++]);
  if (lead < 0x80) return lead;
  int extra = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  char32_t code = lead & (0x3F >> extra);
  while (extra-- > 0 && i < text.size() && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) {
    code = (code << 6) | (static_cast<unsigned char>(text[i++]) & 0x3F);
  }
  return code;
}

}  // namespace

double TextWidthInDigits(std::string_view text, bool bold) {
  const std::array<uint16_t, 95>& advances = bold ? kBold : kRegular;
  double digits = 0;
  for (std::size_t i = 0; i < text.size();) {
    const char32_t code = NextCodePoint(text, i);
    if (code >= 0x20 && code < 0x7F) {
      digits += advances[code - 0x20] / kDigitAdvance;
    } else if (code >= kFirstWideCharacter) {
      digits += kWideCharacter;
    } else if (code >= 0x80) {
      digits += kOtherCharacter;
    }
  }
  return digits;
}

double ColumnWidthToShow(double digits) { return std::ceil(digits * kDigitSlack + kCellMargin); }

double ColumnWidthForCell(const Worksheet& sheet, int row, int column) {
  const CellValue value = sheet.ValueAt(row, column);
  if (value.Kind() == CellKind::kEmpty) return 0;
  const CellStyle& style = sheet.Parent().Styles().Get(sheet.StyleAt(row, column));
  return ColumnWidthToShow(TextWidthInDigits(DisplayText(value, style.number_format), style.bold));
}

void WidenColumnToFit(Worksheet& sheet, int column, int first_row, int last_row) {
  double width = sheet.ColumnWidthAt(column);
  for (int row = first_row; row <= last_row; ++row) {
    width = std::max(width, ColumnWidthForCell(sheet, row, column));
  }
  if (width > sheet.ColumnWidthAt(column)) {
    sheet.Columns(column).SetColumnWidth(std::min(width, kMaxColumnWidth));
  }
}

}  // namespace z4400
