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

}  // namespace
}  // namespace z4400
