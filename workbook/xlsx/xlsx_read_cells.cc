#include "workbook/xlsx/xlsx_read_cells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <pugixml.hpp>

#include "workbook/model/cell_address.h"
#include "workbook/model/worksheet.h"
#include "workbook/xlsx/xlsx_read_styles.h"

namespace z4400 {
namespace {

// Whitespace-only text matters in a cell (" " is a text); pugixml keeps it
// when it is the element's only content.
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_ws_pcdata_single;

// The default font's widest digit and the cell padding, in pixels.
constexpr double kMaxDigitWidth = 7;
constexpr double kPadding = 5;

constexpr int kMaxColumnSpan = 1024;

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

void AppendUtf8(std::string* out, uint32_t code) {
  if (code < 0x80) {
    out->push_back(static_cast<char>(code));
  } else if (code < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (code >> 6)));
    out->push_back(static_cast<char>(0x80 | (code & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xE0 | (code >> 12)));
    out->push_back(static_cast<char>(0x80 | ((code >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (code & 0x3F)));
  }
}

/// The text of a string item (<si> or <is>): its <t>, or its runs' <t>s.
std::string ItemText(const pugi::xml_node& item) {
  std::string text;
  if (const pugi::xml_node plain = item.child("t")) {
    text = plain.text().get();
  } else {
    for (const pugi::xml_node run : item.children("r")) text += run.child("t").text().get();
  }
  return DecodeEscapes(text);
}

/// Splits "B7" into row and column; false for anything else.
bool ParseCellReference(std::string_view reference, int* row, int* column) {
  size_t i = 0;
  int letters = 0;
  while (i < reference.size() && reference[i] >= 'A' && reference[i] <= 'Z' && i < 3) {
    letters = letters * 26 + (reference[i] - 'A' + 1);
    ++i;
  }
  if (i == 0 || i == reference.size()) return false;
  int number = 0;
  const auto result =
      std::from_chars(reference.data() + i, reference.data() + reference.size(), number);
  if (result.ec != std::errc() || result.ptr != reference.data() + reference.size()) return false;
  *row = number;
  *column = letters;
  return true;
}

bool ParseNumber(std::string_view text, double* value) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), *value);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() &&
         std::isfinite(*value);
}

int IntAttribute(const pugi::xml_node& node, const char* name, int fallback) {
  const std::string_view text = node.attribute(name).value();
  int value = fallback;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() ? value : fallback;
}

/// Charges `budget` for storing a cell at (row, column) of `sheet`.
bool Charge(const Worksheet& sheet, int row, int column, CellBudget* budget) {
  uint64_t cost = 0;
  if (row > sheet.grid().RowCount()) cost += static_cast<uint64_t>(row - sheet.grid().RowCount());
  const size_t width = sheet.grid().RowCells(row).size();
  if (static_cast<size_t>(column) > width) cost += static_cast<uint64_t>(column) - width;
  if (cost > budget->remaining) return false;
  budget->remaining -= cost;
  return true;
}

void ReadColumns(const pugi::xml_node& columns, const XlsxCellFormats& formats, Worksheet* sheet) {
  for (const pugi::xml_node col : columns.children("col")) {
    const int first = std::max(IntAttribute(col, "min", 0), 1);
    const int last = std::min(IntAttribute(col, "max", first), kMaxColumns);
    // A width the user chose is marked custom; others are the spreadsheet's
    // own and stay unset in the model.
    const pugi::xml_attribute width = col.attribute("width");
    const bool custom = width && col.attribute("customWidth").as_bool();
    const pugi::xml_attribute style = col.attribute("style");
    // A format spanning a great many columns (often min 1 to max 16384) is
    // a sheet-wide default, which the model does not hold per column.
    if (last - first >= kMaxColumnSpan) continue;
    for (int column = first; column <= last; ++column) {
      ColumnFormat& format = sheet->column(column);
      if (custom) format.width = ColumnWidthFromStored(width.as_double());
      if (style) format.style = formats.Style(style.as_int());
    }
  }
}

}  // namespace

