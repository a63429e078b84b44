#include "workbook/xlsx/xlsx_reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/package/zip_writer.h"
#include "workbook/xlsx/xlsx_read_styles.h"

namespace z4400 {
namespace {

/// A workbook read from one of the spreadsheet-made reference files.
class ExcelMadeTest : public ::testing::Test {
 protected:
  /// Reads `name`.xlsx; false (with a skip) when the files are absent.
  bool Load(const std::string& name) {
    const auto ooxml = testing::OoxmlDir();
    if (!ooxml) return false;
    std::string error;
    EXPECT_TRUE(ReadXlsx(*ooxml / "excel-made" / (name + ".xlsx"), &book_, &error)) << error;
    return true;
  }
  Worksheet& Sheet1() { return book_.Worksheets().Item(1); }
  const CellStyle& StyleOf(int row, int column) {
    return book_.Styles().Get(Sheet1().StyleAt(row, column));
  }

  Application application_;
  Workbook book_{&application_, "Book1"};
};

TEST_F(ExcelMadeTest, SharedStringAndNumber) {
  // simple01: A1 is shared string 0 ("Hello"), A2 the number 123.
  if (!Load("simple01")) GTEST_SKIP() << testing::OoxmlDirMissing();
  ASSERT_EQ(book_.sheets().size(), 1u);
  EXPECT_EQ(book_.sheets()[0]->Name(), "Sheet1");
  EXPECT_EQ(Sheet1().ValueAt(1, 1), CellValue("Hello"));
  EXPECT_EQ(Sheet1().ValueAt(2, 1), CellValue(123.0));
  EXPECT_TRUE(Sheet1().ValueAt(3, 1).IsEmpty());
}

TEST_F(ExcelMadeTest, BuiltInDateFormatsAndColumnWidth) {
  // simple04: A1 = 0.5 with format id 20 (h:mm), A2 = 41301 with id 14
  // (short date); column A stored 12.7109375 wide, i.e. 12 characters.
  if (!Load("simple04")) GTEST_SKIP() << testing::OoxmlDirMissing();
  EXPECT_EQ(Sheet1().ValueAt(1, 1), CellValue(DateValue{0.5}));
  EXPECT_EQ(StyleOf(1, 1).number_format, "h:mm");
  EXPECT_EQ(Sheet1().ValueAt(2, 1), CellValue(DateValue{41301}));
  EXPECT_EQ(StyleOf(2, 1).number_format, kGeneralFormat);
  EXPECT_DOUBLE_EQ(Sheet1().ColumnWidthAt(1), 12.0);
  EXPECT_FALSE(Sheet1().columns().contains(2));
}

TEST_F(ExcelMadeTest, FontEmphasis) {
  // simple05: "Foo" in A1..A7 with fonts: bold, italic, bold italic,
  // underline, strikeout, superscript, subscript.
  if (!Load("simple05")) GTEST_SKIP() << testing::OoxmlDirMissing();
  const struct {
    bool bold;
    bool italic;
  } expected[] = {{true, false},  {false, true},  {true, true},  {false, false},
                  {false, false}, {false, false}, {false, false}};
  for (int row = 1; row <= 7; ++row) {
    SCOPED_TRACE(row);
    EXPECT_EQ(Sheet1().ValueAt(row, 1), CellValue("Foo"));
    EXPECT_EQ(StyleOf(row, 1).bold, expected[row - 1].bold);
    EXPECT_EQ(StyleOf(row, 1).italic, expected[row - 1].italic);
  }
}

TEST_F(ExcelMadeTest, CustomDateFormats) {
  // date_examples01: 41333.5 in A1..A7; A1 General, A2..A7 custom formats
  // 164..169 in order.
  if (!Load("date_examples01")) GTEST_SKIP() << testing::OoxmlDirMissing();
  EXPECT_EQ(Sheet1().ValueAt(1, 1), CellValue(41333.5));
  const char* formats[] = {"dd/mm/yy",         "mm/dd/yy",       "d\\-m\\-yyyy",
                           "dd/mm/yy\\ hh:mm", "d\\ mmm\\ yyyy", "mmm\\ d\\ yyyy\\ hh:mm\\ AM/PM"};
  for (int row = 2; row <= 7; ++row) {
    SCOPED_TRACE(row);
    EXPECT_EQ(Sheet1().ValueAt(row, 1), CellValue(DateValue{41333.5}));
    EXPECT_EQ(StyleOf(row, 1).number_format, formats[row - 2]);
  }
  EXPECT_DOUBLE_EQ(Sheet1().ColumnWidthAt(1), 30.0);
}

TEST_F(ExcelMadeTest, SheetOrderWithChartSheet) {
  // chart_bar14: Sheet1, Sheet2, Sheet3, then the chart sheet Chart1; the
  // relationships list them in another order.
  if (!Load("chart_bar14")) GTEST_SKIP() << testing::OoxmlDirMissing();
  ASSERT_EQ(book_.sheets().size(), 4u);
  const char* names[] = {"Sheet1", "Sheet2", "Sheet3", "Chart1"};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(book_.sheets()[i]->Name(), names[i]);
  EXPECT_EQ(book_.sheets()[3]->Type(), SheetType::kChart);
  EXPECT_EQ(book_.Worksheets().Count(), 3);
}

TEST(IsDateFormatTest, Codes) {
  const struct {
    const char* code;
    bool date;
  } cases[] = {
      {"General", false},
      {"0.00", false},
      {"0.00E+00", false},
      {"#,##0 \"dB\"", false},
      {"\"day\" 0", false},
      {"0\\d", false},
      {"[Red]0.00", false},
      {"[Magenta]0", false},
      {"@", false},
      {"_(0_)", false},
      {"yyyy-mm-dd", true},
      {"h:mm", true},
      {"[h]:mm:ss", true},
      {"[$-409]d-mmm", true},
      {"mmm\\ d", true},
      {"[mm]", true},
      {"0.00;[Red]-0.00", false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsDateFormat(c.code), c.date) << c.code;
}

TEST(ColumnWidthTest, StoredWidthsReadAsCharacters) {
  // The spreadsheet stores characters × 7 pixels + 5 pixels of padding, in
  // 1/256 of a character: 8.43 → 64 px → 9.140625.
  const struct {
    double stored;
    double characters;
  } cases[] = {{9.140625, 8.43}, {12.7109375, 12}, {30.7109375, 30},
               {0, 0},           {1.7109375, 1},   {0.85546875, 0.5}};
  for (const auto& c : cases) {
    EXPECT_NEAR(ColumnWidthFromStored(c.stored), c.characters, 1e-9) << c.stored;
  }
}

TEST(DecodeEscapesTest, Texts) {
  EXPECT_EQ(DecodeEscapes("plain"), "plain");
  EXPECT_EQ(DecodeEscapes("a_x000D_b"), "a\rb");
  EXPECT_EQ(DecodeEscapes("_x005F_x0041_"), "_x0041_");
  EXPECT_EQ(DecodeEscapes("_x00e9_"), "\xc3\xa9");
  EXPECT_EQ(DecodeEscapes("_xZZZZ_ _x12_"), "_xZZZZ_ _x12_");
}

/// An .xlsx package made of the given parts, for reading damaged files.
std::string Package(std::initializer_list<std::pair<std::string, std::string>> parts) {
  testing::ScratchDir scratch;
  ZipWriter writer(scratch / "p.xlsx");
  for (const auto& [name, data] : parts) writer.AddMember(name, data);
  EXPECT_TRUE(writer.Finish());
  std::ifstream in(scratch / "p.xlsx", std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

constexpr char kWorkbook[] =
    "<workbook xmlns:r=\"r\"><sheets><sheet name=\"Data\" sheetId=\"1\" r:id=\"rId1\"/>"
    "</sheets></workbook>";
constexpr char kWorkbookRels[] =
    "<Relationships><Relationship Id=\"rId1\" Type=\"x/worksheet\" "
    "Target=\"worksheets/sheet1.xml\"/></Relationships>";

std::string Sheet(const std::string& data) {
  return "<worksheet><sheetData>" + data + "</sheetData></worksheet>";
}

TEST(ReadXlsxBytesTest, MinimalPackageAndCellTypes) {
  Application application;
  Workbook book(&application, "Book1");
  std::string error;
  const std::string bytes = Package(
      {{"xl/workbook.xml", kWorkbook},
       {"xl/_rels/workbook.xml.rels", kWorkbookRels},
       {"xl/worksheets/sheet1.xml",
        Sheet("<row r=\"2\"><c r=\"B2\" t=\"inlineStr\"><is><t> </t></is></c>"
              "<c t=\"b\"><v>1</v></c><c r=\"E2\" t=\"e\"><v>#N/A</v></c>"
              "<c r=\"F2\" t=\"str\"><f>A1</f><v>x_x000A_y</v></c><c r=\"G2\"><v>-1.5e3</v></c>"
              "</row>")}});
  ASSERT_TRUE(ReadXlsxBytes(bytes, &book, &error)) << error;
  Worksheet& sheet = book.Worksheets().Item("Data");
  EXPECT_EQ(sheet.ValueAt(2, 2), CellValue(" "));
  EXPECT_EQ(sheet.ValueAt(2, 3), CellValue(true));
  EXPECT_EQ(sheet.ValueAt(2, 5), CellValue("#N/A"));
  EXPECT_EQ(sheet.ValueAt(2, 6), CellValue("x\ny"));
  EXPECT_EQ(sheet.ValueAt(2, 7), CellValue(-1500.0));
}

TEST(ReadXlsxBytesTest, DamagedWorkbooks) {
  const struct {
    const char* what;
    std::string sheet;  // empty: leave the sheet part out
    const char* message;
  } cases[] = {
      {"no sheet part", "", "the archive has no member xl/worksheets/sheet1.xml"},
      {"not XML", "<worksheet><sheetData>", "sheet Data cannot be read: "},
      {"bad reference", Sheet("<row r=\"1\"><c r=\"1A\"><v>1</v></c></row>"),
       "sheet Data: the cell reference 1A is not valid"},
      {"reference off its row", Sheet("<row r=\"1\"><c r=\"A2\"><v>1</v></c></row>"),
       "sheet Data: the cell reference A2 is not valid"},
      {"beyond the sheet", Sheet("<row r=\"1048577\"><c><v>1</v></c></row>"),
       "sheet Data: a cell lies outside the worksheet"},
      {"column beyond", Sheet("<row r=\"1\"><c r=\"XFE1\"><v>1</v></c></row>"),
       "sheet Data: a cell lies outside the worksheet"},
      {"bad number", Sheet("<row r=\"1\"><c r=\"A1\"><v>1,5</v></c></row>"),
       "sheet Data: a cell holds no valid number"},
      {"missing string", Sheet("<row r=\"1\"><c r=\"A1\" t=\"s\"><v>0</v></c></row>"),
       "sheet Data: a cell refers to a missing shared string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Application application;
    Workbook book(&application, "Book1");
    std::string error;
    const std::string bytes = c.sheet.empty()
                                  ? Package({{"xl/workbook.xml", kWorkbook},
                                             {"xl/_rels/workbook.xml.rels", kWorkbookRels}})
                                  : Package({{"xl/workbook.xml", kWorkbook},
                                             {"xl/_rels/workbook.xml.rels", kWorkbookRels},
                                             {"xl/worksheets/sheet1.xml", c.sheet}});
    EXPECT_FALSE(ReadXlsxBytes(bytes, &book, &error));
    EXPECT_EQ(error.substr(0, std::string(c.message).size()), c.message) << error;
  }
  {
    Application application;
    Workbook book(&application, "Book1");
    std::string error;
    EXPECT_FALSE(ReadXlsxBytes(Package({{"a.xml", "<a/>"}}), &book, &error));
    EXPECT_EQ(error, "it is not a workbook (no xl/workbook.xml)");
  }
  {
    // Cells far apart cost their whole rows: a budget stops a sheet that
    // would make the model allocate far more than the file holds.
    Application application;
    Workbook book(&application, "Book1");
    std::string error;
    XlsxReadLimits limits;
    limits.cells.remaining = 40000;  // three rows as wide as the sheet pass it
    const std::string bytes = Package(
        {{"xl/workbook.xml", kWorkbook},
         {"xl/_rels/workbook.xml.rels", kWorkbookRels},
         {"xl/worksheets/sheet1.xml", Sheet("<row r=\"1\"><c r=\"XFD1\"><v>1</v></c></row>"
                                            "<row r=\"2\"><c r=\"XFD2\"><v>1</v></c></row>"
                                            "<row r=\"9\"><c r=\"XFD9\"><v>1</v></c></row>")}});
    EXPECT_FALSE(ReadXlsxBytes(bytes, &book, &error, limits));
    EXPECT_EQ(error, "sheet Data: too many cells");
  }
}

TEST(ReadXlsxBytesTest, EntitiesAreNotExpanded) {
  // A declared entity must not expand (the "billion laughs"): the document
  // type is skipped and the reference stays unknown, so the part fails to
  // read or reads without the expansion.
  Application application;
  Workbook book(&application, "Book1");
  std::string error;
  const std::string bytes = Package(
      {{"xl/workbook.xml", kWorkbook},
       {"xl/_rels/workbook.xml.rels", kWorkbookRels},
       {"xl/worksheets/sheet1.xml",
        "<!DOCTYPE w [<!ENTITY a \"aaaaaaaaaa\">]><worksheet><sheetData><row r=\"1\">"
        "<c r=\"A1\" t=\"inlineStr\"><is><t>&a;</t></is></c></row></sheetData></worksheet>"}});
  if (ReadXlsxBytes(bytes, &book, &error)) {
    EXPECT_EQ(book.Worksheets().Item(1).ValueAt(1, 1).Text().find("aaaaaaaaaa"), std::string::npos);
  }
}

}  // namespace
}  // namespace z4400
