// Saving the in-memory workbook as an .xlsx package: every sheet, chart
// sheet, embedded chart, style and string the model holds, written as
// SpreadsheetML parts into one zip file.
#ifndef Z4400_WORKBOOK_XLSX_WRITER_H_
#define Z4400_WORKBOOK_XLSX_WRITER_H_

#include <filesystem>
#include <string>

namespace z4400 {

class Workbook;

/// Writes `workbook` to `path` as an .xlsx package. The file is replaced
/// atomically: on failure an existing file at `path` is left untouched and
/// no partial file remains. Returns true on success; on failure returns
/// false and, when `error` is not null, sets it to a short description for
/// the log (the reason the package could not be written).
bool SaveXlsx(const Workbook& workbook, const std::filesystem::path& path, std::string* error);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_WRITER_H_
