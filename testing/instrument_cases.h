// The instrument files the tests read and convert end to end, made at test
// time by the project's generator: the files of examples/ (the same
// commands) and the cases the examples leave out. Together they cover both
// layouts and both CSV line ends, every screen kind, markers plain and delta
// on traces A, B and C, screens without markers, missing points on linear
// and dB screens, and a model the converter refuses.
#ifndef Z4400_TESTING_INSTRUMENT_CASES_H_
#define Z4400_TESTING_INSTRUMENT_CASES_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "testing/instrument_generator.h"

namespace z4400::testing {

/// One made-up instrument file.
struct InstrumentCase {
  std::string name;  ///< file name; ".csv" gives the CSV layout, else XML
  GeneratorOptions options;
  bool bare_line_feeds = false;  ///< CSV lines end with LF alone
  bool example = false;          ///< also committed under examples/
  bool converts = true;          ///< false: a model the converter refuses
};

/// Every case, the examples first.
const std::vector<InstrumentCase>& InstrumentCases();

/// The case called `name`; throws std::out_of_range for an unknown name.
const InstrumentCase& InstrumentCaseNamed(std::string_view name);

/// The file text of `instrument_case`.
std::string InstrumentCaseText(const InstrumentCase& instrument_case);

/// Writes the case called `name` into `folder`; returns its path.
std::filesystem::path WriteInstrumentCase(const std::filesystem::path& folder,
                                          std::string_view name);

/// Writes every case that converts into `folder`; returns their paths in
/// the order of InstrumentCases().
std::vector<std::filesystem::path> WriteConvertedCases(const std::filesystem::path& folder);

}  // namespace z4400::testing

#endif  // Z4400_TESTING_INSTRUMENT_CASES_H_
