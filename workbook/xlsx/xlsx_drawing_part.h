// "xl/drawings/drawingN.xml" of a saved workbook: where each chart sits.
// Charts embedded in a worksheet are anchored to the cells under their
// rectangle; the chart of a chart sheet fills the sheet.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_DRAWING_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_DRAWING_PART_H_

#include <cstdint>
#include <string>
#include <vector>

#include "workbook/model/worksheet.h"

namespace z4400 {

/// A point of the sheet as a cell corner plus an offset: column or row
/// from 0, offset in EMU (914,400 per inch).
struct CellOffset {
  int index = 0;
  int64_t offset_emu = 0;
  friend bool operator==(const CellOffset&, const CellOffset&) = default;
};

/// Width in pixels of a column `characters` wide (8.43 → 64).
int ColumnPixels(double characters);

/// The column and offset at `x_points` from the sheet's left edge, and the
/// row and offset at `y_points` from its top (rows are 15 points high).
/// Negative and non-finite distances count as 0; distances past the last
/// column or row end there.
CellOffset ColumnAt(const Worksheet& sheet, double x_points);
CellOffset RowAt(double y_points);

/// The drawing of a worksheet: one two-cell anchor per chart object, in
/// order, the k-th (from 1) linked to the chart through relationship rIdk.
std::string WriteWorksheetDrawing(const Worksheet& sheet);

/// The drawing of a chart sheet: its chart through rId1, filling the sheet.
std::string WriteChartsheetDrawing();

/// The drawing's relationships: chart numbers (chartN.xml) in anchor order.
std::string WriteDrawingRelationships(const std::vector<int>& chart_numbers);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_DRAWING_PART_H_
