#include "workbook/excel_app.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "common/runtime_failure.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"

namespace z4400 {
namespace {

// A started layer with one new workbook ("Book1" holding "Sheet1").
class ExcelAppTest : public ::testing::Test {
 protected:
  void SetUp() override {
    excel_.Excel_Start(false);
    book_ = &excel_.application()->Workbooks().Add();
  }

  std::vector<std::string> SheetNames() const {
    std::vector<std::string> names;
    for (const auto& sheet : book_->sheets()) names.push_back(sheet->Name());
    return names;
  }

  // Rows 1..values.size() of column 1 of `sheet` hold `values`.
  void FillColumn(Worksheet& sheet, int column, const std::vector<double>& values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      sheet.Cells(static_cast<int>(i) + 1, column).SetValue(values[i]);
    }
  }

  ExcelApp excel_;
  Workbook* book_ = nullptr;
};

TEST(ExcelAppLifecycleTest, NothingWorksBeforeStartOrAfterQuit) {
  ExcelApp excel;
  EXPECT_EQ(excel.application(), nullptr);
  auto check_stopped = [&excel] {
    // Operations that fail silently answer false …
    EXPECT_FALSE(excel.Workbook_Close("Book1"));
    EXPECT_FALSE(excel.Workbook_Open("/nonexistent.xlsx"));
    EXPECT_FALSE(excel.Worksheet_New("Report"));
    EXPECT_FALSE(excel.Worksheet_Delete("Report"));
    EXPECT_FALSE(excel.Chart_New("Graph"));
    EXPECT_TRUE(excel.Worksheet_MoveToEnd("Report").IsEmpty());
    EXPECT_NO_THROW(excel.Chart_AddData("Graph", "Raw Data", 1, 2, 5, 10, "Trace 1"));
    // … the others let the error through.
    EXPECT_THROW(excel.Excel_WindowState(kXlMinimized), RuntimeFailure);
    EXPECT_THROW(excel.Excel_Quit(false), RuntimeFailure);
    EXPECT_THROW(excel.Workbook_Exist("/tmp/x.xlsx"), RuntimeFailure);
    EXPECT_THROW(excel.Worksheet_Exist("Report"), RuntimeFailure);
    EXPECT_THROW(excel.Worksheet_GetCellValue(1, 1), RuntimeFailure);
    EXPECT_THROW(excel.Worksheet_WorksheetsNames(), RuntimeFailure);
    EXPECT_THROW(excel.Chart_Type("Graph", kXlXYScatterLinesNoMarkers), RuntimeFailure);
    // The column letters need no application.
    EXPECT_EQ(ExcelApp::ExcelColNumber2ColLetter(28), "AB");
  };
  check_stopped();

  EXPECT_FALSE(excel.Excel_Start(true));  // always false
  ASSERT_NE(excel.application(), nullptr);
  EXPECT_TRUE(excel.Excel_WindowState(kXlMinimized));
  EXPECT_FALSE(excel.Excel_WindowState(kXlNormal));
  EXPECT_TRUE(excel.application()->Visible());
  EXPECT_FALSE(excel.application()->DisplayAlerts());
  EXPECT_EQ(excel.application()->Version(), "16.0");

  // Starting again replaces the instance without quitting the first one.
  const std::shared_ptr<Application> first = excel.application();
  excel.Excel_Start(false);
  EXPECT_NE(excel.application(), first);
  EXPECT_TRUE(first->Running());
  EXPECT_FALSE(excel.application()->Visible());

  const std::shared_ptr<Application> second = excel.application();
  EXPECT_FALSE(excel.Excel_Quit(false));  // always false
  EXPECT_EQ(excel.application(), nullptr);
  EXPECT_FALSE(second->Running());
  check_stopped();
}

TEST(ExcelAppLifecycleTest, VersionIsWhatTheUserSet) {
  ExcelApp excel("11.0");
  excel.Excel_Start(false);
  EXPECT_EQ(excel.application()->Version(), "11.0");
}

TEST_F(ExcelAppTest, WorksheetNewComparesInLowerCaseAndAddsFirst) {
  EXPECT_TRUE(excel_.Worksheet_New("report"));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"report", "Sheet1"}));
  EXPECT_EQ(&book_->ActiveSheet(), book_->sheets()[0].get());

  // A worksheet named "report" exists: "Report" clashes, nothing is added.
  EXPECT_FALSE(excel_.Worksheet_New("Report"));
  EXPECT_FALSE(excel_.Worksheet_New("SHEET1"));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"report", "Sheet1"}));

  EXPECT_TRUE(excel_.Worksheet_New("Raw Data"));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"Raw Data", "report", "Sheet1"}));
  EXPECT_EQ(book_->ActiveSheet().Name(), "Raw Data");

  // Chart sheets are not looked through: the sheet is added, its renaming
  // fails, and what was done stays done.
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  EXPECT_FALSE(excel_.Worksheet_New("graph"));
  EXPECT_EQ(book_->Sheets().Count(), 5);
  EXPECT_EQ(book_->Worksheets().Count(), 4);
  EXPECT_EQ(book_->Worksheets()(1).Name().rfind("Sheet", 0), 0u);
}

