// Saving a workbook in the older binary .xls format: our writer makes the
// .xlsx, LibreOffice (when installed) turns it into .xls.
#ifndef Z4400_WORKBOOK_XLS_XLS_EXPORT_H_
#define Z4400_WORKBOOK_XLS_XLS_EXPORT_H_

#include <filesystem>
#include <string>

#include "workbook/xls/xls_convert.h"

namespace z4400 {

class Workbook;

/// Saves `workbook` as an .xls file at `path`: written as .xlsx into a
/// private temporary folder, then converted by `ConvertXlsxToXls`. Returns
/// false and sets `*error` (when not null) if any step fails, with
/// `kXlsNeedsLibreOffice` when LibreOffice is missing; `path` is then left as
/// it was.
bool SaveXls(const Workbook& workbook, const std::filesystem::path& path, std::string* error,
             const XlsConversion& conversion = {});

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLS_XLS_EXPORT_H_
