// The marker lists: for every screen, the markers that are on with their
// trace, position and level, on "Markers Details" under its heading and
// again on "Report" beside the configuration blocks (from column J).
#ifndef Z4400_WORKBOOK_REPORTS_MARKERS_DETAILS_SHEET_H_
#define Z4400_WORKBOOK_REPORTS_MARKERS_DETAILS_SHEET_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/eng_units.h"
#include "common/sheet_names.h"
#include "source/records.h"
#include "source/screen_tables.h"
#include "workbook/excel_app.h"
#include "workbook/model/cell_value.h"
#include "workbook/model/worksheet.h"

namespace z4400 {

inline constexpr std::string_view kMarkersDetailsHeading = "Markers Detailed Report";

/// Where the next screen's list goes on each sheet; one object per output
/// workbook, so that the lists of successive screens follow each other.
struct MarkerListRows {
  int16_t details_row = 3;  ///< "Markers Details", from column A
  int16_t report_row = 9;   ///< "Report", from column J (at the earliest)
};

/// How a screen's marker positions and levels read.
struct MarkerAxes {
  bool time_x = false;     ///< positions in seconds (else hertz)
  std::string level_unit;  ///< the screen's level unit ("dBm", "Volts", "V" …)
};

/// Positions are seconds on a zero-span screen and on a digital screen of
/// a time function; hertz otherwise ("Phase-Freq", "PartialFFT", spectrum).
MarkerAxes MarkerAxesOf(const XAxisKind& kind, const DigitalValues& digital);

/// The marker taken as active: `SelectedMarker` − 1 when it is 1 or more,
/// else 0 (the selection "Ref" is marker 1).
int32_t ActiveMarkerOf(const MarkersInfo& markers);

/// One row of a screen's marker list.
struct MarkerListEntry {
  CellValue label;  ///< the marker number (1 to 10), or "Reference"
  std::string trace;
  EngValue position;
  EngValue level;
  std::string_view level_format;  ///< "0.000" for scaled levels, else "0.00"
};

/// The rows of a screen's marker list, in list order: markers are listed
/// only when the screen has markers on (`DeltaMode` not 0), each when its
/// `On` is not 0; all ten are candidates unless `Reserved` is 0, which
/// leaves the active marker alone. In delta mode the reference marker
/// follows as "Reference".
std::vector<MarkerListEntry> ListedMarkers(const MarkersInfo& markers, const MarkerAxes& axes);

/// The number (1 to 10) of the marker the deltas of a screen refer to: in
/// delta mode the marker after the `MarkerCount` markers on, when it is on;
/// 0 when the screen has no reference.
int DeltaReferenceOf(const MarkersInfo& markers);

/// Writes the list of screen `screen` at (`row`, `column`) of `sheet`:
/// "Marker List Screen" with the screen number (bold), a row of column
/// headers, one row per listed marker (number, trace letter, position with
/// its unit, level with its unit; the rows of `ListedMarkers`). The list's
/// six columns are widened where a text or number of the list would not
/// show whole. Returns the row after the list's last row.
int16_t WriteMarkerList(Worksheet& sheet, int16_t row, int16_t column, const MarkersInfo& markers,
                        const MarkerAxes& axes, int screen);

/// The list of screen `screen` on "Markers Details" (with its heading "Markers
/// Detailed Report" in A1, bold and italic) at the next free row of `rows`,
/// and on "Report" at the next free row but not above the screen's
/// configuration block; `rows` then move past the lists and one empty row.
/// Leaves "Report" active. A missing sheet throws `RuntimeFailure`.
void WriteMarkersDetails(const ExcelApp& excel, const MarkersInfo& markers, const MarkerAxes& axes,
                         int screen, MarkerListRows& rows);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_MARKERS_DETAILS_SHEET_H_
