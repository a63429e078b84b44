#include "workbook/model/cell_range.h"

#include <algorithm>
#include <unordered_map>

#include "common/runtime_failure.h"
#include "workbook/model/display_text.h"
#include "workbook/model/text_width.h"
#include "workbook/model/typed_input.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

// More cells than one value assignment or read may touch.
constexpr long long kMaxValueCells = 1LL << 22;

long long CellCount(const CellArea& area) {
  return static_cast<long long>(area.RowCount()) * area.ColumnCount();
}

void CheckValueCells(const CellArea& area) {
  if (CellCount(area) > kMaxValueCells) {
    throw RuntimeFailure("Too many cells for one value assignment: " + FormatCellAddress(area));
  }
}

// Applies `change` to the style of every cell of the area (or, for whole
// columns, to the columns and their used cells), interning each distinct
// changed style once.
template <typename Change>
void Restyle(Worksheet& sheet, const CellArea& area, bool whole_columns, Change change) {
  StyleTable& styles = sheet.Parent().Styles();
  std::unordered_map<StyleId, StyleId> changed;
  auto new_style = [&](StyleId old_style) {
    const auto found = changed.find(old_style);
    if (found != changed.end()) return found->second;
    CellStyle style = styles.Get(old_style);
    change(style);
    const StyleId id = styles.Intern(style);
    changed.emplace(old_style, id);
    return id;
  };
  if (whole_columns) {
    for (int column = area.first_column; column <= area.last_column; ++column) {
      sheet.RestyleColumn(column, new_style);
    }
    return;
  }
  CheckValueCells(area);
  for (int row = area.first_row; row <= area.last_row; ++row) {
    for (int column = area.first_column; column <= area.last_column; ++column) {
      sheet.SetStyleAt(row, column, new_style(sheet.StyleAt(row, column)));
    }
  }
}

const CellStyle& TopLeftStyle(const Worksheet& sheet, const CellArea& area) {
  return sheet.Parent().Styles().Get(sheet.StyleAt(area.first_row, area.first_column));
}

}  // namespace

bool FontRef::Bold() const { return TopLeftStyle(*sheet_, area_).bold; }

void FontRef::SetBold(bool bold) const {
  Restyle(*sheet_, area_, whole_columns_, [bold](CellStyle& style) { style.bold = bold; });
}

bool FontRef::Italic() const { return TopLeftStyle(*sheet_, area_).italic; }

void FontRef::SetItalic(bool italic) const {
  Restyle(*sheet_, area_, whole_columns_, [italic](CellStyle& style) { style.italic = italic; });
}

long long CellRange::Count() const { return CellCount(area_); }

std::string CellRange::Address() const { return FormatCellAddress(area_); }

CellRange CellRange::Cells(int row, int column) const {
  const long long absolute_row = static_cast<long long>(area_.first_row) + row - 1;
  const long long absolute_column = static_cast<long long>(area_.first_column) + column - 1;
  if (absolute_row < 1 || absolute_row > kMaxRows || absolute_column < 1 ||
      absolute_column > kMaxColumns) {
    throw RuntimeFailure("Cell (" + std::to_string(row) + ", " + std::to_string(column) +
                         ") lies outside the worksheet");
  }
  const int r = static_cast<int>(absolute_row);
  const int c = static_cast<int>(absolute_column);
  return CellRange(sheet_, CellArea{r, c, r, c});
}

CellValue CellRange::Value() const { return sheet_->ValueAt(area_.first_row, area_.first_column); }

ValueBlock CellRange::Values() const {
  CheckValueCells(area_);
  ValueBlock block(area_.RowCount(), area_.ColumnCount());
  for (int row = 0; row < block.Rows(); ++row) {
    for (int column = 0; column < block.Columns(); ++column) {
      block(row, column) = sheet_->ValueAt(area_.first_row + row, area_.first_column + column);
    }
  }
  return block;
}

void CellRange::SetValue(const CellValue& value) const {
  sheet_->CheckWritable();
  CheckValueCells(area_);
  // Typed input is read once for the whole range.
  const CellValue typed = value.IsText() ? ParseTypedInput(value.Text()) : value;
  const bool fix_date_format = value.IsText() && typed.IsDate();
  if (!typed.IsEmpty()) sheet_->Reserve(area_.first_row, area_.last_row, area_.last_column);
  for (int row = area_.first_row; row <= area_.last_row; ++row) {
    for (int column = area_.first_column; column <= area_.last_column; ++column) {
      if (fix_date_format) {
        sheet_->WriteValue(row, column, value);
      } else {
        sheet_->StoreValue(row, column, typed);
      }
    }
  }
}

void CellRange::SetValue(const ValueBlock& block) const {
  sheet_->CheckWritable();
  CheckValueCells(area_);
  sheet_->Reserve(area_.first_row, area_.last_row, area_.last_column);
  static const CellValue kEmpty;
  for (int row = 0; row < area_.RowCount(); ++row) {
    for (int column = 0; column < area_.ColumnCount(); ++column) {
      const bool inside = row < block.Rows() && column < block.Columns();
      sheet_->WriteValue(area_.first_row + row, area_.first_column + column,
                         inside ? block(row, column) : kEmpty);
    }
  }
}

std::string CellRange::NumberFormat() const { return TopLeftStyle(*sheet_, area_).number_format; }

void CellRange::SetNumberFormat(std::string_view format) const {
  const std::string text(format.empty() ? std::string_view(kGeneralFormat) : format);
  Restyle(*sheet_, area_, whole_columns_,
          [&text](CellStyle& style) { style.number_format = text; });
}

double CellRange::ColumnWidth() const { return sheet_->ColumnWidthAt(area_.first_column); }

void CellRange::SetColumnWidth(double width) const {
  if (!(width >= 0 && width <= kMaxColumnWidth)) {
    throw RuntimeFailure("Column width must be 0 to 255");
  }
  for (int column = area_.first_column; column <= area_.last_column; ++column) {
    sheet_->column(column).width = width;
  }
}

void CellRange::AutoFit() const {
  const int last_row = std::min(area_.last_row, sheet_->grid().RowCount());
  for (int column = area_.first_column; column <= area_.last_column; ++column) {
    double widest = 0;
    for (int row = area_.first_row; row <= last_row; ++row) {
      widest = std::max(widest, ColumnWidthForCell(*sheet_, row, column));
    }
    sheet_->column(column).width =
        widest == 0 ? kStandardColumnWidth : std::min(kMaxColumnWidth, widest);
  }
}

}  // namespace z4400
