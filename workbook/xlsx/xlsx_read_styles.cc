#include "workbook/xlsx/xlsx_read_styles.h"

#include <cctype>
#include <charconv>
#include <pugixml.hpp>
#include <unordered_map>

namespace z4400 {
namespace {

// The built-in formats the file format defines by id (ECMA-376 part 1,
// 18.8.30), apart from id 14 (see `BuiltInNumberFormat`).
struct BuiltIn {
  int id;
  const char* code;
};
constexpr BuiltIn kBuiltIns[] = {
    {1, "0"},
    {2, "0.00"},
    {3, "#,##0"},
    {4, "#,##0.00"},
    {9, "0%"},
    {10, "0.00%"},
    {11, "0.00E+00"},
    {12, "# ?/?"},
    {13, "# ?\?/?\?"},
    {15, "d-mmm-yy"},
    {16, "d-mmm"},
    {17, "mmm-yy"},
    {18, "h:mm AM/PM"},
    {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},
    {21, "h:mm:ss"},
    {22, "m/d/yy h:mm"},
    {37, "#,##0 ;(#,##0)"},
    {38, "#,##0 ;[Red](#,##0)"},
    {39, "#,##0.00;(#,##0.00)"},
    {40, "#,##0.00;[Red](#,##0.00)"},
    {45, "mm:ss"},
    {46, "[h]:mm:ss"},
    {47, "mmss.0"},
    {48, "##0.0E+0"},
    {49, "@"},
};
constexpr int kShortDateId = 14;

/// Cell formats past this many are not read: the spreadsheet itself allows
/// 64,000, and the model's style ids are 16-bit.
constexpr size_t kMaxCellFormats = 65000;

int IntAttribute(const pugi::xml_node& node, const char* name, int fallback) {
  const pugi::xml_attribute attribute = node.attribute(name);
  if (!attribute) return fallback;
  const std::string_view text = attribute.value();
  int value = fallback;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() ? value : fallback;
}

/// A font flag such as <b/>: on when present, unless its val says "0" or
/// "false".
bool FontFlag(const pugi::xml_node& font, const char* name) {
  const pugi::xml_node flag = font.child(name);
  if (!flag) return false;
  const std::string_view value = flag.attribute("val").value();
  return value != "0" && value != "false";
}

}  // namespace

std::string BuiltInNumberFormat(int id) {
  for (const BuiltIn& built_in : kBuiltIns) {
    if (built_in.id == id) return built_in.code;
  }
  return kGeneralFormat;
}

bool IsDateFormat(std::string_view code) {
  for (size_t i = 0; i < code.size(); ++i) {
    const char c = code[i];
    switch (c) {
      case '"': {  // quoted text
        const size_t end = code.find('"', i + 1);
        if (end == std::string_view::npos) return false;
        i = end;
        break;
      }
      case '\\':  // escaped character
      case '_':   // space as wide as the next character
      case '*':   // fill with the next character
        ++i;
        break;
      case '[': {
        const size_t end = code.find(']', i + 1);
        if (end == std::string_view::npos) return false;
        // [h], [mm], [ss]: elapsed time. Anything else in brackets is a
        // colour ([Magenta]), a condition or a locale ([$-409]).
        const std::string_view tag = code.substr(i + 1, end - i - 1);
        if (!tag.empty() && tag.find_first_not_of("hmsHMS") == std::string_view::npos) return true;
        i = end;
        break;
      }
      default:
        switch (std::tolower(static_cast<unsigned char>(c))) {
          case 'd':
          case 'm':
          case 'y':
          case 'h':
          case 's':
            return true;
          default:
            break;
        }
    }
  }
  return false;
}

bool XlsxCellFormats::Read(std::string_view xml, StyleTable* table, std::string* error) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size());
  if (!parsed) {
    *error = std::string("the cell formats cannot be read: ") + parsed.description();
    return false;
  }
  const pugi::xml_node sheet = document.child("styleSheet");
  std::unordered_map<int, std::string> custom;
  for (const pugi::xml_node format : sheet.child("numFmts").children("numFmt")) {
    custom[IntAttribute(format, "numFmtId", -1)] = format.attribute("formatCode").value();
  }
  struct Font {
    bool bold;
    bool italic;
  };
  std::vector<Font> fonts;
  for (const pugi::xml_node font : sheet.child("fonts").children("font")) {
    fonts.push_back({FontFlag(font, "b"), FontFlag(font, "i")});
  }
  styles_.clear();
  dates_.clear();
  for (const pugi::xml_node xf : sheet.child("cellXfs").children("xf")) {
    if (styles_.size() == kMaxCellFormats) break;
    const int format_id = IntAttribute(xf, "numFmtId", 0);
    const int font_id = IntAttribute(xf, "fontId", 0);
    CellStyle style;
    const auto found = custom.find(format_id);
    style.number_format = found != custom.end() ? found->second : BuiltInNumberFormat(format_id);
    if (style.number_format.empty()) style.number_format = kGeneralFormat;
    if (font_id >= 0 && static_cast<size_t>(font_id) < fonts.size()) {
      style.bold = fonts[font_id].bold;
      style.italic = fonts[font_id].italic;
    }
    styles_.push_back(table->Intern(style));
    dates_.push_back(format_id == kShortDateId || IsDateFormat(style.number_format));
  }
  return true;
}

StyleId XlsxCellFormats::Style(int index) const {
  return index >= 0 && static_cast<size_t>(index) < styles_.size() ? styles_[index] : 0;
}

bool XlsxCellFormats::IsDate(int index) const {
  return index >= 0 && static_cast<size_t>(index) < dates_.size() && dates_[index];
}

}  // namespace z4400
