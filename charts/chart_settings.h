// What the chart builders take from the converter's settings and how they
// talk to the user: the chart colours and line weight, the graph-sheet and
// logarithmic-X switches, and the status line and message boxes, which the
// conversion driver provides.
#ifndef Z4400_CHARTS_CHART_SETTINGS_H_
#define Z4400_CHARTS_CHART_SETTINGS_H_

#include <cstdint>
#include <string>

namespace z4400 {

/// The settings items the charts read (lines 6 to 15 and 18 of "Data.ini").
/// A colour is red + 256 × green + 65536 × blue.
struct ChartSettings {
  int32_t GraphSheets = 1;      ///< copy charts to sheets of their own (version < 12)
  int32_t LineWeightIndex = 1;  ///< 0 hairline, 1 thin, 2 medium, 3 thick
  int32_t TraceAColor = 16711680;
  int32_t TraceBColor = 1262987;
  int32_t TraceCColor = 6053069;
  int32_t TraceMColor = 13150975;
  int32_t TraceOColor = 38655;
  int32_t PlotAreaColor = 13093064;
  int32_t DivisionLineColor = 13499135;
  int16_t LogXInUse = 0;   ///< the log-X-in-use flag as it stands now
  int16_t LogXOption = 1;  ///< the log-X option
};

/// Icon of a chart warning; every one has a single OK button.
enum class ChartMessageKind {
  kWarning,  ///< "Warning !!!"
  kPlain,    ///< no icon, the program's own title
};

/// The status line and the message boxes, as the conversion driver shows
/// them. The chart builders announce their stages and show their two
/// warnings through it; neither stops the conversion.
class ChartFeedback {
 public:
  virtual ~ChartFeedback() = default;
  /// Announces a stage: status label, status bar, log line, one progress
  /// step.
  virtual void SetStatus(const std::string& text) = 0;
  /// A modal message box; an empty title means the program's own title.
  virtual void ShowMessage(ChartMessageKind kind, const std::string& title,
                           const std::string& text) = 0;
};

}  // namespace z4400

#endif  // Z4400_CHARTS_CHART_SETTINGS_H_