std::string DecodeEscapes(std::string_view text) {
  if (text.find("_x") == std::string_view::npos) return std::string(text);
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '_' && i + 6 < text.size() && text[i + 1] == 'x' && text[i + 6] == '_') {
      uint32_t code = 0;
      bool hex = true;
      for (size_t k = i + 2; k < i + 6; ++k) {
        const int digit = HexDigit(text[k]);
        if (digit < 0) hex = false;
        code = code * 16 + static_cast<uint32_t>(std::max(digit, 0));
      }
      if (hex) {
        AppendUtf8(&out, code);
        i += 6;
        continue;
      }
    }
    out.push_back(text[i]);
  }
  return out;
}

double ColumnWidthFromStored(double stored) {
  if (!(stored > 0)) return 0;
  const double pixels = std::round(std::min(stored, 1000.0) * kMaxDigitWidth);
  if (pixels < kMaxDigitWidth + kPadding) {
    return std::trunc(pixels / (kMaxDigitWidth + kPadding) * 100 + 0.5) / 100;
  }
  return std::trunc((pixels - kPadding) / kMaxDigitWidth * 100 + 0.5) / 100;
}

bool ReadSharedStrings(std::string_view xml, std::vector<std::string>* texts, std::string* error) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size(), kParseOptions);
  if (!parsed) {
    *error = std::string("the shared strings cannot be read: ") + parsed.description();
    return false;
  }
  texts->clear();
  for (const pugi::xml_node item : document.child("sst").children("si")) {
    texts->push_back(ItemText(item));
  }
  return true;
}

bool ReadWorksheetPart(std::string_view xml, const std::vector<std::string>& texts,
                       const XlsxCellFormats& formats, Worksheet* sheet, CellBudget* budget,
                       std::string* error) {
  pugi::xml_document document;
  const pugi::xml_parse_result parsed = document.load_buffer(xml.data(), xml.size(), kParseOptions);
  if (!parsed) {
    *error = "sheet " + sheet->Name() + " cannot be read: " + parsed.description();
    return false;
  }
  const pugi::xml_node root = document.child("worksheet");
  ReadColumns(root.child("cols"), formats, sheet);
  const auto fail = [&](const std::string& what) {
    *error = "sheet " + sheet->Name() + ": " + what;
    return false;
  };
  int row = 0;
  for (const pugi::xml_node row_node : root.child("sheetData").children("row")) {
    row = IntAttribute(row_node, "r", row + 1);
    int column = 0;
    for (const pugi::xml_node cell : row_node.children("c")) {
      const pugi::xml_attribute reference = cell.attribute("r");
      int cell_row = row;
      if (reference) {
        if (!ParseCellReference(reference.value(), &cell_row, &column) || cell_row != row) {
          return fail(std::string("the cell reference ") + reference.value() + " is not valid");
        }
      } else {
        ++column;
      }
      if (row < 1 || row > kMaxRows || column < 1 || column > kMaxColumns) {
        return fail("a cell lies outside the worksheet");
      }
      if (!Charge(*sheet, row, column, budget)) return fail("too many cells");

      const std::string_view type = cell.attribute("t").value();
      const std::string_view text = cell.child("v").text().get();
      const pugi::xml_attribute style_attribute = cell.attribute("s");
      const int format = style_attribute ? style_attribute.as_int() : 0;
      CellValue value;
      if (type == "s") {
        int index = -1;
        std::from_chars(text.data(), text.data() + text.size(), index);
        if (index < 0 || static_cast<size_t>(index) >= texts.size()) {
          return fail("a cell refers to a missing shared string");
        }
        value = CellValue(std::string_view(texts[index]));
      } else if (type == "inlineStr") {
        value = CellValue(ItemText(cell.child("is")));
      } else if (type == "str" || type == "e" || type == "d") {
        value = CellValue(DecodeEscapes(text));
      } else if (type == "b") {
        value = CellValue(text == "1" || text == "true");
      } else if (!text.empty()) {
        double number = 0;
        if (!ParseNumber(text, &number)) return fail("a cell holds no valid number");
        value = formats.IsDate(format) ? CellValue(DateValue{number}) : CellValue(number);
      }
      sheet->StoreValue(row, column, value);
      if (style_attribute || sheet->StyleAt(row, column) != 0) {
        sheet->SetStyleAt(row, column, formats.Style(format));
      }
    }
  }
  return true;
}

}  // namespace z4400
