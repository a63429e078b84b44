#include "source/whole_source.h"

namespace z4400 {
namespace {

WholeSource ReadOpened(SourceReader& reader, int16_t opened, const XScaleSettings& settings) {
  WholeSource whole;
  if (opened != 0) {
    whole.Error = opened == 1 ? "Not an instrument file (the name must end in xml or csv)."
                              : reader.ErrorText();
    return whole;
  }
  if (reader.ReadGeneralInfo(whole.Info) != 0) {
    whole.Error = reader.ErrorText();
    return whole;
  }
  ScreenInfo info;  // one record for every screen, as the driver keeps it
  int16_t log_x_in_use = 0;
  for (int32_t s = 0; s < whole.Info.ContextCount; ++s) {
    if (reader.ReadScreenConfig(s, info) != 0) {
      whole.Error = "Unknown digital measurement function \"" +
                    reader.Digital(s).MeasurementFunction + "\" on screen " +
                    std::to_string(s + 1) + ".";
      return whole;
    }
    ScreenRead screen;
    screen.Kind = reader.SetTimeAxis(info, s);
    screen.Markers = reader.ReadMarkers(s);
    screen.Scale = reader.SetXScaleType(s, info, settings, log_x_in_use);
    screen.TraceCount = reader.ScreenTraceCount(s);
    if (screen.TraceCount > 0) {
      screen.X = reader.XAxisData(s);
      for (int32_t t = 0; t < screen.TraceCount; ++t) {
        screen.Traces.push_back(reader.ReadTraceY(s, t));
      }
    }
    screen.Info = info;
    // Without the log-X option a logarithmic screen does not hand its flag on.
    if (!settings.LogXOption && screen.Scale.LogX != 0) log_x_in_use = 0;
    whole.Screens.push_back(std::move(screen));
  }
  return whole;
}

}  // namespace

WholeSource ReadWholeSource(SourceReader& reader, const std::string& path,
                            const XScaleSettings& settings) {
  return ReadOpened(reader, reader.OpenSource(path), settings);
}

WholeSource ReadWholeSourceBytes(SourceReader& reader, const std::string& path,
                                 std::string_view bytes, const XScaleSettings& settings) {
  return ReadOpened(reader, reader.OpenSourceBytes(path, bytes), settings);
}

}  // namespace z4400
