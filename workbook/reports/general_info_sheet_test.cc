#include "workbook/reports/general_info_sheet.h"

#include <gtest/gtest.h>

#include "common/runtime_failure.h"
#include "workbook/model/typed_input.h"
#include "workbook/reports/report_sheets_test_util.h"

namespace z4400 {
namespace {

using testing::At;
using testing::SheetOf;
using testing::Shown;
using testing::StartWithResultSheets;

GeneralInfo SampleInfo() {
  GeneralInfo info;
  info.SourcePath = "C:\\data\\meas.xml";
  info.Model = "Z4420";
  info.Date = "2007-03-05";
  info.Title = "Band scan";
  return info;
}

TEST(GeneralInfoSheetTest, BlockOnBothSheets) {
  ExcelApp excel = StartWithResultSheets();
  const GeneralInfo info = SampleInfo();
  const struct {
    std::string_view sheet, heading;
  } kSheets[] = {{kReportSheet, kReportHeading}, {kRawDataSheet, kRawDataHeading}};
  for (const auto& s : kSheets) {
    ASSERT_EQ(WriteGeneralInfo(excel, info, "meas.xml", s.sheet, s.heading), 0);
    Worksheet& sheet = SheetOf(excel, s.sheet);
    EXPECT_EQ(&excel.application()->ActiveSheet(), &sheet) << s.sheet;
    EXPECT_EQ(At(sheet, "A1"), CellValue(s.heading));
    EXPECT_TRUE(sheet.Range("A1").Font().Bold());
    const struct {
      std::string_view label_cell, label, value_cell, format;
      CellValue value;
    } kRows[] = {
        {"A2", "File name", "B2", "0.###", CellValue("meas.xml")},
        {"A3", info.SourcePath, "B3", "0.###", CellValue()},
        {"A4", "Instrument reference", "B4", "0.###", CellValue("Z4420")},
        {"A5", "Date", "B5", "dd/mmmm/yyyy", CellValue(DateValue{*DateSerial(2007, 3, 5)})},
        {"A6", "Title", "B6", "0.###", CellValue("Band scan")},
    };
    for (const auto& row : kRows) {
      EXPECT_EQ(At(sheet, row.label_cell), CellValue(row.label)) << s.sheet << " " << row.label;
      EXPECT_EQ(At(sheet, row.value_cell), row.value) << s.sheet << " " << row.label;
      EXPECT_EQ(sheet.Range(row.value_cell).NumberFormat(), row.format) << row.label;
    }
    EXPECT_FALSE(sheet.Range("A3").Font().Italic());
    EXPECT_EQ(sheet.Columns(1).ColumnWidth(), 18);
    // Column B fits the longest value it shows: wider than the standard
    // width for "Band scan" and the date, never narrower than that text.
    EXPECT_GE(sheet.Columns(2).ColumnWidth(), 9);
  }
}

TEST(GeneralInfoSheetTest, TypedDatesAndEmptyFields) {
  ExcelApp excel = StartWithResultSheets();
  Worksheet& report = SheetOf(excel, kReportSheet);
  GeneralInfo info = SampleInfo();
  {
    // A date the workbook reads shows as two-digit day, month name, year.
    ASSERT_EQ(WriteGeneralInfo(excel, info, "meas.xml", kReportSheet, kReportHeading), 0);
    ASSERT_TRUE(At(report, "B5").IsDate());
    EXPECT_EQ(At(report, "B5").Number(), *DateSerial(2007, 3, 5));
    EXPECT_EQ(Shown(report, "B5"), "05/March/2007");
  }
  {
    // A date text the workbook does not read stays as written.
    info.Date = "2007-13-45";
    info.Model = "";
    info.Title = "";
    ASSERT_EQ(WriteGeneralInfo(excel, info, "meas.xml", kReportSheet, kReportHeading), 0);
    EXPECT_EQ(At(report, "B5"), CellValue("2007-13-45"));
    // Empty model and title keep their labelled rows; nothing moves up.
    EXPECT_EQ(At(report, "A4"), CellValue("Instrument reference"));
    EXPECT_TRUE(At(report, "B4").IsEmpty());
    EXPECT_EQ(At(report, "A6"), CellValue("Title"));
    EXPECT_TRUE(At(report, "B6").IsEmpty());
    EXPECT_TRUE(At(report, "A7").IsEmpty());
  }
}

TEST(GeneralInfoSheetTest, MissingSheetIsFailureForCaller) {
  ExcelApp excel = StartWithResultSheets();
  EXPECT_THROW(WriteGeneralInfo(excel, SampleInfo(), "meas.xml", "Graphs", "x"), RuntimeFailure);
  ExcelApp stopped;
  EXPECT_THROW(WriteGeneralInfo(stopped, SampleInfo(), "meas.xml", kReportSheet, kReportHeading),
               RuntimeFailure);
}

}  // namespace
}  // namespace z4400
