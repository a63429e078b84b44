#include "driver/converter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "common/runtime_failure.h"
#include "driver/settings_file.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

/// What the scripted stages do; every stage succeeds unless told otherwise.
struct Script {
  int32_t screens = 1;
  int32_t points = 3;
  std::vector<int32_t> trace_counts = {2};  ///< per screen; missing = 1
  std::string version = "16.0";
  std::string fail_stage;    ///< returns status 1 from this stage
  std::string throw_stage;   ///< throws RuntimeFailure from this stage
  std::string cancel_stage;  ///< sets the cancel request flag here
  std::string error_text;    ///< the readers' error text
  int16_t markers_status = 0;
  std::set<int> log_x_screens;
};

/// Stages that follow a script and record every call.
class ScriptedStages : public ConversionStages {
 public:
  ScriptedStages(const Script& script, const StageContext& context, std::vector<std::string>& calls,
                 std::vector<int>& counters_at_file_start)
      : script_(script), context_(context), calls_(calls), counters_(counters_at_file_start) {}

  void ResetRunTables() override { Call("ResetRunTables"); }
  void BeginFile() override {
    counters_.push_back(context_.run.ProgressCounter);
    Call("BeginFile");
  }
  void SetDisplayAlerts(bool on) override { Call(on ? "DisplayAlerts on" : "DisplayAlerts off"); }
  void SetUpUnitNames() override { Call("SetUpUnitNames"); }
  int16_t OpenSource(const std::string& path) override {
    path_ = path;
    return Status("OpenSource " + path);
  }
  int16_t ReadGeneralInfo(GeneralInfo& info) override {
    info.SourcePath = path_;
    info.ContextCount = script_.screens;
    info.TracePoints = script_.points;
    return Status("ReadGeneralInfo");
  }
  std::string ErrorText() const override { return script_.error_text; }
  std::string ProbeVersion() override {
    Call("ProbeVersion");
    return script_.version;
  }
  void SetSpreadsheetVersion(int16_t version) override {
    Call("SetSpreadsheetVersion " + std::to_string(version));
  }
  void NewWorkbook() override { Call("NewWorkbook"); }
  void ActivateWorksheet(const std::string& name) override { Call("Activate " + name); }
  void SaveWorkbook() override { Call("SaveWorkbook"); }
  void QuitSpreadsheet() override { Call("QuitSpreadsheet"); }
  void CreateResultSheets(const std::string& output_path) override {
    Call("CreateResultSheets " + output_path);
  }
  int16_t WriteGeneralInfo(const GeneralInfo&, const std::string& sheet,
                           const std::string& title) override {
    return Status("WriteGeneralInfo " + sheet + " / " + title);
  }
  int16_t ReadScreenConfig(int screen, ScreenInfo&) override {
    return Status("ReadScreenConfig " + std::to_string(screen));
  }
  void SetTimeAxis(const ScreenInfo&, int screen) override {
    Call("SetTimeAxis " + std::to_string(screen));
  }
  int16_t ReadMarkers(int screen, MarkersInfo&) override {
    Call("ReadMarkers " + std::to_string(screen));
    return script_.markers_status;
  }
  int16_t WriteScreenConfig(int screen, ScreenInfo&) override {
    return Status("WriteScreenConfig " + std::to_string(screen));
  }
  void SetXScaleType(ScreenInfo&, int screen) override {
    Call("SetXScaleType " + std::to_string(screen));
  }
  int16_t ScreenTraceCount(int screen, int32_t& count) override {
    count =
        screen < static_cast<int>(script_.trace_counts.size()) ? script_.trace_counts[screen] : 1;
    return Status("ScreenTraceCount " + std::to_string(screen));
  }
  int16_t ReadXAxisData(int screen) override {
    return Status("ReadXAxisData " + std::to_string(screen));
  }
  void WriteRawXData(int screen, const GeneralInfo&, const ScreenInfo&) override {
    Call("WriteRawXData " + std::to_string(screen));
  }
  void PrepareScreenChart(int16_t top_row, int16_t end_row) override {
    Call("PrepareScreenChart " + std::to_string(top_row) + "-" + std::to_string(end_row));
  }
  std::string TraceLabel(int trace) override { return std::string(1, "ABCMO"[trace % 5]); }
  int16_t ReadTraceY(int screen, int trace, TraceData&) override {
    return Status("ReadTraceY " + std::to_string(screen) + " " + std::to_string(trace));
  }
  void WriteRawTrace(int screen, int trace, const TraceData&) override {
    Call("WriteRawTrace " + std::to_string(screen) + " " + std::to_string(trace));
  }
  void AddTraceSeries(const ScreenInfo&, int trace, const TraceData&, int screen, int16_t,
                      int16_t) override {
    Call("AddTraceSeries " + std::to_string(screen) + " " + std::to_string(trace));
  }
  void FormatChart(const ScreenInfo&, const GeneralInfo&, int screen, int32_t count) override {
    Call("FormatChart " + std::to_string(screen) + " " + std::to_string(count));
  }
  void WriteMarkersDetails(const MarkersInfo&, int screen) override {
    Call("WriteMarkersDetails " + std::to_string(screen));
  }
  void PlaceChartMarkers(const MarkersInfo&, const GeneralInfo&, int screen) override {
    Call("PlaceChartMarkers " + std::to_string(screen));
  }
  bool LogXMark(int screen) override { return script_.log_x_screens.count(screen) != 0; }
  void CopyGraphSheets(const GeneralInfo&, const MarkersInfo&) override { Call("CopyGraphSheets"); }
  void SetPrintLayout(const GeneralInfo& info) override {
    Call("SetPrintLayout " + std::to_string(info.ContextCount));
  }

