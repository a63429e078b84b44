// A chart sheet: a sheet that is one chart.
#ifndef Z4400_WORKBOOK_MODEL_CHART_SHEET_H_
#define Z4400_WORKBOOK_MODEL_CHART_SHEET_H_

#include <memory>
#include <string>

#include "workbook/model/chart.h"
#include "workbook/model/sheet.h"

namespace z4400 {

/// A sheet holding one chart.
class ChartSheet : public Sheet {
 public:
  /// A chart sheet with a new, empty chart.
  ChartSheet(Workbook* workbook, std::string name);
  /// A chart sheet holding `chart`.
  ChartSheet(Workbook* workbook, std::string name, std::unique_ptr<z4400::Chart> chart);
  ~ChartSheet() override;

  z4400::Chart& Chart() { return *chart_; }
  const z4400::Chart& Chart() const { return *chart_; }

  /// Hands the chart over (to a chart object); the sheet is then deleted by
  /// the caller.
  std::unique_ptr<z4400::Chart> ReleaseChart();

  std::unique_ptr<Sheet> Clone(Workbook* workbook, std::string name) const override;

 private:
  std::unique_ptr<z4400::Chart> chart_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_MODEL_CHART_SHEET_H_
