// The source reader: one instrument file at a time, XML (root
// `AnalyserData`) or CSV export, with the lookups that work on either kind
// and the readers that fill the measurement records from them (general
// information, screen configuration, X axis, traces, markers). It also
// keeps the per-screen tables that the sheet and chart writers read by
// screen number. The conversion driver owns one reader for a run; opening
// the next file replaces the source but keeps the per-screen tables.
#ifndef Z4400_SOURCE_SOURCE_READER_H_
#define Z4400_SOURCE_SOURCE_READER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/table_sizes.h"
#include "source/csv_grid.h"
#include "source/level_units.h"
#include "source/records.h"
#include "source/screen_tables.h"
#include "source/xml_source.h"

namespace z4400 {

/// Error texts the readers leave for the driver to show.
inline constexpr std::string_view kInvalidFileText = "ファイルが不正です";
inline constexpr std::string_view kUnknownModelText = "Not MQD data.";
inline constexpr std::string_view kUnreadableInfoText = "Not MQD Data.";
inline constexpr std::string_view kFileTooLargeText = "The file is larger than 100 MB.";

/// Largest instrument file the reader accepts.
inline constexpr uintmax_t kMaxSourceBytes = uintmax_t{100} * 1024 * 1024;

/// Missing point of an XML trace table.
inline constexpr double kMissingPointLevel = -200;

/// Trace tables per CSV screen, plus the end mark.
inline constexpr int kTraceTableRowSlots = 11;

/// Every reading operation of the converter over the current source file.
/// Status codes: 0 success, other values as each operation says. Run-time
/// failures (a 16-bit field overflow, a screen number outside the tables, a
/// missing CSV cell, a division by zero) throw RuntimeFailure.
class SourceReader {
 public:
  SourceReader() = default;
  // The XML lookups point into the document: a reader stays where it is.
  SourceReader(const SourceReader&) = delete;
  SourceReader& operator=(const SourceReader&) = delete;

  // ---- Source access --------------------------------------------------

  /// Opens the file at `path`. The kind is the last three characters of the
  /// path, exactly "xml" or "csv". Returns 0 when opened, 1 when the kind is
  /// neither, −1 when a CSV file is not a grid ("ファイルが不正です") or the
  /// file is over 100 MB. An XML file that does not parse opens with an
  /// empty document (the general information then fails). Stores the path
  /// in every case.
  int16_t OpenSource(const std::string& path);
  /// As OpenSource, with the file's contents given rather than read.
  int16_t OpenSourceBytes(const std::string& path, std::string_view bytes);
  /// Gives back the memory of the parsed XML document once everything is
  /// read from it; the file's buffer stays for the next file. Reads after
  /// it find nothing until the next OpenSource.
  void ReleaseDocument() { xml_.Release(); }

  const std::string& SourcePath() const { return source_path_; }
  /// The last reading error ("ファイルが不正です", "Not MQD data." …).
  const std::string& ErrorText() const { return error_text_; }
  void SetErrorText(std::string text) { error_text_ = std::move(text); }
  /// Points per trace of the current file (set by ReadGeneralInfo).
  int16_t CurrentTracePoints() const { return current_trace_points_; }

  /// XML file parameter `id`; the empty text when absent (or for CSV).
  std::string FileParameter(std::string_view id) const;
  /// Parameter `id` of screen `screen`, for both kinds; the empty text when
  /// absent. A CSV screen without the parameter takes the first later row
  /// with that Id (the next screen's value).
  std::string ScreenParameter(std::string_view id, int screen) const;
  /// CSV column 1 of the first row whose column 0 is `key`.
  std::string CsvValue(std::string_view key) const;
  /// Trace tables in the whole file.
  int32_t TraceTableCount() const;
  /// Traces of screen `screen`. For CSV it also records the rows of the
  /// screen's "Trace Nb" headers, which ReadTraceY reads; more than 10 trace
  /// tables on a CSV screen is a run-time failure.
  int32_t ScreenTraceCount(int screen);
  /// Rows of the last CSV screen's "Trace Nb" headers, then −1.
  const std::array<int16_t, kTraceTableRowSlots>& TraceTableRows() const {
    return trace_table_rows_;
  }

  // ---- General information -------------------------------------------

  /// Fills `info` from the file. Returns 0, or 1 when the model is not
  /// accepted ("Not MQD data."; `info` then holds SourcePath and Model) or
  /// the file-level information cannot be read ("Not MQD Data.").
  int16_t ReadGeneralInfo(GeneralInfo& info);
  /// "MQD", "KTR", or the empty text for a model that is not converted (the
  /// error text is then "Not MQD data.").
  std::string ModelClass(std::string_view model);

