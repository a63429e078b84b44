#include "workbook/xlsx/xlsx_package_parts.h"

#include <string>

#include "workbook/xlsx/xlsx_chart_series.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

constexpr std::string_view kRelationshipsNs =
    "http://schemas.openxmlformats.org/package/2006/relationships";
constexpr std::string_view kSpreadsheetNs =
    "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr std::string_view kOfficeRelationshipsNs =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr std::string_view kApplicationName = "Z4400 Converter";

constexpr std::string_view kWorksheetType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml";
constexpr std::string_view kChartsheetType =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.chartsheet+xml";
constexpr std::string_view kDrawingType =
    "application/vnd.openxmlformats-officedocument.drawing+xml";
constexpr std::string_view kChartType =
    "application/vnd.openxmlformats-officedocument.drawingml.chart+xml";

void Override(XmlWriter& xml, const std::string& part, std::string_view type) {
  xml.EmptyTag("Override", {{"PartName", "/" + part}, {"ContentType", type}});
}

void LpstrVector(XmlWriter& xml, const PackageLayout& layout, SheetKind kind) {
  for (const SheetLayout& sheet : layout.sheets) {
    if (sheet.kind == kind) xml.DataElement("vt:lpstr", sheet.name);
  }
}

}  // namespace

std::string WriteRelationships(const std::vector<Relationship>& relationships) {
  XmlWriter xml;
  xml.StartTag("Relationships", {{"xmlns", kRelationshipsNs}});
  int id = 0;
  for (const Relationship& relationship : relationships) {
    xml.EmptyTag("Relationship", {{"Id", "rId" + std::to_string(++id)},
                                  {"Type", relationship.type},
                                  {"Target", relationship.target}});
  }
  xml.EndTag("Relationships");
  return xml.Release();
}

std::string WriteContentTypes(const PackageLayout& layout) {
  XmlWriter xml;
  xml.StartTag("Types",
               {{"xmlns", "http://schemas.openxmlformats.org/package/2006/content-types"}});
  xml.EmptyTag("Default",
               {{"Extension", "rels"},
                {"ContentType", "application/vnd.openxmlformats-package.relationships+xml"}});
  xml.EmptyTag("Default", {{"Extension", "xml"}, {"ContentType", "application/xml"}});
  Override(xml, "xl/workbook.xml",
           "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml");
  for (const SheetLayout& sheet : layout.sheets) {
    Override(xml, SheetPartName(sheet),
             sheet.kind == SheetKind::kWorksheet ? kWorksheetType : kChartsheetType);
  }
  for (const SheetLayout& sheet : layout.sheets) {
    if (sheet.drawing_number != 0)
      Override(xml, DrawingPartName(sheet.drawing_number), kDrawingType);
    for (int chart : sheet.chart_numbers) Override(xml, ChartPartName(chart), kChartType);
  }
  Override(xml, "xl/styles.xml",
           "application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml");
  if (layout.has_shared_strings) {
    Override(xml, "xl/sharedStrings.xml",
             "application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml");
  }
  Override(xml, "docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml");
  Override(xml, "docProps/app.xml",
           "application/vnd.openxmlformats-officedocument.extended-properties+xml");
  xml.EndTag("Types");
  return xml.Release();
}

std::string WriteRootRelationships() {
  return WriteRelationships({{rel_type::kOfficeDocument, "xl/workbook.xml"},
                             {rel_type::kCoreProperties, "docProps/core.xml"},
                             {rel_type::kExtendedProperties, "docProps/app.xml"}});
}

