#include "workbook/model/page_setup.h"

#include <string>

#include "common/runtime_failure.h"
#include "workbook/model/cell_address.h"

namespace z4400 {
namespace {

constexpr int32_t kMinZoom = 10;
constexpr int32_t kMaxZoom = 400;
constexpr int32_t kMaxFitPages = 32767;

int32_t CheckedPages(int32_t pages) {
  if (pages < 0 || pages > kMaxFitPages) {
    throw RuntimeFailure("Pages to fit to must be 0 to 32767, not " + std::to_string(pages));
  }
  return pages;
}

}  // namespace

void PageSetup::SetOrientation(int32_t orientation) {
  if (orientation != kXlPortrait && orientation != kXlLandscape) {
    throw RuntimeFailure("Unknown page orientation " + std::to_string(orientation));
  }
  orientation_ = orientation;
}

void PageSetup::SetZoom(int32_t percent) {
  if (percent != 0 && (percent < kMinZoom || percent > kMaxZoom)) {
    throw RuntimeFailure("Zoom must be 10 to 400 percent, not " + std::to_string(percent));
  }
  zoom_ = percent;
}

void PageSetup::SetFitToPagesWide(int32_t pages) { fit_wide_ = CheckedPages(pages); }

void PageSetup::SetFitToPagesTall(int32_t pages) { fit_tall_ = CheckedPages(pages); }

void HPageBreakList::Add(int row) {
  if (row < 2 || row > kMaxRows) {
    throw RuntimeFailure("A page break must come before rows 2 to 1048576, not " +
                         std::to_string(row));
  }
  rows_.insert(row);
}

}  // namespace z4400
