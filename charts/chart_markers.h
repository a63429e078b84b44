// The markers of a screen drawn on its chart: each marker that is on
// highlights its point of its trace's series with a diamond and a label, and
// in delta mode the reference marker gets a star labelled "R".
#ifndef Z4400_CHARTS_CHART_MARKERS_H_
#define Z4400_CHARTS_CHART_MARKERS_H_

#include <array>
#include <cstdint>
#include <string>

#include "charts/chart_settings.h"
#include "source/records.h"

namespace z4400 {

class Application;

/// Point formats of the markers.
inline constexpr int32_t kMarkerCyan = 16776960;     // RGB(0, 255, 255)
inline constexpr int32_t kMarkerRed = 255;           // RGB(255, 0, 0)
inline constexpr int32_t kMarkerMagenta = 16711935;  // RGB(255, 0, 255)
inline constexpr int32_t kMarkerPointSize = 6;
inline constexpr char kReferenceLabel[] = "R";
inline constexpr char kWarningTitle[] = "Warning !!!";
inline constexpr char kNoTraceWarning[] = "No trace identified for marker ";
inline constexpr char kTraceScreenWarning[] = "impossible trace/screen configuration";

/// Marker numbers a screen can draw (0 to 9).
inline constexpr int kChartMarkerCandidates = 10;

/// What the chart needs of a screen's marker header.
struct ChartMarkerSummary {
  int32_t MarkerMode = 0;       ///< 0 nothing drawn, 2 delta mode (reference drawn too)
  int16_t AllMarkers = 0;       ///< non-zero: markers 0 to 9 are all candidates
  int16_t ReferenceHidden = 0;  ///< the reference is drawn only when 0
  int32_t ReferenceMarker = 0;  ///< number (0 to 9) of the reference marker
  int32_t ActiveMarker = 0;     ///< number (0 to 9) of the active marker
};

/// What the chart needs of one marker.
struct ChartMarkerEntry {
  int16_t On = 0;
  int32_t Trace = -1;       ///< 0-based trace, -1 when not identified
  int32_t ChartScreen = 0;  ///< 0-based chart (screen) holding the marker
  int32_t Point = 0;        ///< 0-based point of the trace
};

/// The two counts that decide whether anything is drawn: the marker mode
/// and the number of markers on.
struct ChartMarkerCounts {
  int32_t mode = 0;
  int32_t markers_on = 0;
};

/// The marker header as the chart reads it: mode = `DeltaMode`, all markers
/// = `Reserved`, reference hidden = `FixedMarker`, reference = `MarkerCount`
/// (in delta mode the 0-based number of the last marker on), active =
/// `SelectedMarker` − 1 when it is 1 or more, else 0 ("Ref" selects marker
/// 1).
ChartMarkerSummary ChartSummaryOf(const MarkersInfo& markers);
/// A marker record as the chart reads it (its screen is the chart).
ChartMarkerEntry ChartEntryOf(const MarkerRecord& record);
/// (`DeltaMode`, markers on), markers on being `MarkerCount` + 1 in delta
/// mode (the reference counts) and `MarkerCount` otherwise.
ChartMarkerCounts ChartCountsOf(const MarkersInfo& markers);

/// Whether the counts let markers be drawn: mode 1 or 2 with at least one
/// marker on, and at least two in delta mode.
bool CountsAllowMarkers(const ChartMarkerCounts& counts);

/// Label of normal marker `number` (0 to 9): "1" … "10" when every marker is
/// a candidate, else "N(" + (number + 1) + ")".
std::string MarkerLabel(int16_t all_markers, int32_t number);

/// How one marked point looks.
struct MarkerPointStyle {
  int32_t foreground = kMarkerCyan;
  int32_t background = kMarkerCyan;  ///< 0: no fill
  int32_t size = kMarkerPointSize;
  int32_t style = 2;  ///< marker style code (2 diamond, 5 star)
  std::string label;
};

/// Formats the point of one marker on chart object ChartScreen + 1 of the
/// active sheet ("Report"). A marker that is off is skipped. A marker
/// without a trace shows "No trace identified for marker " + label
/// ("Warning !!!") and nothing else. Only the first chart carries several
/// traces: a later chart's marker must be on trace 0, otherwise
/// "impossible trace/screen configuration" is shown and the missing series
/// 0 then throws `RuntimeFailure`, as does a point beyond the trace.
void MarkChartPoint(Application& application, const ChartMarkerEntry& entry,
                    const MarkerPointStyle& style, ChartFeedback& feedback);

/// Draws the markers of one screen, given its marker row (slots 0 to 11):
/// nothing unless the counts allow it and the mode is not 0; the candidate
/// markers that are on as diamonds (cyan fill for the active one, red for
/// the others), then in delta mode with the reference shown the reference
/// marker as a magenta star without fill labelled "R".
void PlaceChartMarkers(Application& application, const ChartMarkerSummary& summary,
                       const std::array<ChartMarkerEntry, kMarkerSlots>& row,
                       const ChartMarkerCounts& counts, ChartFeedback& feedback);

/// The same over the screen's markers as read from the file.
void PlaceChartMarkers(Application& application, const MarkersInfo& markers,
                       ChartFeedback& feedback);

}  // namespace z4400

#endif  // Z4400_CHARTS_CHART_MARKERS_H_
