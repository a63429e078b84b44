// Which file a workbook is saved to: a name without a workbook extension
// gets the default extension of the application's version.
#ifndef Z4400_WORKBOOK_MODEL_WORKBOOK_FILE_H_
#define Z4400_WORKBOOK_MODEL_WORKBOOK_FILE_H_

#include <filesystem>
#include <string_view>

namespace z4400 {

/// Whether `version` (the application's version text, "16.0") is below 12,
/// the versions whose default workbook format is the binary .xls.
bool IsBinaryFormatVersion(std::string_view version);

/// `path` with the default extension of `version` appended unless it
/// already ends in a workbook extension (".xls", ".xlsx", ".xlsm", ".xlsb",
/// ".xlt", ".xltx", ".xltm", any case): ".xls" below version 12, ".xlsx"
/// from 12 on. "meas" and "meas.v2" become "meas.xlsx" and "meas.v2.xlsx".
std::filesystem::path WorkbookFilePath(const std::filesystem::path& path, std::string_view version);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_WORKBOOK_FILE_H_
