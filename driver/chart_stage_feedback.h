// What the chart builders need from the driver: its status line and message
// boxes, and the chart items of the settings.
#ifndef Z4400_DRIVER_CHART_STAGE_FEEDBACK_H_
#define Z4400_DRIVER_CHART_STAGE_FEEDBACK_H_

#include <string>

#include "charts/chart_settings.h"
#include "driver/settings.h"
#include "driver/status_line.h"
#include "driver/user_interface.h"

namespace z4400 {

/// The chart builders' announcements go to the driver's status line (one
/// progress step each) and their warnings to the user's message boxes.
class ChartStageFeedback : public ChartFeedback {
 public:
  ChartStageFeedback(StatusLine& status, UserInterface& ui) : status_(status), ui_(ui) {}
  void SetStatus(const std::string& text) override;
  void ShowMessage(ChartMessageKind kind, const std::string& title,
                   const std::string& text) override;

 private:
  StatusLine& status_;
  UserInterface& ui_;
};

/// The chart items of `settings` as they stand now (the log-X-in-use flag
/// changes during a conversion).
ChartSettings ChartSettingsOf(const Settings& settings);

}  // namespace z4400

#endif  // Z4400_DRIVER_CHART_STAGE_FEEDBACK_H_
