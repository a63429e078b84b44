#include "workbook/model/workbook_file.h"

#include <charconv>
#include <string>

#include "workbook/model/name_compare.h"

namespace z4400 {

bool IsBinaryFormatVersion(std::string_view version) {
  double number = 0;
  const auto result = std::from_chars(version.data(), version.data() + version.size(), number);
  return result.ec == std::errc() && number < 12;
}

std::filesystem::path WorkbookFilePath(const std::filesystem::path& path,
                                       std::string_view version) {
  static constexpr std::string_view kWorkbookExtensions[] = {".xls", ".xlsx", ".xlsm", ".xlsb",
                                                             ".xlt", ".xltx", ".xltm"};
  const std::string extension = AsciiLower(path.extension().string());
  for (const std::string_view known : kWorkbookExtensions) {
    if (extension == known) return path;
  }
  std::filesystem::path with_extension = path;
  with_extension += IsBinaryFormatVersion(version) ? ".xls" : ".xlsx";
  return with_extension;
}

}  // namespace z4400
