// The cells of an .xlsx file: the shared-string table and the worksheet
// parts, read into the workbook model's worksheets.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_READ_CELLS_H_
#define Z4400_WORKBOOK_XLSX_XLSX_READ_CELLS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

class Worksheet;
class XlsxCellFormats;

/// Decodes the "_xHHHH_" escapes the file format uses for characters XML
/// cannot carry (a carriage return is "_x000D_"; a literal "_x" is written
/// "_x005F_x"). Other text is returned unchanged.
std::string DecodeEscapes(std::string_view text);

/// The width in characters that the spreadsheet shows for a width stored in
/// the file (which adds a 5-pixel padding): 9.140625 reads as 8.43.
double ColumnWidthFromStored(double stored);

/// Reads the shared-string part `xml` into `*texts` (rich-text runs joined,
/// phonetic runs left out). Returns false with `*error` set when it is not
/// XML.
bool ReadSharedStrings(std::string_view xml, std::vector<std::string>* texts, std::string* error);

/// How many cells the worksheets of one file may make the model hold; rows
/// and columns up to the farthest cell of each row count, since the model
/// keeps rows dense.
struct CellBudget {
  uint64_t remaining = uint64_t{16} << 20;
};

/// Reads the worksheet part `xml` into `sheet`: column widths and formats,
/// and every cell's value and style. Numbers in a cell whose format shows
/// dates become dates. Returns false with `*error` set when the part is not
/// XML, a cell lies outside the worksheet, a number or shared-string index
/// does not read, or the budget runs out.
bool ReadWorksheetPart(std::string_view xml, const std::vector<std::string>& texts,
                       const XlsxCellFormats& formats, Worksheet* sheet, CellBudget* budget,
                       std::string* error);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_READ_CELLS_H_
