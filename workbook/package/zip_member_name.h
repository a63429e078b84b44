// The member names a package may use.
#ifndef Z4400_WORKBOOK_PACKAGE_ZIP_MEMBER_NAME_H_
#define Z4400_WORKBOOK_PACKAGE_ZIP_MEMBER_NAME_H_

#include <string_view>

namespace z4400 {

/// True when `name` is a relative member path that stays inside the package
/// wherever it is unpacked: not empty, no leading "/", no backslash, no
/// drive letter ("C:"), no empty, "." or ".." segment (a trailing "/" of a
/// folder entry is allowed), no control characters (NUL included).
bool IsSafeMemberName(std::string_view name);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ZIP_MEMBER_NAME_H_
