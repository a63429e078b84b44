// Reading a whole instrument file (general information, every screen, every
// trace, markers) as a conversion does: 3 screens of 5 traces of 1001
// points, once as XML and once as the CSV export of the same content.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "source/source_reader.h"
#include "source/whole_source.h"
#include "testing/instrument_generator.h"

namespace {

/// The benchmark file of the given kind, written once to the temp folder.
std::string BenchmarkFile(const std::string& kind) {
  z4400::GeneratorOptions options;
  options.seed = 7;
  options.model = "Z4430";
  options.points = 1001;
  options.traces = 5;
  options.markers = 10;
  options.screens = {z4400::ScreenKind::kSpectrum, z4400::ScreenKind::kZeroSpan,
                     z4400::ScreenKind::kFreqTime};
  const z4400::GeneratedFile file = z4400::GenerateInstrumentFile(options);
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() /
      ("z4400-bench-read-" + std::to_string(::getpid()) + "." + kind);
  std::ofstream(path, std::ios::binary)
      << (kind == "xml" ? z4400::InstrumentXml(file) : z4400::InstrumentCsv(file));
  return path.string();
}

void ReadWholeFile(benchmark::State& state, const std::string& kind) {
  const std::string path = BenchmarkFile(kind);
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  for (auto _ : state) {
    z4400::SourceReader reader;
    const z4400::WholeSource whole = z4400::ReadWholeSource(reader, path);
    if (!whole.Error.empty() || whole.Screens.size() != 3 || whole.Screens[2].Traces.size() != 5) {
      state.SkipWithError(("the file did not read: " + whole.Error).c_str());
      break;
    }
    benchmark::DoNotOptimize(whole.Screens[2].Traces[4].Values.data());
  }
  std::filesystem::remove(path);
}

void BM_ReadXml(benchmark::State& state) { ReadWholeFile(state, "xml"); }
void BM_ReadCsv(benchmark::State& state) { ReadWholeFile(state, "csv"); }

BENCHMARK(BM_ReadXml)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadCsv)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
