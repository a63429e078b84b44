#include "driver/settings_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "testing/test_files.h"

namespace z4400 {
namespace {

std::vector<std::string> CrLfLines(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start < text.size()) {
    const size_t end = text.find("\r\n", start);
    if (end == std::string::npos) {
      lines.push_back(text.substr(start) + "<no CR LF>");
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(SettingsFileTest, DefaultsAreWrittenAsTheTableAndPrintFormattingSay) {
  const std::vector<std::string> lines = CrLfLines(FormatDataIni(Settings{}));
  // Defaults of the settings table; line 1 empty, line 2 without a blank,
  // lines 3 to 18 with the sign blank.
  const std::vector<std::string> expected = {
      "",          "1",         " 1",       " 0",       " 0",        " 1",
      " 1",        " 16711680", " 1262987", " 6053069", " 13150975", " 38655",
      " 13093064", " 13499135", " 0",       " 0",       " 1000",     " 1"};
  EXPECT_EQ(lines, expected);
}

TEST(SettingsFileTest, EveryItemSurvivesWriteAndRead) {
  Settings written;
  written.OutputDirectory = "C:\\out put\\a,b";
  written.UseOutputDirectory = 0;
  written.WarnOnOverwrite = 0;
  written.DebugMode = 1;
  written.AlwaysOnTop = 1;
  written.GraphSheets = 0;
  written.LineWeightIndex = 3;
  written.SetChartColors({1, 2, 3, 4, 5, 6, 7});
  written.LogXInUse = -1;
  written.LogEnabled = 1;
  written.XScaleThreshold = 0.125;
  written.LogXOption = 0;
  const std::string text = FormatDataIni(written);
  EXPECT_NE(text.find("\r\n-1\r\n"), std::string::npos) << "negative numbers carry no blank";
  EXPECT_NE(text.find("\r\n 0.125\r\n"), std::string::npos);
  Settings read;
  ParseDataIni(text, read);
  EXPECT_EQ(read, written);
}

TEST(SettingsFileTest, ShortOrMalformedFilesKeepWhatTheyLack) {
  const Settings defaults;
  struct Case {
    const char* name;
    std::string text;
    Settings expected;
  };
  std::vector<Case> cases;
  {
    Settings expected;
    expected.OutputDirectory = "/data/out";
    expected.UseOutputDirectory = 0;
    cases.push_back({"two LF lines", "/data/out\n0\n", expected});
  }
  {
    Settings expected;
    expected.OutputDirectory = "D:\\x";
    expected.WarnOnOverwrite = 0;
    expected.LineWeightIndex = 2;  // 2.5 rounds half to even
    cases.push_back({"CR line ends, junk", "D:\\x\r1x\r 0 \r\r\r\r 2.5\r", expected});
  }
  {
    Settings expected;
    expected.LogXInUse = defaults.LogXInUse;  // 70000 does not fit 16 bits
    expected.XScaleThreshold = 250;
    cases.push_back({"out of range",
                     "\r\n1\r\n1\r\n0\r\n0\r\n1\r\n1\r\n16711680\r\n1262987\r\n6053069\r\n"
                     "13150975\r\n38655\r\n13093064\r\n13499135\r\n70000\r\n0\r\n 2.5e2 \r\n1\r\n",
                     expected});
  }
  cases.push_back({"empty", "", defaults});
  for (const Case& c : cases) {
    Settings read;
    ParseDataIni(c.text, read);
    EXPECT_EQ(read, c.expected) << c.name;
  }
}

TEST(SettingsFileTest, GuardedOpenTreatsWildcardPathsAsMissing) {
  for (const char* path : {"a;b", "a<b", "a=b", "a>b", "a?b", "a[b", "a]b", "a*b"}) {
    EXPECT_TRUE(HasWildcardCharacter(path)) << path;
  }
  for (const char* path : {"C:\\Program Files (x86)\\Z4400", "/opt/z4400-conv/bin", "a:b@c"}) {
    EXPECT_FALSE(HasWildcardCharacter(path)) << path;
  }
  testing::ScratchDir scratch;
  const std::filesystem::path odd = scratch / "odd[1]";
  std::filesystem::create_directories(odd);
  std::ofstream(odd / kSettingsFileName) << "x\r\n0\r\n";
  Settings read;
  EXPECT_EQ(ReadSettingsFile(odd, read), SettingsFileStatus::kMissingFile);
  EXPECT_EQ(read, Settings{});
}

TEST(SettingsFileTest, FilesInTheFolder) {
  testing::ScratchDir scratch;
  Settings settings;
  EXPECT_EQ(ReadSettingsFile(scratch.path(), settings), SettingsFileStatus::kMissingFile);
  EXPECT_EQ(ReadSettingsFile(scratch / "absent", settings), SettingsFileStatus::kMissingFolder);
  EXPECT_EQ(WriteSettingsFile(scratch / "absent", settings, nullptr),
            SettingsFileStatus::kMissingFolder);

  settings.DebugMode = 1;
  std::string error;
  ASSERT_EQ(WriteSettingsFile(scratch.path(), settings, &error), SettingsFileStatus::kDone)
      << error;
  EXPECT_EQ(ReadFile(scratch / kSettingsFileName), FormatDataIni(settings));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(scratch.path()),
                          std::filesystem::directory_iterator()),
            1)
      << "no temporary file left behind";
  Settings read;
  EXPECT_EQ(ReadSettingsFile(scratch.path(), read), SettingsFileStatus::kDone);
  EXPECT_EQ(read, settings);
}

}  // namespace
}  // namespace z4400
