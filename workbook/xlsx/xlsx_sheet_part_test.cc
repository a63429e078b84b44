#include "workbook/xlsx/xlsx_sheet_part.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <pugixml.hpp>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_styles_part.h"

namespace z4400 {
namespace {

TEST(XlsxSheetPartTest, StoredColumnWidths) {
  // Character widths and what the spreadsheet stores for them (7-pixel
  // digits, 5 pixels of padding, 1/256 steps).
  const std::pair<double, double> widths[] = {{8.43, 9.140625}, {12, 12.7109375}, {18, 18.7109375},
                                              {10, 10.7109375}, {1, 1.7109375},   {0, 0},
                                              {0.5, 0.85546875}};
  for (const auto& [characters, stored] : widths) {
    EXPECT_EQ(StoredColumnWidth(characters), stored) << characters;
  }
}

TEST(XlsxSheetPartTest, StyleTableBecomesCellFormats) {
  EXPECT_EQ(BuiltInNumberFormatId("General"), 0);
  EXPECT_EQ(BuiltInNumberFormatId("0.00"), 2);
  EXPECT_EQ(BuiltInNumberFormatId("h:mm"), 20);
  EXPECT_EQ(BuiltInNumberFormatId("0.###"), std::nullopt);
  EXPECT_EQ(BuiltInNumberFormatId("mm-dd-yy"), std::nullopt);  // shown by locale

  StyleTable table;
  const StyleId bold = table.Intern({kGeneralFormat, true, false});
  const StyleId custom = table.Intern({"0.###", false, true});
  const StyleId builtin = table.Intern({"0.00", true, false});
  const StyleId again = table.Intern({"dd/mmmm/yyyy", false, false});
  XlsxStyles styles(table);
  EXPECT_EQ(styles.CellFormat(bold, false), bold);
  EXPECT_EQ(styles.CellFormat(custom, false), custom);
  // A date in a general cell gets the short date, in a cell format of its own.
  const int date = styles.CellFormat(bold, true);
  EXPECT_EQ(date, static_cast<int>(table.styles().size()));
  EXPECT_EQ(styles.CellFormat(bold, true), date);
  EXPECT_EQ(styles.CellFormat(again, true), again);  // a date format already

  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(styles.WritePart().c_str()));
  const pugi::xml_node sheet = xml.child("styleSheet");
  EXPECT_EQ(sheet.child("numFmts").attribute("count").as_int(), 2);
  EXPECT_STREQ(sheet.select_node("numFmts/numFmt[@numFmtId='164']/@formatCode").attribute().value(),
               "0.###");
  EXPECT_STREQ(sheet.select_node("numFmts/numFmt[@numFmtId='165']/@formatCode").attribute().value(),
               "dd/mmmm/yyyy");
  // Fonts: regular, bold, italic; bold is shared by two formats.
  EXPECT_EQ(sheet.child("fonts").attribute("count").as_int(), 3);
  const pugi::xpath_node_set xfs = sheet.select_nodes("cellXfs/xf");
  ASSERT_EQ(xfs.size(), table.styles().size() + 1);
  EXPECT_EQ(sheet.child("cellXfs").attribute("count").as_int(), static_cast<int>(xfs.size()));
  const auto xf = [&](int index) { return xfs[static_cast<std::size_t>(index)].node(); };
  EXPECT_EQ(xf(bold).attribute("fontId").as_int(), xf(builtin).attribute("fontId").as_int());
  EXPECT_EQ(xf(builtin).attribute("numFmtId").as_int(), 2);
  EXPECT_EQ(xf(custom).attribute("numFmtId").as_int(), 164);
  EXPECT_EQ(xf(date).attribute("numFmtId").as_int(), 14);
  EXPECT_EQ(xf(date).attribute("fontId").as_int(), xf(bold).attribute("fontId").as_int());
  EXPECT_TRUE(xf(custom).attribute("applyNumberFormat").as_bool());
  EXPECT_FALSE(xf(bold).attribute("applyNumberFormat"));
  EXPECT_TRUE(xf(bold).attribute("applyFont").as_bool());
}

TEST(XlsxSheetPartTest, CellsRowsAndColumns) {
  Application app;
  Workbook& book = app.Workbooks().Add();
  Worksheet& sheet = book.Worksheets()(1);
  sheet.StoreValue(2, 2, CellValue(2.5));
  sheet.StoreValue(2, 4, CellValue("Span"));
  sheet.StoreValue(3, 3, CellValue(true));
  sheet.StoreValue(4, 2, CellValue(DateValue{39146}));
  sheet.StoreValue(5, 2, CellValue(std::numeric_limits<double>::quiet_NaN()));
  sheet.StoreValue(6, 28, CellValue("Span"));
  sheet.Columns(1).SetColumnWidth(18);
  sheet.Columns(2).SetColumnWidth(18);
  sheet.Columns(3).SetColumnWidth(6);
  sheet.Protect();

  XlsxStyles styles(book.Styles());
  CellTables tables(book.SharedStrings(), styles);
  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(WriteSheetPart(sheet, tables, true, true).c_str()));
  const pugi::xml_node root = xml.child("worksheet");
  EXPECT_STREQ(root.child("dimension").attribute("ref").value(), "B2:AB6");
  EXPECT_STREQ(root.select_node("sheetViews/sheetView/@tabSelected").attribute().value(), "1");
  const pugi::xml_node cols = root.child("cols");
  EXPECT_EQ(std::distance(cols.children("col").begin(), cols.children("col").end()), 2);
  EXPECT_STREQ(cols.first_child().attribute("max").value(), "2");  // A and B share one
  EXPECT_EQ(cols.first_child().attribute("width").as_double(), 18.7109375);
  EXPECT_EQ(cols.last_child().attribute("min").as_int(), 3);

