// Per-screen tables that the source readers keep beside the measurement
// records, and the X-axis records the conversion driver keeps per screen:
// what the sheet writers and chart builders read by screen number.
#ifndef Z4400_SOURCE_SCREEN_TABLES_H_
#define Z4400_SOURCE_SCREEN_TABLES_H_

#include <cstdint>
#include <string>
#include <vector>

#include "common/table_sizes.h"

namespace z4400 {

/// Summary of one screen's configuration, filled at the end of a successful
/// screen read; the X axis data is computed from it.
struct ScreenSummary {
  double Span = 0;
  double StartFrequency = 0;
  double StopFrequency = 0;
  double CenterFrequency = 0;
  double SweepTime = 0;  ///< seconds
  std::string LevelUnit;
  double DualChannelAttenuation = 0;
  int16_t DualChannelImpedance = 0;
};

/// The digital-measurement settings of one screen, as the file holds them.
struct DigitalValues {
  std::string DigitalMode;        ///< "ON" for a digital measurement screen
  double HorizontalPosition = 0;  ///< microseconds
  double StopTime = 0;            ///< microseconds
  double HorizontalScale = 0;     ///< microseconds
  double CaptureTime = 0;         ///< microseconds
  double CaptureBandwidth = 0;    ///< Hz
  std::string MeasurementFunction;
};

/// Unit and factor of a screen's vertical axis: the display value of the
/// scaled reference level divided by the level itself.
struct VerticalAxis {
  std::string VerticalUnit;
  double VerticalFactor = 0;
};

/// The time axis of a zero-span screen.
struct TimeAxisEntry {
  double Start = 0;
  double Stop = 0;  ///< the sweep time, seconds
  std::string Unit;
  double Factor = 0;
  int16_t IsTime = 0;  ///< -1 for a zero-span screen
};

/// Whether a screen's X axis is a time axis, and its level unit.
struct XAxisKind {
  int16_t IsTime = 0;  ///< -1 for a zero-span screen
  std::string LevelUnit;
};

/// Bounds of a logarithmic X axis, in display units.
struct XAxisScale {
  double AxisMax = 0;
  double AxisMin = 0;
  double DataMax = 0;
  double DataMin = 0;
  int16_t StartNegative = 0;  ///< -1 when a log axis was asked for but data starts below 0
  int16_t LogX = 0;           ///< -1 when the screen's "HS" parameter is "LOG"
};

/// What the X scale step needs from the settings and the workbook.
struct XScaleSettings {
  double XScaleThreshold = 1000;  ///< settings line 17
  bool LogXOption = true;         ///< settings line 18
  int SpreadsheetVersion = 16;
  /// The screen's frequency unit factor once its configuration block has
  /// been written; 1 until then.
  double FrequencyFactor = 1;
};

/// The X values of a screen's points: point indexes and X values.
struct XAxisValues {
  std::vector<double> Indexes;
  std::vector<double> Values;
};

}  // namespace z4400

#endif  // Z4400_SOURCE_SCREEN_TABLES_H_
