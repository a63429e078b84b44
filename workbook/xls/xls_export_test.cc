#include "workbook/xls/xls_export.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"

namespace z4400 {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

class SaveXlsTest : public ::testing::Test {
 protected:
  SaveXlsTest() {
    Worksheet& sheet = book_.AppendWorksheet("Report");
    sheet.StoreValue(1, 1, "Model");
    sheet.StoreValue(1, 2, 4.25);
  }
  Application application_;
  Workbook book_{&application_, "Book1"};
  testing::ScratchDir scratch_;
};

TEST_F(SaveXlsTest, WithoutLibreOfficeNothingIsWritten) {
  XlsConversion conversion;
  conversion.program = "z4400-no-such-soffice";
  std::string error;
  EXPECT_FALSE(SaveXls(book_, scratch_ / "book.xls", &error, conversion));
  EXPECT_EQ(error, "Saving .xls needs LibreOffice (soffice), which is not installed.");
  EXPECT_FALSE(std::filesystem::exists(scratch_ / "book.xls"));
}

TEST_F(SaveXlsTest, LibreOfficeWritesABinaryWorkbook) {
  if (std::system("command -v soffice >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "LibreOffice not installed";
  }
  const auto path = scratch_ / "book.xls";
  std::string error;
  ASSERT_TRUE(SaveXls(book_, path, &error)) << error;
  const std::string bytes = ReadAll(path);
  ASSERT_GE(bytes.size(), 512u);
  EXPECT_EQ(bytes.substr(0, 8), "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  // The sheet name is stored in the workbook stream as plain 8-bit text.
  EXPECT_NE(bytes.find("Report"), std::string::npos);
}

}  // namespace
}  // namespace z4400
