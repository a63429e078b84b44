#include "shell/command_line.h"

#include <gtest/gtest.h>

namespace z4400 {
namespace {

TEST(CommandLineTest, CommandTextIsCutAtEveryDriveSeparator) {
  struct Case {
    const char* text;
    std::vector<std::string> paths;
  };
  const Case cases[] = {
      {"", {}},
      {"   ", {}},
      {"meas.xml", {}},  // no drive letter, no path
      {"C:\\data\\meas.xml", {"C:\\data\\meas.xml"}},
      {"C:\\a\\one.xml D:\\two.csv", {"C:\\a\\one.xml", "D:\\two.csv"}},
      {"C:\\a.xml D:\\b.xml E:\\c.csv", {"C:\\a.xml", "D:\\b.xml", "E:\\c.csv"}},
      // Blanks inside a path stay; only the blank before the next drive goes.
      {"C:\\My Data\\x 1.xml D:\\y.xml", {"C:\\My Data\\x 1.xml", "D:\\y.xml"}},
      {"C:\\a.xml   D:\\b.xml  ", {"C:\\a.xml", "D:\\b.xml"}},
      // Quoted paths, as the desktop passes paths with blanks.
      {"\"C:\\My Data\\a.xml\" \"D:\\b c.csv\"", {"C:\\My Data\\a.xml", "D:\\b c.csv"}},
      // The drive letter is whatever stands before ":\", kept as it is.
      {"c:\\lower.xml", {"c:\\lower.xml"}},
      {":\\no drive.xml", {":\\no drive.xml"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(SplitCommandText(c.text), c.paths);
  }
}

}  // namespace
}  // namespace z4400
