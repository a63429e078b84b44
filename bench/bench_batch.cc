// Speed of the batch conversion: the whole z4400conv --batch process on one
// small instrument file (start to exit), and the share of a conversion that
// the driver itself takes beside its stages on a large one.
//
// The instrument files are made by the generator; the program is Z4400_CONV
// (default: the z4400conv of this build).
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "driver/console_ui.h"
#include "driver/converter.h"
#include "driver/workbook_stages.h"
#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

fs::path ProgramPath() {
  if (const char* program = std::getenv("Z4400_CONV")) return program;
  return fs::read_symlink("/proc/self/exe").parent_path().parent_path() / "app" / "z4400conv";
}

/// A scratch folder for settings and output, without dots in its path.
struct BenchFolder {
  BenchFolder() : path(fs::temp_directory_path() / ("z4400-bench-" + std::to_string(::getpid()))) {
    fs::create_directories(path);
  }
  ~BenchFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  fs::path path;
};

/// Writes a generated instrument file into `folder`: a small one (a
/// spectrum screen of 401 points, two traces) or a large one (spectrum,
/// zero-span and Freq-Time screens of 1001 points and three traces each).
fs::path WriteInstrumentFile(const fs::path& folder, bool large) {
  GeneratorOptions options;
  options.seed = 11;
  options.points = large ? 1001 : 401;
  options.traces = large ? 3 : 2;
  options.markers = 4;
  if (large)
    options.screens = {ScreenKind::kSpectrum, ScreenKind::kZeroSpan, ScreenKind::kFreqTime};
  fs::path path = folder / (large ? "large.xml" : "small.xml");
  std::ofstream(path, std::ios::binary) << InstrumentXml(GenerateInstrumentFile(options));
  return path;
}

