// Turning an .xlsx file into the older binary .xls format with LibreOffice,
// for users whose spreadsheet application predates .xlsx.
#ifndef Z4400_WORKBOOK_XLS_XLS_CONVERT_H_
#define Z4400_WORKBOOK_XLS_XLS_CONVERT_H_

#include <chrono>
#include <filesystem>
#include <string>

namespace z4400 {

/// How the .xlsx to .xls conversion is run.
struct XlsConversion {
  /// The LibreOffice program; looked up on PATH unless it holds a "/".
  std::string program = "soffice";
  /// After this long the conversion is stopped and counts as failed.
  std::chrono::milliseconds timeout = std::chrono::seconds(120);
};

/// The message when LibreOffice is missing.
inline constexpr char kXlsNeedsLibreOffice[] =
    "Saving .xls needs LibreOffice (soffice), which is not installed.";

/// True when `conversion.program` names an executable file.
bool XlsConverterInstalled(const XlsConversion& conversion);

/// Turns the .xlsx file `xlsx` into the .xls file `path`: LibreOffice runs
/// headless in a private temporary folder, with a profile of its own so that
/// a LibreOffice the user has open is not disturbed, and its result is moved
/// over `path` atomically. Returns false and sets `*error` (when not null)
/// if any step fails; `path` is then left as it was.
bool ConvertXlsxToXls(const std::filesystem::path& xlsx, const std::filesystem::path& path,
                      std::string* error, const XlsConversion& conversion = {});

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLS_XLS_CONVERT_H_
