#include "workbook/model/worksheet.h"

#include "common/runtime_failure.h"
#include "workbook/model/typed_input.h"
#include "workbook/model/workbook.h"

namespace z4400 {
namespace {

// The format a date typed into a cell of general format gets.
constexpr const char* kTypedDateFormat = "yyyy-mm-dd";

void CheckCell(int row, int column) {
  if (row < 1 || row > kMaxRows || column < 1 || column > kMaxColumns) {
    throw RuntimeFailure("Cell (" + std::to_string(row) + ", " + std::to_string(column) +
                         ") lies outside the worksheet");
  }
}

}  // namespace

Worksheet::Worksheet(Workbook* workbook, std::string name)
    : Sheet(workbook, SheetType::kWorksheet, std::move(name)) {}

Worksheet::~Worksheet() = default;

CellRange Worksheet::Cells(int row, int column) {
  CheckCell(row, column);
  return CellRange(this, CellArea{row, column, row, column});
}

CellRange Worksheet::Range(std::string_view address) {
  const std::optional<CellArea> area = ParseCellAddress(address);
  if (!area) throw RuntimeFailure("Invalid cell address \"" + std::string(address) + "\"");
  return CellRange(this, *area, area->first_row == 1 && area->last_row == kMaxRows);
}

CellRange Worksheet::Range(const CellRange& first, const CellRange& last) {
  if (&first.Parent() != this || &last.Parent() != this) {
    throw RuntimeFailure("The cells of a range must lie on its worksheet");
  }
  const CellArea& a = first.Area();
  const CellArea& b = last.Area();
  const CellArea area{std::min(a.first_row, b.first_row), std::min(a.first_column, b.first_column),
                      std::max(a.last_row, b.last_row), std::max(a.last_column, b.last_column)};
  return CellRange(this, area, area.first_row == 1 && area.last_row == kMaxRows);
}

CellRange Worksheet::Columns(int column) {
  CheckCell(1, column);
  return CellRange(this, CellArea{1, column, kMaxRows, column}, true);
}

CellValue Worksheet::ValueAt(int row, int column) const {
  const Cell* cell = grid_.Find(row, column);
  if (cell == nullptr) return CellValue();
  switch (cell->kind()) {
    case CellKind::kEmpty:
      return CellValue();
    case CellKind::kNumber:
      return CellValue(cell->number());
    case CellKind::kDate:
      return CellValue(DateValue{cell->number()});
    case CellKind::kBoolean:
      return CellValue(cell->boolean());
    case CellKind::kText:
      return CellValue(Parent().SharedStrings().Get(cell->text_id()));
  }
  return CellValue();
}

void Worksheet::StoreValue(int row, int column, const CellValue& value) {
  CheckCell(row, column);
  Cell& cell = grid_.At(row, column);
  if (cell.IsBlank()) {
    if (value.IsEmpty()) return;
    const auto found = columns_.find(column);
    if (found != columns_.end() && found->second.style) cell.SetStyle(*found->second.style);
  }
  switch (value.Kind()) {
    case CellKind::kEmpty:
      cell.Clear();
      break;
    case CellKind::kNumber:
      cell.SetNumber(value.Number());
      break;
    case CellKind::kDate:
      cell.SetDate(value.Number());
      break;
    case CellKind::kBoolean:
      cell.SetBoolean(value.Boolean());
      break;
    case CellKind::kText:
      cell.SetText(Parent().SharedStrings().Intern(value.Text()));
      break;
  }
}

void Worksheet::WriteValue(int row, int column, const CellValue& value) {
  if (!value.IsText()) {
    StoreValue(row, column, value);
  } else {
    const CellValue typed = ParseTypedInput(value.Text());
    StoreValue(row, column, typed);
    if (typed.IsDate()) {
      StyleTable& styles = Parent().Styles();
      CellStyle style = styles.Get(StyleAt(row, column));
      if (style.number_format == kGeneralFormat) {
        style.number_format = kTypedDateFormat;
        SetStyleAt(row, column, styles.Intern(style));
      }
    }
  }
}

StyleId Worksheet::StyleAt(int row, int column) const {
  const Cell* cell = grid_.Find(row, column);
  if (cell != nullptr && cell->has_style()) return cell->style();
  const auto found = columns_.find(column);
  return found != columns_.end() ? found->second.style.value_or(0) : 0;
}

void Worksheet::SetStyleAt(int row, int column, StyleId style) {
  CheckCell(row, column);
  grid_.At(row, column).SetStyle(style);
}

double Worksheet::ColumnWidthAt(int column) const {
  const auto found = columns_.find(column);
  return found != columns_.end() ? found->second.width.value_or(kStandardColumnWidth)
                                 : kStandardColumnWidth;
}

void Worksheet::CheckWritable() const {
  if (protected_) {
    throw RuntimeFailure("The cell or chart is on protected sheet " + Name());
  }
}

std::unique_ptr<Sheet> Worksheet::Clone(Workbook* workbook, std::string name) const {
  if (workbook != &Parent()) {
    throw RuntimeFailure("A worksheet can only be copied within its workbook");
  }
  auto copy = std::make_unique<Worksheet>(workbook, std::move(name));
  copy->grid_ = grid_;
  copy->columns_ = columns_;
  copy->protected_ = protected_;
  copy->frozen_rows_ = frozen_rows_;
  copy->auto_filter_ = auto_filter_;
  copy->page_breaks_ = page_breaks_;
  copy->PageSetup() = PageSetup();
  for (const auto& object : charts_) {
    copy->charts_.push_back(std::make_unique<ChartObject>(
        copy.get(), object->Name(), object->Chart().Clone(workbook), object->Left(), object->Top(),
        object->Width(), object->Height()));
  }
  return copy;
}

}  // namespace z4400
