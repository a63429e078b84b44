#include "workbook/model/workbook_file.h"

#include <gtest/gtest.h>

#include <string>

namespace z4400 {
namespace {

TEST(WorkbookFileTest, TheNameDecidesTheExtension) {
  const struct {
    std::string path;
    std::string version;
    std::string saved;
  } kCases[] = {
      {"/out/meas", "16.0", "/out/meas.xlsx"},       {"/out/meas", "12.0", "/out/meas.xlsx"},
      {"/out/meas", "11.0", "/out/meas.xls"},        {"/out/meas", "9", "/out/meas.xls"},
      {"/out/meas.xlsx", "11.0", "/out/meas.xlsx"},  {"/out/meas.XLS", "16.0", "/out/meas.XLS"},
      {"/out/meas.v2", "16.0", "/out/meas.v2.xlsx"}, {"/out.d/meas", "16.0", "/out.d/meas.xlsx"},
      {"/out/meas.", "16.0", "/out/meas..xlsx"},
  };
  for (const auto& c : kCases) {
    EXPECT_EQ(WorkbookFilePath(c.path, c.version).string(), c.saved) << c.path << " " << c.version;
  }
  EXPECT_TRUE(IsBinaryFormatVersion("11.0"));
  EXPECT_FALSE(IsBinaryFormatVersion("12.0"));
  EXPECT_FALSE(IsBinaryFormatVersion("not a version"));
}

}  // namespace
}  // namespace z4400
