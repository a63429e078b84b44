// The series of a saved XY chart (`c:ser` inside `c:scatterChart`): name,
// line, markers, the formats and data labels of single points, and the X
// values and values as cell references with a cache of the cells' numbers.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHART_SERIES_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHART_SERIES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "workbook/model/cell_address.h"
#include "workbook/model/series.h"
#include "workbook/xlsx/number_texts.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {

/// How a scatter chart type draws its series.
struct ScatterKind {
  bool lines = true;    // false: markers only, the line hidden
  bool markers = true;  // false: no markers unless a series or point asks
  bool smooth = false;
};

/// The drawing of an XY chart type code: -4169 markers only, 74 lines with
/// markers, 75 lines without markers, 72 smoothed with markers, 73 smoothed
/// without markers. Any other code draws as 75, the converter's own type.
ScatterKind ScatterKindOf(int32_t chart_type);

/// The `c:symbol` value of a marker style (2 "diamond", 5 "star", -4142
/// "none" …). Automatic (-4105) and unknown styles take the symbol the
/// spreadsheet gives series `series_index` (from 0) by default.
std::string_view MarkerSymbol(int32_t marker_style, int series_index);

/// A reference to `area` of sheet `sheet` as a chart formula: the name
/// bare when it is a plain word ("Sheet1!$A$1:$A$5"), quoted otherwise
/// ("'Raw Data'!$F$12:$F$412", quotes in the name doubled).
std::string SheetReference(std::string_view sheet, const CellArea& area);

/// Writes series `series_index` (from 0) of a chart of kind `kind`, its
/// cached numbers taken from `numbers`. Throws `RuntimeFailure` when a
/// series refers to a sheet that is gone.
void WriteSer(XmlWriter& xml, const Series& series, int series_index, const ScatterKind& kind,
              NumberTexts& numbers);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHART_SERIES_H_
