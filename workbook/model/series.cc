#include "workbook/model/series.h"

#include "common/runtime_failure.h"
#include "workbook/model/cell_range.h"
#include "workbook/model/chart.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"

namespace z4400 {
namespace {

// More cells than a series may refer to and read back.
constexpr long long kMaxSeriesCells = 1LL << 22;

SeriesSource ReferenceTo(const CellRange& range) {
  return SeriesSource{range.Parent().Name(), range.Area(), {}};
}

long long CellCount(const CellArea& area) {
  return static_cast<long long>(area.RowCount()) * area.ColumnCount();
}

bool ChartTypeHasMarkers(int32_t chart_type) {
  return chart_type != kXlXYScatterLinesNoMarkers && chart_type != kXlXYScatterSmoothNoMarkers;
}

}  // namespace

std::string SeriesSource::Formula() const {
  if (!IsReference()) return "";
  std::string quoted = "'";
  for (const char c : sheet) {
    quoted += c;
    if (c == '\'') quoted += '\'';
  }
  return quoted + "'!" + FormatCellAddress(area);
}

std::string DataLabelRef::Text() const {
  const auto& points = series_->point_formats();
  const auto found = points.find(index_);
  if (found == points.end() || !found->second.data_label_text) return "";
  return *found->second.data_label_text;
}

void DataLabelRef::SetText(std::string_view text) const {
  PointFormat& format = series_->point_formats()[index_];
  format.has_data_label = true;
  format.data_label_text = std::string(text);
}

PointFormat& ChartPoint::Format() const { return series_->point_formats()[index_]; }

const PointFormat* ChartPoint::Find() const {
  const auto& points = series_->point_formats();
  const auto found = points.find(index_);
  return found == points.end() ? nullptr : &found->second;
}

int32_t ChartPoint::MarkerStyle() const {
  const PointFormat* format = Find();
  if (format != nullptr && format->marker_style) return *format->marker_style;
  if (series_->MarkerStyle()) return *series_->MarkerStyle();
  return ChartTypeHasMarkers(series_->Parent().ChartType()) ? kXlMarkerStyleAutomatic
                                                            : kXlMarkerStyleNone;
}

void ChartPoint::SetMarkerStyle(int32_t style) const { Format().marker_style = style; }

int32_t ChartPoint::MarkerSize() const {
  const PointFormat* format = Find();
  if (format != nullptr && format->marker_size) return *format->marker_size;
  return series_->MarkerSize().value_or(5);
}

void ChartPoint::SetMarkerSize(int32_t size) const {
  if (size < 2 || size > 72) throw RuntimeFailure("Marker size must be 2 to 72");
  Format().marker_size = size;
}

void ChartPoint::SetMarkerForegroundColor(int32_t color) const {
  Format().marker_foreground_color = color;
}

std::optional<int32_t> ChartPoint::MarkerBackgroundColor() const {
  const PointFormat* format = Find();
  return format != nullptr ? format->marker_background_color : std::nullopt;
}

void ChartPoint::SetMarkerBackgroundColor(int32_t color) const {
  PointFormat& format = Format();
  format.marker_background_color = color;
  format.marker_background_color_index.reset();
}

void ChartPoint::SetMarkerBackgroundColorIndex(int32_t index) const {
  PointFormat& format = Format();
  format.marker_background_color_index = index;
  format.marker_background_color.reset();
}

bool ChartPoint::HasDataLabel() const {
  const PointFormat* format = Find();
  return (format != nullptr && format->has_data_label) || series_->HasDataLabels();
}

void ChartPoint::SetHasDataLabel(bool has) const {
  PointFormat& format = Format();
  format.has_data_label = has;
  if (!has) format.data_label_text.reset();
}

DataLabelRef ChartPoint::DataLabel() const {
  if (!HasDataLabel()) throw RuntimeFailure("The point has no data label");
  return DataLabelRef(series_, index_);
}

void ChartPoint::ApplyDataLabels(int32_t type, bool /*auto_text*/, bool /*legend_key*/) const {
  PointFormat& format = Format();
  format.has_data_label = type != kXlDataLabelsShowNone;
  format.data_label_text.reset();
}

int Series::Index() const {
  const auto& items = chart_->SeriesCollection().items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].get() == this) return static_cast<int>(i) + 1;
  }
  return 0;
}

ValueArray Series::Read(const std::optional<SeriesSource>& source) const {
  if (!source) return ValueArray();
  if (!source->IsReference()) return ValueArray(source->literal);
  const Worksheet& worksheet = SourceSheet(*source);
  std::vector<CellValue> values;
  values.reserve(static_cast<std::size_t>(CellCount(source->area)));
  for (int row = source->area.first_row; row <= source->area.last_row; ++row) {
    for (int column = source->area.first_column; column <= source->area.last_column; ++column) {
      values.push_back(worksheet.ValueAt(row, column));
    }
  }
  return ValueArray(std::move(values));
}

const Worksheet& Series::SourceSheet(const SeriesSource& source) const {
  const Sheet* sheet = chart_->Parent().FindSheet(source.sheet);
  if (sheet == nullptr || sheet->Type() != SheetType::kWorksheet) {
    throw RuntimeFailure("The series refers to a missing sheet: " + source.sheet);
  }
  if (CellCount(source.area) > kMaxSeriesCells) {
    throw RuntimeFailure("The series refers to too many cells");
  }
  return static_cast<const Worksheet&>(*sheet);
}

ValueArray Series::XValues() const { return Read(x_values_); }
void Series::SetXValues(const CellRange& range) { x_values_ = ReferenceTo(range); }
void Series::SetXValues(std::vector<CellValue> literal) {
  x_values_ = SeriesSource{"", {}, std::move(literal)};
}

ValueArray Series::Values() const { return Read(values_); }
void Series::SetValues(const CellRange& range) { values_ = ReferenceTo(range); }
void Series::SetValues(std::vector<CellValue> literal) {
  values_ = SeriesSource{"", {}, std::move(literal)};
}

int Series::PointCount() const {
  if (!values_) return 0;
  if (!values_->IsReference()) return static_cast<int>(values_->literal.size());
  const long long count = CellCount(values_->area);
  return count > kMaxSeriesCells ? static_cast<int>(kMaxSeriesCells) : static_cast<int>(count);
}

ChartPoint Series::Points(int index) {
  if (index < 1 || index > PointCount()) {
    throw RuntimeFailure("Series \"" + name_ + "\" has no point " + std::to_string(index));
  }
  return ChartPoint(this, index);
}

void Series::ApplyDataLabels(int32_t type, bool /*auto_text*/, bool /*legend_key*/) {
  has_data_labels_ = type != kXlDataLabelsShowNone;
}

void Series::RenameSheet(std::string_view from, std::string_view to) {
  for (std::optional<SeriesSource>* source : {&x_values_, &values_}) {
    if (*source && (*source)->IsReference() && (*source)->sheet == from) {
      (*source)->sheet = std::string(to);
    }
  }
}

Series Series::CopyFor(Chart* chart) const {
  Series copy = *this;
  copy.chart_ = chart;
  return copy;
}

}  // namespace z4400
