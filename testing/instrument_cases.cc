#include "testing/instrument_cases.h"

#include <fstream>
#include <stdexcept>
#include <utility>

namespace z4400::testing {
namespace {

using K = ScreenKind;

InstrumentCase Case(std::string name, uint64_t seed, std::string model, std::string title,
                    int points, int traces, int markers, std::vector<ScreenKind> screens) {
  InstrumentCase made;
  made.name = std::move(name);
  made.options.seed = seed;
  made.options.model = std::move(model);
  made.options.title = std::move(title);
  made.options.points = points;
  made.options.traces = traces;
  made.options.markers = markers;
  made.options.screens = std::move(screens);
  return made;
}

std::vector<InstrumentCase> MakeCases() {
  std::vector<InstrumentCase> cases;
  // The examples: the commands of examples/README.md.
  cases.push_back(
      Case("band_scan_markers.xml", 11, "Z4420", "ISM band scan", 401, 2, 4, {K::kSpectrum}));
  cases.push_back(Case("mixed_screens.xml", 12, "Z4430", "Burst timing", 301, 2, 2,
                       {K::kSpectrum, K::kZeroSpan, K::kFreqTime}));
  cases.push_back(Case("log_x_axis.csv", 13, "Z4520", "Conducted emission sweep", 301, 2, 2,
                       {K::kLogX, K::kLogXNegative}));
  cases.back().bare_line_feeds = true;
  cases.push_back(Case("digital_functions.csv", 14, "Z4510", "Demodulation views", 201, 2, 2,
                       {K::kIqTime, K::kPhaseTime, K::kPartialFft}));
  cases.push_back(Case("linear_delta_gaps.xml", 15, "Z4410", "Linear levels with delta markers",
                       251, 2, 3, {K::kLinearWatts, K::kLinearVolts}));
  cases.back().options.delta = true;
  cases.back().options.gaps = {5, 120};
  for (InstrumentCase& example : cases) example.example = true;

  // Two dB spectrum screens (dBuV, dBmV) in a CSV export with CR LF line
  // ends: the first screen's markers on traces A, B and C with marker 3
  // selected, the second's on its first trace; reference offsets on both.
  cases.push_back(Case("two_screens_markers.csv", 3, "Z4510", "ISM and FM bands", 301, 3, 3,
                       {K::kSpectrum, K::kSpectrum}));
  // Delta markers on a logarithmic dB screen, marker 2 selected: the
  // reference is marker 3, on trace C. Trace A misses points 5, 6 and 120,
  // which a dB screen plots as they read.
  cases.push_back(
      Case("delta_markers.xml", 1, "Z4420", "Delta markers", 401, 3, 3, {K::kSpectrum}));
  cases.back().options.delta = true;
  cases.back().options.gaps = {5, 6, 120};
  // The digital functions the examples leave out, one trace and no marker.
  cases.push_back(Case("power_phase_no_markers.xml", 21, "Z4530", "Power and phase", 201, 1, 0,
                       {K::kPowerTime, K::kPhaseFreq}));
  // A model that is not in the converter's model table.
  cases.push_back(
      Case("rejected_model.xml", 31, "Z4450", "Not a converted model", 101, 2, 2, {K::kSpectrum}));
  cases.back().converts = false;
  return cases;
}

}  // namespace

const std::vector<InstrumentCase>& InstrumentCases() {
  static const std::vector<InstrumentCase> cases = MakeCases();
  return cases;
}

const InstrumentCase& InstrumentCaseNamed(std::string_view name) {
  for (const InstrumentCase& instrument_case : InstrumentCases()) {
    if (instrument_case.name == name) return instrument_case;
  }
  throw std::out_of_range("no instrument case named " + std::string(name));
}

std::string InstrumentCaseText(const InstrumentCase& instrument_case) {
  const GeneratedFile file = GenerateInstrumentFile(instrument_case.options);
  return std::filesystem::path(instrument_case.name).extension() == ".csv"
             ? InstrumentCsv(file, instrument_case.bare_line_feeds)
             : InstrumentXml(file);
}

std::filesystem::path WriteInstrumentCase(const std::filesystem::path& folder,
                                          std::string_view name) {
  std::filesystem::path path = folder / name;
  std::ofstream out(path, std::ios::binary);
  out << InstrumentCaseText(InstrumentCaseNamed(name));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path.string());
  return path;
}

std::vector<std::filesystem::path> WriteConvertedCases(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> paths;
  for (const InstrumentCase& instrument_case : InstrumentCases()) {
    if (instrument_case.converts)
      paths.push_back(WriteInstrumentCase(folder, instrument_case.name));
  }
  return paths;
}

}  // namespace z4400::testing
