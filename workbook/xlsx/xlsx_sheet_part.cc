#include "workbook/xlsx/xlsx_sheet_part.h"

#include <charconv>
#include <cmath>
#include <span>

#include "workbook/model/cell_address.h"
#include "workbook/xlsx/xlsx_print_settings.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

constexpr double kMaxDigitWidth = 7;  // pixels, the default font's digits
constexpr double kPadding = 5;        // pixels around the text of a column

// Used area of the sheet: rows and columns from 1; 0 when no cell is used.
struct UsedArea {
  int first_row = 0;
  int last_row = 0;
  int first_column = 0;
  int last_column = 0;
  // First and last used column of each row (index = row), 0 when unused.
  std::vector<std::pair<int, int>> rows;
};

// Rows are grouped by 16 for their "spans" hint, as the spreadsheet does.
constexpr int kSpanBlock = 16;

UsedArea FindUsedArea(const CellGrid& grid) {
  UsedArea area;
  area.rows.assign(static_cast<std::size_t>(grid.RowCount()) + 1, {0, 0});
  for (int row = 1; row <= grid.RowCount(); ++row) {
    const std::span<const Cell> cells = grid.RowCells(row);
    int first = 0;
    int last = 0;
    for (int i = 0; i < static_cast<int>(cells.size()); ++i) {
      if (cells[i].IsBlank()) continue;
      if (first == 0) first = i + 1;
      last = i + 1;
    }
    if (first == 0) continue;
    area.rows[row] = {first, last};
    if (area.first_row == 0) area.first_row = row;
    area.last_row = row;
    area.first_column = area.first_column == 0 ? first : std::min(area.first_column, first);
    area.last_column = std::max(area.last_column, last);
  }
  return area;
}

// Room for the part: the markup around the cells, about 40 bytes a row and
// 32 a cell (address, style, value), so that a part of numbers is written
// without growing.
std::size_t EstimatedPartSize(const CellGrid& grid) {
  return 4096 + 40 * static_cast<std::size_t>(grid.RowCount()) + 32 * grid.CountUsed();
}

void AppendInt(std::string& out, long long value) {
  char buffer[24];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

// "A1:F9": the address without its "$" signs.
std::string PlainAddress(const CellArea& area) {
  std::string ref = FormatCellAddress(area);
  std::erase(ref, '$');
  return ref;
}

void WriteDimension(XmlWriter& xml, const UsedArea& used) {
  if (used.first_row == 0) {
    xml.EmptyTag("dimension", {{"ref", "A1"}});
    return;
  }
  xml.EmptyTag("dimension", {{"ref", PlainAddress({used.first_row, used.first_column, used.last_row,
                                                   used.last_column})}});
}

// The sheet's one view: whether its tab is selected and, for frozen top
// rows, the pane below them that scrolls.
void WriteSheetViews(XmlWriter& xml, const Worksheet& sheet, bool selected) {
  xml.StartTag("sheetViews");
  const int frozen = sheet.FrozenTopRows();
  if (frozen == 0) {
    if (selected) {
      xml.EmptyTag("sheetView", {{"tabSelected", 1}, {"workbookViewId", 0}});
    } else {
      xml.EmptyTag("sheetView", {{"workbookViewId", 0}});
    }
  } else {
    if (selected) {
      xml.StartTag("sheetView", {{"tabSelected", 1}, {"workbookViewId", 0}});
    } else {
      xml.StartTag("sheetView", {{"workbookViewId", 0}});
    }
    xml.EmptyTag("pane", {{"ySplit", frozen},
                          {"topLeftCell", "A" + std::to_string(frozen + 1)},
                          {"activePane", "bottomLeft"},
                          {"state", "frozen"}});
    xml.EmptyTag("selection", {{"pane", "bottomLeft"}});
    xml.EndTag("sheetView");
  }
  xml.EndTag("sheetViews");
}

void WriteCols(XmlWriter& xml, const Worksheet& sheet, XlsxStyles& styles) {
  const auto& columns = sheet.columns();
  bool any = false;
  for (auto it = columns.begin(); it != columns.end();) {
    // Neighbouring columns with the same format share one element.
    auto end = std::next(it);
    int max = it->first;
    while (end != columns.end() && end->first == max + 1 && end->second == it->second) {
      ++max;
      ++end;
    }
    const ColumnFormat& format = it->second;
    if (format.width || format.style) {
      if (!any) xml.StartTag("cols");
      any = true;
      const double width = StoredColumnWidth(format.width.value_or(kStandardColumnWidth));
      std::string& out = xml.raw();
      out += "<col min=\"";
      AppendInt(out, it->first);
      out += "\" max=\"";
      AppendInt(out, max);
      out += "\" width=\"";
      char buffer[kNumberBufferSize];
      out += FormatNumber(width, buffer);
      out += '"';
      if (format.style && *format.style != 0) {
        out += " style=\"";
        AppendInt(out, styles.CellFormat(*format.style, false));
        out += '"';
      }
      if (format.width) out += " customWidth=\"1\"";
      out += "/>";
    }
    it = end;
  }
  if (any) xml.EndTag("cols");
}

// The cells, streamed straight into the part: this loop carries almost all
// of a large workbook.
void WriteSheetData(XmlWriter& xml, const Worksheet& sheet, const UsedArea& used,
                    CellTables& tables) {
  const CellGrid& grid = sheet.grid();
  std::vector<StyleId> column_styles(static_cast<std::size_t>(used.last_column) + 1, 0);
  for (const auto& [column, format] : sheet.columns()) {
    if (column <= used.last_column && format.style) column_styles[column] = *format.style;
  }
  std::vector<std::string> column_names(static_cast<std::size_t>(used.last_column) + 1);
  for (int column = used.first_column; column <= used.last_column && column > 0; ++column) {
    column_names[column] = ColumnName(column);
  }
  XlsxStyles& styles = tables.styles();
  std::string& out = xml.raw();
  char row_text[16];
  int span_block = -1;
  std::pair<int, int> span;
  out += "<sheetData>";
  for (int row = used.first_row; row <= used.last_row && row > 0; ++row) {
    const auto [first_column, last_column] = used.rows[row];
    if (first_column == 0) continue;
    if ((row - 1) / kSpanBlock != span_block) {
      span_block = (row - 1) / kSpanBlock;
      span = {};
      const int end = std::min(used.last_row, (span_block + 1) * kSpanBlock);
      for (int r = span_block * kSpanBlock + 1; r <= end; ++r) {
        if (used.rows[r].first == 0) continue;
        span.first =
            span.first == 0 ? used.rows[r].first : std::min(span.first, used.rows[r].first);
        span.second = std::max(span.second, used.rows[r].second);
      }
    }
    const std::span<const Cell> cells = grid.RowCells(row);
    const auto row_end = std::to_chars(row_text, row_text + sizeof row_text, row).ptr;
    const std::string_view row_number(row_text, static_cast<std::size_t>(row_end - row_text));
    out += "<row r=\"";
    out += row_number;
    out += "\" spans=\"";
    AppendInt(out, span.first);
    out += ':';
    AppendInt(out, span.second);
    out += "\">";
    for (int i = first_column - 1; i < last_column; ++i) {
      const Cell& cell = cells[i];
      if (cell.IsBlank()) continue;
      const int column = i + 1;
      const StyleId style = cell.has_style() ? cell.style() : column_styles[column];
      const int format = styles.CellFormat(style, cell.kind() == CellKind::kDate);
      out += "<c r=\"";
      out += column_names[column];
      out += row_number;
      out += '"';
      if (format != 0) {
        out += " s=\"";
        AppendInt(out, format);
        out += '"';
      }
      switch (cell.kind()) {
        case CellKind::kEmpty:
          out += "/>";
          continue;
        case CellKind::kText:
          out += " t=\"s\"><v>";
          AppendInt(out, tables.SharedString(cell.text_id()));
          break;
        case CellKind::kBoolean:
          out += cell.boolean() ? " t=\"b\"><v>1" : " t=\"b\"><v>0";
          break;
        case CellKind::kNumber:
        case CellKind::kDate:
          if (!std::isfinite(cell.number())) {
            out += " t=\"e\"><v>#NUM!";  // what the spreadsheet shows for it
          } else {
            out += "><v>";
            out += tables.numbers().CellText(sheet, row, column, cell.number());
          }
          break;
      }
      out += "</v></c>";
    }
    out += "</row>";
  }
  out += "</sheetData>";
}

}  // namespace

