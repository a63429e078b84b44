#include "workbook/xlsx/xlsx_chart_series.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "workbook/model/cell_address.h"
#include "workbook/model/worksheet.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_chart_shapes.h"

namespace z4400 {
namespace {

// The symbols the spreadsheet gives the series of a chart in turn.
constexpr std::array<std::string_view, 7> kAutomaticSymbols = {"diamond", "square", "triangle", "x",
                                                               "star",    "circle", "plus"};

// Marker sizes the file can hold: 2 to 72 points.
int32_t MarkerSize(int32_t size) { return std::clamp<int32_t>(size, 2, 72); }

bool ChangesMarker(const PointFormat& point) {
  return point.marker_style || point.marker_size || point.marker_foreground_color ||
         point.marker_background_color || point.marker_background_color_index;
}

// c:marker of a series: its own style and size, else "none" when the chart
// type draws no markers.
void WriteSeriesMarker(XmlWriter& xml, const Series& series, int series_index,
                       const ScatterKind& kind) {
  const bool no_markers = !kind.markers && !series.MarkerStyle();
  if (!series.MarkerStyle() && !series.MarkerSize() && !no_markers) return;
  xml.StartTag("c:marker");
  if (series.MarkerStyle()) {
    xml.EmptyTag("c:symbol", {{"val", MarkerSymbol(*series.MarkerStyle(), series_index)}});
  } else if (no_markers) {
    xml.EmptyTag("c:symbol", {{"val", "none"}});
  }
  if (series.MarkerSize()) xml.EmptyTag("c:size", {{"val", MarkerSize(*series.MarkerSize())}});
  xml.EndTag("c:marker");
}

// c:marker of one point: symbol, size, then fill (background) and line
// (foreground).
void WritePointMarker(XmlWriter& xml, const PointFormat& point, int series_index) {
  xml.StartTag("c:marker");
  if (point.marker_style) {
    xml.EmptyTag("c:symbol", {{"val", MarkerSymbol(*point.marker_style, series_index)}});
  }
  if (point.marker_size) xml.EmptyTag("c:size", {{"val", MarkerSize(*point.marker_size)}});
  ShapeStyle style;
  style.fill_color = point.marker_background_color;
  style.no_fill =
      !point.marker_background_color && point.marker_background_color_index == kXlColorIndexNone;
  style.line_color = point.marker_foreground_color;
  WriteShapeProperties(xml, style);
  xml.EndTag("c:marker");
}

void WriteDPt(XmlWriter& xml, int index, const PointFormat& point, int series_index) {
  xml.StartTag("c:dPt");
  xml.EmptyTag("c:idx", {{"val", index - 1}});
  WritePointMarker(xml, point, series_index);
  xml.EndTag("c:dPt");
}

void WriteShowFlags(XmlWriter& xml, bool show_value) {
  xml.EmptyTag("c:showLegendKey", {{"val", 0}});
  xml.EmptyTag("c:showVal", {{"val", show_value ? 1 : 0}});
  xml.EmptyTag("c:showCatName", {{"val", 0}});
  xml.EmptyTag("c:showSerName", {{"val", 0}});
  xml.EmptyTag("c:showPercent", {{"val", 0}});
  xml.EmptyTag("c:showBubbleSize", {{"val", 0}});
}

void WriteNumFmt(XmlWriter& xml, const std::optional<std::string>& format) {
  if (format) xml.EmptyTag("c:numFmt", {{"formatCode", *format}, {"sourceLinked", 0}});
}

// The label of one point: its fixed text, or its value in the series'
// label number format.
void WriteDLbl(XmlWriter& xml, int index, const PointFormat& point,
               const std::optional<std::string>& number_format) {
  xml.StartTag("c:dLbl");
  xml.EmptyTag("c:idx", {{"val", index - 1}});
  xml.EmptyTag("c:layout");
  if (point.data_label_text) {
    WriteRichText(xml, *point.data_label_text);
  } else {
    WriteNumFmt(xml, number_format);
  }
  WriteShowFlags(xml, true);
  xml.EndTag("c:dLbl");
}

// c:dLbls: the labelled points first, then the series-wide settings.
void WriteDLbls(XmlWriter& xml, const Series& series) {
  bool any_point = false;
  for (const auto& [index, point] : series.point_formats()) {
    any_point = any_point || point.has_data_label;
  }
  if (!series.HasDataLabels() && !any_point) return;
  const std::optional<std::string> number_format = series.DataLabels().NumberFormat();
  xml.StartTag("c:dLbls");
  for (const auto& [index, point] : series.point_formats()) {
    if (!point.has_data_label) continue;
    if (series.HasDataLabels() && !point.data_label_text) continue;  // shown by the series
    WriteDLbl(xml, index, point, number_format);
  }
  WriteNumFmt(xml, number_format);
  WriteShowFlags(xml, series.HasDataLabels());
  xml.EndTag("c:dLbls");
}

void WritePointCount(std::string& out, long long count) {
  out += "<c:formatCode>General</c:formatCode><c:ptCount val=\"";
  out += std::to_string(count);
  out += "\"/>";
  // About 40 bytes a point, so that the part grows once for the whole cache.
  out.reserve(out.size() + 40 * static_cast<std::size_t>(count));
}

void WritePoint(std::string& out, int index, std::string_view number) {
  char index_text[16];
  out += "<c:pt idx=\"";
  out.append(index_text, std::to_chars(index_text, index_text + sizeof index_text, index).ptr);
  out += "\"><c:v>";
  out += number;
  out += "</c:v></c:pt>";
}

// Every number or date becomes a point; text, booleans and empty cells
// leave a gap, as they do on the spreadsheet's chart.
bool IsPlotted(CellKind kind) { return kind == CellKind::kNumber || kind == CellKind::kDate; }

// The cached numbers of a reference, read from its cells row by row.
void WriteCellPoints(XmlWriter& xml, const Worksheet& sheet, const CellArea& area,
                     NumberTexts& numbers) {
  std::string& out = xml.raw();
  WritePointCount(out, static_cast<long long>(area.RowCount()) * area.ColumnCount());
  const CellGrid& grid = sheet.grid();
  int index = 0;
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column, ++index) {
      const Cell* cell = grid.Find(row, column);
      if (cell == nullptr || !IsPlotted(cell->kind())) continue;
      WritePoint(out, index, numbers.CellText(sheet, row, column, cell->number()));
    }
  }
}

