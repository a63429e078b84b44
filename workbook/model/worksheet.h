// A worksheet: its cells, column formats, protection and embedded charts.
#ifndef Z4400_WORKBOOK_MODEL_WORKSHEET_H_
#define Z4400_WORKBOOK_MODEL_WORKSHEET_H_

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/cell_grid.h"
#include "workbook/model/cell_range.h"
#include "workbook/model/cell_style.h"
#include "workbook/model/chart_object.h"
#include "workbook/model/sheet.h"

namespace z4400 {

/// The spreadsheet's standard column width, in character units.
inline constexpr double kStandardColumnWidth = 8.43;
/// The widest column, in character units.
inline constexpr double kMaxColumnWidth = 255;

/// Format of a whole column: width and the style new cells take.
struct ColumnFormat {
  std::optional<double> width;
  std::optional<StyleId> style;
  friend bool operator==(const ColumnFormat&, const ColumnFormat&) = default;
};

/// A worksheet of a workbook.
class Worksheet : public Sheet {
 public:
  Worksheet(Workbook* workbook, std::string name);
  ~Worksheet() override;

  /// Cell (row, column), both from 1. Throws `RuntimeFailure` outside the
  /// worksheet (rows 1 to 1,048,576, columns 1 to 16,384).
  CellRange Cells(int row, int column);
  /// The range named by an A1-style address ("B7", "A5:A105", "D:F").
  /// Throws `RuntimeFailure` for an invalid address.
  CellRange Range(std::string_view address);
  /// The rectangle spanning two cells or ranges of this worksheet.
  CellRange Range(const CellRange& first, const CellRange& last);
  /// Whole column `column` (from 1).
  CellRange Columns(int column);

  ChartObjectList ChartObjects() { return ChartObjectList(this); }
  /// Chart object `index`, from 1. Throws `RuntimeFailure` when absent.
  ChartObject& ChartObjects(int index) { return ChartObjectList(this).Item(index); }

  /// The page breaks between its rows.
  HPageBreakList& HPageBreaks() { return page_breaks_; }
  const HPageBreakList& HPageBreaks() const { return page_breaks_; }

  /// Protects the cells against writing (no password).
  void Protect() { protected_ = true; }
  void Unprotect() { protected_ = false; }
  bool ProtectContents() const { return protected_; }

  /// Keeps the top `rows` rows in view while the rows below scroll (0:
  /// nothing frozen), like a frozen header row.
  void FreezeTopRows(int rows) { frozen_rows_ = rows; }
  int FrozenTopRows() const { return frozen_rows_; }
  /// Puts a filter button on each cell of the first row of `area`, which
  /// then filters the rows below it.
  void SetAutoFilter(const CellArea& area) { auto_filter_ = area; }
  const std::optional<CellArea>& AutoFilter() const { return auto_filter_; }

  // Storage, for the range handles, the file writer and the file reader.

  const CellGrid& grid() const { return grid_; }
  /// The value of cell (row, column); empty when never written.
  CellValue ValueAt(int row, int column) const;
  /// Stores `value` as given (no typed input): for the file reader.
  void StoreValue(int row, int column, const CellValue& value);
  /// Stores `value` taking a text as typed input; a date written into a
  /// cell with the general format gets the format "yyyy-mm-dd".
  void WriteValue(int row, int column, const CellValue& value);
  /// Style of cell (row, column): its own, else its column's, else 0.
  StyleId StyleAt(int row, int column) const;
  void SetStyleAt(int row, int column, StyleId style);
  /// Column formats by column number (only columns that have one).
  const std::map<int, ColumnFormat>& columns() const { return columns_; }
  ColumnFormat& column(int column) { return columns_[column]; }
  /// Width of `column`: its own or the standard width.
  double ColumnWidthAt(int column) const;
  /// Sets the style of a whole column and restyles its existing cells
  /// through `change` (old style → new style).
  template <typename Change>
  void RestyleColumn(int column, Change change);
  /// The chart objects, in order.
  const std::vector<std::unique_ptr<ChartObject>>& chart_objects() const { return charts_; }
  std::vector<std::unique_ptr<ChartObject>>& chart_objects() { return charts_; }
  /// Reserves room for a block of rows × columns from (row, column).
  void Reserve(int first_row, int last_row, int last_column) {
    grid_.Reserve(first_row, last_row, last_column);
  }
  /// Throws `RuntimeFailure` when the worksheet is protected.
  void CheckWritable() const;

  std::unique_ptr<Sheet> Clone(Workbook* workbook, std::string name) const override;

 private:
  CellGrid grid_;
  std::map<int, ColumnFormat> columns_;
  std::vector<std::unique_ptr<ChartObject>> charts_;
  HPageBreakList page_breaks_;
  bool protected_ = false;
  int frozen_rows_ = 0;
  std::optional<CellArea> auto_filter_;
};

template <typename Change>
void Worksheet::RestyleColumn(int column, Change change) {
  ColumnFormat& format = columns_[column];
  format.style = change(format.style.value_or(0));
  for (int row = 1; row <= grid_.RowCount(); ++row) {
    const Cell* cell = grid_.Find(row, column);
    if (cell != nullptr && !cell->IsBlank()) {
      SetStyleAt(row, column, change(StyleAt(row, column)));
    }
  }
}

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_WORKSHEET_H_
