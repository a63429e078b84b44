#include "workbook/xlsx/xlsx_chart_part.h"

#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_chart_axes.h"
#include "workbook/xlsx/xlsx_chart_series.h"
#include "workbook/xlsx/xlsx_chart_shapes.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

void WriteTitle(XmlWriter& xml, const Chart& chart) {
  if (!chart.HasTitle()) {
    // Without this the spreadsheet titles a one-series chart with the
    // series name.
    if (chart.SeriesCollection().Count() == 1) xml.EmptyTag("c:autoTitleDeleted", {{"val", 1}});
    return;
  }
  xml.StartTag("c:title");
  WriteRichText(xml, chart.ChartTitle().Text());
  xml.EmptyTag("c:layout");
  xml.EndTag("c:title");
}

void WriteScatterChart(XmlWriter& xml, const Chart& chart, NumberTexts& numbers) {
  const ScatterKind kind = ScatterKindOf(chart.ChartType());
  xml.StartTag("c:scatterChart");
  xml.EmptyTag("c:scatterStyle", {{"val", kind.smooth ? "smoothMarker" : "lineMarker"}});
  int index = 0;
  for (const auto& series : chart.SeriesCollection().items()) {
    WriteSer(xml, *series, index++, kind, numbers);
  }
  xml.EmptyTag("c:axId", {{"val", kXAxisId}});
  xml.EmptyTag("c:axId", {{"val", kYAxisId}});
  xml.EndTag("c:scatterChart");
}

void WritePlotArea(XmlWriter& xml, const Chart& chart, NumberTexts& numbers) {
  xml.StartTag("c:plotArea");
  xml.EmptyTag("c:layout");
  WriteScatterChart(xml, chart, numbers);
  WriteValAxes(xml, chart);
  WriteShapeProperties(xml, AreaStyle(chart.PlotArea().Interior(), chart.PlotArea().Border()));
  xml.EndTag("c:plotArea");
}

void WriteLegend(XmlWriter& xml, const Chart& chart) {
  if (!chart.HasLegend()) return;
  xml.StartTag("c:legend");
  xml.EmptyTag("c:legendPos", {{"val", LegendPosition(chart.Legend().Position())}});
  xml.EmptyTag("c:layout");
  xml.EndTag("c:legend");
}

void WritePrintSettings(XmlWriter& xml) {
  xml.StartTag("c:printSettings");
  xml.EmptyTag("c:headerFooter");
  xml.EmptyTag(
      "c:pageMargins",
      {{"b", 0.75}, {"l", 0.7}, {"r", 0.7}, {"t", 0.75}, {"header", 0.3}, {"footer", 0.3}});
  xml.EmptyTag("c:pageSetup");
  xml.EndTag("c:printSettings");
}

}  // namespace

std::string_view LegendPosition(int32_t position) {
  switch (position) {
    case kXlLegendPositionBottom:
      return "b";
    case kXlLegendPositionLeft:
      return "l";
    case kXlLegendPositionTop:
      return "t";
    case kXlLegendPositionCorner:
      return "tr";
    default:
      return "r";
  }
}

std::string WriteChartPart(const Chart& chart, NumberTexts& numbers, std::string buffer) {
  XmlWriter xml(std::move(buffer));
  xml.StartTag(
      "c:chartSpace",
      {{"xmlns:c", "http://schemas.openxmlformats.org/drawingml/2006/chart"},
       {"xmlns:a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
       {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"}});
  xml.EmptyTag("c:lang", {{"val", "en-US"}});
  xml.StartTag("c:chart");
  WriteTitle(xml, chart);
  WritePlotArea(xml, chart, numbers);
  WriteLegend(xml, chart);
  xml.EmptyTag("c:plotVisOnly", {{"val", 1}});
  // Empty cells leave a gap. The spreadsheet takes that for granted, other
  // readers draw a line to zero without it, and the converter's series
  // always end on one empty row.
  xml.EmptyTag("c:dispBlanksAs", {{"val", "gap"}});
  xml.EndTag("c:chart");
  WriteShapeProperties(xml, AreaStyle(chart.ChartArea().Interior(), chart.ChartArea().Border()));
  WritePrintSettings(xml);
  xml.EndTag("c:chartSpace");
  return xml.Release();
}

}  // namespace z4400
