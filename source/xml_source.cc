#include "source/xml_source.h"

#include <algorithm>
#include <cstring>

#include "common/numeric_text.h"

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

/// `node`, whose name is `name`, is an element named `expected`; the first
/// letter, compared inline, passes over the thousands of points quickly.
bool IsElement(const pugi::xml_node& node, const char* name, const char* expected) {
  return name[0] == expected[0] && std::strcmp(name, expected) == 0 &&
         node.type() == pugi::node_element;
}

bool Named(const pugi::xml_node& node, const char* expected) {
  return IsElement(node, node.name(), expected);
}

/// The node after `node` in document order, or null at the end.
pugi::xml_node NextInDocument(pugi::xml_node node) {
  if (pugi::xml_node child = node.first_child()) return child;
  for (; node; node = node.parent()) {
    if (pugi::xml_node sibling = node.next_sibling()) return sibling;
  }
  return {};
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
  Release();
  const bool parsed =
      size_ > 0 && static_cast<bool>(document_.load_buffer_inplace(buffer_.get(), size_));
  if (!parsed) {
    document_.reset();  // a document that fails to load holds nothing
    return;
  }
  BuildIndexes();
}

void XmlSource::Release() {
  file_parameters_.clear();
  screen_parameters_.clear();
  markers_.clear();
  screen_tables_.clear();
  trace_table_count_ = 0;
  root_ = pugi::xml_node();
  document_.reset();
}

// One walk through the document in document order finds what the paths
// //AnalyserData, //AnalyserData/Parameter, //AnalyserData/Context/Parameter,
// //AnalyserData/Context/Marker, //Trace/Table and //Context/Trace/Table
// select; the first of equal keys is kept.
void XmlSource::BuildIndexes() {
  for (pugi::xml_node node = document_.first_child(); node; node = NextInDocument(node)) {
    const char* name = node.name();
    if (IsElement(node, name, "AnalyserData")) {
      if (!root_) root_ = node;
    } else if (IsElement(node, name, "Parameter") && Named(node.parent(), "AnalyserData")) {
      const pugi::xml_attribute id = node.attribute("Id");
      if (id) file_parameters_.try_emplace(id.value(), node);
    } else if (IsElement(node, name, "Parameter") || IsElement(node, name, "Marker")) {
      const pugi::xml_node parent = node.parent();
      if (!Named(parent, "Context") || !Named(parent.parent(), "AnalyserData")) continue;
      const bool is_marker = name[0] == 'M';
      const pugi::xml_attribute nb = parent.attribute("Nb");
      const pugi::xml_attribute key = node.attribute(is_marker ? "Nb" : "Id");
      if (!nb || !key) continue;
      (is_marker ? markers_ : screen_parameters_)
          .try_emplace(PairKey(nb.value(), key.value()), node);
    } else if (IsElement(node, name, "Table") && Named(node.parent(), "Trace")) {
      ++trace_table_count_;
      const pugi::xml_node context = node.parent().parent();
      if (!Named(context, "Context")) continue;
      const pugi::xml_attribute nb = context.attribute("Nb");
      if (nb) screen_tables_[nb.value()].push_back(node);
    }
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

void XmlSource::ReadPointLevels(pugi::xml_node table, std::span<double> levels) {
  const auto points = static_cast<int>(levels.size());
  std::vector<bool> seen(levels.size());
  for (pugi::xml_node item = table.child("Item"); item; item = item.next_sibling("Item")) {
    int number = 0;
    if (ParsePointNumber(item.attribute("Point").value(), points, number) && !seen[number]) {
      seen[number] = true;
      levels[number] = NumericValue(item.attribute("Lvl").value());
    }
  }
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
