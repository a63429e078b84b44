// Trace values, and the two X-axis steps of a screen: whether it is a time
// axis, and whether (and between which bounds) it is drawn logarithmically.
#include <string>
#include <utility>

#include "common/numeric_text.h"
#include "common/runtime_failure.h"
#include "common/table_sizes.h"
#include "source/source_reader.h"

namespace z4400 {

TraceData SourceReader::ReadTraceY(int screen, int trace_index) const {
  return IsXml() ? ReadTraceYXml(screen, trace_index) : ReadTraceYCsv(screen, trace_index);
}

TraceData SourceReader::ReadTraceYXml(int screen, int trace_index) const {
  const std::vector<pugi::xml_node>& tables = xml_.ScreenTables(std::to_string(screen));
  if (trace_index < 0 || static_cast<size_t>(trace_index) >= tables.size()) {
    throw RuntimeFailure("screen " + std::to_string(screen) + " has no trace table " +
                         std::to_string(trace_index));
  }
  const pugi::xml_node table = tables[static_cast<size_t>(trace_index)];
  TraceData trace;
  trace.Unit = table.attribute("Unit").value();
  const int points = current_trace_points_;
  if (points <= 0) return trace;
  // A point without an item reads as the missing level; the instrument
  // leaves such gaps when a sweep was interrupted.
  trace.Values.assign(static_cast<size_t>(points), kMissingPointLevel);
  XmlSource::ReadPointLevels(table, trace.Values);
  trace.ScreenUnit = Summary(screen).LevelUnit;
  trace.Copy = trace.Values;
  return trace;
}

TraceData SourceReader::ReadTraceYCsv(int screen, int trace_index) const {
  TraceData trace;
  const int points = current_trace_points_ > 0 ? current_trace_points_ : 0;
  trace.Values.assign(static_cast<size_t>(points), 0.0);
  trace.Copy.assign(static_cast<size_t>(points), 0.0);
  const int16_t context = grid_.FindRowWithValue("Context Nb", std::to_string(screen), 0, 0);
  int16_t context_end = grid_.FindRow("Context Nb", context + 1, 0);
  if (context > context_end) context_end = static_cast<int16_t>(grid_.LastRow() - 1);
  if (trace_index < 0 || trace_index + 1 >= kTraceTableRowSlots) {
    throw RuntimeFailure("trace " + std::to_string(trace_index) + " is outside the trace rows");
  }
  const int start = trace_table_rows_[static_cast<size_t>(trace_index)];
  int end = trace_table_rows_[static_cast<size_t>(trace_index) + 1];
  if (start > end) end = context_end;  // the last trace of the screen
  const int16_t first_point = grid_.FindRowWithValue("Point", "0", start, end);
  if (first_point < 1) return trace;
  trace.Unit = std::string(grid_.Cell(first_point - 1, 3));
  if (points == 0) return trace;
  for (int i = 0; i < points; ++i) {
    trace.Values[static_cast<size_t>(i)] = NumericValue(grid_.Cell(first_point + i, 3));
  }
  trace.ScreenUnit = Summary(screen).LevelUnit;
  trace.Copy = trace.Values;
  return trace;
}

XAxisKind SourceReader::SetTimeAxis(const ScreenInfo& info, int screen) {
  if (screen < 0 || screen >= kAxisTableSlots) {
    throw RuntimeFailure("screen " + std::to_string(screen) + " is outside the time-axis table");
  }
  TimeAxisEntry& entry = time_axis_[static_cast<size_t>(screen)];
  XAxisKind kind;
  if (info.Span != 0) {
    kind.IsTime = 0;
    entry.IsTime = 0;
  } else {
    kind.IsTime = -1;
    entry.IsTime = -1;
    entry.Unit = "sec";
    entry.Factor = 1;
    entry.Start = 0;
    entry.Stop = info.SweepTime;
  }
  kind.LevelUnit = info.LevelUnit;
  return kind;
}

const TimeAxisEntry& SourceReader::TimeAxis(int screen) const {
  if (screen < 0 || screen >= kAxisTableSlots) {
    throw RuntimeFailure("screen " + std::to_string(screen) + " is outside the time-axis table");
  }
  return time_axis_[static_cast<size_t>(screen)];
}

TimeAxisEntry& SourceReader::TimeAxis(int screen) {
  return const_cast<TimeAxisEntry&>(std::as_const(*this).TimeAxis(screen));
}

XAxisScale SourceReader::SetXScaleType(int screen, ScreenInfo& info, const XScaleSettings& settings,
                                       int16_t& log_x_in_use) const {
  XAxisScale scale;
  if (ScreenParameter("HS", screen) != "LOG") {
    info.LogX = 0;
    scale.LogX = 0;
    return scale;
  }
  info.LogX = -1;
  scale.LogX = -1;
  if (info.Span == 0) {
    scale.DataMin = 0;
    scale.DataMax = CheckedFinite(TimeAxis(screen).Factor * info.SweepTime, "the X axis");
    scale.AxisMax = PowerOfTenAbove(scale.DataMax);
    scale.AxisMin = scale.AxisMax / 10;
  } else {
    const double factor = settings.FrequencyFactor;
    scale.DataMin = CheckedDivide(info.StartFrequency, factor);
    scale.DataMax = CheckedDivide(info.StopFrequency, factor);
    scale.AxisMax =
        settings.SpreadsheetVersion >= 12 ? scale.DataMax : PowerOfTenAbove(scale.DataMax);
    if (scale.DataMin < 0) {
      scale.AxisMin = settings.LogXOption ? CheckedDivide(settings.XScaleThreshold, factor)
                                          : PowerOfTenAbove(scale.DataMax) / 10;
    } else {
      scale.AxisMin = PowerOfTenBelow(scale.DataMin);
    }
    if (log_x_in_use == 0) {
      if (scale.DataMin < 0) {
        scale.StartNegative = -1;
        if (!settings.LogXOption) log_x_in_use = 1;
      } else {
        scale.StartNegative = 0;
      }
    } else {
      scale.StartNegative = 0;
    }
  }
  info.StartNegative = scale.StartNegative;
  return scale;
}

double PowerOfTenAbove(double x) {
  double p = 1;
  while (x > p) p *= 10;
  return p;
}

double PowerOfTenBelow(double x) {
  double p = 1e10;
  while (true) {
    const volatile double scaled = x * 1.1;  // rounded to a double before the test
    if (!(scaled < p) || p == 0) break;      // a level below 0 would otherwise never end
    p /= 10;
  }
  return p;
}

}  // namespace z4400
