// "xl/worksheets/sheetN.xml" of a saved workbook: the used area, column
// widths and formats, every stored cell row by row, protection, the print
// settings, and the link to the sheet's drawing when it has charts.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_SHEET_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_SHEET_PART_H_

#include <string>
#include <vector>

#include "workbook/model/string_table.h"
#include "workbook/model/worksheet.h"
#include "workbook/xlsx/number_texts.h"
#include "workbook/xlsx/xlsx_shared_strings.h"
#include "workbook/xlsx/xlsx_styles_part.h"

namespace z4400 {

/// The column width stored in the file for a width in character units:
/// the spreadsheet adds its 5-pixel padding and rounds to 1/256 of a
/// character (8.43 is stored as 9.140625).
double StoredColumnWidth(double characters);

/// What the parts of one workbook share while they are written: the cell
/// texts become shared strings (in order of first use), the cell styles
/// become cell formats, and each number is formatted once for the cells and
/// the chart caches.
class CellTables {
 public:
  CellTables(const StringTable& texts, XlsxStyles& styles) : texts_(texts), styles_(styles) {}

  /// The shared-string index of workbook text `id`.
  int SharedString(TextId id);
  XlsxStyles& styles() { return styles_; }
  NumberTexts& numbers() { return numbers_; }
  const SharedStrings& shared_strings() const { return shared_; }

 private:
  const StringTable& texts_;
  XlsxStyles& styles_;
  SharedStrings shared_;
  NumberTexts numbers_;
  std::vector<int> index_of_text_;  // text id → shared index, -1 before first use
};

/// Writes the worksheet part. `selected` marks the sheet shown when the
/// workbook opens; `has_drawing` adds `<drawing r:id="rId1"/>` (the
/// sheet's only relationship). The part is written into `buffer`, whose
/// memory is reused (a part written before, handed back).
std::string WriteSheetPart(const Worksheet& sheet, CellTables& tables, bool selected,
                           bool has_drawing, std::string buffer = {});

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_SHEET_PART_H_
