// One screen's configuration: frequencies, bandwidths, sweep time, level
// unit and scale, the digital measurement settings, and the X value of
// every point.
#include <array>

#include "common/eng_units.h"
#include "common/numeric_text.h"
#include "common/runtime_failure.h"
#include "source/source_reader.h"

namespace z4400 {
namespace {

/// Spectrum level units in code order.
constexpr std::array<std::string_view, 7> kLevelUnits = {"dBm",  "dBmV",  "dBuV", "dBuVemf",
                                                         "dBpW", "Watts", "Volts"};

struct DigitalFunction {
  std::string_view name;
  std::string_view level_unit;
  int32_t code;
  std::string_view vertical_scale_id;
};

constexpr std::array<DigitalFunction, 6> kDigitalFunctions = {{
    {"Freq-Time", "Hz", 7, "DGT_VERTSCALE_FREQ"},
    {"Phase-Time", "deg", 8, "DGT_VERTSCALE_PHASE"},
    {"Power-Time", "dBm", 9, "DGT_VERTSCALE_POWER"},
    {"IQ-Time", "V", 10, "DGT_VERTSCALE_IQ"},
    {"PartialFFT", "dBm", 11, "DGT_VERTSCALE_PARTFFT"},
    {"Phase-Freq", "deg", 12, "DGT_VERTSCALE_PHAFREQ"},
}};

/// Functions whose X axis is a frequency axis rather than a time axis.
bool IsFrequencyFunction(std::string_view function) {
  return function == "Phase-Freq" || function == "PartialFFT";
}

}  // namespace

int16_t SourceReader::ReadScreenConfig(int screen, ScreenInfo& info) {
  const size_t slot = ScreenSlot(screen);
  auto number = [&](std::string_view id) { return NumericValue(ScreenParameter(id, screen)); };
  auto is_on = [&](std::string_view id) { return ScreenParameter(id, screen) == "ON"; };

  info.CenterFrequency = number("CF");
  info.StartFrequency = number("FA");
  info.Span = number("SP");
  info.StopFrequency = number("FB");
  info.FrequencyOffset = is_on("FOON") ? number("FO") : 0;
  info.SweepTime = number("SW") / 1000000;  // the file holds microseconds
  info.ResolutionBandwidth = number("RB");
  info.VideoBandwidth = number("VB");
  info.ReferenceLevel = number("RL");
  info.ReferenceOffset = is_on("ROON") ? number("RO") : 0;
  info.DualChannelAttenuation = number("ATDUALCH");
  info.DualChannelImpedance = RoundToInt32(number("OHMDUALCH"));
  levels_.SetImpedance(RoundToInt16(info.DualChannelImpedance));

  DigitalValues& digital = digital_[slot];
  digital.DigitalMode = ScreenParameter("DGT_EXE", screen);
  if (digital.DigitalMode != "ON") {
    info.LevelUnit = ScreenParameter("AUNITS", screen);
    for (size_t code = 0; code < kLevelUnits.size(); ++code) {
      if (info.LevelUnit == kLevelUnits[code]) info.LevelUnitCode = static_cast<int32_t>(code);
    }
    info.VerticalScale = number("DD");
  } else {
    digital.HorizontalPosition = number("DGT_HORIZPOSITION");
    digital.StopTime = number("DGT_STOPTIME");
    digital.HorizontalScale = number("DGT_HORIZSCALE");
    digital.CaptureTime = number("DGT_CAPTTIME");
    digital.CaptureBandwidth = number("DGT_CAPTBW");
    digital.MeasurementFunction = ScreenParameter("DGT_MEASFUNCTION", screen);
    const DigitalFunction* function = nullptr;
    for (const DigitalFunction& candidate : kDigitalFunctions) {
      if (digital.MeasurementFunction == candidate.name) function = &candidate;
    }
    if (function == nullptr) return 1;
    info.LevelUnit = std::string(function->level_unit);
    info.LevelUnitCode = function->code;
    info.VerticalScale = number(function->vertical_scale_id);
  }
  info.LogScale = ScreenParameter("VS", screen) == "LOG" ? -1 : 0;

  VerticalAxis& vertical = vertical_[slot];
  if (info.LogScale == 0) {
    const ConvertedLevel volts = levels_.ConvertLevel(info.ReferenceLevel, info.LevelUnit, "Volts");
    info.ReferenceLevel = volts.Input;
    info.ScaledReferenceLevel = volts.Value;
    const EngValue shown = MakeEngV(info.ScaledReferenceLevel);
    vertical.VerticalUnit = shown.Unit;
    vertical.VerticalFactor = CheckedDivide(shown.Scaled, info.ScaledReferenceLevel);
  } else {
    if (info.LevelUnit != "Volts" && info.LevelUnit != "Watts") {
      info.ScaledReferenceLevel = info.ReferenceLevel;
    } else {
      const ConvertedLevel dbm = levels_.ConvertLevel(info.ReferenceLevel, info.LevelUnit, "dBm");
      info.ReferenceLevel = dbm.Input;
      info.ScaledReferenceLevel = dbm.Value;
    }
    vertical.VerticalUnit = info.LevelUnit;
    vertical.VerticalFactor = 1;
  }

  ScreenSummary& summary = summaries_[slot];
  summary.Span = info.Span;
  summary.StartFrequency = info.StartFrequency;
  summary.StopFrequency = info.StopFrequency;
  summary.CenterFrequency = info.CenterFrequency;
  summary.SweepTime = info.SweepTime;
  summary.LevelUnit = info.LevelUnit;
  summary.DualChannelAttenuation = info.DualChannelAttenuation;
  summary.DualChannelImpedance = RoundToInt16(info.DualChannelImpedance);
  return 0;
}

XAxisValues SourceReader::XAxisData(int screen) const {
  const ScreenSummary& summary = Summary(screen);
  const DigitalValues& digital = Digital(screen);
  const int points = current_trace_points_;
  XAxisValues axis;
  if (points - 1 < 0) return axis;
  axis.Indexes.resize(static_cast<size_t>(points));
  axis.Values.resize(static_cast<size_t>(points));
  double start = summary.StartFrequency;
  double stop = summary.StopFrequency;
  if (digital.DigitalMode != "ON") {
    if (summary.Span == 0) {
      start = 0;
      stop = summary.SweepTime;
    }
  } else if (!IsFrequencyFunction(digital.MeasurementFunction)) {
    start = digital.HorizontalPosition;
    stop = digital.StopTime;
  }
  const double steps = points - 1;
  for (int i = 0; i < points; ++i) {
    axis.Indexes[static_cast<size_t>(i)] = i;
    // Difference times i first, then divided by the steps, then the start
    // added: the order the instrument's own X values follow.
    axis.Values[static_cast<size_t>(i)] =
        start + CheckedDivide(CheckedFinite((stop - start) * i, "an X value"), steps);
  }
  return axis;
}

}  // namespace z4400
