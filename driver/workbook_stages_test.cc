#include "driver/workbook_stages.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string_view>

#include "driver/converter.h"
#include "testing/instrument_cases.h"
#include "testing/instrument_generator.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

/// A converter over the real stages, saving into a scratch folder.
struct RealConversion {
  explicit RealConversion(const std::string& version = "16.0")
      : output(scratch / "out"),
        converter(ui, scratch.path(), [this, version](const StageContext& context) {
          auto made = std::make_unique<WorkbookStages>(context, version);
          stages = made.get();
          return made;
        }) {
    std::filesystem::create_directories(output);
    converter.SetFinishPause(0);
  }
  int32_t Start() { return converter.StartConversion(output.string(), true); }
  /// Lists the test case called `name`, written into the scratch folder.
  void AddCase(std::string_view name) {
    converter.AddFile(testing::WriteInstrumentCase(scratch.path(), name).string());
  }
  /// The shared application while it runs, else null.
  Application* RunningApplication() {
    const auto& application = stages->excel().application();
    return application && application->Running() ? application.get() : nullptr;
  }

  testing::ScratchDir scratch;
  std::filesystem::path output;
  testing::RecordingUi ui;
  WorkbookStages* stages = nullptr;
  Converter converter;
};

TEST(WorkbookStagesTest, OneFileKeepsTheSpreadsheetTwoQuitIt) {
  {
    RealConversion one;
    one.AddCase("band_scan_markers.xml");
    ASSERT_EQ(one.Start(), 0) << ::testing::PrintToString(one.ui.statuses);
    EXPECT_TRUE(std::filesystem::exists(one.output / "band_scan_markers.xlsx"));
    Application* application = one.RunningApplication();
    ASSERT_NE(application, nullptr) << "one file leaves the spreadsheet running";
    Workbook& workbook = application->ActiveWorkbook();
    EXPECT_EQ(workbook.Name(), "band_scan_markers.xlsx");
    EXPECT_EQ(workbook.ActiveSheet().Name(), "Report");
    std::vector<std::string> names;
    for (int i = 1; i <= workbook.Sheets().Count(); ++i)
      names.push_back(workbook.Sheets()(i).Name());
    EXPECT_EQ(names, (std::vector<std::string>{"Report", "Raw Data", "Markers Details"}));
    EXPECT_EQ(application->StatusBar(), "Finish") << "status texts reach the status bar";
    EXPECT_TRUE(application->DisplayAlerts()) << "alerts back on after the file";
  }
  {
    RealConversion two;
    two.AddCase("delta_markers.xml");
    two.AddCase("two_screens_markers.csv");
    ASSERT_EQ(two.Start(), 0);
    EXPECT_EQ(two.RunningApplication(), nullptr) << "two files quit it after each";
    EXPECT_TRUE(std::filesystem::exists(two.output / "delta_markers.xlsx"));
    EXPECT_TRUE(std::filesystem::exists(two.output / "two_screens_markers.xlsx"));
  }
}

TEST(WorkbookStagesTest, RejectedModelLeavesNoWorkbook) {
  RealConversion run;
  run.AddCase("rejected_model.xml");
  EXPECT_NE(run.Start(), 0);
  EXPECT_TRUE(run.ui.program_ended);
  ASSERT_EQ(run.ui.messages.size(), 1u);
  EXPECT_EQ(run.ui.messages[0].text, "Error occurred.\rExit from the application\r\rNot MQD data.");
  EXPECT_TRUE(std::filesystem::is_empty(run.output));
}

TEST(WorkbookStagesTest, ZeroVerticalScaleIsTheErrorText) {
  // The second screen of a generated file has a vertical scale of 0: the
  // file ends with the reason, and the partial workbook is kept.
  GeneratorOptions options;
  options.points = 21;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kSpectrum};
  GeneratedFile file = GenerateInstrumentFile(options);
  for (auto& [id, value] : file.screens[1].parameters) {
    if (id == "DD") value = "0";
  }
  RealConversion run;
  const std::filesystem::path source = run.scratch / "zero_scale.xml";
  std::ofstream(source) << InstrumentXml(file);
  run.converter.AddFile(source.string());
  EXPECT_NE(run.Start(), 0);
  EXPECT_TRUE(run.ui.program_ended);
  ASSERT_EQ(run.ui.messages.size(), 1u);
  EXPECT_EQ(run.ui.messages[0].text,
            "Error occurred.\rExit from the application\r\rVertical-axis scale is 0");
  EXPECT_TRUE(std::filesystem::exists(run.output / "zero_scale.xlsx"));
}

TEST(WorkbookStagesTest, OldSpreadsheetVersionsWriteXls) {
  RealConversion eight("8.0");
  eight.AddCase("delta_markers.xml");
  EXPECT_NE(eight.Start(), 0) << "below 9 the file ends through the failure path";
  EXPECT_TRUE(eight.ui.program_ended);
  EXPECT_EQ(eight.ui.messages.at(0).text, "Error occurred.\rExit from the application\r\r");

  RealConversion eleven("11.0");
  eleven.ui.save_answers = {""};
  eleven.AddCase("delta_markers.xml");
  eleven.converter.settings().UseOutputDirectory = 0;
  // With the check box off the save dialog proposes an ".xls" name.
  EXPECT_EQ(eleven.converter.StartConversion("", false), -1);
  ASSERT_EQ(eleven.ui.save_dialogs.size(), 1u);
  EXPECT_EQ(eleven.ui.save_dialogs[0].filter, "Excel Files (*.xls),*.xls");
  EXPECT_EQ(std::filesystem::path(eleven.ui.save_dialogs[0].initial_name).filename(),
            "delta_markers.xls");
}

}  // namespace
}  // namespace z4400