 private:
  /// Records the call; acts on the script's failure, throw and cancel.
  void Call(const std::string& call) {
    calls_.push_back(call);
    const std::string stage = call.substr(0, call.find(' '));
    if (stage == script_.cancel_stage) context_.run.CancelRequest = kCancelRequested;
    if (stage == script_.throw_stage) throw RuntimeFailure("scripted failure in " + stage);
  }
  int16_t Status(const std::string& call) {
    Call(call);
    return call.substr(0, call.find(' ')) == script_.fail_stage ? 1 : 0;
  }

  const Script& script_;
  StageContext context_;
  std::vector<std::string>& calls_;
  std::vector<int>& counters_;
  std::string path_;
};

/// A converter over scripted stages, saving into a scratch folder with the
/// main window's check box on.
struct Fixture {
  Fixture()
      : converter(ui, scratch.path(), [this](const StageContext& context) {
          return std::make_unique<ScriptedStages>(script, context, calls, counters);
        }) {
    converter.SetFinishPause(0);
  }
  void List(int count) {
    for (int i = 1; i <= count; ++i) converter.AddFile("/data/file" + std::to_string(i) + ".xml");
  }
  int32_t Start() { return converter.StartConversion(scratch.path().string(), true); }
  int Count(const std::string& call) const {
    return static_cast<int>(std::count(calls.begin(), calls.end(), call));
  }
  std::vector<std::string> CallsStartingWith(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const std::string& call : calls) {
      if (call.rfind(prefix, 0) == 0) found.push_back(call);
    }
    return found;
  }

  testing::ScratchDir scratch;
  testing::RecordingUi ui;
  Script script;
  std::vector<std::string> calls;
  std::vector<int> counters;
  Converter converter;
};

