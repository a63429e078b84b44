// The conversion driver: converts every file of the source-file list, one
// workbook each, announcing every stage on the status line. It owns the
// settings, the file list, the run state and the status line of the program,
// and is what the main window and the batch command drive.
#ifndef Z4400_DRIVER_CONVERTER_H_
#define Z4400_DRIVER_CONVERTER_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "driver/conversion_job.h"
#include "driver/conversion_stages.h"
#include "driver/file_list.h"
#include "driver/run_state.h"
#include "driver/settings.h"
#include "driver/status_line.h"
#include "driver/user_interface.h"

namespace z4400 {

/// What a stage implementation may hold on to: the converter's own objects,
/// which outlive it.
struct StageContext {
  Settings& settings;
  RunState& run;
  StatusLine& status;
  UserInterface& ui;
};

/// Makes the stages a converter calls (`MakeWorkbookStages` for the real
/// source reader and workbook model).
using StagesFactory = std::function<std::unique_ptr<ConversionStages>(const StageContext&)>;

/// Texts of the failure message.
inline constexpr char kErrorOccurred[] = "Error occurred.";
inline constexpr char kExitFromApplication[] = "Exit from the application";

/// The failure message: "Error occurred." CR "Exit from the application"
/// CR CR and the error text.
std::string FailureMessage(const std::string& error_text);

/// What became of one file of a run, as `ConvertFile` ended it.
struct FileOutcome {
  int ListIndex = 0;          ///< its index in the source-file list
  std::string SourcePath;     ///< empty when no source was chosen
  std::string WorkbookPath;   ///< the workbook's full path; empty when none was named
  int16_t Result = 0;         ///< the result `ConvertFile` returns
  std::string ErrorText;      ///< the error text of the failure message
  std::string FailureDetail;  ///< what a run-time failure said; empty when none
};

/// Told of every file `ConvertFile` ends, before it returns; returns false
/// to end the run after this file (the rest of the list is not converted).
using FileObserver = std::function<bool(const FileOutcome&)>;

/// The driver with the state it owns. In debug mode (settings line 4 = 1)
/// run-time failures are not caught: `StartConversion`, `ConvertAllFiles`
/// and `ConvertFile` then let RuntimeFailure (and any other exception of a
/// stage) through to the caller.
class Converter {
 public:
  /// `settings_folder` holds "Data.ini" and "Log.txt".
  Converter(UserInterface& ui, std::filesystem::path settings_folder,
            const StagesFactory& make_stages);
  ~Converter();
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // ---- Settings ---------------------------------------------------------

  /// `InitDefaults`: settings, run state and file list back to their
  /// start-up values.
  void InitDefaults();
  /// `LoadSettings`: reads "Data.ini" over the settings. A missing folder
  /// shows "Can not find Directory."; a missing file keeps the defaults.
  void LoadSettings();
  /// `SaveSettings`: writes "Data.ini". A missing folder shows "Can not find
  /// Directory."; a file that cannot be written shows the reason.
  void SaveSettings();

  // ---- Source-file list ---------------------------------------------------

  /// `AddFile` (drop, command line): appends an "xml"/"csv" file; with 100
  /// files listed shows "Error" instead.
  void AddFile(const std::string& path);
  /// `AddFileByDialog`. Throws RuntimeFailure for a 102nd entry.
  void AddFileByDialog();
  /// Removes the list box rows the user selected.
  void RemoveSelectedFiles(const std::vector<int>& selected_rows);
  /// `ClearFileList`.
  void ClearFileList();

  // ---- Conversion -----------------------------------------------------------

  /// `StartConversion`: controls off, `ResetRun`, the output directory box
  /// and the check box taken for the run, `ConvertAllFiles`, `FinishRun`
  /// (skipped when a failure ended the program). Returns the result of
  /// `ConvertAllFiles`.
  int32_t StartConversion(const std::string& output_directory, bool use_output_directory);
  /// `ConvertAllFiles`: converts the listed files in order from index 0;
  /// the first non-zero file result stops the loop and is returned. After
  /// the last file the list is cleared and 0 returned. A file observer that
  /// ends the run after a converted file makes it return `kStoppedQuietly`.
  int32_t ConvertAllFiles();
  /// `ConvertFile`: the file at the current index (or the one the open
  /// dialog chooses when the list is empty). Returns 0 when converted, -1
  /// when it stopped quietly, another value when it failed; after a failure
  /// the program has been ended (`ProgramEnded`) unless a cancel was asked.
  int16_t ConvertFile();
  /// `ResetRun`: the start of a run.
  void ResetRun();
  /// `FinishRun`: "Finish", the log's closing line, a short pause, progress
  /// back to 0 and the controls enabled.
  void FinishRun();
  /// Quits the shared spreadsheet application and tells the user interface
  /// (`SpreadsheetQuit`). Run-time failures of the stage escape.
  void QuitSpreadsheet();

  /// True once a failure ended the program: nothing more is converted.
  bool ProgramEnded() const { return run_.ProgramEnded; }
  /// Pause of `FinishRun` before the progress goes back to 0 (0.5 s; the
  /// batch command sets 0: nobody watches its progress bar).
  void SetFinishPause(double seconds) { finish_pause_seconds_ = seconds; }
  /// Sets the observer told of each file's outcome (empty: none).
  void SetFileObserver(FileObserver observer) { observer_ = std::move(observer); }

  Settings& settings() { return settings_; }
  const Settings& settings() const { return settings_; }
  FileList& files() { return files_; }
  RunState& run() { return run_; }
  StatusLine& status() { return status_; }
  UserInterface& ui() { return ui_; }
  ConversionStages& stages() { return *stages_; }

 private:
  /// How `ConvertFile` ends after a failure or a cancel request.
  enum class Ending { kFailure, kCancel };
  enum class Flow;

  /// The steps of `ConvertFile` up to the save; run-time failures escape.
  Flow ConvertFileSteps(ConversionJob& job);
  /// The steps of one screen.
  Flow ConvertScreen(ConversionJob& job);
  /// Saves the current workbook and tells the user interface its file
  /// (`WorkbookSaved`) once the result sheets named it. Run-time failures of
  /// the stage escape, untold.
  void SaveWorkbook(const ConversionJob& job);
  /// Step F (failure) and step C (end after failure or cancel).
  int16_t EndFile(ConversionJob& job, Ending ending);
  /// Tells the observer how `job` ended; false when it ends the run.
  bool Report(const ConversionJob& job, const std::string& failure_detail);
  /// The cancel test after a stage marked (c).
  bool CancelRequested() const { return run_.CancelRequest == kCancelRequested; }
  /// Shows the file list in the list box.
  void ShowFileList();

  UserInterface& ui_;
  Settings settings_;
  RunState run_;
  FileList files_;
  StatusLine status_;
  std::unique_ptr<ConversionStages> stages_;
  double finish_pause_seconds_ = 0.5;
  FileObserver observer_;
  /// Cleared when the observer ended the run after the current file.
  bool go_on_ = true;
};

}  // namespace z4400

#endif  // Z4400_DRIVER_CONVERTER_H_
