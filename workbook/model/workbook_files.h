// How the workbook model reaches files. The model knows no file format: the
// application is handed an implementation that writes and reads them.
#ifndef Z4400_WORKBOOK_MODEL_WORKBOOK_FILES_H_
#define Z4400_WORKBOOK_MODEL_WORKBOOK_FILES_H_

#include <filesystem>
#include <string>

#include "common/save_durability.h"

namespace z4400 {

class Workbook;

/// Writes workbooks to files and reads them back.
class WorkbookFiles {
 public:
  WorkbookFiles() = default;
  virtual ~WorkbookFiles() = default;
  WorkbookFiles(const WorkbookFiles&) = delete;
  WorkbookFiles& operator=(const WorkbookFiles&) = delete;

  /// Writes `workbook` to `path` in the format its extension names. The
  /// file is replaced atomically; `durability` says whether the save waits
  /// for the disk. False with `*error` set on failure; an existing file at
  /// `path` is then left as it was.
  virtual bool Save(const Workbook& workbook, const std::filesystem::path& path,
                    SaveDurability durability, std::string* error) const = 0;
  /// Appends the sheets of the workbook file at `path` to `into`. False
  /// with `*error` set when the file cannot be read; `into` may then hold
  /// part of it.
  virtual bool Read(const std::filesystem::path& path, Workbook* into,
                    std::string* error) const = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_WORKBOOK_FILES_H_
