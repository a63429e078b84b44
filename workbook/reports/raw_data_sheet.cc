#include "workbook/reports/raw_data_sheet.h"

#include <string>

#include "common/checked16.h"
#include "common/runtime_failure.h"
#include "common/sheet_names.h"
#include "common/trace_letters.h"
#include "workbook/reports/general_info_sheet.h"
#include "workbook/reports/report_lines.h"

namespace z4400 {
namespace {

constexpr std::string_view kHeaderFormat = "0.###";

bool IsFrequencyFunction(std::string_view function) {
  return function == "Phase-Freq" || function == "PartialFFT";
}

/// The two factors of a group: F1 divides (spectrum) or multiplies
/// (digital) the second column, F2 multiplies (spectrum) or divides
/// (digital) the first.
struct GroupFactors {
  double f1 = 1;
  double f2 = 1;
};

GroupFactors FactorsOf(bool is_x, bool digital, const RawScreenTables& tables) {
  GroupFactors factors;
  if (!digital) {
    if (!is_x) {
      factors.f2 = tables.vertical.VerticalFactor;
    } else if (tables.time_axis.IsTime != 0) {
      if (tables.time_axis.Factor == 0) {
        throw RuntimeFailure("Division by zero: the zero-span time factor is 0");
      }
      factors.f1 = 1 / tables.time_axis.Factor;
    } else {
      factors.f1 = tables.units.XFactor;
    }
  } else if (!is_x) {
    factors.f2 = tables.units.VerticalFactor;
  } else if (IsFrequencyFunction(tables.digital.MeasurementFunction)) {
    factors.f1 = tables.units.TimeFactor;
  } else {
    factors.f1 = tables.units.TimeFactor / 1000000;
  }
  return factors;
}

/// The X value `x` mapped from the data range onto the log axis range.
double LogAxisPosition(double x, const XAxisScale& scale) {
  const double data_range = scale.DataMax - scale.DataMin;
  if (data_range == 0) throw RuntimeFailure("Division by zero: the log X data range is empty");
  return scale.AxisMin + (x - scale.DataMin) * (scale.AxisMax - scale.AxisMin) / data_range;
}

}  // namespace

RawScreenTables RawTablesOf(const SourceReader& source, const ScreenUnitTable& units,
                            XAxisScale& scale, int screen) {
  return RawScreenTables{source.Digital(screen), source.Vertical(screen), source.TimeAxis(screen),
                         ScreenUnitsOf(units, screen), scale};
}

int16_t RawBlockRow(int32_t point_count, int32_t screen) {
  return Checked16((static_cast<int64_t>(point_count) + 6) * screen + 9, "raw data row");
}

void WriteRawDataBlock(Worksheet& sheet, const RawBlock& block, const RawScreenTables& tables,
                       const RawDataSettings& settings, RawDataState& state) {
  ScreenUnitSlot(block.Screen);
  const int32_t n = block.PointCount;
  ReportCursor cursor{
      RawBlockRow(n, block.Screen),
      Checked16((static_cast<int64_t>(block.ColumnIndex) + 1) * 4 + 5, "raw data column")};
  const bool is_x = cursor.column == 5;

  const std::string unit_text(block.UnitText);
  const std::string value_text(block.ValueText);
  if (is_x) {
    BoldPair(sheet, cursor.row, cursor.column);
    WriteReportLine(sheet, cursor, "Screen ", std::to_string(block.Screen + 1), kHeaderFormat);
    ++cursor.row;  // one empty row between the screen line and the X line
    BoldPair(sheet, cursor.row, cursor.column);
    WriteReportLine(sheet, cursor, "X raw " + unit_text, "X " + value_text, kHeaderFormat);
  } else {
    const std::string letter = TraceLetter(block.ColumnIndex);
    cursor.row = Checked16(cursor.row + 2, "raw data row");
    BoldPair(sheet, cursor.row, cursor.column);
    WriteReportLine(sheet, cursor, "Y(" + letter + ") raw " + unit_text,
                    "Y(" + letter + ") " + value_text, kHeaderFormat);
  }

  if (n > 0 && (block.First.size() < static_cast<size_t>(n) ||
                block.Second.size() < static_cast<size_t>(n))) {
    throw RuntimeFailure("Subscript out of range: fewer values than the " + std::to_string(n) +
                         " points of a trace");
  }
  const bool digital = tables.digital.DigitalMode == "ON";
  const GroupFactors factors = FactorsOf(is_x, digital, tables);
  XAxisScale& scale = tables.scale;
  ValueBlock buffer(kRawBlockMaxPoints, 3);

  if (digital) {
    for (int32_t k = 0; k < n; ++k) {
      buffer(k, 0) = block.First[k] / factors.f2;
      buffer(k, 1) = factors.f1 * block.Second[k];
    }
  } else if (scale.LogX == 0) {
    for (int32_t k = 0; k < n; ++k) {
      buffer(k, 0) = factors.f2 * block.First[k];
      buffer(k, 1) = block.Second[k] / factors.f1;
    }
  } else {
    if (is_x && scale.StartNegative != 0 && settings.LogXOption) {
      // The log axis starts at the first point that reaches the threshold.
      for (int32_t k = 0; k < n; ++k) {
        if (block.Second[k] >= settings.XScaleThreshold) {
          scale.AxisMin = PowerOfTenBelow(block.Second[k] / tables.units.XFactor);
          state.LogXFirstRow = Checked16(static_cast<int64_t>(cursor.row) + k, "log X first row");
          break;
        }
      }
    }
    for (int32_t k = 0; k < n; ++k) {
      buffer(k, 0) = factors.f2 * block.First[k];
      const double x = block.Second[k] / factors.f1;
      buffer(k, 1) = x;
      buffer(k, 2) = LogAxisPosition(x, scale);
    }
  }

  const int end_column =
      cursor.column + (is_x && scale.LogX != 0 && settings.LogXInUse != 0 ? 2 : 1);
  sheet.Range(sheet.Cells(cursor.row, cursor.column), sheet.Cells(cursor.row + n, end_column))
      .SetValue(buffer);
}

void WriteRawXData(const ExcelApp& excel, int32_t screen, const XAxisValues& x_data,
                   const ScreenInfo& info, int32_t point_count, const RawScreenTables& tables,
                   const RawDataSettings& settings, RawDataState& state) {
  Worksheet& sheet = ActivateWorksheet(excel, kRawDataSheet);
  std::string unit_text;
  std::string value_text;
  if (tables.digital.DigitalMode != "ON") {
    unit_text = info.Span == 0 ? "sec" : tables.units.XUnit;
    value_text = info.Span == 0 ? tables.time_axis.Unit : tables.units.XUnit;
  } else {
    unit_text = tables.units.TimeUnit;
    value_text = tables.units.TimeUnit;
  }
  const RawBlock block{screen,      -1,        x_data.Indexes, x_data.Values,
                       point_count, unit_text, value_text};
  WriteRawDataBlock(sheet, block, tables, settings, state);
}

void WriteRawTraceData(const ExcelApp& excel, int32_t screen, int32_t trace,
                       const TraceData& trace_data, int32_t point_count,
                       const RawScreenTables& tables, const RawDataSettings& settings,
                       RawDataState& state) {
  const std::string& unit_text =
      tables.digital.DigitalMode == "ON" ? tables.units.VerticalUnit : tables.vertical.VerticalUnit;
  const RawBlock block{screen,      trace,     trace_data.Values,          trace_data.Copy,
                       point_count, unit_text, TrimBlanks(trace_data.Unit)};
  WriteRawDataBlock(ActiveWorksheet(excel), block, tables, settings, state);
}

}  // namespace z4400