TEST(ConverterTest, StatusTextsOfOneFileInOrder) {
  Fixture f;
  f.script.screens = 2;
  f.script.trace_counts = {2, 0};
  f.List(1);
  EXPECT_EQ(f.Start(), 0);
  const std::vector<std::string> expected = {
      "Analyzing the source file",
      "Reading general file information",
      "Check excel version",
      "Get output Data address",
      "Creating the output workbook",
      "Saving general information to the workbook",
      "Analyzing screen data",
      "Retrieving information about screen 1",
      "retrieving marker information",
      "Saving configuration information for screen 1",
      "Analyzing traces for screen 1",
      "Processing X axis data for screen 1",
      "Processing Y axis data for trace A",
      "Processing Y axis data for trace B",
      "Saving Marker information",
      "Displaying markers on the graph",
      "Retrieving information about screen 2",
      "retrieving marker information",
      "Saving configuration information for screen 2",
      "Analyzing traces for screen 2",
      "Saving Marker information",
      "Displaying markers on the graph",
      "Saving All",
      "Finish",
  };
  EXPECT_EQ(f.ui.statuses, expected);
  EXPECT_TRUE(f.ui.messages.empty());
  EXPECT_FALSE(f.ui.program_ended);
  EXPECT_EQ(f.CallsStartingWith("CreateResultSheets"),
            std::vector<std::string>{"CreateResultSheets " + (f.scratch / "file1").string()});
  EXPECT_EQ(f.CallsStartingWith("WriteGeneralInfo"),
            (std::vector<std::string>{"WriteGeneralInfo Report / Measurement Report",
                                      "WriteGeneralInfo Raw Data / Configuration and Traces"}));
  // A screen without traces: no X data, no block, no chart formatting.
  EXPECT_EQ(f.CallsStartingWith("FormatChart"), std::vector<std::string>{"FormatChart 0 2"});
  EXPECT_EQ(f.CallsStartingWith("ReadXAxisData"), std::vector<std::string>{"ReadXAxisData 0"});
  EXPECT_EQ(f.CallsStartingWith("WriteMarkersDetails").size(), 2u);
  // Laid out for printing, Report active, saved; one file keeps the
  // spreadsheet application.
  const std::vector<std::string> tail(f.calls.end() - 4, f.calls.end());
  EXPECT_EQ(tail, (std::vector<std::string>{"SetPrintLayout 2", "Activate Report", "SaveWorkbook",
                                            "DisplayAlerts on"}));
  EXPECT_EQ(f.Count("QuitSpreadsheet"), 0);
  EXPECT_EQ(f.ui.controls_enabled, (std::vector<bool>{false, true}));
  EXPECT_TRUE(f.ui.file_list.empty()) << "the list is cleared after the run";
  EXPECT_EQ(f.ui.percentages.back(), "0%");
  EXPECT_EQ(f.ui.progress_value(), 0);
}

TEST(ConverterTest, BlockRowsFollowTheTracePoints) {
  Fixture f;
  f.script.screens = 3;
  f.script.points = 3;
  f.script.trace_counts = {1, 1, 1};
  f.List(1);
  EXPECT_EQ(f.Start(), 0);
  EXPECT_EQ(f.CallsStartingWith("PrepareScreenChart"),
            (std::vector<std::string>{"PrepareScreenChart 12-15", "PrepareScreenChart 21-24",
                                      "PrepareScreenChart 30-33"}));
  int16_t top = 0;
  int16_t end = 0;
  EXPECT_THROW(ComputeBlockRows(32000, 1, top, end), RuntimeFailure);
  EXPECT_THROW(ComputeBlockRows(32760, 0, top, end), RuntimeFailure);  // end row overflows
}

TEST(ConverterTest, ProgressPerFileAndQuitWithSeveralFiles) {
  Fixture f;
  f.script.screens = 1;
  f.List(4);
  // Files announce different numbers of statuses: the bar still lands on
  // index × 50 after each.
  f.script.trace_counts = {3};
  EXPECT_EQ(f.Start(), 0);
  EXPECT_EQ(f.ui.progress_maximum, 200);
  EXPECT_EQ(f.counters, (std::vector<int>{0, 50, 100, 150}));
  EXPECT_NE(std::find(f.ui.percentages.begin(), f.ui.percentages.end(), "50%"),
            f.ui.percentages.end());
  EXPECT_EQ(f.Count("QuitSpreadsheet"), 4) << "two or more files quit after each";
  EXPECT_EQ(f.CallsStartingWith("OpenSource").back(), "OpenSource /data/file4.xml");
  EXPECT_EQ(f.converter.files().FileCount(), 0);
}

