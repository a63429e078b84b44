// The sheet collections of a workbook as the sheet writers address them:
// `Sheets` (worksheets and chart sheets together), `Worksheets` and
// `Charts` (chart sheets), each from 1 or by name.
#ifndef Z4400_WORKBOOK_MODEL_SHEET_LISTS_H_
#define Z4400_WORKBOOK_MODEL_SHEET_LISTS_H_

#include <string_view>

namespace z4400 {

class ChartSheet;
class Sheet;
class Workbook;
class Worksheet;

/// All sheets of a workbook, in workbook order.
class SheetList {
 public:
  explicit SheetList(Workbook* workbook) : workbook_(workbook) {}
  int Count() const;
  /// Sheet `index` (from 1) or named `name` (without regard to case).
  /// Throws `RuntimeFailure` ("Subscript out of range") when absent.
  Sheet& Item(int index) const;
  Sheet& Item(std::string_view name) const;
  Sheet& operator()(int index) const { return Item(index); }
  Sheet& operator()(std::string_view name) const { return Item(name); }

 private:
  Workbook* workbook_;
};

/// The worksheets of a workbook, in workbook order.
class WorksheetList {
 public:
  explicit WorksheetList(Workbook* workbook) : workbook_(workbook) {}
  int Count() const;
  /// Worksheet `index` (from 1, counting worksheets only) or named `name`.
  /// Throws `RuntimeFailure` when absent.
  Worksheet& Item(int index) const;
  Worksheet& Item(std::string_view name) const;
  Worksheet& operator()(int index) const { return Item(index); }
  Worksheet& operator()(std::string_view name) const { return Item(name); }
  /// Adds a worksheet before `before`, or after `after`, or before the
  /// active sheet when both are null; it is named "Sheet n" the
  /// spreadsheet's way and becomes the active sheet.
  Worksheet& Add(const Sheet* before = nullptr, const Sheet* after = nullptr) const;

 private:
  Workbook* workbook_;
};

/// The chart sheets of a workbook, in workbook order.
class ChartSheetList {
 public:
  explicit ChartSheetList(Workbook* workbook) : workbook_(workbook) {}
  int Count() const;
  ChartSheet& Item(int index) const;
  ChartSheet& Item(std::string_view name) const;
  ChartSheet& operator()(int index) const { return Item(index); }
  ChartSheet& operator()(std::string_view name) const { return Item(name); }
  /// Adds a chart sheet with an empty chart (no series) before `before`,
  /// after `after`, or before the active sheet; named "Chart n"; it becomes
  /// the active sheet and its chart the active chart.
  ChartSheet& Add(const Sheet* before = nullptr, const Sheet* after = nullptr) const;

 private:
  Workbook* workbook_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_SHEET_LISTS_H_
