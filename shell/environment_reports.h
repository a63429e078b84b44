// The "Help(&H)" menu's reports about the installation: the converter's own
// version, the spreadsheet application's version and the operating system.
// They show a message box and change nothing.
#ifndef Z4400_SHELL_ENVIRONMENT_REPORTS_H_
#define Z4400_SHELL_ENVIRONMENT_REPORTS_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "driver/user_interface.h"

namespace z4400 {

/// Title of the version message (spelled so).
inline constexpr char kVersionInfoTitle[] = "Version Infomation";
/// Titles of the spreadsheet and operating-system reports.
inline constexpr char kSpreadsheetVersionTitle[] = "Excel version";
inline constexpr char kOsVersionTitle[] = "OS version";
/// Report of a missing spreadsheet application.
inline constexpr char kSpreadsheetNotFound[] = "Your Excel is not found.";
/// Start of the spreadsheet version report.
inline constexpr char kSpreadsheetVersionPrefix[] = "Your Excel version is ";

/// The spreadsheet application's name for version number n: "Excel 5.0",
/// "Excel 95" … "Excel 2010" for the versions of the table, else "Excel "
/// and n in decimals ("Excel 16").
std::string SpreadsheetVersionName(int16_t version);

/// `ShowVersionInfo`: "Version Infomation" box holding the window title and
/// the version label ("Ver 2.1") on two lines joined by CR LF.
void ShowVersionInfo(UserInterface& ui, const std::string& window_title,
                     const std::string& version_label);

/// Reads the `Version` text of a newly created spreadsheet application;
/// throws (RuntimeFailure) when none can be created.
using SpreadsheetVersionProbe = std::function<std::string()>;

/// `ShowSpreadsheetVersion`: an information box "Your Excel version is "
/// and the version's name, or "Your Excel is not found." when the probe
/// fails. The probe's text is taken as a 16-bit integer (its numeric value
/// rounded half to even); a text beyond 16 bits is a failure too. In debug
/// mode a failure is not caught: it passes to the caller and no box is
/// shown.
void ShowSpreadsheetVersion(UserInterface& ui, const SpreadsheetVersionProbe& probe,
                            bool debug_mode);

/// What the operating-system report shows of one installed system.
struct OsFacts {
  std::string caption;  ///< the system's name, "Debian GNU/Linux 12 (bookworm)"
  std::string version;  ///< its version, "6.1.0-18-amd64"
};

/// `ShowOsVersion`: an information box with every system's caption, CR LF
/// and version, one after the other.
void ShowOsVersion(UserInterface& ui, const std::vector<OsFacts>& systems);

}  // namespace z4400

#endif  // Z4400_SHELL_ENVIRONMENT_REPORTS_H_
