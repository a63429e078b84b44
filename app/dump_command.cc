// `z4400conv --dump FILE`: reads an instrument file completely, the way a
// conversion does (general information, then per screen its configuration,
// time axis, markers, X scale, X values and traces), and prints what was
// read as one JSON document. Needs neither a display nor a workbook.
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/commands.h"
#include "common/runtime_failure.h"
#include "source/source_reader.h"
#include "source/whole_source.h"

namespace z4400 {
namespace {

using nlohmann::ordered_json;

ordered_json ToJson(const GeneralInfo& info) {
  return {{"SourcePath", info.SourcePath},
          {"Model", info.Model},
          {"Date", info.Date},
          {"Title", info.Title},
          {"ContextCount", info.ContextCount},
          {"TraceTableCount", info.TraceTableCount},
          {"TracePoints", info.TracePoints},
          {"FixedA", info.FixedA},
          {"FixedB", info.FixedB},
          {"FixedC", info.FixedC}};
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
  return {{"Start", entry.Start},
          {"Stop", entry.Stop},
          {"Unit", entry.Unit},
          {"Factor", entry.Factor},
          {"IsTime", entry.IsTime}};
}

ordered_json ToJson(const XAxisScale& scale) {
  return {{"AxisMax", scale.AxisMax},
          {"AxisMin", scale.AxisMin},
          {"DataMax", scale.DataMax},
          {"DataMin", scale.DataMin},
          {"StartNegative", scale.StartNegative},
          {"LogX", scale.LogX}};
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

ordered_json ToJson(const SourceReader& reader, int screen, const ScreenRead& read) {
  ordered_json traces = ordered_json::array();
  for (const TraceData& trace : read.Traces) {
    traces.push_back(
        {{"Unit", trace.Unit}, {"ScreenUnit", trace.ScreenUnit}, {"Values", trace.Values}});
  }
  return {{"ScreenInfo", ToJson(read.Info)},
          {"Summary", ToJson(reader.Summary(screen))},
          {"DigitalValues", ToJson(reader.Digital(screen))},
          {"VerticalUnit", reader.Vertical(screen).VerticalUnit},
          {"VerticalFactor", reader.Vertical(screen).VerticalFactor},
          {"TimeAxisTable", ToJson(reader.TimeAxis(screen))},
          {"XAxisKind", {{"IsTime", read.Kind.IsTime}, {"LevelUnit", read.Kind.LevelUnit}}},
          {"XAxisScale", ToJson(read.Scale)},
          {"TraceCount", read.TraceCount},
          {"X", read.X.Values},
          {"Traces", std::move(traces)},
          {"MarkersInfo", ToJson(read.Markers)}};
}

/// The document of one file, or its reason on stderr (naming it) and null.
std::optional<ordered_json> Document(const std::string& path, bool name_file) {
  SourceReader reader;
  WholeSource whole;
  try {
    whole = ReadWholeSource(reader, path);  // default settings, spreadsheet version 16
  } catch (const RuntimeFailure& failure) {
    whole.Error = std::string("Run-time failure: ") + failure.what();
  }
  if (!whole.Error.empty()) {
    std::cerr << "z4400conv: " << path << ": " << whole.Error << "\n";
    return std::nullopt;
  }
  ordered_json screens = ordered_json::array();
  for (size_t s = 0; s < whole.Screens.size(); ++s) {
    screens.push_back(ToJson(reader, static_cast<int>(s), whole.Screens[s]));
  }
  ordered_json document;
  if (name_file) document["File"] = path;
  document["GeneralInfo"] = ToJson(whole.Info);
  document["Screens"] = std::move(screens);
  return document;
}

}  // namespace

int RunDump(const std::vector<std::string>& paths) {
  if (paths.empty()) {
    std::cerr << "z4400conv: --dump needs at least one FILE (see --help)\n";
    return 2;
  }
  const bool lines = paths.size() > 1;
  int status = 0;
  for (const std::string& path : paths) {
    const std::optional<ordered_json> document = Document(path, lines);
    if (!document) {
      status = 1;
      continue;
    }
    // One file: an indented document; several: JSON Lines.
    std::cout << document->dump(lines ? -1 : 2, ' ', false, ordered_json::error_handler_t::replace)
              << "\n";
  }
  std::cout.flush();
  return std::cout.good() ? status : 1;
}

}  // namespace z4400
