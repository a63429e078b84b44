// The general-information block at the top of "Report" and "Raw Data": the
// heading, the source file's name and path, and the instrument's model,
// measurement date and title.
#ifndef Z4400_WORKBOOK_REPORTS_GENERAL_INFO_SHEET_H_
#define Z4400_WORKBOOK_REPORTS_GENERAL_INFO_SHEET_H_

#include <cstdint>
#include <string_view>

#include "common/sheet_names.h"
#include "source/records.h"
#include "workbook/excel_app.h"

namespace z4400 {

/// Heading of the block on the report sheet and on the raw data sheet.
inline constexpr std::string_view kReportHeading = "Measurement Report";
inline constexpr std::string_view kRawDataHeading = "Configuration and Traces";

/// Writes the block on worksheet `sheet_name` of the active workbook, which
/// becomes the active sheet: `heading` in A1 (bold), then from row 2 the
/// lines "File name" (`file_name`, the name of the file-list entry being
/// converted), the full source path (label only, not italic), "Instrument
/// reference", "Date" (shown dd/mmmm/yyyy when it reads as a date) and
/// "Title"; column B fitted to its contents, column A 18 wide. Returns 0.
/// A missing worksheet or a rejected write throws `RuntimeFailure`.
int16_t WriteGeneralInfo(const ExcelApp& excel, const GeneralInfo& info, std::string_view file_name,
                         std::string_view sheet_name, std::string_view heading);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_GENERAL_INFO_SHEET_H_
