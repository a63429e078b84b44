// "xl/chartsheets/sheetN.xml" of a saved workbook: a chart sheet, whose only
// content is the drawing that holds its chart, with its print settings.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHARTSHEET_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHARTSHEET_PART_H_

#include <string>

#include "workbook/model/page_setup.h"

namespace z4400 {

/// The chart sheet part; its drawing is relationship rId1. `selected` marks
/// the sheet shown when the workbook opens; `setup` is how it prints.
std::string WriteChartsheetPart(bool selected, const PageSetup& setup);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHARTSHEET_PART_H_
