// "Data.ini": the settings record as 18 text lines in the program's folder,
// and the folder itself.
#ifndef Z4400_DRIVER_SETTINGS_FILE_H_
#define Z4400_DRIVER_SETTINGS_FILE_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "driver/settings.h"

namespace z4400 {

/// Name of the settings file in the settings folder.
inline constexpr char kSettingsFileName[] = "Data.ini";

/// The message shown when the settings folder does not exist.
inline constexpr char kMissingFolderMessage[] = "Can not find Directory.";

/// The folder of the running program's executable (where "Data.ini" and
/// "Log.txt" live unless another folder is named); the current folder when
/// it cannot be found.
std::filesystem::path ProgramFolder();

/// The "Data.ini" text of a record: 18 lines ending in CR LF, in the order of
/// the record. Line 1 is the folder text as it stands; line 2 the number
/// without blanks; lines 3 to 18 numbers in print form, a blank standing in
/// front of a non-negative number where the sign would be; line 17 in its
/// shortest form (" 1000" for the default).
std::string FormatDataIni(const Settings& settings);

/// Reads "Data.ini" text over `settings`: line n sets item n. Lines may end
/// in CR LF, LF or CR; blanks around numbers are skipped. Items whose line is
/// missing, or whose number is malformed or out of the item's range, keep
/// the value they had. Integer items take a fractional number rounded half
/// to even.
void ParseDataIni(std::string_view text, Settings& settings);

/// True when the guarded open treats `path` as a missing file: it holds one
/// of the characters ; < = > ? [ ] * (wildcards of the file search).
bool HasWildcardCharacter(std::string_view path);

/// Outcome of reading or writing the settings file.
enum class SettingsFileStatus {
  kDone,           ///< read or written
  kMissingFolder,  ///< the folder does not exist: "Can not find Directory."
  kMissingFile,    ///< no readable file (or a wildcard path): defaults stay
  kWriteFailed,    ///< the file could not be written; see the error text
};

/// Reads folder/"Data.ini" over `settings` (see ParseDataIni).
SettingsFileStatus ReadSettingsFile(const std::filesystem::path& folder, Settings& settings);

/// Writes folder/"Data.ini" through a temporary file renamed over it, so an
/// interrupted save never leaves a half-written file. On kWriteFailed,
/// `error` (when not null) receives the reason.
SettingsFileStatus WriteSettingsFile(const std::filesystem::path& folder, const Settings& settings,
                                     std::string* error);

}  // namespace z4400

#endif  // Z4400_DRIVER_SETTINGS_FILE_H_
