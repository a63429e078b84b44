#include "shell/environment_reports.h"

#include <exception>

#include "common/numeric_text.h"

namespace z4400 {
namespace {

constexpr char kLineBreak[] = "\r\n";

/// The name of the version, or the empty text when no spreadsheet
/// application answers. Failures escape.
std::string ProbedVersionName(const SpreadsheetVersionProbe& probe) {
  if (!probe) return {};
  return SpreadsheetVersionName(RoundToInt16(NumericValue(probe())));
}

}  // namespace

std::string SpreadsheetVersionName(int16_t version) {
  switch (version) {
    case 5:
      return "Excel 5.0";
    case 7:
      return "Excel 95";
    case 8:
      return "Excel 97";
    case 9:
      return "Excel 2000";
    case 10:
      return "Excel 2002";
    case 11:
      return "Excel 2003";
    case 12:
      return "Excel 2007";
    case 14:
      return "Excel 2010";
    default:
      return "Excel " + std::to_string(version);
  }
}

void ShowVersionInfo(UserInterface& ui, const std::string& window_title,
                     const std::string& version_label) {
  ui.ShowMessage(MessageKind::kInformation, kVersionInfoTitle,
                 window_title + kLineBreak + version_label);
}

void ShowSpreadsheetVersion(UserInterface& ui, const SpreadsheetVersionProbe& probe,
                            bool debug_mode) {
  std::string name;
  if (debug_mode) {
    name = ProbedVersionName(probe);
  } else {
    try {
      name = ProbedVersionName(probe);
    } catch (const std::exception&) {
      name.clear();
    }
  }
  ui.ShowMessage(
      MessageKind::kInformation, kSpreadsheetVersionTitle,
      name.empty() ? std::string(kSpreadsheetNotFound) : kSpreadsheetVersionPrefix + name);
}

void ShowOsVersion(UserInterface& ui, const std::vector<OsFacts>& systems) {
  std::string text;
  for (const OsFacts& system : systems) text += system.caption + kLineBreak + system.version;
  ui.ShowMessage(MessageKind::kInformation, kOsVersionTitle, text);
}

}  // namespace z4400
