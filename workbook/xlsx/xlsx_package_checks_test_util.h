// Test-side checks of a saved .xlsx package: every XML part against the
// OOXML schemas (through xmllint), the package structure (content types,
// relationship targets, r:id references) and the chart caches against the
// cells they were taken from. Defined in xlsx_package_checks_test.cc and
// used by the tests of the workbook writer.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_CHECKS_TEST_UTIL_H_
#define Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_CHECKS_TEST_UTIL_H_

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace z4400::testing {

/// Member name → bytes of every member of a package.
using PackageMembers = std::map<std::string, std::string>;

/// Reads every member of the archive at `path`; on failure returns an empty
/// map and sets `*error`.
PackageMembers ReadPackage(const std::filesystem::path& path, std::string* error);

/// Why schema validation cannot run here (no OOXML folder, no xmllint), or
/// nothing when it can.
std::optional<std::string> SchemaValidationUnavailable();

/// Validates every XML part of `members` against the schema of its kind of
/// part and checks its root element. Returns the problems found (xmllint's
/// messages, one per line), empty when every part is valid. Call only when
/// `SchemaValidationUnavailable()` is empty.
std::string ValidateAgainstSchemas(const PackageMembers& members);

/// Checks what the schemas do not: "[Content_Types].xml" covers every part
/// and names no missing one; every relationship target exists; every r:id
/// used by a part is one of its relationships; XML parts are well-formed.
/// Returns the problems, empty when there are none.
std::string CheckPackageStructure(const PackageMembers& members);

/// Checks that every `c:numRef`/`c:strRef` of every chart names cells that
/// exist on a sheet of the workbook and that its cache holds exactly the
/// values of those cells. Returns the problems, empty when there are none.
std::string CheckChartCaches(const PackageMembers& members);

}  // namespace z4400::testing

#endif  // Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_CHECKS_TEST_UTIL_H_
