#include "source/xml_source.h"

#include <algorithm>
#include <cstring>

namespace z4400 {
namespace {

std::string PairKey(std::string_view first, std::string_view second) {
  std::string key;
  key.reserve(first.size() + second.size() + 1);
  key.append(first);
  key.push_back('\0');  // attribute values never hold a NUL
  key.append(second);
  return key;
}

/// The queries of the lookups, compiled once for the whole program.
struct Queries {
  pugi::xpath_query root{"//AnalyserData"};
  pugi::xpath_query file_parameters{"//AnalyserData/Parameter"};
  pugi::xpath_query screen_parameters{"//AnalyserData/Context/Parameter"};
  pugi::xpath_query markers{"//AnalyserData/Context/Marker"};
  pugi::xpath_query trace_tables{"//Trace/Table"};
  pugi::xpath_query screen_tables{"//Context/Trace/Table"};
};

const Queries& CompiledQueries() {
  static const Queries queries;
  return queries;
}

pugi::xpath_node_set Select(const pugi::xpath_query& query, const pugi::xml_document& doc) {
  pugi::xpath_node_set nodes = query.evaluate_node_set(doc);
  nodes.sort();  // document order, as selectSingleNode and selectNodes see it
  return nodes;
}

/// True when `text` is `number` written in decimal without sign, blanks or
/// leading zeros; sets `number`.
bool ParsePointNumber(const char* text, int limit, int& number) {
  if (text[0] == '\0' || (text[0] == '0' && text[1] != '\0')) return false;
  long long value = 0;
  for (const char* p = text; *p != '\0'; ++p) {
    if (*p < '0' || *p > '9') return false;
    value = value * 10 + (*p - '0');
    if (value >= limit) return false;
  }
  number = static_cast<int>(value);
  return true;
}

}  // namespace

std::span<char> XmlSource::Buffer(std::size_t size) {
  document_.reset();  // it may point into the buffer
  if (size > capacity_) {
    buffer_ = std::make_unique_for_overwrite<char[]>(size);
    capacity_ = size;
  }
  size_ = size;
  return {buffer_.get(), size};
}

void XmlSource::Load(std::string_view bytes) {
  const std::span<char> buffer = Buffer(bytes.size());
  std::copy(bytes.begin(), bytes.end(), buffer.begin());
  LoadBuffer();
}

void XmlSource::LoadBuffer() {
  file_parameters_.clear();
  screen_parameters_.clear();
  markers_.clear();
  screen_tables_.clear();
  trace_table_count_ = 0;
  root_ = pugi::xml_node();
  const bool parsed =
      size_ > 0 && static_cast<bool>(document_.load_buffer_inplace(buffer_.get(), size_));
  if (!parsed) {
    document_.reset();  // a document that fails to load holds nothing
    return;
  }
  BuildIndexes();
}

void XmlSource::BuildIndexes() {
  const Queries& queries = CompiledQueries();
  const pugi::xpath_node_set roots = Select(queries.root, document_);
  if (!roots.empty()) root_ = roots.first().node();

  for (const pugi::xpath_node& found : Select(queries.file_parameters, document_)) {
    const pugi::xml_attribute id = found.node().attribute("Id");
    if (id) file_parameters_.try_emplace(id.value(), found.node());
  }
  for (const pugi::xpath_node& found : Select(queries.screen_parameters, document_)) {
    const pugi::xml_attribute nb = found.node().parent().attribute("Nb");
    const pugi::xml_attribute id = found.node().attribute("Id");
    if (nb && id) screen_parameters_.try_emplace(PairKey(nb.value(), id.value()), found.node());
  }
  for (const pugi::xpath_node& found : Select(queries.markers, document_)) {
    const pugi::xml_attribute nb = found.node().parent().attribute("Nb");
    const pugi::xml_attribute marker = found.node().attribute("Nb");
    if (nb && marker) markers_.try_emplace(PairKey(nb.value(), marker.value()), found.node());
  }
  trace_table_count_ = static_cast<int>(Select(queries.trace_tables, document_).size());
  for (const pugi::xpath_node& found : Select(queries.screen_tables, document_)) {
    const pugi::xml_attribute nb = found.node().parent().parent().attribute("Nb");
    if (nb) screen_tables_[nb.value()].push_back(found.node());
  }
}

pugi::xml_node XmlSource::FileParameter(std::string_view id) const {
  const auto it = file_parameters_.find(std::string(id));
  return it == file_parameters_.end() ? pugi::xml_node() : it->second;
}

pugi::xml_node XmlSource::ScreenParameter(std::string_view nb, std::string_view id) const {
  const auto it = screen_parameters_.find(PairKey(nb, id));
  return it == screen_parameters_.end() ? pugi::xml_node() : it->second;
}

pugi::xml_node XmlSource::Marker(std::string_view nb, std::string_view marker) const {
  const auto it = markers_.find(PairKey(nb, marker));
  return it == markers_.end() ? pugi::xml_node() : it->second;
}

const std::vector<pugi::xml_node>& XmlSource::ScreenTables(std::string_view nb) const {
  static const std::vector<pugi::xml_node> kNone;
  const auto it = screen_tables_.find(std::string(nb));
  return it == screen_tables_.end() ? kNone : it->second;
}

std::vector<pugi::xml_node> XmlSource::PointItems(pugi::xml_node table, int points) {
  std::vector<pugi::xml_node> items(points > 0 ? static_cast<size_t>(points) : 0);
  if (items.empty()) return items;
  for (pugi::xml_node item = table.child("Item"); item; item = item.next_sibling("Item")) {
    const pugi::xml_attribute point = item.attribute("Point");
    int number = 0;
    if (point && ParsePointNumber(point.value(), points, number) && !items[number]) {
      items[number] = item;
    }
  }
  return items;
}

pugi::xml_node XmlSource::ChildParameter(pugi::xml_node element, std::string_view id) {
  for (pugi::xml_node parameter = element.child("Parameter"); parameter;
       parameter = parameter.next_sibling("Parameter")) {
    const pugi::xml_attribute attribute = parameter.attribute("Id");
    if (attribute && id == attribute.value()) return parameter;
  }
  return pugi::xml_node();
}

}  // namespace z4400
