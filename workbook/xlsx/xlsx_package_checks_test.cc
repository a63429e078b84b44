#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <initializer_list>
#include <pugixml.hpp>
#include <set>
#include <sstream>
#include <vector>

#include "testing/test_files.h"
#include "workbook/package/zip_reader.h"
#include "workbook/xlsx/xlsx_package_checks_test_util.h"

namespace z4400::testing {
namespace {

namespace fs = std::filesystem;

bool EndsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}
bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// Adds the line made of `parts` to `problems`.
void Note(std::string& problems, std::initializer_list<std::string_view> parts) {
  for (const std::string_view part : parts) problems.append(part);
  problems += '\n';
}

// The schema file and root element expected for a part, or empty for parts
// that are not XML.
struct PartKind {
  std::string schema;
  std::string root;
};

PartKind KindOf(const std::string& name) {
  if (name == "[Content_Types].xml") return {"opc-contentTypes.xsd", "Types"};
  if (EndsWith(name, ".rels")) return {"opc-relationships.xsd", "Relationships"};
  if (name == "docProps/core.xml") return {"opc-coreProperties-offline.xsd", "cp:coreProperties"};
  if (name == "docProps/app.xml") return {"shared-documentPropertiesExtended.xsd", "Properties"};
  if (name == "xl/workbook.xml") return {"sml.xsd", "workbook"};
  if (name == "xl/styles.xml") return {"sml.xsd", "styleSheet"};
  if (name == "xl/sharedStrings.xml") return {"sml.xsd", "sst"};
  if (StartsWith(name, "xl/worksheets/")) return {"sml.xsd", "worksheet"};
  if (StartsWith(name, "xl/chartsheets/")) return {"sml.xsd", "chartsheet"};
  if (StartsWith(name, "xl/drawings/")) return {"dml-spreadsheetDrawing.xsd", "xdr:wsDr"};
  if (StartsWith(name, "xl/charts/")) return {"dml-chart.xsd", "c:chartSpace"};
  if (StartsWith(name, "xl/theme/")) return {"dml-main.xsd", "a:theme"};
  return {};
}

bool Parse(pugi::xml_document& document, const std::string& bytes) {
  return document.load_buffer(bytes.data(), bytes.size());
}

// "a/b/../c.xml" → "a/c.xml"; a target relative to the folder of `source`.
std::string ResolveTarget(const std::string& source, const std::string& target) {
  if (StartsWith(target, "/")) return target.substr(1);
  std::vector<std::string> parts;
  const std::size_t slash = source.rfind('/');
  std::string path = (slash == std::string::npos ? "" : source.substr(0, slash + 1)) + target;
  std::stringstream stream(path);
  for (std::string piece; std::getline(stream, piece, '/');) {
    if (piece == "..") {
      if (!parts.empty()) parts.pop_back();
    } else if (!piece.empty() && piece != ".") {
      parts.push_back(piece);
    }
  }
  std::string resolved;
  for (const std::string& piece : parts) resolved += (resolved.empty() ? "" : "/") + piece;
  return resolved;
}

// The part whose relationships `rels_name` holds: "x/_rels/y.xml.rels" → "x/y.xml".
std::string SourceOfRels(const std::string& rels_name) {
  const std::size_t at = rels_name.find("_rels/");
  return rels_name.substr(0, at) + rels_name.substr(at + 6, rels_name.size() - at - 6 - 5);
}

// Relationship id → resolved target of a part.
std::map<std::string, std::string> RelationshipsOf(const PackageMembers& members,
                                                   const std::string& part) {
  std::map<std::string, std::string> result;
  const std::size_t slash = part.rfind('/');
  const std::string rels = part.substr(0, slash + 1) + "_rels/" + part.substr(slash + 1) + ".rels";
  const auto found = members.find(rels);
  if (found == members.end()) return result;
  pugi::xml_document document;
  if (!Parse(document, found->second)) return result;
  for (pugi::xml_node node : document.child("Relationships").children("Relationship")) {
    result[node.attribute("Id").value()] = ResolveTarget(part, node.attribute("Target").value());
  }
  return result;
}

// A cell value as text: numbers as written, shared strings resolved.
using CellMap = std::map<std::pair<int, int>, std::string>;

std::pair<int, int> ParseCellRef(std::string_view ref) {
  int column = 0;
  int row = 0;
  for (char c : ref) {
    if (c == '$') continue;
    if (c >= 'A' && c <= 'Z') column = column * 26 + (c - 'A' + 1);
    if (c >= '0' && c <= '9') row = row * 10 + (c - '0');
  }
  return {row, column};
}

CellMap ReadCells(const PackageMembers& members, const std::string& part) {
  std::vector<std::string> strings;
  pugi::xml_document sst;
  if (members.contains("xl/sharedStrings.xml") && Parse(sst, members.at("xl/sharedStrings.xml"))) {
    for (pugi::xml_node si : sst.child("sst").children("si")) {
      strings.push_back(si.child("t").text().get());
    }
  }
  CellMap cells;
  pugi::xml_document sheet;
  if (!members.contains(part) || !Parse(sheet, members.at(part))) return cells;
  for (pugi::xml_node row : sheet.child("worksheet").child("sheetData").children("row")) {
    for (pugi::xml_node c : row.children("c")) {
      const std::string type = c.attribute("t").value();
      std::string value =
          type == "inlineStr" ? c.child("is").child("t").text().get() : c.child("v").text().get();
      if (type == "s") {
        const std::size_t index = std::strtoul(value.c_str(), nullptr, 10);
        value = index < strings.size() ? strings[index] : "<bad string index>";
      }
      if (!c.child("v") && type != "inlineStr") continue;  // styled but empty
      cells[ParseCellRef(c.attribute("r").value())] = value;
    }
  }
  return cells;
}

bool SameValue(const std::string& a, const std::string& b, bool numeric) {
  if (!numeric) return a == b;
  char* end_a = nullptr;
  char* end_b = nullptr;
  const double x = std::strtod(a.c_str(), &end_a);
  const double y = std::strtod(b.c_str(), &end_b);
  return *end_a == '\0' && *end_b == '\0' && x == y;
}

std::string RunXmllint(const fs::path& schema, const std::vector<std::string>& files,
                       const fs::path& folder) {
  std::string command =
      "cd '" + folder.string() + "' && xmllint --noout --nonet --schema '" + schema.string() + "'";
  for (const std::string& file : files) command += " '" + file + "'";
  command += " > xmllint.out 2>&1";
  const int status = std::system(command.c_str());
  std::ifstream in(folder / "xmllint.out");
  std::string problems;
  for (std::string line; std::getline(in, line);) {
    if (line.find("Skipping import") != std::string::npos || EndsWith(line, " validates")) continue;
    problems += line + "\n";
  }
  if (status != 0 && problems.empty()) problems = "xmllint failed on " + schema.string() + "\n";
  return status == 0 ? std::string() : problems;
}

}  // namespace

