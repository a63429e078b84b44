#include "workbook/model/chart_object.h"

#include <algorithm>

#include "common/runtime_failure.h"
#include "workbook/model/name_compare.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

// "Chart n", n counting from the number of charts the sheet will hold,
// skipping names already used.
std::string FreeChartName(const std::vector<std::unique_ptr<ChartObject>>& charts) {
  for (std::size_t n = charts.size() + 1;; ++n) {
    std::string name = "Chart " + std::to_string(n);
    const bool used = std::any_of(charts.begin(), charts.end(), [&](const auto& object) {
      return SameName(object->Name(), name);
    });
    if (!used) return name;
  }
}

}  // namespace

ChartObject::ChartObject(Worksheet* sheet, std::string name, std::unique_ptr<z4400::Chart> chart,
                         double left, double top, double width, double height)
    : sheet_(sheet),
      name_(std::move(name)),
      chart_(std::move(chart)),
      left_(left),
      top_(top),
      width_(width),
      height_(height) {
  chart_->SetHolder(nullptr, this);
}

ChartObject::~ChartObject() {
  if (chart_ != nullptr) sheet_->Parent().ForgetChart(chart_.get());
}

int ChartObject::Index() const {
  const auto& charts = sheet_->chart_objects();
  for (std::size_t i = 0; i < charts.size(); ++i) {
    if (charts[i].get() == this) return static_cast<int>(i) + 1;
  }
  return 0;
}

void ChartObject::SetWidth(double value) {
  if (value < 0) throw RuntimeFailure("Chart width cannot be negative");
  width_ = value;
}

void ChartObject::SetHeight(double value) {
  if (value < 0) throw RuntimeFailure("Chart height cannot be negative");
  height_ = value;
}

void ChartObject::Activate() {
  sheet_->Activate();
  sheet_->Parent().SetActiveEmbeddedChart(chart_.get());
}

void ChartObject::Delete() {
  auto& charts = sheet_->chart_objects();
  const auto found = std::find_if(charts.begin(), charts.end(),
                                  [this](const auto& object) { return object.get() == this; });
  if (found != charts.end()) charts.erase(found);  // destroys this
}

std::unique_ptr<z4400::Chart> ChartObject::ReleaseChart() {
  chart_->SetHolder(nullptr, nullptr);
  return std::move(chart_);
}

int ChartObjectList::Count() const { return static_cast<int>(sheet_->chart_objects().size()); }

ChartObject& ChartObjectList::Item(int index) const {
  const auto& charts = sheet_->chart_objects();
  if (index < 1 || index > static_cast<int>(charts.size())) {
    throw RuntimeFailure("No chart object " + std::to_string(index) + " on sheet " +
                         sheet_->Name());
  }
  return *charts[static_cast<std::size_t>(index) - 1];
}

ChartObject& ChartObjectList::Item(std::string_view name) const {
  for (const auto& object : sheet_->chart_objects()) {
    if (SameName(object->Name(), name)) return *object;
  }
  throw RuntimeFailure("No chart object named " + std::string(name) + " on sheet " +
                       sheet_->Name());
}

ChartObject& ChartObjectList::Add(double left, double top, double width, double height) const {
  return Add(std::make_unique<z4400::Chart>(&sheet_->Parent()), left, top, width, height);
}

ChartObject& ChartObjectList::Add(std::unique_ptr<z4400::Chart> chart, double left, double top,
                                  double width, double height) const {
  if (width < 0 || height < 0) throw RuntimeFailure("Chart size cannot be negative");
  auto& charts = sheet_->chart_objects();
  std::string name = FreeChartName(charts);
  charts.push_back(std::make_unique<ChartObject>(sheet_, std::move(name), std::move(chart), left,
                                                 top, width, height));
  return *charts.back();
}

}  // namespace z4400
