// The cells of one worksheet: rows of fixed-size cells indexed by row and
// column, so that long numeric blocks are written without an allocation per
// cell and the file writer can stream them row by row.
#ifndef Z4400_WORKBOOK_MODEL_CELL_GRID_H_
#define Z4400_WORKBOOK_MODEL_CELL_GRID_H_

#include <cstdint>
#include <span>
#include <vector>

#include "workbook/model/cell_style.h"
#include "workbook/model/cell_value.h"
#include "workbook/model/string_table.h"

namespace z4400 {

/// One stored cell: its kind, its payload (number, date serial, boolean as
/// 0/1, or text id) and its style id. An empty cell may still carry a style.
class Cell {
 public:
  CellKind kind() const { return kind_; }
  StyleId style() const { return style_; }
  /// Number, date serial, or 1/0 for a boolean.
  double number() const { return number_; }
  bool boolean() const { return number_ != 0; }
  /// Text id into the workbook's `StringTable` (kind `kText` only).
  TextId text_id() const { return text_; }
  /// True when the cell has neither a value nor a style of its own; such a
  /// cell is not saved and shows its column's format.
  bool IsBlank() const { return kind_ == CellKind::kEmpty && !has_style_; }
  /// True once a style was given to the cell itself.
  bool has_style() const { return has_style_; }

  void SetNumber(double value) { Set(CellKind::kNumber, value); }
  void SetDate(double serial) { Set(CellKind::kDate, serial); }
  void SetBoolean(bool value) { Set(CellKind::kBoolean, value ? 1 : 0); }
  void SetText(TextId id) {
    kind_ = CellKind::kText;
    number_ = 0;
    text_ = id;
  }
  void Clear() { Set(CellKind::kEmpty, 0); }
  void SetStyle(StyleId style) {
    style_ = style;
    has_style_ = true;
  }

 private:
  void Set(CellKind kind, double number) {
    kind_ = kind;
    number_ = number;
    text_ = 0;
  }
  double number_ = 0;
  TextId text_ = 0;
  StyleId style_ = 0;
  CellKind kind_ = CellKind::kEmpty;
  bool has_style_ = false;
};

/// Rows of cells; row r and column c (both from 1) live at
/// `rows_[r − 1][c − 1]`. Rows and columns grow on first write.
class CellGrid {
 public:
  /// The highest row that has a cell vector (used or formatted); 0 when none.
  int RowCount() const { return static_cast<int>(rows_.size()); }
  /// The cells of `row` (1-based), index 0 = column A; empty past the end.
  std::span<const Cell> RowCells(int row) const;
  /// The cell at (row, column) or null when it was never written.
  const Cell* Find(int row, int column) const;
  /// The cell at (row, column), created blank when absent. Row and column
  /// must lie within the sheet (checked by the caller).
  Cell& At(int row, int column);
  /// Makes room for rows up to `last_row` and, in each of rows
  /// `first_row`..`last_row`, columns up to `last_column`, so that a block
  /// written afterwards does not reallocate.
  void Reserve(int first_row, int last_row, int last_column);
  /// Number of non-blank cells.
  std::size_t CountUsed() const;

 private:
  std::vector<std::vector<Cell>> rows_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CELL_GRID_H_
