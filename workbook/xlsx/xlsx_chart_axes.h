// The two value axes of a saved XY chart (`c:valAx`): X along the bottom,
// Y on the left, with their titles, bounds, steps, scale, tick labels,
// gridlines and crossing.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHART_AXES_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHART_AXES_H_

#include <cstdint>
#include <string_view>

#include "workbook/model/chart.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {

/// Axis ids of every chart: fixed, so that saving twice gives the same file.
inline constexpr int32_t kXAxisId = 50010001;
inline constexpr int32_t kYAxisId = 50010002;

/// The `c:tickLblPos` value of a tick-label position code: 4 "nextTo",
/// -4127 "high", -4134 "low", -4142 "none"; any other code "nextTo".
std::string_view TickLabelPosition(int32_t position);

/// Writes the X axis (the chart's category axis, as an XY chart's value
/// axis at the bottom) and then the Y axis (left). Where one axis crosses
/// the other is set on the crossing axis, as the file format wants it.
void WriteValAxes(XmlWriter& xml, const Chart& chart);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHART_AXES_H_
