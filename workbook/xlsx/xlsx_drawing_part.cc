#include "workbook/xlsx/xlsx_drawing_part.h"

#include <cmath>

#include "workbook/model/cell_address.h"
#include "workbook/xlsx/xlsx_package_parts.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

constexpr int64_t kEmuPerPixel = 9525;
constexpr double kPixelsPerPoint = 96.0 / 72.0;
constexpr int kRowPixels = 20;  // the default 15-point row
// A chart sheet's chart at the spreadsheet's default page size.
constexpr int64_t kChartsheetWidthEmu = 9308969;
constexpr int64_t kChartsheetHeightEmu = 6078325;

double ToPixels(double points) {
  if (!std::isfinite(points) || points <= 0) return 0;
  return points * kPixelsPerPoint;
}

void WriteMarker(XmlWriter& xml, std::string_view element, const CellOffset& column,
                 const CellOffset& row) {
  xml.StartTag(element);
  xml.DataElement("xdr:col", std::to_string(column.index));
  xml.DataElement("xdr:colOff", std::to_string(column.offset_emu));
  xml.DataElement("xdr:row", std::to_string(row.index));
  xml.DataElement("xdr:rowOff", std::to_string(row.offset_emu));
  xml.EndTag(element);
}

void WriteGraphicFrame(XmlWriter& xml, int id, const std::string& name, int relationship,
                       bool locked) {
  xml.StartTag("xdr:graphicFrame", {{"macro", ""}});
  xml.StartTag("xdr:nvGraphicFramePr");
  xml.EmptyTag("xdr:cNvPr", {{"id", id}, {"name", name}});
  if (locked) {
    xml.StartTag("xdr:cNvGraphicFramePr");
    xml.EmptyTag("a:graphicFrameLocks", {{"noGrp", 1}});
    xml.EndTag("xdr:cNvGraphicFramePr");
  } else {
    xml.EmptyTag("xdr:cNvGraphicFramePr");
  }
  xml.EndTag("xdr:nvGraphicFramePr");
  xml.StartTag("xdr:xfrm");
  xml.EmptyTag("a:off", {{"x", 0}, {"y", 0}});
  xml.EmptyTag("a:ext", {{"cx", 0}, {"cy", 0}});
  xml.EndTag("xdr:xfrm");
  xml.StartTag("a:graphic");
  xml.StartTag("a:graphicData",
               {{"uri", "http://schemas.openxmlformats.org/drawingml/2006/chart"}});
  xml.EmptyTag("c:chart",
               {{"xmlns:c", "http://schemas.openxmlformats.org/drawingml/2006/chart"},
                {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
                {"r:id", "rId" + std::to_string(relationship)}});
  xml.EndTag("a:graphicData");
  xml.EndTag("a:graphic");
  xml.EndTag("xdr:graphicFrame");
}

void StartDrawing(XmlWriter& xml) {
  xml.StartTag("xdr:wsDr", {{"xmlns:xdr",
                             "http://schemas.openxmlformats.org/drawingml/2006/spreadsheetDrawing"},
                            {"xmlns:a", "http://schemas.openxmlformats.org/drawingml/2006/main"}});
}

}  // namespace

int ColumnPixels(double characters) {
  if (!std::isfinite(characters) || characters <= 0) return 0;
  if (characters < 1) return static_cast<int>(std::trunc(characters * 12 + 0.5));
  return static_cast<int>(std::trunc(characters * 7 + 0.5)) + 5;
}

CellOffset ColumnAt(const Worksheet& sheet, double x_points) {
  double x = ToPixels(x_points);
  for (int column = 1; column < kMaxColumns; ++column) {
    const int width = ColumnPixels(sheet.ColumnWidthAt(column));
    if (x < width) return {column - 1, std::llround(x * kEmuPerPixel)};
    x -= width;
  }
  const int width = ColumnPixels(sheet.ColumnWidthAt(kMaxColumns));
  return {kMaxColumns - 1, std::llround(std::min<double>(x, width) * kEmuPerPixel)};
}

CellOffset RowAt(double y_points) {
  const double y = ToPixels(y_points);
  const double row = std::floor(y / kRowPixels);
  if (row >= kMaxRows - 1) return {kMaxRows - 1, 0};
  return {static_cast<int>(row), std::llround((y - row * kRowPixels) * kEmuPerPixel)};
}

std::string WriteWorksheetDrawing(const Worksheet& sheet) {
  XmlWriter xml;
  StartDrawing(xml);
  int index = 0;
  for (const auto& object : sheet.chart_objects()) {
    ++index;
    const double left = std::max(0.0, object->Left());
    const double top = std::max(0.0, object->Top());
    xml.StartTag("xdr:twoCellAnchor");
    WriteMarker(xml, "xdr:from", ColumnAt(sheet, left), RowAt(top));
    WriteMarker(xml, "xdr:to", ColumnAt(sheet, left + object->Width()),
                RowAt(top + object->Height()));
    WriteGraphicFrame(xml, index + 1, object->Name(), index, false);
    xml.EmptyTag("xdr:clientData");
    xml.EndTag("xdr:twoCellAnchor");
  }
  xml.EndTag("xdr:wsDr");
  return xml.Release();
}

std::string WriteChartsheetDrawing() {
  XmlWriter xml;
  StartDrawing(xml);
  xml.StartTag("xdr:absoluteAnchor");
  xml.EmptyTag("xdr:pos", {{"x", 0}, {"y", 0}});
  xml.EmptyTag("xdr:ext", {{"cx", kChartsheetWidthEmu}, {"cy", kChartsheetHeightEmu}});
  WriteGraphicFrame(xml, 2, "Chart 1", 1, true);
  xml.EmptyTag("xdr:clientData");
  xml.EndTag("xdr:absoluteAnchor");
  xml.EndTag("xdr:wsDr");
  return xml.Release();
}

std::string WriteDrawingRelationships(const std::vector<int>& chart_numbers) {
  std::vector<Relationship> relationships;
  relationships.reserve(chart_numbers.size());
  for (int number : chart_numbers) {
    relationships.push_back(
        {rel_type::kChart, "../charts/chart" + std::to_string(number) + ".xml"});
  }
  return WriteRelationships(relationships);
}

}  // namespace z4400
