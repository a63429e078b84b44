#include "driver/workbook_stages.h"

#include <utility>

#include "charts/result_sheets.h"
#include "source/runtime_failure.h"

namespace z4400 {

WorkbookStages::WorkbookStages(const StageContext& context, std::string version_text)
    : context_(context), version_text_(version_text), excel_(std::move(version_text)) {
  context_.status.SetStatusBar([this](const std::string& text) {
    if (Application* application = ApplicationIfRunning()) application->SetStatusBar(text);
  });
}

WorkbookStages::~WorkbookStages() { context_.status.SetStatusBar({}); }

Application& WorkbookStages::RunningApplication() {
  if (ApplicationIfRunning() == nullptr) excel_.Excel_Start(false);
  return *excel_.application();
}

Application* WorkbookStages::ApplicationIfRunning() const {
  const std::shared_ptr<Application>& application = excel_.application();
  return application != nullptr && application->Running() ? application.get() : nullptr;
}

size_t WorkbookStages::XAxisSlot(int screen) {
  if (screen < 0 || screen >= kXAxisTableSize) {
    throw RuntimeFailure("Subscript out of range: X axis table record " + std::to_string(screen));
  }
  return static_cast<size_t>(screen);
}

// ---- Run and file -------------------------------------------------------------

void WorkbookStages::ResetRunTables() {
  // The per-trace unit tables of the raw data writer ("sec", "dBm", "Hz",
  // "dBm", factor 1) are reset here once that writer keeps them.
}

void WorkbookStages::BeginFile() {
  x_axis_table_.fill(XAxisScale{});
  x_axis_kinds_.fill(XAxisKind{});
  x_values_ = XAxisValues{};
}

void WorkbookStages::SetDisplayAlerts(bool on) {
  Application* application = on ? ApplicationIfRunning() : &RunningApplication();
  if (application != nullptr) application->SetDisplayAlerts(on);
}

void WorkbookStages::SetUpUnitNames() { unit_names_ = InitUnitNames(); }

// ---- Source ---------------------------------------------------------------------

int16_t WorkbookStages::OpenSource(const std::string& path) { return source_.OpenSource(path); }

int16_t WorkbookStages::ReadGeneralInfo(GeneralInfo& info) { return source_.ReadGeneralInfo(info); }

std::string WorkbookStages::ErrorText() const { return source_.ErrorText(); }

// ---- Spreadsheet application ------------------------------------------------------

std::string WorkbookStages::ProbeVersion() {
  version_probe_ = std::make_unique<Application>(version_text_);
  return version_probe_->Version();
}

void WorkbookStages::SetSpreadsheetVersion(int16_t version) { spreadsheet_version_ = version; }

void WorkbookStages::NewWorkbook() { RunningApplication().Workbooks().Add(); }

void WorkbookStages::ActivateWorksheet(const std::string& name) {
  Worksheet& sheet = RunningApplication().ActiveWorkbook().Worksheets()(name);
  sheet.Select();
  sheet.Activate();
}

void WorkbookStages::SaveWorkbook() { RunningApplication().ActiveWorkbook().Save(); }

void WorkbookStages::QuitSpreadsheet() {
  if (ApplicationIfRunning() != nullptr) excel_.Excel_Quit(false);
  version_probe_.reset();
}

// ---- Result sheets (sheet and chart stages) ------------------------------------------
//
// Each stage below is the one place where its writer is called.

void WorkbookStages::CreateResultSheets(const std::string& output_path) {
  z4400::CreateResultSheets(RunningApplication(), output_path);
}

int16_t WorkbookStages::WriteGeneralInfo(const GeneralInfo& /*info*/, const std::string& /*sheet*/,
                                         const std::string& /*title*/) {
  return 0;  // the general-information writer is called here
}

int16_t WorkbookStages::WriteScreenConfig(int /*screen*/, ScreenInfo& /*info*/) {
  return 0;  // the screen-configuration writer is called here
}

void WorkbookStages::WriteRawXData(int /*screen*/, const GeneralInfo& /*info*/,
                                   const ScreenInfo& /*screen_info*/) {
  // The raw data writer's X block (x_values_, x_axis_table_) is called here.
}

void WorkbookStages::PrepareScreenChart(int16_t /*top_row*/, int16_t /*end_row*/) {
  // The screen's empty chart and its X range are prepared here.
}

std::string WorkbookStages::TraceLabel(int trace) {
  static constexpr const char* kLetters[] = {"A", "B", "C", "M", "O"};
  return trace >= 0 && trace < 5 ? kLetters[trace] : "A";
}

void WorkbookStages::WriteRawTrace(int /*screen*/, int /*trace*/, const TraceData& /*trace_data*/) {
  // The raw data writer's trace block is called here.
}

void WorkbookStages::AddTraceSeries(const ScreenInfo& /*info*/, int /*trace*/,
                                    const TraceData& /*trace_data*/, int /*screen*/,
                                    int16_t /*top_row*/, int16_t /*end_row*/) {
  // The trace's chart series is added here.
}

void WorkbookStages::FormatChart(const ScreenInfo& /*info*/, const GeneralInfo& /*general*/,
                                 int /*screen*/, int32_t /*trace_count*/) {
  // The chart formatter is called here.
}

void WorkbookStages::WriteMarkersDetails(const MarkersInfo& /*markers*/, int /*screen*/) {
  // The markers details writer is called here.
}

void WorkbookStages::PlaceChartMarkers(const MarkersInfo& /*markers*/,
                                       const GeneralInfo& /*general*/, int /*screen*/) {
  // The chart markers are placed here.
}

void WorkbookStages::CopyGraphSheets(const GeneralInfo& /*general*/,
                                     const MarkersInfo& /*markers*/) {
  // The graph-sheet copier is called here.
}

// ---- Source stages of a screen ---------------------------------------------------------

int16_t WorkbookStages::ReadScreenConfig(int screen, ScreenInfo& info) {
  return source_.ReadScreenConfig(screen, info);
}

void WorkbookStages::SetTimeAxis(const ScreenInfo& info, int screen) {
  x_axis_kinds_[XAxisSlot(screen)] = source_.SetTimeAxis(info, screen);
}

int16_t WorkbookStages::ReadMarkers(int screen, MarkersInfo& markers) {
  markers = source_.ReadMarkers(screen);
  return 0;
}

void WorkbookStages::SetXScaleType(ScreenInfo& info, int screen) {
  XScaleSettings settings;
  settings.XScaleThreshold = context_.settings.XScaleThreshold;
  settings.LogXOption = context_.settings.LogXOption != 0;
  settings.SpreadsheetVersion = spreadsheet_version_;
  // The frequency factor of the screen's configuration block goes here once
  // that writer keeps it; 1 until then.
  settings.FrequencyFactor = 1;
  x_axis_table_[XAxisSlot(screen)] =
      source_.SetXScaleType(screen, info, settings, context_.settings.LogXInUse);
}

int16_t WorkbookStages::ScreenTraceCount(int screen, int32_t& count) {
  count = source_.ScreenTraceCount(screen);
  return 0;
}

int16_t WorkbookStages::ReadXAxisData(int screen) {
  x_values_ = source_.XAxisData(screen);
  return 0;
}

int16_t WorkbookStages::ReadTraceY(int screen, int trace, TraceData& trace_data) {
  trace_data = source_.ReadTraceY(screen, trace);
  return 0;
}

bool WorkbookStages::LogXMark(int screen) { return x_axis_table_[XAxisSlot(screen)].LogX != 0; }

StagesFactory WorkbookStagesFactory(std::string version_text) {
  return [version_text = std::move(version_text)](const StageContext& context) {
    return std::make_unique<WorkbookStages>(context, version_text);
  };
}

}  // namespace z4400
