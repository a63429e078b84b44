// Opening a saved .xlsx workbook into the workbook model: the sheets in
// order (worksheets and chart sheets), and the worksheets' cells with their
// number formats, bold and italic, and column widths.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_READER_H_
#define Z4400_WORKBOOK_XLSX_XLSX_READER_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "workbook/package/zip_reader.h"
#include "workbook/xlsx/xlsx_read_cells.h"

namespace z4400 {

class Workbook;

/// How much a file may make the reader allocate.
struct XlsxReadLimits {
  ZipLimits zip;
  CellBudget cells;
};

/// Reads the .xlsx file at `path` and appends its sheets, in the file's
/// order, to `into` (normally a new, empty workbook). Cell values come back
/// as numbers, texts (shared or inline), booleans, and dates where the
/// cell's number format shows a date; formula cells give their last value;
/// error values read as their text ("#N/A"). Charts are not read: chart
/// sheets come back by name only. Returns false with `*error` set (in words
/// for the log) when the file cannot be read, is not a workbook, or is
/// damaged; `into` may then hold part of the file and should be discarded.
bool ReadXlsx(const std::filesystem::path& path, Workbook* into, std::string* error);

/// The same over the bytes of a file, with explicit limits.
bool ReadXlsxBytes(std::string_view bytes, Workbook* into, std::string* error,
                   const XlsxReadLimits& limits = {});

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_READER_H_
