#include "workbook/model/sheet_lists.h"

#include "common/runtime_failure.h"
#include "workbook/model/workbook.h"

namespace z4400 {
namespace {

[[noreturn]] void NoSuchSheet(std::string_view what) {
  throw RuntimeFailure("Subscript out of range: no sheet " + std::string(what));
}

// The `index`-th (from 1) sheet of type `type`, or of any type when null.
Sheet* NthSheet(const Workbook& workbook, int index, const SheetType* type) {
  int seen = 0;
  for (const auto& sheet : workbook.sheets()) {
    if (type != nullptr && sheet->Type() != *type) continue;
    if (++seen == index) return sheet.get();
  }
  return nullptr;
}

int CountSheets(const Workbook& workbook, SheetType type) {
  int count = 0;
  for (const auto& sheet : workbook.sheets()) count += sheet->Type() == type ? 1 : 0;
  return count;
}

Sheet& Named(const Workbook& workbook, std::string_view name, SheetType type) {
  Sheet* sheet = workbook.FindSheet(name);
  if (sheet == nullptr || sheet->Type() != type) NoSuchSheet(name);
  return *sheet;
}

}  // namespace

int SheetList::Count() const { return static_cast<int>(workbook_->sheets().size()); }

Sheet& SheetList::Item(int index) const {
  Sheet* sheet = NthSheet(*workbook_, index, nullptr);
  if (sheet == nullptr) NoSuchSheet(std::to_string(index));
  return *sheet;
}

Sheet& SheetList::Item(std::string_view name) const {
  Sheet* sheet = workbook_->FindSheet(name);
  if (sheet == nullptr) NoSuchSheet(name);
  return *sheet;
}

int WorksheetList::Count() const { return CountSheets(*workbook_, SheetType::kWorksheet); }

Worksheet& WorksheetList::Item(int index) const {
  constexpr SheetType kType = SheetType::kWorksheet;
  Sheet* sheet = NthSheet(*workbook_, index, &kType);
  if (sheet == nullptr) NoSuchSheet(std::to_string(index));
  return static_cast<Worksheet&>(*sheet);
}

Worksheet& WorksheetList::Item(std::string_view name) const {
  return static_cast<Worksheet&>(Named(*workbook_, name, SheetType::kWorksheet));
}

Worksheet& WorksheetList::Add(const Sheet* before, const Sheet* after) const {
  const std::size_t position = workbook_->InsertPosition(before, after);
  Sheet& sheet = workbook_->InsertSheet(
      std::make_unique<Worksheet>(workbook_, workbook_->NextSheetName("Sheet")), position);
  sheet.Activate();
  return static_cast<Worksheet&>(sheet);
}

int ChartSheetList::Count() const { return CountSheets(*workbook_, SheetType::kChart); }

ChartSheet& ChartSheetList::Item(int index) const {
  constexpr SheetType kType = SheetType::kChart;
  Sheet* sheet = NthSheet(*workbook_, index, &kType);
  if (sheet == nullptr) NoSuchSheet(std::to_string(index));
  return static_cast<ChartSheet&>(*sheet);
}

ChartSheet& ChartSheetList::Item(std::string_view name) const {
  return static_cast<ChartSheet&>(Named(*workbook_, name, SheetType::kChart));
}

ChartSheet& ChartSheetList::Add(const Sheet* before, const Sheet* after) const {
  const std::size_t position = workbook_->InsertPosition(before, after);
  Sheet& sheet = workbook_->InsertSheet(
      std::make_unique<ChartSheet>(workbook_, workbook_->NextSheetName("Chart")), position);
  sheet.Activate();
  return static_cast<ChartSheet&>(sheet);
}

}  // namespace z4400
