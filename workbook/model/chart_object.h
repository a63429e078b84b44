// A chart embedded in a worksheet: its name, its rectangle in points from the
// sheet's top-left corner, and the chart itself.
#ifndef Z4400_WORKBOOK_MODEL_CHART_OBJECT_H_
#define Z4400_WORKBOOK_MODEL_CHART_OBJECT_H_

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/model/chart.h"

namespace z4400 {

class Worksheet;

/// Default size of a chart placed in a worksheet, in points.
inline constexpr double kDefaultChartWidth = 360;
inline constexpr double kDefaultChartHeight = 216;

/// An embedded chart. The writer turns its rectangle into a drawing anchor.
class ChartObject {
 public:
  ChartObject(Worksheet* sheet, std::string name, std::unique_ptr<z4400::Chart> chart, double left,
              double top, double width, double height);
  ~ChartObject();
  ChartObject(const ChartObject&) = delete;
  ChartObject& operator=(const ChartObject&) = delete;

  Worksheet& Parent() const { return *sheet_; }
  /// Position among the worksheet's chart objects, from 1.
  int Index() const;
  const std::string& Name() const { return name_; }
  void SetName(std::string_view name) { name_ = std::string(name); }

  /// Rectangle in points from the top-left corner of the worksheet.
  double Left() const { return left_; }
  void SetLeft(double value) { left_ = value; }
  double Top() const { return top_; }
  void SetTop(double value) { top_ = value; }
  double Width() const { return width_; }
  /// Throws `RuntimeFailure` for a negative size.
  void SetWidth(double value);
  double Height() const { return height_; }
  void SetHeight(double value);

  z4400::Chart& Chart() { return *chart_; }
  const z4400::Chart& Chart() const { return *chart_; }
  /// Makes the chart the active chart.
  void Activate();
  /// Removes the chart object (and its chart) from the worksheet.
  void Delete();
  /// Hands the chart over (to a chart sheet); the object is then removed.
  std::unique_ptr<z4400::Chart> ReleaseChart();

 private:
  Worksheet* sheet_;
  std::string name_;
  std::unique_ptr<z4400::Chart> chart_;
  double left_;
  double top_;
  double width_;
  double height_;
};

/// The chart objects of a worksheet, from 1, in order of creation.
class ChartObjectList {
 public:
  explicit ChartObjectList(Worksheet* sheet) : sheet_(sheet) {}
  int Count() const;
  /// Chart object `index` (from 1) or named `name` (without regard to
  /// case). Throws `RuntimeFailure` when there is none.
  ChartObject& Item(int index) const;
  ChartObject& Item(std::string_view name) const;
  ChartObject& operator()(int index) const { return Item(index); }
  ChartObject& operator()(std::string_view name) const { return Item(name); }
  /// Adds an embedded chart with a new, empty chart at the given rectangle
  /// (points). It is named "Chart n" with n counting the worksheet's charts.
  ChartObject& Add(double left, double top, double width, double height) const;
  /// Adds an embedded chart holding `chart` (a chart moved here).
  ChartObject& Add(std::unique_ptr<z4400::Chart> chart, double left, double top, double width,
                   double height) const;

 private:
  Worksheet* sheet_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CHART_OBJECT_H_