  const auto cell = [&](const char* ref) {
    return root.select_node((std::string("sheetData/row/c[@r='") + ref + "']").c_str()).node();
  };
  EXPECT_EQ(cell("B2").child("v").text().as_double(), 2.5);
  EXPECT_STREQ(cell("D2").attribute("t").value(), "s");
  EXPECT_STREQ(cell("AB6").child("v").text().get(), cell("D2").child("v").text().get());
  EXPECT_STREQ(cell("C3").attribute("t").value(), "b");
  EXPECT_STREQ(cell("C3").child("v").text().get(), "1");
  EXPECT_EQ(cell("B4").child("v").text().as_double(), 39146);
  EXPECT_STRNE(cell("B4").attribute("s").value(), "");  // shown as a date
  EXPECT_STREQ(cell("B5").attribute("t").value(), "e");
  EXPECT_STREQ(cell("B5").child("v").text().get(), "#NUM!");
  // Rows carry the span of their block of 16 rows.
  EXPECT_STREQ(root.select_node("sheetData/row[@r='3']/@spans").attribute().value(), "2:28");
  EXPECT_TRUE(root.child("sheetProtection"));
  EXPECT_STREQ(root.child("drawing").attribute("r:id").value(), "rId1");
  EXPECT_EQ(tables.shared_strings().count(), 2);
  EXPECT_EQ(tables.shared_strings().unique_count(), 1);
}

TEST(XlsxSheetPartTest, EmptySheet) {
  Application app;
  Workbook& book = app.Workbooks().Add();
  XlsxStyles styles(book.Styles());
  CellTables tables(book.SharedStrings(), styles);
  pugi::xml_document xml;
  ASSERT_TRUE(xml.load_string(WriteSheetPart(book.Worksheets()(1), tables, false, false).c_str()));
  EXPECT_STREQ(xml.select_node("//dimension/@ref").attribute().value(), "A1");
  EXPECT_FALSE(xml.select_node("//sheetData/row"));
  EXPECT_FALSE(xml.select_node("//drawing"));
  EXPECT_FALSE(xml.select_node("//sheetView/@tabSelected"));
}

}  // namespace
}  // namespace z4400
