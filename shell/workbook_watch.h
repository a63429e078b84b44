// Which workbook a conversion left for the user to look at. With a single
// file the spreadsheet application is not quit after the save, and the
// window opens the finished workbook on the desktop; with two or more files
// the application is quit after each one and nothing stays open.
#ifndef Z4400_SHELL_WORKBOOK_WATCH_H_
#define Z4400_SHELL_WORKBOOK_WATCH_H_

#include <memory>
#include <string>

#include "driver/conversion_stages.h"
#include "driver/converter.h"

namespace z4400 {

/// What the watch has seen of the run so far.
struct WatchedWorkbook {
  /// The file of the workbook saved last and not closed by quitting the
  /// spreadsheet application since; empty when none is left open.
  std::string open_path;
};

/// Stages that pass every call to the real ones and note the workbook that
/// stays open: its output path (with the extension the spreadsheet version
/// gives it) once it is saved, forgotten when the application quits.
class WorkbookWatchStages : public ConversionStages {
 public:
  WorkbookWatchStages(std::unique_ptr<ConversionStages> inner, WatchedWorkbook& watched);

  void ResetRunTables() override;
  void BeginFile() override;
  void SetDisplayAlerts(bool on) override;
  void SetUpUnitNames() override;
  int16_t OpenSource(const std::string& path) override;
  int16_t ReadGeneralInfo(GeneralInfo& info) override;
  std::string ErrorText() const override;
  std::string ProbeVersion() override;
  void SetSpreadsheetVersion(int16_t version) override;
  void NewWorkbook() override;
  void ActivateWorksheet(const std::string& name) override;
  void SaveWorkbook() override;
  void QuitSpreadsheet() override;
  void CreateResultSheets(const std::string& output_path) override;
  int16_t WriteGeneralInfo(const GeneralInfo& info, const std::string& sheet,
                           const std::string& title) override;
  int16_t ReadScreenConfig(int screen, ScreenInfo& info) override;
  void SetTimeAxis(const ScreenInfo& info, int screen) override;
  int16_t ReadMarkers(int screen, MarkersInfo& markers) override;
  int16_t WriteScreenConfig(int screen, ScreenInfo& info) override;
  void SetXScaleType(ScreenInfo& info, int screen) override;
  int16_t ScreenTraceCount(int screen, int32_t& count) override;
  int16_t ReadXAxisData(int screen) override;
  void WriteRawXData(int screen, const GeneralInfo& info, const ScreenInfo& screen_info) override;
  void PrepareScreenChart(int16_t top_row, int16_t end_row) override;
  std::string TraceLabel(int trace) override;
  int16_t ReadTraceY(int screen, int trace, TraceData& trace_data) override;
  void WriteRawTrace(int screen, int trace, const TraceData& trace_data) override;
  void AddTraceSeries(const ScreenInfo& info, int trace, const TraceData& trace_data, int screen,
                      int16_t top_row, int16_t end_row) override;
  void FormatChart(const ScreenInfo& info, const GeneralInfo& general, int screen,
                   int32_t trace_count) override;
  void WriteMarkersDetails(const MarkersInfo& markers, int screen) override;
  void PlaceChartMarkers(const MarkersInfo& markers, const GeneralInfo& general,
                         int screen) override;
  bool LogXMark(int screen) override;
  void CopyGraphSheets(const GeneralInfo& general, const MarkersInfo& markers) override;
  void SetPrintLayout(const GeneralInfo& general) override;

 private:
  std::unique_ptr<ConversionStages> inner_;
  WatchedWorkbook& watched_;
  std::string version_text_;
  std::string workbook_path_;  ///< the current workbook's file, once named
};

/// A factory whose stages are `make_stages`'s, watched into `watched`
/// (which must outlive the stages).
StagesFactory WatchedStagesFactory(StagesFactory make_stages, WatchedWorkbook& watched);

}  // namespace z4400

#endif  // Z4400_SHELL_WORKBOOK_WATCH_H_