double StoredColumnWidth(double characters) {
  if (characters <= 0) return 0;
  const double pixels = characters < 1 ? std::trunc(characters * (kMaxDigitWidth + kPadding) + 0.5)
                                       : std::trunc(characters * kMaxDigitWidth + 0.5) + kPadding;
  return std::trunc(pixels / kMaxDigitWidth * 256) / 256;
}

int CellTables::SharedString(TextId id) {
  if (id >= index_of_text_.size()) index_of_text_.resize(id + 1, -1);
  int& index = index_of_text_[id];
  if (index < 0) {
    index = shared_.Add(texts_.Get(id));
  } else {
    shared_.CountReference();
  }
  return index;
}

std::string WriteSheetPart(const Worksheet& sheet, CellTables& tables, bool selected,
                           bool has_drawing, std::string buffer) {
  const UsedArea used = FindUsedArea(sheet.grid());
  buffer.reserve(EstimatedPartSize(sheet.grid()));
  XmlWriter xml(std::move(buffer));
  xml.StartTag(
      "worksheet",
      {{"xmlns", "http://schemas.openxmlformats.org/spreadsheetml/2006/main"},
       {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"}});
  WriteWorksheetPr(xml, sheet.PageSetup());
  WriteDimension(xml, used);
  WriteSheetViews(xml, sheet, selected);
  xml.EmptyTag("sheetFormatPr", {{"defaultRowHeight", 15}});
  WriteCols(xml, sheet, tables.styles());
  WriteSheetData(xml, sheet, used, tables);
  if (sheet.ProtectContents()) {
    xml.EmptyTag("sheetProtection", {{"sheet", 1}, {"objects", 1}, {"scenarios", 1}});
  }
  if (sheet.AutoFilter()) xml.EmptyTag("autoFilter", {{"ref", PlainAddress(*sheet.AutoFilter())}});
  xml.EmptyTag("pageMargins", {{"left", 0.7},
                               {"right", 0.7},
                               {"top", 0.75},
                               {"bottom", 0.75},
                               {"header", 0.3},
                               {"footer", 0.3}});
  WritePageSetup(xml, sheet.PageSetup(), true);
  WriteHeaderFooter(xml, sheet.PageSetup());
  WriteRowBreaks(xml, sheet.HPageBreaks());
  if (has_drawing) xml.EmptyTag("drawing", {{"r:id", "rId1"}});
  xml.EndTag("worksheet");
  return xml.Release();
}

}  // namespace z4400
