#include "workbook/model/sheet.h"

#include "common/runtime_failure.h"
#include "workbook/model/name_compare.h"
#include "workbook/model/workbook.h"

namespace z4400 {

bool IsValidSheetName(std::string_view name) {
  if (name.empty() || name.front() == '\'' || name.back() == '\'') return false;
  // Length in characters: count the UTF-8 lead bytes.
  std::size_t characters = 0;
  for (const char c : name) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++characters;
    if (c == ':' || c == '\\' || c == '/' || c == '?' || c == '*' || c == '[' || c == ']') {
      return false;
    }
  }
  return characters <= 31;
}

void Sheet::SetName(std::string_view name) {
  if (name == name_) return;
  if (!IsValidSheetName(name)) throw RuntimeFailure("Invalid sheet name: " + std::string(name));
  const Sheet* other = workbook_->FindSheet(name);
  if (other != nullptr && other != this) {
    throw RuntimeFailure("Cannot rename a sheet to the same name as another sheet: " +
                         std::string(name));
  }
  const std::string old_name = name_;
  name_ = std::string(name);
  workbook_->RenameReferences(old_name, name_);
}

int Sheet::Index() const { return static_cast<int>(workbook_->PositionOf(*this)) + 1; }

void Sheet::Activate() { workbook_->SetActiveSheet(this); }

void Sheet::Select() { Activate(); }

void Sheet::Delete() {
  if (workbook_->sheets().size() <= 1) {
    throw RuntimeFailure("A workbook must contain at least one sheet");
  }
  workbook_->RemoveSheet(*this);
}

void Sheet::Move(const Sheet* before, const Sheet* after) {
  const std::size_t from = workbook_->PositionOf(*this);
  std::size_t target = workbook_->sheets().size();
  if (before != nullptr) {
    target = workbook_->PositionOf(*before);
  } else if (after != nullptr) {
    target = workbook_->PositionOf(*after) + 1;
  }
  // Position among the other sheets once this one is taken out.
  if (target > from) --target;
  workbook_->MoveSheet(*this, target);
}

Sheet& Sheet::Copy(const Sheet* before, const Sheet* after) {
  // The spreadsheet names a copy "Name (2)", "Name (3)" …, within 31
  // characters.
  std::string copy_name;
  for (int n = 2; copy_name.empty() || workbook_->FindSheet(copy_name) != nullptr; ++n) {
    const std::string suffix = " (" + std::to_string(n) + ")";
    copy_name = name_.substr(0, 31 - suffix.size()) + suffix;
  }
  std::unique_ptr<Sheet> copy = Clone(workbook_, copy_name);
  const std::size_t position = before != nullptr  ? workbook_->PositionOf(*before)
                               : after != nullptr ? workbook_->PositionOf(*after) + 1
                                                  : workbook_->sheets().size();
  Sheet& placed = workbook_->InsertSheet(std::move(copy), position);
  placed.Activate();
  return placed;
}

}  // namespace z4400
