// The package-level parts of a saved workbook: the content types, the
// relationships, the document properties and "xl/workbook.xml" with its
// list of sheets.
#ifndef Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_PARTS_H_
#define Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_PARTS_H_

#include <string>
#include <string_view>
#include <vector>

#include "workbook/xlsx/xlsx_package_layout.h"

namespace z4400 {

/// Relationship type URIs of the parts this writer produces.
namespace rel_type {
inline constexpr std::string_view kOfficeDocument =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument";
inline constexpr std::string_view kCoreProperties =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";
inline constexpr std::string_view kExtendedProperties =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/extended-properties";
inline constexpr std::string_view kWorksheet =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet";
inline constexpr std::string_view kChartsheet =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/chartsheet";
inline constexpr std::string_view kStyles =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles";
inline constexpr std::string_view kSharedStrings =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings";
inline constexpr std::string_view kDrawing =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/drawing";
inline constexpr std::string_view kChart =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/chart";
}  // namespace rel_type

/// One relationship of a part; its id is "rId" + position from 1.
struct Relationship {
  std::string_view type;
  std::string target;  // relative to the source part's folder
};

/// A relationships part listing `relationships` as rId1, rId2, …
std::string WriteRelationships(const std::vector<Relationship>& relationships);

/// "[Content_Types].xml": defaults for .rels and .xml, one override per part.
std::string WriteContentTypes(const PackageLayout& layout);

/// "_rels/.rels": the workbook and the two property parts.
std::string WriteRootRelationships();

/// What "docProps/core.xml" says about the document.
struct DocumentProperties {
  std::string creator;
  /// W3C date-time in UTC ("2026-11-21T08:12:13Z"), or empty to leave the
  /// created and modified dates out, so that saving the same workbook twice
  /// gives the same file.
  std::string created;
};

/// "docProps/core.xml".
std::string WriteCoreProperties(const DocumentProperties& properties);

/// "docProps/app.xml": the application name and the sheet names by kind.
std::string WriteAppProperties(const PackageLayout& layout);

/// "xl/workbook.xml": the sheets in order (sheetId and rId by position) and
/// the sheet that is active when the workbook opens.
std::string WriteWorkbookPart(const PackageLayout& layout);

/// "xl/_rels/workbook.xml.rels": the sheets first (rId1 … in sheet order),
/// then the styles and, when there are any, the shared strings.
std::string WriteWorkbookRelationships(const PackageLayout& layout);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_XLSX_PACKAGE_PARTS_H_
