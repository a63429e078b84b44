#include "testing/instrument_generator.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "common/trace_letters.h"

namespace z4400 {
namespace {

using Parameters = std::vector<std::pair<std::string, std::string>>;

constexpr std::array<std::pair<ScreenKind, std::string_view>, 12> kKindNames = {{
    {ScreenKind::kSpectrum, "spectrum"},
    {ScreenKind::kZeroSpan, "zero-span"},
    {ScreenKind::kLogX, "log-x"},
    {ScreenKind::kLogXNegative, "log-x-negative"},
    {ScreenKind::kLinearWatts, "watts"},
    {ScreenKind::kLinearVolts, "volts"},
    {ScreenKind::kFreqTime, "freq-time"},
    {ScreenKind::kPhaseTime, "phase-time"},
    {ScreenKind::kPowerTime, "power-time"},
    {ScreenKind::kIqTime, "iq-time"},
    {ScreenKind::kPartialFft, "partial-fft"},
    {ScreenKind::kPhaseFreq, "phase-freq"},
}};

/// A small, portable pseudo-random sequence (SplitMix64), so that a seed
/// gives the same file on every machine.
class Random {
 public:
  explicit Random(uint64_t seed) : state_(seed) {}
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  /// An integer in [low, high].
  int64_t Between(int64_t low, int64_t high) {
    return low + static_cast<int64_t>(Next() % static_cast<uint64_t>(high - low + 1));
  }

