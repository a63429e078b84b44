#include "driver/settings_file.h"

#include <unistd.h>

#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>
#include <system_error>
#include <vector>

#include "workbook/package/atomic_file.h"

namespace z4400 {
namespace {

constexpr std::string_view kBlanks = " \t";

std::string_view Trim(std::string_view text) {
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  const size_t last = text.find_last_not_of(kBlanks);
  return text.substr(first, last - first + 1);
}

/// A number in print form: a blank where the sign of a non-negative number
/// would stand.
std::string PrintForm(std::string digits) { return digits.front() == '-' ? digits : " " + digits; }

/// The shortest text that reads back as the same double; plain decimals for
/// everyday magnitudes, an exponent only for very large or small ones.
std::string ShortestForm(double value) {
  std::array<char, 64> buffer{};
  const double magnitude = std::fabs(value);
  const bool plain = value == 0 || (magnitude >= 1e-5 && magnitude < 1e15);
  const auto result = plain ? std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed)
                            : std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
  return std::string(buffer.data(), result.ptr);
}

/// The value of a number line, or nothing when the line is not a number.
std::optional<double> ParseNumber(std::string_view line) {
  const std::string_view text = Trim(line);
  if (text.empty()) return std::nullopt;
  const char* begin = text.data();
  if (*begin == '+') ++begin;
  double value = 0;
  const auto result = std::from_chars(begin, text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

template <typename Integer>
void SetInteger(std::string_view line, Integer& item) {
  const std::optional<double> value = ParseNumber(line);
  if (!value) return;
  const double rounded = std::nearbyint(*value);  // half to even
  if (rounded < std::numeric_limits<Integer>::min() ||
      rounded > std::numeric_limits<Integer>::max()) {
    return;
  }
  item = static_cast<Integer>(rounded);
}

std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  size_t start = 0;
  while (start < text.size()) {
    const size_t end = text.find_first_of("\r\n", start);
    if (end == std::string_view::npos) {
      lines.push_back(text.substr(start));
      break;
    }
    lines.push_back(text.substr(start, end - start));
    start = end + ((text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ? 2 : 1);
  }
  return lines;
}

}  // namespace

std::filesystem::path ProgramFolder() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error || executable.empty()) return std::filesystem::current_path(error);
  return executable.parent_path();
}

std::string FormatDataIni(const Settings& settings) {
  const std::array<int64_t, 13> numbers_3_to_15 = {
      settings.WarnOnOverwrite, settings.DebugMode,       settings.AlwaysOnTop,
      settings.GraphSheets,     settings.LineWeightIndex, settings.TraceAColor,
      settings.TraceBColor,     settings.TraceCColor,     settings.TraceMColor,
      settings.TraceOColor,     settings.PlotAreaColor,   settings.DivisionLineColor,
      settings.LogXInUse};
  std::string text = settings.OutputDirectory + "\r\n";
  text += std::to_string(settings.UseOutputDirectory) + "\r\n";
  for (const int64_t number : numbers_3_to_15) text += PrintForm(std::to_string(number)) + "\r\n";
  text += PrintForm(std::to_string(settings.LogEnabled)) + "\r\n";
  text += PrintForm(ShortestForm(settings.XScaleThreshold)) + "\r\n";
  text += PrintForm(std::to_string(settings.LogXOption)) + "\r\n";
  return text;
}

void ParseDataIni(std::string_view text, Settings& settings) {
  const std::vector<std::string_view> lines = SplitLines(text);
  const auto line = [&lines](int number) -> std::string_view {
    return number <= static_cast<int>(lines.size()) ? lines[number - 1] : std::string_view();
  };
  if (!lines.empty()) settings.OutputDirectory = std::string(lines[0]);
  SetInteger(line(2), settings.UseOutputDirectory);
  SetInteger(line(3), settings.WarnOnOverwrite);
  SetInteger(line(4), settings.DebugMode);
  SetInteger(line(5), settings.AlwaysOnTop);
  SetInteger(line(6), settings.GraphSheets);
  SetInteger(line(7), settings.LineWeightIndex);
  SetInteger(line(8), settings.TraceAColor);
  SetInteger(line(9), settings.TraceBColor);
  SetInteger(line(10), settings.TraceCColor);
  SetInteger(line(11), settings.TraceMColor);
  SetInteger(line(12), settings.TraceOColor);
  SetInteger(line(13), settings.PlotAreaColor);
  SetInteger(line(14), settings.DivisionLineColor);
  SetInteger(line(15), settings.LogXInUse);
  SetInteger(line(16), settings.LogEnabled);
  if (const std::optional<double> threshold = ParseNumber(line(17))) {
    settings.XScaleThreshold = *threshold;
  }
  SetInteger(line(18), settings.LogXOption);
}

bool HasWildcardCharacter(std::string_view path) {
  return path.find_first_of(";<=>?[]*") != std::string_view::npos;
}

SettingsFileStatus ReadSettingsFile(const std::filesystem::path& folder, Settings& settings) {
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) return SettingsFileStatus::kMissingFolder;
  const std::filesystem::path path = folder / kSettingsFileName;
  if (HasWildcardCharacter(path.string())) return SettingsFileStatus::kMissingFile;
  std::ifstream file(path, std::ios::binary);
  if (!file) return SettingsFileStatus::kMissingFile;
  std::ostringstream text;
  text << file.rdbuf();
  ParseDataIni(text.str(), settings);
  return SettingsFileStatus::kDone;
}

SettingsFileStatus WriteSettingsFile(const std::filesystem::path& folder, const Settings& settings,
                                     std::string* error) {
  std::error_code folder_error;
  if (!std::filesystem::is_directory(folder, folder_error)) {
    return SettingsFileStatus::kMissingFolder;
  }
  const std::filesystem::path path = folder / kSettingsFileName;
  // The guard against the text a cancelled dialog returns, kept from the
  // first versions of the program; a joined path never equals it.
  std::string upper = path.string();
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (upper == "FALSE") return SettingsFileStatus::kDone;
  const std::string text = FormatDataIni(settings);
  const bool written = WriteAtomically(
      path,
      [&text](const std::filesystem::path& temporary) {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file.write(text.data(), static_cast<std::streamsize>(text.size()));
        file.close();
        return !file.fail();
      },
      error);
  return written ? SettingsFileStatus::kDone : SettingsFileStatus::kWriteFailed;
}

}  // namespace z4400
