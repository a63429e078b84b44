#include "workbook/model/cell_grid.h"

namespace z4400 {
namespace {

// Rows are widened a column group at a time ("Raw Data" adds a trace's
// columns to a thousand rows at once); growing each row's room in steps of
// this many cells copies it once instead of once per group.
constexpr std::size_t kRowRoomStep = 32;

void Widen(std::vector<Cell>& cells, std::size_t width) {
  if (width <= cells.size()) return;
  if (width > cells.capacity()) {
    cells.reserve((width + kRowRoomStep - 1) / kRowRoomStep * kRowRoomStep);
  }
  cells.resize(width);
}

}  // namespace

std::span<const Cell> CellGrid::RowCells(int row) const {
  if (row < 1 || row > RowCount()) return {};
  return rows_[static_cast<std::size_t>(row) - 1];
}

const Cell* CellGrid::Find(int row, int column) const {
  const std::span<const Cell> cells = RowCells(row);
  if (column < 1 || static_cast<std::size_t>(column) > cells.size()) return nullptr;
  return &cells[static_cast<std::size_t>(column) - 1];
}

Cell& CellGrid::At(int row, int column) {
  const auto row_index = static_cast<std::size_t>(row) - 1;
  const auto column_index = static_cast<std::size_t>(column) - 1;
  if (row_index >= rows_.size()) rows_.resize(row_index + 1);
  std::vector<Cell>& cells = rows_[row_index];
  Widen(cells, column_index + 1);
  return cells[column_index];
}

void CellGrid::Reserve(int first_row, int last_row, int last_column) {
  if (last_row < first_row || last_row < 1) return;
  if (static_cast<std::size_t>(last_row) > rows_.size()) {
    rows_.resize(static_cast<std::size_t>(last_row));
  }
  for (int row = first_row < 1 ? 1 : first_row; row <= last_row; ++row) {
    Widen(rows_[static_cast<std::size_t>(row) - 1], static_cast<std::size_t>(last_column));
  }
}

std::size_t CellGrid::CountUsed() const {
  std::size_t used = 0;
  for (const std::vector<Cell>& cells : rows_) {
    for (const Cell& cell : cells) used += cell.IsBlank() ? 0 : 1;
  }
  return used;
}

}  // namespace z4400
