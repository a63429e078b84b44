#include "shell/file_filter.h"

#include <algorithm>
#include <cctype>

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

/// The extensions of a dialog entry's patterns ("xls" and "xlsx" of
/// "Books (*.xls *.xlsx)"): the patterns "*.ext" whose extension holds no
/// wildcard, in order.
std::vector<std::string_view> PlainExtensions(std::string_view name_filter) {
  std::vector<std::string_view> extensions;
  const std::size_t open = name_filter.rfind('(');
  const std::size_t close = name_filter.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
    return extensions;
  }
  std::string_view patterns = name_filter.substr(open + 1, close - open - 1);
  while (!patterns.empty()) {
    const std::size_t blank = patterns.find(' ');
    const std::string_view pattern = patterns.substr(0, blank);
    patterns = blank == std::string_view::npos ? std::string_view() : patterns.substr(blank + 1);
    if (pattern.size() > 2 && pattern.substr(0, 2) == "*." &&
        pattern.find_first_of("*?[", 2) == std::string_view::npos) {
      extensions.push_back(pattern.substr(2));
    }
  }
  return extensions;
}

bool EndsWithIgnoringCase(std::string_view text, std::string_view end) {
  if (text.size() < end.size()) return false;
  return std::equal(end.begin(), end.end(), text.end() - static_cast<std::ptrdiff_t>(end.size()),
                    [](char a, char b) {
                      return std::tolower(static_cast<unsigned char>(a)) ==
                             std::tolower(static_cast<unsigned char>(b));
                    });
}

}  // namespace

std::string WithFilterExtension(const std::string& path, std::string_view name_filter) {
  const std::vector<std::string_view> extensions = PlainExtensions(name_filter);
  const std::size_t name_start = path.find_last_of("\\/") + 1;  // npos + 1 is 0
  if (extensions.empty() || name_start >= path.size()) return path;
  const std::string_view name = std::string_view(path).substr(name_start);
  for (const std::string_view extension : extensions) {
    const std::string dotted = "." + std::string(extension);
    if (name.size() > dotted.size() && EndsWithIgnoringCase(name, dotted)) {
      return path.substr(0, path.size() - extension.size()) + std::string(extension);
    }
  }
  std::string answered = path;
  if (answered.back() != '.') answered += '.';
  answered += extensions.front();
  return answered;
}

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
