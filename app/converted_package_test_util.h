// Test side: the parts of a saved .xlsx package and the charts of a sheet,
// found by following the package's relationships (workbook → sheet →
// drawing → chart) the way a spreadsheet application does.
#ifndef Z4400_APP_CONVERTED_PACKAGE_TEST_UTIL_H_
#define Z4400_APP_CONVERTED_PACKAGE_TEST_UTIL_H_

#include <filesystem>
#include <map>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "workbook/package/zip_reader.h"

namespace z4400::testing {

/// One chart of a worksheet's drawing: its part and where it is anchored
/// (columns and rows from 0).
struct AnchoredChart {
  std::string part;
  int from_column = -1, from_row = -1, to_column = -1, to_row = -1;
};

class ConvertedPackage {
 public:
  /// Reads every member of the package at `path`; `error()` says why not.
  explicit ConvertedPackage(const std::filesystem::path& path) {
    const std::unique_ptr<ZipReader> zip = ZipReader::Open(path, &error_);
    if (zip == nullptr) return;
    for (const std::string& name : zip->names()) {
      std::string bytes;
      if (!zip->Read(name, &bytes, &error_)) return;
      members_[name] = std::move(bytes);
    }
  }

  const std::string& error() const { return error_; }
  const std::map<std::string, std::string>& members() const { return members_; }

  /// The part `name` parsed; an empty document when missing.
  std::unique_ptr<pugi::xml_document> Xml(const std::string& name) const {
    auto document = std::make_unique<pugi::xml_document>();
    const auto found = members_.find(name);
    if (found != members_.end()) document->load_string(found->second.c_str());
    return document;
  }

  /// Part of sheet `sheet_name` ("xl/worksheets/sheet1.xml"), "" if none.
  std::string SheetPart(const std::string& sheet_name) const {
    const auto workbook = Xml("xl/workbook.xml");
    for (const pugi::xml_node sheet : workbook->child("workbook").child("sheets").children()) {
      if (sheet.attribute("name").value() == sheet_name) {
        return Target("xl/workbook.xml", sheet.attribute("r:id").value());
      }
    }
    return "";
  }

  /// Sheet names in workbook order.
  std::vector<std::string> SheetNames() const {
    std::vector<std::string> names;
    const auto workbook = Xml("xl/workbook.xml");
    for (const pugi::xml_node sheet : workbook->child("workbook").child("sheets").children()) {
      names.emplace_back(sheet.attribute("name").value());
    }
    return names;
  }

  /// The charts of worksheet `sheet_name`, in anchor order.
  std::vector<AnchoredChart> ChartsOf(const std::string& sheet_name) const {
    std::vector<AnchoredChart> charts;
    const std::string sheet = SheetPart(sheet_name);
    if (sheet.empty()) return charts;
    const auto sheet_xml = Xml(sheet);
    const pugi::xml_node drawing = sheet_xml->document_element().child("drawing");
    if (!drawing) return charts;
    const std::string drawing_part = Target(sheet, drawing.attribute("r:id").value());
    const auto drawing_xml = Xml(drawing_part);
    for (const pugi::xml_node anchor : drawing_xml->document_element().children()) {
      const pugi::xml_node chart = anchor.select_node(".//c:chart").node();
      if (!chart) continue;
      AnchoredChart found;
      found.part = Target(drawing_part, chart.attribute("r:id").value());
      found.from_column = anchor.child("xdr:from").child("xdr:col").text().as_int(-1);
      found.from_row = anchor.child("xdr:from").child("xdr:row").text().as_int(-1);
      found.to_column = anchor.child("xdr:to").child("xdr:col").text().as_int(-1);
      found.to_row = anchor.child("xdr:to").child("xdr:row").text().as_int(-1);
      charts.push_back(found);
    }
    return charts;
  }

  /// The part that relationship `id` of part `source` points to.
  std::string Target(const std::string& source, const std::string& id) const {
    const std::filesystem::path source_path(source);
    const std::string rels =
        (source_path.parent_path() / "_rels" / (source_path.filename().string() + ".rels"))
            .generic_string();
    const auto rels_xml = Xml(rels);
    for (const pugi::xml_node relationship : rels_xml->document_element().children()) {
      if (relationship.attribute("Id").value() != id) continue;
      const std::string target = relationship.attribute("Target").value();
      if (!target.empty() && target[0] == '/') return target.substr(1);
      return (source_path.parent_path() / target).lexically_normal().generic_string();
    }
    return "";
  }

 private:
  std::string error_;
  std::map<std::string, std::string> members_;
};

}  // namespace z4400::testing

#endif  // Z4400_APP_CONVERTED_PACKAGE_TEST_UTIL_H_
