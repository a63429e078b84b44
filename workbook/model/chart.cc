#include "workbook/model/chart.h"

#include "common/runtime_failure.h"
#include "workbook/model/chart_object.h"
#include "workbook/model/chart_sheet.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

// Offset between charts placed in one worksheet without a position, so that
// they do not hide each other completely.
constexpr double kCascadeStep = 24;

}  // namespace

Series& SeriesList::Item(int index) const {
  if (index < 1 || index > Count()) {
    throw RuntimeFailure("The chart has no series " + std::to_string(index));
  }
  return *items_[static_cast<std::size_t>(index) - 1];
}

Series& SeriesList::NewSeries() {
  items_.push_back(std::make_unique<Series>(chart_));
  return *items_.back();
}

Chart::Chart(Workbook* workbook) : workbook_(workbook) {}

std::unique_ptr<Chart> Chart::Clone(Workbook* workbook) const {
  auto copy = std::make_unique<Chart>(workbook);
  copy->chart_type_ = chart_type_;
  for (const auto& series : series_.items()) {
    copy->series_.items_.push_back(std::make_unique<Series>(series->CopyFor(copy.get())));
  }
  copy->has_legend_ = has_legend_;
  copy->legend_ = legend_;
  copy->has_title_ = has_title_;
  copy->title_ = title_;
  copy->category_axis_ = category_axis_;
  copy->value_axis_ = value_axis_;
  copy->plot_area_ = plot_area_;
  copy->chart_area_ = chart_area_;
  return copy;
}

std::string Chart::Name() const {
  if (sheet_ != nullptr) return sheet_->Name();
  if (object_ != nullptr) return object_->Parent().Name() + " " + object_->Name();
  return "";
}

void Chart::SetName(std::string_view name) {
  if (sheet_ != nullptr) {
    sheet_->SetName(name);
  } else if (object_ != nullptr) {
    object_->SetName(name);
  }
}

LegendFormat& Chart::Legend() {
  if (!has_legend_) throw RuntimeFailure("The chart has no legend");
  return legend_;
}

const LegendFormat& Chart::Legend() const { return const_cast<Chart*>(this)->Legend(); }

TitleFormat& Chart::ChartTitle() {
  if (!has_title_) throw RuntimeFailure("The chart has no title");
  return title_;
}

const TitleFormat& Chart::ChartTitle() const { return const_cast<Chart*>(this)->ChartTitle(); }

Axis& Chart::Axes(int32_t type, int32_t group) {
  if (group != kXlPrimary) throw RuntimeFailure("The chart has no secondary axes");
  if (type == kXlCategory) return category_axis_;
  if (type == kXlValue) return value_axis_;
  throw RuntimeFailure("Unknown axis type " + std::to_string(type));
}

const Axis& Chart::Axes(int32_t type, int32_t group) const {
  return const_cast<Chart*>(this)->Axes(type, group);
}

Chart& Chart::Location(int32_t where, std::string_view name) {
  Workbook& workbook = *workbook_;
  if (where == kXlLocationAsObject) {
    z4400::Sheet* target = workbook.FindSheet(name);
    if (target == nullptr || target->Type() != SheetType::kWorksheet) {
      throw RuntimeFailure("No worksheet named " + std::string(name) + " to hold the chart");
    }
    auto& worksheet = static_cast<Worksheet&>(*target);
    if (object_ != nullptr && &object_->Parent() == &worksheet) {
      object_->Activate();
      return *this;
    }
    std::unique_ptr<Chart> self;
    if (sheet_ != nullptr) {
      ChartSheet* old_sheet = sheet_;
      self = old_sheet->ReleaseChart();
      workbook.RemoveSheet(*old_sheet);
    } else if (object_ != nullptr) {
      ChartObject* old_object = object_;
      self = old_object->ReleaseChart();
      old_object->Delete();
    } else {
      throw RuntimeFailure("The chart is not placed");
    }
    const double offset = kCascadeStep * static_cast<double>(worksheet.chart_objects().size());
    worksheet.ChartObjects()
        .Add(std::move(self), offset, offset, kDefaultChartWidth, kDefaultChartHeight)
        .Activate();
    return *this;
  }
  if (where == kXlLocationAsNewSheet || where == kXlLocationAutomatic) {
    if (sheet_ != nullptr) {
      if (!name.empty()) sheet_->SetName(name);
      sheet_->Activate();
      return *this;
    }
    if (object_ == nullptr) throw RuntimeFailure("The chart is not placed");
    std::string sheet_name = name.empty() ? workbook.NextSheetName("Chart") : std::string(name);
    if (!IsValidSheetName(sheet_name) || workbook.FindSheet(sheet_name) != nullptr) {
      throw RuntimeFailure("Cannot name the chart sheet " + sheet_name);
    }
    ChartObject* old_object = object_;
    const std::size_t position = workbook.PositionOf(old_object->Parent());
    std::unique_ptr<Chart> self = old_object->ReleaseChart();
    old_object->Delete();
    z4400::Sheet& placed = workbook.InsertSheet(
        std::make_unique<ChartSheet>(&workbook, std::move(sheet_name), std::move(self)), position);
    placed.Activate();
    return *this;
  }
  throw RuntimeFailure("Unknown chart location " + std::to_string(where));
}

void Chart::Activate() {
  if (sheet_ != nullptr) {
    sheet_->Activate();
  } else if (object_ != nullptr) {
    object_->Activate();
  }
}

}  // namespace z4400
