// The workbook files the converter writes and reads: .xlsx, and the binary
// .xls when the name asks for it.
#ifndef Z4400_WORKBOOK_SPREADSHEET_FILES_H_
#define Z4400_WORKBOOK_SPREADSHEET_FILES_H_

#include <filesystem>
#include <string>

#include "workbook/model/workbook_files.h"

namespace z4400 {

/// Saves ".xls" (any case) in the binary format and every other name as
/// .xlsx; reads .xlsx.
class SpreadsheetFiles final : public WorkbookFiles {
 public:
  bool Save(const Workbook& workbook, const std::filesystem::path& path, SaveDurability durability,
            std::string* error) const override;
  bool Read(const std::filesystem::path& path, Workbook* into, std::string* error) const override;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_SPREADSHEET_FILES_H_
