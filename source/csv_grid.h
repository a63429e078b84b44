// The grid of an instrument's CSV export: its lines split into cells, and
// the row searches by key, by key and value, and by prefix that every CSV
// lookup of the readers goes through.
#ifndef Z4400_SOURCE_CSV_GRID_H_
#define Z4400_SOURCE_CSV_GRID_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace z4400 {

/// The cells of one CSV export, indexed (row, column) from 0. A cell is the
/// text between two commas, untrimmed. Every row has the same number of
/// columns: one more than the largest field count of any line, so there is
/// always a spare empty column.
class CsvGrid {
 public:
  CsvGrid() = default;
  // The rows point into the grid's own text.
  CsvGrid(const CsvGrid&) = delete;
  CsvGrid& operator=(const CsvGrid&) = delete;

  /// Splits `text` (already decoded to UTF-8) into lines and cells the way
  /// the instrument's export has always been read: lines end at CR, CR LF or
  /// LF. Returns false when the text is not a grid (empty, every line a
  /// single field, more than 32768 lines); the grid is then empty.
  bool Load(std::string text);

  /// The upper bound of the row index: the number of lines − 1 (−1 when
  /// empty).
  int16_t LastRow() const { return last_row_; }
  /// Number of columns of every row (0 when nothing was loaded).
  int ColumnCount() const { return column_count_; }

  /// The cell (row, column); RuntimeFailure outside the grid.
  std::string_view Cell(int row, int column) const;

  /// Column 1 of the first row in 0 .. LastRow() − 1 whose column 0 equals
  /// `key`; the empty text when none.
  std::string_view Value(std::string_view key) const;

  /// First row in firstRow .. lastRow whose column 0 equals `key`, or −1.
  /// firstRow < 1 means 0; lastRow < 1 means LastRow() − 1 and lastRow is
  /// cut there. A range of a single row (lastRow ≤ firstRow) finds nothing.
  int16_t FindRow(std::string_view key, int first_row, int last_row) const;

  /// As FindRow, but the row's column 1 must also equal `value` with its
  /// leading and trailing blanks removed.
  int16_t FindRowWithValue(std::string_view key, std::string_view value, int first_row,
                           int last_row) const;

  /// As FindRow, but a row matches when its cell in `column` begins with
  /// `prefix`.
  int16_t FindRowByPrefix(std::string_view prefix, int column, int first_row, int last_row) const;

 private:
  /// Clamps a search range as every row search does; false when it is empty.
  bool ClampRange(int& first_row, int& last_row) const;
  /// Column 0 of `row` (rows of the grid only).
  std::string_view FirstCell(int row) const;

  std::string text_;
  /// Rows by their column-0 text, in row order: the row searches look a key
  /// up here instead of scanning every row.
  std::unordered_map<std::string_view, std::vector<int16_t>> rows_by_key_;
  /// One line per row (a row past the stored lines is empty); cells are
  /// found by scanning for commas, so a wide line costs no memory per cell.
  std::vector<std::string_view> rows_;
  int16_t last_row_ = -1;
  int column_count_ = 0;
};

/// The last `count` characters of `text` (UTF-8), all of it when shorter.
std::string_view RightChars(std::string_view text, size_t count);

}  // namespace z4400

#endif  // Z4400_SOURCE_CSV_GRID_H_