void WriteLiteralPoints(XmlWriter& xml, const std::vector<CellValue>& values,
                        NumberTexts& numbers) {
  std::string& out = xml.raw();
  WritePointCount(out, static_cast<long long>(values.size()));
  int index = 0;
  for (const CellValue& value : values) {
    if (IsPlotted(value.Kind())) WritePoint(out, index, numbers.Text(value.Number()));
    ++index;
  }
}

void WriteNumData(XmlWriter& xml, std::string_view element, const Series& series,
                  const std::optional<SeriesSource>& source, NumberTexts& numbers) {
  if (!source) return;
  xml.StartTag(element);
  if (source->IsReference()) {
    xml.StartTag("c:numRef");
    xml.DataElement("c:f", SheetReference(source->sheet, source->area));
    xml.StartTag("c:numCache");
    WriteCellPoints(xml, series.SourceSheet(*source), source->area, numbers);
    xml.EndTag("c:numCache");
    xml.EndTag("c:numRef");
  } else {
    xml.StartTag("c:numLit");
    WriteLiteralPoints(xml, source->literal, numbers);
    xml.EndTag("c:numLit");
  }
  xml.EndTag(element);
}

}  // namespace

std::string SheetReference(std::string_view sheet, const CellArea& area) {
  bool plain = !sheet.empty() && !(sheet[0] >= '0' && sheet[0] <= '9');
  for (char c : sheet) {
    plain = plain && ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '_' || c == '.');
  }
  // A name that reads as a cell ("A1", "XFD9") or an R1C1 reference needs
  // quotes too.
  if (plain && ParseCellAddress(sheet)) plain = false;
  if (plain) {
    std::size_t i = 0;
    const auto skip = [&](char upper) {
      if (i < sheet.size() && (sheet[i] == upper || sheet[i] == upper + ('a' - 'A'))) {
        ++i;
        while (i < sheet.size() && sheet[i] >= '0' && sheet[i] <= '9') ++i;
      }
    };
    skip('R');
    skip('C');
    plain = i < sheet.size();
  }
  std::string reference;
  if (plain) {
    reference = sheet;
  } else {
    reference = "'";
    for (char c : sheet) reference += c == '\'' ? std::string("''") : std::string(1, c);
    reference += "'";
  }
  return reference + "!" + FormatCellAddress(area);
}

ScatterKind ScatterKindOf(int32_t chart_type) {
  switch (chart_type) {
    case kXlXYScatter:
      return {.lines = false, .markers = true, .smooth = false};
    case kXlXYScatterLines:
      return {.lines = true, .markers = true, .smooth = false};
    case kXlXYScatterSmooth:
      return {.lines = true, .markers = true, .smooth = true};
    case kXlXYScatterSmoothNoMarkers:
      return {.lines = true, .markers = false, .smooth = true};
    default:
      return {.lines = true, .markers = false, .smooth = false};
  }
}

std::string_view MarkerSymbol(int32_t marker_style, int series_index) {
  switch (marker_style) {
    case kXlMarkerStyleNone:
      return "none";
    case kXlMarkerStyleSquare:
      return "square";
    case kXlMarkerStyleDiamond:
      return "diamond";
    case kXlMarkerStyleTriangle:
      return "triangle";
    case kXlMarkerStyleX:
      return "x";
    case kXlMarkerStyleStar:
      return "star";
    case kXlMarkerStyleDot:
      return "dot";
    case kXlMarkerStyleDash:
      return "dash";
    case kXlMarkerStyleCircle:
      return "circle";
    case kXlMarkerStylePlus:
      return "plus";
    default:
      return kAutomaticSymbols[static_cast<std::size_t>(series_index < 0 ? 0 : series_index) %
                               kAutomaticSymbols.size()];
  }
}

void WriteSer(XmlWriter& xml, const Series& series, int series_index, const ScatterKind& kind,
              NumberTexts& numbers) {
  xml.StartTag("c:ser");
  xml.EmptyTag("c:idx", {{"val", series_index}});
  xml.EmptyTag("c:order", {{"val", series_index}});
  if (!series.Name().empty()) {
    xml.StartTag("c:tx");
    xml.DataElement("c:v", series.Name());
    xml.EndTag("c:tx");
  }
  ShapeStyle line = LineStyle(series.Border());
  if (!kind.lines) {
    line = ShapeStyle{};
    line.line_width_emu = 28575;  // how the spreadsheet hides the line
    line.no_line = true;
  }
  WriteShapeProperties(xml, line);
  WriteSeriesMarker(xml, series, series_index, kind);
  for (const auto& [index, point] : series.point_formats()) {
    if (ChangesMarker(point)) WriteDPt(xml, index, point, series_index);
  }
  WriteDLbls(xml, series);
  WriteNumData(xml, "c:xVal", series, series.XValuesSource(), numbers);
  WriteNumData(xml, "c:yVal", series, series.ValuesSource(), numbers);
  if (kind.smooth) xml.EmptyTag("c:smooth", {{"val", 1}});
  xml.EndTag("c:ser");
}

}  // namespace z4400
