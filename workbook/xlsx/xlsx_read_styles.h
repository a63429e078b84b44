// The cell formats of an .xlsx file (styles.xml) as the workbook model's
// cell styles: number format and bold/italic, and which formats show dates.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_READ_STYLES_H_
#define Z4400_WORKBOOK_XLSX_XLSX_READ_STYLES_H_

#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/cell_style.h"

namespace z4400 {

/// The code of built-in number format `id`, as the file format defines it;
/// "General" for id 0 and for ids it does not define. Id 14, the short date
/// in the user's own order, reads as "General": the workbook model shows a
/// date in a General cell that way and saves it with id 14.
std::string BuiltInNumberFormat(int id);

/// True when number format `code` shows a date or time: a d, m, y, h or s
/// outside quoted text, escaped characters and [colour]/[$-locale] tags
/// (elapsed-time tags like [h] count).
bool IsDateFormat(std::string_view code);

/// The cell formats (`cellXfs`) of one file, each mapped to a model style.
class XlsxCellFormats {
 public:
  /// Reads the styles part `xml`, interning a style per cell format into
  /// `table`. Returns false with `*error` set when the part is not XML.
  bool Read(std::string_view xml, StyleTable* table, std::string* error);

  /// The model style of cell format `index`; the default style (0) for an
  /// index the file does not define.
  StyleId Style(int index) const;
  /// True when cell format `index` shows dates.
  bool IsDate(int index) const;

 private:
  std::vector<StyleId> styles_;
  std::vector<bool> dates_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_READ_STYLES_H_
