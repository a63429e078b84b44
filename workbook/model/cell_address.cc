#include "workbook/model/cell_address.h"

#include <algorithm>

namespace z4400 {
namespace {

// One side of an address: column letters and/or a row number, each optional
// but not both absent.
struct Corner {
  int column = 0;  // 0 when the side names whole rows
  int row = 0;     // 0 when the side names whole columns
};

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::optional<Corner> ParseCorner(std::string_view text) {
  Corner corner;
  std::size_t i = 0;
  if (i < text.size() && text[i] == '$') ++i;
  const std::size_t letters_start = i;
  while (i < text.size() && IsLetter(text[i])) {
    if (i - letters_start >= 3) return std::nullopt;
    corner.column = corner.column * 26 + ((text[i] | 0x20) - 'a' + 1);
    ++i;
  }
  const bool has_letters = i > letters_start;
  if (has_letters && i < text.size() && text[i] == '$') ++i;
  const std::size_t digits_start = i;
  while (i < text.size() && IsDigit(text[i])) {
    if (i - digits_start >= 7) return std::nullopt;
    corner.row = corner.row * 10 + (text[i] - '0');
    ++i;
  }
  const bool has_digits = i > digits_start;
  if (i != text.size() || (!has_letters && !has_digits)) return std::nullopt;
  if (has_digits && (corner.row < 1 || corner.row > kMaxRows)) return std::nullopt;
  if (has_letters && corner.column > kMaxColumns) return std::nullopt;
  return corner;
}

}  // namespace

std::optional<CellArea> ParseCellAddress(std::string_view address) {
  const std::size_t colon = address.find(':');
  const std::string_view first_text = address.substr(0, colon);
  const std::string_view last_text =
      colon == std::string_view::npos ? first_text : address.substr(colon + 1);
  const std::optional<Corner> first = ParseCorner(first_text);
  const std::optional<Corner> last = ParseCorner(last_text);
  if (!first || !last) return std::nullopt;
  const bool first_cell = first->column > 0 && first->row > 0;
  const bool last_cell = last->column > 0 && last->row > 0;
  CellArea area;
  if (first_cell && last_cell) {
    area = {first->row, first->column, last->row, last->column};
  } else if (first->row == 0 && last->row == 0) {  // whole columns "D:F"
    if (colon == std::string_view::npos) return std::nullopt;
    area = {1, first->column, kMaxRows, last->column};
  } else if (first->column == 0 && last->column == 0) {  // whole rows "3:5"
    if (colon == std::string_view::npos) return std::nullopt;
    area = {first->row, 1, last->row, kMaxColumns};
  } else {
    return std::nullopt;
  }
  if (area.first_row > area.last_row) std::swap(area.first_row, area.last_row);
  if (area.first_column > area.last_column) std::swap(area.first_column, area.last_column);
  return area;
}

std::string ColumnName(int column) {
  std::string name;
  while (column > 0) {
    const int digit = (column - 1) % 26;
    name.insert(name.begin(), static_cast<char>('A' + digit));
    column = (column - 1) / 26;
  }
  return name;
}

std::string FormatCellAddress(const CellArea& area) {
  auto corner = [](int row, int column) {
    return "$" + ColumnName(column) + "$" + std::to_string(row);
  };
  std::string text = corner(area.first_row, area.first_column);
  if (!area.IsSingleCell()) text += ":" + corner(area.last_row, area.last_column);
  return text;
}

}  // namespace z4400