TEST_F(ExcelAppTest, WorksheetExistComparesExactlyOverAllSheets) {
  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  EXPECT_TRUE(excel_.Worksheet_Exist("Report"));
  EXPECT_FALSE(excel_.Worksheet_Exist("report"));
  EXPECT_FALSE(excel_.Worksheet_Exist("Report "));
  EXPECT_TRUE(excel_.Worksheet_Exist("Graph"));  // chart sheets count too
  EXPECT_FALSE(excel_.Worksheet_Exist(""));
}

TEST_F(ExcelAppTest, WorksheetsNamesStartAtIndexZeroAndSkipChartSheets) {
  ASSERT_TRUE(excel_.Worksheet_New("Raw Data"));
  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  ASSERT_TRUE(excel_.Worksheet_Delete("Sheet1"));
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  EXPECT_EQ(excel_.Worksheet_WorksheetsNames(), (std::vector<std::string>{"Report", "Raw Data"}));

  // A workbook of chart sheets only has no worksheet names: an error.
  ASSERT_TRUE(excel_.Worksheet_Delete("Report"));
  ASSERT_TRUE(excel_.Worksheet_Delete("Raw Data"));
  EXPECT_THROW(excel_.Worksheet_WorksheetsNames(), RuntimeFailure);
}

TEST_F(ExcelAppTest, AlwaysFalseOperationsStillAct) {
  Workbook& second = excel_.application()->Workbooks().Add();
  EXPECT_EQ(&excel_.application()->ActiveWorkbook(), &second);
  EXPECT_FALSE(excel_.Workbook_Select(book_->Name()));
  EXPECT_EQ(&excel_.application()->ActiveWorkbook(), book_);
  EXPECT_FALSE(excel_.Workbook_Select("no such book"));
  EXPECT_EQ(&excel_.application()->ActiveWorkbook(), book_);

  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  EXPECT_FALSE(excel_.Worksheet_Select("Sheet1"));
  EXPECT_EQ(book_->ActiveSheet().Name(), "Sheet1");
  EXPECT_FALSE(excel_.Worksheet_Select("Missing"));
  EXPECT_EQ(book_->ActiveSheet().Name(), "Sheet1");
}

TEST_F(ExcelAppTest, WorksheetCopyPutsTheRenamedCopyFirst) {
  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  excel_.Worksheet_Select("Sheet1");
  excel_.Worksheet_SetCellValue(2, 3, 7.5);

  EXPECT_FALSE(excel_.Worksheet_Copy("Sheet1", "Copy of data"));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"Copy of data", "Report", "Sheet1"}));
  EXPECT_EQ(book_->ActiveSheet().Name(), "Copy of data");
  EXPECT_EQ(excel_.Worksheet_GetCellValue(2, 3), CellValue(7.5));

  // A missing sheet copies nothing.
  EXPECT_FALSE(excel_.Worksheet_Copy("Missing", "X"));
  EXPECT_EQ(book_->Sheets().Count(), 3);
}

