// The stages that the conversion driver calls for one file, in the order of
// `ConvertFile`: the source readers, the spreadsheet application, the sheet
// writers and the chart builders. The driver decides what a failure does;
// a stage only reports it (a non-zero status) or throws RuntimeFailure.
#ifndef Z4400_DRIVER_CONVERSION_STAGES_H_
#define Z4400_DRIVER_CONVERSION_STAGES_H_

#include <cstdint>
#include <string>

#include "source/records.h"

namespace z4400 {

/// One implementation drives the real source reader and workbook model
/// (`MakeWorkbookStages`); tests put a scripted one in its place. Status
/// results: 0 success, anything else a failure of the stage.
class ConversionStages {
 public:
  virtual ~ConversionStages() = default;

  // ---- Run and file ---------------------------------------------------

  /// Start of a run: the per-trace unit tables back to "sec", "dBm", "Hz",
  /// "dBm" with factor 1.
  virtual void ResetRunTables() = 0;
  /// Start of a file: the file's own tables (X axis table, X axis kinds)
  /// blank again.
  virtual void BeginFile() = 0;
  /// The shared spreadsheet application's display of alerts; starts the
  /// application when it does not run yet and `on` is false.
  virtual void SetDisplayAlerts(bool on) = 0;
  /// Sets up the level-unit name table.
  virtual void SetUpUnitNames() = 0;

  // ---- Source ---------------------------------------------------------

  /// Opens the source file and checks its kind.
  virtual int16_t OpenSource(const std::string& path) = 0;
  /// Reads the general information of the open source.
  virtual int16_t ReadGeneralInfo(GeneralInfo& info) = 0;
  /// The error text the source readers left (empty when none).
  virtual std::string ErrorText() const = 0;

  // ---- Spreadsheet application -----------------------------------------

  /// The `Version` text of a separate spreadsheet application object.
  virtual std::string ProbeVersion() = 0;
  /// The version the chart stages work for, once it is accepted.
  virtual void SetSpreadsheetVersion(int16_t version) = 0;
  /// Adds a new empty workbook to the shared application (Workbooks.Add);
  /// it becomes the current workbook.
  virtual void NewWorkbook() = 0;
  /// Selects and activates worksheet `name` of the current workbook.
  virtual void ActivateWorksheet(const std::string& name) = 0;
  /// Saves the current workbook to its own file.
  virtual void SaveWorkbook() = 0;
  /// Quits the shared application and releases the workbook and the
  /// version probe.
  virtual void QuitSpreadsheet() = 0;

  // ---- Result sheets, screens and traces --------------------------------

  /// Creates and lays out the three result sheets; the workbook is saved
  /// under `output_path` (without extension) first.
  virtual void CreateResultSheets(const std::string& output_path) = 0;
  /// The general-information block on sheet `sheet` with title `title`.
  virtual int16_t WriteGeneralInfo(const GeneralInfo& info, const std::string& sheet,
                                   const std::string& title) = 0;
  /// Reads the configuration of screen `screen`.
  virtual int16_t ReadScreenConfig(int screen, ScreenInfo& info) = 0;
  /// Settles the time unit of the screen (per-screen X axis kind).
  virtual void SetTimeAxis(const ScreenInfo& info, int screen) = 0;
  /// Reads the markers of the screen.
  virtual int16_t ReadMarkers(int screen, MarkersInfo& markers) = 0;
  /// The configuration block of the screen on the active worksheet.
  virtual int16_t WriteScreenConfig(int screen, ScreenInfo& info) = 0;
  /// Settles whether the screen's X axis is logarithmic (X axis table).
  virtual void SetXScaleType(ScreenInfo& info, int screen) = 0;
  /// Number of traces of the screen.
  virtual int16_t ScreenTraceCount(int screen, int32_t& count) = 0;
  /// Reads the X values of the screen's points (kept for the writers).
  virtual int16_t ReadXAxisData(int screen) = 0;
  /// Writes the screen's X values to "Raw Data".
  virtual void WriteRawXData(int screen, const GeneralInfo& info,
                             const ScreenInfo& screen_info) = 0;
  /// Lays out the screen's block and prepares its empty chart.
  virtual void PrepareScreenChart(int16_t top_row, int16_t end_row) = 0;
  /// The label of a trace in status texts ("A", "B", "C", "M", "O").
  virtual std::string TraceLabel(int trace) = 0;
  /// Reads the Y values of one trace.
  virtual int16_t ReadTraceY(int screen, int trace, TraceData& trace_data) = 0;
  /// Writes the trace to "Raw Data" (the active worksheet).
  virtual void WriteRawTrace(int screen, int trace, const TraceData& trace_data) = 0;
  /// Adds the trace's series to the screen's chart.
  virtual void AddTraceSeries(const ScreenInfo& info, int trace, const TraceData& trace_data,
                              int screen, int16_t top_row, int16_t end_row) = 0;
  /// Axis titles, scales, gridlines and size of the screen's chart.
  virtual void FormatChart(const ScreenInfo& info, const GeneralInfo& general, int screen,
                           int32_t trace_count) = 0;
  /// The screen's marker list on "Markers Details" and "Report".
  virtual void WriteMarkersDetails(const MarkersInfo& markers, int screen) = 0;
  /// The screen's markers on its chart.
  virtual void PlaceChartMarkers(const MarkersInfo& markers, const GeneralInfo& general,
                                 int screen) = 0;
  /// The logarithmic-X mark of the screen's record in the X axis table
  /// (screen 0 to 10).
  virtual bool LogXMark(int screen) = 0;
  /// Copies the charts of "Report" to sheets of their own.
  virtual void CopyGraphSheets(const GeneralInfo& general, const MarkersInfo& markers) = 0;
  /// Lays out every sheet of the current workbook for printing.
  virtual void SetPrintLayout(const GeneralInfo& general) = 0;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_CONVERSION_STAGES_H_
