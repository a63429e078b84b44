#include "driver/chart_stage_feedback.h"

namespace z4400 {

void ChartStageFeedback::SetStatus(const std::string& text) { status_.SetStatus(text); }

void ChartStageFeedback::ShowMessage(ChartMessageKind kind, const std::string& title,
                                     const std::string& text) {
  // The desktop has no icon-less box: the plain message shows as information.
  ui_.ShowMessage(
      kind == ChartMessageKind::kWarning ? MessageKind::kWarning : MessageKind::kInformation, title,
      text);
}

ChartSettings ChartSettingsOf(const Settings& settings) {
  ChartSettings chart;
  chart.GraphSheets = settings.GraphSheets;
  chart.LineWeightIndex = settings.LineWeightIndex;
  chart.TraceAColor = settings.TraceAColor;
  chart.TraceBColor = settings.TraceBColor;
  chart.TraceCColor = settings.TraceCColor;
  chart.TraceMColor = settings.TraceMColor;
  chart.TraceOColor = settings.TraceOColor;
  chart.PlotAreaColor = settings.PlotAreaColor;
  chart.DivisionLineColor = settings.DivisionLineColor;
  chart.LogXInUse = settings.LogXInUse;
  chart.LogXOption = settings.LogXOption;
  return chart;
}

}  // namespace z4400
