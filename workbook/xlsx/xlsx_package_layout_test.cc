#include "workbook/xlsx/xlsx_package_layout.h"

#include <gtest/gtest.h>

#include "workbook/xlsx/xlsx_package_parts.h"

namespace z4400 {
namespace {

// Three worksheets, the second with two charts, and a chart sheet: the
// numbering the spreadsheet itself uses for such a workbook.
TEST(XlsxPackageLayoutTest, NumbersPartsInSheetOrder) {
  PackageLayout layout;
  layout.sheets = {{"Sheet1", SheetKind::kWorksheet},
                   {"Sheet2", SheetKind::kWorksheet},
                   {"Sheet3", SheetKind::kWorksheet},
                   {"Chart1", SheetKind::kChartsheet}};
  layout.Number({0, 2, 0, 1});
  const std::vector<std::string> parts = {"xl/worksheets/sheet1.xml", "xl/worksheets/sheet2.xml",
                                          "xl/worksheets/sheet3.xml", "xl/chartsheets/sheet1.xml"};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    EXPECT_EQ(SheetPartName(layout.sheets[i]), parts[i]);
  }
  EXPECT_EQ(layout.sheets[0].drawing_number, 0);
  EXPECT_EQ(layout.sheets[1].drawing_number, 1);
  EXPECT_EQ(layout.sheets[1].chart_numbers, (std::vector<int>{1, 2}));
  EXPECT_EQ(layout.sheets[3].drawing_number, 2);
  EXPECT_EQ(layout.sheets[3].chart_numbers, (std::vector<int>{3}));
  EXPECT_EQ(layout.worksheet_count(), 3);
  EXPECT_EQ(layout.chartsheet_count(), 1);
  EXPECT_EQ(layout.drawing_count(), 2);
  EXPECT_EQ(layout.chart_count(), 3);

  // Renumbering after a change starts afresh.
  layout.Number({1, 0, 0, 1});
  EXPECT_EQ(layout.sheets[0].chart_numbers, (std::vector<int>{1}));
  EXPECT_TRUE(layout.sheets[1].chart_numbers.empty());
  EXPECT_EQ(layout.sheets[3].drawing_number, 2);
}

TEST(XlsxPackageLayoutTest, PartNames) {
  EXPECT_EQ(DrawingPartName(2), "xl/drawings/drawing2.xml");
  EXPECT_EQ(ChartPartName(10), "xl/charts/chart10.xml");
  EXPECT_EQ(RelsPartName("xl/worksheets/sheet1.xml"), "xl/worksheets/_rels/sheet1.xml.rels");
  EXPECT_EQ(RelsPartName("xl/workbook.xml"), "xl/_rels/workbook.xml.rels");
  EXPECT_EQ(RelsPartName("top.xml"), "_rels/top.xml.rels");
}

TEST(XlsxPackageLayoutTest, WorkbookListsSheetsAndTheActiveOne) {
  PackageLayout layout;
  layout.sheets = {{"Report", SheetKind::kWorksheet},
                   {"Raw & Data", SheetKind::kWorksheet},
                   {"Graph", SheetKind::kChartsheet}};
  layout.Number({1, 0, 1});
  layout.active_sheet = 2;
  const std::string workbook = WriteWorkbookPart(layout);
  EXPECT_NE(workbook.find("<sheet name=\"Raw &amp; Data\" sheetId=\"2\" r:id=\"rId2\"/>"),
            std::string::npos);
  EXPECT_NE(workbook.find("activeTab=\"2\""), std::string::npos);
  layout.active_sheet = 0;
  EXPECT_EQ(WriteWorkbookPart(layout).find("activeTab"), std::string::npos);

  const std::string rels = WriteWorkbookRelationships(layout);
  EXPECT_NE(rels.find("Id=\"rId3\" Type=\"" + std::string(rel_type::kChartsheet) +
                      "\" Target=\"chartsheets/sheet1.xml\""),
            std::string::npos);
  EXPECT_NE(rels.find("Id=\"rId4\" Type=\"" + std::string(rel_type::kStyles) + "\""),
            std::string::npos);
  EXPECT_EQ(rels.find("sharedStrings"), std::string::npos);

  const std::string app = WriteAppProperties(layout);
  EXPECT_NE(app.find("<vt:lpstr>Worksheets</vt:lpstr></vt:variant><vt:variant><vt:i4>2</vt:i4>"),
            std::string::npos);
  EXPECT_NE(app.find("<vt:lpstr>Charts</vt:lpstr></vt:variant><vt:variant><vt:i4>1</vt:i4>"),
            std::string::npos);
}

TEST(XlsxPackageLayoutTest, CorePropertiesLeaveOutWhatIsNotGiven) {
  const std::string bare = WriteCoreProperties({});
  EXPECT_EQ(bare.find("dcterms:created"), std::string::npos);
  EXPECT_EQ(bare.find("dc:creator"), std::string::npos);
  const std::string full = WriteCoreProperties({"Operator", "2026-11-21T08:12:13Z"});
  EXPECT_NE(full.find("<dc:creator>Operator</dc:creator>"), std::string::npos);
  EXPECT_NE(full.find("<dcterms:created xsi:type=\"dcterms:W3CDTF\">2026-11-21T08:12:13Z<"),
            std::string::npos);
}

}  // namespace
}  // namespace z4400
