// The state of a conversion run that outlives one file: progress, the output
// folder chosen on the main window, the cancel request, the spreadsheet
// version and the error text that the failing stage left.
#ifndef Z4400_DRIVER_RUN_STATE_H_
#define Z4400_DRIVER_RUN_STATE_H_

#include <cstdint>
#include <string>

namespace z4400 {

/// Progress steps allotted to each file of a run.
inline constexpr int kStepsPerFile = 50;

/// Value of the cancel request flag that asks the driver to stop at the next
/// stage boundary (and to return rather than end the program).
inline constexpr int32_t kCancelRequested = 2;

/// Run state owned by the driver. A default-constructed object holds the
/// start-up values (`InitDefaults`).
struct RunState {
  int16_t ProgressCounter = 0;          ///< one step per status text
  int ProgressMaximum = kStepsPerFile;  ///< the progress bar's maximum
  int32_t CancelRequest = 0;            ///< 2 = stop at the next stage boundary
  int32_t QuitCount = 0;                ///< reset at each run; nothing else writes it
  int16_t SpreadsheetVersion = 0;       ///< copy of the version for the chart stages
  std::string OutputDirectory;          ///< output directory value of the run
  int32_t UseOutputDirectory = 0;       ///< the main window's check box for the run
  std::string ErrorText;                ///< detail shown by the failure message
  /// Set when a failure ended the program: nothing more is converted.
  bool ProgramEnded = false;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_RUN_STATE_H_