TEST_F(ExcelAppTest, MoveDeleteRenameProtect) {
  ASSERT_TRUE(excel_.Worksheet_New("B"));
  ASSERT_TRUE(excel_.Worksheet_New("A"));
  EXPECT_EQ(excel_.Worksheet_MoveToEnd("A"), CellValue(true));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"B", "Sheet1", "A"}));
  EXPECT_TRUE(excel_.Worksheet_MoveToEnd("Missing").IsEmpty());

  EXPECT_TRUE(excel_.Worksheet_Delete("Sheet1"));
  EXPECT_FALSE(excel_.Worksheet_Delete("Sheet1"));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"B", "A"}));

  excel_.Worksheet_Select("B");
  EXPECT_TRUE(excel_.Worksheet_Rename("Report"));
  EXPECT_FALSE(excel_.Worksheet_Rename("a"));  // taken, whatever the case
  EXPECT_FALSE(excel_.Worksheet_Rename("bad:name"));
  EXPECT_FALSE(excel_.Worksheet_Rename(std::string(32, 'x')));
  EXPECT_EQ(SheetNames(), (std::vector<std::string>{"Report", "A"}));

  EXPECT_TRUE(excel_.Worksheet_Protect("Report"));
  EXPECT_THROW(excel_.Worksheet_SetCellValue(1, 1, 1.0), RuntimeFailure);
  EXPECT_TRUE(excel_.Worksheet_Unprotect("Report"));
  EXPECT_NO_THROW(excel_.Worksheet_SetCellValue(1, 1, 1.0));
  EXPECT_FALSE(excel_.Worksheet_Protect("Missing"));

  // The last sheet cannot go.
  EXPECT_TRUE(excel_.Worksheet_Delete("A"));
  EXPECT_FALSE(excel_.Worksheet_Delete("Report"));
}

TEST_F(ExcelAppTest, CellsAreReadAndWrittenOnTheActiveSheet) {
  excel_.Worksheet_SetCellValue(7, 2, CellValue("12.5"));
  EXPECT_EQ(excel_.Worksheet_GetCellValue(7, 2), CellValue(12.5));
  EXPECT_EQ(excel_.Worksheet_ReadCell("B7"), CellValue(12.5));
  excel_.Worksheet_WriteCell("A1:B2", CellValue("x"));
  for (const char* address : {"A1", "A2", "B1", "B2"}) {
    EXPECT_EQ(excel_.Worksheet_ReadCell(address), CellValue("x")) << address;
  }
  EXPECT_TRUE(excel_.Worksheet_ReadCell("C3").IsEmpty());
  excel_.Worksheet_WriteCell("C3", CellValue("2007-03-05"));
  EXPECT_EQ(excel_.Worksheet_ReadCell("C3"), CellValue(DateValue{39146}));

  EXPECT_THROW(excel_.Worksheet_GetCellValue(0, 1), RuntimeFailure);
  EXPECT_THROW(excel_.Worksheet_SetCellValue(1, -1, 1.0), RuntimeFailure);
  EXPECT_THROW(excel_.Worksheet_ReadCell("not an address"), RuntimeFailure);
  EXPECT_THROW(excel_.Worksheet_WriteCell("A0", 1.0), RuntimeFailure);

  // A chart sheet has no cells.
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  EXPECT_THROW(excel_.Worksheet_GetCellValue(1, 1), RuntimeFailure);
}

TEST_F(ExcelAppTest, ChartAddDataRefersToRowCountPlusOneCells) {
  ASSERT_TRUE(excel_.Worksheet_New("Raw Data"));
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  Chart& chart = book_->Charts()("Graph").Chart();
  EXPECT_EQ(chart.SeriesCollection().Count(), 0);

  excel_.Chart_AddData("Graph", "Raw Data", 1, 2, 5, 100, "Trace 1");
  ASSERT_EQ(chart.SeriesCollection().Count(), 1);
  const Series& series = chart.SeriesCollection(1);
  EXPECT_EQ(series.Name(), "Trace 1");
  ASSERT_TRUE(series.XValuesSource());
  EXPECT_EQ(series.XValuesSource()->sheet, "Raw Data");
  EXPECT_EQ(series.XValuesSource()->area, (CellArea{5, 1, 105, 1}));
  EXPECT_EQ(series.ValuesSource()->area, (CellArea{5, 2, 105, 2}));
  EXPECT_EQ(series.XValuesSource()->Formula(), "'Raw Data'!$A$5:$A$105");
  EXPECT_EQ(series.Values().UBound(), 101);

  // The series refers to the cells: a later write shows through.
  book_->Worksheets()("Raw Data").Cells(5, 2).SetValue(-3.0);
  EXPECT_EQ(series.Values()(1), CellValue(-3.0));

  excel_.Chart_AddData("Graph", "raw data", 27, 28, 1, 0, "Trace 2");
  ASSERT_EQ(chart.SeriesCollection().Count(), 2);
  EXPECT_EQ(chart.SeriesCollection(2).XValuesSource()->Formula(), "'Raw Data'!$AA$1");

  // Missing sheets and charts, and a 16-bit overflow, add nothing.
  excel_.Chart_AddData("Graph", "Missing", 1, 2, 5, 10, "X");
  excel_.Chart_AddData("Missing", "Raw Data", 1, 2, 5, 10, "X");
  excel_.Chart_AddData("Graph", "Raw Data", 1, 2, 32000, 1000, "X");
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);
}

