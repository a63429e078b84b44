#include "workbook/reports/report_lines.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "common/runtime_failure.h"
#include "workbook/reports/report_sheets_test_util.h"

namespace z4400 {
namespace {

using testing::At;
using testing::SheetOf;
using testing::StartWithResultSheets;

TEST(ReportLinesTest, LineWritersAndCursor) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& sheet = SheetOf(excel, "Report");
  sheet.Range("F5").SetValue(CellValue("keep"));
  ReportCursor cursor{5, 4};
  // Text values are typed input: "12.5" becomes the number, the unit cell
  // of a plain line is left alone.
  WriteReportLine(sheet, cursor, "Gain", "12.5", "0.##");
  EXPECT_EQ(cursor.row, 6);
  EXPECT_EQ(cursor.column, 4);
  EXPECT_EQ(At(sheet, "D5"), CellValue("Gain"));
  EXPECT_EQ(At(sheet, "E5"), CellValue(12.5));
  EXPECT_EQ(sheet.Range("E5").NumberFormat(), "0.##");
  EXPECT_EQ(At(sheet, "F5"), CellValue("keep"));

  // A value written as given keeps its type; the unit loses its blanks.
  WriteReportLineUnit(sheet, cursor, "Level", CellValue(-3.25), "  dBm  ", "General");
  EXPECT_EQ(cursor.row, 7);
  EXPECT_EQ(At(sheet, "E6"), CellValue(-3.25));
  EXPECT_EQ(At(sheet, "F6"), CellValue("dBm"));
  EXPECT_EQ(sheet.Range("E6").NumberFormat(), "General");
  WriteReportLineUnit(sheet, cursor, "Blank", CellValue(), "   ", "0.###");
  EXPECT_TRUE(At(sheet, "E7").IsEmpty());
  EXPECT_TRUE(At(sheet, "F7").IsEmpty());

  ReportCursor last{INT16_MAX, 1};
  EXPECT_THROW(WriteReportLine(sheet, last, "x", "y", "General"), RuntimeFailure);
  EXPECT_EQ(TrimBlanks("  a b  "), "a b");
  EXPECT_EQ(TrimBlanks("   "), "");
}

}  // namespace
}  // namespace z4400
