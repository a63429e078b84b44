// The workbook the main window opens on the desktop after a run: the one the
// converter saved last and did not close by quitting the spreadsheet.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "shell/main_window.h"
#include "shell/window_test_util.h"

namespace z4400 {
namespace {

using testing::WindowFixture;

TEST(MainWindowOpenTest, TheWorkbookARunLeavesOpenIsOpenedOnTheDesktop) {
  enum class Listed { kDropped, kOnTheCommandLine, kChosenInTheOpenDialog };
  struct Case {
    const char* name;
    std::vector<const char*> sources;  ///< examples; "broken.xml" is no instrument file
    Listed listed;
    std::vector<std::string> opened;  ///< workbook names in the scratch folder
  };
  for (const Case& c : std::vector<Case>{
           {"one file", {"band_scan_markers.xml"}, Listed::kDropped, {"band_scan_markers.xlsx"}},
           {"one file on the command line",
            {"mixed_screens.xml"},
            Listed::kOnTheCommandLine,
            {"mixed_screens.xlsx"}},
           {"the file of the open dialog",
            {"log_x_axis.csv"},
            Listed::kChosenInTheOpenDialog,
            {"log_x_axis.xlsx"}},
           {"two files quit the spreadsheet after each",
            {"band_scan_markers.xml", "digital_functions.csv"},
            Listed::kDropped,
            {}},
           {"a failure ends the program", {"broken.xml"}, Listed::kDropped, {}},
       }) {
    SCOPED_TRACE(c.name);
    WindowFixture fixture;
    testing::DotFreeFolder sources;
    std::vector<std::string> paths;
    for (const char* name : c.sources) {
      if (std::string(name) == "broken.xml") {
        paths.push_back((sources.path() / name).string());
        std::ofstream(paths.back()) << "<AnalyserData>";
      } else {
        paths.push_back(sources.Copy(testing::Example(name)));
      }
    }
    if (c.listed == Listed::kOnTheCommandLine) {
      fixture.window->StartUp(paths);  // named through the save dialog, in the scratch folder
    } else {
      fixture.window->StartUp({});
      fixture.Find<QLineEdit>("Text1")->setText(
          QString::fromStdString(fixture.scratch.path().string()));
      auto* check = fixture.Find<QCheckBox>("Check1");
      if (!check->isChecked()) testing::ClickCheckBox(check);
      if (c.listed == Listed::kDropped) {
        testing::DropFiles(fixture.window.get(), paths);
      } else {
        fixture.dialogs.ui.open_answers = {paths.begin(), paths.end()};
      }
      QTest::mouseClick(fixture.Button("Command1"), Qt::LeftButton);
    }

    std::vector<std::string> expected;
    for (const std::string& name : c.opened) expected.push_back((fixture.scratch / name).string());
    EXPECT_EQ(fixture.dialogs.opened_workbooks, expected);
    for (const std::string& workbook : expected) EXPECT_TRUE(std::filesystem::exists(workbook));
    const bool failed = std::string(c.sources.front()) == "broken.xml";
    EXPECT_EQ(fixture.window->Ended(), failed);
    EXPECT_EQ(fixture.dialogs.MessagesTitled("Error Message").size(), failed ? 1u : 0u);
  }
}

}  // namespace
}  // namespace z4400
