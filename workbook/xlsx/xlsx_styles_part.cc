#include "workbook/xlsx/xlsx_styles_part.h"

#include <array>

#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

// Number formats every spreadsheet knows by id. The locale-dependent date
// formats (14 to 17, 22) are left out: a format asked for by its code is
// written out so that it shows the same everywhere.
struct BuiltIn {
  int id;
  std::string_view code;
};
constexpr std::array<BuiltIn, 19> kBuiltIns = {{
    {0, "General"},  {1, "0"},          {2, "0.00"},        {3, "#,##0"},
    {4, "#,##0.00"}, {9, "0%"},         {10, "0.00%"},      {11, "0.00E+00"},
    {12, "# ?/?"},   {13, "# ?\?/?\?"}, {18, "h:mm AM/PM"}, {19, "h:mm:ss AM/PM"},
    {20, "h:mm"},    {21, "h:mm:ss"},   {45, "mm:ss"},      {46, "[h]:mm:ss"},
    {47, "mmss.0"},  {48, "##0.0E+0"},  {49, "@"},
}};

constexpr int kFirstCustomFormatId = 164;
constexpr int kShortDateFormatId = 14;

}  // namespace

std::optional<int> BuiltInNumberFormatId(std::string_view format) {
  if (format.empty()) return 0;
  for (const BuiltIn& built_in : kBuiltIns) {
    if (built_in.code == format) return built_in.id;
  }
  return std::nullopt;
}

XlsxStyles::XlsxStyles(const StyleTable& table) {
  fonts_.push_back({false, false});
  for (const CellStyle& style : table.styles()) {
    xfs_.push_back({NumberFormatId(style.number_format), FontId(style.bold, style.italic)});
  }
  if (xfs_.empty()) xfs_.push_back({});
  date_xfs_.assign(xfs_.size(), -1);
}

int XlsxStyles::NumberFormatId(const std::string& format) {
  if (const auto built_in = BuiltInNumberFormatId(format)) return *built_in;
  const auto found = format_ids_.find(format);
  if (found != format_ids_.end()) return found->second;
  const int id = kFirstCustomFormatId + static_cast<int>(custom_formats_.size());
  custom_formats_.emplace_back(id, format);
  format_ids_.emplace(format, id);
  return id;
}

int XlsxStyles::FontId(bool bold, bool italic) {
  for (std::size_t i = 0; i < fonts_.size(); ++i) {
    if (fonts_[i] == std::pair(bold, italic)) return static_cast<int>(i);
  }
  fonts_.emplace_back(bold, italic);
  return static_cast<int>(fonts_.size()) - 1;
}

int XlsxStyles::CellFormat(StyleId id, bool is_date) {
  const int index = id < date_xfs_.size() ? id : 0;
  if (!is_date || xfs_[index].number_format_id != 0) return index;
  if (date_xfs_[index] < 0) {
    date_xfs_[index] = static_cast<int>(xfs_.size());
    xfs_.push_back({kShortDateFormatId, xfs_[index].font_id});
  }
  return date_xfs_[index];
}

std::string XlsxStyles::WritePart() const {
  XmlWriter xml;
  xml.StartTag("styleSheet",
               {{"xmlns", "http://schemas.openxmlformats.org/spreadsheetml/2006/main"}});
  if (!custom_formats_.empty()) {
    xml.StartTag("numFmts", {{"count", custom_formats_.size()}});
    for (const auto& [id, code] : custom_formats_) {
      xml.EmptyTag("numFmt", {{"numFmtId", id}, {"formatCode", code}});
    }
    xml.EndTag("numFmts");
  }
  xml.StartTag("fonts", {{"count", fonts_.size()}});
  for (const auto& [bold, italic] : fonts_) {
    xml.StartTag("font");
    if (bold) xml.EmptyTag("b");
    if (italic) xml.EmptyTag("i");
    xml.EmptyTag("sz", {{"val", 11}});
    xml.EmptyTag("name", {{"val", "Calibri"}});
    xml.EmptyTag("family", {{"val", 2}});
    xml.EndTag("font");
  }
  xml.EndTag("fonts");
  xml.StartTag("fills", {{"count", 2}});
  xml.raw().append(
      "<fill><patternFill patternType=\"none\"/></fill>"
      "<fill><patternFill patternType=\"gray125\"/></fill>");
  xml.EndTag("fills");
  xml.StartTag("borders", {{"count", 1}});
  xml.raw().append("<border><left/><right/><top/><bottom/><diagonal/></border>");
  xml.EndTag("borders");
  xml.StartTag("cellStyleXfs", {{"count", 1}});
  xml.EmptyTag("xf", {{"numFmtId", 0}, {"fontId", 0}, {"fillId", 0}, {"borderId", 0}});
  xml.EndTag("cellStyleXfs");
  xml.StartTag("cellXfs", {{"count", xfs_.size()}});
  for (const Xf& xf : xfs_) {
    // All attributes are numbers: no escaping needed.
    std::string& out = xml.raw();
    out += "<xf numFmtId=\"" + std::to_string(xf.number_format_id) + "\" fontId=\"" +
           std::to_string(xf.font_id) + "\" fillId=\"0\" borderId=\"0\" xfId=\"0\"";
    if (xf.number_format_id != 0) out += " applyNumberFormat=\"1\"";
    if (xf.font_id != 0) out += " applyFont=\"1\"";
    out += "/>";
  }
  xml.EndTag("cellXfs");
  xml.StartTag("cellStyles", {{"count", 1}});
  xml.EmptyTag("cellStyle", {{"name", "Normal"}, {"xfId", 0}, {"builtinId", 0}});
  xml.EndTag("cellStyles");
  xml.EmptyTag("dxfs", {{"count", 0}});
  xml.EmptyTag("tableStyles", {{"count", 0},
                               {"defaultTableStyle", "TableStyleMedium9"},
                               {"defaultPivotStyle", "PivotStyleLight16"}});
  xml.EndTag("styleSheet");
  return xml.Release();
}

}  // namespace z4400
