// Saving the in-memory workbook as an .xlsx package: every sheet, chart
// sheet, embedded chart, style and string the model holds, written as
// SpreadsheetML parts into one zip file.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_WRITER_H_
#define Z4400_WORKBOOK_XLSX_XLSX_WRITER_H_

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "common/save_durability.h"

namespace z4400 {

class Workbook;

/// Choices of a save that the workbook itself does not hold.
struct XlsxOptions {
  /// Author recorded in the document properties; empty leaves it out.
  std::string creator;
  /// Creation time recorded in the document properties, as a W3C date-time
  /// in UTC ("2026-11-21T08:12:13Z"); empty leaves it out, so that saving
  /// the same workbook twice gives the same bytes.
  std::string created;
  /// Deflate level of the zip members (see `ZipWriter`).
  int compression_level = 1;
  /// Whether the save waits for the disk (see `WriteAtomically`).
  SaveDurability durability = SaveDurability::kOnDisk;
};

/// Receives each part of the package: its name inside the package and its
/// bytes. Returns false to stop the save.
using XlsxPartSink = std::function<bool(std::string_view name, std::string_view bytes)>;

/// Hands every part of `workbook` to `sink`, in package order. Returns
/// false as soon as `sink` does; throws `RuntimeFailure` when the workbook
/// cannot be saved (no sheet at all, a chart series referring to a sheet
/// that is gone).
bool WriteXlsxParts(const Workbook& workbook, const XlsxOptions& options, const XlsxPartSink& sink);

/// Writes `workbook` to `path` as an .xlsx package. The file is replaced
/// atomically: on failure an existing file at `path` is left untouched and
/// no partial file remains. Returns true on success; on failure returns
/// false and, when `error` is not null, sets it to a short description for
/// the log (the reason the package could not be written).
bool SaveXlsx(const Workbook& workbook, const std::filesystem::path& path, std::string* error);
bool SaveXlsx(const Workbook& workbook, const std::filesystem::path& path,
              const XlsxOptions& options, std::string* error);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_WRITER_H_
