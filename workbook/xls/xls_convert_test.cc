#include "workbook/xls/xls_convert.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_writer.h"

namespace z4400 {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteText(const std::filesystem::path& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

/// A stand-in for LibreOffice: a shell script that finds --outdir and the
/// input among its arguments and then runs `body` with $out and $name set.
std::string FakeConverter(const testing::ScratchDir& scratch, const std::string& body) {
  const auto script = scratch / "fake-soffice";
  WriteText(script,
            "#!/bin/sh\n"
            "while [ $# -gt 1 ]; do [ \"$1\" = --outdir ] && out=$2; shift; done\n"
            "name=$(basename \"$1\" .xlsx)\n" +
                body + "\n");
  ::chmod(script.c_str(), 0755);
  return script.string();
}

TEST(ConvertXlsxToXlsTest, FakeConverterOutcomes) {
  testing::ScratchDir scratch;
  const auto xlsx = scratch / "book.xlsx";
  WriteText(xlsx, "not really a workbook");
  const auto target = scratch / "result.xls";
  WriteText(target, "old");
  std::string error;
  const struct {
    const char* what;
    std::string body;
    const char* message;  // empty when the conversion succeeds
  } cases[] = {
      {"missing program", "", kXlsNeedsLibreOffice},
      {"exit status", "echo first; echo boom >&2; exit 3",
       "LibreOffice could not convert result.xls to .xls: boom"},
      {"no output", "exit 0", "LibreOffice could not convert result.xls to .xls"},
      {"hangs", "sleep 30", "LibreOffice could not convert result.xls to .xls within 0 s"},
      {"converts", "mkdir -p \"$out\" && printf converted > \"$out/$name.xls\"", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    XlsConversion conversion;
    conversion.program =
        c.body.empty() ? (scratch / "no-such-soffice").string() : FakeConverter(scratch, c.body);
    conversion.timeout = std::chrono::milliseconds(300);
    error.clear();
    const bool converted = ConvertXlsxToXls(xlsx, target, &error, conversion);
    EXPECT_EQ(converted, *c.message == '\0');
    EXPECT_EQ(error, c.message);
    EXPECT_EQ(ReadAll(target), converted ? "converted" : "old");
  }
}

TEST(ConvertXlsxToXlsTest, ProgramNotOnPath) {
  testing::ScratchDir scratch;
  XlsConversion conversion;
  conversion.program = "z4400-no-such-program";
  std::string error;
  EXPECT_FALSE(ConvertXlsxToXls(scratch / "a.xlsx", scratch / "a.xls", &error, conversion));
  EXPECT_EQ(error, kXlsNeedsLibreOffice);
  EXPECT_FALSE(std::filesystem::exists(scratch / "a.xls"));
}

TEST(ConvertXlsxToXlsTest, LibreOfficeMakesABinaryWorkbook) {
  if (std::system("command -v soffice >/dev/null 2>&1") != 0) {
    GTEST_SKIP() << "LibreOffice not installed";
  }
  testing::ScratchDir scratch;
  Application application;
  Workbook book(&application, "Book1");
  book.AppendWorksheet("Levels").StoreValue(1, 1, -42.5);
  const auto xlsx = scratch / "made.xlsx";
  std::string error;
  ASSERT_TRUE(SaveXlsx(book, xlsx, &error)) << error;
  // The binary workbook may be named unlike the .xlsx it is made from.
  const auto target = scratch / "renamed.xls";
  ASSERT_TRUE(ConvertXlsxToXls(xlsx, target, &error)) << error;
  // An .xls is a compound document: it starts with the OLE2 signature.
  const std::string bytes = ReadAll(target);
  ASSERT_GE(bytes.size(), 512u);
  EXPECT_EQ(bytes.substr(0, 8), "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  EXPECT_NE(bytes.find("Levels"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(scratch / "made.xls"));
}

}  // namespace
}  // namespace z4400
