#include "workbook/spreadsheet_files.h"

#include "workbook/model/name_compare.h"
#include "workbook/xls/xls_export.h"
#include "workbook/xlsx/xlsx_reader.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {

bool SpreadsheetFiles::Save(const Workbook& workbook, const std::filesystem::path& path,
                            SaveDurability durability, std::string* error) const {
  // The old format is always saved to the disk: it is rare, and its
  // conversion costs far more than the wait.
  if (AsciiLower(path.extension().string()) == ".xls") return SaveXls(workbook, path, error);
  XlsxOptions options;
  options.durability = durability;
  return SaveXlsx(workbook, path, options, error);
}

bool SpreadsheetFiles::Read(const std::filesystem::path& path, Workbook* into,
                            std::string* error) const {
  return ReadXlsx(path, into, error);
}

}  // namespace z4400
