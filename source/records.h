// The measurement records that the source readers fill and the rest of the
// converter passes on: file-level information, one screen's configuration,
// one trace's values and one screen's markers. Field names are the names the
// instrument data model uses; `--dump` prints them as they stand.
#ifndef Z4400_SOURCE_RECORDS_H_
#define Z4400_SOURCE_RECORDS_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "common/table_sizes.h"

namespace z4400 {

/// File-level information of one instrument file.
struct GeneralInfo {
  std::string SourcePath;
  std::string Model;
  std::string Date;  ///< year "-" month "-" day, as the file holds them
  std::string Title;
  int32_t ContextCount = 0;     ///< number of screens ("NBCTXT")
  int32_t TraceTableCount = 0;  ///< trace tables in the whole file
  int32_t TracePoints = 0;      ///< points per trace ("TP")
  int32_t FixedA = 0;           ///< always 14592 once read
  int32_t FixedB = 0;           ///< always 1792 once read
  int32_t FixedC = 0;           ///< always 10 once read
};

/// Configuration of one screen (one context of the file).
struct ScreenInfo {
  double CenterFrequency = 0;
  double Span = 0;  ///< 0 = zero span (time domain)
  double StartFrequency = 0;
  double StopFrequency = 0;
  double FrequencyOffset = 0;
  double SweepTime = 0;  ///< seconds
  double ResolutionBandwidth = 0;
  double VideoBandwidth = 0;
  double ReferenceLevel = 0;
  double ScaledReferenceLevel = 0;
  double ReferenceOffset = 0;
  int32_t LevelUnitCode = 0;  ///< 0..6 spectrum units, 7..12 digital functions
  std::string LevelUnit;
  int16_t LogScale = 0;  ///< -1 when the vertical scale is "LOG"
  double VerticalScale = 0;
  double DualChannelAttenuation = 0;
  int32_t DualChannelImpedance = 0;
  int16_t LogX = 0;           ///< -1 when the X axis is logarithmic
  int16_t StartNegative = 0;  ///< -1 when a log X axis starts below 0
};

/// Y values of one trace.
struct TraceData {
  std::vector<double> Values;
  std::vector<double> Copy;  ///< the same values, the chart series source
  std::string Unit;          ///< the trace's own Y unit
  std::string ScreenUnit;    ///< LevelUnit of the screen's summary
};

/// One marker slot of a screen.
struct MarkerRecord {
  int16_t On = 0;      ///< -1 when "MKRON" is "ON"
  int32_t Trace = -1;  ///< 0 "A", 1 "B", 2 "C"; -1 when not identified
  std::string TraceName;
  int32_t Screen = -1;
  int32_t PointIndex = 0;
  double PosX = 0;
  double PosY = 0;
  double PosYDisplay = 0;
};

/// Markers of one screen: the marker-wide header and the screen's row of
/// the marker table.
struct MarkersInfo {
  int32_t DeltaMode = 0;  ///< 0 none on, 1 markers on, 2 markers on with delta
  int16_t Reserved = -1;
  int16_t FixedMarker = 0;  ///< -1 when "MKRFIX" is "ON"
  int32_t MarkerCount = 0;
  int32_t Spare = 0;
  int32_t SelectedMarker = 0;
  std::array<MarkerRecord, kMarkerSlots> Markers{};
};

}  // namespace z4400

#endif  // Z4400_SOURCE_RECORDS_H_