std::string WriteCoreProperties(const DocumentProperties& properties) {
  XmlWriter xml;
  xml.StartTag(
      "cp:coreProperties",
      {{"xmlns:cp", "http://schemas.openxmlformats.org/package/2006/metadata/core-properties"},
       {"xmlns:dc", "http://purl.org/dc/elements/1.1/"},
       {"xmlns:dcterms", "http://purl.org/dc/terms/"},
       {"xmlns:dcmitype", "http://purl.org/dc/dcmitype/"},
       {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"}});
  if (!properties.creator.empty()) {
    xml.DataElement("dc:creator", properties.creator);
    xml.DataElement("cp:lastModifiedBy", properties.creator);
  }
  if (!properties.created.empty()) {
    xml.DataElement("dcterms:created", properties.created, {{"xsi:type", "dcterms:W3CDTF"}});
    xml.DataElement("dcterms:modified", properties.created, {{"xsi:type", "dcterms:W3CDTF"}});
  }
  xml.EndTag("cp:coreProperties");
  return xml.Release();
}

std::string WriteAppProperties(const PackageLayout& layout) {
  const int worksheets = layout.worksheet_count();
  const int chartsheets = layout.chartsheet_count();
  const int kinds = (worksheets > 0) + (chartsheets > 0);
  XmlWriter xml;
  xml.StartTag(
      "Properties",
      {{"xmlns", "http://schemas.openxmlformats.org/officeDocument/2006/extended-properties"},
       {"xmlns:vt", "http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes"}});
  xml.DataElement("Application", kApplicationName);
  xml.DataElement("DocSecurity", "0");
  xml.DataElement("ScaleCrop", "false");
  xml.StartTag("HeadingPairs");
  xml.StartTag("vt:vector", {{"size", 2 * kinds}, {"baseType", "variant"}});
  const auto heading = [&](std::string_view name, int count) {
    if (count == 0) return;
    xml.StartTag("vt:variant");
    xml.DataElement("vt:lpstr", name);
    xml.EndTag("vt:variant");
    xml.StartTag("vt:variant");
    xml.DataElement("vt:i4", std::to_string(count));
    xml.EndTag("vt:variant");
  };
  heading("Worksheets", worksheets);
  heading("Charts", chartsheets);
  xml.EndTag("vt:vector");
  xml.EndTag("HeadingPairs");
  xml.StartTag("TitlesOfParts");
  xml.StartTag("vt:vector", {{"size", worksheets + chartsheets}, {"baseType", "lpstr"}});
  LpstrVector(xml, layout, SheetKind::kWorksheet);
  LpstrVector(xml, layout, SheetKind::kChartsheet);
  xml.EndTag("vt:vector");
  xml.EndTag("TitlesOfParts");
  xml.EmptyTag("Company");
  xml.DataElement("LinksUpToDate", "false");
  xml.DataElement("SharedDoc", "false");
  xml.DataElement("HyperlinksChanged", "false");
  xml.EndTag("Properties");
  return xml.Release();
}

namespace {

// Each filtered worksheet names its filtered area "_xlnm._FilterDatabase",
// hidden and local to the sheet, as the spreadsheet does.
void WriteFilterNames(XmlWriter& xml, const PackageLayout& layout) {
  bool any = false;
  for (std::size_t i = 0; i < layout.sheets.size(); ++i) {
    const SheetLayout& sheet = layout.sheets[i];
    if (!sheet.filter) continue;
    if (!any) xml.StartTag("definedNames");
    any = true;
    xml.DataElement("definedName", SheetReference(sheet.name, *sheet.filter),
                    {{"name", "_xlnm._FilterDatabase"}, {"localSheetId", i}, {"hidden", 1}});
  }
  if (any) xml.EndTag("definedNames");
}

}  // namespace

std::string WriteWorkbookPart(const PackageLayout& layout) {
  XmlWriter xml;
  xml.StartTag("workbook", {{"xmlns", kSpreadsheetNs}, {"xmlns:r", kOfficeRelationshipsNs}});
  xml.EmptyTag("fileVersion",
               {{"appName", "xl"}, {"lastEdited", 4}, {"lowestEdited", 4}, {"rupBuild", 4505}});
  xml.EmptyTag("workbookPr", {{"defaultThemeVersion", 124226}});
  xml.StartTag("bookViews");
  if (layout.active_sheet > 0) {
    xml.EmptyTag("workbookView", {{"xWindow", 240},
                                  {"yWindow", 15},
                                  {"windowWidth", 16095},
                                  {"windowHeight", 9660},
                                  {"activeTab", layout.active_sheet}});
  } else {
    xml.EmptyTag(
        "workbookView",
        {{"xWindow", 240}, {"yWindow", 15}, {"windowWidth", 16095}, {"windowHeight", 9660}});
  }
  xml.EndTag("bookViews");
  xml.StartTag("sheets");
  int position = 0;
  for (const SheetLayout& sheet : layout.sheets) {
    ++position;
    xml.EmptyTag(
        "sheet",
        {{"name", sheet.name}, {"sheetId", position}, {"r:id", "rId" + std::to_string(position)}});
  }
  xml.EndTag("sheets");
  WriteFilterNames(xml, layout);
  xml.EmptyTag("calcPr", {{"calcId", 124519}});
  xml.EndTag("workbook");
  return xml.Release();
}

std::string WriteWorkbookRelationships(const PackageLayout& layout) {
  std::vector<Relationship> relationships;
  for (const SheetLayout& sheet : layout.sheets) {
    const bool worksheet = sheet.kind == SheetKind::kWorksheet;
    relationships.push_back({worksheet ? rel_type::kWorksheet : rel_type::kChartsheet,
                             SheetPartName(sheet).substr(3)});  // relative to "xl/"
  }
  relationships.push_back({rel_type::kStyles, "styles.xml"});
  if (layout.has_shared_strings)
    relationships.push_back({rel_type::kSharedStrings, "sharedStrings.xml"});
  return WriteRelationships(relationships);
}

}  // namespace z4400
