// The file-type filters of the open and save dialogs. The converter words
// them in the spreadsheet's form ("label,pattern" pairs separated by commas);
// the desktop's file dialog wants one "label (patterns)" entry per type.
#ifndef Z4400_SHELL_FILE_FILTER_H_
#define Z4400_SHELL_FILE_FILTER_H_

#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

/// One entry per label and pattern pair, in order, for the desktop's file
/// dialog: the label as written when it already names its patterns in
/// parentheses ("XML Files Z4420 family (*.xml)", "(*.csv)"), else the label
/// followed by the patterns in parentheses ("All Files (*.*)"; "(*.xml)"
/// for an empty label). Several patterns of one type ("*.xls;*.xlsx") are
/// listed with blanks between them. A pattern missing at the end is taken
/// as "*". An empty filter gives no entries.
std::vector<std::string> DialogNameFilters(std::string_view filter);

/// The path a save dialog answers, as the spreadsheet's own save dialog
/// gives it: with the extension of the chosen type `name_filter` (an entry
/// of `DialogNameFilters`, "Excel Files (*.xlsx)"). A file name that already
/// ends in one of the type's extensions, in any case, gets the type's own
/// spelling ("A.XLSX" becomes "A.xlsx"); any other name gets the first
/// extension appended ("meas.v2" becomes "meas.v2.xlsx", "meas." becomes
/// "meas.xlsx"). The empty path (a cancelled dialog), a path without a file
/// name and a type without a plain extension ("*", "*.*") stay as they are.
std::string WithFilterExtension(const std::string& path, std::string_view name_filter);

}  // namespace z4400

#endif  // Z4400_SHELL_FILE_FILTER_H_
