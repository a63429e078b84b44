#include "driver/status_line.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <sstream>

#include "common/runtime_failure.h"
#include "driver/settings_file.h"
#include "testing/recording_ui.h"
#include "testing/test_files.h"

namespace z4400 {
namespace {

/// The status line with its collaborators, over a scratch folder.
struct Fixture {
  explicit Fixture(const std::filesystem::path& folder)
      : status(ui, settings, run, files, folder) {}
  void ListFiles(int count) {
    for (int i = 0; i < count; ++i) files.AddFile("/data/f" + std::to_string(i) + ".xml");
  }
  testing::RecordingUi ui;
  Settings settings;
  RunState run;
  FileList files;
  StatusLine status;
};

std::vector<std::string> LogLines(const std::filesystem::path& folder) {
  std::ifstream log(folder / kLogFileName, std::ios::binary);
  std::ostringstream text;
  text << log.rdbuf();
  std::vector<std::string> lines;
  std::string all = text.str();
  for (size_t start = 0, end; (end = all.find("\r\n", start)) != std::string::npos;
       start = end + 2) {
    lines.push_back(all.substr(start, end - start));
  }
  return lines;
}

TEST(StatusLineTest, PercentageLabel) {
  struct Case {
    int counter, files;
    const char* expected;
  };
  for (const Case& c : std::vector<Case>{
           {0, 0, "%"},     // "###" shows 0 without digits
           {25, 0, "50%"},  // empty list: one file's worth
           {50, 2, "50%"},  // two files, first done
           {100, 4, "50%"},
           {1, 4, "1%"},  // 0.5 rounds up
           {200, 4, "100%"},
           {3, 3, "2%"},
       }) {
    EXPECT_EQ(PercentageText(c.counter, c.files), c.expected) << c.counter << "/" << c.files;
  }
}

TEST(StatusLineTest, StatusGoesToLabelStatusBarAndProgress) {
  testing::ScratchDir scratch;
  Fixture f(scratch.path());
  f.ListFiles(2);
  std::vector<std::string> status_bar;
  f.status.SetStatusBar([&status_bar](const std::string& text) { status_bar.push_back(text); });
  f.status.ResetProgress();
  EXPECT_EQ(f.ui.progress_maximum, 100);
  EXPECT_EQ(f.ui.percentages, std::vector<std::string>{""});

  f.status.SetStatus("Analyzing the source file");
  f.status.SetStatus("Reading general file information");
  EXPECT_EQ(f.ui.statuses, status_bar);
  EXPECT_EQ(f.ui.statuses.back(), "Reading general file information");
  EXPECT_EQ(f.ui.progress_value(), 2);
  EXPECT_EQ(f.ui.percentages.back(), "2%");  // (2 / 2) × 100 / 50
  EXPECT_FALSE(std::filesystem::exists(scratch / kLogFileName)) << "log is off by default";

  // Past the bar's maximum nothing is redrawn, but the counter still moves.
  f.run.ProgressCounter = 100;
  f.status.SetStatus("Finish");
  EXPECT_EQ(f.run.ProgressCounter, 101);
  EXPECT_EQ(f.ui.progress_value(), 2);

  f.run.ProgressCounter = 32767;
  EXPECT_THROW(f.status.UpdateProgress(), RuntimeFailure);
}

TEST(StatusLineTest, ShowErrorIsAMessageBoxThenAStatus) {
  testing::ScratchDir scratch;
  Fixture f(scratch.path());
  f.status.ShowError("Can't be saved.");
  ASSERT_EQ(f.ui.messages.size(), 1u);
  EXPECT_EQ(f.ui.messages[0].kind, MessageKind::kCritical);
  EXPECT_EQ(f.ui.messages[0].title, "Error Message");
  EXPECT_EQ(f.ui.events, (std::vector<std::string>{"message: Error Message: Can't be saved.",
                                                   "status: Can't be saved."}));
  EXPECT_EQ(f.run.ProgressCounter, 1);
}

TEST(StatusLineTest, LogLinesCarryDateAndTimeAndNoLineBreaks) {
  testing::ScratchDir scratch;
  Fixture f(scratch.path());
  f.settings.LogEnabled = 1;
  f.status.SetStatus("Ready");
  f.status.SetStatus("Error occurred.\rExit from the application\r\rNot MQD data.");
  f.status.AppendLog("a\r\nb\nc\rd\n\re");
  const std::vector<std::string> lines = LogLines(scratch.path());
  ASSERT_EQ(lines.size(), 3u);
  const std::regex stamp(R"(\d{4}/\d{2}/\d{2} \d{2}:\d{2}:\d{2} )");
  const std::vector<std::string> texts = {
      "Ready", "Error occurred.Exit from the applicationNot MQD data.", "abcde"};
  for (size_t i = 0; i < lines.size(); ++i) {
    std::smatch match;
    ASSERT_TRUE(std::regex_search(lines[i], match, stamp, std::regex_constants::match_continuous))
        << lines[i];
    EXPECT_EQ(lines[i].substr(match.length()), texts[i]);
  }
}

TEST(StatusLineTest, MissingFolderIsReportedOnceNotForever) {
  testing::ScratchDir scratch;
  Fixture f(scratch / "gone");
  f.settings.LogEnabled = 1;
  f.status.SetStatus("Ready");
  // The status, then the folder error for its log line, whose own status
  // text is not logged again.
  EXPECT_EQ(f.ui.events, (std::vector<std::string>{
                             "status: Ready", "message: Error Message: Can not find Directory.",
                             "status: Can not find Directory."}));
}

TEST(StatusLineTest, UnwritableLogIsARuntimeFailure) {
  testing::ScratchDir scratch;
  Fixture f(scratch.path());
  std::filesystem::create_directory(scratch / kLogFileName);  // a folder in the log's place
  EXPECT_THROW(f.status.AppendLog("x"), RuntimeFailure);
}

TEST(StatusLineTest, WaitProcessesEvents) {
  testing::ScratchDir scratch;
  Fixture f(scratch.path());
  f.status.WaitSeconds(0);
  EXPECT_EQ(f.ui.processed_events, 0);
  f.status.WaitSeconds(0.02);
  EXPECT_GT(f.ui.processed_events, 0);
}

}  // namespace
}  // namespace z4400