TEST_F(ExcelAppTest, ChartAddDataFillsTheSingleValuePlaceholder) {
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  Chart& chart = book_->Charts()("Graph").Chart();
  chart.SeriesCollection().NewSeries().SetValues(std::vector<CellValue>{CellValue(0.0)});

  excel_.Chart_AddData("Graph", "Sheet1", 1, 2, 1, 9, "Trace 1");
  ASSERT_EQ(chart.SeriesCollection().Count(), 1);
  EXPECT_EQ(chart.SeriesCollection(1).Name(), "Trace 1");
  EXPECT_EQ(chart.SeriesCollection(1).Values().UBound(), 10);

  excel_.Chart_AddData("Graph", "Sheet1", 1, 3, 1, 9, "Trace 2");
  EXPECT_EQ(chart.SeriesCollection().Count(), 2);

  // One series of two values is not a placeholder, nor is a one-cell
  // series among several.
  ASSERT_TRUE(excel_.Chart_New("Other"));
  Chart& other = book_->Charts()("Other").Chart();
  other.SeriesCollection().NewSeries().SetValues(
      std::vector<CellValue>{CellValue(1.0), CellValue(2.0)});
  excel_.Chart_AddData("Other", "Sheet1", 1, 2, 1, 0, "Trace 1");
  EXPECT_EQ(other.SeriesCollection().Count(), 2);
  // A one-cell series made by a row count of 0 is reused by the next call
  // only while it is the single series: here there are two.
  excel_.Chart_AddData("Other", "Sheet1", 1, 2, 1, 0, "Trace 2");
  EXPECT_EQ(other.SeriesCollection().Count(), 3);
}

// X values 10, 20, 30, 40, 50 in column A; the series is series 1 of
// "Graph".
class ChartAddMarkerTest : public ExcelAppTest {
 protected:
  void SetUp() override {
    ExcelAppTest::SetUp();
    Worksheet& data = book_->Worksheets()(1);
    FillColumn(data, 1, {10, 20, 30, 40, 50});
    FillColumn(data, 2, {1, 2, 3, 4, 5});
    ASSERT_TRUE(excel_.Chart_New("Graph"));
    excel_.Chart_AddData("Graph", "Sheet1", 1, 2, 1, 4, "Trace 1");
    series_ = &book_->Charts()("Graph").Chart().SeriesCollection(1);
  }

  std::vector<int> MarkedPoints() const {
    std::vector<int> points;
    for (const auto& [index, format] : series_->point_formats()) {
      if (format.marker_style == kXlMarkerStyleAutomatic) points.push_back(index);
    }
    return points;
  }

  Series* series_ = nullptr;
};

TEST_F(ChartAddMarkerTest, MarksThePointAfterTheFirstAtOrBeyondX) {
  // The first point at or beyond X is k; the walk leaves i = k + 1, marked
  // when below the count of 5, an error otherwise.
  const struct {
    double x;
    std::vector<int> marked;
    bool raises;
  } kCases[] = {
      {5, {2}, false},     // below every value: k = 1
      {10, {2}, false},    // equal to the first: k = 1
      {10.5, {3}, false},  // k = 2
      {30, {4}, false},    // k = 3
      {31, {}, true},      // k = 4 = N − 1: i = N
      {50, {}, true},      // k = N
      {60, {}, false},     // above every value: nothing marked
  };
  for (const auto& c : kCases) {
    series_->point_formats().clear();
    if (c.raises) {
      EXPECT_THROW(excel_.Chart_AddMarker("Graph", 1, c.x, false, 0), RuntimeFailure) << c.x;
    } else {
      EXPECT_NO_THROW(excel_.Chart_AddMarker("Graph", 1, c.x, false, 0)) << c.x;
    }
    EXPECT_EQ(MarkedPoints(), c.marked) << c.x;
    EXPECT_FALSE(series_->DataLabels().NumberFormat()) << c.x;
  }
}

