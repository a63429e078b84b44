// Where each sheet, drawing and chart of a saved workbook goes inside the
// .xlsx package: part numbers and relationship ids, decided once before any
// part is written so that every part agrees on them.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_LAYOUT_H_
#define Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_LAYOUT_H_

#include <optional>
#include <string>
#include <vector>

#include "workbook/model/cell_address.h"

namespace z4400 {

/// A sheet is either a grid of cells or a chart sheet holding one chart.
enum class SheetKind { kWorksheet, kChartsheet };

/// One sheet of the package, in workbook order.
struct SheetLayout {
  std::string name;
  SheetKind kind = SheetKind::kWorksheet;
  /// N of "xl/worksheets/sheetN.xml" or "xl/chartsheets/sheetN.xml";
  /// worksheets and chart sheets are numbered separately from 1.
  int part_number = 0;
  /// N of "xl/drawings/drawingN.xml", or 0 when the sheet has no chart.
  int drawing_number = 0;
  /// N of "xl/charts/chartN.xml" for each chart of the sheet's drawing, in
  /// the order of the sheet's chart objects.
  std::vector<int> chart_numbers;
  /// The worksheet's filtered area, named in the workbook as the sheet's
  /// filter database.
  std::optional<CellArea> filter;
};

/// The whole package.
struct PackageLayout {
  std::vector<SheetLayout> sheets;
  /// 0-based position of the sheet shown when the workbook opens.
  int active_sheet = 0;
  /// Whether any cell holds text, so that "xl/sharedStrings.xml" exists.
  bool has_shared_strings = false;

  /// Assigns part, drawing and chart numbers in sheet order: worksheets and
  /// chart sheets each from 1, drawings from 1 for every sheet with charts,
  /// charts from 1 across the workbook. `chart_counts[i]` is the number of
  /// charts of sheet i (always 1 for a chart sheet).
  void Number(const std::vector<int>& chart_counts);

  int worksheet_count() const;
  int chartsheet_count() const;
  int drawing_count() const;
  int chart_count() const;
};

/// Package path of a sheet's part, e.g. "xl/worksheets/sheet2.xml".
std::string SheetPartName(const SheetLayout& sheet);
/// Package path of drawing N ("xl/drawings/drawingN.xml").
std::string DrawingPartName(int number);
/// Package path of chart N ("xl/charts/chartN.xml").
std::string ChartPartName(int number);
/// The relationships part of a part: "a/b.xml" gives "a/_rels/b.xml.rels".
std::string RelsPartName(const std::string& part_name);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_LAYOUT_H_