PackageMembers ReadPackage(const fs::path& path, std::string* error) {
  PackageMembers members;
  auto reader = ZipReader::Open(path, error);
  if (!reader) return members;
  for (const std::string& name : reader->names()) {
    if (EndsWith(name, "/")) continue;
    std::string bytes;
    if (!reader->Read(name, &bytes, error)) return {};
    members[name] = std::move(bytes);
  }
  return members;
}

std::optional<std::string> SchemaValidationUnavailable() {
  if (!OoxmlDir()) return OoxmlDirMissing();
  if (std::system("xmllint --version > /dev/null 2>&1") != 0) return "xmllint is not installed";
  return std::nullopt;
}

std::string ValidateAgainstSchemas(const PackageMembers& members) {
  const fs::path schemas = *OoxmlDir() / "schemas";
  const fs::path folder =
      fs::temp_directory_path() / ("z4400-schema-" + std::to_string(std::rand()) + "-" +
                                   std::to_string(reinterpret_cast<std::uintptr_t>(&members)));
  fs::remove_all(folder);
  std::map<std::string, std::vector<std::string>> by_schema;
  std::string problems;
  for (const auto& [name, bytes] : members) {
    const PartKind kind = KindOf(name);
    if (kind.schema.empty()) continue;
    pugi::xml_document document;
    if (!Parse(document, bytes)) {
      problems += name + ": not well-formed XML\n";
      continue;
    }
    if (std::string(document.document_element().name()) != kind.root) {
      Note(problems,
           {name, ": root element ", document.document_element().name(), ", expected ", kind.root});
    }
    const fs::path file = folder / name;
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
    by_schema[kind.schema].push_back(name);
  }
  for (const auto& [schema, files] : by_schema) {
    problems += RunXmllint(schemas / schema, files, folder);
  }
  fs::remove_all(folder);
  return problems;
}

