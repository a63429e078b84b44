// The print settings of a saved sheet, one function per element in the
// order the worksheet and chart sheet parts take them: the fit-to-page mark
// of `<sheetPr>`, `<pageSetup>`, `<headerFooter>` and `<rowBreaks>`.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_PRINT_SETTINGS_H_
#define Z4400_WORKBOOK_XLSX_XLSX_PRINT_SETTINGS_H_

#include <string>

#include "workbook/model/page_setup.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {

/// `<sheetPr><pageSetUpPr fitToPage="1"/></sheetPr>` for a worksheet scaled
/// to fit its pages (`Zoom` 0); nothing otherwise.
void WriteWorksheetPr(XmlWriter& xml, const PageSetup& setup);

/// `<pageSetup>` with the orientation and, for a worksheet, the scale or
/// the pages to fit to; nothing when every setting is the default.
void WritePageSetup(XmlWriter& xml, const PageSetup& setup, bool worksheet);

/// The footer as one text: "&L" left part, "&C" centre part, "&R" right
/// part, each only when not empty.
std::string FooterText(const PageSetup& setup);

/// `<headerFooter><oddFooter>…</oddFooter></headerFooter>`; nothing without
/// a footer.
void WriteHeaderFooter(XmlWriter& xml, const PageSetup& setup);

/// `<rowBreaks>` with one manual break per row of `breaks` (the break sits
/// after the row above); nothing without breaks.
void WriteRowBreaks(XmlWriter& xml, const HPageBreakList& breaks);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_PRINT_SETTINGS_H_