TEST(ConverterTest, TheUserInterfaceLearnsOfEachSavedWorkbookAndEachQuit) {
  // What the window needs to open the workbook left open after a run.
  struct Case {
    const char* name;
    int files;
    Script script;
    std::vector<std::string> told;  ///< workbook file names (saved) and "quit"
  };
  for (const Case& c : std::vector<Case>{
           {"one file stays open", 1, {}, {"file1.xlsx"}},
           {"below version 12", 1, {.version = "9.0"}, {"file1.xls"}},
           {"two files quit after each", 2, {}, {"file1.xlsx", "quit", "file2.xlsx", "quit"}},
           {"failure after the output was named",
            1,
            {.fail_stage = "WriteGeneralInfo"},
            {"file1.xlsx", "quit"}},
           {"failure before any workbook", 1, {.fail_stage = "ReadGeneralInfo"}, {}},
           {"a save that fails is not told", 1, {.throw_stage = "SaveWorkbook"}, {"quit"}},
           {"a quit that fails is not told",
            2,
            {.throw_stage = "QuitSpreadsheet"},
            {"file1.xlsx", "file1.xlsx"}},
           {"cancel once the sheets exist",
            1,
            {.cancel_stage = "CreateResultSheets"},
            {"file1.xlsx", "quit"}},
           {"cancel before the workbook has a file", 1, {.cancel_stage = "NewWorkbook"}, {"quit"}},
       }) {
    SCOPED_TRACE(c.name);
    Fixture f;
    f.script = c.script;
    f.List(c.files);
    f.Start();
    std::vector<std::string> expected;
    for (const std::string& told : c.told) {
      expected.push_back(told == "quit" ? told : "saved: " + (f.scratch / told).string());
    }
    EXPECT_EQ(f.ui.spreadsheet_events, expected);
  }
}

TEST(ConverterTest, FailuresEndTheProgram) {
  struct Case {
    const char* name;
    std::string fail_stage, throw_stage, version;
    bool workbook_saved;
  };
  for (const Case& c : std::vector<Case>{
           {"source kind", "OpenSource", "", "16.0", false},
           {"general information", "ReadGeneralInfo", "", "16.0", false},
           {"old spreadsheet", "", "", "8.0", false},
           {"sheet writer", "WriteGeneralInfo", "", "16.0", true},
           {"screen configuration", "ReadScreenConfig", "", "16.0", true},
           {"trace read", "ReadTraceY", "", "16.0", true},
           {"run-time failure in a chart stage", "", "AddTraceSeries", "16.0", true},
       }) {
    SCOPED_TRACE(c.name);
    Fixture f;
    f.script.fail_stage = c.fail_stage;
    f.script.throw_stage = c.throw_stage;
    f.script.version = c.version;
    f.script.error_text = "Not MQD data.";
    f.List(2);
    EXPECT_NE(f.Start(), 0);
    const std::string message = "Error occurred.\rExit from the application\r\rNot MQD data.";
    ASSERT_EQ(f.ui.messages.size(), 1u);
    EXPECT_EQ(f.ui.messages[0].kind, MessageKind::kCritical);
    EXPECT_EQ(f.ui.messages[0].title, "Error Message");
    EXPECT_EQ(f.ui.messages[0].text, message);
    // Announced, shown in the box and announced again, then "Ready".
    const std::vector<std::string> tail(f.ui.events.end() - 5, f.ui.events.end());
    EXPECT_EQ(tail,
              (std::vector<std::string>{"status: " + message, "message: Error Message: " + message,
                                        "status: " + message, "status: Ready", "end"}));
    EXPECT_TRUE(f.ui.program_ended);
    EXPECT_TRUE(f.converter.ProgramEnded());
    EXPECT_EQ(f.Count("SaveWorkbook"), c.workbook_saved ? 1 : 0);
    EXPECT_EQ(f.Count("QuitSpreadsheet"), c.workbook_saved ? 1 : 0);
    EXPECT_EQ(f.Count("OpenSource /data/file2.xml"), 0) << "nothing more is converted";
    EXPECT_EQ(f.ui.controls_enabled, std::vector<bool>{false}) << "FinishRun does not run";
    EXPECT_EQ(f.converter.files().FileCount(), 2) << "the list is not cleared";
  }
}

TEST(ConverterTest, DebugModeLetsRunTimeFailuresThrough) {
  Fixture f;
  f.converter.settings().DebugMode = 1;
  f.script.throw_stage = "AddTraceSeries";
  f.List(1);
  EXPECT_THROW(f.Start(), RuntimeFailure);
  EXPECT_FALSE(f.ui.program_ended);
  EXPECT_TRUE(f.ui.messages.empty());

  Fixture old;
  old.converter.settings().DebugMode = 1;
  old.script.version = "8";
  old.List(1);
  EXPECT_THROW(old.Start(), RuntimeFailure) << "the version message is never shown";

  // A failing stage status still takes the failure path in debug mode.
  Fixture status;
  status.converter.settings().DebugMode = 1;
  status.script.fail_stage = "ReadTraceY";
  status.List(1);
  EXPECT_NE(status.Start(), 0);
  EXPECT_TRUE(status.ui.program_ended);
}

