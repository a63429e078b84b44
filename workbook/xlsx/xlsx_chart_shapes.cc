#include "workbook/xlsx/xlsx_chart_shapes.h"

#include "workbook/model/xl_constants.h"

namespace z4400 {
namespace {

constexpr int64_t kEmuPerPoint = 12700;

void WriteSolidFill(XmlWriter& xml, int32_t color) {
  xml.StartTag("a:solidFill");
  xml.EmptyTag("a:srgbClr", {{"val", HexColor(color)}});
  xml.EndTag("a:solidFill");
}

}  // namespace

std::string HexColor(int32_t color) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const uint32_t bits = static_cast<uint32_t>(color);
  const unsigned channels[] = {bits & 0xFF, (bits >> 8) & 0xFF, (bits >> 16) & 0xFF};
  std::string hex;
  for (unsigned channel : channels) {
    hex += kDigits[channel >> 4];
    hex += kDigits[channel & 0xF];
  }
  return hex;
}

int64_t LineWidthEmu(int32_t weight) {
  switch (weight) {
    case kXlHairline:
      return kEmuPerPoint / 4;
    case kXlMedium:
      return 2 * kEmuPerPoint;
    case kXlThick:
      return 3 * kEmuPerPoint;
    default:
      return kEmuPerPoint;
  }
}

ShapeStyle AreaStyle(const InteriorFormat& interior, const BorderFormat& border) {
  ShapeStyle style = LineStyle(border);
  style.fill_color = interior.Color();
  return style;
}

ShapeStyle LineStyle(const BorderFormat& border) {
  ShapeStyle style;
  style.line_color = border.Color();
  if (border.Weight()) style.line_width_emu = LineWidthEmu(*border.Weight());
  return style;
}

void WriteShapeProperties(XmlWriter& xml, const ShapeStyle& style) {
  if (style.empty()) return;
  xml.StartTag("c:spPr");
  if (style.no_fill) {
    xml.EmptyTag("a:noFill");
  } else if (style.fill_color) {
    WriteSolidFill(xml, *style.fill_color);
  }
  if (style.no_line || style.line_color || style.line_width_emu) {
    if (style.line_width_emu) {
      xml.StartTag("a:ln", {{"w", *style.line_width_emu}});
    } else {
      xml.StartTag("a:ln");
    }
    if (style.no_line) {
      xml.EmptyTag("a:noFill");
    } else if (style.line_color) {
      WriteSolidFill(xml, *style.line_color);
    }
    xml.EndTag("a:ln");
  }
  xml.EndTag("c:spPr");
}

void WriteRichText(XmlWriter& xml, std::string_view text, bool vertical) {
  xml.StartTag("c:tx");
  xml.StartTag("c:rich");
  if (vertical) {
    xml.EmptyTag("a:bodyPr", {{"rot", -5400000}, {"vert", "horz"}});
  } else {
    xml.EmptyTag("a:bodyPr");
  }
  xml.EmptyTag("a:lstStyle");
  xml.StartTag("a:p");
  xml.StartTag("a:pPr");
  xml.EmptyTag("a:defRPr");
  xml.EndTag("a:pPr");
  xml.StartTag("a:r");
  xml.EmptyTag("a:rPr", {{"lang", "en-US"}});
  xml.DataElement("a:t", text);
  xml.EndTag("a:r");
  xml.EndTag("a:p");
  xml.EndTag("c:rich");
  xml.EndTag("c:tx");
}

}  // namespace z4400
