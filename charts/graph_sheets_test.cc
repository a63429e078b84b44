#include "charts/graph_sheets.h"

#include <gtest/gtest.h>

#include "charts/chart_test_util.h"
#include "charts/trace_series.h"

namespace z4400 {
namespace {

using testing::RecordingFeedback;
using testing::ResultWorkbook;

TEST(GraphSheetsTest, OldVersionsWithTheOptionGetAChartSheetPerScreen) {
  const struct {
    int16_t version;
    int32_t option;
    bool copied;
  } cases[] = {{11, 1, true}, {9, 1, true}, {11, 0, false}, {12, 1, false}, {16, 1, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.version << " " << c.option);
    ChartSettings settings;
    settings.GraphSheets = c.option;
    EXPECT_EQ(GraphSheetsWanted(c.version, settings), c.copied);

    ResultWorkbook result;
    RecordingFeedback feedback;
    for (int screen = 0; screen < 2; ++screen) {
      CellRange x_range = PrepareScreenChart(result.application(), 12, 112);
      AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range, {12, 112, 0}, screen, settings,
                     feedback);
      Chart& chart = result.sheet("Report").ChartObjects(screen + 1).Chart();
      chart.SetHasTitle(true);
      chart.ChartTitle().SetText("Screen " + std::to_string(screen + 1) + " Traces");
    }
    CopyGraphSheets(result.application(), c.version, settings);

    Workbook& workbook = result.workbook();
    EXPECT_EQ(workbook.Sheets().Count(), c.copied ? 5 : 3);
    EXPECT_EQ(result.sheet("Report").ChartObjects().Count(), 2) << "the originals stay";
    if (!c.copied) continue;
    EXPECT_EQ(workbook.Sheets()(4).Name(), "Screen 1 Traces");
    EXPECT_EQ(workbook.Sheets()(5).Name(), "Screen 2 Traces");
    Chart& copy = workbook.Charts()(1).Chart();
    EXPECT_EQ(copy.SeriesCollection().Count(), 1);
    EXPECT_EQ(copy.SeriesCollection(1).XValuesSource()->Formula(), "'Raw Data'!$F$12:$F$112");
    EXPECT_EQ(workbook.ActiveSheet().Name(), "Report");
  }
  EXPECT_EQ(GraphSheetName("", 3), "Graph 3");
  EXPECT_EQ(GraphSheetName("a/b", 1), "Graph 1");
}

}  // namespace
}  // namespace z4400
