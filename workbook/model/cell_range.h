// A range of cells of a worksheet, as `Cells`, `Range` and `Columns` give
// it: a light handle through which values, number formats, fonts and column
// widths are read and written.
#ifndef Z4400_WORKBOOK_MODEL_CELL_RANGE_H_
#define Z4400_WORKBOOK_MODEL_CELL_RANGE_H_

#include <string>
#include <string_view>

#include "workbook/model/cell_address.h"
#include "workbook/model/cell_value.h"

namespace z4400 {

class Worksheet;

/// The font of a range: bold and italic.
class FontRef {
 public:
  FontRef(Worksheet* sheet, CellArea area, bool whole_columns)
      : sheet_(sheet), area_(area), whole_columns_(whole_columns) {}
  /// Whether the top-left cell is bold.
  bool Bold() const;
  void SetBold(bool bold) const;
  /// Whether the top-left cell is italic.
  bool Italic() const;
  void SetItalic(bool italic) const;

 private:
  Worksheet* sheet_;
  CellArea area_;
  bool whole_columns_;
};

/// A rectangle of cells of one worksheet. Copies refer to the same cells.
class CellRange {
 public:
  CellRange(Worksheet* sheet, CellArea area, bool whole_columns = false)
      : sheet_(sheet), area_(area), whole_columns_(whole_columns) {}

  Worksheet& Parent() const { return *sheet_; }
  const CellArea& Area() const { return area_; }
  /// First row and column, from 1.
  int Row() const { return area_.first_row; }
  int Column() const { return area_.first_column; }
  /// Number of cells.
  long long Count() const;
  /// Absolute address, "$A$5:$A$105" or "$B$7".
  std::string Address() const;
  /// The cell (row, column) counted from this range's top-left cell (1, 1).
  /// Throws `RuntimeFailure` when it falls outside the worksheet.
  CellRange Cells(int row, int column) const;

  /// The value of the top-left cell.
  CellValue Value() const;
  /// The values of every cell, rows × columns from (0, 0).
  ValueBlock Values() const;
  /// Writes `value` into every cell. A text is taken as typed input
  /// (`ParseTypedInput`). Throws `RuntimeFailure` on a protected sheet or
  /// for more than 4,194,304 cells.
  void SetValue(const CellValue& value) const;
  /// Writes `block` cell by cell from the top-left; cells of the range
  /// outside the block are emptied, values of the block outside the range
  /// are ignored. Texts are taken as typed input.
  void SetValue(const ValueBlock& block) const;

  /// Number format of the top-left cell.
  std::string NumberFormat() const;
  /// Sets the number format of every cell (of the columns, for whole
  /// columns).
  void SetNumberFormat(std::string_view format) const;

  FontRef Font() const { return FontRef(sheet_, area_, whole_columns_); }

  /// Width of the first column in character units.
  double ColumnWidth() const;
  /// Sets the width of every column of the range (0 to 255). Throws
  /// `RuntimeFailure` outside that span.
  void SetColumnWidth(double width) const;
  /// Fits the width of every column of the range to the longest text its
  /// cells show.
  void AutoFit() const;

 private:
  Worksheet* sheet_;
  CellArea area_;
  bool whole_columns_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CELL_RANGE_H_
