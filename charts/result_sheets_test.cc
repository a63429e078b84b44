#include "charts/result_sheets.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "charts/chart_test_util.h"
#include "common/runtime_failure.h"
#include "workbook/model/application.h"
#include "workbook/model/xl_constants.h"

namespace z4400 {
namespace {

using testing::ResultWorkbook;
using testing::ScratchDir;

std::vector<std::string> SheetNames(Workbook& workbook) {
  std::vector<std::string> names;
  for (const auto& sheet : workbook.sheets()) names.push_back(sheet->Name());
  return names;
}

TEST(CreateResultSheetsTest, LeavesTheThreeSheetsWithRawDataColumnsWhateverTheWorkbookHeld) {
  for (const int initial_sheets : {1, 2, 5}) {
    SCOPED_TRACE(initial_sheets);
    ScratchDir scratch;
    Application application(kDefaultVersion, std::make_shared<SpreadsheetFiles>());
    application.SetSheetsInNewWorkbook(initial_sheets);
    Workbook& workbook = application.Workbooks().Add();
    Sheet* first = workbook.sheets().front().get();
    application.SetDisplayAlerts(false);  // as the driver leaves it

    CreateResultSheets(application, (scratch / "meas").string());

    EXPECT_EQ(SheetNames(workbook),
              (std::vector<std::string>{"Report", "Raw Data", "Markers Details"}));
    EXPECT_EQ(workbook.sheets()[1].get(), first) << "the former first sheet is Raw Data";
    EXPECT_EQ(workbook.ActiveSheet().Name(), "Markers Details");
    EXPECT_TRUE(std::filesystem::exists(scratch / "meas.xlsx"));
    EXPECT_EQ(application.StatusBar(), kCreatingSheetsStatus);
    EXPECT_TRUE(application.DisplayAlerts());

    Worksheet& raw = workbook.Worksheets()("Raw Data");
    for (int column = 1; column <= 6; ++column) {
      EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(column), 10) << "Raw Data column " << column;
    }
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(7), kStandardColumnWidth);
    EXPECT_TRUE(raw.Columns(1).Font().Italic());
    EXPECT_FALSE(raw.Columns(2).Font().Italic());
    for (const char* name : {"Report", "Markers Details"}) {
      Worksheet& other = workbook.Worksheets()(name);
      for (int column = 1; column <= 6; ++column) {
        EXPECT_DOUBLE_EQ(other.ColumnWidthAt(column), kStandardColumnWidth) << name << column;
      }
      EXPECT_FALSE(other.Columns(1).Font().Italic()) << name;
    }
  }
}

TEST(CreateResultSheetsTest, AFileThatCannotBeWrittenIsARunTimeFailure) {
  ScratchDir scratch;
  Application application(kDefaultVersion, std::make_shared<SpreadsheetFiles>());
  application.Workbooks().Add();
  EXPECT_THROW(CreateResultSheets(application, (scratch / "no such folder" / "meas").string()),
               RuntimeFailure);
}

TEST(PrepareScreenChartTest, AddsAnEmbeddedXyChartAndReturnsTheXColumn) {
  ResultWorkbook result;
  Worksheet& report = result.sheet("Report");
  Worksheet& raw = result.sheet("Raw Data");
  struct Case {
    int16_t first_row, last_row;
    const char* address;
  };
  const Case cases[] = {{12, 112, "$F$12:$F$112"}, {519, 1020, "$F$519:$F$1020"}};
  int charts = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.address);
    const CellRange x_range = PrepareScreenChart(result.application(), c.first_row, c.last_row);
    ++charts;
    EXPECT_EQ(&x_range.Parent(), &raw);
    EXPECT_EQ(x_range.Address(), c.address);
    ASSERT_EQ(report.ChartObjects().Count(), charts);
    Chart& chart = report.ChartObjects(charts).Chart();
    EXPECT_EQ(chart.ChartType(), 75);
    EXPECT_EQ(&result.workbook().ActiveChart(), &chart);
    EXPECT_EQ(chart.SeriesCollection().Count(), 0);
    EXPECT_EQ(result.workbook().Charts().Count(), 0) << "no chart sheet is left behind";
    EXPECT_EQ(result.workbook().Sheets().Count(), 3);
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(4), 12);
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(8), 1);
    EXPECT_DOUBLE_EQ(raw.ColumnWidthAt(5), 10) << "only D and H change";
  }
}

}  // namespace
}  // namespace z4400
