// How a converted workbook prints: every sheet landscape, one page wide,
// with the source file's name, the sheet's name and the page number in its
// footer; on "Report" each screen's configuration block, chart and marker
// list on a page of their own.
#ifndef Z4400_CHARTS_PRINT_LAYOUT_H_
#define Z4400_CHARTS_PRINT_LAYOUT_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace z4400 {

class Workbook;

/// Longest source file name the footer shows; a longer one is cut and ends
/// in "…" (the footer as a whole may hold 255 characters).
inline constexpr std::size_t kFooterNameCharacters = 100;

/// `file_name` as footer text: every "&" doubled, so that it shows as
/// written, and cut to `kFooterNameCharacters` characters.
std::string FooterFileName(std::string_view file_name);

/// Lays out every sheet of `workbook` for printing: landscape; worksheets
/// scaled to one page wide and as many pages down as they need; the
/// footer "`source_file_name`", the sheet's name and "Page n of m". On
/// "Report", a page starts at the configuration block of every screen after
/// the first of the `screen_count` screens, and the charts are placed again
/// beside their blocks (the columns left of them may have widened since).
/// Throws `RuntimeFailure` when the workbook has no "Report".
void SetPrintLayout(Workbook& workbook, std::string_view source_file_name, int32_t screen_count);

}  // namespace z4400

#endif  // Z4400_CHARTS_PRINT_LAYOUT_H_
