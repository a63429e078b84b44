#include "workbook/xlsx/xlsx_drawing_part.h"

#include <gtest/gtest.h>

#include <limits>
#include <pugixml.hpp>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"

namespace z4400 {
namespace {

constexpr int64_t kEmuPerPixel = 9525;

TEST(XlsxDrawingPartTest, ColumnPixels) {
  const std::pair<double, int> widths[] = {{8.43, 64}, {12, 89}, {18, 131}, {1, 12},
                                           {0.5, 6},   {0, 0},   {-3, 0}};
  for (const auto& [characters, pixels] : widths) {
    EXPECT_EQ(ColumnPixels(characters), pixels) << characters;
  }
}

// The anchors the spreadsheet wrote for charts at E9 on a sheet of default
// columns (64 pixels) and rows (20 pixels): 480 × 288 pixels end in column
// L (11) 32 pixels in, row 23 (22) 8 pixels in; 512 × 320 pixels end exactly
// at M25.
TEST(XlsxDrawingPartTest, AnchorsMatchTheSpreadsheet) {
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  const double left = 4 * 64 * 0.75;  // points
  const double top = 8 * 20 * 0.75;
  EXPECT_EQ(ColumnAt(sheet, left), (CellOffset{4, 0}));
  EXPECT_EQ(RowAt(top), (CellOffset{8, 0}));
  EXPECT_EQ(ColumnAt(sheet, left + 480 * 0.75), (CellOffset{11, 32 * kEmuPerPixel}));
  EXPECT_EQ(RowAt(top + 288 * 0.75), (CellOffset{22, 8 * kEmuPerPixel}));
  EXPECT_EQ(ColumnAt(sheet, left + 512 * 0.75), (CellOffset{12, 0}));
  EXPECT_EQ(RowAt(top + 320 * 0.75), (CellOffset{24, 0}));

  // Wider columns move the anchor; odd distances are clamped.
  sheet.Columns(1).SetColumnWidth(18);  // 131 pixels
  EXPECT_EQ(ColumnAt(sheet, 140 * 0.75), (CellOffset{1, 9 * kEmuPerPixel}));
  EXPECT_EQ(ColumnAt(sheet, -10), (CellOffset{0, 0}));
  EXPECT_EQ(ColumnAt(sheet, std::numeric_limits<double>::quiet_NaN()), (CellOffset{0, 0}));
  EXPECT_EQ(ColumnAt(sheet, 1e12).index, 16383);
  EXPECT_EQ(RowAt(1e12).index, 1048575);
}

TEST(XlsxDrawingPartTest, OneAnchorPerChartObject) {
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  sheet.ChartObjects().Add(192, 120, 360, 216);
  sheet.ChartObjects().Add(0, 300, 100, 50).SetName("Screen <2>");
  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(WriteWorksheetDrawing(sheet).c_str()));
  const pugi::xpath_node_set anchors = xml.select_nodes("/xdr:wsDr/xdr:twoCellAnchor");
  ASSERT_EQ(anchors.size(), 2u);
  const pugi::xml_node first = anchors[0].node();
  EXPECT_STREQ(first.select_node("xdr:from/xdr:col").node().text().get(), "4");
  EXPECT_STREQ(first.select_node("xdr:to/xdr:colOff").node().text().get(), "304800");
  EXPECT_STREQ(first.select_node(".//xdr:cNvPr/@id").attribute().value(), "2");
  EXPECT_STREQ(first.select_node(".//c:chart/@r:id").attribute().value(), "rId1");
  const pugi::xml_node second = anchors[1].node();
  EXPECT_STREQ(second.select_node(".//xdr:cNvPr/@name").attribute().value(), "Screen <2>");
  EXPECT_STREQ(second.select_node(".//c:chart/@r:id").attribute().value(), "rId2");

  ASSERT_TRUE(xml.load_string(WriteChartsheetDrawing().c_str()));
  EXPECT_TRUE(xml.select_node("/xdr:wsDr/xdr:absoluteAnchor/xdr:ext/@cx"));
  const std::string rels = WriteDrawingRelationships({3, 4});
  EXPECT_NE(rels.find("Id=\"rId2\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                      "relationships/chart\" Target=\"../charts/chart4.xml\""),
            std::string::npos);
}

}  // namespace
}  // namespace z4400
