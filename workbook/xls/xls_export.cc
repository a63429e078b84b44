#include "workbook/xls/xls_export.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "workbook/package/temporary_folder.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {
namespace {

void SetError(std::string* error, std::string message) {
  if (error != nullptr) *error = std::move(message);
}

}  // namespace

bool SaveXls(const Workbook& workbook, const std::filesystem::path& path, std::string* error,
             const XlsConversion& conversion) {
  // Checked first so that a missing LibreOffice costs no .xlsx save.
  if (!XlsConverterInstalled(conversion)) {
    SetError(error, kXlsNeedsLibreOffice);
    return false;
  }
  TemporaryFolder folder("z4400-xls");
  if (!folder.ok()) {
    SetError(error, std::string("Cannot create a temporary folder: ") + std::strerror(errno));
    return false;
  }
  const auto xlsx = folder.path() / (path.stem().string() + ".xlsx");
  // A private temporary, gone after the conversion: no need to wait for the
  // disk.
  XlsxOptions options;
  options.durability = SaveDurability::kLeftToTheSystem;
  if (!SaveXlsx(workbook, xlsx, options, error)) return false;
  return ConvertXlsxToXls(xlsx, path, error, conversion);
}

}  // namespace z4400
