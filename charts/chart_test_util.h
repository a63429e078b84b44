// Test helpers of the chart builders: a feedback that records what the user
// would see, and a workbook already reduced to the three result sheets.
#ifndef Z4400_CHARTS_CHART_TEST_UTIL_H_
#define Z4400_CHARTS_CHART_TEST_UTIL_H_

#include <memory>
#include <string>
#include <vector>

#include "charts/chart_settings.h"
#include "charts/result_sheets.h"
#include "testing/test_files.h"
#include "workbook/model/application.h"
#include "workbook/spreadsheet_files.h"

namespace z4400::testing {

/// One message box as the chart builders asked for it.
struct ChartMessage {
  ChartMessageKind kind;
  std::string title;
  std::string text;
};

class RecordingFeedback : public ChartFeedback {
 public:
  std::vector<std::string> statuses;
  std::vector<ChartMessage> messages;

  void SetStatus(const std::string& text) override { statuses.push_back(text); }
  void ShowMessage(ChartMessageKind kind, const std::string& title,
                   const std::string& text) override {
    messages.push_back({kind, title, text});
  }
};

/// An application whose active workbook has the three result sheets, saved
/// once in a scratch folder.
class ResultWorkbook {
 public:
  ResultWorkbook() {
    application_.Workbooks().Add();
    CreateResultSheets(application_, (scratch_ / "result").string());
  }
  Application& application() { return application_; }
  Workbook& workbook() { return application_.ActiveWorkbook(); }
  Worksheet& sheet(const std::string& name) { return workbook().Worksheets()(name); }
  const ScratchDir& scratch() const { return scratch_; }

 private:
  ScratchDir scratch_;
  Application application_{kDefaultVersion, std::make_shared<SpreadsheetFiles>()};
};

}  // namespace z4400::testing

#endif  // Z4400_CHARTS_CHART_TEST_UTIL_H_
