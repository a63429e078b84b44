#include "driver/console_ui.h"

#include <gtest/gtest.h>

#include <sstream>

namespace z4400 {
namespace {

TEST(ConsoleUiTest, PlainLinesAndMessages) {
  std::ostringstream out;
  {
    ConsoleUi ui(out, /*live=*/false, /*overwrite=*/false, "/data");
    ui.ShowStatus("Analyzing the source file");
    ui.SetProgressValue(1);
    ui.ShowPercentage("2%");
    ui.ShowMessage(MessageKind::kCritical, "Error Message",
                   "Error occurred.\rExit from the application\r\rNot MQD data.");
    ui.ShowStatus("Error occurred.\rExit from the application\r\rNot MQD data.");
    EXPECT_EQ(ui.DefaultDataFolder(), "/data");
  }
  EXPECT_EQ(out.str(),
            "Analyzing the source file\n"
            "z4400conv: error (Error Message):\n"
            "Error occurred.\nExit from the application\n\nNot MQD data.\n"
            "Error occurred. / Exit from the application / Not MQD data.\n");
}

TEST(ConsoleUiTest, LiveProgressLineIsRedrawnAndEnded) {
  std::ostringstream out;
  {
    ConsoleUi ui(out, /*live=*/true, false, "");
    ui.SetProgressRange(0, 100);
    ui.ShowStatus("Saving All");
    ui.SetProgressValue(50);
    ui.ShowPercentage("50%");
    ui.ShowMessage(MessageKind::kInformation, "", "hello");
  }
  const std::string text = out.str();
  EXPECT_NE(text.find("\r\033[K[" + std::string(12, '#') + std::string(12, ' ') +
                      "] 50% Saving All\nz4400conv: note:\nhello\n"),
            std::string::npos)
      << text;
}

TEST(ConsoleUiTest, OverwriteQuestionAndSaveDialog) {
  std::ostringstream out;
  ConsoleUi refuse(out, false, /*overwrite=*/false, "/data");
  FileDialogRequest request{"Save Results As", "Excel Files (*.xlsx),*.xlsx", "/out/meas.xlsx",
                            "/out"};
  EXPECT_EQ(refuse.ChooseSaveFile(request), "/out/meas.xlsx") << "the proposal is accepted";
  EXPECT_FALSE(
      refuse.AskYesNo("/out/meas.xlsx already exists", "Do you want to overwrite this file"));
  EXPECT_EQ(refuse.ChooseSaveFile(request), "") << "no one to type another name";
  EXPECT_EQ(out.str(),
            "z4400conv: /out/meas.xlsx already exists; not overwritten (use --overwrite to "
            "replace it)\n");
  EXPECT_EQ(refuse.ChooseSaveFile(request), "/out/meas.xlsx");

  ConsoleUi replace(out, false, /*overwrite=*/true, "/data");
  EXPECT_TRUE(
      replace.AskYesNo("/out/meas.xlsx already exists", "Do you want to overwrite this file"));
  EXPECT_EQ(replace.ChooseOpenFile({}), "");
  EXPECT_FALSE(replace.ended());
  replace.EndProgram();
  EXPECT_TRUE(replace.ended());
}

}  // namespace
}  // namespace z4400
