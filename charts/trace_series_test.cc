#include "charts/trace_series.h"

#include <gtest/gtest.h>

#include <string>

#include "charts/chart_test_util.h"
#include "common/runtime_failure.h"
#include "workbook/model/column_letters.h"

namespace z4400 {
namespace {

using testing::RecordingFeedback;
using testing::ResultWorkbook;

/// The column letters of a plotted range ("J" for $J$12:$J$112).
std::string ColumnOf(const SeriesSource& source) {
  return ExcelColNumber2ColLetter(source.area.first_column);
}

TEST(TraceSeriesTest, WeightsAndColoursFollowTheSettings) {
  const struct {
    int32_t index, weight;
  } weights[] = {{0, 1}, {1, 2}, {2, -4138}, {3, 4}, {7, 2}, {-1, 2}};
  for (const auto& w : weights) EXPECT_EQ(SeriesBorderWeight(w.index), w.weight) << w.index;

  ChartSettings settings;
  settings.TraceAColor = 1;
  settings.TraceBColor = 2;
  settings.TraceCColor = 3;
  settings.TraceMColor = 4;
  settings.TraceOColor = 5;
  EXPECT_EQ(TraceColor(settings, "A"), 1);
  EXPECT_EQ(TraceColor(settings, "B"), 2);
  EXPECT_EQ(TraceColor(settings, "C"), 3);
  EXPECT_EQ(TraceColor(settings, "M"), 4);
  EXPECT_EQ(TraceColor(settings, "O"), 5);
  EXPECT_THROW(TraceColor(settings, "D"), RuntimeFailure);
  EXPECT_THROW(TraceBlockColumn(0x3fffffff), RuntimeFailure);
}

TEST(TraceSeriesTest, EachTracePlotsItsBlockInItsColourAndName) {
  // Expected values follow the rules: block from column 4 t + 9, three
  // columns 12 wide then a separator 1 wide; a log scale in a dB unit
  // (codes 0 to 4) plots the block's second column.
  const struct {
    int16_t log_scale;
    int32_t unit_code;
    int trace;
  } cases[] = {{-1, 0, 0}, {0, 0, 0}, {-1, 4, 1}, {-1, 5, 0}, {-1, 6, 2}, {0, 2, 3}, {-1, 1, 4}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.log_scale << " " << c.unit_code << " " << c.trace);
    ResultWorkbook result;
    RecordingFeedback feedback;
    ChartSettings settings;
    settings.LineWeightIndex = 2;
    ScreenInfo screen;
    screen.LogScale = c.log_scale;
    screen.LevelUnitCode = c.unit_code;
    CellRange x_range = PrepareScreenChart(result.application(), 12, 112);
    for (int trace = 0; trace <= c.trace; ++trace) {
      AddTraceSeries(result.application(), screen, trace, x_range, {12, 112, 0}, 0, settings,
                     feedback);
    }
    const int block = 4 * c.trace + 9;
    const bool shifted = c.log_scale != 0 && c.unit_code <= 4;
    Worksheet& raw = result.sheet("Raw Data");
    for (int column = block; column < block + 3; ++column) {
      EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(column), 12) << column;
    }
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(block + 3), 1);

    Chart& chart = result.sheet("Report").ChartObjects(1).Chart();
    ASSERT_EQ(chart.SeriesCollection().Count(), c.trace + 1);
    const Series& series = chart.SeriesCollection(c.trace + 1);
    EXPECT_EQ(series.Name(), "Trace " + std::to_string(c.trace + 1));
    EXPECT_EQ(ColumnOf(*series.ValuesSource()),
              ExcelColNumber2ColLetter(block + (shifted ? 1 : 0)));
    EXPECT_EQ(series.ValuesSource()->sheet, "Raw Data");
    EXPECT_EQ(series.ValuesSource()->area.first_row, 12);
    EXPECT_EQ(series.ValuesSource()->area.last_row, 112);
    EXPECT_EQ(series.XValuesSource()->Formula(), "'Raw Data'!$F$12:$F$112");
    static const char* const kLetters[] = {"A", "B", "C", "M", "O"};
    EXPECT_EQ(series.Border().Color(), TraceColor(settings, kLetters[c.trace]));
    EXPECT_EQ(series.Border().Weight(), -4138);
    EXPECT_EQ(feedback.statuses.back(),
              std::string("Adding trace ") + kLetters[c.trace] + " to the graph");
  }
}

TEST(TraceSeriesTest, TraceFiveTakesColumnsYToAb) {
  EXPECT_EQ(ExcelColNumber2ColLetter(TraceBlockColumn(4)), "Y");
  EXPECT_EQ(ExcelColNumber2ColLetter(TraceBlockColumn(4) + 3), "AB");
}

TEST(TraceSeriesTest, LogarithmicXTakesTheThresholdRowOrTheMappedColumn) {
  const struct {
    int16_t start_negative, log_x_option, log_x_in_use;
    const char* x_formula;
    int first_row;
  } cases[] = {
      // In use: the X values mapped onto the log axis, column G, from the top.
      {0, 1, 1, "'Raw Data'!$G$519:$G$1020", 519},
      {-1, 1, 1, "'Raw Data'!$G$519:$G$1020", 519},
      // Negative start skipped by the option: F from the threshold row.
      {-1, 1, 0, "'Raw Data'!$F$570:$F$1020", 570},
      // No negative start, or the option off: F from the top.
      {0, 1, 0, "'Raw Data'!$F$519:$F$1020", 519},
      {-1, 0, 0, "'Raw Data'!$F$519:$F$1020", 519},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.x_formula);
    ResultWorkbook result;
    RecordingFeedback feedback;
    ChartSettings settings;
    settings.LogXOption = c.log_x_option;
    settings.LogXInUse = c.log_x_in_use;
    ScreenInfo screen;
    screen.LogX = -1;
    screen.StartNegative = c.start_negative;
    CellRange x_range = PrepareScreenChart(result.application(), 519, 1020);
    const SeriesRows rows{519, 1020, 570};
    AddTraceSeries(result.application(), screen, 0, x_range, rows, 0, settings, feedback);
    AddTraceSeries(result.application(), screen, 1, x_range, rows, 0, settings, feedback);
    Chart& chart = result.sheet("Report").ChartObjects(1).Chart();
    for (int number = 1; number <= 2; ++number) {
      const Series& series = chart.SeriesCollection(number);
      EXPECT_EQ(series.XValuesSource()->Formula(), c.x_formula);
      EXPECT_EQ(series.ValuesSource()->area.first_row, c.first_row) << "same rows as the X values";
    }
    EXPECT_EQ(x_range.Row(), c.first_row) << "the caller keeps the replaced range";
  }
}

TEST(TraceSeriesTest, AScreenWithoutItsChartIsARunTimeFailure) {
  ResultWorkbook result;
  RecordingFeedback feedback;
  CellRange x_range = PrepareScreenChart(result.application(), 12, 112);
  EXPECT_THROW(AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range, {12, 112, 0}, 1,
                              ChartSettings{}, feedback),
               RuntimeFailure);
  for (const int32_t screen : {-1, 0x7fffffff}) {
    EXPECT_THROW(AddTraceSeries(result.application(), ScreenInfo{}, 0, x_range, {12, 112, 0},
                                screen, ChartSettings{}, feedback),
                 RuntimeFailure);
  }
}

}  // namespace
}  // namespace z4400
