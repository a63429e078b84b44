#include "charts/chart_markers.h"

#include <gtest/gtest.h>

#include <string>

#include "charts/chart_test_util.h"
#include "charts/trace_series.h"
#include "common/runtime_failure.h"

namespace z4400 {
namespace {

using testing::RecordingFeedback;
using testing::ResultWorkbook;

/// A workbook whose "Report" holds `charts` charts of `traces` series of 101
/// points each, with "Report" active as the driver leaves it.
class MarkedWorkbook {
 public:
  MarkedWorkbook(int charts, int traces) {
    for (int chart = 0; chart < charts; ++chart) {
      CellRange x_range = PrepareScreenChart(result_.application(), 12, 112);
      for (int trace = 0; trace < traces; ++trace) {
        AddTraceSeries(result_.application(), ScreenInfo{}, trace, x_range, {12, 112, 0}, chart,
                       ChartSettings{}, feedback);
      }
    }
    result_.sheet("Report").Activate();
    feedback.statuses.clear();
  }
  Application& application() { return result_.application(); }
  Series& series(int chart, int number) {
    return result_.sheet("Report").ChartObjects(chart).Chart().SeriesCollection(number);
  }
  RecordingFeedback feedback;

 private:
  ResultWorkbook result_;
};

ChartMarkerEntry On(int32_t trace, int32_t point, int32_t screen = 0) {
  return ChartMarkerEntry{-1, trace, screen, point};
}

TEST(ChartMarkersTest, TheMarkerHeaderReadsAsTheChartSummary) {
  MarkersInfo delta;
  delta.DeltaMode = 2;
  delta.Reserved = -1;
  delta.FixedMarker = 0;
  delta.MarkerCount = 2;     // "MKRNBON" 3 with "MKRDLT" "ON"
  delta.SelectedMarker = 0;  // "Ref"
  const ChartMarkerSummary summary = ChartSummaryOf(delta);
  EXPECT_EQ(summary.MarkerMode, 2);
  EXPECT_EQ(summary.AllMarkers, -1);
  EXPECT_EQ(summary.ReferenceHidden, 0);
  EXPECT_EQ(summary.ReferenceMarker, 2);
  EXPECT_EQ(summary.ActiveMarker, 0);
  EXPECT_EQ(ChartCountsOf(delta).mode, 2);
  EXPECT_EQ(ChartCountsOf(delta).markers_on, 3);

  MarkersInfo plain;
  plain.DeltaMode = 1;
  plain.MarkerCount = 3;
  plain.SelectedMarker = 2;
  EXPECT_EQ(ChartSummaryOf(plain).ActiveMarker, 1);
  EXPECT_EQ(ChartCountsOf(plain).markers_on, 3);

  MarkerRecord record;
  record.On = -1;
  record.Trace = 1;
  record.Screen = 2;
  record.PointIndex = 40;
  const ChartMarkerEntry entry = ChartEntryOf(record);
  EXPECT_EQ(entry.On, -1);
  EXPECT_EQ(entry.Trace, 1);
  EXPECT_EQ(entry.ChartScreen, 2);
  EXPECT_EQ(entry.Point, 40);
}

TEST(ChartMarkersTest, CountsDecideWhetherAnythingIsDrawn) {
  const struct {
    int32_t mode, on;
    bool drawn;
  } cases[] = {{0, 3, false}, {1, 0, false}, {1, 1, true},  {2, 1, false},
               {2, 2, true},  {3, 5, false}, {-1, 2, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(CountsAllowMarkers({c.mode, c.on}), c.drawn) << c.mode << " " << c.on;
  }
  EXPECT_EQ(MarkerLabel(-1, 0), "1");
  EXPECT_EQ(MarkerLabel(-1, 9), "10");
  EXPECT_EQ(MarkerLabel(0, 2), "N(3)");
}

TEST(ChartMarkersTest, NormalMarkersAreDiamondsFilledCyanWhenActiveElseRed) {
  struct Case {
    const char* name;
    int16_t all_markers;
    int32_t active;
    // Marker numbers on (trace 0, point = 10 × number) and the expected
    // label and fill of each point drawn.
    std::vector<int32_t> on;
    std::vector<std::pair<std::string, int32_t>> drawn;
  };
  const Case cases[] = {
      {"only the active marker", 0, 3, {1, 3, 5}, {{"N(4)", kMarkerCyan}}},
      {"all markers", -1, 1, {1, 5}, {{"2", kMarkerCyan}, {"6", kMarkerRed}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    MarkedWorkbook book(1, 2);
    std::array<ChartMarkerEntry, kMarkerSlots> row{};
    for (const int32_t number : c.on) row[static_cast<size_t>(number)] = On(0, 10 * number);
    ChartMarkerSummary summary;
    summary.MarkerMode = 1;
    summary.AllMarkers = c.all_markers;
    summary.ActiveMarker = c.active;
    PlaceChartMarkers(book.application(), summary, row, {1, 3}, book.feedback);

    const auto& formats = book.series(1, 1).point_formats();
    ASSERT_EQ(formats.size(), c.drawn.size());
    size_t drawn = 0;
    for (const auto& [index, format] : formats) {
      EXPECT_EQ(format.marker_style, 2);
      EXPECT_EQ(format.marker_size, 6);
      EXPECT_EQ(format.marker_foreground_color, kMarkerCyan);
      EXPECT_EQ(format.marker_background_color, c.drawn[drawn].second);
      EXPECT_TRUE(format.has_data_label);
      EXPECT_EQ(format.data_label_text, c.drawn[drawn].first);
      ++drawn;
    }
    EXPECT_TRUE(book.series(1, 2).point_formats().empty());
    EXPECT_TRUE(book.feedback.messages.empty());
  }
}

TEST(ChartMarkersTest, NothingIsDrawnInMarkerModeZero) {
  MarkedWorkbook book(1, 1);
  std::array<ChartMarkerEntry, kMarkerSlots> row{};
  row[0] = On(0, 5);
  ChartMarkerSummary summary;
  summary.AllMarkers = -1;
  PlaceChartMarkers(book.application(), summary, row, {1, 1}, book.feedback);
  EXPECT_TRUE(book.series(1, 1).point_formats().empty());
}

TEST(ChartMarkersTest, TheReferenceMarkerIsAMagentaStarWithoutFill) {
  MarkedWorkbook book(1, 2);
  std::array<ChartMarkerEntry, kMarkerSlots> row{};
  row[0] = On(0, 10);
  row[1] = On(1, 20);
  row[2] = On(0, 30);
  ChartMarkerSummary summary;
  summary.MarkerMode = 2;
  summary.AllMarkers = -1;
  summary.ReferenceMarker = 2;
  PlaceChartMarkers(book.application(), summary, row, {2, 3}, book.feedback);

  const PointFormat& reference = book.series(1, 1).point_formats().at(31);
  EXPECT_EQ(reference.marker_style, 5);
  EXPECT_EQ(reference.marker_size, 6);
  EXPECT_EQ(reference.marker_foreground_color, kMarkerMagenta);
  EXPECT_FALSE(reference.marker_background_color.has_value());
  EXPECT_EQ(reference.marker_background_color_index, -4142);
  EXPECT_EQ(reference.data_label_text, "R");
  EXPECT_EQ(book.series(1, 1).point_formats().at(11).data_label_text, "1");
  EXPECT_EQ(book.series(1, 2).point_formats().at(21).data_label_text, "2");

  // A fixed reference is not drawn: marker 3 keeps its diamond.
  MarkedWorkbook fixed(1, 2);
  summary.ReferenceHidden = -1;
  PlaceChartMarkers(fixed.application(), summary, row, {2, 3}, fixed.feedback);
  EXPECT_EQ(fixed.series(1, 1).point_formats().at(31).data_label_text, "3");
  EXPECT_EQ(fixed.series(1, 1).point_formats().at(31).marker_style, 2);
}

TEST(ChartMarkersTest, WarningsForMarkersThatCannotBePlaced) {
  {
    MarkedWorkbook book(1, 1);
    std::array<ChartMarkerEntry, kMarkerSlots> row{};
    row[0] = On(-1, 5);
    ChartMarkerSummary summary;
    summary.MarkerMode = 1;
    PlaceChartMarkers(book.application(), summary, row, {1, 1}, book.feedback);
    ASSERT_EQ(book.feedback.messages.size(), 1u);
    EXPECT_EQ(book.feedback.messages[0].kind, ChartMessageKind::kWarning);
    EXPECT_EQ(book.feedback.messages[0].title, "Warning !!!");
    EXPECT_EQ(book.feedback.messages[0].text, "No trace identified for marker N(1)");
    EXPECT_TRUE(book.series(1, 1).point_formats().empty());
  }
  {
    // The second screen's marker on its first trace is fine, on trace 1 it
    // is not: the warning, then the missing series stops the file.
    MarkedWorkbook book(2, 2);
    MarkerPointStyle style;
    style.label = "1";
    MarkChartPoint(book.application(), On(0, 7, 1), style, book.feedback);
    EXPECT_EQ(book.series(2, 1).point_formats().count(8), 1u);
    EXPECT_THROW(MarkChartPoint(book.application(), On(1, 7, 1), style, book.feedback),
                 RuntimeFailure);
    ASSERT_EQ(book.feedback.messages.size(), 1u);
    EXPECT_EQ(book.feedback.messages[0].kind, ChartMessageKind::kPlain);
    EXPECT_EQ(book.feedback.messages[0].title, "");
    EXPECT_EQ(book.feedback.messages[0].text, "impossible trace/screen configuration");
  }
  {
    // A point beyond the trace (101 points) is a run-time failure.
    MarkedWorkbook book(1, 1);
    MarkerPointStyle style;
    EXPECT_NO_THROW(MarkChartPoint(book.application(), On(0, 100), style, book.feedback));
    EXPECT_THROW(MarkChartPoint(book.application(), On(0, 101), style, book.feedback),
                 RuntimeFailure);
    // A marker that is off is not looked at.
    EXPECT_NO_THROW(
        MarkChartPoint(book.application(), ChartMarkerEntry{0, 5, 9, 1000}, style, book.feedback));
  }
}

}  // namespace
}  // namespace z4400
