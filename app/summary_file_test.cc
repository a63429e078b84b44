// End-to-end test of z4400conv --batch --summary: the summary lists every
// file of the list with its result, and the markers of the converted ones.
#include "app/summary_file.h"

#include <gtest/gtest.h>

#include <fstream>

#include "app/batch_test_util.h"
#include "summary/summary_workbook.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/model/worksheet.h"
#include "workbook/xlsx/xlsx_reader.h"

namespace z4400 {
namespace {

TEST(SummaryFileTest, BatchListsEveryFileOfTheListWithItsResult) {
  if (std::getenv("Z4400_CONV") == nullptr) GTEST_SKIP() << "Z4400_CONV not set";
  testing::ScratchDir scratch;
  testing::WriteInstrumentFile(scratch / "in" / "a.xml", 1);
  testing::WriteInstrumentFile(scratch / "in" / "b.csv", 2);
  std::ofstream(scratch / "in" / "bad.xml") << "<AnalyserData";
  std::filesystem::create_directories(scratch / "out");
  const std::filesystem::path summary = scratch / "summary.xlsx";
  const testing::RunResult result = testing::RunProgram(
      {"--batch", "--keep-going", "--jobs", "2", "--settings-dir", scratch.path().string(),
       "--output-dir", (scratch / "out").string(), "--summary", summary.string(),
       (scratch / "in").string(), (scratch / "in" / "NOTES.XML").string()},
      scratch.path());
  EXPECT_EQ(result.status, 1) << result.err;

  Application application;
  Workbook& book = application.Workbooks().Add();
  std::string error;
  ASSERT_TRUE(ReadXlsx(summary, &book, &error)) << error;
  const Worksheet& files = book.Worksheets()(std::string(kSummaryFilesSheet));
  std::vector<std::vector<std::string>> rows;
  for (int row = 2; row <= files.grid().RowCount(); ++row) {
    rows.push_back({files.ValueAt(row, 1).ToText(), files.ValueAt(row, 2).ToText(),
                    files.ValueAt(row, 3).ToText(), files.ValueAt(row, 8).ToText()});
  }
  const std::string in = (scratch / "in").string();
  const std::string out = (scratch / "out").string();
  EXPECT_EQ(rows, (std::vector<std::vector<std::string>>{
                      {in + "/a.xml", "converted", "", out + "/a.xlsx"},
                      {in + "/b.csv", "converted", "", out + "/b.xlsx"},
                      {in + "/bad.xml", "failed", "Not MQD Data.", ""},
                      {in + "/NOTES.XML", "failed",
                       "the extension must be \".xml\" or \".csv\" in lower case", ""}}));
  // Three markers on each generated file's one screen.
  const Worksheet& markers = book.Worksheets()(std::string(kSummaryMarkersSheet));
  EXPECT_EQ(markers.grid().RowCount(), 1 + 2 * 3);
  EXPECT_EQ(markers.ValueAt(7, 1), CellValue(in + "/b.csv"));
}

TEST(SummaryFileTest, RefusesANameThatIsNotAWorkbookOrHasNoFolder) {
  testing::ScratchDir scratch;
  EXPECT_EQ(SummaryFile::Refusal((scratch / "s.xlsx").string()), "");
  EXPECT_EQ(SummaryFile::Refusal("s.xlsx"), "");
  EXPECT_EQ(SummaryFile::Refusal("s.XLSX"), "--summary s.XLSX: the name must end in .xlsx");
  EXPECT_EQ(SummaryFile::Refusal((scratch / "no" / "s.xlsx").string()),
            "--summary " + (scratch / "no" / "s.xlsx").string() + ": no such folder " +
                (scratch / "no").string());
}

}  // namespace
}  // namespace z4400
