#include "workbook/model/cell_value.h"

#include <charconv>
#include <string>

#include "common/runtime_failure.h"

namespace z4400 {

double CellValue::Number() const {
  if (const double* number = std::get_if<double>(&value_)) return *number;
  if (const DateValue* date = std::get_if<DateValue>(&value_)) return date->serial;
  return 0;
}

const std::string& CellValue::Text() const {
  static const std::string kEmpty;
  const std::string* text = std::get_if<std::string>(&value_);
  return text != nullptr ? *text : kEmpty;
}

bool CellValue::Boolean() const {
  const bool* flag = std::get_if<bool>(&value_);
  return flag != nullptr && *flag;
}

std::string CellValue::ToText() const {
  switch (Kind()) {
    case CellKind::kEmpty:
      return "";
    case CellKind::kText:
      return Text();
    case CellKind::kBoolean:
      return Boolean() ? "TRUE" : "FALSE";
    case CellKind::kNumber:
    case CellKind::kDate:
      break;
  }
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, Number());
  return std::string(buffer, result.ptr);
}

ValueBlock::ValueBlock(int rows, int columns)
    : rows_(rows < 0 ? 0 : rows),
      columns_(columns < 0 ? 0 : columns),
      values_(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_)) {}

CellValue& ValueBlock::operator()(int row, int column) {
  if (row < 0 || row >= rows_ || column < 0 || column >= columns_) {
    throw RuntimeFailure("Subscript out of range");
  }
  return values_[static_cast<std::size_t>(row) * columns_ + column];
}

const CellValue& ValueBlock::operator()(int row, int column) const {
  return const_cast<ValueBlock&>(*this)(row, column);
}

const CellValue& ValueArray::operator()(int index) const {
  if (index < 1 || index > UBound()) throw RuntimeFailure("Subscript out of range");
  return values_[static_cast<std::size_t>(index) - 1];
}

}  // namespace z4400