TEST_F(ChartAddMarkerTest, LabelShowsTheValueWithRoundedDecimals) {
  const struct {
    double decimals;
    std::string format;
  } kCases[] = {
      {3, "0.000"}, {2.5, "0.00"}, {3.5, "0.0000"}, {0, "0."}, {0.5, "0."}, {-2, "0."},
  };
  for (const auto& c : kCases) {
    series_->point_formats().clear();
    excel_.Chart_AddMarker("Graph", 1, 20, true, c.decimals);
    EXPECT_EQ(series_->DataLabels().NumberFormat(), c.format) << c.decimals;
    ASSERT_EQ(series_->point_formats().count(3), 1u);
    const PointFormat& point = series_->point_formats().at(3);
    EXPECT_TRUE(point.has_data_label);
    EXPECT_FALSE(point.data_label_text);  // it shows the value
  }
  EXPECT_THROW(MarkerLabelFormat(40000), RuntimeFailure);
}

TEST_F(ChartAddMarkerTest, MissingChartOrSeriesIsAnError) {
  EXPECT_THROW(excel_.Chart_AddMarker("Missing", 1, 20, false, 0), RuntimeFailure);
  EXPECT_THROW(excel_.Chart_AddMarker("Graph", 2, 20, false, 0), RuntimeFailure);
  EXPECT_THROW(excel_.Chart_AddMarker("Graph", 0, 20, false, 0), RuntimeFailure);
  // A text X value that is not a number cannot be compared.
  book_->Worksheets()(1).Cells(1, 1).SetValue("abc");
  EXPECT_THROW(excel_.Chart_AddMarker("Graph", 1, 20, false, 0), RuntimeFailure);
}

TEST_F(ExcelAppTest, ChartPropertiesAndAxes) {
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  Chart& chart = book_->Charts()("Graph").Chart();

  excel_.Chart_Type("Graph", kXlXYScatterLinesNoMarkers);
  EXPECT_EQ(chart.ChartType(), 75);

  excel_.Chart_Legend("Graph", true, kXlLegendPositionBottom);
  EXPECT_EQ(chart.Legend().Position(), kXlLegendPositionBottom);
  excel_.Chart_Legend("Graph", false, kXlLegendPositionTop);
  EXPECT_FALSE(chart.HasLegend());

  excel_.Chart_Title("Graph", true, "Screen 1 Traces");
  EXPECT_EQ(chart.ChartTitle().Text(), "Screen 1 Traces");
  excel_.Chart_Title("Graph", false, "ignored");
  EXPECT_FALSE(chart.HasTitle());

  excel_.Chart_XAxis("Graph", true, 100.0, 200.0, 10.0, "Frequency (MHz)");
  const Axis& x = chart.Axes(kXlCategory);
  EXPECT_FALSE(x.MinimumScaleIsAuto());
  EXPECT_EQ(x.MinimumScale(), 100);
  EXPECT_EQ(x.MaximumScale(), 200);
  EXPECT_EQ(x.MajorUnit(), 10);
  EXPECT_EQ(x.AxisTitle().Text(), "Frequency (MHz)");

  // True means automatic; false counts as 0; a title is set only with
  // HasTitle.
  excel_.Chart_YAxis("Graph", false, true, false, true, "ignored");
  const Axis& y = chart.Axes(kXlValue);
  EXPECT_TRUE(y.MinimumScaleIsAuto());
  EXPECT_FALSE(y.MaximumScaleIsAuto());
  EXPECT_EQ(y.MaximumScale(), 0);
  EXPECT_TRUE(y.MajorUnitIsAuto());
  EXPECT_FALSE(y.HasTitle());
  excel_.Chart_XAxis("Graph", true, true, true, true, "Time (msec)");
  EXPECT_TRUE(x.MinimumScaleIsAuto());
  EXPECT_TRUE(x.MaximumScaleIsAuto());
  EXPECT_TRUE(x.MajorUnitIsAuto());
  EXPECT_EQ(x.AxisTitle().Text(), "Time (msec)");
  // A step of 0 is refused, as the spreadsheet does.
  EXPECT_THROW(excel_.Chart_YAxis("Graph", false, true, true, 0.0, ""), RuntimeFailure);

  excel_.Chart_XLabelPosition("Graph", kXlTickLabelPositionLow);
  excel_.Chart_YLabelPosition("Graph", kXlTickLabelPositionHigh);
  EXPECT_EQ(x.TickLabelPosition(), kXlTickLabelPositionLow);
  EXPECT_EQ(y.TickLabelPosition(), kXlTickLabelPositionHigh);
  EXPECT_THROW(excel_.Chart_XAxis("Missing", false, true, true, true, ""), RuntimeFailure);
}

