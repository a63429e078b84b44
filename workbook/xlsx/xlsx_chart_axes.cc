#include "workbook/xlsx/xlsx_chart_axes.h"

#include <cmath>

#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_chart_shapes.h"

namespace z4400 {
namespace {

// A fixed bound or step the file can hold; anything else stays automatic,
// as the spreadsheet would refuse the file.
bool IsBound(bool is_auto, double value) { return !is_auto && std::isfinite(value); }
bool IsStep(bool is_auto, double value) { return IsBound(is_auto, value) && value > 0; }

void WriteScaling(XmlWriter& xml, const Axis& axis) {
  xml.StartTag("c:scaling");
  if (axis.ScaleType() == kXlScaleLogarithmic) {
    xml.EmptyTag("c:logBase", {{"val", 10.0}});
  }
  xml.EmptyTag("c:orientation", {{"val", "minMax"}});
  if (IsBound(axis.MaximumScaleIsAuto(), axis.MaximumScale())) {
    xml.EmptyTag("c:max", {{"val", axis.MaximumScale()}});
  }
  if (IsBound(axis.MinimumScaleIsAuto(), axis.MinimumScale())) {
    xml.EmptyTag("c:min", {{"val", axis.MinimumScale()}});
  }
  xml.EndTag("c:scaling");
}

void WriteGridlines(XmlWriter& xml, std::string_view element, const GridlinesFormat& gridlines) {
  const ShapeStyle style = LineStyle(gridlines.Border());
  if (style.empty()) {
    xml.EmptyTag(element);
    return;
  }
  xml.StartTag(element);
  WriteShapeProperties(xml, style);
  xml.EndTag(element);
}

void WriteTitle(XmlWriter& xml, std::string_view text, bool vertical) {
  xml.StartTag("c:title");
  WriteRichText(xml, text, vertical);
  xml.EmptyTag("c:layout");
  xml.EndTag("c:title");
}

// Where this axis crosses the other one, from the other axis's settings.
void WriteCrosses(XmlWriter& xml, const Axis& other) {
  switch (other.Crosses()) {
    case kXlAxisCrossesCustom:
      if (std::isfinite(other.CrossesAt())) {
        xml.EmptyTag("c:crossesAt", {{"val", other.CrossesAt()}});
      } else {
        xml.EmptyTag("c:crosses", {{"val", "autoZero"}});
      }
      break;
    case kXlAxisCrossesMaximum:
      xml.EmptyTag("c:crosses", {{"val", "max"}});
      break;
    case kXlAxisCrossesMinimum:
      xml.EmptyTag("c:crosses", {{"val", "min"}});
      break;
    default:
      xml.EmptyTag("c:crosses", {{"val", "autoZero"}});
  }
}

void WriteValAx(XmlWriter& xml, const Axis& axis, const Axis& other, int32_t id, int32_t cross_id,
                bool vertical) {
  xml.StartTag("c:valAx");
  xml.EmptyTag("c:axId", {{"val", id}});
  WriteScaling(xml, axis);
  xml.EmptyTag("c:axPos", {{"val", vertical ? "l" : "b"}});
  if (axis.HasMajorGridlines()) WriteGridlines(xml, "c:majorGridlines", axis.MajorGridlines());
  if (axis.HasMinorGridlines()) WriteGridlines(xml, "c:minorGridlines", axis.MinorGridlines());
  if (axis.HasTitle()) WriteTitle(xml, axis.AxisTitle().Text(), vertical);
  if (const auto format = axis.TickLabels().NumberFormat()) {
    xml.EmptyTag("c:numFmt", {{"formatCode", *format}, {"sourceLinked", 0}});
  } else {
    xml.EmptyTag("c:numFmt", {{"formatCode", "General"}, {"sourceLinked", 1}});
  }
  xml.EmptyTag("c:tickLblPos", {{"val", TickLabelPosition(axis.TickLabelPosition())}});
  WriteShapeProperties(xml, LineStyle(axis.Border()));
  xml.EmptyTag("c:crossAx", {{"val", cross_id}});
  WriteCrosses(xml, other);
  xml.EmptyTag("c:crossBetween", {{"val", "midCat"}});
  if (IsStep(axis.MajorUnitIsAuto(), axis.MajorUnit())) {
    xml.EmptyTag("c:majorUnit", {{"val", axis.MajorUnit()}});
  }
  xml.EndTag("c:valAx");
}

}  // namespace

std::string_view TickLabelPosition(int32_t position) {
  switch (position) {
    case kXlTickLabelPositionHigh:
      return "high";
    case kXlTickLabelPositionLow:
      return "low";
    case kXlTickLabelPositionNone:
      return "none";
    default:
      return "nextTo";
  }
}

void WriteValAxes(XmlWriter& xml, const Chart& chart) {
  const Axis& x = chart.Axes(kXlCategory);
  const Axis& y = chart.Axes(kXlValue);
  WriteValAx(xml, x, y, kXAxisId, kYAxisId, false);
  WriteValAx(xml, y, x, kYAxisId, kXAxisId, true);
}

}  // namespace z4400
