#include "workbook/xlsx/xlsx_reader.h"

#include <map>
#include <memory>
#include <pugixml.hpp>
#include <vector>

#include "common/runtime_failure.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_read_styles.h"

namespace z4400 {
namespace {

constexpr char kDefaultWorkbookPart[] = "xl/workbook.xml";

struct Relationship {
  std::string type;    // the last segment of the type URI ("worksheet")
  std::string target;  // a member name of the package
};

/// The relationship id of a <sheet>: its r:id, whatever prefix the file
/// gave the relationships namespace.
std::string_view RelationshipId(const pugi::xml_node& sheet) {
  for (const pugi::xml_attribute attribute : sheet.attributes()) {
    const std::string_view name = attribute.name();
    if (name.size() > 3 && name.substr(name.size() - 3) == ":id") return attribute.value();
  }
  return {};
}

/// The member `target` names when written in the part in `folder`
/// ("xl/"): absolute targets start at the package root; ".." climbs.
std::string ResolveTarget(std::string_view folder, std::string_view target) {
  std::vector<std::string> segments;
  std::string joined = target.starts_with('/') ? std::string(target.substr(1))
                                               : std::string(folder) + std::string(target);
  size_t start = 0;
  while (start <= joined.size()) {
    size_t slash = joined.find('/', start);
    if (slash == std::string::npos) slash = joined.size();
    const std::string segment = joined.substr(start, slash - start);
    if (segment == "..") {
      if (!segments.empty()) segments.pop_back();
    } else if (!segment.empty() && segment != ".") {
      segments.push_back(segment);
    }
    start = slash + 1;
  }
  std::string member;
  for (const std::string& segment : segments) {
    if (!member.empty()) member += '/';
    member += segment;
  }
  return member;
}

/// Reads the package through one zip reader and keeps what the parts share.
class PackageReader {
 public:
  PackageReader(ZipReader* zip, Workbook* into, const XlsxReadLimits& limits)
      : zip_(zip), workbook_(into), budget_(limits.cells) {}

  bool Read(std::string* error) {
    std::string workbook_part = kDefaultWorkbookPart;
    std::map<std::string, Relationship> root;
    if (!ReadRelationships("", &root, error)) return false;
    for (const auto& [id, relationship] : root) {
      if (relationship.type == "officeDocument") workbook_part = relationship.target;
    }
    if (!zip_->Has(workbook_part)) {
      *error = "it is not a workbook (no " + workbook_part + ")";
      return false;
    }
    std::map<std::string, Relationship> parts;
    if (!ReadRelationships(workbook_part, &parts, error)) return false;
    for (const auto& [id, relationship] : parts) {
      if (relationship.type == "sharedStrings" && !ReadTexts(relationship.target, error)) {
        return false;
      }
      if (relationship.type == "styles" && !ReadStyles(relationship.target, error)) return false;
    }
    std::string xml;
    if (!ReadMember(workbook_part, &xml, error)) return false;
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
    if (!parsed) {
      *error = workbook_part + " cannot be read: " + parsed.description();
      return false;
    }
    for (const pugi::xml_node sheet :
         document.child("workbook").child("sheets").children("sheet")) {
      const std::string name = sheet.attribute("name").value();
      const auto found = parts.find(std::string(RelationshipId(sheet)));
      if (found == parts.end()) {
        *error = "sheet " + name + " has no part";
        return false;
      }
      const Relationship& part = found->second;
      if (part.type == "worksheet") {
        Worksheet& worksheet = workbook_->AppendWorksheet(name);
        if (!ReadMember(part.target, &xml, error) ||
            !ReadWorksheetPart(xml, texts_, formats_, &worksheet, &budget_, error)) {
          return false;
        }
      } else if (part.type == "chartsheet") {
        workbook_->AppendChartSheet(name);
      }
      // Dialog and macro sheets have no place in the model and are left out.
    }
    return true;
  }

 private:
  bool ReadMember(const std::string& name, std::string* out, std::string* error) {
    return zip_->Read(name, out, error);
  }

  /// The relationships of `part` ("" for the package's own), by id. A part
  /// without relationships has none; that is no error.
  bool ReadRelationships(const std::string& part, std::map<std::string, Relationship>* out,
                         std::string* error) {
    const size_t slash = part.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : part.substr(0, slash + 1);
    const std::string file = part.substr(folder.size());
    const std::string name = folder + "_rels/" + file + ".rels";
    if (!zip_->Has(name)) return true;
    std::string xml;
    if (!ReadMember(name, &xml, error)) return false;
    pugi::xml_document document;
    const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
    if (!parsed) {
      *error = name + " cannot be read: " + parsed.description();
      return false;
    }
    for (const pugi::xml_node node : document.child("Relationships").children("Relationship")) {
      if (std::string_view(node.attribute("TargetMode").value()) == "External") continue;
      const std::string_view type = node.attribute("Type").value();
      const size_t last = type.rfind('/');
      (*out)[node.attribute("Id").value()] = {
          std::string(last == std::string_view::npos ? type : type.substr(last + 1)),
          ResolveTarget(folder, node.attribute("Target").value())};
    }
    return true;
  }

  bool ReadTexts(const std::string& part, std::string* error) {
    std::string xml;
    return ReadMember(part, &xml, error) && ReadSharedStrings(xml, &texts_, error);
  }

  bool ReadStyles(const std::string& part, std::string* error) {
    std::string xml;
    return ReadMember(part, &xml, error) && formats_.Read(xml, &workbook_->Styles(), error);
  }

  ZipReader* zip_;
  Workbook* workbook_;
  CellBudget budget_;
  std::vector<std::string> texts_;
  XlsxCellFormats formats_;
};

bool ReadPackage(ZipReader* zip, Workbook* into, const XlsxReadLimits& limits, std::string* error) {
  PackageReader reader(zip, into, limits);
  try {
    return reader.Read(error);
  } catch (const RuntimeFailure& failure) {
    // The model refuses what the file should not hold: a sheet name that is
    // invalid or taken, too many distinct styles.
    *error = failure.what();
    return false;
  }
}

}  // namespace

bool ReadXlsx(const std::filesystem::path& path, Workbook* into, std::string* error) {
  const XlsxReadLimits limits;
  std::string detail;
  auto zip = ZipReader::Open(path, &detail, limits.zip);
  if (!zip || !ReadPackage(zip.get(), into, limits, &detail)) {
    *error = "Cannot open " + path.string() + ": " + detail;
    return false;
  }
  return true;
}

bool ReadXlsxBytes(std::string_view bytes, Workbook* into, std::string* error,
                   const XlsxReadLimits& limits) {
  auto zip = ZipReader::OpenBytes(bytes, error, limits.zip);
  return zip && ReadPackage(zip.get(), into, limits, error);
}

}  // namespace z4400
