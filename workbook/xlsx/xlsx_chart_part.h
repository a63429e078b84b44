// "xl/charts/chartN.xml" of a saved workbook: one chart with its title,
// plot area (the XY series and the two axes), legend and chart area.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "workbook/model/chart.h"
#include "workbook/xlsx/number_texts.h"

namespace z4400 {

/// The `c:legendPos` value of a legend position code: -4107 "b", -4131 "l",
/// -4152 "r", -4160 "t", 2 (corner) "tr"; any other code "r".
std::string_view LegendPosition(int32_t position);

/// The chart part. Every chart is written as an XY scatter chart in the
/// drawing its chart type code asks for (see `ScatterKindOf`). Throws
/// `RuntimeFailure` when a series refers to a sheet that is gone. The
/// cached numbers are taken from `numbers`; the part is written into
/// `buffer`, whose memory is reused (a part written before, handed back).
std::string WriteChartPart(const Chart& chart, NumberTexts& numbers, std::string buffer = {});

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHART_PART_H_
