// The command text of a desktop launch: the instrument files the user gave
// the program (dropped on its icon, or sent by another program) as one text
// of absolute paths with drive letters.
#ifndef Z4400_SHELL_COMMAND_LINE_H_
#define Z4400_SHELL_COMMAND_LINE_H_

#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

/// Splits a Windows command text into the paths it names. The text is cut
/// at every ":\"; each path is the drive letter that ends the piece before
/// the cut, ":\" and the piece after it up to the blank before the next
/// drive letter (trailing blanks and one closing double quote dropped).
/// "C:\a\b.xml D:\c d.csv" gives "C:\a\b.xml" and "D:\c d.csv". An empty
/// text, or one without ":\", names no path.
std::vector<std::string> SplitCommandText(std::string_view command_text);

}  // namespace z4400

#endif  // Z4400_SHELL_COMMAND_LINE_H_
