// Behaviour of the workbook model as the sheet writers and chart builders
// rely on it: sheet order, which sheet, chart and workbook are active, and
// charts moving between chart sheets and worksheets.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/runtime_failure.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

std::vector<std::string> Names(const Workbook& book) {
  std::vector<std::string> names;
  for (const auto& sheet : book.sheets()) names.push_back(sheet->Name());
  return names;
}

class WorkbookModelTest : public ::testing::Test {
 protected:
  Application application_;
  Workbook& book_ = application_.Workbooks().Add();
};

TEST_F(WorkbookModelTest, NewWorkbooksAndTheActiveWorkbook) {
  EXPECT_EQ(book_.Name(), "Book1");
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet1"}));
  EXPECT_EQ(&application_.ActiveSheet(), book_.sheets()[0].get());
  EXPECT_FALSE(book_.HasFile());

  application_.SetSheetsInNewWorkbook(3);
  Workbook& second = application_.Workbooks().Add();
  EXPECT_EQ(second.Name(), "Book2");
  EXPECT_EQ(Names(second), (std::vector<std::string>{"Sheet1", "Sheet2", "Sheet3"}));
  EXPECT_EQ(&application_.ActiveWorkbook(), &second);
  EXPECT_EQ(&application_.Workbooks()("book1"), &book_);
  EXPECT_THROW(application_.Workbooks()("Book3"), RuntimeFailure);
  EXPECT_THROW(application_.Workbooks()(3), RuntimeFailure);

  book_.Activate();
  EXPECT_EQ(&application_.ActiveWorkbook(), &book_);
  // Closing the active workbook leaves the last remaining one active.
  book_.Close();
  EXPECT_EQ(&application_.ActiveWorkbook(), &second);
  second.Close();
  EXPECT_FALSE(application_.HasActiveWorkbook());
  EXPECT_THROW(application_.ActiveWorkbook(), RuntimeFailure);

  application_.Quit();
  EXPECT_THROW(application_.Workbooks().Add(), RuntimeFailure);
}

TEST_F(WorkbookModelTest, ResultSheetsLayout) {
  // The result-sheet layout: delete down to one sheet, rename it, add one
  // before and one after.
  application_.SetSheetsInNewWorkbook(5);
  Workbook& book = application_.Workbooks().Add();
  for (int index = book.Sheets().Count(); index >= 2; --index) book.Sheets()(index).Delete();
  book.Sheets()(1).SetName("Raw Data");
  Sheet& raw = book.Worksheets()("Raw Data");
  book.Worksheets().Add(&raw).SetName("Report");
  book.Worksheets().Add(nullptr, &raw).SetName("Markers Details");
  EXPECT_EQ(Names(book), (std::vector<std::string>{"Report", "Raw Data", "Markers Details"}));
  EXPECT_EQ(book.ActiveSheet().Name(), "Markers Details");
  EXPECT_EQ(raw.Index(), 2);
}

TEST_F(WorkbookModelTest, AddingPlacesBeforeTheActiveSheetAndActivates) {
  Sheet& first = book_.Sheets()(1);
  Worksheet& added = book_.Worksheets().Add();
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet2", "Sheet1"}));
  EXPECT_EQ(&book_.ActiveSheet(), &added);
  first.Activate();
  ChartSheet& chart = book_.Charts().Add();
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet2", "Chart1", "Sheet1"}));
  EXPECT_EQ(&book_.ActiveChart(), &chart.Chart());
  EXPECT_EQ(book_.Worksheets()(2).Name(), "Sheet1");  // worksheets only
  EXPECT_EQ(book_.Charts()(1).Name(), "Chart1");
  EXPECT_THROW(book_.Worksheets()("Chart1"), RuntimeFailure);
  EXPECT_THROW(book_.Charts()("Sheet1"), RuntimeFailure);
  // A chart sheet is no worksheet: activating a worksheet drops the chart.
  first.Activate();
  EXPECT_FALSE(book_.HasActiveChart());
  EXPECT_THROW(book_.ActiveChart(), RuntimeFailure);
}

