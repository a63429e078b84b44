// Choosing files: the source file of a conversion, a file to add to the
// list, and the output workbook's path, named after the source file.
#ifndef Z4400_DRIVER_FILE_DIALOGS_H_
#define Z4400_DRIVER_FILE_DIALOGS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "driver/file_list.h"
#include "driver/run_state.h"
#include "driver/settings.h"
#include "driver/status_line.h"
#include "driver/user_interface.h"
#include "source/records.h"

namespace z4400 {

/// Title of both open dialogs.
inline constexpr char kOpenSourceTitle[] = "Open Z4400 Family source file";
/// Filter of the open dialog of a conversion started with an empty list.
inline constexpr char kSourceFileFilter[] =
    "XML Files Z4420 family (*.xml),*.xml,(*.csv),*.csv,All Files (*.*),*.*";
/// Filter of the add-file dialog (no label on its first entry).
inline constexpr char kAddFileFilter[] = "(*.xml),*.xml,(*.csv),*.csv,All Files (*.*),*.*";
/// Title of the save dialog.
inline constexpr char kSaveResultsTitle[] = "Save Results As";
/// Shown when the output path cannot be formed or the old file not deleted.
inline constexpr char kCannotSaveMessage[] = "Can't be saved.";

/// The workbook kind a spreadsheet version writes.
struct OutputKind {
  std::string extension;  ///< "xls" below version 12, "xlsx" from 12 on
  std::string filter;     ///< the save dialog's filter
};
OutputKind OutputKindFor(int16_t spreadsheet_version);

/// `folder` with a folder separator appended when it does not end in one:
/// the separator the folder already uses ("\" or "/", the last one found),
/// else the platform's. An empty folder stays empty.
std::string WithFolderSeparator(std::string folder);

/// The proposed output path and the length of its extension with the dot.
struct OutputProposal {
  std::string path;          ///< folder + base name + extension; empty without a name
  int extension_length = 0;  ///< 4 for "xls", 5 for "xlsx", 0 when empty
};

/// Names the workbook after the source: the base name runs from after the
/// source's last folder separator ("\" or "/") up to and including the FIRST
/// dot of the whole path. Without a separator or a dot the proposal is
/// empty. Throws RuntimeFailure when the first dot stands in a folder name
/// before the last separator (C:\data.d\meas.xml).
OutputProposal ProposeOutputPath(std::string_view source_path, const std::string& folder,
                                 int16_t spreadsheet_version);

/// `ChooseSourceFile`: the listed file at the current index; with an empty
/// list the open dialog's choice (starting in the default data folder). The
/// empty text when there is none or the user cancelled. Throws
/// RuntimeFailure for an index outside the list array.
std::string ChooseSourceFile(const FileList& files, UserInterface& ui);

/// `AddFileByDialog`: lets the user pick one file and appends it to the list
/// when it is an "xml" or "csv" file; the list box is then redrawn. Throws
/// RuntimeFailure for a 102nd entry.
void AddFileByDialog(FileList& files, UserInterface& ui);

/// What `ChooseOutputPath` needs besides the source.
struct OutputNamingContext {
  const Settings& settings;  ///< warn on overwrite
  const RunState& run;       ///< output directory value and check box of the run
  StatusLine& status;        ///< for "Can't be saved."
};

/// `ChooseOutputPath`: the output path without its extension, or the empty
/// text when the file is not to be converted. Saves into the run's output
/// directory without a dialog when the check box is on and the directory is
/// set; otherwise asks with the save dialog. An existing file is deleted
/// after the overwrite question (or at once with the warning off); a No
/// opens the save dialog again. Any failure shows "Can't be saved." and
/// returns the empty text.
std::string ChooseOutputPath(const GeneralInfo& info, int16_t spreadsheet_version,
                             const OutputNamingContext& context);

}  // namespace z4400

#endif  // Z4400_DRIVER_FILE_DIALOGS_H_