TEST(ConverterTest, VersionDecidesGraphSheets) {
  struct Case {
    const char* version;
    int32_t graph_sheets;
    int copies;
  };
  for (const Case& c : std::vector<Case>{{"9.0", 1, 1},
                                         {"11.5", 1, 1},  // 11.5 rounds half to even: 12
                                         {"11.0", 0, 0},
                                         {"12.0", 1, 0},
                                         {"16.0", 1, 0}}) {
    SCOPED_TRACE(c.version);
    Fixture f;
    f.script.version = c.version;
    f.converter.settings().GraphSheets = c.graph_sheets;
    f.List(1);
    EXPECT_EQ(f.Start(), 0);
    const int copies = std::string(c.version) == "11.5" ? 0 : c.copies;
    EXPECT_EQ(f.Count("CopyGraphSheets"), copies);
    const int16_t version = VersionNumber(c.version);
    EXPECT_EQ(f.converter.run().SpreadsheetVersion, version);
    EXPECT_EQ(f.CallsStartingWith("CreateResultSheets").size(), 1u);
  }
  EXPECT_EQ(VersionNumber("16.0"), 16);
  EXPECT_EQ(VersionNumber("12.5"), 12);
  EXPECT_EQ(VersionNumber("x"), 0);
  EXPECT_THROW(VersionNumber("40000"), RuntimeFailure);
}

TEST(ConverterTest, QuietStops) {
  {
    SCOPED_TRACE("empty list: the open dialog chooses one file");
    Fixture f;
    f.ui.open_answers = {"/data/chosen.xml"};
    EXPECT_EQ(f.Start(), 0);
    EXPECT_EQ(f.ui.open_dialogs.size(), 1u);
    EXPECT_EQ(f.CallsStartingWith("OpenSource"),
              std::vector<std::string>{"OpenSource /data/chosen.xml"});
    EXPECT_EQ(f.ui.statuses.back(), "Finish");
  }
  {
    SCOPED_TRACE("empty list, dialog cancelled");
    Fixture f;
    EXPECT_EQ(f.Start(), -1);
    EXPECT_EQ(f.ui.statuses, (std::vector<std::string>{"Analyzing the source file", "Finish"}));
    EXPECT_FALSE(f.ui.program_ended);
  }
  {
    SCOPED_TRACE("second output cannot be named");
    Fixture f;
    f.List(2);
    std::ofstream(f.scratch / "file2.xlsx") << "old";
    f.ui.yes_no_answers = {false};  // do not overwrite; then cancel the dialog
    f.ui.save_answers = {""};
    EXPECT_EQ(f.Start(), -1);
    EXPECT_EQ(f.Count("SaveWorkbook"), 1) << "the first file stays converted";
    EXPECT_EQ(f.converter.files().FileCount(), 2) << "the list is not cleared";
    EXPECT_TRUE(f.ui.messages.empty());
    EXPECT_FALSE(f.ui.program_ended);
    EXPECT_EQ(f.ui.statuses.back(), "Finish");
    EXPECT_EQ(std::count(f.ui.statuses.begin(), f.ui.statuses.end(), "Ready"), 0);
  }
}

TEST(ConverterTest, MarkersStatusIsNotTestedAndLogXFlagIsCleared) {
  Fixture f;
  f.script.screens = 3;
  f.script.markers_status = 7;
  f.script.log_x_screens = {1};
  f.converter.settings().LogXOption = 0;
  f.converter.settings().LogXInUse = 1;
  f.List(1);
  EXPECT_EQ(f.Start(), 0);
  EXPECT_EQ(f.CallsStartingWith("PlaceChartMarkers").size(), 3u);
  EXPECT_EQ(f.converter.settings().LogXInUse, 0);

  Fixture option_on;
  option_on.script.log_x_screens = {0};
  option_on.converter.settings().LogXInUse = 1;
  option_on.List(1);
  EXPECT_EQ(option_on.Start(), 0);
  EXPECT_EQ(option_on.converter.settings().LogXInUse, 1) << "log-X option on keeps the flag";
}

