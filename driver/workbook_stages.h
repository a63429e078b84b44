// The conversion stages over the real source reader and workbook model: the
// converter's stages as one object that owns the source reader, the shared
// spreadsheet application and the per-file tables the sheet writers and
// chart builders share.
#ifndef Z4400_DRIVER_WORKBOOK_STAGES_H_
#define Z4400_DRIVER_WORKBOOK_STAGES_H_

#include <array>
#include <memory>
#include <optional>
#include <string>

#include "common/eng_units.h"
#include "common/table_sizes.h"
#include "driver/chart_stage_feedback.h"
#include "driver/conversion_stages.h"
#include "driver/converter.h"
#include "source/screen_tables.h"
#include "source/source_reader.h"
#include "workbook/excel_app.h"
#include "workbook/model/application.h"
#include "workbook/model/cell_range.h"
#include "workbook/reports/markers_details_sheet.h"
#include "workbook/reports/raw_data_sheet.h"
#include "workbook/reports/screen_units.h"

namespace z4400 {

/// The stages of `ConvertFile` for real files and workbooks.
class WorkbookStages : public ConversionStages {
 public:
  /// `version_text` is what the spreadsheet application reports as its
  /// `Version` ("16.0"; below "12" workbooks are ".xls").
  WorkbookStages(const StageContext& context, std::string version_text);
  ~WorkbookStages() override;

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

  /// The source reader and its per-screen tables.
  SourceReader& source() { return source_; }
  /// The workbook layer over the shared application.
  ExcelApp& excel() { return excel_; }

 private:
  /// The shared application, started when it does not run.
  Application& RunningApplication();
  /// The shared application when it runs, else null.
  Application* ApplicationIfRunning() const;
  /// Record `screen` of a per-screen table of 11; RuntimeFailure beyond.
  static size_t XAxisSlot(int screen);
  /// The tables of screen `screen` the raw data writer reads.
  RawScreenTables RawTables(int screen);
  /// The settings the raw data writer reads, as they stand now.
  RawDataSettings RawSettings() const;

  StageContext context_;
  std::string version_text_;
  SourceReader source_;
  ExcelApp excel_;
  /// The separate application object the version is read from.
  std::unique_ptr<Application> version_probe_;
  int16_t spreadsheet_version_ = 0;
  UnitNameTable unit_names_{};

  // Per-file tables: blank at the start of each file.
  std::array<XAxisScale, kAxisTableSlots> x_axis_table_{};
  std::array<XAxisKind, kAxisTableSlots> x_axis_kinds_{};
  XAxisValues x_values_;
  /// Units and factors of each screen's configuration block.
  ScreenUnitTable screen_units_{};
  RawDataState raw_state_;
  MarkerListRows marker_rows_;
  /// X values of the current screen's chart series.
  std::optional<CellRange> x_range_;
  ChartStageFeedback chart_feedback_;
};

/// The factory for `Converter`: real stages whose spreadsheet reports
/// `version_text`.
StagesFactory WorkbookStagesFactory(std::string version_text = kDefaultVersion);

}  // namespace z4400

#endif  // Z4400_DRIVER_WORKBOOK_STAGES_H_
