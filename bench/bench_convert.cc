// Speed and memory of a whole conversion: one large instrument file (3
// screens of 5 traces of 1001 points, ten markers per screen) from opening
// the source to the saved workbook, beside a minimal program that reads the
// same file with pugixml and writes the same cells and charts with
// libxlsxwriter; and the peak memory of one z4400conv --batch call over 20
// and over 200 such files.
//
// The program run for the memory figures is Z4400_CONV, by default the
// z4400conv of this build.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "bench/xlsxwriter_baseline.h"
#include "driver/console_ui.h"
#include "driver/converter.h"
#include "driver/workbook_stages.h"
#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kPoints = 1001;
constexpr int kTraces = 5;
constexpr int kMarkers = 10;

/// A scratch folder, removed at the end.
struct BenchFolder {
  explicit BenchFolder(const std::string& name)
      : path(fs::temp_directory_path() /
             ("z4400-bench-convert-" + name + "-" + std::to_string(::getpid()))) {
    fs::create_directories(path);
  }
  ~BenchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  fs::path path;
};

/// The benchmark file: a spectrum, a zero-span and a Freq-Time screen.
std::string LargeInstrumentXml() {
  GeneratorOptions options;
  options.seed = 4400;
  options.points = kPoints;
  options.traces = kTraces;
  options.markers = kMarkers;
  options.screens = {ScreenKind::kSpectrum, ScreenKind::kZeroSpan, ScreenKind::kFreqTime};
  return InstrumentXml(GenerateInstrumentFile(options));
}

fs::path WriteFile(const fs::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

// ---- Ours: the converter, source to saved workbook ---------------------------------

/// Converts `source` into `output` with default settings; true when saved.
bool ConvertWithOurs(const fs::path& source, const fs::path& output, const fs::path& settings) {
  std::ostringstream discarded;
  ConsoleUi ui(discarded, /*live=*/false, /*overwrite=*/true, settings.string());
  Converter converter(ui, settings, WorkbookStagesFactory());
  converter.SetFinishPause(0);
  converter.settings().WarnOnOverwrite = 0;
  converter.AddFile(source.string());
  const int32_t result = converter.StartConversion(output.string(), true);
  return result == 0 && !converter.ProgramEnded();
}

/// CPU time of this thread so far: what a conversion costs whatever else the
/// machine is doing (the wall time is reported too).
Clock::duration ThreadCpuTime() {
  timespec now{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

/// Both, side by side on the same file in one run: our conversion and the
/// comparison program, each timed per iteration.
void BM_ConvertLargeFile(benchmark::State& state) {
  BenchFolder folder("side-by-side");
  const fs::path source = WriteFile(folder.path / "large.xml", LargeInstrumentXml());
  const fs::path ours = folder.path / "ours";
  const fs::path theirs = folder.path / "libxlsxwriter.xlsx";
  fs::create_directories(ours);
  Clock::duration ours_total{};
  Clock::duration theirs_total{};
  Clock::duration ours_cpu{};
  Clock::duration theirs_cpu{};
  int64_t runs = 0;
  for (auto _ : state) {
    const Clock::duration cpu_start = ThreadCpuTime();
    const Clock::time_point start = Clock::now();
    if (!ConvertWithOurs(source, ours, folder.path)) {
      state.SkipWithError("the conversion failed");
      return;
    }
    const Clock::time_point middle = Clock::now();
    const Clock::duration cpu_middle = ThreadCpuTime();
    if (!WriteWithLibxlsxwriter(source, theirs)) {
      state.SkipWithError("libxlsxwriter failed");
      return;
    }
    ours_total += middle - start;
    theirs_total += Clock::now() - middle;
    ours_cpu += cpu_middle - cpu_start;
    theirs_cpu += ThreadCpuTime() - cpu_middle;
    ++runs;
  }
  const auto ms = [&](Clock::duration total) {
    return std::chrono::duration<double, std::milli>(total).count() / static_cast<double>(runs);
  };
  state.counters["ours_ms"] = ms(ours_total);
  state.counters["libxlsxwriter_ms"] = ms(theirs_total);
  state.counters["ratio"] = ms(ours_total) / ms(theirs_total);
  state.counters["ours_cpu_ms"] = ms(ours_cpu);
  state.counters["libxlsxwriter_cpu_ms"] = ms(theirs_cpu);
  state.counters["cpu_ratio"] = ms(ours_cpu) / ms(theirs_cpu);
  state.counters["ours_kB"] = static_cast<double>(fs::file_size(ours / "large.xlsx")) / 1024;
  state.counters["libxlsxwriter_kB"] = static_cast<double>(fs::file_size(theirs)) / 1024;
}
BENCHMARK(BM_ConvertLargeFile)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

// ---- Peak memory of a batch call ---------------------------------------------------

fs::path ProgramPath() {
  if (const char* program = std::getenv("Z4400_CONV")) return program;
  return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "app" / "z4400conv";
}

/// Runs z4400conv --batch over `count` copies of the large file; its peak
/// resident memory in MiB, or -1 when it failed.
double BatchPeakMiB(int count) {
  BenchFolder folder("batch-" + std::to_string(count));
  const fs::path source = WriteFile(folder.path / "large.xml", LargeInstrumentXml());
  const fs::path output = folder.path / "out";
  fs::create_directories(output);
  std::vector<std::string> arguments = {
      ProgramPath().string(), "--batch",      "--overwrite",  "--settings-dir",
      folder.path.string(),   "--output-dir", output.string()};
  for (int copy = 0; copy < count; ++copy) {
    const fs::path link = folder.path / ("file" + std::to_string(copy) + ".xml");
    fs::create_hard_link(source, link);
    arguments.push_back(link.string());
  }
  std::vector<char*> argv;
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const pid_t child = ::fork();
  if (child == 0) {
    const int null = ::open("/dev/null", O_WRONLY);
    ::dup2(null, STDERR_FILENO);
    ::dup2(null, STDOUT_FILENO);
    ::execv(argv[0], argv.data());
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
  return static_cast<double>(usage.ru_maxrss) / 1024;  // kB → MiB
}

/// Peak memory of one batch call over 20 and over 200 files: a converted
/// file must leave nothing behind for the next.
void BM_BatchPeakMemory(benchmark::State& state) {
  if (!fs::exists(ProgramPath())) {
    state.SkipWithError("z4400conv not found (set Z4400_CONV)");
    return;
  }
  double few = 0;
  double many = 0;
  for (auto _ : state) {
    few = BatchPeakMiB(20);
    many = BatchPeakMiB(200);
    if (few < 0 || many < 0) {
      state.SkipWithError("z4400conv --batch failed");
      return;
    }
  }
  state.counters["peak_20_MiB"] = few;
  state.counters["peak_200_MiB"] = many;
  state.counters["growth_pct"] = 100 * (many - few) / few;
}
BENCHMARK(BM_BatchPeakMemory)->Unit(benchmark::kSecond)->UseRealTime()->Iterations(1);

}  // namespace
}  // namespace z4400

BENCHMARK_MAIN();