TEST_F(ExcelAppTest, ChartLocationEmbedsTheChartInAWorksheet) {
  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  ASSERT_TRUE(excel_.Chart_New("Graph"));
  Chart* chart = &book_->Charts()("Graph").Chart();
  excel_.Chart_Location("Graph", kXlLocationAsObject, "Report");

  Worksheet& report = book_->Worksheets()("Report");
  EXPECT_EQ(book_->Charts().Count(), 0);
  ASSERT_EQ(report.ChartObjects().Count(), 1);
  EXPECT_EQ(&report.ChartObjects(1).Chart(), chart);  // the same chart, moved
  EXPECT_EQ(&book_->ActiveChart(), chart);
  EXPECT_EQ(&book_->ActiveSheet(), &report);
  // The chart is no chart sheet any more.
  EXPECT_THROW(excel_.Chart_Type("Graph", 75), RuntimeFailure);
  EXPECT_THROW(excel_.Chart_Location("Missing", kXlLocationAsObject, "Report"), RuntimeFailure);

  ASSERT_TRUE(excel_.Chart_New("Graph 2"));
  EXPECT_THROW(excel_.Chart_Location("Graph 2", kXlLocationAsObject, "Nowhere"), RuntimeFailure);
  EXPECT_THROW(excel_.Chart_Location("Graph 2", 7, "Report"), RuntimeFailure);
  excel_.Chart_Location("Graph 2", kXlLocationAsObject, "Report");
  EXPECT_EQ(report.ChartObjects().Count(), 2);
}

TEST_F(ExcelAppTest, WorkbookExistSearchesTheFolderInLowerCase) {
  testing::ScratchDir scratch;
  const std::string file = (scratch / "Meas.xlsx").string();
  std::ofstream(file) << "x";
  EXPECT_TRUE(excel_.Workbook_Exist(file));
  EXPECT_TRUE(excel_.Workbook_Exist((scratch / "MEAS.XLSX").string()));
  EXPECT_FALSE(excel_.Workbook_Exist((scratch / "Other.xlsx").string()));
  EXPECT_FALSE(excel_.Workbook_Exist((scratch / "missing" / "Meas.xlsx").string()));
  // A folder is no workbook file.
  EXPECT_FALSE(excel_.Workbook_Exist(scratch.path().string()));
}

TEST_F(ExcelAppTest, WorkbookFilesAreCreatedSavedAndClosed) {
  testing::ScratchDir scratch;
  const std::string path = (scratch / "meas").string();
  ASSERT_TRUE(excel_.Workbook_New(path, "")) << "the .xlsx writer is needed";
  // No extension: the version's default one is added.
  EXPECT_TRUE(std::filesystem::exists(scratch / "meas.xlsx"));
  Workbook& created = excel_.application()->ActiveWorkbook();
  EXPECT_EQ(created.Name(), "meas.xlsx");
  EXPECT_EQ(created.FullName(), (scratch / "meas.xlsx").string());

  EXPECT_TRUE(excel_.Workbook_Save("MEAS.xlsx"));
  EXPECT_TRUE(excel_.Workbook_SaveAs("meas.xlsx", (scratch / "copy.xlsx").string()));
  EXPECT_TRUE(std::filesystem::exists(scratch / "copy.xlsx"));
  EXPECT_EQ(created.Name(), "copy.xlsx");
  EXPECT_FALSE(excel_.Workbook_Save("meas.xlsx"));  // renamed by the save-as

  // A never-saved workbook has no file to save to.
  EXPECT_FALSE(excel_.Workbook_Save(book_->Name()));
  // An unwritable target fails silently, after the workbook was added.
  const int before = excel_.application()->Workbooks().Count();
  EXPECT_FALSE(excel_.Workbook_New((scratch / "no" / "such" / "x.xlsx").string(), ""));
  EXPECT_EQ(excel_.application()->Workbooks().Count(), before + 1);

  EXPECT_TRUE(excel_.Workbook_Close("copy.xlsx"));
  EXPECT_FALSE(excel_.Workbook_Close("copy.xlsx"));
  EXPECT_EQ(excel_.application()->Workbooks().Count(), before);
  EXPECT_FALSE(excel_.Workbook_Open((scratch / "missing.xlsx").string()));
}

