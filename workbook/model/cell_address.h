// A1-style cell addresses of a worksheet ("B7", "A5:A105", "$F$12:$F$412",
// whole columns "D:F"): parsing into a cell area and formatting back.
#ifndef Z4400_WORKBOOK_MODEL_CELL_ADDRESS_H_
#define Z4400_WORKBOOK_MODEL_CELL_ADDRESS_H_

#include <optional>
#include <string>
#include <string_view>

namespace z4400 {

/// The largest row and column of a worksheet.
inline constexpr int kMaxRows = 1048576;
inline constexpr int kMaxColumns = 16384;

/// A rectangle of cells, rows and columns from 1, both corners inclusive.
struct CellArea {
  int first_row = 1;
  int first_column = 1;
  int last_row = 1;
  int last_column = 1;

  int RowCount() const { return last_row - first_row + 1; }
  int ColumnCount() const { return last_column - first_column + 1; }
  bool IsSingleCell() const { return first_row == last_row && first_column == last_column; }
  friend bool operator==(const CellArea&, const CellArea&) = default;
};

/// The area named by `address`: one cell ("B7"), two corners ("A5:A105",
/// either order), whole columns ("D:F", "A:A") or whole rows ("3:5"); "$"
/// markers are allowed. Nothing for any other text or a cell beyond the
/// worksheet's limits.
std::optional<CellArea> ParseCellAddress(std::string_view address);

/// The absolute address of `area`: "$B$7" or "$A$5:$A$105".
std::string FormatCellAddress(const CellArea& area);

/// The name of column `column` (1 to `kMaxColumns`): "A", "AA", "XFD".
std::string ColumnName(int column);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CELL_ADDRESS_H_
