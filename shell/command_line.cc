#include "shell/command_line.h"

namespace z4400 {
namespace {

constexpr std::string_view kDriveSeparator = ":\\";

/// `text` without trailing blanks and without one closing double quote
/// (a quoted path "C:\My Files\a.xml" keeps its blanks, loses its quotes).
std::string_view TrimPathEnd(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (!text.empty() && text.back() == '"') text.remove_suffix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

}  // namespace

std::vector<std::string> SplitCommandText(std::string_view command_text) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  for (;;) {
    const std::size_t cut = command_text.find(kDriveSeparator, start);
    if (cut == std::string_view::npos) {
      pieces.push_back(command_text.substr(start));
      break;
    }
    pieces.push_back(command_text.substr(start, cut - start));
    start = cut + kDriveSeparator.size();
  }

  std::vector<std::string> paths;
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    const std::string_view before = pieces[i - 1];
    std::string path;
    if (!before.empty()) path.push_back(before.back());  // the drive letter
    path.append(kDriveSeparator);
    std::string_view rest = pieces[i];
    // Every piece but the last ends with the next path's drive letter (and
    // an opening quote when that path is quoted).
    if (i + 1 < pieces.size()) {
      if (!rest.empty()) rest.remove_suffix(1);
      if (!rest.empty() && rest.back() == '"') rest.remove_suffix(1);
    }
    path.append(TrimPathEnd(rest));
    paths.push_back(std::move(path));
  }
  return paths;
}

}  // namespace z4400
