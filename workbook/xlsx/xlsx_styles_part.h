// "xl/styles.xml" of a saved workbook: the number formats, fonts and cell
// formats (cellXfs) that the cells refer to by index.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_STYLES_PART_H_
#define Z4400_WORKBOOK_XLSX_XLSX_STYLES_PART_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "workbook/model/cell_style.h"

namespace z4400 {

/// The id of a number format the spreadsheet knows without a `numFmt`
/// element ("General" 0, "0.00" 2, "h:mm" 20 …), or nothing for a format
/// that must be written out.
std::optional<int> BuiltInNumberFormatId(std::string_view format);

/// The cell formats of one saved workbook, built from the workbook's style
/// table: cell format i is style id i, so cells keep their style ids as `s`
/// attributes. A date cell whose style has the general format gets an extra
/// cell format with the short-date format (14), so that it shows as a date,
/// as the spreadsheet does when a date is typed into a general cell.
class XlsxStyles {
 public:
  explicit XlsxStyles(const StyleTable& table);

  /// The cellXfs index for a cell with style `id`; `is_date` for date cells.
  int CellFormat(StyleId id, bool is_date);

  /// Writes the part. Call after every `CellFormat` call.
  std::string WritePart() const;

 private:
  struct Xf {
    int number_format_id = 0;
    int font_id = 0;
  };

  int NumberFormatId(const std::string& format);
  int FontId(bool bold, bool italic);

  std::vector<Xf> xfs_;
  std::vector<int> date_xfs_;  // style id → extra date xf, or -1 before first use
  std::vector<std::pair<int, std::string>> custom_formats_;  // id from 164, code
  std::map<std::string, int, std::less<>> format_ids_;
  std::vector<std::pair<bool, bool>> fonts_;  // bold, italic; font 0 is regular
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_STYLES_PART_H_