  // ---- Screen configuration ------------------------------------------

  /// Reads screen `screen` (0 to 2) into `info`, whose fields that the file
  /// does not decide keep their values (an unknown level unit keeps the
  /// previous LevelUnitCode). Returns 0, or 1 for an unknown digital
  /// measurement function (later fields and the summary untouched).
  int16_t ReadScreenConfig(int screen, ScreenInfo& info);
  /// The X value of every point of screen `screen`, from its summary.
  XAxisValues XAxisData(int screen) const;

  const ScreenSummary& Summary(int screen) const;
  const DigitalValues& Digital(int screen) const;
  const VerticalAxis& Vertical(int screen) const;

  /// Level conversion at the impedance of the screen read last.
  const LevelConverter& Levels() const { return levels_; }

  // ---- Traces and X axis ---------------------------------------------

  /// The values of trace `trace_index` of screen `screen` (CurrentTracePoints
  /// of them). XML points without an item read −200. A CSV trace without a
  /// "Point,0" row comes back as zeros with no unit.
  TraceData ReadTraceY(int screen, int trace_index) const;
  /// The time-unit step: records in the time-axis table whether screen
  /// `screen` (0 to 10) is a zero-span screen and returns its X axis kind.
  XAxisKind SetTimeAxis(const ScreenInfo& info, int screen);
  const TimeAxisEntry& TimeAxis(int screen) const;
  /// The same entry for the screen configuration writer, which puts the
  /// sweep time's display unit and factor of a zero-span screen into it.
  TimeAxisEntry& TimeAxis(int screen);
  /// The X-scale-type step: whether the screen's X axis is logarithmic
  /// ("HS" is "LOG") and its bounds. Sets info.LogX and info.StartNegative;
  /// may set `log_x_in_use` (settings line 15) to 1. The returned record
  /// starts blank for the screen.
  XAxisScale SetXScaleType(int screen, ScreenInfo& info, const XScaleSettings& settings,
                           int16_t& log_x_in_use) const;

  // ---- Markers -------------------------------------------------------

  /// The marker header of screen `screen` (0 to 2) and its row of the marker
  /// table. A CSV marker parameter that cannot be found is a run-time
  /// failure; the markers read before it stay in the table.
  MarkersInfo ReadMarkers(int screen);
  /// XML: the "Value" of "Parameter[@Id=id]" under `marker`; empty if none.
  static std::string MarkerParameter(pugi::xml_node marker, std::string_view id);
  /// The screen's row of the marker table.
  const std::array<MarkerRecord, kMarkerSlots>& MarkerRow(int screen) const;

 private:
  bool IsXml() const { return source_kind_ == "xml"; }
  int16_t ReadGeneralInfoXml(GeneralInfo& info);
  int16_t ReadGeneralInfoCsv(GeneralInfo& info);
  void ReadMarkerRecordsXml(int screen, std::array<MarkerRecord, kMarkerSlots>& row) const;
  void ReadMarkerRecordsCsv(int screen, std::array<MarkerRecord, kMarkerSlots>& row) const;
  TraceData ReadTraceYXml(int screen, int trace_index) const;
  TraceData ReadTraceYCsv(int screen, int trace_index) const;
  /// Screen `screen` of the per-screen tables; RuntimeFailure outside 0..2.
  static size_t ScreenSlot(int screen);

  std::string source_kind_;
  std::string source_path_;
  std::string error_text_;
  XmlSource xml_;
  CsvGrid grid_;
  int32_t csv_file_number_ = 0;
  std::array<int16_t, kTraceTableRowSlots> trace_table_rows_{};
  int16_t current_trace_points_ = 0;
  LevelConverter levels_;

  std::array<ScreenSummary, kScreenSlots> summaries_{};
  std::array<DigitalValues, kScreenSlots> digital_{};
  std::array<VerticalAxis, kScreenSlots> vertical_{};
  std::array<TimeAxisEntry, kAxisTableSlots> time_axis_{};
  std::array<std::array<MarkerRecord, kMarkerSlots>, kScreenSlots> marker_table_{};
};

/// The smallest power of ten not below `x` (1 for any x ≤ 1).
double PowerOfTenAbove(double x);
/// Starting from 10^10, the first power of ten p with x × 1.1 ≥ p (0 once
/// the division underflows, for x = 0).
double PowerOfTenBelow(double x);

}  // namespace z4400

#endif  // Z4400_SOURCE_SOURCE_READER_H_
