#include "workbook/model/chart_sheet.h"

#include "workbook/model/workbook.h"

namespace z4400 {

ChartSheet::ChartSheet(Workbook* workbook, std::string name)
    : ChartSheet(workbook, std::move(name), std::make_unique<z4400::Chart>(workbook)) {}

ChartSheet::ChartSheet(Workbook* workbook, std::string name, std::unique_ptr<z4400::Chart> chart)
    : Sheet(workbook, SheetType::kChart, std::move(name)), chart_(std::move(chart)) {
  chart_->SetHolder(this, nullptr);
}

ChartSheet::~ChartSheet() {
  if (chart_ != nullptr) Parent().ForgetChart(chart_.get());
}

std::unique_ptr<z4400::Chart> ChartSheet::ReleaseChart() {
  chart_->SetHolder(nullptr, nullptr);
  return std::move(chart_);
}

std::unique_ptr<Sheet> ChartSheet::Clone(Workbook* workbook, std::string name) const {
  auto copy = std::make_unique<ChartSheet>(workbook, std::move(name), chart_->Clone(workbook));
  copy->PageSetup() = PageSetup();
  return copy;
}

}  // namespace z4400
