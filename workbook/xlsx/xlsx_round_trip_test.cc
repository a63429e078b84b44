// What the workbook model holds is what a saved file reads back as.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_reader.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {
namespace {

/// Every sheet, cell value, cell style and column width of `expected` is in
/// `actual`, and nothing more.
void ExpectSameWorkbook(const Workbook& expected, const Workbook& actual) {
  ASSERT_EQ(actual.sheets().size(), expected.sheets().size());
  for (size_t i = 0; i < expected.sheets().size(); ++i) {
    const Sheet& want = *expected.sheets()[i];
    const Sheet& got = *actual.sheets()[i];
    SCOPED_TRACE(want.Name());
    EXPECT_EQ(got.Name(), want.Name());
    ASSERT_EQ(got.Type(), want.Type());
    if (want.Type() != SheetType::kWorksheet) continue;
    const auto& want_sheet = static_cast<const Worksheet&>(want);
    const auto& got_sheet = static_cast<const Worksheet&>(got);
    const int rows = std::max(want_sheet.grid().RowCount(), got_sheet.grid().RowCount());
    for (int row = 1; row <= rows; ++row) {
      const size_t columns =
          std::max(want_sheet.grid().RowCells(row).size(), got_sheet.grid().RowCells(row).size());
      for (int column = 1; column <= static_cast<int>(columns); ++column) {
        SCOPED_TRACE(std::to_string(row) + "," + std::to_string(column));
        EXPECT_EQ(got_sheet.ValueAt(row, column), want_sheet.ValueAt(row, column));
        EXPECT_EQ(actual.Styles().Get(got_sheet.StyleAt(row, column)),
                  expected.Styles().Get(want_sheet.StyleAt(row, column)));
      }
    }
    for (int column = 1; column <= 20; ++column) {
      EXPECT_DOUBLE_EQ(got_sheet.ColumnWidthAt(column), want_sheet.ColumnWidthAt(column))
          << "column " << column;
    }
  }
}

TEST(XlsxRoundTripTest, ModelSurvivesSaveAndOpen) {
  testing::ScratchDir scratch;
  Application application;
  Workbook book(&application, "Book1");
  Worksheet& report = book.AppendWorksheet("Report");
  book.AppendChartSheet("Graph 1");
  Worksheet& raw = book.AppendWorksheet("Raw Data");

  const CellValue values[] = {
      0.0,
      -1.5,
      0.1,
      1.0 / 3.0,
      1e-300,
      -1.7976931348623157e308,
      123456789012345.0,
      std::numeric_limits<double>::denorm_min(),
      "Hello",
      " ",
      "  padded  ",
      "line\nbreak",
      "<&>\"'",
      "_x0041_ stays literal",
      "\xe6\xb8\xac\xe5\xae\x9a dBm \xc2\xb5s",
      true,
      false,
      DateValue{39146},
      DateValue{39146.75},
  };
  int row = 1;
  for (const CellValue& value : values) report.StoreValue(row++, 2, value);

  // Styles: bold, italic, number formats (custom, built-in, date).
  StyleTable& styles = book.Styles();
  const StyleId bold = styles.Intern({kGeneralFormat, true, false});
  const StyleId italic_fixed = styles.Intern({"0.000", false, true});
  const StyleId both_unit = styles.Intern({"0.00\" dBm\"", true, true});
  const StyleId date = styles.Intern({"yyyy-mm-dd", false, false});
  const StyleId time = styles.Intern({"h:mm", false, false});
  report.StoreValue(1, 1, "Model");
  report.SetStyleAt(1, 1, bold);
  report.StoreValue(2, 1, 2.5);
  report.SetStyleAt(2, 1, italic_fixed);
  report.StoreValue(3, 1, -73.25);
  report.SetStyleAt(3, 1, both_unit);
  report.StoreValue(4, 1, DateValue{45000});
  report.SetStyleAt(4, 1, date);
  report.StoreValue(5, 1, DateValue{0.5});
  report.SetStyleAt(5, 1, time);
  report.SetStyleAt(6, 1, bold);  // formatted, no value

  // Column widths on the pixel grid the spreadsheet stores.
  report.column(1).width = 20;
  report.column(2).width = 8.43;
  report.column(3).width = 0;
  report.column(4).width = 255;
  raw.column(3).width = 12.57;

  // A block like the raw data sheet's, with gaps.
  for (int r = 1; r <= 300; ++r) {
    for (int c = 1; c <= 6; ++c) {
      if ((r + c) % 7 == 0) continue;
      raw.StoreValue(r, c, c == 1 ? 1e9 + 25000.0 * r : -70.0 + std::sin(r * c) * 12.3456789);
    }
  }

  const auto path = scratch / "round.xlsx";
  std::string error;
  ASSERT_TRUE(SaveXlsx(book, path, &error)) << error;
  Workbook read(&application, "Read");
  ASSERT_TRUE(ReadXlsx(path, &read, &error)) << error;
  ExpectSameWorkbook(book, read);
}

}  // namespace
}  // namespace z4400
