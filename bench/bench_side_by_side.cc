// bench_side_by_side: whole processes, from start to exit, measured side by
// side in one run: CPU time (user + system), wall time, page faults and peak
// memory of z4400conv on the largest file (3 screens of 5 traces of 1001
// points, 10 markers per screen), on a 1-screen 2-trace 501-point file, for
// --help, for a batch of 100 largest files with --jobs 1 and --jobs 2, and
// of the libxlsxwriter comparison program on the largest file; then the
// ratios and the targets.
//
//   bench_side_by_side [--runs N] [--batch-runs N] [--program Z4400CONV]
//                      [--comparison XLSXWRITER_CONVERT]
//
// The rounds interleave the cases, so that a change in the machine's load
// touches them alike; each figure is the median of its runs (peak memory
// and major faults: the largest). CPU time is the fair figure on a shared
// machine; the wall time of a conversion includes the wait for its
// workbook to reach the disk.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "testing/instrument_generator.h"

namespace z4400 {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int kBatchFiles = 100;

/// One finished process.
struct Sample {
  double cpu_ms = 0;
  double wall_ms = 0;
  long minor_faults = 0;
  long major_faults = 0;
  double peak_mib = 0;
};

/// A measured case: its label, its command line, and its samples.
struct Case {
  std::string label;
  std::vector<std::string> arguments;
  bool batch = false;  // a 100-file batch, run fewer times
  std::vector<Sample> samples;
  std::string note;  // why it was not run
};

/// Runs `arguments` with stdout and stderr discarded; the sample, or none
/// when the process did not exit with status 0.
std::optional<Sample> RunProcess(const std::vector<std::string>& arguments) {
  std::vector<char*> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
  argv.push_back(nullptr);
  const Clock::time_point start = Clock::now();
  const pid_t child = ::fork();
  if (child < 0) return std::nullopt;
  if (child == 0) {
    const int null = ::open("/dev/null", O_RDWR);
    ::dup2(null, STDIN_FILENO);
    ::dup2(null, STDOUT_FILENO);
    ::dup2(null, STDERR_FILENO);
    ::execv(argv[0], argv.data());
    ::_exit(127);
  }
  int status = 0;
  rusage usage{};
  // The usage of the child and of every process it waited for.
  if (::wait4(child, &status, 0, &usage) != child) return std::nullopt;
  const Clock::time_point end = Clock::now();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) return std::nullopt;
  const auto ms = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
  };
  Sample sample;
  sample.cpu_ms = ms(usage.ru_utime) + ms(usage.ru_stime);
  sample.wall_ms = std::chrono::duration<double, std::milli>(end - start).count();
  sample.minor_faults = usage.ru_minflt;
  sample.major_faults = usage.ru_majflt;
  sample.peak_mib = static_cast<double>(usage.ru_maxrss) / 1024;  // kB
  return sample;
}

