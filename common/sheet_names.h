// The names of the three result sheets of a converted workbook.
#ifndef Z4400_COMMON_SHEET_NAMES_H_
#define Z4400_COMMON_SHEET_NAMES_H_

#include <string_view>

namespace z4400 {

inline constexpr std::string_view kReportSheet = "Report";
inline constexpr std::string_view kRawDataSheet = "Raw Data";
inline constexpr std::string_view kMarkersDetailsSheet = "Markers Details";

}  // namespace z4400

#endif  // Z4400_COMMON_SHEET_NAMES_H_
