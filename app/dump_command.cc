// `z4400conv --dump FILE`: reads an instrument file completely, the way a
// conversion does (general information, then per screen its configuration,
// time axis, markers, X scale, X values and traces), and prints what was
// read as one JSON document. Needs neither a display nor a workbook.
#include <nlohmann/json.hpp>

#include <iostream>

#include "app/commands.h"
#include "source/runtime_failure.h"
#include "source/source_reader.h"

namespace z4400 {
namespace {

using nlohmann::ordered_json;

ordered_json ToJson(const GeneralInfo& info) {
  return {{"SourcePath", info.SourcePath},     {"Model", info.Model},
          {"Date", info.Date},                 {"Title", info.Title},
          {"ContextCount", info.ContextCount}, {"TraceTableCount", info.TraceTableCount},
          {"TracePoints", info.TracePoints},   {"FixedA", info.FixedA},
          {"FixedB", info.FixedB},             {"FixedC", info.FixedC}};
}

ordered_json ToJson(const ScreenInfo& info) {
  return {{"CenterFrequency", info.CenterFrequency},
          {"Span", info.Span},
          {"StartFrequency", info.StartFrequency},
          {"StopFrequency", info.StopFrequency},
          {"FrequencyOffset", info.FrequencyOffset},
          {"SweepTime", info.SweepTime},
          {"ResolutionBandwidth", info.ResolutionBandwidth},
          {"VideoBandwidth", info.VideoBandwidth},
          {"ReferenceLevel", info.ReferenceLevel},
          {"ScaledReferenceLevel", info.ScaledReferenceLevel},
          {"ReferenceOffset", info.ReferenceOffset},
          {"LevelUnitCode", info.LevelUnitCode},
          {"LevelUnit", info.LevelUnit},
          {"LogScale", info.LogScale},
          {"VerticalScale", info.VerticalScale},
          {"DualChannelAttenuation", info.DualChannelAttenuation},
          {"DualChannelImpedance", info.DualChannelImpedance},
          {"LogX", info.LogX},
          {"StartNegative", info.StartNegative}};
}

ordered_json ToJson(const ScreenSummary& summary) {
  return {{"Span", summary.Span},
          {"StartFrequency", summary.StartFrequency},
          {"StopFrequency", summary.StopFrequency},
          {"CenterFrequency", summary.CenterFrequency},
          {"SweepTime", summary.SweepTime},
          {"LevelUnit", summary.LevelUnit},
          {"DualChannelAttenuation", summary.DualChannelAttenuation},
          {"DualChannelImpedance", summary.DualChannelImpedance}};
}

ordered_json ToJson(const DigitalValues& digital) {
  return {{"DigitalMode", digital.DigitalMode},
          {"HorizontalPosition", digital.HorizontalPosition},
          {"StopTime", digital.StopTime},
          {"HorizontalScale", digital.HorizontalScale},
          {"CaptureTime", digital.CaptureTime},
          {"CaptureBandwidth", digital.CaptureBandwidth},
          {"MeasurementFunction", digital.MeasurementFunction}};
}

ordered_json ToJson(const TimeAxisEntry& entry) {
  return {{"Start", entry.Start}, {"Stop", entry.Stop},       {"Unit", entry.Unit},
          {"Factor", entry.Factor}, {"IsTime", entry.IsTime}};
}

ordered_json ToJson(const XAxisScale& scale) {
  return {{"AxisMax", scale.AxisMax},   {"AxisMin", scale.AxisMin},
          {"DataMax", scale.DataMax},   {"DataMin", scale.DataMin},
          {"StartNegative", scale.StartNegative}, {"LogX", scale.LogX}};
}

ordered_json ToJson(const MarkerRecord& marker) {
  return {{"On", marker.On},
          {"Trace", marker.Trace},
          {"TraceName", marker.TraceName},
          {"Screen", marker.Screen},
          {"PointIndex", marker.PointIndex},
          {"PosX", marker.PosX},
          {"PosY", marker.PosY},
          {"PosYDisplay", marker.PosYDisplay}};
}

ordered_json ToJson(const MarkersInfo& info) {
  ordered_json markers = ordered_json::array();
  for (const MarkerRecord& marker : info.Markers) markers.push_back(ToJson(marker));
  return {{"DeltaMode", info.DeltaMode},
          {"Reserved", info.Reserved},
          {"FixedMarker", info.FixedMarker},
          {"MarkerCount", info.MarkerCount},
          {"Spare", info.Spare},
          {"SelectedMarker", info.SelectedMarker},
          {"Markers", std::move(markers)}};
}

/// Reads one screen in the driver's order. Returns false (with `error`) when
/// the screen configuration is not accepted.
bool DumpScreen(SourceReader& reader, int screen, ScreenInfo& info, int16_t& log_x_in_use,
                ordered_json& out, std::string& error) {
  if (reader.ReadScreenConfig(screen, info) != 0) {
    error = reader.ErrorText().empty()
                ? "Unknown digital measurement function \"" +
                      reader.Digital(screen).MeasurementFunction + "\" on screen " +
                      std::to_string(screen + 1) + "."
                : reader.ErrorText();
    return false;
  }
  const XAxisKind kind = reader.SetTimeAxis(info, screen);
  const MarkersInfo markers = reader.ReadMarkers(screen);
  const XScaleSettings settings;  // default settings, spreadsheet version 16
  const XAxisScale scale = reader.SetXScaleType(screen, info, settings, log_x_in_use);
  const int32_t trace_count = reader.ScreenTraceCount(screen);

  ordered_json x = ordered_json::array();
  ordered_json traces = ordered_json::array();
  if (trace_count > 0) {
    x = reader.XAxisData(screen).Values;
    for (int32_t t = 0; t < trace_count; ++t) {
      const TraceData trace = reader.ReadTraceY(screen, t);
      traces.push_back(
          {{"Unit", trace.Unit}, {"ScreenUnit", trace.ScreenUnit}, {"Values", trace.Values}});
    }
  }
  out = {{"ScreenInfo", ToJson(info)},
         {"Summary", ToJson(reader.Summary(screen))},
         {"DigitalValues", ToJson(reader.Digital(screen))},
         {"VerticalUnit", reader.Vertical(screen).VerticalUnit},
         {"VerticalFactor", reader.Vertical(screen).VerticalFactor},
         {"TimeAxisTable", ToJson(reader.TimeAxis(screen))},
         {"XAxisKind", {{"IsTime", kind.IsTime}, {"LevelUnit", kind.LevelUnit}}},
         {"XAxisScale", ToJson(scale)},
         {"TraceCount", trace_count},
         {"X", std::move(x)},
         {"Traces", std::move(traces)},
         {"MarkersInfo", ToJson(markers)}};
  // Without the log-X option a logarithmic screen does not hand its flag on.
  if (!settings.LogXOption && scale.LogX != 0) log_x_in_use = 0;
  return true;
}

}  // namespace

int RunDump(const std::string& path) {
  SourceReader reader;
  std::string error;
  ordered_json document;
  try {
    const int16_t opened = reader.OpenSource(path);
    if (opened != 0) {
      error = opened == 1 ? "Not an instrument file (the name must end in xml or csv)."
                          : reader.ErrorText();
    } else {
      GeneralInfo info;
      if (reader.ReadGeneralInfo(info) != 0) {
        error = reader.ErrorText();
      } else {
        document["GeneralInfo"] = ToJson(info);
        ordered_json screens = ordered_json::array();
        ScreenInfo screen_info;
        int16_t log_x_in_use = 0;
        for (int32_t screen = 0; screen < info.ContextCount && error.empty(); ++screen) {
          ordered_json screen_json;
          if (DumpScreen(reader, screen, screen_info, log_x_in_use, screen_json, error)) {
            screens.push_back(std::move(screen_json));
          }
        }
        document["Screens"] = std::move(screens);
      }
    }
  } catch (const RuntimeFailure& failure) {
    error = std::string("Run-time failure: ") + failure.what();
  }
  if (!error.empty()) {
    std::cerr << error << "\n";
    return 1;
  }
  std::cout << document.dump(2, ' ', false, ordered_json::error_handler_t::replace) << "\n";
  return std::cout.good() ? 0 : 1;
}

}  // namespace z4400
