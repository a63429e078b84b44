#include "charts/chart_markers.h"

#include <cstdint>
#include <vector>

#include "charts/result_sheets.h"
#include "common/runtime_failure.h"
#include "workbook/model/application.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {
namespace {

/// Entry `number` of the screen's marker row; a number outside the row is a
/// subscript failure.
const ChartMarkerEntry& EntryAt(const std::array<ChartMarkerEntry, kMarkerSlots>& row,
                                int32_t number) {
  if (number < 0 || number >= kMarkerSlots) {
    throw RuntimeFailure("Subscript out of range: marker " + std::to_string(number));
  }
  return row[static_cast<size_t>(number)];
}

/// A 1-based collection index made from a 0-based number and one; beyond the
/// 32-bit range it is a failure like any index that does not exist.
int OneBased(int32_t number) {
  const int64_t index = static_cast<int64_t>(number) + 1;
  if (index > INT32_MAX) throw RuntimeFailure("Overflow: index " + std::to_string(index));
  return static_cast<int>(index);
}

}  // namespace

ChartMarkerSummary ChartSummaryOf(const MarkersInfo& markers) {
  ChartMarkerSummary summary;
  summary.MarkerMode = markers.DeltaMode;
  summary.AllMarkers = markers.Reserved;
  summary.ReferenceHidden = markers.FixedMarker;
  summary.ReferenceMarker = markers.MarkerCount;
  summary.ActiveMarker = markers.SelectedMarker >= 1 ? markers.SelectedMarker - 1 : 0;
  return summary;
}

ChartMarkerEntry ChartEntryOf(const MarkerRecord& record) {
  return ChartMarkerEntry{record.On, record.Trace, record.Screen, record.PointIndex};
}

ChartMarkerCounts ChartCountsOf(const MarkersInfo& markers) {
  const int64_t on = static_cast<int64_t>(markers.MarkerCount) + (markers.DeltaMode == 2 ? 1 : 0);
  const int32_t clamped = on > INT32_MAX ? INT32_MAX : static_cast<int32_t>(on);
  return ChartMarkerCounts{markers.DeltaMode, clamped};
}

bool CountsAllowMarkers(const ChartMarkerCounts& counts) {
  if (counts.mode != 1 && counts.mode != 2) return false;
  if (counts.markers_on < 1) return false;
  return !(counts.mode == 2 && counts.markers_on < 2);
}

std::string MarkerLabel(int16_t all_markers, int32_t number) {
  const std::string shown = std::to_string(static_cast<int64_t>(number) + 1);
  return all_markers != 0 ? shown : "N(" + shown + ")";
}

void MarkChartPoint(Application& application, const ChartMarkerEntry& entry,
                    const MarkerPointStyle& style, ChartFeedback& feedback) {
  if (entry.On == 0) return;
  if (entry.Trace == -1) {
    feedback.ShowMessage(ChartMessageKind::kWarning, kWarningTitle, kNoTraceWarning + style.label);
    return;
  }
  int series_number = 0;
  if (entry.ChartScreen == 0) {
    series_number = OneBased(entry.Trace);
  } else if (entry.Trace == 0) {
    series_number = 1;
  } else {
    feedback.ShowMessage(ChartMessageKind::kPlain, "", kTraceScreenWarning);
  }

  Worksheet& sheet = AsWorksheet(application.ActiveSheet());
  Chart& chart = sheet.ChartObjects(OneBased(entry.ChartScreen)).Chart();
  Series& series = chart.SeriesCollection(series_number);
  const ChartPoint point = series.Points(OneBased(entry.Point));
  point.SetMarkerForegroundColor(style.foreground);
  if (style.background != 0) {
    point.SetMarkerBackgroundColor(style.background);
  } else {
    point.SetMarkerBackgroundColorIndex(kXlColorIndexNone);
  }
  point.SetMarkerSize(style.size);
  point.SetMarkerStyle(style.style);
  point.SetHasDataLabel(true);
  point.DataLabel().SetText(style.label);
}

void PlaceChartMarkers(Application& application, const ChartMarkerSummary& summary,
                       const std::array<ChartMarkerEntry, kMarkerSlots>& row,
                       const ChartMarkerCounts& counts, ChartFeedback& feedback) {
  if (!CountsAllowMarkers(counts) || summary.MarkerMode == 0) return;
  std::vector<int32_t> candidates;
  if (summary.AllMarkers != 0) {
    for (int32_t number = 0; number < kChartMarkerCandidates; ++number) {
      candidates.push_back(number);
    }
  } else {
    candidates.push_back(summary.ActiveMarker);
  }
  for (const int32_t number : candidates) {
    const ChartMarkerEntry& entry = EntryAt(row, number);
    if (entry.On == 0) continue;
    MarkerPointStyle style;
    style.foreground = kMarkerCyan;
    style.background = number == summary.ActiveMarker ? kMarkerCyan : kMarkerRed;
    style.style = kXlMarkerStyleDiamond;
    style.label = MarkerLabel(summary.AllMarkers, number);
    MarkChartPoint(application, entry, style, feedback);
  }
  if (summary.MarkerMode == 2 && summary.ReferenceHidden == 0) {
    MarkerPointStyle style;
    style.foreground = kMarkerMagenta;
    style.background = 0;
    style.style = kXlMarkerStyleStar;
    style.label = kReferenceLabel;
    MarkChartPoint(application, EntryAt(row, summary.ReferenceMarker), style, feedback);
  }
}

void PlaceChartMarkers(Application& application, const MarkersInfo& markers,
                       ChartFeedback& feedback) {
  std::array<ChartMarkerEntry, kMarkerSlots> row;
  for (size_t slot = 0; slot < row.size(); ++slot) row[slot] = ChartEntryOf(markers.Markers[slot]);
  PlaceChartMarkers(application, ChartSummaryOf(markers), row, ChartCountsOf(markers), feedback);
}

}  // namespace z4400
