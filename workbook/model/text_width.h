// How wide a cell's text is drawn in the workbook's font (Calibri 11), and
// how wide a column must be to show it whole: the measure the writers size
// their columns by so that no number shows "###".
#ifndef Z4400_WORKBOOK_MODEL_TEXT_WIDTH_H_
#define Z4400_WORKBOOK_MODEL_TEXT_WIDTH_H_

#include <string_view>

namespace z4400 {

class Worksheet;

/// Width of a UTF-8 text in the workbook's font, in widths of a digit (the
/// unit of column widths): "0123" is 4; letters are narrower or wider by
/// their advance; characters beyond Latin count 1.2 and wide East Asian
/// ones 2. `bold` measures the bold face.
double TextWidthInDigits(std::string_view text, bool bold);

/// The column width (in characters) that shows a text `digits` wide whole,
/// cell margins included, in the spreadsheet applications the workbooks are
/// read in: a whole number of characters.
double ColumnWidthToShow(double digits);

/// The column width that shows cell (`row`, `column`) of `sheet` whole: its
/// displayed text (value through its number format, bold or not) measured
/// by `ColumnWidthToShow`; 0 for an empty cell.
double ColumnWidthForCell(const Worksheet& sheet, int row, int column);

/// Widens column `column` of `sheet` so that every cell of rows `first_row`
/// to `last_row` shows whole; a column already wide enough keeps its width.
void WidenColumnToFit(Worksheet& sheet, int column, int first_row, int last_row);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_TEXT_WIDTH_H_
