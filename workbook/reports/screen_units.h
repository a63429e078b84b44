// The units and factors of each screen's axes as its configuration block
// shows them. The configuration writer fills one record per screen; the
// raw data writer and the chart formatter read it to put the X and Y values
// into the same units as the block.
#ifndef Z4400_WORKBOOK_REPORTS_SCREEN_UNITS_H_
#define Z4400_WORKBOOK_REPORTS_SCREEN_UNITS_H_

#include <array>
#include <string>
#include <string_view>

#include "common/runtime_failure.h"
#include "source/screen_tables.h"

namespace z4400 {

/// Message of a screen whose vertical scale is 0.
inline constexpr std::string_view kVerticalScaleZeroText = "Vertical-axis scale is 0";

/// Axis units of one screen. Every factor is 1 until the configuration
/// block of the screen has been written.
struct ScreenUnits {
  /// Digital screens: the unit of the "Stop time" row ("sec", "msec",
  /// "usec") and the display units per second (1, 1000, 1,000,000). For
  /// "Phase-Freq" and "PartialFFT" the stop frequency's unit ("GHz" …) and
  /// the display units per hertz (1e-9 for "GHz").
  std::string TimeUnit = "sec";
  double TimeFactor = 1;
  /// Spectrum screens: the X axis unit (the larger prefix of the span's and
  /// the stop frequency's units) and the hertz per display unit (1e9 for
  /// "GHz"); a zero-span screen may get a time unit here, but its X values
  /// follow the time-axis table instead.
  std::string XUnit = "Hz";
  double XFactor = 1;
  /// Digital screens: the unit of the "Scale" row and the base units per
  /// display unit (0.001 for "mV", 1000 for "kHz").
  std::string VerticalUnit = "dBm";
  double VerticalFactor = 1;
  /// "Vertical-axis scale is 0" once the block stopped for that reason.
  std::string Message;
};

/// The records of screens 0 to 2.
using ScreenUnitTable = std::array<ScreenUnits, kScreenSlots>;

/// Index of record `screen`. Throws `RuntimeFailure` outside 0 to 2.
inline size_t ScreenUnitSlot(int screen) {
  if (screen < 0 || screen >= kScreenSlots) {
    throw RuntimeFailure("Subscript out of range: screen " + std::to_string(screen) +
                         " has no unit record");
  }
  return static_cast<size_t>(screen);
}

/// Record `screen` of `table`. Throws `RuntimeFailure` outside 0 to 2.
inline ScreenUnits& ScreenUnitsOf(ScreenUnitTable& table, int screen) {
  return table[ScreenUnitSlot(screen)];
}
inline const ScreenUnits& ScreenUnitsOf(const ScreenUnitTable& table, int screen) {
  return table[ScreenUnitSlot(screen)];
}

}  // namespace z4400

#endif  // Z4400_WORKBOOK_REPORTS_SCREEN_UNITS_H_