std::string CheckPackageStructure(const PackageMembers& members) {
  std::string problems;
  pugi::xml_document types;
  if (!members.contains("[Content_Types].xml") ||
      !Parse(types, members.at("[Content_Types].xml"))) {
    return "missing or unreadable [Content_Types].xml\n";
  }
  std::set<std::string> defaults;
  std::set<std::string> overrides;
  for (pugi::xml_node node : types.child("Types").children("Default")) {
    defaults.insert(node.attribute("Extension").value());
  }
  for (pugi::xml_node node : types.child("Types").children("Override")) {
    const std::string part = std::string(node.attribute("PartName").value()).substr(1);
    overrides.insert(part);
    if (!members.contains(part)) problems += "content type for missing part " + part + "\n";
  }
  for (const auto& [name, bytes] : members) {
    if (name == "[Content_Types].xml") continue;
    const std::string extension = name.substr(name.rfind('.') + 1);
    if (!overrides.contains(name) && !defaults.contains(extension)) {
      problems += "no content type for " + name + "\n";
    }
    if (!EndsWith(name, ".rels")) continue;
    const std::string source = SourceOfRels(name);
    if (!source.empty() && !members.contains(source)) {
      Note(problems, {name, ": relationships of missing part ", source});
    }
    pugi::xml_document rels;
    if (!Parse(rels, bytes)) {
      problems += name + ": not well-formed XML\n";
      continue;
    }
    std::set<std::string> ids;
    for (pugi::xml_node node : rels.child("Relationships").children("Relationship")) {
      if (!ids.insert(node.attribute("Id").value()).second) {
        Note(problems, {name, ": duplicate id ", node.attribute("Id").value()});
      }
      if (std::string(node.attribute("TargetMode").value()) == "External") continue;
      const std::string target = ResolveTarget(source, node.attribute("Target").value());
      if (!members.contains(target)) Note(problems, {name, ": missing target ", target});
    }
  }
  // Every r:id of a part must be one of its relationships.
  for (const auto& [name, bytes] : members) {
    if (!EndsWith(name, ".xml") || name == "[Content_Types].xml") continue;
    pugi::xml_document document;
    if (!Parse(document, bytes)) {
      problems += name + ": not well-formed XML\n";
      continue;
    }
    const auto relationships = RelationshipsOf(members, name);
    for (pugi::xpath_node found : document.select_nodes("//@r:id")) {
      const std::string id = found.attribute().value();
      if (!relationships.contains(id))
        Note(problems, {name, ": r:id ", id, " has no relationship"});
    }
  }
  return problems;
}

