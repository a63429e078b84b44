// How a sheet prints (its `PageSetup`): orientation, scale or fit to pages,
// and the footer; and the page breaks a worksheet's rows carry
// (`HPageBreaks`).
#ifndef Z4400_WORKBOOK_MODEL_PAGE_SETUP_H_
#define Z4400_WORKBOOK_MODEL_PAGE_SETUP_H_

#include <cstdint>
#include <set>
#include <string>

#include "workbook/model/xl_constants.h"

namespace z4400 {

/// The print settings of a sheet. Footer texts use the spreadsheet's codes
/// ("&P" page number, "&N" page count, "&A" sheet name, "&&" an ampersand).
class PageSetup {
 public:
  /// `kXlPortrait` or `kXlLandscape`.
  int32_t Orientation() const { return orientation_; }
  /// Throws `RuntimeFailure` for any other code.
  void SetOrientation(int32_t orientation);

  /// The print scale in percent; 0 stands for `Zoom = False`: the sheet is
  /// then scaled to `FitToPagesWide` × `FitToPagesTall` pages.
  int32_t Zoom() const { return zoom_; }
  /// Throws `RuntimeFailure` unless `percent` is 0 or 10 to 400.
  void SetZoom(int32_t percent);
  /// Pages across and down when fitting to pages; 0 stands for `False`: as
  /// many as the sheet needs. Throws `RuntimeFailure` below 0 or above 32767.
  int32_t FitToPagesWide() const { return fit_wide_; }
  void SetFitToPagesWide(int32_t pages);
  int32_t FitToPagesTall() const { return fit_tall_; }
  void SetFitToPagesTall(int32_t pages);

  const std::string& LeftFooter() const { return left_footer_; }
  void SetLeftFooter(std::string text) { left_footer_ = std::move(text); }
  const std::string& CenterFooter() const { return center_footer_; }
  void SetCenterFooter(std::string text) { center_footer_ = std::move(text); }
  const std::string& RightFooter() const { return right_footer_; }
  void SetRightFooter(std::string text) { right_footer_ = std::move(text); }

  friend bool operator==(const PageSetup&, const PageSetup&) = default;

 private:
  int32_t orientation_ = kXlPortrait;
  int32_t zoom_ = 100;
  int32_t fit_wide_ = 1;
  int32_t fit_tall_ = 1;
  std::string left_footer_;
  std::string center_footer_;
  std::string right_footer_;
};

/// The page breaks set between the rows of a worksheet: a new page starts
/// at each row of the list.
class HPageBreakList {
 public:
  /// A break before row `row` (2 to 1,048,576; a break already there is
  /// kept once). Throws `RuntimeFailure` outside that range.
  void Add(int row);
  int Count() const { return static_cast<int>(rows_.size()); }
  /// The rows that start a page, in order.
  const std::set<int>& Rows() const { return rows_; }

  friend bool operator==(const HPageBreakList&, const HPageBreakList&) = default;

 private:
  std::set<int> rows_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_PAGE_SETUP_H_