TEST_F(ExcelAppTest, QuitWithSaveChangesSavesTheOpenWorkbooks) {
  testing::ScratchDir scratch;
  ASSERT_TRUE(excel_.Workbook_New((scratch / "kept.xlsx").string(), ""));
  ASSERT_TRUE(excel_.Workbook_New((scratch / "dropped.xlsx").string(), ""));
  const auto kept_size = std::filesystem::file_size(scratch / "kept.xlsx");
  const auto dropped_size = std::filesystem::file_size(scratch / "dropped.xlsx");
  for (const char* name : {"kept.xlsx", "dropped.xlsx"}) {
    Workbook& book = excel_.application()->Workbooks()(name);
    Worksheet& sheet = book.Worksheets()(1);
    sheet.Range("A1:C400").SetValue(CellValue("a text that makes the file larger"));
    for (int row = 1; row <= 400; ++row) sheet.Cells(row, 4).SetValue(row * 1.25);
  }
  excel_.Workbook_Close("dropped.xlsx");
  EXPECT_FALSE(excel_.Excel_Quit(true));
  EXPECT_GT(std::filesystem::file_size(scratch / "kept.xlsx"), kept_size);
  EXPECT_EQ(std::filesystem::file_size(scratch / "dropped.xlsx"), dropped_size);
}

TEST_F(ExcelAppTest, OpenReadsBackWhatWasSavedAndTemplatesMakeNewWorkbooks) {
  testing::ScratchDir scratch;
  const std::string path = (scratch / "meas.xlsx").string();
  ASSERT_TRUE(excel_.Workbook_New(path, ""));
  ASSERT_TRUE(excel_.Worksheet_New("Report"));
  excel_.Worksheet_SetCellValue(1, 1, CellValue("Measurement Report"));
  excel_.Worksheet_SetCellValue(5, 2, CellValue("2007-03-05"));
  excel_.Worksheet_SetCellValue(9, 2, CellValue("1"));
  ASSERT_TRUE(excel_.Workbook_Save("meas.xlsx"));
  ASSERT_TRUE(excel_.Workbook_Close("meas.xlsx"));

  ASSERT_TRUE(excel_.Workbook_Open(path));
  Workbook& opened = excel_.application()->ActiveWorkbook();
  EXPECT_EQ(opened.Name(), "meas.xlsx");
  EXPECT_EQ(excel_.Worksheet_WorksheetsNames(), (std::vector<std::string>{"Report", "Sheet1"}));
  excel_.Worksheet_Select("Report");
  EXPECT_EQ(excel_.Worksheet_ReadCell("A1"), CellValue("Measurement Report"));
  EXPECT_EQ(excel_.Worksheet_GetCellValue(5, 2).Number(), 39146);
  EXPECT_EQ(excel_.Worksheet_GetCellValue(9, 2), CellValue(1.0));
  // Opening it again just activates it.
  const int open_books = excel_.application()->Workbooks().Count();
  excel_.application()->Workbooks().Add();
  ASSERT_TRUE(excel_.Workbook_Open(path));
  EXPECT_EQ(&excel_.application()->ActiveWorkbook(), &opened);
  EXPECT_EQ(excel_.application()->Workbooks().Count(), open_books + 1);

  // A workbook made from the template is new and unsaved until saved as
  // its own file.
  const std::string from_template = (scratch / "from template.xlsx").string();
  ASSERT_TRUE(excel_.Workbook_New(from_template, path));
  Workbook& made = excel_.application()->ActiveWorkbook();
  EXPECT_NE(&made, &opened);
  EXPECT_EQ(made.Name(), "from template.xlsx");
  EXPECT_EQ(excel_.Worksheet_WorksheetsNames(), (std::vector<std::string>{"Report", "Sheet1"}));
  EXPECT_FALSE(excel_.Workbook_New((scratch / "x.xlsx").string(), "/no/such/template.xlsx"));
}

}  // namespace
}  // namespace z4400
