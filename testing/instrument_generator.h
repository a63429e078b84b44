// Made-up instrument files: the content of a Z4400 measurement (screens,
// parameters, markers, traces) generated deterministically from a seed, and
// its text in either of the instrument's file layouts. Used by the test
// fixtures, the benchmarks, the fuzzing corpus and the z4400gen tool.
#ifndef Z4400_TESTING_INSTRUMENT_GENERATOR_H_
#define Z4400_TESTING_INSTRUMENT_GENERATOR_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace z4400 {

/// What a generated screen shows.
enum class ScreenKind {
  kSpectrum,      ///< frequency axis, dB level unit, log scale
  kZeroSpan,      ///< time axis of the sweep
  kLogX,          ///< "HS" LOG from 9 kHz
  kLogXNegative,  ///< "HS" LOG with a start frequency below 0
  kLinearWatts,   ///< "Watts", linear scale
  kLinearVolts,   ///< "Volts" at 75 ohms, linear scale
  kFreqTime,      ///< digital functions from here on
  kPhaseTime,
  kPowerTime,
  kIqTime,
  kPartialFft,
  kPhaseFreq,
};

/// The command-line name of a screen kind ("spectrum", "zero-span" …).
std::string_view ScreenKindName(ScreenKind kind);
/// The screen kind of a command-line name.
std::optional<ScreenKind> ScreenKindFromName(std::string_view name);
/// Every screen kind, in declaration order.
std::vector<ScreenKind> AllScreenKinds();

struct GeneratorOptions {
  uint64_t seed = 1;
  std::string model = "Z4420";
  std::string title;   ///< empty: made up from the seed
  int points = 401;    ///< points per trace
  int traces = 2;      ///< traces per screen (the CSV layout allows 10)
  int markers = 3;     ///< markers per screen, 0 to 10
  bool delta = false;  ///< delta markers: the last marker on is the reference
  std::vector<ScreenKind> screens = {ScreenKind::kSpectrum};
  /// Points left out of the first trace of every screen (XML only: a CSV
  /// trace always lists every point).
  std::vector<int> gaps;
};

/// One marker block.
struct GeneratedMarker {
  int number = 1;
  std::vector<std::pair<std::string, std::string>> parameters;  ///< MKRON … MKRPOSYGUI
};

/// One trace table.
struct GeneratedTrace {
  std::string letter;
  std::string unit;
  std::vector<std::string> levels;  ///< level text per point
  std::vector<double> values;       ///< the same levels as numbers
  std::vector<std::string> x;       ///< X value text per point (CSV column 2)
  std::vector<bool> present;        ///< false for a left-out point
};

struct GeneratedScreen {
  ScreenKind kind = ScreenKind::kSpectrum;
  /// Screen parameters then the marker settings, in file order.
  std::vector<std::pair<std::string, std::string>> parameters;
  std::vector<GeneratedMarker> markers;
  std::vector<GeneratedTrace> traces;
};

struct GeneratedFile {
  std::string model;
  std::string serial;
  std::string year, month, day;  ///< zero-padded
  std::string time;
  std::string title;
  int points = 0;
  std::vector<GeneratedScreen> screens;
};

/// The content of a file: the same options and seed give the same content.
GeneratedFile GenerateInstrumentFile(const GeneratorOptions& options);

/// The XML document of `file` (root `AnalyserData`).
std::string InstrumentXml(const GeneratedFile& file);
/// The CSV export of `file`, lines ended by CR LF (or LF alone).
std::string InstrumentCsv(const GeneratedFile& file, bool bare_line_feeds = false);

/// `value` as a plain decimal without exponent, the shortest text that reads
/// back as the same double.
std::string PlainDecimal(double value);

/// The value of parameter `id` in `parameters`, empty when absent.
std::string ParameterValue(const std::vector<std::pair<std::string, std::string>>& parameters,
                           std::string_view id);

}  // namespace z4400

#endif  // Z4400_TESTING_INSTRUMENT_GENERATOR_H_