 private:
  uint64_t state_;
};

/// How a screen's levels look and are written.
struct LevelShape {
  std::string unit;
  int decimals = 2;    ///< digits after the point in the file
  double floor = -70;  ///< noise floor
  double noise = 2;    ///< noise amplitude
  double peak = 50;    ///< height of the peaks above the floor
};

/// The settings of one screen before they are written as parameters.
struct ScreenPlan {
  double cf = 0, sp = 0, fa = 0, fb = 0;
  double sweep_us = 20000;
  double rl = 0;
  std::string aunits = "dBm";
  std::string vs = "LOG";
  double dd = 10;
  std::string hs = "LIN";
  int impedance = 50;
  bool offset_on = false;
  std::string function;  ///< digital measurement function, empty for spectrum
  double horiz_position = 0, stop_time = 0, horiz_scale = 0, capture_time = 0, capture_bw = 0;
  std::string vert_scale_id;
  double vert_scale = 0;
  LevelShape shape;
};

std::string Fixed(int64_t mantissa, int decimals) {
  std::string digits = std::to_string(mantissa < 0 ? -mantissa : mantissa);
  if (decimals > 0) {
    if (static_cast<int>(digits.size()) <= decimals) {
      digits.insert(0, static_cast<size_t>(decimals + 1) - digits.size(), '0');
    }
    digits.insert(digits.size() - static_cast<size_t>(decimals), ".");
  }
  return (mantissa < 0 ? "-" : "") + digits;
}

ScreenPlan PlanScreen(ScreenKind kind, Random& random) {
  ScreenPlan plan;
  static constexpr std::array<std::pair<double, double>, 5> kBands = {{{2400000000, 100000000},
                                                                       {98000000, 20000000},
                                                                       {5800000000, 200000000},
                                                                       {900000000, 50000000},
                                                                       {1842500000, 75000000}}};
  const auto& band = kBands[static_cast<size_t>(random.Between(0, kBands.size() - 1))];
  plan.cf = band.first;
  plan.sp = band.second;
  plan.sweep_us = static_cast<double>(random.Between(1, 50) * 1000);
  switch (kind) {
    case ScreenKind::kSpectrum: {
      static constexpr std::array<std::pair<std::string_view, double>, 5> kUnits = {
          {{"dBm", 0}, {"dBmV", 60}, {"dBuV", 100}, {"dBpW", 90}, {"dBuVemf", 110}}};
      const auto& unit = kUnits[static_cast<size_t>(random.Between(0, kUnits.size() - 1))];
      plan.aunits = unit.first;
      plan.rl = unit.second;
      plan.offset_on = random.Between(0, 3) == 0;
      plan.shape = {plan.aunits, 2, plan.rl - 75, 2, 55};
      break;
    }
    case ScreenKind::kZeroSpan:
      plan.sp = 0;
      plan.sweep_us = 4615;
      plan.shape = {"dBm", 2, -80, 1.5, 65};
      break;
    case ScreenKind::kLogX:
      plan.fa = 9000;
      plan.fb = 1000000000;
      plan.aunits = "dBuV";
      plan.rl = 100;
      plan.hs = "LOG";
      plan.shape = {"dBuV", 2, 30, 3, 60};
      break;
    case ScreenKind::kLogXNegative:
      plan.fa = -10000000;
      plan.fb = 90000000;
      plan.hs = "LOG";
      plan.shape = {"dBm", 2, -80, 2, 50};
      break;
    case ScreenKind::kLinearWatts:
      plan.aunits = "Watts";
      plan.rl = 0.01;
      plan.vs = "LIN";
      plan.dd = 0.001;
      plan.shape = {"Watts", 7, 0.0001, 0.00005, 0.008};
      break;
    case ScreenKind::kLinearVolts:
      plan.aunits = "Volts";
      plan.rl = 0.5;
      plan.vs = "LIN";
      plan.dd = 0.05;
      plan.impedance = 75;
      plan.shape = {"Volts", 5, 0.01, 0.005, 0.4};
      break;
    case ScreenKind::kFreqTime:
      plan.function = "Freq-Time";
      plan.stop_time = 577;
      plan.vert_scale_id = "DGT_VERTSCALE_FREQ";
      plan.vert_scale = 25000;
      plan.vs = "LIN";
      plan.shape = {"Hz", 1, 100000, 5000, 20000};
      break;
    case ScreenKind::kPhaseTime:
      plan.function = "Phase-Time";
      plan.stop_time = 1000;
      plan.vert_scale_id = "DGT_VERTSCALE_PHASE";
      plan.vert_scale = 45;
      plan.vs = "LIN";
      plan.shape = {"deg", 2, -90, 20, 150};
      break;
    case ScreenKind::kPowerTime:
      plan.function = "Power-Time";
      plan.stop_time = 577;
      plan.vert_scale_id = "DGT_VERTSCALE_POWER";
      plan.vert_scale = 10;
      plan.shape = {"dBm", 2, -60, 2, 50};
      break;
    case ScreenKind::kIqTime:
      plan.function = "IQ-Time";
      plan.stop_time = 200;
      plan.vert_scale_id = "DGT_VERTSCALE_IQ";
      plan.vert_scale = 0.1;
      plan.vs = "LIN";
      plan.shape = {"V", 5, -0.2, 0.02, 0.4};
      break;
    case ScreenKind::kPartialFft:
      plan.function = "PartialFFT";
      plan.sp = 20000000;
      plan.stop_time = 1000;
      plan.vert_scale_id = "DGT_VERTSCALE_PARTFFT";
      plan.vert_scale = 10;
      plan.shape = {"dBm", 2, -90, 2, 60};
      break;
    case ScreenKind::kPhaseFreq:
      plan.function = "Phase-Freq";
      plan.sp = 5000000;
      plan.stop_time = 1000;
      plan.vert_scale_id = "DGT_VERTSCALE_PHAFREQ";
      plan.vert_scale = 45;
      plan.vs = "LIN";
      plan.shape = {"deg", 2, -90, 20, 150};
      break;
  }
  if (kind != ScreenKind::kLogX && kind != ScreenKind::kLogXNegative) {
    plan.fa = plan.sp == 0 ? plan.cf : plan.cf - plan.sp / 2;
    plan.fb = plan.sp == 0 ? plan.cf : plan.cf + plan.sp / 2;
  } else {
    plan.sp = plan.fb - plan.fa;
    plan.cf = plan.fa + plan.sp / 2;
  }
  if (!plan.function.empty()) {
    plan.horiz_scale = plan.stop_time / 10;
    plan.capture_time = plan.stop_time;
    plan.capture_bw = plan.sp != 0 ? plan.sp : 10000000;
  }
  return plan;
}

Parameters ScreenParameters(const ScreenPlan& plan) {
  Parameters parameters = {
      {"CF", PlainDecimal(plan.cf)},
      {"SP", PlainDecimal(plan.sp)},
      {"FA", PlainDecimal(plan.fa)},
      {"FB", PlainDecimal(plan.fb)},
      {"FOON", plan.offset_on ? "ON" : "OFF"},
      {"FO", plan.offset_on ? "1000000" : "0"},
      {"RB", PlainDecimal(plan.sp == 0 ? 1000000 : std::max(1000.0, std::round(plan.sp / 1000)))},
      {"VB", PlainDecimal(plan.sp == 0 ? 3000000 : std::max(3000.0, std::round(plan.sp / 300)))},
      {"SW", PlainDecimal(plan.sweep_us)},
      {"RL", PlainDecimal(plan.rl)},
      {"ROON", plan.offset_on ? "ON" : "OFF"},
      {"RO", plan.offset_on ? "3" : "0"},
      {"AUNITS", plan.aunits},
      {"VS", plan.vs},
      {"DD", PlainDecimal(plan.dd)},
      {"HS", plan.hs},
      {"DET", "POSPEAK"},
      {"ATDUALCH", "10"},
      {"OHMDUALCH", std::to_string(plan.impedance)},
      {"DGT_EXE", plan.function.empty() ? "OFF" : "ON"},
  };
  if (!plan.function.empty()) {
    parameters.insert(parameters.end(), {{"DGT_MEASFUNCTION", plan.function},
                                         {"DGT_HORIZPOSITION", PlainDecimal(plan.horiz_position)},
                                         {"DGT_STOPTIME", PlainDecimal(plan.stop_time)},
                                         {"DGT_HORIZSCALE", PlainDecimal(plan.horiz_scale)},
                                         {"DGT_CAPTTIME", PlainDecimal(plan.capture_time)},
                                         {"DGT_CAPTBW", PlainDecimal(plan.capture_bw)},
                                         {plan.vert_scale_id, PlainDecimal(plan.vert_scale)}});
  }
  return parameters;
}

/// X of point `i` as the file states it: Hz, seconds on zero span,
/// microseconds on digital time functions.
double PointX(const ScreenPlan& plan, int i, int points) {
  const double steps = points > 1 ? points - 1 : 1;
  const bool time_function =
      !plan.function.empty() && plan.function != "PartialFFT" && plan.function != "Phase-Freq";
  if (time_function)
    return plan.horiz_position + (plan.stop_time - plan.horiz_position) * i / steps;
  if (plan.function.empty() && plan.sp == 0) return plan.sweep_us / 1000000 * i / steps;
  // Frequencies are written to the millihertz, as the instrument does.
  return std::round((plan.fa + (plan.fb - plan.fa) * i / steps) * 1000) / 1000;
}

GeneratedTrace MakeTrace(const ScreenPlan& plan, int trace, int points,
                         const std::vector<int>& peaks, Random& random) {
  GeneratedTrace out;
  out.letter = trace < 5 ? TraceLetter(trace) : "X";
  out.unit = plan.shape.unit;
  const double scale = std::pow(10.0, plan.shape.decimals);
  const double width = std::max(2.0, points / 60.0);
  for (int i = 0; i < points; ++i) {
    double level = plan.shape.floor - trace * plan.shape.noise;
    for (size_t k = 0; k < peaks.size(); ++k) {
      const double d = (i - peaks[k]) / width;
      level += plan.shape.peak / static_cast<double>(k + 1) * std::exp(-d * d);
    }
    const double noise =
        (static_cast<double>(random.Between(-1000, 1000)) / 1000.0) * plan.shape.noise;
    const auto mantissa = static_cast<int64_t>(std::llround((level + noise) * scale));
    out.levels.push_back(Fixed(mantissa, plan.shape.decimals));
    out.values.push_back(static_cast<double>(mantissa) / scale);
    out.x.push_back(PlainDecimal(PointX(plan, i, points)));
    out.present.push_back(true);
  }
  return out;
}

std::vector<GeneratedMarker> MakeMarkers(const ScreenPlan& plan, const GeneratedScreen& screen,
                                         const std::vector<int>& indexes, bool delta, int points,
                                         bool first_screen) {
  std::vector<GeneratedMarker> markers;
  // The instrument puts the markers of its later screens on their first
  // trace; only the first screen's markers go round traces A, B and C.
  const int traces = first_screen ? std::min<int>(3, static_cast<int>(screen.traces.size())) : 1;
  const int count = static_cast<int>(indexes.size());
  for (int m = 0; m < count; ++m) {
    const GeneratedTrace& trace = screen.traces[static_cast<size_t>(m % traces)];
    const int index = indexes[static_cast<size_t>(m)];
    const int reference = indexes[static_cast<size_t>(count - 1)];
    std::string shown = trace.levels[static_cast<size_t>(index)];
    if (delta && m != count - 1) {
      const double scale = std::pow(10.0, plan.shape.decimals);
      const double difference = trace.values[static_cast<size_t>(index)] -
                                screen.traces[static_cast<size_t>((count - 1) % traces)]
                                    .values[static_cast<size_t>(reference)];
      shown = Fixed(std::llround(difference * scale), plan.shape.decimals);
    }
    markers.push_back({m + 1,
                       {{"MKRON", "ON"},
                        {"MKRTRACE", trace.letter},
                        {"MKRINDEX", std::to_string(index)},
                        {"MKRPOSX", PlainDecimal(PointX(plan, index, points))},
                        {"MKRPOSY", trace.levels[static_cast<size_t>(index)]},
                        {"MKRPOSYGUI", shown}}});
  }
  return markers;
}

}  // namespace

std::string_view ScreenKindName(ScreenKind kind) {
  for (const auto& [k, name] : kKindNames) {
    if (k == kind) return name;
  }
  return "spectrum";
}

std::optional<ScreenKind> ScreenKindFromName(std::string_view name) {
  for (const auto& [kind, kind_name] : kKindNames) {
    if (kind_name == name) return kind;
  }
  return std::nullopt;
}

std::vector<ScreenKind> AllScreenKinds() {
  std::vector<ScreenKind> kinds;
  for (const auto& entry : kKindNames) kinds.push_back(entry.first);
  return kinds;
}

std::string PlainDecimal(double value) {
  std::array<char, 400> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  if (error != std::errc()) throw std::length_error("number too long for a plain decimal");
  return std::string(buffer.data(), end);
}

std::string ParameterValue(const Parameters& parameters, std::string_view id) {
  for (const auto& [key, value] : parameters) {
    if (key == id) return value;
  }
  return std::string();
}

GeneratedFile GenerateInstrumentFile(const GeneratorOptions& options) {
  static constexpr std::array<std::string_view, 6> kTitles = {
      "ISM band scan", "FM broadcast levels",      "Cable TV channel check",
      "Burst timing",  "Conducted emission sweep", "Demodulation views"};
  Random random(options.seed);
  GeneratedFile file;
  file.model = options.model;
  file.serial = options.model + "-" + std::to_string(random.Between(200000, 299999));
  file.year = std::to_string(random.Between(2019, 2025));
  file.month = Fixed(random.Between(1, 12), 0);
  file.day = Fixed(random.Between(1, 28), 0);
  if (file.month.size() < 2) file.month.insert(0, "0");
  if (file.day.size() < 2) file.day.insert(0, "0");
  auto two = [](int64_t v) { return (v < 10 ? "0" : "") + std::to_string(v); };
  file.time = two(random.Between(0, 23)) + ":" + two(random.Between(0, 59)) + ":" +
              two(random.Between(0, 59));
  file.title =
      !options.title.empty()
          ? options.title
          : std::string(kTitles[static_cast<size_t>(random.Between(0, kTitles.size() - 1))]);
  file.points = options.points;
  const int points = std::max(0, options.points);
  const int traces = std::max(0, options.traces);
  for (const ScreenKind kind : options.screens) {
    const ScreenPlan plan = PlanScreen(kind, random);
    GeneratedScreen screen;
    screen.kind = kind;
    screen.parameters = ScreenParameters(plan);
    // Peak positions, which the markers sit on.
    std::vector<int> peaks;
    const int wanted = std::clamp(options.markers, 0, 10);
    for (int k = 0; k < std::max(wanted, 2) && points > 4; ++k) {
      int index = 0;
      do {
        index = static_cast<int>(random.Between(1, points - 2));
      } while (std::find(peaks.begin(), peaks.end(), index) != peaks.end() ||
               std::find(options.gaps.begin(), options.gaps.end(), index) != options.gaps.end());
      peaks.push_back(index);
    }
    for (int t = 0; t < traces; ++t) {
      screen.traces.push_back(MakeTrace(plan, t, points, peaks, random));
    }
    if (!screen.traces.empty()) {
      for (const int gap : options.gaps) {
        if (gap >= 0 && gap < points) screen.traces[0].present[static_cast<size_t>(gap)] = false;
      }
    }
    const int marker_count = screen.traces.empty() ? 0 : std::min<int>(wanted, peaks.size());
    const std::vector<int> marker_indexes(peaks.begin(), peaks.begin() + marker_count);
    screen.markers =
        MakeMarkers(plan, screen, marker_indexes, options.delta, points, file.screens.empty());
    const std::string selected = marker_count > 0 && random.Between(0, 1) == 1
                                     ? std::to_string(random.Between(1, marker_count))
                                     : "Ref";
    screen.parameters.insert(screen.parameters.end(),
                             {{"MKRNBON", std::to_string(marker_count)},
                              {"MKRDLT", options.delta && marker_count > 0 ? "ON" : "OFF"},
                              {"MKRSEL", selected},
                              {"MKRFIX", "OFF"}});
    file.screens.push_back(std::move(screen));
  }
  return file;
}

}  // namespace z4400
