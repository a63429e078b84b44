// One series of a chart: its name, the cells its X values and values come
// from, its line, and the formats of single points (markers and data labels),
// kept sparse because most points keep the series' own look.
#ifndef Z4400_WORKBOOK_MODEL_SERIES_H_
#define Z4400_WORKBOOK_MODEL_SERIES_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/cell_address.h"
#include "workbook/model/cell_value.h"
#include "workbook/model/chart_format.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {

class CellRange;
class Chart;
class Series;
class Worksheet;

/// Where a series takes X values or values from: a cell area of a named
/// worksheet (a reference: the chart follows the cells), or literal values
/// when `sheet` is empty.
struct SeriesSource {
  std::string sheet;
  CellArea area;
  std::vector<CellValue> literal;

  bool IsReference() const { return !sheet.empty(); }
  /// The reference as a formula: 'Raw Data'!$F$12:$F$412 (the sheet name is
  /// always quoted, quotes in it doubled). "" for literal values.
  std::string Formula() const;
  friend bool operator==(const SeriesSource&, const SeriesSource&) = default;
};

/// What one point changes of its series' look; unset fields keep the
/// series' own format.
struct PointFormat {
  std::optional<int32_t> marker_style;
  std::optional<int32_t> marker_size;
  std::optional<int32_t> marker_foreground_color;
  /// A fill colour, or unset; exclusive with `marker_background_color_index`.
  std::optional<int32_t> marker_background_color;
  /// `kXlColorIndexNone` (no fill) or `kXlColorIndexAutomatic`.
  std::optional<int32_t> marker_background_color_index;
  bool has_data_label = false;
  /// Fixed label text; unset shows the point's value.
  std::optional<std::string> data_label_text;
  friend bool operator==(const PointFormat&, const PointFormat&) = default;
};

/// The data label of one point.
class DataLabelRef {
 public:
  DataLabelRef(Series* series, int index) : series_(series), index_(index) {}
  /// The label's text: its fixed text, or "" while it shows the value.
  std::string Text() const;
  /// Fixes the label's text.
  void SetText(std::string_view text) const;

 private:
  Series* series_;
  int index_;
};

/// Point `index` (from 1) of a series, as `Points(index)` gives it.
class ChartPoint {
 public:
  ChartPoint(Series* series, int index) : series_(series), index_(index) {}

  int Index() const { return index_; }
  int32_t MarkerStyle() const;
  void SetMarkerStyle(int32_t style) const;
  int32_t MarkerSize() const;
  /// Marker size in points, 2 to 72; throws `RuntimeFailure` outside.
  void SetMarkerSize(int32_t size) const;
  void SetMarkerForegroundColor(int32_t color) const;
  std::optional<int32_t> MarkerBackgroundColor() const;
  void SetMarkerBackgroundColor(int32_t color) const;
  void SetMarkerBackgroundColorIndex(int32_t index) const;
  bool HasDataLabel() const;
  void SetHasDataLabel(bool has) const;
  /// The point's label. Throws `RuntimeFailure` when it has none.
  DataLabelRef DataLabel() const;
  /// Shows the point's label; `type` `kXlDataLabelsShowValue` shows the
  /// value (clearing a fixed text), `kXlDataLabelsShowNone` hides it.
  void ApplyDataLabels(int32_t type = kXlDataLabelsShowValue, bool auto_text = true,
                       bool legend_key = false) const;

 private:
  PointFormat& Format() const;
  const PointFormat* Find() const;
  Series* series_;
  int index_;
};

/// The data labels of a whole series.
class DataLabelsFormat {
 public:
  std::optional<std::string> NumberFormat() const { return number_format_; }
  void SetNumberFormat(std::string_view format) { number_format_ = std::string(format); }
  friend bool operator==(const DataLabelsFormat&, const DataLabelsFormat&) = default;

 private:
  std::optional<std::string> number_format_;
};

/// A chart series.
class Series {
 public:
  explicit Series(Chart* chart) : chart_(chart) {}

  Chart& Parent() const { return *chart_; }
  /// Position in the chart's `SeriesCollection`, from 1.
  int Index() const;

  const std::string& Name() const { return name_; }
  void SetName(std::string_view name) { name_ = std::string(name); }

  /// The X values read from their cells (or the literal values), first
  /// index 1. Throws `RuntimeFailure` when the referred sheet is gone.
  ValueArray XValues() const;
  /// Refers the X values to the cells of `range`.
  void SetXValues(const CellRange& range);
  void SetXValues(std::vector<CellValue> literal);
  const std::optional<SeriesSource>& XValuesSource() const { return x_values_; }

  /// The values, as `XValues`.
  ValueArray Values() const;
  void SetValues(const CellRange& range);
  void SetValues(std::vector<CellValue> literal);
  const std::optional<SeriesSource>& ValuesSource() const { return values_; }

  /// The worksheet whose cells reference `source` (of this series) reads.
  /// Throws `RuntimeFailure` as `XValues` does.
  const Worksheet& SourceSheet(const SeriesSource& source) const;

  /// Number of points: the number of values (cells of the value range).
  int PointCount() const;

  /// The series' line.
  BorderFormat& Border() { return border_; }
  const BorderFormat& Border() const { return border_; }

  /// Series-wide marker; unset follows the chart type.
  std::optional<int32_t> MarkerStyle() const { return marker_style_; }
  void SetMarkerStyle(int32_t style) { marker_style_ = style; }
  std::optional<int32_t> MarkerSize() const { return marker_size_; }
  void SetMarkerSize(int32_t size) { marker_size_ = size; }

  /// Point `index` (1 to `PointCount()`). Throws `RuntimeFailure` outside.
  ChartPoint Points(int index);
  /// The points that have a format of their own, by index from 1.
  const std::map<int, PointFormat>& point_formats() const { return points_; }
  std::map<int, PointFormat>& point_formats() { return points_; }

  /// Shows a label on every point (`kXlDataLabelsShowValue`) or none.
  void ApplyDataLabels(int32_t type = kXlDataLabelsShowValue, bool auto_text = true,
                       bool legend_key = false);
  bool HasDataLabels() const { return has_data_labels_; }
  DataLabelsFormat& DataLabels() { return data_labels_; }
  const DataLabelsFormat& DataLabels() const { return data_labels_; }

  /// Makes references to sheet `from` refer to sheet `to` (a renamed sheet).
  void RenameSheet(std::string_view from, std::string_view to);

  /// A copy belonging to `chart`.
  Series CopyFor(Chart* chart) const;

 private:
  ValueArray Read(const std::optional<SeriesSource>& source) const;
  Chart* chart_;
  std::string name_;
  std::optional<SeriesSource> x_values_;
  std::optional<SeriesSource> values_;
  BorderFormat border_;
  std::optional<int32_t> marker_style_;
  std::optional<int32_t> marker_size_;
  std::map<int, PointFormat> points_;
  bool has_data_labels_ = false;
  DataLabelsFormat data_labels_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_SERIES_H_
