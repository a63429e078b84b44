#include "driver/chart_stage_feedback.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "driver/converter.h"
#include "driver/workbook_stages.h"
#include "testing/instrument_generator.h"
#include "testing/recording_ui.h"

namespace z4400 {
namespace {

/// A folder whose path has no dot: output names are cut at the first dot of
/// the source path, and the scratch folders are named after their test.
struct PlainFolder {
  PlainFolder()
      : path(std::filesystem::temp_directory_path() /
             ("z4400-chart-feedback-" + std::to_string(::getpid()) + "-" +
              std::to_string(++count))) {
    std::filesystem::create_directories(path);
  }
  ~PlainFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  std::filesystem::path operator/(const std::string& name) const { return path / name; }
  std::filesystem::path path;
  static inline int count = 0;
};

/// A small generated file whose marker 1 of screen `screen` is on trace
/// `trace` (a letter as the file holds it).
std::filesystem::path MarkedFile(const std::filesystem::path& folder, int screen,
                                 const std::string& trace) {
  GeneratorOptions options;
  options.points = 21;
  options.traces = 2;
  options.markers = 1;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kSpectrum};
  GeneratedFile file = GenerateInstrumentFile(options);
  for (GeneratedScreen& each : file.screens) {
    for (GeneratedMarker& marker : each.markers) {
      for (auto& [id, value] : marker.parameters) {
        if (id == "MKRTRACE") value = "A";
        if (id == "MKRON") value = "ON";
      }
    }
  }
  for (auto& [id, value] : file.screens[static_cast<size_t>(screen)].markers[0].parameters) {
    if (id == "MKRTRACE") value = trace;
  }
  const std::filesystem::path path = folder / "marked.xml";
  std::ofstream(path, std::ios::binary) << InstrumentXml(file);
  return path;
}

/// Converts `source` with the real stages; the result of the run.
int32_t Convert(const std::filesystem::path& source, testing::RecordingUi& ui,
                const std::filesystem::path& folder) {
  Converter converter(ui, folder, WorkbookStagesFactory());
  converter.SetFinishPause(0);
  converter.AddFile(source.string());
  return converter.StartConversion(folder.string(), true);
}

TEST(ChartStageFeedbackTest, MarkerWarningsReachTheUserAndOnlyOneEndsTheFile) {
  {
    // A marker on a trace the chart does not know: a warning, and the file
    // is still converted.
    PlainFolder scratch;
    testing::RecordingUi ui;
    EXPECT_EQ(Convert(MarkedFile(scratch.path, 0, "D"), ui, scratch.path), 0);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].kind, MessageKind::kWarning);
    EXPECT_EQ(ui.messages[0].title, "Warning !!!");
    EXPECT_EQ(ui.messages[0].text, "No trace identified for marker 1");
    EXPECT_TRUE(std::filesystem::exists(scratch / "marked.xlsx"));
    // The chart stages announce themselves on the status line.
    for (const char* status :
         {"Adding trace A to the graph", "Adding trace B to the graph", "Formatting the graph"}) {
      EXPECT_NE(std::find(ui.statuses.begin(), ui.statuses.end(), status), ui.statuses.end())
          << status;
    }
  }
  {
    // The second screen's marker on its second trace: the message, then the
    // missing series ends the file on the failure path.
    PlainFolder scratch;
    testing::RecordingUi ui;
    EXPECT_NE(Convert(MarkedFile(scratch.path, 1, "B"), ui, scratch.path), 0);
    ASSERT_GE(ui.messages.size(), 2u);
    EXPECT_EQ(ui.messages[0].kind, MessageKind::kInformation);
    EXPECT_EQ(ui.messages[0].title, "");
    EXPECT_EQ(ui.messages[0].text, "impossible trace/screen configuration");
    EXPECT_EQ(ui.messages[1].kind, MessageKind::kCritical);
    EXPECT_EQ(ui.messages[1].text.rfind("Error occurred.", 0), 0u);
    EXPECT_TRUE(ui.program_ended);
  }
}

TEST(ChartStageFeedbackTest, ChartSettingsAreTheSettingsItems) {
  Settings settings;
  settings.GraphSheets = 0;
  settings.LineWeightIndex = 3;
  settings.SetChartColors({1, 2, 3, 4, 5, 6, 7});
  settings.LogXInUse = 1;
  settings.LogXOption = 0;
  const ChartSettings chart = ChartSettingsOf(settings);
  EXPECT_EQ(chart.GraphSheets, 0);
  EXPECT_EQ(chart.LineWeightIndex, 3);
  EXPECT_EQ(chart.TraceAColor, 1);
  EXPECT_EQ(chart.TraceBColor, 2);
  EXPECT_EQ(chart.TraceCColor, 3);
  EXPECT_EQ(chart.TraceMColor, 4);
  EXPECT_EQ(chart.TraceOColor, 5);
  EXPECT_EQ(chart.PlotAreaColor, 6);
  EXPECT_EQ(chart.DivisionLineColor, 7);
  EXPECT_EQ(chart.LogXInUse, 1);
  EXPECT_EQ(chart.LogXOption, 0);
  // The chart builders' defaults are the settings' defaults.
  const ChartSettings defaults = ChartSettingsOf(Settings{});
  const ChartSettings own;
  EXPECT_EQ(defaults.TraceAColor, own.TraceAColor);
  EXPECT_EQ(defaults.TraceOColor, own.TraceOColor);
  EXPECT_EQ(defaults.PlotAreaColor, own.PlotAreaColor);
  EXPECT_EQ(defaults.DivisionLineColor, own.DivisionLineColor);
  EXPECT_EQ(defaults.LineWeightIndex, own.LineWeightIndex);
}

}  // namespace
}  // namespace z4400