TEST(ConverterTest, NoScreensStillSavesWithReportActive) {
  Fixture f;
  f.script.screens = 0;
  f.List(1);
  EXPECT_EQ(f.Start(), 0);
  EXPECT_TRUE(f.CallsStartingWith("ReadScreenConfig").empty());
  const std::vector<std::string> tail(f.calls.end() - 3, f.calls.end());
  EXPECT_EQ(tail,
            (std::vector<std::string>{"Activate Report", "SaveWorkbook", "DisplayAlerts on"}));
}

TEST(ConverterTest, CancelRequestReturnsInsteadOfEnding) {
  Fixture f;
  f.script.cancel_stage = "ReadScreenConfig";
  f.List(2);
  EXPECT_EQ(f.Start(), 0) << "a cancel without a failure keeps the stage's result";
  EXPECT_FALSE(f.ui.program_ended);
  EXPECT_TRUE(f.ui.messages.empty());
  // The flag stays set: the first file stops at its first screen with the
  // partial workbook saved, the second right after its source check,
  // before any workbook exists.
  EXPECT_EQ(f.Count("SaveWorkbook"), 1);
  EXPECT_EQ(f.CallsStartingWith("OpenSource").size(), 2u);
  EXPECT_EQ(f.Count("Activate Report"), 0);
  EXPECT_NE(std::find(f.ui.statuses.begin(), f.ui.statuses.end(), "Ready"), f.ui.statuses.end());

  Fixture failed;
  failed.script.cancel_stage = "OpenSource";
  failed.script.fail_stage = "ReadGeneralInfo";
  failed.List(1);
  EXPECT_EQ(failed.Start(), 0) << "cancelled right after the source check";
  EXPECT_FALSE(failed.ui.program_ended);
  EXPECT_EQ(failed.CallsStartingWith("ReadGeneralInfo").size(), 0u);
}

TEST(ConverterTest, LogOfARun) {
  Fixture f;
  f.converter.settings().LogEnabled = 1;
  f.script.fail_stage = "ReadGeneralInfo";
  f.script.error_text = "Not MQD data.";
  f.List(1);
  f.Start();
  std::ifstream log(f.scratch / kLogFileName, std::ios::binary);
  std::vector<std::string> texts;
  for (std::string line; std::getline(log, line);) {
    ASSERT_FALSE(line.empty());
    ASSERT_EQ(line.back(), '\r');
    // "date time text": the text follows the second blank.
    const size_t second_blank = line.find(' ', line.find(' ') + 1);
    texts.push_back(line.substr(second_blank + 1, line.size() - second_blank - 2));
  }
  const std::string message = "Error occurred.Exit from the applicationNot MQD data.";
  EXPECT_EQ(texts, (std::vector<std::string>{"Analyzing the source file",
                                             "Reading general file information", message, message,
                                             "Ready"}));

  Fixture done;
  done.converter.settings().LogEnabled = 1;
  done.script.screens = 0;
  done.List(1);
  done.Start();
  std::ifstream done_log(done.scratch / kLogFileName, std::ios::binary);
  std::string last;
  for (std::string line; std::getline(done_log, line);) last = line;
  EXPECT_EQ(last.substr(last.size() - 71), std::string(kLogRunSeparator) + "\r");
}

