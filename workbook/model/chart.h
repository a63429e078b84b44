// A chart: its type, its series, legend, title, the two axes, plot and chart
// area, and where it is placed (a chart sheet of its own or an object
// embedded in a worksheet).
#ifndef Z4400_WORKBOOK_MODEL_CHART_H_
#define Z4400_WORKBOOK_MODEL_CHART_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/axis.h"
#include "workbook/model/chart_format.h"
#include "workbook/model/series.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {

class ChartObject;
class ChartSheet;
class Workbook;

/// The series of a chart, from 1, in drawing order.
class SeriesList {
 public:
  explicit SeriesList(Chart* chart) : chart_(chart) {}
  int Count() const { return static_cast<int>(items_.size()); }
  /// Series `index` (1 to `Count()`). Throws `RuntimeFailure` outside.
  Series& Item(int index) const;
  Series& operator()(int index) const { return Item(index); }
  /// Adds an empty series at the end and returns it.
  Series& NewSeries();
  const std::vector<std::unique_ptr<Series>>& items() const { return items_; }

 private:
  friend class Chart;
  Chart* chart_;
  std::vector<std::unique_ptr<Series>> items_;
};

/// A chart of a workbook. The chart object stays at one address while it
/// moves between a chart sheet and a worksheet (`Location`).
class Chart {
 public:
  explicit Chart(Workbook* workbook);
  Chart(const Chart&) = delete;
  Chart& operator=(const Chart&) = delete;

  /// A deep copy (series, formats) belonging to `workbook`, not yet placed.
  std::unique_ptr<Chart> Clone(Workbook* workbook) const;

  Workbook& Parent() const { return *workbook_; }
  /// The name of the chart sheet, or of the chart object that holds it.
  std::string Name() const;
  /// Renames the chart sheet or chart object holding the chart.
  void SetName(std::string_view name);

  /// Chart type code (`kXlXYScatterLinesNoMarkers` …); a new chart is
  /// `kXlColumnClustered`.
  int32_t ChartType() const { return chart_type_; }
  void SetChartType(int32_t type) { chart_type_ = type; }

  SeriesList& SeriesCollection() { return series_; }
  const SeriesList& SeriesCollection() const { return series_; }
  /// Series `index`. Throws `RuntimeFailure` when there is none.
  Series& SeriesCollection(int index) { return series_.Item(index); }

  bool HasLegend() const { return has_legend_; }
  void SetHasLegend(bool has) { has_legend_ = has; }
  /// The legend. Throws `RuntimeFailure` while the chart has none.
  LegendFormat& Legend();
  const LegendFormat& Legend() const;

  bool HasTitle() const { return has_title_; }
  void SetHasTitle(bool has) { has_title_ = has; }
  /// The title. Throws `RuntimeFailure` while the chart has none.
  TitleFormat& ChartTitle();
  const TitleFormat& ChartTitle() const;

  /// Axis `type` (`kXlCategory` or `kXlValue`) of `group` (only
  /// `kXlPrimary`). Throws `RuntimeFailure` for anything else.
  Axis& Axes(int32_t type, int32_t group = kXlPrimary);
  const Axis& Axes(int32_t type, int32_t group = kXlPrimary) const;

  AreaFormat& PlotArea() { return plot_area_; }
  const AreaFormat& PlotArea() const { return plot_area_; }
  AreaFormat& ChartArea() { return chart_area_; }
  const AreaFormat& ChartArea() const { return chart_area_; }

  /// Moves the chart: `kXlLocationAsNewSheet` to a chart sheet named `name`
  /// (a new one when the chart is embedded), `kXlLocationAsObject` into the
  /// worksheet named `name` as a new chart object appended to its chart
  /// objects (a chart sheet it leaves is deleted). The chart becomes the
  /// active chart. Returns the chart. Throws `RuntimeFailure` for an unknown
  /// code, a missing or non-worksheet target, or a clashing sheet name.
  Chart& Location(int32_t where, std::string_view name = {});

  /// Makes this the active chart of its workbook.
  void Activate();

  /// The chart sheet holding the chart, or null.
  ChartSheet* Sheet() const { return sheet_; }
  /// The chart object holding the chart, or null.
  ChartObject* Object() const { return object_; }
  /// Records where the chart lives (called by its holder).
  void SetHolder(ChartSheet* sheet, ChartObject* object) {
    sheet_ = sheet;
    object_ = object;
  }

 private:
  Workbook* workbook_;
  ChartSheet* sheet_ = nullptr;
  ChartObject* object_ = nullptr;
  int32_t chart_type_ = kXlColumnClustered;
  SeriesList series_{this};
  bool has_legend_ = true;
  LegendFormat legend_;
  bool has_title_ = false;
  TitleFormat title_;
  Axis category_axis_{kXlCategory};
  Axis value_axis_{kXlValue};
  AreaFormat plot_area_;
  AreaFormat chart_area_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CHART_H_