/// The text a program prints on stdout.
std::string Output(const std::string& command) {
  std::string text;
  if (std::FILE* pipe = ::popen(command.c_str(), "r")) {
    char buffer[4096];
    size_t read = 0;
    while ((read = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) text.append(buffer, read);
    ::pclose(pipe);
  }
  return text;
}

std::string LoadAverage() {
  std::ifstream in("/proc/loadavg");
  std::string one;
  std::string five;
  std::string fifteen;
  in >> one >> five >> fifteen;
  return one + " " + five + " " + fifteen;
}

template <typename Value>
Value Median(std::vector<Value> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// Median CPU, wall and minor faults; largest major faults and peak.
Sample Summary(const std::vector<Sample>& samples) {
  std::vector<double> cpu;
  std::vector<double> wall;
  std::vector<long> minor;
  Sample summary;
  for (const Sample& sample : samples) {
    cpu.push_back(sample.cpu_ms);
    wall.push_back(sample.wall_ms);
    minor.push_back(sample.minor_faults);
    summary.major_faults = std::max(summary.major_faults, sample.major_faults);
    summary.peak_mib = std::max(summary.peak_mib, sample.peak_mib);
  }
  summary.cpu_ms = Median(cpu);
  summary.wall_ms = Median(wall);
  summary.minor_faults = Median(minor);
  return summary;
}

fs::path WriteInstrumentFile(const fs::path& path, const GeneratorOptions& options) {
  std::ofstream(path, std::ios::binary) << InstrumentXml(GenerateInstrumentFile(options));
  return path;
}

struct Options {
  int runs = 20;
  int batch_runs = 3;
  fs::path program;
  fs::path comparison;
};

bool ParseOptions(int argc, char** argv, Options& options) {
  const fs::path here = fs::read_symlink("/proc/self/exe").parent_path();
  options.program = here.parent_path() / "app" / "z4400conv";
  options.comparison = here / "xlsxwriter-convert";
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string name = argv[i];
    const std::string value = argv[i + 1];
    if (name == "--runs") {
      options.runs = std::max(1, std::atoi(value.c_str()));
    } else if (name == "--batch-runs") {
      options.batch_runs = std::max(1, std::atoi(value.c_str()));
    } else if (name == "--program") {
      options.program = value;
    } else if (name == "--comparison") {
      options.comparison = value;
    } else {
      return false;
    }
  }
  return argc % 2 == 1;
}

void PrintRow(const Case& measured) {
  if (measured.samples.empty()) {
    std::printf("%-44s %s\n", measured.label.c_str(), measured.note.c_str());
    return;
  }
  const Sample s = Summary(measured.samples);
  std::printf("%-44s %8.1f %8.1f %8ld %6ld %8.1f\n", measured.label.c_str(), s.cpu_ms, s.wall_ms,
              s.minor_faults, s.major_faults, s.peak_mib);
}

void PrintTarget(const char* what, double value, double limit, const char* unit) {
  std::printf("  %-52s %8.2f %-3s (target <= %g%s: %s)\n", what, value, unit, limit, unit,
              value <= limit ? "met" : "missed");
}

int Run(const Options& options) {
  if (!fs::exists(options.program) || !fs::exists(options.comparison)) {
    std::fprintf(stderr, "bench_side_by_side: %s or %s not found\n", options.program.c_str(),
                 options.comparison.c_str());
    return 2;
  }
  const fs::path folder =
      fs::temp_directory_path() / ("z4400-side-by-side-" + std::to_string(::getpid()));
  fs::create_directories(folder / "out");
  GeneratorOptions large;
  large.seed = 4400;
  large.points = 1001;
  large.traces = 5;
  large.markers = 10;
  large.screens = {ScreenKind::kSpectrum, ScreenKind::kZeroSpan, ScreenKind::kFreqTime};
  GeneratorOptions small;
  small.seed = 4401;
  small.points = 501;
  small.traces = 2;
  small.markers = 4;
  const fs::path large_file = WriteInstrumentFile(folder / "large.xml", large);
  const fs::path small_file = WriteInstrumentFile(folder / "small.xml", small);

  const std::vector<std::string> convert = {
      options.program.string(), "--batch",       "--overwrite",
      "--settings-dir",         folder.string(), "--output-dir",
      (folder / "out").string()};
  const auto with = [](std::vector<std::string> arguments, const std::vector<std::string>& more) {
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
  };
  std::vector<std::string> batch_files;
  for (int copy = 0; copy < kBatchFiles; ++copy) {
    const fs::path link = folder / ("large" + std::to_string(copy) + ".xml");
    fs::create_hard_link(large_file, link);
    batch_files.push_back(link.string());
  }
  const bool has_jobs =
      Output("'" + options.program.string() + "' --help").find("--jobs") != std::string::npos;

  std::vector<Case> cases = {
      {"largest file (3 screens x 5 traces x 1001)", with(convert, {large_file.string()})},
      {"1 screen, 2 traces, 501 points", with(convert, {small_file.string()})},
      {"--help", {options.program.string(), "--help"}},
      {"100 largest files, --jobs 1", with(convert, with({"--jobs", "1"}, batch_files)), true},
      {"100 largest files, --jobs 2", with(convert, with({"--jobs", "2"}, batch_files)), true},
      {"libxlsxwriter program, largest file",
       {options.comparison.string(), large_file.string(), (folder / "comparison.xlsx").string()}},
  };
  if (!has_jobs) {
    // Without --jobs the batch runs in one job; the --jobs 2 row stays empty.
    cases[3].label = "100 largest files (no --jobs: one job)";
    cases[3].arguments = with(convert, batch_files);
    cases[4].note = "not run: this z4400conv has no --jobs";
  }

  const std::string load_before = LoadAverage();
  const int rounds = std::max(options.runs, options.batch_runs);
  for (int round = 0; round < rounds; ++round) {
    for (Case& measured : cases) {
      if (!measured.note.empty()) continue;
      if (round >= (measured.batch ? options.batch_runs : options.runs)) continue;
      const std::optional<Sample> sample = RunProcess(measured.arguments);
      if (!sample) {
        measured.note = "failed (exit status not 0)";
        measured.samples.clear();
        continue;
      }
      measured.samples.push_back(*sample);
    }
  }
  const std::string load_after = LoadAverage();
  std::error_code ignored;
  fs::remove_all(folder, ignored);

  std::printf("z4400conv side by side: median of %d runs (batches: %d), %ld cores,\n", options.runs,
              options.batch_runs, ::sysconf(_SC_NPROCESSORS_ONLN));
  std::printf("load average %s before, %s after\n\n", load_before.c_str(), load_after.c_str());
  std::printf("%-44s %8s %8s %8s %6s %8s\n", "process, start to exit", "CPU ms", "wall ms",
              "minflt", "majflt", "peak MiB");
  for (const Case& measured : cases) PrintRow(measured);

  const auto summary = [&](int index) {
    return cases[static_cast<size_t>(index)].samples.empty()
               ? std::optional<Sample>()
               : Summary(cases[static_cast<size_t>(index)].samples);
  };
  const std::optional<Sample> largest = summary(0);
  const std::optional<Sample> one_screen = summary(1);
  const std::optional<Sample> help = summary(2);
  const std::optional<Sample> jobs1 = summary(3);
  const std::optional<Sample> jobs2 = summary(4);
  const std::optional<Sample> comparison = summary(5);
  std::printf("\nratios and targets\n");
  if (largest) {
    PrintTarget("largest file: CPU", largest->cpu_ms, 20, "ms");
    PrintTarget("largest file: page faults", static_cast<double>(largest->minor_faults), 600, "");
    PrintTarget("largest file: peak memory", largest->peak_mib, 16, "MiB");
    if (comparison) {
      PrintTarget("largest file: CPU / libxlsxwriter program CPU",
                  largest->cpu_ms / comparison->cpu_ms, 0.2, "x");
    }
  }
  if (one_screen) PrintTarget("1 screen, 2 traces, 501 points: CPU", one_screen->cpu_ms, 8, "ms");
  if (help) {
    PrintTarget("--help: CPU", help->cpu_ms, 5, "ms");
    PrintTarget("--help: peak memory", help->peak_mib, 6, "MiB");
  }
  if (jobs1) {
    PrintTarget("100 largest files, one call: CPU", jobs1->cpu_ms / 1000, 1.5, "s");
    if (jobs2) {
      PrintTarget("--jobs 2 wall / --jobs 1 wall", jobs2->wall_ms / jobs1->wall_ms, 0.6, "x");
    }
  }
  return 0;
}

}  // namespace
}  // namespace z4400

int main(int argc, char** argv) {
  z4400::Options options;
  if (!z4400::ParseOptions(argc, argv, options)) {
    std::fprintf(stderr,
                 "usage: bench_side_by_side [--runs N] [--batch-runs N] [--program Z4400CONV]"
                 " [--comparison XLSXWRITER_CONVERT]\n");
    return 2;
  }
  try {
    return z4400::Run(options);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_side_by_side: %s\n", failure.what());
    return 1;
  }
}