TEST(ConverterTest, TheFileObserverHearsOfEveryFileAndMayEndTheRun) {
  struct Case {
    const char* name;
    std::string fail_stage, throw_stage, error_text;
    int stop_after;  ///< the observer ends the run after this file (0: never)
    std::vector<int16_t> results;
    std::vector<std::string> details;
    int32_t returned;
  };
  const std::string failure = "scripted failure in AddTraceSeries";
  for (const Case& c : std::vector<Case>{
           {"all converted", "", "", "", 0, {0, 0, 0}, {"", "", ""}, 0},
           {"ended by the observer", "", "", "", 2, {0, 0}, {"", ""}, kStoppedQuietly},
           {"a stage fails", "ReadGeneralInfo", "", "Not MQD data.", 0, {1}, {""}, 1},
           {"a run-time failure", "", "AddTraceSeries", "", 0, {1}, {failure}, 1},
       }) {
    SCOPED_TRACE(c.name);
    Fixture f;
    f.script.fail_stage = c.fail_stage;
    f.script.throw_stage = c.throw_stage;
    f.script.error_text = c.error_text;
    f.List(3);
    std::vector<FileOutcome> outcomes;
    f.converter.SetFileObserver([&](const FileOutcome& outcome) {
      outcomes.push_back(outcome);
      return static_cast<int>(outcomes.size()) != c.stop_after;
    });
    EXPECT_EQ(f.Start(), c.returned);
    ASSERT_EQ(outcomes.size(), c.results.size());
    for (size_t i = 0; i < outcomes.size(); ++i) {
      const std::string source = "/data/file" + std::to_string(i + 1) + ".xml";
      EXPECT_EQ(outcomes[i].ListIndex, static_cast<int>(i));
      EXPECT_EQ(outcomes[i].SourcePath, source);
      EXPECT_EQ(outcomes[i].Result, c.results[i]);
      EXPECT_EQ(outcomes[i].ErrorText, c.results[i] == 0 ? "" : c.error_text);
      EXPECT_EQ(outcomes[i].FailureDetail, c.details[i]);
      const bool named = c.fail_stage != "ReadGeneralInfo";
      EXPECT_EQ(outcomes[i].WorkbookPath,
                named ? (f.scratch / ("file" + std::to_string(i + 1) + ".xlsx")).string() : "");
    }
    EXPECT_EQ(f.Count("OpenSource /data/file3.xml"), c.returned == 0 ? 1 : 0);
  }
}

TEST(ConverterTest, ALogSinkTakesTheLinesOfTheLog) {
  Fixture f;
  f.converter.settings().LogEnabled = 1;
  std::vector<std::string> lines;
  f.converter.status().SetLogSink([&lines](const std::string& line) { lines.push_back(line); });
  f.script.screens = 0;
  f.List(1);
  f.Start();
  EXPECT_FALSE(std::filesystem::exists(f.scratch / kLogFileName));
  ASSERT_GE(lines.size(), 3u);
  // "date time text", without a line end.
  EXPECT_EQ(lines.front().substr(20), "Analyzing the source file");
  EXPECT_EQ(lines.back().substr(20), kLogRunSeparator);
  EXPECT_EQ(lines.back().find('\r'), std::string::npos);
}

TEST(ConverterTest, SettingsAndListOperations) {
  Fixture f;
  f.converter.LoadSettings();
  EXPECT_EQ(f.converter.settings(), Settings{}) << "no Data.ini: defaults";
  f.converter.settings().LineWeightIndex = 2;
  f.converter.SaveSettings();
  f.converter.InitDefaults();
  EXPECT_EQ(f.converter.settings().LineWeightIndex, 1);
  f.converter.LoadSettings();
  EXPECT_EQ(f.converter.settings().LineWeightIndex, 2);
  EXPECT_TRUE(f.ui.messages.empty());

  testing::RecordingUi ui;
  Converter missing(ui, f.scratch / "gone",
                    [](const StageContext&) { return std::unique_ptr<ConversionStages>(); });
  missing.LoadSettings();
  missing.SaveSettings();
  ASSERT_EQ(ui.messages.size(), 2u);
  EXPECT_EQ(ui.messages[0].text, "Can not find Directory.");
  EXPECT_EQ(ui.messages[1].text, "Can not find Directory.");

  for (int i = 0; i < 105; ++i) f.converter.AddFile("/d/" + std::to_string(i) + ".csv");
  f.converter.AddFile("/d/a.XML");
  EXPECT_EQ(f.converter.files().FileCount(), 100);
  EXPECT_EQ(f.ui.file_list.size(), 100u);
  EXPECT_EQ(f.ui.messages.size(), 5u);
  EXPECT_EQ(f.ui.messages.back().text, "Error");
  f.converter.RemoveSelectedFiles({0});
  EXPECT_EQ(f.ui.file_list.front(), "1.csv");
  f.converter.ClearFileList();
  EXPECT_TRUE(f.ui.file_list.empty());
}

}  // namespace
}  // namespace z4400
