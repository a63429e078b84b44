#include "shell/environment_reports.h"

#include <gtest/gtest.h>

#include "common/runtime_failure.h"
#include "testing/recording_ui.h"

namespace z4400 {
namespace {

TEST(EnvironmentReportsTest, SpreadsheetVersionIsNamedByTheTable) {
  struct Case {
    std::string version_text;
    std::string message;
  };
  const Case cases[] = {
      {"14.0", "Your Excel version is Excel 2010"},
      {"15.0", "Your Excel version is Excel 15"},
      {"6.0", "Your Excel version is Excel 6"},
      {"16.0", "Your Excel version is Excel 16"},
      {"5.0", "Your Excel version is Excel 5.0"},
      {"7.0", "Your Excel version is Excel 95"},
      {"8.0", "Your Excel version is Excel 97"},
      {"9.0", "Your Excel version is Excel 2000"},
      {"10.0", "Your Excel version is Excel 2002"},
      {"11.0", "Your Excel version is Excel 2003"},
      {"12.0", "Your Excel version is Excel 2007"},
      {"13.5", "Your Excel version is Excel 2010"},  // rounded half to even
      {"14.5", "Your Excel version is Excel 2010"},
      {"15.5", "Your Excel version is Excel 16"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.version_text);
    testing::RecordingUi ui;
    ShowSpreadsheetVersion(
        ui, [&] { return c.version_text; }, false);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, c.message);
    EXPECT_EQ(ui.messages[0].kind, MessageKind::kInformation);
  }
}

TEST(EnvironmentReportsTest, MissingSpreadsheetIsReportedUnlessDebugging) {
  const SpreadsheetVersionProbe none = []() -> std::string {
    throw RuntimeFailure("no spreadsheet application");
  };
  const SpreadsheetVersionProbe too_big = [] { return std::string("70000"); };
  for (const SpreadsheetVersionProbe& probe : {none, too_big, SpreadsheetVersionProbe()}) {
    testing::RecordingUi ui;
    ShowSpreadsheetVersion(ui, probe, false);
    ASSERT_EQ(ui.messages.size(), 1u);
    EXPECT_EQ(ui.messages[0].text, "Your Excel is not found.");
  }
  testing::RecordingUi ui;
  EXPECT_THROW(ShowSpreadsheetVersion(ui, none, true), RuntimeFailure);
  EXPECT_TRUE(ui.messages.empty());
}

TEST(EnvironmentReportsTest, VersionAndSystemTextsAreJoinedByCrLf) {
  testing::RecordingUi ui;
  ShowVersionInfo(ui, "Z4400 Converter", "Ver 2.1");
  ShowOsVersion(ui, {{"Debian GNU/Linux 12 (bookworm)", "6.1.0"}, {"Second", "2.0"}});
  ASSERT_EQ(ui.messages.size(), 2u);
  EXPECT_EQ(ui.messages[0].title, "Version Infomation");
  EXPECT_EQ(ui.messages[0].text, "Z4400 Converter\r\nVer 2.1");
  EXPECT_EQ(ui.messages[1].text, "Debian GNU/Linux 12 (bookworm)\r\n6.1.0Second\r\n2.0");
}

}  // namespace
}  // namespace z4400
