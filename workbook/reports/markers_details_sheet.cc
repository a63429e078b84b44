#include "workbook/reports/markers_details_sheet.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "common/eng_units.h"
#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "common/trace_letters.h"
#include "workbook/model/text_width.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/raw_data_sheet.h"
#include "workbook/reports/report_lines.h"
#include "workbook/reports/screen_config_sheet.h"

namespace z4400 {
namespace {

constexpr std::string_view kPositionFormat = "0.#########";
/// Levels scaled to an engineering unit keep three decimals; levels in dB
/// or degrees two, as the instrument shows them.
constexpr std::string_view kScaledLevelFormat = "0.000";
constexpr std::string_view kLevelFormat = "0.00";
constexpr int kListedMarkers = 10;
constexpr int kListColumns = 6;
constexpr double kListLabelWidth = 18;
constexpr std::array<std::string_view, 6> kColumnHeaders = {"Marker", "Trace", "Position",
                                                            "Unit",   "Level", "Unit"};

struct LevelCell {
  EngValue value;
  std::string_view format;
};

LevelCell LevelOf(double level, std::string_view unit) {
  if (unit == "Volts" || unit == "V") return {MakeEngV(level), kScaledLevelFormat};
  if (unit == "Watts" || unit == "W") return {MakeEngW(level), kScaledLevelFormat};
  if (unit == "Hz") return {MakeEngHz(level), kScaledLevelFormat};
  return {EngValue{level, std::string(TrimBlanks(unit))}, kLevelFormat};
}

std::string TraceTextOf(const MarkerRecord& marker) {
  return marker.Trace >= 0 ? TraceLetter(marker.Trace) : marker.TraceName;
}

int16_t NextRow(int16_t row) {
  if (row == INT16_MAX) throw RuntimeFailure("Overflow: marker list row beyond 32767");
  return static_cast<int16_t>(row + 1);
}

MarkerListEntry EntryOf(CellValue label, const MarkerRecord& marker, const MarkerAxes& axes) {
  const LevelCell level = LevelOf(marker.PosY, axes.level_unit);
  return MarkerListEntry{std::move(label), TraceTextOf(marker),
                         axes.time_x ? MakeEngSec(marker.PosX) : MakeEngHz(marker.PosX),
                         level.value, level.format};
}

/// One marker row from `column`: label (its number or "Reference"), trace,
/// position and unit, level and unit.
void WriteMarkerRow(Worksheet& sheet, int row, int column, const MarkerListEntry& entry) {
  sheet.Cells(row, column).SetValue(entry.label);
  sheet.Cells(row, column + 1).SetValue(CellValue(entry.trace));
  const CellRange position_cell = sheet.Cells(row, column + 2);
  position_cell.SetValue(entry.position.Scaled);
  position_cell.SetNumberFormat(kPositionFormat);
  sheet.Cells(row, column + 3).SetValue(CellValue(entry.position.Unit));
  const CellRange level_cell = sheet.Cells(row, column + 4);
  level_cell.SetValue(entry.level.Scaled);
  level_cell.SetNumberFormat(entry.level_format);
  sheet.Cells(row, column + 5).SetValue(CellValue(entry.level.Unit));
}

std::vector<int32_t> CandidatesOf(const MarkersInfo& markers) {
  std::vector<int32_t> candidates;
  if (markers.Reserved != 0) {
    for (int32_t k = 0; k < kListedMarkers; ++k) candidates.push_back(k);
  } else {
    candidates.push_back(ActiveMarkerOf(markers));
  }
  return candidates;
}

}  // namespace

MarkerAxes MarkerAxesOf(const XAxisKind& kind, const DigitalValues& digital) {
  const std::string& function = digital.MeasurementFunction;
  const bool digital_time =
      digital.DigitalMode == "ON" && function != "Phase-Freq" && function != "PartialFFT";
  return MarkerAxes{kind.IsTime != 0 || digital_time, kind.LevelUnit};
}

int32_t ActiveMarkerOf(const MarkersInfo& markers) {
  return markers.SelectedMarker >= 1 ? markers.SelectedMarker - 1 : 0;
}

std::vector<MarkerListEntry> ListedMarkers(const MarkersInfo& markers, const MarkerAxes& axes) {
  std::vector<MarkerListEntry> entries;
  if (markers.DeltaMode == 0) return entries;
  for (const int32_t k : CandidatesOf(markers)) {
    if (k < 0 || k >= kListedMarkers) continue;
    const MarkerRecord& marker = markers.Markers[static_cast<size_t>(k)];
    if (marker.On != 0) entries.push_back(EntryOf(CellValue(k + 1), marker, axes));
  }
  if (const int reference = DeltaReferenceOf(markers); reference != 0) {
    entries.push_back(
        EntryOf(CellValue("Reference"), markers.Markers[static_cast<size_t>(reference - 1)], axes));
  }
  return entries;
}

int DeltaReferenceOf(const MarkersInfo& markers) {
  const int32_t reference = markers.MarkerCount;
  if (markers.DeltaMode != 2 || reference < 0 || reference >= kListedMarkers ||
      markers.Markers[static_cast<size_t>(reference)].On == 0) {
    return 0;
  }
  return reference + 1;
}

int16_t WriteMarkerList(Worksheet& sheet, int16_t row, int16_t column, const MarkersInfo& markers,
                        const MarkerAxes& axes, int screen) {
  const int16_t first_row = row;
  // The label column holds "Marker List Screen" and "Reference": as wide as
  // the label column of the report blocks, so neither is cut off.
  sheet.Columns(column).SetColumnWidth(kListLabelWidth);
  BoldPair(sheet, row, column);
  sheet.Cells(row, column).SetValue(CellValue("Marker List Screen"));
  sheet.Cells(row, column + 1).SetValue(CellValue(screen + 1));
  row = NextRow(row);
  for (size_t i = 0; i < kColumnHeaders.size(); ++i) {
    const CellRange header = sheet.Cells(row, column + static_cast<int>(i));
    header.SetValue(CellValue(kColumnHeaders[i]));
    header.Font().SetBold(true);
  }
  row = NextRow(row);
  for (const MarkerListEntry& entry : ListedMarkers(markers, axes)) {
    WriteMarkerRow(sheet, row, column, entry);
    row = NextRow(row);
  }
  for (int i = 0; i < kListColumns; ++i) WidenColumnToFit(sheet, column + i, first_row, row - 1);
  return row;
}

void WriteMarkersDetails(const ExcelApp& excel, const MarkersInfo& markers, const MarkerAxes& axes,
                         int screen, MarkerListRows& rows) {
  Worksheet& details = ActivateWorksheet(excel, kMarkersDetailsSheet);
  const CellRange heading = details.Range("A1");
  heading.SetValue(CellValue(kMarkersDetailsHeading));
  heading.Font().SetBold(true);
  heading.Font().SetItalic(true);
  rows.details_row = NextRow(WriteMarkerList(details, rows.details_row, 1, markers, axes, screen));

  // On "Report" each list starts beside its screen's configuration block,
  // so that block, chart and list print on one page.
  Worksheet& report = ActivateWorksheet(excel, kReportSheet);
  const int16_t report_row =
      std::max(rows.report_row, ScreenConfigRow(static_cast<int16_t>(screen)));
  rows.report_row = NextRow(WriteMarkerList(report, report_row, 10, markers, axes, screen));
}

}  // namespace z4400
