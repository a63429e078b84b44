#include "source/csv_grid.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/runtime_failure.h"

namespace z4400 {
namespace {

std::string Join(const std::vector<std::string>& lines, const std::string& eol) {
  std::string text;
  for (const std::string& line : lines) text += line + eol;
  return text;
}

const std::vector<std::string> kLines = {"MODEL,Z4510", "TITLE,t",    "DAY 30,YEAR 2021,MONTH 06",
                                         "NBCTXT,1",    "TP,3",       "Context Nb,0",
                                         "CF,100",      "Point,0,1,2"};

TEST(CsvGridTest, LineEndsAllGiveTheSameRows) {
  for (const std::string eol : {"\r\n", "\n", "\r"}) {
    CsvGrid grid;
    ASSERT_TRUE(grid.Load(Join(kLines, eol))) << "eol " << eol.size();
    // A bare LF leaves an empty line after the final line break; CR LF and
    // CR end the last input line without one.
    const int expected_last = eol == "\n" ? 8 : 7;
    EXPECT_EQ(grid.LastRow(), expected_last);
    EXPECT_EQ(grid.ColumnCount(), 5);  // largest field count 4, plus the spare column
    EXPECT_EQ(grid.Cell(2, 2), "MONTH 06");
    EXPECT_EQ(grid.Cell(7, 3), "2");
    EXPECT_EQ(grid.Cell(0, 4), "");  // the spare column is always empty
    EXPECT_EQ(grid.Cell(6, 3), "");  // cells past a short line are empty
    EXPECT_EQ(grid.Value("NBCTXT"), "1");
  }
}

TEST(CsvGridTest, ShortFilesAreJoinedAndBareLineFeedsSplit) {
  // Fewer than six lines in the first input line: the rest is joined on.
  CsvGrid grid;
  ASSERT_TRUE(grid.Load("A,1\r\nB,2\r\nC,3"));
  EXPECT_EQ(grid.LastRow(), 2);
  EXPECT_EQ(grid.Cell(2, 1), "3");
  // LF-separated lines inside a CR LF file split as well.
  ASSERT_TRUE(grid.Load("A,1\nB,2\r\nC,3\r\n"));
  EXPECT_EQ(grid.LastRow(), 2);
  EXPECT_EQ(grid.Cell(1, 0), "B");
  // Six or more LF lines before the first CR: that first input line is the
  // whole grid, as the instrument's files have always been read.
  ASSERT_TRUE(grid.Load("A,1\nB,2\nC,3\nD,4\nE,5\nF,6\rG,7\r\n"));
  EXPECT_EQ(grid.LastRow(), 5);
  EXPECT_EQ(grid.Cell(5, 1), "6");
}

TEST(CsvGridTest, TextsThatAreNotGridsFail) {
  CsvGrid grid;
  EXPECT_FALSE(grid.Load(""));                                // reading past the end
  EXPECT_FALSE(grid.Load("MODEL\r\nTP\r\nX\r\n"));            // every line a single field
  EXPECT_FALSE(grid.Load(std::string(40000, '\n') + "a,b"));  // more than 32768 lines
  EXPECT_EQ(grid.LastRow(), -1);
  // Empty lines only: nothing to copy, nothing found, but not an error.
  ASSERT_TRUE(grid.Load("\r\n"));
  EXPECT_EQ(grid.FindRow("MODEL", 0, 0), -1);
  EXPECT_EQ(grid.Value("MODEL"), "");
}

TEST(CsvGridTest, CellsOutsideTheGridAreRunTimeFailures) {
  CsvGrid grid;
  ASSERT_TRUE(grid.Load(Join(kLines, "\r\n")));
  EXPECT_THROW(grid.Cell(-1, 1), RuntimeFailure);
  EXPECT_THROW(grid.Cell(8, 0), RuntimeFailure);
  EXPECT_THROW(grid.Cell(0, 5), RuntimeFailure);
}

TEST(CsvGridTest, CellsAreUntrimmed) {
  CsvGrid grid;
  ASSERT_TRUE(grid.Load("MODEL, Z4510 \r\nK,,x,\r\n"));
  EXPECT_EQ(grid.Cell(0, 1), " Z4510 ");
  EXPECT_EQ(grid.Cell(1, 1), "");
  EXPECT_EQ(grid.Cell(1, 2), "x");
  EXPECT_EQ(grid.Cell(1, 3), "");
}

TEST(CsvGridTest, RowSearches) {
  CsvGrid grid;
  // Rows: 0 K,a  1 K,b  2 X,1  3 K, c   4 K,d  5 DAYx  6 K,e  7 end
  ASSERT_TRUE(grid.Load("K,a\r\nK,b\r\nX,1\r\nK, c \r\nK,d\r\nDAYx,1\r\nK,e\r\nend,1\r\n"));
  ASSERT_EQ(grid.LastRow(), 7);
  struct Case {
    const char* what;
    int found;
    int expected;
  };
  const Case cases[] = {
      {"first K", grid.FindRow("K", 0, 0), 0},
      {"from row 1", grid.FindRow("K", 1, 0), 1},
      {"negative first row means 0", grid.FindRow("K", -5, 0), 0},
      {"from row 2", grid.FindRow("K", 2, 0), 3},
      {"single-row range finds nothing", grid.FindRow("X", 2, 2), -1},
      {"empty range", grid.FindRow("X", 3, 2), -1},
      {"last row is never searched", grid.FindRow("end", 0, 0), -1},
      {"last row beyond the grid is cut", grid.FindRow("K", 5, 100), 6},
      {"exact key", grid.FindRow("k", 0, 0), -1},
      {"value", grid.FindRowWithValue("K", "d", 0, 0), 4},
      {"value trimmed of blanks, cell not", grid.FindRowWithValue("K", " d ", 0, 0), 4},
      {"cell with blanks does not match", grid.FindRowWithValue("K", "c", 0, 0), -1},
      {"value in a later row", grid.FindRowWithValue("K", "e", 2, 0), 6},
      {"value outside the range", grid.FindRowWithValue("K", "e", 0, 5), -1},
      {"prefix", grid.FindRowByPrefix("DAY", 0, 0, 0), 5},
      {"prefix in another column", grid.FindRowByPrefix(" c", 1, 0, 0), 3},
      {"no prefix", grid.FindRowByPrefix("DAYS", 0, 0, 0), -1},
  };
  for (const Case& c : cases) EXPECT_EQ(c.found, c.expected) << c.what;
  EXPECT_EQ(grid.Value("end"), "");  // the last row is not a key row
  EXPECT_EQ(grid.Value("K"), "a");
}

TEST(CsvGridTest, RightCharsCountsCharactersNotBytes) {
  EXPECT_EQ(RightChars("YEAR 2021", 4), "2021");
  EXPECT_EQ(RightChars("06", 4), "06");
  EXPECT_EQ(RightChars("MONTH \xC2\xB5\xC2\xB5", 2), "\xC2\xB5\xC2\xB5");
  EXPECT_EQ(RightChars("", 2), "");
}

}  // namespace
}  // namespace z4400
