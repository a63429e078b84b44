// Speed of the workbook model's cell storage: the raw-data writer's block
// assignment (1001 rows × 3 columns in one `Value`), a whole result workbook
// of 60,000 numbers written block by block, and reading a series' values
// back from 1001 cells.
#include <benchmark/benchmark.h>

#include "workbook/model/application.h"

namespace z4400 {
namespace {

ValueBlock Buffer(int rows, int columns) {
  ValueBlock buffer(rows, columns);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      buffer(row, column) = CellValue(row * 0.5 + column);
    }
  }
  return buffer;
}

void BM_BlockAssignment1001x3(benchmark::State& state) {
  const ValueBlock buffer = Buffer(1002, 3);
  for (auto _ : state) {
    Application application;
    Worksheet& sheet = application.Workbooks().Add().Worksheets()(1);
    sheet.Range(sheet.Cells(12, 5), sheet.Cells(1012, 7)).SetValue(buffer);
    benchmark::DoNotOptimize(sheet.grid().RowCount());
  }
  state.SetItemsProcessed(state.iterations() * 1001 * 3);
}
BENCHMARK(BM_BlockAssignment1001x3);

void BM_ResultWorkbook60000Cells(benchmark::State& state) {
  // Three screens of 1001 points: X group of 2 columns and five traces of
  // 3 columns each, about 60,000 numbers.
  const ValueBlock x_block = Buffer(1002, 2);
  const ValueBlock trace_block = Buffer(1002, 3);
  for (auto _ : state) {
    Application application;
    Worksheet& sheet = application.Workbooks().Add().Worksheets()(1);
    sheet.Columns(1).Font().SetItalic(true);
    for (int screen = 0; screen < 3; ++screen) {
      const int row = (1001 + 6) * screen + 12;
      sheet.Range(sheet.Cells(row, 5), sheet.Cells(row + 1001, 6)).SetValue(x_block);
      for (int trace = 0; trace < 5; ++trace) {
        const int column = 4 * trace + 9;
        sheet.Range(sheet.Cells(row, column), sheet.Cells(row + 1001, column + 2))
            .SetValue(trace_block);
      }
    }
    benchmark::DoNotOptimize(sheet.grid().RowCount());
  }
  state.SetItemsProcessed(state.iterations() * 3 * 1001 * 17);
}
BENCHMARK(BM_ResultWorkbook60000Cells);

void BM_SeriesValuesReadBack(benchmark::State& state) {
  Application application;
  Workbook& book = application.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  sheet.Range(sheet.Cells(12, 5), sheet.Cells(1012, 7)).SetValue(Buffer(1002, 3));
  Series& series = book.Charts().Add().Chart().SeriesCollection().NewSeries();
  series.SetXValues(sheet.Range("F12:F1012"));
  for (auto _ : state) {
    benchmark::DoNotOptimize(series.XValues().UBound());
  }
}
BENCHMARK(BM_SeriesValuesReadBack);

}  // namespace
}  // namespace z4400

BENCHMARK_MAIN();