/// Runs the program and waits for it; returns its exit status.
int RunProcess(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
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
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// z4400conv --batch on a small file, from process start to exit.
void BM_BatchProcessSmallFile(benchmark::State& state) {
  const fs::path program = ProgramPath();
  if (!fs::exists(program)) {
    state.SkipWithError("z4400conv not found");
    return;
  }
  BenchFolder folder;
  const fs::path sample = WriteInstrumentFile(folder.path, /*large=*/false);
  const std::vector<std::string> arguments = {
      program.string(),     "--batch",      "--overwrite",        "--settings-dir",
      folder.path.string(), "--output-dir", folder.path.string(), sample.string()};
  for (auto _ : state) {
    if (RunProcess(arguments) != 0) {
      state.SkipWithError("z4400conv --batch failed");
      return;
    }
  }
  state.SetLabel(sample.filename().string());
}
BENCHMARK(BM_BatchProcessSmallFile)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Stages that time every call of the real stages they forward to.
class TimedStages : public ConversionStages {
 private:
  /// Runs `call`, adding its time to the stages' total.
  template <typename Call>
  auto Time(Call call) {
    const Clock::time_point start = Clock::now();
    struct Add {
      Clock::time_point start;
      Clock::duration& spent;
      ~Add() { spent += Clock::now() - start; }
    } add{start, spent_};
    return call();
  }

 public:
  TimedStages(std::unique_ptr<ConversionStages> inner, Clock::duration& spent)
      : inner_(std::move(inner)), spent_(spent) {}

  void ResetRunTables() override {
    Time([&] { inner_->ResetRunTables(); });
  }
  void BeginFile() override {
    Time([&] { inner_->BeginFile(); });
  }
  void SetDisplayAlerts(bool on) override {
    Time([&] { inner_->SetDisplayAlerts(on); });
  }
  void SetUpUnitNames() override {
    Time([&] { inner_->SetUpUnitNames(); });
  }
  int16_t OpenSource(const std::string& path) override {
    return Time([&] { return inner_->OpenSource(path); });
  }
  int16_t ReadGeneralInfo(GeneralInfo& info) override {
    return Time([&] { return inner_->ReadGeneralInfo(info); });
  }
  std::string ErrorText() const override { return inner_->ErrorText(); }
  std::string ProbeVersion() override {
    return Time([&] { return inner_->ProbeVersion(); });
  }
  void SetSpreadsheetVersion(int16_t v) override {
    Time([&] { inner_->SetSpreadsheetVersion(v); });
  }
  void NewWorkbook() override {
    Time([&] { inner_->NewWorkbook(); });
  }
  void ActivateWorksheet(const std::string& name) override {
    Time([&] { inner_->ActivateWorksheet(name); });
  }
  void SaveWorkbook() override {
    Time([&] { inner_->SaveWorkbook(); });
  }
  void QuitSpreadsheet() override {
    Time([&] { inner_->QuitSpreadsheet(); });
  }
  void CreateResultSheets(const std::string& path) override {
    Time([&] { inner_->CreateResultSheets(path); });
  }
  int16_t WriteGeneralInfo(const GeneralInfo& info, const std::string& sheet,
                           const std::string& title) override {
    return Time([&] { return inner_->WriteGeneralInfo(info, sheet, title); });
  }
  int16_t ReadScreenConfig(int screen, ScreenInfo& info) override {
    return Time([&] { return inner_->ReadScreenConfig(screen, info); });
  }
  void SetTimeAxis(const ScreenInfo& info, int screen) override {
    Time([&] { inner_->SetTimeAxis(info, screen); });
  }
  int16_t ReadMarkers(int screen, MarkersInfo& markers) override {
    return Time([&] { return inner_->ReadMarkers(screen, markers); });
  }
  int16_t WriteScreenConfig(int screen, ScreenInfo& info) override {
    return Time([&] { return inner_->WriteScreenConfig(screen, info); });
  }
  void SetXScaleType(ScreenInfo& info, int screen) override {
    Time([&] { inner_->SetXScaleType(info, screen); });
  }
  int16_t ScreenTraceCount(int screen, int32_t& count) override {
    return Time([&] { return inner_->ScreenTraceCount(screen, count); });
  }
  int16_t ReadXAxisData(int screen) override {
    return Time([&] { return inner_->ReadXAxisData(screen); });
  }
  void WriteRawXData(int screen, const GeneralInfo& info, const ScreenInfo& s) override {
    Time([&] { inner_->WriteRawXData(screen, info, s); });
  }
  void PrepareScreenChart(int16_t top, int16_t end) override {
    Time([&] { inner_->PrepareScreenChart(top, end); });
  }
  std::string TraceLabel(int trace) override {
    return Time([&] { return inner_->TraceLabel(trace); });
  }
  int16_t ReadTraceY(int screen, int trace, TraceData& data) override {
    return Time([&] { return inner_->ReadTraceY(screen, trace, data); });
  }
  void WriteRawTrace(int screen, int trace, const TraceData& data) override {
    Time([&] { inner_->WriteRawTrace(screen, trace, data); });
  }
  void AddTraceSeries(const ScreenInfo& info, int trace, const TraceData& data, int screen,
                      int16_t top, int16_t end) override {
    Time([&] { inner_->AddTraceSeries(info, trace, data, screen, top, end); });
  }
  void FormatChart(const ScreenInfo& info, const GeneralInfo& general, int screen,
                   int32_t count) override {
    Time([&] { inner_->FormatChart(info, general, screen, count); });
  }
  void WriteMarkersDetails(const MarkersInfo& markers, int screen) override {
    Time([&] { inner_->WriteMarkersDetails(markers, screen); });
  }
  void PlaceChartMarkers(const MarkersInfo& markers, const GeneralInfo& general,
                         int screen) override {
    Time([&] { inner_->PlaceChartMarkers(markers, general, screen); });
  }
  bool LogXMark(int screen) override {
    return Time([&] { return inner_->LogXMark(screen); });
  }
  void CopyGraphSheets(const GeneralInfo& general, const MarkersInfo& markers) override {
    Time([&] { inner_->CopyGraphSheets(general, markers); });
  }
  void SetPrintLayout(const GeneralInfo& general) override {
    Time([&] { inner_->SetPrintLayout(general); });
  }

 private:
  std::unique_ptr<ConversionStages> inner_;
  Clock::duration& spent_;
};

/// One conversion of a large file in-process; the counter driver_share is
/// the part of the run spent outside the stage calls (the status line,
/// progress, output naming and the driver's own steps).
void BM_DriverShareLargestFile(benchmark::State& state) {
  BenchFolder folder;
  const fs::path sample = WriteInstrumentFile(folder.path, /*large=*/true);
  std::ostringstream discarded;
  ConsoleUi ui(discarded, /*live=*/false, /*overwrite=*/true, folder.path.string());
  Clock::duration in_stages{};
  Clock::duration total{};
  const StagesFactory real = WorkbookStagesFactory();
  Converter converter(ui, folder.path, [&](const StageContext& context) {
    return std::make_unique<TimedStages>(real(context), in_stages);
  });
  converter.SetFinishPause(0);
  converter.settings().WarnOnOverwrite = 0;
  int run = 0;
  for (auto _ : state) {
    // Each run saves into a folder of its own: the usual case of a new
    // workbook, without the deletion of an older one.
    state.PauseTiming();
    const fs::path output = folder.path / ("run" + std::to_string(++run));
    fs::create_directories(output);
    converter.AddFile(sample.string());
    discarded.str("");
    state.ResumeTiming();
    const Clock::time_point start = Clock::now();
    const int32_t result = converter.StartConversion(output.string(), true);
    total += Clock::now() - start;
    if (result != 0 || converter.ProgramEnded()) {
      state.SkipWithError("conversion failed");
      return;
    }
  }
  const double total_ns = static_cast<double>(total.count());
  state.counters["driver_share_pct"] =
      total_ns > 0 ? 100.0 * static_cast<double>((total - in_stages).count()) / total_ns : 0;
  state.SetLabel(sample.filename().string());
}
BENCHMARK(BM_DriverShareLargestFile)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace z4400

BENCHMARK_MAIN();
