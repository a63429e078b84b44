// "xl/charts/chartN.xml" of a saved workbook: one chart with its title,
// plot area (the XY series and the two axes), legend and chart area.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "workbook/model/chart.h"

namespace z4400 {

/// The `c:legendPos` value of a legend position code: -4107 "b", -4131 "l",
/// -4152 "r", -4160 "t", 2 (corner) "tr"; any other code "r".
std::string_view LegendPosition(int32_t position);

/// The chart part. Every chart is written as an XY scatter chart in the
/// drawing its chart type code asks for (see `ScatterKindOf`). Throws
/// `RuntimeFailure` when a series refers to a sheet that is gone.
std::string WriteChartPart(const Chart& chart);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_
