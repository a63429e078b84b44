#include "shell/file_filter.h"

#include <gtest/gtest.h>

#include "driver/file_dialogs.h"

namespace z4400 {
namespace {

TEST(FileFilterTest, LabelAndPatternPairsBecomeDialogEntries) {
  struct Case {
    std::string filter;
    std::vector<std::string> entries;
  };
  const Case cases[] = {
      {kSourceFileFilter, {"XML Files Z4420 family (*.xml)", "(*.csv)", "All Files (*.*)"}},
      {kAddFileFilter, {"(*.xml)", "(*.csv)", "All Files (*.*)"}},
      {OutputKindFor(16).filter, {"Excel Files (*.xlsx)"}},
      {OutputKindFor(11).filter, {"Excel Files (*.xls)"}},
      {",*.xml", {"(*.xml)"}},
      {"Books,*.xls;*.xlsx", {"Books (*.xls *.xlsx)"}},
      {"Anything", {"Anything (*)"}},
      {"", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.filter);
    EXPECT_EQ(DialogNameFilters(c.filter), c.entries);
  }
}

TEST(FileFilterTest, SaveDialogAnswersCarryTheTypesExtension) {
  struct Case {
    std::string path;
    std::string name_filter;
    std::string answered;
  };
  const Case cases[] = {
      {"/out/renamed_v2", "Excel Files (*.xlsx)", "/out/renamed_v2.xlsx"},
      {"/out/meas.v2", "Excel Files (*.xlsx)", "/out/meas.v2.xlsx"},
      {"/out/meas.", "Excel Files (*.xlsx)", "/out/meas.xlsx"},
      {"/out/meas.xlsx", "Excel Files (*.xlsx)", "/out/meas.xlsx"},
      {"/out/MEAS.XLSX", "Excel Files (*.xlsx)", "/out/MEAS.xlsx"},
      {"/out/meas.xls", "Excel Files (*.xlsx)", "/out/meas.xls.xlsx"},
      {"/out/meas", "Excel Files (*.xls)", "/out/meas.xls"},
      {"C:\\out.d\\meas", "Excel Files (*.xls)", "C:\\out.d\\meas.xls"},
      {"/out/b.XLS", "Books (*.xls *.xlsx)", "/out/b.xls"},
      {"/out/b", "Books (*.xls *.xlsx)", "/out/b.xls"},
      {"meas", "Excel Files (*.xlsx)", "meas.xlsx"},
      {"", "Excel Files (*.xlsx)", ""},
      {"/out/", "Excel Files (*.xlsx)", "/out/"},
      {"/out/meas", "All Files (*.*)", "/out/meas"},
      {"/out/meas", "Anything (*)", "/out/meas"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.path + " with " + c.name_filter);
    EXPECT_EQ(WithFilterExtension(c.path, c.name_filter), c.answered);
  }
}

}  // namespace
}  // namespace z4400
