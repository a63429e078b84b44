#include "workbook/xlsx/xlsx_print_settings.h"

#include "workbook/model/cell_address.h"

namespace z4400 {
namespace {

constexpr int32_t kDefaultZoom = 100;

const char* OrientationName(int32_t orientation) {
  return orientation == kXlLandscape ? "landscape" : "portrait";
}

}  // namespace

void WriteWorksheetPr(XmlWriter& xml, const PageSetup& setup) {
  if (setup.Zoom() != 0) return;
  xml.StartTag("sheetPr");
  xml.EmptyTag("pageSetUpPr", {{"fitToPage", 1}});
  xml.EndTag("sheetPr");
}

void WritePageSetup(XmlWriter& xml, const PageSetup& setup, bool worksheet) {
  const bool landscape = setup.Orientation() == kXlLandscape;
  if (!worksheet) {
    if (landscape) xml.EmptyTag("pageSetup", {{"orientation", "landscape"}});
    return;
  }
  const char* orientation = OrientationName(setup.Orientation());
  if (setup.Zoom() == 0) {
    xml.EmptyTag("pageSetup", {{"orientation", orientation},
                               {"fitToWidth", setup.FitToPagesWide()},
                               {"fitToHeight", setup.FitToPagesTall()}});
  } else if (setup.Zoom() != kDefaultZoom) {
    xml.EmptyTag("pageSetup", {{"scale", setup.Zoom()}, {"orientation", orientation}});
  } else if (landscape) {
    xml.EmptyTag("pageSetup", {{"orientation", orientation}});
  }
}

std::string FooterText(const PageSetup& setup) {
  std::string text;
  if (!setup.LeftFooter().empty()) text += "&L" + setup.LeftFooter();
  if (!setup.CenterFooter().empty()) text += "&C" + setup.CenterFooter();
  if (!setup.RightFooter().empty()) text += "&R" + setup.RightFooter();
  return text;
}

void WriteHeaderFooter(XmlWriter& xml, const PageSetup& setup) {
  const std::string footer = FooterText(setup);
  if (footer.empty()) return;
  xml.StartTag("headerFooter");
  xml.DataElement("oddFooter", footer);
  xml.EndTag("headerFooter");
}

void WriteRowBreaks(XmlWriter& xml, const HPageBreakList& breaks) {
  if (breaks.Count() == 0) return;
  xml.StartTag("rowBreaks", {{"count", breaks.Count()}, {"manualBreakCount", breaks.Count()}});
  for (const int row : breaks.Rows()) {
    // The file stores the last row of the page before the break.
    xml.EmptyTag("brk", {{"id", row - 1}, {"max", kMaxColumns - 1}, {"man", 1}});
  }
  xml.EndTag("rowBreaks");
}

}  // namespace z4400
