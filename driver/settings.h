// The converter's settings record: the 18 items that "Data.ini" holds, one
// per line, in the order of the file, with the start-up defaults.
#ifndef Z4400_DRIVER_SETTINGS_H_
#define Z4400_DRIVER_SETTINGS_H_

#include <array>
#include <cstdint>
#include <string>

namespace z4400 {

/// Number of lines (items) of "Data.ini".
inline constexpr int kSettingsLines = 18;

/// Number of chart colours (lines 8 to 14 of "Data.ini").
inline constexpr int kChartColors = 7;

/// Packs a colour the way the settings and the charts store it:
/// red + 256 × green + 65536 × blue.
constexpr int32_t PackColor(int red, int green, int blue) {
  return red + 256 * green + 65536 * blue;
}

/// The chart colours in the order of lines 8 to 14: traces A, B, C, M, O,
/// plot area, division line. These are also the "Default" colours of the
/// options dialog, which never change.
inline constexpr std::array<int32_t, kChartColors> kDefaultChartColors = {
    PackColor(0, 0, 255),      // trace A, 16711680
    PackColor(139, 69, 19),    // trace B, 1262987
    PackColor(205, 92, 92),    // trace C, 6053069
    PackColor(255, 170, 200),  // trace M, 13150975
    PackColor(255, 150, 0),    // trace O, 38655
    PackColor(200, 200, 199),  // plot area, 13093064
    PackColor(255, 250, 205),  // division line, 13499135
};

/// The settings record. A default-constructed record holds the start-up
/// defaults (the state `InitDefaults` sets before "Data.ini" is read).
/// The field order is the line order of "Data.ini".
struct Settings {
  std::string OutputDirectory;                     ///< line 1: folder for the output workbooks
  int32_t UseOutputDirectory = 1;                  ///< line 2: main window check box, 0/1
  int32_t WarnOnOverwrite = 1;                     ///< line 3: "It warns, when overwrite."
  int32_t DebugMode = 0;                           ///< line 4: 1 = run-time failures not caught
  int32_t AlwaysOnTop = 0;                         ///< line 5: main window kept on top
  int32_t GraphSheets = 1;                         ///< line 6: copy charts to sheets (version < 12)
  int32_t LineWeightIndex = 1;                     ///< line 7: 0 "0.25 pt", 1 "1 pt", 2, 3
  int32_t TraceAColor = kDefaultChartColors[0];    ///< line 8
  int32_t TraceBColor = kDefaultChartColors[1];    ///< line 9
  int32_t TraceCColor = kDefaultChartColors[2];    ///< line 10
  int32_t TraceMColor = kDefaultChartColors[3];    ///< line 11
  int32_t TraceOColor = kDefaultChartColors[4];    ///< line 12
  int32_t PlotAreaColor = kDefaultChartColors[5];  ///< line 13
  int32_t DivisionLineColor = kDefaultChartColors[6];  ///< line 14
  /// line 15: set and cleared during a conversion; saved with whatever the
  /// last conversion left in it and read back at the next start.
  int16_t LogXInUse = 0;
  int16_t LogEnabled = 0;         ///< line 16: non-zero = status texts go to "Log.txt"
  double XScaleThreshold = 1000;  ///< line 17: X scale threshold
  int16_t LogXOption = 1;         ///< line 18: log-X option

  /// The seven chart colours in the order of lines 8 to 14.
  std::array<int32_t, kChartColors> ChartColors() const {
    return {TraceAColor, TraceBColor,   TraceCColor,      TraceMColor,
            TraceOColor, PlotAreaColor, DivisionLineColor};
  }

  /// Replaces the seven chart colours (order of lines 8 to 14).
  void SetChartColors(const std::array<int32_t, kChartColors>& colors) {
    TraceAColor = colors[0];
    TraceBColor = colors[1];
    TraceCColor = colors[2];
    TraceMColor = colors[3];
    TraceOColor = colors[4];
    PlotAreaColor = colors[5];
    DivisionLineColor = colors[6];
  }

  bool operator==(const Settings&) const = default;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_SETTINGS_H_
