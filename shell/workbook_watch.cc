#include "shell/workbook_watch.h"

#include <utility>

#include "workbook/model/workbook_file.h"

namespace z4400 {

WorkbookWatchStages::WorkbookWatchStages(std::unique_ptr<ConversionStages> inner,
                                         WatchedWorkbook& watched)
    : inner_(std::move(inner)), watched_(watched) {}

void WorkbookWatchStages::ResetRunTables() { inner_->ResetRunTables(); }
void WorkbookWatchStages::BeginFile() { inner_->BeginFile(); }
void WorkbookWatchStages::SetDisplayAlerts(bool on) { inner_->SetDisplayAlerts(on); }
void WorkbookWatchStages::SetUpUnitNames() { inner_->SetUpUnitNames(); }
int16_t WorkbookWatchStages::OpenSource(const std::string& path) {
  return inner_->OpenSource(path);
}
int16_t WorkbookWatchStages::ReadGeneralInfo(GeneralInfo& info) {
  return inner_->ReadGeneralInfo(info);
}
std::string WorkbookWatchStages::ErrorText() const { return inner_->ErrorText(); }

std::string WorkbookWatchStages::ProbeVersion() {
  version_text_ = inner_->ProbeVersion();
  return version_text_;
}

void WorkbookWatchStages::SetSpreadsheetVersion(int16_t version) {
  inner_->SetSpreadsheetVersion(version);
}

void WorkbookWatchStages::NewWorkbook() {
  workbook_path_.clear();
  inner_->NewWorkbook();
}

void WorkbookWatchStages::ActivateWorksheet(const std::string& name) {
  inner_->ActivateWorksheet(name);
}

void WorkbookWatchStages::SaveWorkbook() {
  inner_->SaveWorkbook();
  watched_.open_path = workbook_path_;
}

void WorkbookWatchStages::QuitSpreadsheet() {
  inner_->QuitSpreadsheet();
  watched_.open_path.clear();
}

void WorkbookWatchStages::CreateResultSheets(const std::string& output_path) {
  inner_->CreateResultSheets(output_path);
  workbook_path_ = WorkbookFilePath(output_path, version_text_).string();
}

int16_t WorkbookWatchStages::WriteGeneralInfo(const GeneralInfo& info, const std::string& sheet,
                                              const std::string& title) {
  return inner_->WriteGeneralInfo(info, sheet, title);
}
int16_t WorkbookWatchStages::ReadScreenConfig(int screen, ScreenInfo& info) {
  return inner_->ReadScreenConfig(screen, info);
}
void WorkbookWatchStages::SetTimeAxis(const ScreenInfo& info, int screen) {
  inner_->SetTimeAxis(info, screen);
}
int16_t WorkbookWatchStages::ReadMarkers(int screen, MarkersInfo& markers) {
  return inner_->ReadMarkers(screen, markers);
}
int16_t WorkbookWatchStages::WriteScreenConfig(int screen, ScreenInfo& info) {
  return inner_->WriteScreenConfig(screen, info);
}
void WorkbookWatchStages::SetXScaleType(ScreenInfo& info, int screen) {
  inner_->SetXScaleType(info, screen);
}
int16_t WorkbookWatchStages::ScreenTraceCount(int screen, int32_t& count) {
  return inner_->ScreenTraceCount(screen, count);
}
int16_t WorkbookWatchStages::ReadXAxisData(int screen) { return inner_->ReadXAxisData(screen); }
void WorkbookWatchStages::WriteRawXData(int screen, const GeneralInfo& info,
                                        const ScreenInfo& screen_info) {
  inner_->WriteRawXData(screen, info, screen_info);
}
void WorkbookWatchStages::PrepareScreenChart(int16_t top_row, int16_t end_row) {
  inner_->PrepareScreenChart(top_row, end_row);
}
std::string WorkbookWatchStages::TraceLabel(int trace) { return inner_->TraceLabel(trace); }
int16_t WorkbookWatchStages::ReadTraceY(int screen, int trace, TraceData& trace_data) {
  return inner_->ReadTraceY(screen, trace, trace_data);
}
void WorkbookWatchStages::WriteRawTrace(int screen, int trace, const TraceData& trace_data) {
  inner_->WriteRawTrace(screen, trace, trace_data);
}
void WorkbookWatchStages::AddTraceSeries(const ScreenInfo& info, int trace,
                                         const TraceData& trace_data, int screen, int16_t top_row,
                                         int16_t end_row) {
  inner_->AddTraceSeries(info, trace, trace_data, screen, top_row, end_row);
}
void WorkbookWatchStages::FormatChart(const ScreenInfo& info, const GeneralInfo& general,
                                      int screen, int32_t trace_count) {
  inner_->FormatChart(info, general, screen, trace_count);
}
void WorkbookWatchStages::WriteMarkersDetails(const MarkersInfo& markers, int screen) {
  inner_->WriteMarkersDetails(markers, screen);
}
void WorkbookWatchStages::PlaceChartMarkers(const MarkersInfo& markers, const GeneralInfo& general,
                                            int screen) {
  inner_->PlaceChartMarkers(markers, general, screen);
}
bool WorkbookWatchStages::LogXMark(int screen) { return inner_->LogXMark(screen); }
void WorkbookWatchStages::CopyGraphSheets(const GeneralInfo& general, const MarkersInfo& markers) {
  inner_->CopyGraphSheets(general, markers);
}

void WorkbookWatchStages::SetPrintLayout(const GeneralInfo& general) {
  inner_->SetPrintLayout(general);
}

StagesFactory WatchedStagesFactory(StagesFactory make_stages, WatchedWorkbook& watched) {
  return [make_stages = std::move(make_stages), &watched](const StageContext& context) {
    return std::make_unique<WorkbookWatchStages>(make_stages(context), watched);
  };
}

}  // namespace z4400
