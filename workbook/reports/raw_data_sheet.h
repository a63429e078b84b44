// The blocks of "Raw Data": per screen, below the general information, the
// X values of the screen's points and, beside them, the values of each of
// its traces, in groups of columns that the charts take their series from.
#ifndef Z4400_WORKBOOK_REPORTS_RAW_DATA_SHEET_H_
#define Z4400_WORKBOOK_REPORTS_RAW_DATA_SHEET_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "source/records.h"
#include "source/screen_tables.h"
#include "source/source_reader.h"
#include "workbook/excel_app.h"
#include "workbook/model/worksheet.h"
#include "workbook/reports/screen_units.h"

namespace z4400 {

/// Most points a block holds (buffer rows 0 to 1001).
inline constexpr int kRawBlockMaxPoints = 1002;

/// The settings the raw data writer reads.
struct RawDataSettings {
  int16_t LogXInUse = 0;          ///< the log-X-in-use flag
  double XScaleThreshold = 1000;  ///< X value from which a log axis starts
  bool LogXOption = true;         ///< the log-X option
};

/// What the writer leaves for the trace series of the screen.
struct RawDataState {
  /// The row of the first point whose X value reaches the X scale
  /// threshold, on a log-X screen that starts below 0; unchanged otherwise.
  int16_t LogXFirstRow = 0;
};

/// The tables of one screen that the writer reads, looked up by the caller.
struct RawScreenTables {
  const DigitalValues& digital;    ///< digital mode text and function
  const VerticalAxis& vertical;    ///< spectrum screens: VerticalFactor
  const TimeAxisEntry& time_axis;  ///< zero span: IsTime and Factor
  const ScreenUnits& units;        ///< units of the configuration block
  XAxisScale& scale;               ///< the screen's X axis record; AxisMin may move
};

/// The tables of screen `screen` from the source reader, the unit records
/// and the X axis record `scale`. Throws `RuntimeFailure` outside 0 to 2.
RawScreenTables RawTablesOf(const SourceReader& source, const ScreenUnitTable& units,
                            XAxisScale& scale, int screen);

/// One column group.
struct RawBlock {
  int32_t Screen = 0;        ///< 0 to 2
  int32_t ColumnIndex = -1;  ///< -1 for the X group, else the trace index
  /// X group: point indexes; trace group: the trace's values.
  std::span<const double> First;
  /// X group: X values; trace group: the copy of the trace's values.
  std::span<const double> Second;
  int32_t PointCount = 0;  ///< N, points per trace
  std::string_view UnitText;
  std::string_view ValueText;
};

/// First header row of screen `screen`'s block for N points: (N + 6) × s + 9.
/// Throws `RuntimeFailure` when it does not fit 16 bits.
int16_t RawBlockRow(int32_t point_count, int32_t screen);

/// Writes one column group on `sheet`: the header lines from row
/// (N + 6) × s + 9 (X group: "Screen " n, an empty row, "X raw " unit; trace
/// group: "Y(letter) raw " unit two rows down), then the N values from row
/// (N + 6) × s + 12 in columns 4 × (ColumnIndex + 1) + 5 onward, scaled to
/// the units of the configuration block (see the implementation). The
/// written range is one row taller than the values: its last row is
/// emptied. A screen outside 0 to 2, more than 1002 points, arrays shorter
/// than N or a zero log-X data range throw `RuntimeFailure`.
void WriteRawDataBlock(Worksheet& sheet, const RawBlock& block, const RawScreenTables& tables,
                       const RawDataSettings& settings, RawDataState& state);

/// The X group of screen `screen` on "Raw Data" (activated first), labelled
/// in the screen's X unit ("sec" for a zero-span screen).
void WriteRawXData(const ExcelApp& excel, int32_t screen, const XAxisValues& x_data,
                   const ScreenInfo& info, int32_t point_count, const RawScreenTables& tables,
                   const RawDataSettings& settings, RawDataState& state);

/// The group of trace `trace` of screen `screen` on the active worksheet,
/// labelled in the unit of its first column and the trace's own unit.
void WriteRawTraceData(const ExcelApp& excel, int32_t screen, int32_t trace,
                       const TraceData& trace_data, int32_t point_count,
                       const RawScreenTables& tables, const RawDataSettings& settings,
                       RawDataState& state);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_RAW_DATA_SHEET_H_
