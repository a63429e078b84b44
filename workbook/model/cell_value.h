// The dynamic value of a cell as the sheet writers exchange it with the
// workbook: empty, a number, a text, a boolean or a date, plus the
// two-dimensional blocks written in one assignment and the one-based arrays
// that chart series read back from their cells.
#ifndef Z4400_WORKBOOK_MODEL_CELL_VALUE_H_
#define Z4400_WORKBOOK_MODEL_CELL_VALUE_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace z4400 {

/// What a cell holds.
enum class CellKind : unsigned char { kEmpty, kNumber, kText, kBoolean, kDate };

/// A date as the workbook stores it: the day serial counted the spreadsheet
/// way (1 = 1900-01-01, with the phantom 1900-02-29, so 2007-03-05 = 39146);
/// the fraction is the time of day.
struct DateValue {
  double serial = 0;
  friend bool operator==(const DateValue&, const DateValue&) = default;
};

/// A dynamic value: what a cell's `Value` reads and writes.
class CellValue {
 public:
  /// The empty value.
  CellValue() = default;
  CellValue(double number) : value_(number) {}  // NOLINT(google-explicit-constructor)
  template <typename T>
  requires(std::is_arithmetic_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, double>)
      CellValue(T number)
      : value_(static_cast<double>(number)) {}                     // NOLINT
  CellValue(bool flag) : value_(flag) {}                           // NOLINT
  CellValue(std::string text) : value_(std::move(text)) {}         // NOLINT
  CellValue(std::string_view text) : value_(std::string(text)) {}  // NOLINT
  CellValue(const char* text) : value_(std::string(text)) {}       // NOLINT
  CellValue(DateValue date) : value_(date) {}                      // NOLINT

  CellKind Kind() const { return static_cast<CellKind>(value_.index()); }
  bool IsEmpty() const { return Kind() == CellKind::kEmpty; }
  bool IsNumber() const { return Kind() == CellKind::kNumber; }
  bool IsText() const { return Kind() == CellKind::kText; }
  bool IsDate() const { return Kind() == CellKind::kDate; }

  /// The number of a number, the serial of a date; 0 otherwise.
  double Number() const;
  /// The text of a text value; "" otherwise.
  const std::string& Text() const;
  /// The flag of a boolean; false otherwise.
  bool Boolean() const;

  /// The value as plain text: numbers in shortest round-trip form ("0.5",
  /// "1e+20"), booleans "TRUE" or "FALSE", dates as their serial, empty as
  /// "".
  std::string ToText() const;

  friend bool operator==(const CellValue&, const CellValue&) = default;

 private:
  // Alternative order matches `CellKind`.
  std::variant<std::monostate, double, std::string, bool, DateValue> value_;
};

/// A rectangular block of values, rows × columns, indexed from 0 like the
/// buffers the sheet writers fill before one `Value` assignment.
class ValueBlock {
 public:
  ValueBlock() = default;
  ValueBlock(int rows, int columns);

  int Rows() const { return rows_; }
  int Columns() const { return columns_; }
  /// The value at (row, column), both from 0. Throws `RuntimeFailure`
  /// ("Subscript out of range") outside the block.
  CellValue& operator()(int row, int column);
  const CellValue& operator()(int row, int column) const;

 private:
  int rows_ = 0;
  int columns_ = 0;
  std::vector<CellValue> values_;
};

/// A one-dimensional array with first index 1, as a series reads its X
/// values and values back from the cells it refers to.
class ValueArray {
 public:
  ValueArray() = default;
  explicit ValueArray(std::vector<CellValue> values) : values_(std::move(values)) {}

  /// The last index: the number of values (0 when there are none).
  int UBound() const { return static_cast<int>(values_.size()); }
  /// The value at `index` (1 to `UBound()`). Throws `RuntimeFailure`
  /// ("Subscript out of range") outside.
  const CellValue& operator()(int index) const;
  const std::vector<CellValue>& values() const { return values_; }

 private:
  std::vector<CellValue> values_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CELL_VALUE_H_
