#include "workbook/model/cell_range.h"

#include <gtest/gtest.h>

#include <string>

#include "common/runtime_failure.h"
#include "workbook/model/application.h"
#include "workbook/model/cell_address.h"

namespace z4400 {
namespace {

class CellRangeTest : public ::testing::Test {
 protected:
  Application application_;
  Workbook& book_ = application_.Workbooks().Add();
  Worksheet& sheet_ = book_.Worksheets()(1);

  const CellStyle& StyleOf(int row, int column) const {
    return book_.Styles().Get(sheet_.StyleAt(row, column));
  }
};

TEST(CellAddressTest, ParsesAndFormats) {
  const struct {
    std::string text;
    CellArea area;
    std::string formatted;
  } kCases[] = {
      {"B7", {7, 2, 7, 2}, "$B$7"},
      {"A5:A105", {5, 1, 105, 1}, "$A$5:$A$105"},
      {"$F$12:$F$412", {12, 6, 412, 6}, "$F$12:$F$412"},
      {"b2:a1", {1, 1, 2, 2}, "$A$1:$B$2"},
      {"D:F", {1, 4, kMaxRows, 6}, "$D$1:$F$1048576"},
      {"3:5", {3, 1, 5, kMaxColumns}, "$A$3:$XFD$5"},
      {"XFD1048576", {kMaxRows, kMaxColumns, kMaxRows, kMaxColumns}, "$XFD$1048576"},
  };
  for (const auto& c : kCases) {
    const std::optional<CellArea> area = ParseCellAddress(c.text);
    ASSERT_TRUE(area) << c.text;
    EXPECT_EQ(*area, c.area) << c.text;
    EXPECT_EQ(FormatCellAddress(*area), c.formatted) << c.text;
  }
  for (const char* bad : {"", "A0", "A", "1", "XFE1", "A1048577", "A1:", ":B2", "A1B", "1A", "A-1",
                          "A1:B2:C3", "$", "AAAA1", "A 1", "A1:3"}) {
    EXPECT_FALSE(ParseCellAddress(bad)) << bad;
  }
  EXPECT_EQ(ParseCellAddress("A:A"), (CellArea{1, 1, kMaxRows, 1}));
}

TEST_F(CellRangeTest, BlockAssignmentFillsRowsAndColumns) {
  // The raw-data writer's buffer: 1002 rows × 3 columns, of which N + 1
  // rows and 2 columns are written.
  ValueBlock buffer(1002, 3);
  const int n = 401;
  for (int k = 0; k < n; ++k) {
    buffer(k, 0) = CellValue(k + 1.0);
    buffer(k, 1) = CellValue(1e6 + k * 2.5);
  }
  sheet_.Range(sheet_.Cells(12, 5), sheet_.Cells(12 + n, 6)).SetValue(buffer);
  for (int k = 0; k < n; ++k) {
    ASSERT_EQ(sheet_.ValueAt(12 + k, 5), CellValue(k + 1.0));
    ASSERT_EQ(sheet_.ValueAt(12 + k, 6), CellValue(1e6 + k * 2.5));
  }
  // The last row receives the buffer's empty row; column G is untouched.
  EXPECT_TRUE(sheet_.ValueAt(12 + n, 5).IsEmpty());
  EXPECT_TRUE(sheet_.ValueAt(12, 7).IsEmpty());

  // A range larger than the block: cells outside it are emptied.
  sheet_.Range("A1:C2").SetValue(CellValue("x"));
  ValueBlock small(1, 2);
  small(0, 0) = CellValue(1.0);
  small(0, 1) = CellValue("2007-03-05");
  sheet_.Range("A1:C2").SetValue(small);
  EXPECT_EQ(sheet_.ValueAt(1, 1), CellValue(1.0));
  EXPECT_EQ(sheet_.ValueAt(1, 2), CellValue(DateValue{39146}));  // typed input too
  EXPECT_TRUE(sheet_.ValueAt(1, 3).IsEmpty());
  EXPECT_TRUE(sheet_.ValueAt(2, 1).IsEmpty());

  const ValueBlock read = sheet_.Range("A1:B2").Values();
  EXPECT_EQ(read.Rows(), 2);
  EXPECT_EQ(read.Columns(), 2);
  EXPECT_EQ(read(0, 0), CellValue(1.0));
  EXPECT_THROW(read(2, 0), RuntimeFailure);
}

TEST_F(CellRangeTest, TextsAreInternedOnce) {
  sheet_.Range("A1:A1000").SetValue(CellValue("Trace 1"));
  sheet_.Cells(2000, 1).SetValue("Trace 1");
  EXPECT_EQ(book_.SharedStrings().size(), 1u);
  EXPECT_EQ(sheet_.grid().CountUsed(), 1001u);
}

TEST_F(CellRangeTest, DatesKeepTheirFormat) {
  sheet_.Cells(5, 2).SetNumberFormat("dd/mmmm/yyyy");
  sheet_.Cells(5, 2).SetValue("2007-03-05");
  EXPECT_EQ(sheet_.Cells(5, 2).NumberFormat(), "dd/mmmm/yyyy");
  // Without a format of its own a typed date gets one that shows a date.
  sheet_.Cells(6, 2).SetValue("2007-03-05");
  EXPECT_EQ(sheet_.Cells(6, 2).NumberFormat(), "yyyy-mm-dd");
  // A date value (not typed) and a number keep the general format.
  sheet_.Cells(7, 2).SetValue(DateValue{39146});
  sheet_.Cells(8, 2).SetValue("12");
  EXPECT_EQ(sheet_.Cells(7, 2).NumberFormat(), "General");
  EXPECT_EQ(sheet_.Cells(8, 2).NumberFormat(), "General");
}

TEST_F(CellRangeTest, FontsAndFormatsCombinePerCell) {
  sheet_.Range("A1:B1").Font().SetBold(true);
  sheet_.Cells(1, 2).SetNumberFormat("0.###");
  EXPECT_TRUE(StyleOf(1, 1).bold);
  EXPECT_EQ(StyleOf(1, 1).number_format, "General");
  EXPECT_TRUE(StyleOf(1, 2).bold);
  EXPECT_EQ(StyleOf(1, 2).number_format, "0.###");
  EXPECT_FALSE(StyleOf(1, 3).bold);
  EXPECT_TRUE(sheet_.Cells(1, 2).Font().Bold());
  sheet_.Cells(1, 2).Font().SetBold(false);
  EXPECT_FALSE(StyleOf(1, 2).bold);
  EXPECT_EQ(StyleOf(1, 2).number_format, "0.###");
  // An empty format is the general format.
  sheet_.Cells(1, 2).SetNumberFormat("");
  EXPECT_EQ(StyleOf(1, 2).number_format, "General");
}

TEST_F(CellRangeTest, ColumnFormatReachesNewAndExistingCells) {
  sheet_.Cells(2, 1).SetValue("before");
  sheet_.Columns(1).Font().SetItalic(true);
  EXPECT_TRUE(StyleOf(2, 1).italic);  // existing cell
  sheet_.Cells(3, 1).Font().SetItalic(false);
  sheet_.Cells(3, 1).SetValue("explicitly regular");
  sheet_.Cells(4, 1).SetValue("after");
  EXPECT_FALSE(StyleOf(3, 1).italic);
  EXPECT_TRUE(StyleOf(4, 1).italic);
  EXPECT_FALSE(StyleOf(4, 2).italic);
  EXPECT_TRUE(sheet_.columns().at(1).style.has_value());
  // Cells never written in an italic column stay unsaved.
  EXPECT_EQ(sheet_.grid().Find(100, 1), nullptr);
}

TEST_F(CellRangeTest, ColumnWidthsAndAutoFit) {
  EXPECT_DOUBLE_EQ(sheet_.Columns(3).ColumnWidth(), kStandardColumnWidth);
  sheet_.Range("A1:F1").SetColumnWidth(10);
  for (int column = 1; column <= 6; ++column) {
    EXPECT_EQ(sheet_.Columns(column).ColumnWidth(), 10) << column;
  }
  EXPECT_DOUBLE_EQ(sheet_.Columns(7).ColumnWidth(), kStandardColumnWidth);
  EXPECT_THROW(sheet_.Columns(1).SetColumnWidth(256), RuntimeFailure);
  EXPECT_THROW(sheet_.Columns(1).SetColumnWidth(-1), RuntimeFailure);

  const std::string path = "C:\\Measurements\\2007\\spectrum_dbm_markers.xml";
  sheet_.Cells(3, 2).SetValue(path);
  sheet_.Cells(5, 2).SetNumberFormat("dd/mmmm/yyyy");
  sheet_.Cells(5, 2).SetValue("2007-09-05");  // shows 05/September/2007
  sheet_.Columns(2).AutoFit();
  EXPECT_GE(sheet_.Columns(2).ColumnWidth(), static_cast<double>(path.size()));
  EXPECT_LT(sheet_.Columns(2).ColumnWidth(), static_cast<double>(path.size()) + 2);
}

TEST_F(CellRangeTest, OutOfSheetAndProtectedWritesFail) {
  EXPECT_THROW(sheet_.Cells(0, 1), RuntimeFailure);
  EXPECT_THROW(sheet_.Cells(1, kMaxColumns + 1), RuntimeFailure);
  EXPECT_THROW(sheet_.Cells(kMaxRows, 1).Cells(2, 1), RuntimeFailure);
  EXPECT_EQ(sheet_.Cells(2, 3).Cells(2, 2).Address(), "$D$3");
  // A value for every cell of whole columns is refused, not attempted.
  EXPECT_THROW(sheet_.Range("A:XFD").SetValue(1.0), RuntimeFailure);
  sheet_.Protect();
  EXPECT_THROW(sheet_.Cells(1, 1).SetValue(1.0), RuntimeFailure);
  EXPECT_NO_THROW(sheet_.Cells(1, 1).Font().SetBold(true));
}

}  // namespace
}  // namespace z4400