TEST_F(WorkbookModelTest, MoveCopyAndDelete) {
  book_.Worksheets().Add(nullptr, &book_.Sheets()(1));  // Sheet2 after Sheet1
  book_.Worksheets().Add(nullptr, &book_.Sheets()(2));  // Sheet3 at the end
  ASSERT_EQ(Names(book_), (std::vector<std::string>{"Sheet1", "Sheet2", "Sheet3"}));

  book_.Sheets()("Sheet1").Move(nullptr, &book_.Sheets()(3));
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet2", "Sheet3", "Sheet1"}));
  book_.Sheets()("Sheet1").Move(&book_.Sheets()(1), nullptr);
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet1", "Sheet2", "Sheet3"}));
  book_.Sheets()("Sheet2").Move(&book_.Sheets()(3), nullptr);  // already there
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet1", "Sheet2", "Sheet3"}));

  Sheet& copy = book_.Sheets()("Sheet2").Copy(&book_.Sheets()(1), nullptr);
  Sheet& second_copy = book_.Sheets()("Sheet2").Copy(nullptr, nullptr);
  EXPECT_EQ(copy.Name(), "Sheet2 (2)");
  EXPECT_EQ(second_copy.Name(), "Sheet2 (3)");
  EXPECT_EQ(Names(book_),
            (std::vector<std::string>{"Sheet2 (2)", "Sheet1", "Sheet2", "Sheet3", "Sheet2 (3)"}));
  EXPECT_EQ(&book_.ActiveSheet(), &second_copy);

  // Deleting the active sheet activates the one that takes its place, or
  // the one before when it was last.
  book_.Sheets()("Sheet1").Activate();
  book_.Sheets()("Sheet1").Delete();
  EXPECT_EQ(book_.ActiveSheet().Name(), "Sheet2");
  book_.Sheets()("Sheet2 (3)").Activate();
  book_.Sheets()("Sheet2 (3)").Delete();
  EXPECT_EQ(book_.ActiveSheet().Name(), "Sheet3");
  // Deleting another sheet keeps the active one.
  book_.Sheets()("Sheet2 (2)").Delete();
  EXPECT_EQ(book_.ActiveSheet().Name(), "Sheet3");
  EXPECT_EQ(Names(book_), (std::vector<std::string>{"Sheet2", "Sheet3"}));
}

TEST_F(WorkbookModelTest, SheetNamesAreCheckedAndUnique) {
  Sheet& sheet = book_.Sheets()(1);
  book_.Worksheets().Add();
  for (const char* bad : {"", "a/b", "a\\b", "a?b", "a*b", "a[b", "a]b", "a:b", "'quoted",
                          "quoted'", "SHEET2", "0123456789012345678901234567890X"}) {
    EXPECT_THROW(sheet.SetName(bad), RuntimeFailure) << bad;
  }
  EXPECT_EQ(sheet.Name(), "Sheet1");
  sheet.SetName("sheet1");  // its own name in another case
  EXPECT_EQ(sheet.Name(), "sheet1");
  sheet.SetName("0123456789012345678901234567890");  // 31 characters
  sheet.SetName("Résumé ファイル");
  EXPECT_EQ(book_.Sheets()("résumé ファイル").Name(), "Résumé ファイル");
}

TEST_F(WorkbookModelTest, ChartsMoveBetweenChartSheetsAndWorksheets) {
  Worksheet& report = book_.Worksheets()(1);
  report.SetName("Report");
  Worksheet& raw = book_.Worksheets().Add(nullptr, &report);
  raw.SetName("Raw Data");
  raw.Cells(1, 6).SetValue(1.0);

  // The screen chart: a chart sheet, made a scatter chart, moved into
  // "Report" as its first chart object.
  Chart& chart = book_.Charts().Add().Chart();
  chart.SetChartType(kXlXYScatterLinesNoMarkers);
  EXPECT_EQ(&chart.Location(kXlLocationAsObject, "Report"), &chart);
  EXPECT_EQ(book_.Charts().Count(), 0);
  ASSERT_EQ(report.ChartObjects().Count(), 1);
  ChartObject& object = report.ChartObjects(1);
  EXPECT_EQ(object.Name(), "Chart 1");
  EXPECT_EQ(chart.Object(), &object);
  EXPECT_EQ(&application_.ActiveChart(), &chart);
  EXPECT_EQ(object.Width(), kDefaultChartWidth);
  EXPECT_EQ(object.Height(), kDefaultChartHeight);

  // The trace series, added to the active chart after activating the chart
  // object from another sheet.
  raw.Activate();
  EXPECT_FALSE(book_.HasActiveChart());
  report.ChartObjects(1).Activate();
  Series& series = application_.ActiveChart().SeriesCollection().NewSeries();
  series.SetXValues(raw.Range("F1:F3"));
  series.SetValues(raw.Range(raw.Cells(1, 9), raw.Cells(3, 9)));
  EXPECT_EQ(series.XValues()(1), CellValue(1.0));
  EXPECT_EQ(chart.SeriesCollection().Count(), 1);

  // A second chart goes beside the first.
  Chart& second = book_.Charts().Add().Chart();
  second.Location(kXlLocationAsObject, "Report");
  EXPECT_EQ(report.ChartObjects(2).Name(), "Chart 2");
  EXPECT_GT(report.ChartObjects(2).Top(), report.ChartObjects(1).Top());

  // A copy to a chart sheet of its own (the graph-sheet copies).
  second.Location(kXlLocationAsNewSheet, "Graph 2");
  EXPECT_EQ(report.ChartObjects().Count(), 1);
  EXPECT_EQ(&book_.Charts()("Graph 2").Chart(), &second);
  EXPECT_EQ(&application_.ActiveChart(), &second);
  EXPECT_THROW(chart.Location(kXlLocationAsNewSheet, "Report"), RuntimeFailure);  // taken
  EXPECT_THROW(chart.Location(kXlLocationAsObject, "Graph 2"), RuntimeFailure);   // no worksheet

  // Deleting the chart object forgets the active chart.
  report.ChartObjects(1).Activate();
  report.ChartObjects(1).Delete();
  EXPECT_EQ(report.ChartObjects().Count(), 0);
  EXPECT_FALSE(book_.HasActiveChart());
}

