#include "charts/print_layout.h"

#include <gtest/gtest.h>

#include <string>

#include "charts/chart_formatter.h"
#include "charts/chart_test_util.h"
#include "charts/result_sheets.h"
#include "common/runtime_failure.h"
#include "workbook/model/chart_sheet.h"
#include "workbook/xlsx/xlsx_drawing_part.h"

namespace z4400 {
namespace {

using testing::ResultWorkbook;

TEST(PrintLayoutTest, EverySheetLandscapeOnePageWideWithTheFooter) {
  ResultWorkbook result;
  Workbook& book = result.workbook();
  Worksheet& report = result.sheet("Report");
  for (int screen = 0; screen < 3; ++screen) {
    PrepareScreenChart(result.application(), 12, 20);
    PlaceScreenChart(report.ChartObjects(screen + 1), report, screen);
  }
  // A later configuration block widened the columns left of the charts.
  report.Columns(2).SetColumnWidth(30);
  book.Charts().Add(nullptr, book.sheets().back().get()).SetName("Screen 1 Traces");

  SetPrintLayout(book, "R&D sweep.xml", 3);

  for (const auto& sheet : book.sheets()) {
    SCOPED_TRACE(sheet->Name());
    const PageSetup& setup = sheet->PageSetup();
    EXPECT_EQ(setup.Orientation(), kXlLandscape);
    EXPECT_EQ(setup.LeftFooter(), "R&&D sweep.xml");
    EXPECT_EQ(setup.CenterFooter(), "&A");
    EXPECT_EQ(setup.RightFooter(), "Page &P of &N");
    if (sheet->Type() == SheetType::kWorksheet) {
      EXPECT_EQ(setup.Zoom(), 0) << "fitted to pages";
      EXPECT_EQ(setup.FitToPagesWide(), 1);
      EXPECT_EQ(setup.FitToPagesTall(), 0) << "as many pages down as needed";
    }
  }
  // Screens 2 and 3 start a page at their configuration blocks.
  EXPECT_EQ(report.HPageBreaks().Rows(), (std::set<int>{26, 43}));
  EXPECT_EQ(result.sheet("Raw Data").HPageBreaks().Count(), 0);
  // The charts are beside their blocks again: from column D, within the
  // block's rows.
  for (int screen = 0; screen < 3; ++screen) {
    const ChartObject& object = report.ChartObjects(screen + 1);
    EXPECT_EQ(ColumnAt(report, object.Left()).index, 3) << screen;
    EXPECT_EQ(RowAt(object.Top()).index, ReportBlockRow(screen) - 1);
    EXPECT_EQ(RowAt(object.Top() + object.Height()).index, ReportBlockRow(screen) + 15);
  }
}

TEST(PrintLayoutTest, OneScreenHasNoBreakAndAFileNameIsCut) {
  ResultWorkbook result;
  SetPrintLayout(result.workbook(), "a.xml", 1);
  EXPECT_EQ(result.sheet("Report").HPageBreaks().Count(), 0);

  EXPECT_EQ(FooterFileName("&&"), "&&&&");
  const std::string long_name(150, 'x');
  const std::string cut = FooterFileName(long_name);
  EXPECT_EQ(cut, std::string(kFooterNameCharacters, 'x') + "\u2026");
  // Characters, not bytes: 100 "é" stay whole.
  std::string accents;
  for (int i = 0; i < 100; ++i) accents += "\u00e9";
  EXPECT_EQ(FooterFileName(accents), accents);

  ResultWorkbook without_report;
  without_report.sheet("Report").SetName("Other");
  EXPECT_THROW(SetPrintLayout(without_report.workbook(), "a.xml", 1), RuntimeFailure);
}

}  // namespace
}  // namespace z4400
