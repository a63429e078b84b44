#include "driver/workbook_stages.h"

#include <filesystem>
#include <utility>

#include "charts/chart_formatter.h"
#include "charts/chart_markers.h"
#include "charts/graph_sheets.h"
#include "charts/print_layout.h"
#include "charts/result_sheets.h"
#include "charts/trace_series.h"
#include "common/runtime_failure.h"
#include "common/trace_letters.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/screen_config_sheet.h"

namespace z4400 {

WorkbookStages::WorkbookStages(const StageContext& context, std::string version_text)
    : context_(context),
      version_text_(version_text),
      excel_(std::move(version_text)),
      chart_feedback_(context.status, context.ui) {
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
  if (screen < 0 || screen >= kAxisTableSlots) {
    throw RuntimeFailure("Subscript out of range: X axis table record " + std::to_string(screen));
  }
  return static_cast<size_t>(screen);
}

// ---- Run and file -------------------------------------------------------------

void WorkbookStages::ResetRunTables() { screen_units_.fill(ScreenUnits{}); }

void WorkbookStages::BeginFile() {
  x_axis_table_.fill(XAxisScale{});
  x_axis_kinds_.fill(XAxisKind{});
  x_values_ = XAxisValues{};
  raw_state_ = RawDataState{};
  marker_rows_ = MarkerListRows{};
  x_range_.reset();
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

void WorkbookStages::SaveWorkbook() {
  // Everything is read by now; the saved parts take the document's memory.
  source_.ReleaseDocument();
  RunningApplication().ActiveWorkbook().Save();
}

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

int16_t WorkbookStages::WriteGeneralInfo(const GeneralInfo& info, const std::string& sheet,
                                         const std::string& title) {
  const std::string file_name = std::filesystem::path(info.SourcePath).filename().string();
  return z4400::WriteGeneralInfo(excel_, info, file_name, sheet, title);
}

int16_t WorkbookStages::WriteScreenConfig(int screen, ScreenInfo& info) {
  const int16_t status =
      z4400::WriteScreenConfig(excel_, static_cast<int16_t>(screen), info, source_.Digital(screen),
                               screen_units_, source_.TimeAxis(screen));
  // The block's reason ("Vertical-axis scale is 0") is the error text the
  // failure message shows.
  if (status != 0) source_.SetErrorText(ScreenUnitsOf(screen_units_, screen).Message);
  return status;
}

RawScreenTables WorkbookStages::RawTables(int screen) {
  return RawTablesOf(source_, screen_units_, x_axis_table_[XAxisSlot(screen)], screen);
}

RawDataSettings WorkbookStages::RawSettings() const {
  return RawDataSettings{context_.settings.LogXInUse, context_.settings.XScaleThreshold,
                         context_.settings.LogXOption != 0};
}

void WorkbookStages::WriteRawXData(int screen, const GeneralInfo& info,
                                   const ScreenInfo& screen_info) {
  z4400::WriteRawXData(excel_, screen, x_values_, screen_info, info.TracePoints, RawTables(screen),
                       RawSettings(), raw_state_);
}

void WorkbookStages::PrepareScreenChart(int16_t top_row, int16_t end_row) {
  x_range_ = z4400::PrepareScreenChart(RunningApplication(), top_row, end_row);
}

std::string WorkbookStages::TraceLabel(int trace) { return TraceLetter(trace); }

void WorkbookStages::WriteRawTrace(int screen, int trace, const TraceData& trace_data) {
  z4400::WriteRawTraceData(excel_, screen, trace, trace_data, source_.CurrentTracePoints(),
                           RawTables(screen), RawSettings(), raw_state_);
}

void WorkbookStages::AddTraceSeries(const ScreenInfo& info, int trace,
                                    const TraceData& /*trace_data*/, int screen, int16_t top_row,
                                    int16_t end_row) {
  if (!x_range_)
    throw RuntimeFailure("Object variable not set: no chart for screen " +
                         std::to_string(screen + 1));
  z4400::AddTraceSeries(RunningApplication(), info, trace, *x_range_,
                        SeriesRows{top_row, end_row, raw_state_.LogXFirstRow}, screen,
                        ChartSettingsOf(context_.settings), chart_feedback_);
}

void WorkbookStages::FormatChart(const ScreenInfo& info, const GeneralInfo& general, int screen,
                                 int32_t /*trace_count*/) {
  const size_t slot = XAxisSlot(screen);
  const ChartAxisUnits units =
      ChartAxisUnitsOf(info, source_.Digital(screen), ScreenUnitsOf(screen_units_, screen),
                       source_.TimeAxis(screen), source_.Vertical(screen));
  const std::optional<YScale> y_scale =
      InstrumentYScale(info, source_.Digital(screen), source_.Vertical(screen));
  FormatScreenChart(RunningApplication(), info, general, screen, units, x_axis_table_[slot],
                    y_scale, ChartSettingsOf(context_.settings), chart_feedback_);
}

void WorkbookStages::WriteMarkersDetails(const MarkersInfo& markers, int screen) {
  z4400::WriteMarkersDetails(
      excel_, markers, MarkerAxesOf(x_axis_kinds_[XAxisSlot(screen)], source_.Digital(screen)),
      screen, marker_rows_);
}

void WorkbookStages::PlaceChartMarkers(const MarkersInfo& markers, const GeneralInfo& /*general*/,
                                       int /*screen*/) {
  z4400::PlaceChartMarkers(RunningApplication(), markers, chart_feedback_);
}

void WorkbookStages::CopyGraphSheets(const GeneralInfo& /*general*/,
                                     const MarkersInfo& /*markers*/) {
  z4400::CopyGraphSheets(RunningApplication(), spreadsheet_version_,
                         ChartSettingsOf(context_.settings));
}

void WorkbookStages::SetPrintLayout(const GeneralInfo& general) {
  const std::string file_name = std::filesystem::path(general.SourcePath).filename().string();
  z4400::SetPrintLayout(RunningApplication().ActiveWorkbook(), file_name, general.ContextCount);
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
  // The frequency factor of the screen's configuration block: X in its unit.
  settings.FrequencyFactor = ScreenUnitsOf(screen_units_, screen).XFactor;
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
