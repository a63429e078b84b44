#include "workbook/reports/screen_config_sheet.h"

#include <cmath>
#include <string>

#include "common/eng_units.h"
#include "common/runtime_failure.h"
#include "workbook/model/text_width.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/report_lines.h"

namespace z4400 {
namespace {

constexpr std::string_view kGeneral = "General";
constexpr std::string_view kTextFormat = "0.###";
constexpr std::string_view kLevelFormat = "0.##";
constexpr double kMicroseconds = 1000000;
/// Columns of the values and of their units.
constexpr int kValueColumn = 2;
constexpr int kUnitColumn = 3;

/// numerator ÷ denominator for a unit factor; a zero denominator is the
/// floating-point fault of the division.
double Ratio(double numerator, double denominator) {
  if (denominator == 0) {
    throw RuntimeFailure(numerator == 0 ? "Overflow: 0 / 0 in a unit factor"
                                        : "Division by zero in a unit factor");
  }
  return numerator / denominator;
}

/// Display units per second of a time unit text.
double TimeFactorOf(std::string_view unit) {
  if (unit == "usec") return 1000000;
  if (unit == "msec") return 1000;
  return 1;
}

bool IsFrequencyFunction(std::string_view function) {
  return function == "Phase-Freq" || function == "PartialFFT";
}

/// Writes a line with an engineering value and returns that value.
EngValue EngLine(Worksheet& sheet, ReportCursor& cursor, std::string_view label, EngValue value,
                 std::string_view format = kGeneral) {
  WriteReportLineUnit(sheet, cursor, label, value.Scaled, value.Unit, format);
  return value;
}

void WriteDigitalRows(Worksheet& sheet, ReportCursor& cursor, const ScreenInfo& screen,
                      const DigitalValues& digital, ScreenUnits& units) {
  const std::string& function = digital.MeasurementFunction;
  WriteReportLine(sheet, cursor, "Meas. Function", function, kTextFormat);
  EngLine(sheet, cursor, "Center frequency", MakeEngHz(screen.CenterFrequency));
  EngLine(sheet, cursor, "Span",
          IsFrequencyFunction(function) ? MakeEngHz(digital.CaptureBandwidth)
                                        : MakeEngSec(digital.HorizontalScale / kMicroseconds));
  EngLine(sheet, cursor, "Start time", MakeEngSec(digital.HorizontalPosition / kMicroseconds));
  const EngValue stop =
      EngLine(sheet, cursor, "Stop time", MakeEngSec(digital.StopTime / kMicroseconds));
  units.TimeUnit = stop.Unit;
  units.TimeFactor = TimeFactorOf(stop.Unit);
  EngLine(sheet, cursor, "Capture time", MakeEngSec(digital.CaptureTime / kMicroseconds));
  EngLine(sheet, cursor, "Capture BW", MakeEngHz(digital.CaptureBandwidth));
  if (IsFrequencyFunction(function)) {
    const EngValue stop_frequency = MakeEngHz(screen.StopFrequency);
    units.TimeUnit = stop_frequency.Unit;
    units.TimeFactor = Ratio(stop_frequency.Scaled, screen.StopFrequency);
  }
}

void WriteSpectrumRows(Worksheet& sheet, ReportCursor& cursor, const ScreenInfo& screen,
                       ScreenUnits& units, TimeAxisEntry& zero_span) {
  WriteReportLine(sheet, cursor, "Meas. Function", "Spectrum Analysis", kTextFormat);
  EngLine(sheet, cursor, "Center frequency", MakeEngHz(screen.CenterFrequency));
  EngValue span;
  if (screen.Span == 0) {
    span = EngLine(sheet, cursor, "Span", MakeEngSec(screen.SweepTime), kTextFormat);
    zero_span.Unit = span.Unit;
    zero_span.Factor = Ratio(span.Scaled, screen.SweepTime);
  } else {
    span = EngLine(sheet, cursor, "Span", MakeEngHz(screen.Span));
  }
  // The X axis takes the larger prefix of the span's and the stop
  // frequency's units; a tie goes to the stop frequency's.
  const double span_factor = span.Scaled == 0 ? 0 : screen.Span / span.Scaled;
  EngLine(sheet, cursor, "Start frequency", MakeEngHz(screen.StartFrequency));
  const EngValue stop = EngLine(sheet, cursor, "Stop frequency", MakeEngHz(screen.StopFrequency));
  const double stop_factor = Ratio(screen.StopFrequency, stop.Scaled);
  EngLine(sheet, cursor, "Frequency offset", MakeEngHz(screen.FrequencyOffset));
  EngLine(sheet, cursor, "Sweep time", MakeEngSec(screen.SweepTime), kTextFormat);
  EngLine(sheet, cursor, "RBW", MakeEngHz(screen.ResolutionBandwidth));
  EngLine(sheet, cursor, "VBW", MakeEngHz(screen.VideoBandwidth));
  if (span_factor <= stop_factor) {
    units.XUnit = stop.Unit;
    units.XFactor = stop_factor;
  } else {
    units.XUnit = span.Unit;
    units.XFactor = span_factor;
  }
}

/// The "Reference level" row: its value, unit and format by level-unit
/// code.
struct ReferenceLevelRow {
  double value;
  std::string unit;
  std::string_view format;
};

ReferenceLevelRow ReferenceLevelOf(const ScreenInfo& screen) {
  const int32_t code = screen.LevelUnitCode;
  if (code >= 0 && code <= 4) {
    const UnitNameTable names = InitUnitNames();
    return {screen.ReferenceLevel, std::string(TrimBlanks(names[static_cast<size_t>(code)])),
            kLevelFormat};
  }
  if (code == 5) {
    const EngValue level = MakeEngW(screen.ReferenceLevel);
    return {level.Scaled, level.Unit, kTextFormat};
  }
  if (code == 6) {
    const EngValue level = MakeEngV(screen.ReferenceLevel);
    return {level.Scaled, level.Unit, kTextFormat};
  }
  if (code >= 7 && code <= 12) return {screen.ReferenceLevel, "dBm", kLevelFormat};
  return {screen.ReferenceLevel, "unknown", kTextFormat};
}

void WriteDigitalScale(Worksheet& sheet, ReportCursor& cursor, const ScreenInfo& screen,
                       ScreenUnits& units) {
  EngValue scale{screen.VerticalScale, screen.LevelUnit};
  if (screen.LevelUnit == "Hz") {
    scale = MakeEngHz(screen.VerticalScale);
  } else if (screen.LevelUnit == "V") {
    scale = MakeEngV(screen.VerticalScale);
  }
  units.VerticalUnit = scale.Unit;
  units.VerticalFactor = Ratio(screen.VerticalScale, scale.Scaled);
  WriteReportLineUnit(sheet, cursor, "Scale", scale.Scaled, scale.Unit + "/div", kGeneral);
}

/// The rows of the block from `cursor`; the status of `WriteScreenConfig`.
int16_t WriteBlockRows(Worksheet& sheet, ReportCursor& cursor, int16_t screen_index,
                       const ScreenInfo& screen, const DigitalValues& digital,
                       ScreenUnits& screen_units, TimeAxisEntry& zero_span) {
  BoldPair(sheet, cursor.row, cursor.column);
  WriteReportLine(sheet, cursor, "Screen", std::to_string(screen_index + 1), "##");

  const bool digital_screen = digital.DigitalMode == "ON";
  if (digital_screen) {
    WriteDigitalRows(sheet, cursor, screen, digital, screen_units);
  } else {
    WriteSpectrumRows(sheet, cursor, screen, screen_units, zero_span);
  }

  const ReferenceLevelRow reference = ReferenceLevelOf(screen);
  WriteReportLineUnit(sheet, cursor, "Reference level", reference.value, reference.unit,
                      reference.format);
  if (screen.VerticalScale == 0) {
    screen_units.Message = std::string(kVerticalScaleZeroText);
    return 1;
  }

  if (digital_screen) {
    WriteDigitalScale(sheet, cursor, screen, screen_units);
  } else {
    WriteReportLineUnit(sheet, cursor, "Reference offset", screen.ReferenceOffset, "dB",
                        kLevelFormat);
    if (screen.LogScale != 0) {
      WriteReportLineUnit(sheet, cursor, "Scale", screen.VerticalScale, "dB/div", kGeneral);
    } else {
      WriteReportLineUnit(sheet, cursor, "Scale", reference.value / 10, reference.unit + "/div",
                          kLevelFormat);
    }
  }
  WriteReportLineUnit(sheet, cursor, "Attenuation", screen.DualChannelAttenuation, "dB", "##.#");
  return 0;
}

}  // namespace

int16_t ScreenConfigRow(int16_t screen_index) {
  return static_cast<int16_t>(screen_index * 17 + 9);
}

int16_t WriteScreenConfig(const ExcelApp& excel, int16_t screen_index, const ScreenInfo& screen,
                          const DigitalValues& digital, ScreenUnitTable& units,
                          TimeAxisEntry& zero_span) {
  ScreenUnits& screen_units = ScreenUnitsOf(units, screen_index);
  Worksheet& sheet = ActiveWorksheet(excel);
  const int16_t first_row = ScreenConfigRow(screen_index);
  ReportCursor cursor{first_row, 1};
  const int16_t status =
      WriteBlockRows(sheet, cursor, screen_index, screen, digital, screen_units, zero_span);
  // The values and units show whole. "Raw Data" keeps the unit column its
  // sheet layout fixed; a longer unit runs into the empty column beside it.
  WidenColumnToFit(sheet, kValueColumn, first_row, cursor.row - 1);
  if (sheet.Name() != kRawDataSheet)
    WidenColumnToFit(sheet, kUnitColumn, first_row, cursor.row - 1);
  return status;
}

}  // namespace z4400
