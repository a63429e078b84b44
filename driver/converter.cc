#include "driver/converter.h"

#include <exception>
#include <utility>

#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "common/table_sizes.h"
#include "driver/file_dialogs.h"
#include "driver/settings_file.h"
#include "workbook/model/workbook_file.h"

namespace z4400 {
namespace {

/// Lowest spreadsheet version the converter works with.
constexpr int16_t kOldestVersion = 9;
/// From this version on workbooks are ".xlsx" and graph sheets are not made.
constexpr int16_t kXlsxVersion = 12;

}  // namespace

/// How a file's steps ended.
enum class Converter::Flow {
  kReturn,     ///< return the job's result as it stands
  kFailed,     ///< go to step F
  kCancelled,  ///< go to step C
};

std::string FailureMessage(const std::string& error_text) {
  return std::string(kErrorOccurred) + "\r" + kExitFromApplication + "\r\r" + error_text;
}

Converter::Converter(UserInterface& ui, std::filesystem::path settings_folder,
                     const StagesFactory& make_stages)
    : ui_(ui), status_(ui, settings_, run_, files_, std::move(settings_folder)) {
  stages_ = make_stages(StageContext{settings_, run_, status_, ui_});
}

Converter::~Converter() = default;

// ---- Settings ---------------------------------------------------------------

void Converter::InitDefaults() {
  settings_ = Settings{};
  run_ = RunState{};
  files_.ClearFileList();
}

void Converter::LoadSettings() {
  if (ReadSettingsFile(status_.folder(), settings_) == SettingsFileStatus::kMissingFolder) {
    status_.ShowError(kMissingFolderMessage);
  }
}

void Converter::SaveSettings() {
  std::string error;
  switch (WriteSettingsFile(status_.folder(), settings_, &error)) {
    case SettingsFileStatus::kMissingFolder:
      status_.ShowError(kMissingFolderMessage);
      break;
    case SettingsFileStatus::kWriteFailed:
      status_.ShowError(error);
      break;
    default:
      break;
  }
}

// ---- Source-file list -----------------------------------------------------------

void Converter::AddFile(const std::string& path) {
  switch (files_.AddFile(path)) {
    case FileList::AddStatus::kAdded:
      ShowFileList();
      break;
    case FileList::AddStatus::kFull:
      status_.ShowError("Error");
      break;
    case FileList::AddStatus::kIgnored:
      break;
  }
}

void Converter::AddFileByDialog() { z4400::AddFileByDialog(files_, ui_); }

void Converter::RemoveSelectedFiles(const std::vector<int>& selected_rows) {
  files_.RemoveSelectedFiles(selected_rows);
  ShowFileList();
}

void Converter::ClearFileList() {
  files_.ClearFileList();
  ShowFileList();
}

void Converter::ShowFileList() { ui_.ShowFileList(files_.Names()); }

// ---- Run --------------------------------------------------------------------------

int32_t Converter::StartConversion(const std::string& output_directory, bool use_output_directory) {
  ui_.SetControlsEnabled(false);
  ResetRun();
  run_.OutputDirectory = output_directory;
  run_.UseOutputDirectory = use_output_directory ? 1 : 0;
  const int32_t result = ConvertAllFiles();
  if (run_.ProgramEnded) return result;
  FinishRun();
  return result;
}

int32_t Converter::ConvertAllFiles() {
  files_.SetCurrentIndex(0);
  for (;;) {
    const int16_t result = ConvertFile();
    if (result != 0) return result;
    if (!go_on_) return kStoppedQuietly;
    const int index = files_.CurrentIndex() + 1;
    files_.SetCurrentIndex(index);
    // The counter lands on exactly index × 50 whatever the file announced.
    run_.ProgressCounter = static_cast<int16_t>(index * kStepsPerFile - 1);
    status_.UpdateProgress();
    if (index >= files_.FileCount()) {
      ClearFileList();
      return 0;
    }
  }
}

void Converter::ResetRun() {
  run_.OutputDirectory.clear();
  run_.QuitCount = 0;
  files_.SetCurrentIndex(0);
  stages_->ResetRunTables();
  status_.ResetProgress();
}

void Converter::FinishRun() {
  status_.SetStatus("Finish");
  if (settings_.LogEnabled != 0) status_.AppendLog(kLogRunSeparator);
  status_.WaitSeconds(finish_pause_seconds_);
  status_.ClearProgress();
  ui_.SetControlsEnabled(true);
}

// ---- One file -----------------------------------------------------------------------

int16_t Converter::ConvertFile() {
  ConversionJob job;
  Flow flow = Flow::kReturn;
  std::string failure_detail;
  go_on_ = true;
  if (settings_.DebugMode != 0) {
    flow = ConvertFileSteps(job);
  } else {
    try {
      flow = ConvertFileSteps(job);
    } catch (const std::exception& failure) {
      failure_detail = failure.what();
      flow = Flow::kFailed;
    }
  }
  switch (flow) {
    case Flow::kFailed:
      EndFile(job, Ending::kFailure);
      break;
    case Flow::kCancelled:
      EndFile(job, Ending::kCancel);
      break;
    case Flow::kReturn:
      break;
  }
  go_on_ = Report(job, failure_detail);
  return job.Result;
}

bool Converter::Report(const ConversionJob& job, const std::string& failure_detail) {
  if (!observer_) return true;
  FileOutcome outcome;
  outcome.ListIndex = files_.CurrentIndex();
  outcome.SourcePath = job.SourcePath;
  if (!job.OutputPath.empty()) {
    outcome.WorkbookPath = job.OutputPath + "." + OutputKindFor(job.SpreadsheetVersion).extension;
  }
  outcome.Result = job.Result;
  if (job.Result != 0 && job.Result != kStoppedQuietly) outcome.ErrorText = run_.ErrorText;
  outcome.FailureDetail = failure_detail;
  return observer_(outcome);
}

Converter::Flow Converter::ConvertFileSteps(ConversionJob& job) {
  stages_->SetDisplayAlerts(false);
  stages_->SetUpUnitNames();
  stages_->BeginFile();

  status_.SetStatus("Analyzing the source file");
  job.SourcePath = ChooseSourceFile(files_, ui_);
  if (job.SourcePath.empty()) {
    job.Result = kStoppedQuietly;
    return Flow::kReturn;
  }
  job.Result = stages_->OpenSource(job.SourcePath);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;

  status_.SetStatus("Reading general file information");
  job.Result = stages_->ReadGeneralInfo(job.General);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;

  status_.SetStatus("Check excel version");
  const std::string version_text = stages_->ProbeVersion();
  job.SpreadsheetVersion = VersionNumber(version_text);
  if (job.SpreadsheetVersion < kOldestVersion) {
    // The version message adds a text to a number, which the runtime
    // rejects: an old spreadsheet ends the file through the failure path
    // without the message ever being shown.
    throw RuntimeFailure("type mismatch: \"Your Excel version is \" + " +
                         std::to_string(job.SpreadsheetVersion));
  }
  run_.SpreadsheetVersion = job.SpreadsheetVersion;
  stages_->SetSpreadsheetVersion(job.SpreadsheetVersion);

  stages_->NewWorkbook();
  job.WorkbookCreated = true;

  status_.SetStatus("Get output Data address");
  job.OutputPath =
      ChooseOutputPath(job.General, job.SpreadsheetVersion, {settings_, run_, status_});
  if (job.OutputPath.empty()) {
    job.Result = kStoppedQuietly;
    return Flow::kReturn;
  }
  if (CancelRequested()) return Flow::kCancelled;

  status_.SetStatus("Creating the output workbook");
  stages_->CreateResultSheets(job.OutputPath);
  job.WorkbookFile = WorkbookFilePath(job.OutputPath, version_text).string();
  if (CancelRequested()) return Flow::kCancelled;

  status_.SetStatus("Saving general information to the workbook");
  job.Result =
      stages_->WriteGeneralInfo(job.General, std::string(kReportSheet), "Measurement Report");
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;
  job.Result = stages_->WriteGeneralInfo(job.General, std::string(kRawDataSheet),
                                         "Configuration and Traces");
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;

  status_.SetStatus("Analyzing screen data");
  for (job.ScreenIndex = 0; job.ScreenIndex < job.General.ContextCount; ++job.ScreenIndex) {
    const Flow flow = ConvertScreen(job);
    if (flow != Flow::kReturn) return flow;
  }

  if (job.SpreadsheetVersion < kXlsxVersion && settings_.GraphSheets != 0) {
    status_.SetStatus("Copying graphs to separate sheets");
    stages_->CopyGraphSheets(job.General, job.Markers);
  }
  // Part of finishing the workbook: no status text of its own.
  stages_->SetPrintLayout(job.General);
  stages_->ActivateWorksheet(std::string(kReportSheet));
  status_.SetStatus("Saving All");
  SaveWorkbook(job);
  if (run_.QuitCount > 1 || files_.FileCount() >= 2) QuitSpreadsheet();
  stages_->SetDisplayAlerts(true);
  return Flow::kReturn;
}

Converter::Flow Converter::ConvertScreen(ConversionJob& job) {
  const int screen = job.ScreenIndex;
  const std::string number = std::to_string(screen + 1);

  status_.SetStatus("Retrieving information about screen " + number);
  job.Result = stages_->ReadScreenConfig(screen, job.Screen);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;
  stages_->SetTimeAxis(job.Screen, screen);

  status_.SetStatus("retrieving marker information");
  // Kept as the result but not tested: a failing markers read does not
  // stop the file, and the next stage overwrites it.
  job.Result = stages_->ReadMarkers(screen, job.Markers);

  status_.SetStatus("Saving configuration information for screen " + number);
  stages_->ActivateWorksheet(std::string(kReportSheet));
  job.Result = stages_->WriteScreenConfig(screen, job.Screen);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;
  stages_->ActivateWorksheet(std::string(kRawDataSheet));
  job.Result = stages_->WriteScreenConfig(screen, job.Screen);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;
  stages_->SetXScaleType(job.Screen, screen);

  status_.SetStatus("Analyzing traces for screen " + number);
  job.Result = stages_->ScreenTraceCount(screen, job.TraceCount);
  if (job.Result != 0) return Flow::kFailed;
  if (CancelRequested()) return Flow::kCancelled;

  if (job.TraceCount > 0) {
    status_.SetStatus("Processing X axis data for screen " + number);
    job.Result = stages_->ReadXAxisData(screen);
    if (job.Result != 0) return Flow::kFailed;
    if (CancelRequested()) return Flow::kCancelled;
    stages_->WriteRawXData(screen, job.General, job.Screen);
    ComputeBlockRows(job.General.TracePoints, screen, job.BlockTopRow, job.BlockEndRow);
    stages_->PrepareScreenChart(job.BlockTopRow, job.BlockEndRow);
    for (job.TraceIndex = 0; job.TraceIndex < job.TraceCount; ++job.TraceIndex) {
      const int trace = job.TraceIndex;
      status_.SetStatus("Processing Y axis data for trace " + stages_->TraceLabel(trace));
      job.Result = stages_->ReadTraceY(screen, trace, job.Trace);
      if (job.Result != 0) return Flow::kFailed;
      if (CancelRequested()) return Flow::kCancelled;
      stages_->ActivateWorksheet(std::string(kRawDataSheet));
      stages_->WriteRawTrace(screen, trace, job.Trace);
      stages_->AddTraceSeries(job.Screen, trace, job.Trace, screen, job.BlockTopRow,
                              job.BlockEndRow);
    }
    stages_->FormatChart(job.Screen, job.General, screen, job.TraceCount);
  }

  status_.SetStatus("Saving Marker information");
  stages_->WriteMarkersDetails(job.Markers, screen);
  status_.SetStatus("Displaying markers on the graph");
  stages_->PlaceChartMarkers(job.Markers, job.General, screen);

  if (screen >= kAxisTableSlots) {
    throw RuntimeFailure("screen " + std::to_string(screen) + " outside the X axis table");
  }
  if (settings_.LogXOption == 0 && stages_->LogXMark(screen)) settings_.LogXInUse = 0;
  return Flow::kReturn;
}

int16_t Converter::EndFile(ConversionJob& job, Ending ending) {
  if (ending == Ending::kFailure) {
    run_.ErrorText = stages_->ErrorText();
    const std::string message = FailureMessage(run_.ErrorText);
    status_.SetStatus(message);
    status_.ShowError(message);
    // A failure that left no status of its own (a run-time failure) still
    // reports the file as failed.
    if (job.Result == 0 || job.Result == kStoppedQuietly) job.Result = 1;
  }
  status_.SetStatus("Ready");
  if (job.WorkbookCreated) {
    // The partial workbook is kept for the user; the program ends anyway,
    // so a workbook that cannot be saved any more changes nothing.
    try {
      SaveWorkbook(job);
    } catch (const std::exception&) {
    }
    try {
      QuitSpreadsheet();
    } catch (const std::exception&) {
    }
  }
  if (!CancelRequested()) {
    run_.ProgramEnded = true;
    ui_.EndProgram();
  }
  return job.Result;
}

void Converter::SaveWorkbook(const ConversionJob& job) {
  stages_->SaveWorkbook();
  if (!job.WorkbookFile.empty()) ui_.WorkbookSaved(job.WorkbookFile);
}

void Converter::QuitSpreadsheet() {
  stages_->QuitSpreadsheet();
  ui_.SpreadsheetQuit();
}

}  // namespace z4400
