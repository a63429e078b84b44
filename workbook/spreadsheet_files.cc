#include "workbook/spreadsheet_files.h"

#include "workbook/model/name_compare.h"
#include "workbook/xls/xls_export.h"
#include "workbook/xlsx/xlsx_reader.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {

bool SpreadsheetFiles::Save(const Workbook& workbook, const std::filesystem::path& path,
                            std::string* error) const {
  if (AsciiLower(path.extension().string()) == ".xls") return SaveXls(workbook, path, error);
  return SaveXlsx(workbook, path, error);
}

bool SpreadsheetFiles::Read(const std::filesystem::path& path, Workbook* into,
                            std::string* error) const {
  return ReadXlsx(path, into, error);
}

}  // namespace z4400
