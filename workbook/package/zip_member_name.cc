#include "workbook/package/zip_member_name.h"

namespace z4400 {

bool IsSafeMemberName(std::string_view name) {
  if (name.empty() || name.front() == '/') return false;
  if (name.size() >= 2 && name[1] == ':') return false;
  for (char c : name) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7f || c == '\\') return false;
  }
  // Each segment between slashes; a folder entry ends with one "/".
  std::string_view rest = name;
  if (rest.back() == '/') rest.remove_suffix(1);
  while (true) {
    const size_t slash = rest.find('/');
    const std::string_view segment = rest.substr(0, slash);
    if (segment.empty() || segment == "." || segment == "..") return false;
    if (slash == std::string_view::npos) return true;
    rest.remove_prefix(slash + 1);
  }
}

}  // namespace z4400
