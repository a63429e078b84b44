// What worksheets and chart sheets have in common: a name unique in the
// workbook, a position among all sheets, and activation, copy, move and
// deletion.
#ifndef Z4400_WORKBOOK_MODEL_SHEET_H_
#define Z4400_WORKBOOK_MODEL_SHEET_H_

#include <memory>
#include <string>
#include <string_view>

#include "workbook/model/page_setup.h"

namespace z4400 {

class Workbook;

enum class SheetType { kWorksheet, kChart };

/// A sheet of a workbook, owned by the workbook.
class Sheet {
 public:
  virtual ~Sheet() = default;
  Sheet(const Sheet&) = delete;
  Sheet& operator=(const Sheet&) = delete;

  SheetType Type() const { return type_; }
  Workbook& Parent() const { return *workbook_; }

  const std::string& Name() const { return name_; }
  /// Renames the sheet. Throws `RuntimeFailure` when the name is empty,
  /// longer than 31 characters, holds one of : \ / ? * [ ], starts or ends
  /// with an apostrophe, or is the name of another sheet of the workbook
  /// (compared without regard to case). Chart series that refer to the
  /// sheet follow the new name.
  void SetName(std::string_view name);

  /// Position among all sheets of the workbook, from 1.
  int Index() const;

  /// Makes the sheet the active sheet (and its workbook's selection).
  void Activate();
  /// The same as `Activate` for a model without a window.
  void Select();
  /// Removes the sheet from its workbook and destroys it. Throws
  /// `RuntimeFailure` when it is the workbook's only sheet.
  void Delete();
  /// Moves the sheet before `before` or, when that is null, after `after`
  /// (both sheets of the same workbook); to the end when both are null.
  void Move(const Sheet* before, const Sheet* after);
  /// Copies the sheet (a worksheet with its cells, formats and charts) and
  /// places the copy before `before` or after `after` (to the end when both
  /// are null). The copy is named like the spreadsheet does ("Report (2)")
  /// and becomes the active sheet. Returns the copy.
  Sheet& Copy(const Sheet* before, const Sheet* after);

  /// How the sheet prints.
  z4400::PageSetup& PageSetup() { return page_setup_; }
  const z4400::PageSetup& PageSetup() const { return page_setup_; }

  /// A deep copy named `name` belonging to `workbook`.
  virtual std::unique_ptr<Sheet> Clone(Workbook* workbook, std::string name) const = 0;

 protected:
  Sheet(Workbook* workbook, SheetType type, std::string name)
      : workbook_(workbook), type_(type), name_(std::move(name)) {}

 private:
  friend class Workbook;
  Workbook* workbook_;
  SheetType type_;
  std::string name_;
  z4400::PageSetup page_setup_;
};

/// Whether `name` may name a sheet (length and characters only).
bool IsValidSheetName(std::string_view name);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_SHEET_H_
