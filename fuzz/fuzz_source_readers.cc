// libFuzzer target over the source readers: the input is an instrument file
// (its first byte chooses whether it is read as XML or as CSV) read the way
// a conversion reads it. A run-time failure is a clean outcome; anything
// else escaping, a crash, a hang or undefined behaviour is a finding.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "common/runtime_failure.h"
#include "source/source_reader.h"
#include "source/whole_source.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  // Seeds start with "<" (XML) or a letter (CSV); any other first byte
  // alternates so that both readers see every shape of input.
  const bool xml = data[0] == '<' || (data[0] != 'M' && (data[0] & 1) != 0);
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  z4400::SourceReader reader;
  try {
    z4400::XScaleSettings settings;
    settings.LogXOption = (size & 1) != 0;
    settings.SpreadsheetVersion = (size & 2) != 0 ? 11 : 16;
    z4400::ReadWholeSourceBytes(reader, xml ? "fuzz.xml" : "fuzz.csv", bytes, settings);
  } catch (const z4400::RuntimeFailure&) {
    // The driver turns these into its failure path.
  }
  return 0;
}
