#include "workbook/xlsx/xlsx_chartsheet_part.h"

#include "workbook/xlsx/xlsx_print_settings.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {

std::string WriteChartsheetPart(bool selected, const PageSetup& setup) {
  XmlWriter xml;
  xml.StartTag(
      "chartsheet",
      {{"xmlns", "http://schemas.openxmlformats.org/spreadsheetml/2006/main"},
       {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"}});
  xml.EmptyTag("sheetPr");
  xml.StartTag("sheetViews");
  if (selected) {
    xml.EmptyTag("sheetView", {{"tabSelected", 1}, {"workbookViewId", 0}});
  } else {
    xml.EmptyTag("sheetView", {{"workbookViewId", 0}});
  }
  xml.EndTag("sheetViews");
  xml.EmptyTag("pageMargins", {{"left", 0.7},
                               {"right", 0.7},
                               {"top", 0.75},
                               {"bottom", 0.75},
                               {"header", 0.3},
                               {"footer", 0.3}});
  WritePageSetup(xml, setup, false);
  WriteHeaderFooter(xml, setup);
  xml.EmptyTag("drawing", {{"r:id", "rId1"}});
  xml.EndTag("chartsheet");
  return xml.Release();
}

}  // namespace z4400
