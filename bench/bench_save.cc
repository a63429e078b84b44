// Time and size of saving a converted-measurement-sized workbook: three
// sheets of trace data, each with a scatter chart of five traces, written by
// our workbook model and .xlsx writer and, for comparison, by libxlsxwriter.
// Each run prints the time per save and the file size ("file_bytes").
//
//   bench_save --benchmark_counters_tabular=true
#include <benchmark/benchmark.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/xl_constants.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace {

constexpr int kSheets = 3;
constexpr int kTraces = 5;             // Y columns after the X column
constexpr int kColumns = kTraces + 1;  // X, then one column per trace

/// A trace value that looks like the instrument's: a frequency on X and a
/// level in dBm on Y, with the digits a real sweep has.
double CellValue(int sheet, int row, int column) {
  if (column == 0) return 1.0e9 + 250000.0 * row + 1.0e8 * sheet;
  return -70.0 + 12.5 * std::sin(0.013 * row + 0.7 * column + sheet) +
         0.37 * std::cos(1.7 * row * column);
}

std::filesystem::path OutputPath(const char* name) {
  return std::filesystem::temp_directory_path() /
         ("z4400-bench-" + std::to_string(::getpid()) + "-" + name + ".xlsx");
}

std::string SheetName(int sheet) { return "Sheet" + std::to_string(sheet + 1); }

/// "=Sheet1!$B$2:$B$10001" for `column` (0 = A) and `rows` data rows under
/// the header row.
std::string ColumnRange(int sheet, int column, int rows) {
  char range[64];
  const char letter = static_cast<char>('A' + column);
  std::snprintf(range, sizeof range, "=Sheet%d!$%c$2:$%c$%d", sheet + 1, letter, letter, rows + 1);
  return range;
}

void SetFileCounter(benchmark::State& state, const std::filesystem::path& path) {
  std::error_code error;
  state.counters["file_bytes"] = static_cast<double>(std::filesystem::file_size(path, error));
  state.counters["cells"] = static_cast<double>(kSheets) * kColumns * state.range(0);
  if (std::getenv("Z4400_BENCH_KEEP") == nullptr) std::filesystem::remove(path, error);
}

/// The same workbook through libxlsxwriter: cells written as numbers, a
/// header row of trace names, one embedded straight-line scatter chart per
/// sheet.
void BM_SaveLibxlsxwriter(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const auto path = OutputPath("libxlsxwriter");
  for (auto _ : state) {
    lxw_workbook* workbook = workbook_new(path.c_str());
    for (int sheet = 0; sheet < kSheets; ++sheet) {
      lxw_worksheet* worksheet = workbook_add_worksheet(workbook, SheetName(sheet).c_str());
      worksheet_write_string(worksheet, 0, 0, "Frequency", nullptr);
      for (int trace = 1; trace < kColumns; ++trace) {
        worksheet_write_string(worksheet, 0, static_cast<lxw_col_t>(trace),
                               ("Trace " + std::to_string(trace)).c_str(), nullptr);
      }
      for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
          worksheet_write_number(worksheet, static_cast<lxw_row_t>(row + 1),
                                 static_cast<lxw_col_t>(column), CellValue(sheet, row, column),
                                 nullptr);
        }
      }
      lxw_chart* chart = workbook_add_chart(workbook, LXW_CHART_SCATTER_STRAIGHT);
      for (int trace = 1; trace < kColumns; ++trace) {
        lxw_chart_series* series = chart_add_series(chart, ColumnRange(sheet, 0, rows).c_str(),
                                                    ColumnRange(sheet, trace, rows).c_str());
        chart_series_set_name(series, ("Trace " + std::to_string(trace)).c_str());
      }
      worksheet_insert_chart(worksheet, 1, 8, chart);
    }
    if (workbook_close(workbook) != LXW_NO_ERROR) {
      state.SkipWithError("libxlsxwriter could not save the workbook");
      break;
    }
  }
  SetFileCounter(state, path);
}

/// "A2:A10001" for `column` (0 = A) and `rows` data rows.
std::string LocalRange(int column, int rows) {
  char range[32];
  const char letter = static_cast<char>('A' + column);
  std::snprintf(range, sizeof range, "%c2:%c%d", letter, letter, rows + 1);
  return range;
}

/// Our workbook model filled the way the converter fills it, then saved by
/// our .xlsx writer.
void BM_SaveOurs(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const auto path = OutputPath("ours");
  z4400::Application application;
  for (auto _ : state) {
    z4400::Workbook workbook(&application, "Book1");
    for (int sheet_index = 0; sheet_index < kSheets; ++sheet_index) {
      z4400::Worksheet& sheet = workbook.AppendWorksheet(SheetName(sheet_index));
      sheet.Reserve(1, rows + 1, kColumns);
      sheet.StoreValue(1, 1, "Frequency");
      for (int trace = 1; trace < kColumns; ++trace) {
        sheet.StoreValue(1, trace + 1, "Trace " + std::to_string(trace));
      }
      for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < kColumns; ++column) {
          sheet.StoreValue(row + 2, column + 1, CellValue(sheet_index, row, column));
        }
      }
      z4400::Chart& chart = sheet.ChartObjects().Add(480, 15, 480, 288).Chart();
      chart.SetChartType(z4400::kXlXYScatterLinesNoMarkers);
      for (int trace = 1; trace < kColumns; ++trace) {
        z4400::Series& series = chart.SeriesCollection().NewSeries();
        series.SetName("Trace " + std::to_string(trace));
        series.SetXValues(sheet.Range(LocalRange(0, rows)));
        series.SetValues(sheet.Range(LocalRange(trace, rows)));
      }
    }
    std::string error;
    if (!z4400::SaveXlsx(workbook, path, &error)) {
      state.SkipWithError(error.c_str());
      break;
    }
  }
  SetFileCounter(state, path);
}

}  // namespace

BENCHMARK(BM_SaveOurs)->Arg(3334)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveLibxlsxwriter)->Arg(3334)->Arg(10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
