#include "shell/file_filter.h"

#include <algorithm>

namespace z4400 {
namespace {

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const std::size_t last = text.find_last_not_of(' ');
  return text.substr(first, last - first + 1);
}

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  for (;;) {
    const std::size_t comma = text.find(',', start);
    if (comma == std::string_view::npos) {
      fields.push_back(text.substr(start));
      return fields;
    }
    fields.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
}

}  // namespace

std::vector<std::string> DialogNameFilters(std::string_view filter) {
  std::vector<std::string> entries;
  if (Trimmed(filter).empty()) return entries;
  const std::vector<std::string_view> fields = SplitAtCommas(filter);
  for (std::size_t i = 0; i < fields.size(); i += 2) {
    const std::string_view label = Trimmed(fields[i]);
    std::string patterns(i + 1 < fields.size() ? Trimmed(fields[i + 1]) : std::string_view());
    if (patterns.empty()) patterns = "*";
    std::replace(patterns.begin(), patterns.end(), ';', ' ');
    const std::string in_parentheses = "(" + patterns + ")";
    if (label.size() >= in_parentheses.size() &&
        label.substr(label.size() - in_parentheses.size()) == in_parentheses) {
      entries.emplace_back(label);
    } else if (label.empty()) {
      entries.push_back(in_parentheses);
    } else {
      entries.push_back(std::string(label) + " " + in_parentheses);
    }
  }
  return entries;
}

}  // namespace z4400
