#include "workbook/xlsx/xlsx_shared_strings.h"

#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

}  // namespace

int SharedStrings::Add(std::string_view text) {
  ++count_;
  const auto found = index_.find(text);
  if (found != index_.end()) return found->second;
  const int index = static_cast<int>(texts_.size());
  texts_.emplace_back(text);
  index_.emplace(texts_.back(), index);
  return index;
}

std::string SharedStrings::WritePart() const {
  XmlWriter xml;
  xml.StartTag("sst", {{"xmlns", "http://schemas.openxmlformats.org/spreadsheetml/2006/main"},
                       {"count", count_},
                       {"uniqueCount", unique_count()}});
  for (const std::string& text : texts_) {
    xml.raw().append("<si>");
    if (!text.empty() && (IsBlank(text.front()) || IsBlank(text.back()))) {
      xml.DataElement("t", text, {{"xml:space", "preserve"}});
    } else {
      xml.DataElement("t", text);
    }
    xml.raw().append("</si>");
  }
  xml.EndTag("sst");
  return xml.Release();
}

}  // namespace z4400