std::string CheckChartCaches(const PackageMembers& members) {
  std::string problems;
  // Sheet name → its part.
  std::map<std::string, std::string> sheet_parts;
  pugi::xml_document workbook;
  if (!members.contains("xl/workbook.xml") || !Parse(workbook, members.at("xl/workbook.xml"))) {
    return "missing or unreadable xl/workbook.xml\n";
  }
  const auto workbook_rels = RelationshipsOf(members, "xl/workbook.xml");
  for (pugi::xml_node sheet : workbook.child("workbook").child("sheets").children("sheet")) {
    const auto found = workbook_rels.find(sheet.attribute("r:id").value());
    if (found != workbook_rels.end()) sheet_parts[sheet.attribute("name").value()] = found->second;
  }
  std::map<std::string, CellMap> cells_by_part;
  for (const auto& [name, bytes] : members) {
    if (!StartsWith(name, "xl/charts/")) continue;
    pugi::xml_document chart;
    if (!Parse(chart, bytes)) {
      problems += name + ": not well-formed XML\n";
      continue;
    }
    for (const char* query : {"//c:numRef", "//c:strRef"}) {
      const bool numeric = std::string_view(query) == "//c:numRef";
      for (pugi::xpath_node found : chart.select_nodes(query)) {
        const pugi::xml_node ref = found.node();
        const std::string formula = ref.child("c:f").text().get();
        const std::size_t bang = formula.rfind('!');
        if (bang == std::string::npos) {
          Note(problems, {name, ": reference without a sheet: ", formula});
          continue;
        }
        std::string sheet = formula.substr(0, bang);
        if (sheet.size() >= 2 && sheet.front() == '\'') {
          sheet = sheet.substr(1, sheet.size() - 2);
          for (std::size_t at = sheet.find("''"); at != std::string::npos;
               at = sheet.find("''", at + 1)) {
            sheet.erase(at, 1);
          }
        }
        if (!sheet_parts.contains(sheet)) {
          Note(problems, {name, ": reference to unknown sheet ", sheet});
          continue;
        }
        const std::string& part = sheet_parts[sheet];
        if (!cells_by_part.contains(part)) cells_by_part[part] = ReadCells(members, part);
        const CellMap& cells = cells_by_part[part];
        const std::string range = formula.substr(bang + 1);
        const std::size_t colon = range.find(':');
        const auto first = ParseCellRef(range.substr(0, colon));
        const auto last =
            colon == std::string::npos ? first : ParseCellRef(range.substr(colon + 1));
        const pugi::xml_node cache = ref.child(numeric ? "c:numCache" : "c:strCache");
        const int count = (last.first - first.first + 1) * (last.second - first.second + 1);
        if (cache.child("c:ptCount").attribute("val").as_int(-1) != count) {
          Note(problems, {name, ": ", formula, ": ptCount is not ", std::to_string(count)});
        }
        std::map<int, std::string> cached;
        for (pugi::xml_node pt : cache.children("c:pt")) {
          cached[pt.attribute("idx").as_int()] = pt.child("c:v").text().get();
        }
        int index = 0;
        for (int row = first.first; row <= last.first; ++row) {
          for (int column = first.second; column <= last.second; ++column, ++index) {
            const auto cell = cells.find({row, column});
            const auto point = cached.find(index);
            const bool has_cell = cell != cells.end() && (!numeric || !cell->second.empty());
            if (has_cell != (point != cached.end()) ||
                (has_cell && !SameValue(cell->second, point->second, numeric))) {
              Note(problems, {name, ": ", formula, ": point ", std::to_string(index),
                              " does not match its cell"});
            }
          }
        }
      }
    }
  }
  return problems;
}

namespace {

// The checks themselves: files saved by the spreadsheet application pass,
// and damaged copies of them fail.
TEST(XlsxPackageChecksTest, SpreadsheetMadeFilesPassAndDamagedOnesFail) {
  const auto ooxml = OoxmlDir();
  if (!ooxml) GTEST_SKIP() << OoxmlDirMissing();
  std::string error;
  PackageMembers members = ReadPackage(*ooxml / "excel-made" / "chart_bar14.xlsx", &error);
  ASSERT_FALSE(members.empty()) << error;
  EXPECT_EQ(CheckPackageStructure(members), "");
  EXPECT_EQ(CheckChartCaches(members), "");

  PackageMembers missing_part = members;
  missing_part.erase("xl/charts/chart2.xml");
  EXPECT_NE(CheckPackageStructure(missing_part).find("missing target xl/charts/chart2.xml"),
            std::string::npos);

  PackageMembers changed_cell = members;
  std::string& chart = changed_cell["xl/charts/chart1.xml"];
  const std::size_t value = chart.find("<c:v>");
  ASSERT_NE(value, std::string::npos);
  chart.insert(value + 5, "9");
  EXPECT_NE(CheckChartCaches(changed_cell), "");

  if (const auto why = SchemaValidationUnavailable()) GTEST_SKIP() << *why;
  EXPECT_EQ(ValidateAgainstSchemas(members), "");
  PackageMembers out_of_order = members;
  std::string& sheet = out_of_order["xl/worksheets/sheet1.xml"];
  const std::size_t dimension = sheet.find("<dimension");
  const std::size_t end = sheet.find("/>", dimension) + 2;
  const std::string element = sheet.substr(dimension, end - dimension);
  sheet.erase(dimension, end - dimension);
  sheet.insert(sheet.find("</worksheet>"), element);
  EXPECT_NE(ValidateAgainstSchemas(out_of_order), "");
}

}  // namespace
}  // namespace z4400::testing