TEST_F(WorkbookModelTest, SeriesReferencesFollowRenamedSheets) {
  Worksheet& data = book_.Worksheets()(1);
  data.Range("A1:A3").SetValue(2.0);
  Chart& chart = book_.Charts().Add().Chart();
  Series& series = chart.SeriesCollection().NewSeries();
  series.SetValues(data.Range("A1:A3"));
  data.SetName("Raw Data");
  EXPECT_EQ(series.ValuesSource()->Formula(), "'Raw Data'!$A$1:$A$3");
  EXPECT_EQ(series.Values().UBound(), 3);
  data.SetName("It's");
  EXPECT_EQ(series.ValuesSource()->Formula(), "'It''s'!$A$1:$A$3");

  // A series whose sheet is gone cannot be read back.
  book_.Worksheets().Add();
  data.Delete();
  EXPECT_THROW(series.Values(), RuntimeFailure);
}

TEST_F(WorkbookModelTest, PointFormatsAreSparseAndChecked) {
  Worksheet& data = book_.Worksheets()(1);
  data.Range("A1:A401").SetValue(1.0);
  Chart& chart = book_.Charts().Add().Chart();
  Series& series = chart.SeriesCollection().NewSeries();
  series.SetValues(data.Range("A1:A401"));
  EXPECT_EQ(series.PointCount(), 401);
  EXPECT_THROW(series.Points(0), RuntimeFailure);
  EXPECT_THROW(series.Points(402), RuntimeFailure);

  // A normal marker, then the reference marker on the same point.
  ChartPoint point = series.Points(101);
  point.SetMarkerForegroundColor(RgbColor(0, 255, 255));
  point.SetMarkerBackgroundColor(RgbColor(255, 0, 0));
  point.SetMarkerSize(6);
  point.SetMarkerStyle(kXlMarkerStyleDiamond);
  EXPECT_THROW(point.DataLabel(), RuntimeFailure);  // no label yet
  point.SetHasDataLabel(true);
  point.DataLabel().SetText("2");
  EXPECT_EQ(point.MarkerBackgroundColor(), 255);

  point.SetMarkerForegroundColor(RgbColor(255, 0, 255));
  point.SetMarkerBackgroundColorIndex(kXlColorIndexNone);
  point.SetMarkerStyle(kXlMarkerStyleStar);
  point.DataLabel().SetText("R");

  ASSERT_EQ(series.point_formats().size(), 1u);
  const PointFormat& format = series.point_formats().at(101);
  EXPECT_EQ(format.marker_foreground_color, 16711935);
  EXPECT_FALSE(format.marker_background_color);  // replaced by "no fill"
  EXPECT_EQ(format.marker_background_color_index, kXlColorIndexNone);
  EXPECT_EQ(format.marker_style, kXlMarkerStyleStar);
  EXPECT_EQ(format.marker_size, 6);
  EXPECT_EQ(format.data_label_text, "R");
  EXPECT_THROW(point.SetMarkerSize(1), RuntimeFailure);

  // Unformatted points follow the chart type.
  chart.SetChartType(kXlXYScatterLinesNoMarkers);
  EXPECT_EQ(series.Points(1).MarkerStyle(), kXlMarkerStyleNone);
  chart.SetChartType(kXlXYScatterLines);
  EXPECT_EQ(series.Points(1).MarkerStyle(), kXlMarkerStyleAutomatic);
  EXPECT_EQ(series.point_formats().size(), 1u);  // reading adds nothing
}

TEST_F(WorkbookModelTest, CopiedWorksheetCarriesItsCellsAndCharts) {
  Worksheet& report = book_.Worksheets()(1);
  report.Cells(1, 1).SetValue("Measurement Report");
  report.Cells(1, 1).Font().SetBold(true);
  report.Columns(1).SetColumnWidth(18);
  report.ChartObjects().Add(10, 20, 300, 200).Chart().SetChartType(75);
  auto& copy = static_cast<Worksheet&>(report.Copy(nullptr, nullptr));
  EXPECT_EQ(copy.ValueAt(1, 1), CellValue("Measurement Report"));
  EXPECT_TRUE(copy.Cells(1, 1).Font().Bold());
  EXPECT_EQ(copy.Columns(1).ColumnWidth(), 18);
  ASSERT_EQ(copy.ChartObjects().Count(), 1);
  EXPECT_NE(&copy.ChartObjects(1).Chart(), &report.ChartObjects(1).Chart());
  EXPECT_EQ(copy.ChartObjects(1).Chart().ChartType(), 75);
  EXPECT_EQ(copy.ChartObjects(1).Left(), 10);
  // The copy is independent.
  copy.Cells(1, 1).SetValue("changed");
  EXPECT_EQ(report.ValueAt(1, 1), CellValue("Measurement Report"));
}

}  // namespace
}  // namespace z4400
