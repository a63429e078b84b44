// DrawingML pieces shared by every element of a saved chart: colours, line
// and fill properties (`c:spPr`) and rich text (titles, data labels).
#ifndef Z4400_WORKBOOK_XLSX_XLSX_CHART_SHAPES_H_
#define Z4400_WORKBOOK_XLSX_XLSX_CHART_SHAPES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "workbook/model/chart_format.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {

/// "RRGGBB" of a workbook colour (red + 256 × green + 65536 × blue); bits
/// above the blue byte are ignored.
std::string HexColor(int32_t color);

/// Line width in EMU of a border weight: hairline 0.25 pt, thin 1 pt,
/// medium 2 pt, thick 3 pt; any other code is thin.
int64_t LineWidthEmu(int32_t weight);

/// What a `c:spPr` says; unset parts stay automatic and are left out.
struct ShapeStyle {
  /// Fill: a colour, or `no_fill` for a transparent area.
  std::optional<int32_t> fill_color;
  bool no_fill = false;
  /// Outline: colour and width, or `no_line` for none.
  std::optional<int32_t> line_color;
  std::optional<int64_t> line_width_emu;
  bool no_line = false;

  bool empty() const {
    return !fill_color && !no_fill && !line_color && !line_width_emu && !no_line;
  }
};

/// The shape style of a fill and a border from the chart model.
ShapeStyle AreaStyle(const InteriorFormat& interior, const BorderFormat& border);
/// The shape style of a line (series line, gridlines, axis line).
ShapeStyle LineStyle(const BorderFormat& border);

/// `<c:spPr>` with `a:solidFill`/`a:noFill` and `a:ln`, in schema order;
/// nothing at all when `style` is empty.
void WriteShapeProperties(XmlWriter& xml, const ShapeStyle& style);

/// `c:tx/c:rich` holding one paragraph with `text`; `vertical` rotates it
/// for a title beside a vertical axis.
void WriteRichText(XmlWriter& xml, std::string_view text, bool vertical = false);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_CHART_SHAPES_H_
