// z4400gen: writes made-up Z4400 instrument files (XML or CSV) for trying
// the converter, for test fixtures and for benchmarks. The same options and
// seed always give the same file.
#include <CLI/CLI.hpp>
#include <fstream>
#include <iostream>

#include "testing/instrument_generator.h"

int main(int argc, char** argv) {
  CLI::App cli{"Writes a made-up Z4400 instrument file (deterministic from --seed)."};
  z4400::GeneratorOptions options;
  std::string kind = "xml";
  std::string output;
  std::vector<std::string> screen_names;
  bool bare_line_feeds = false;

  std::string kinds_help = "Screen kinds, one per screen (up to 3):";
  for (const z4400::ScreenKind screen_kind : z4400::AllScreenKinds()) {
    kinds_help += " " + std::string(z4400::ScreenKindName(screen_kind));
  }
  cli.add_option("--kind", kind, "File kind")->check(CLI::IsMember({"xml", "csv"}));
  cli.add_option("--seed", options.seed, "Seed of the made-up values");
  cli.add_option("--model", options.model, "Instrument model (Z4410 … Z4540 are converted)");
  cli.add_option("--title", options.title, "Measurement title (no comma)");
  cli.add_option("--points", options.points, "Points per trace")->check(CLI::Range(0, 32767));
  cli.add_option("--traces", options.traces, "Traces per screen")->check(CLI::Range(0, 10));
  cli.add_option("--markers", options.markers, "Markers per screen")->check(CLI::Range(0, 10));
  cli.add_flag("--delta", options.delta, "Delta markers (the last marker is the reference)");
  cli.add_option("--screens", screen_names, kinds_help)->delimiter(',');
  cli.add_option("--gap", options.gaps, "Point left out of each screen's first trace (XML)");
  cli.add_flag("--lf", bare_line_feeds, "CSV lines end with LF instead of CR LF");
  cli.add_option("-o,--output", output, "Output file (default: standard output)");
  CLI11_PARSE(cli, argc, argv);

  if (!screen_names.empty()) {
    options.screens.clear();
    for (const std::string& name : screen_names) {
      const auto screen_kind = z4400::ScreenKindFromName(name);
      if (!screen_kind) {
        std::cerr << "z4400gen: unknown screen kind \"" << name << "\"\n" << kinds_help << "\n";
        return 2;
      }
      options.screens.push_back(*screen_kind);
    }
  }
  if (options.screens.size() > 3) {
    std::cerr << "z4400gen: an instrument file holds at most 3 screens\n";
    return 2;
  }
  if (kind == "csv" && options.title.find(',') != std::string::npos) {
    std::cerr << "z4400gen: a CSV title cannot hold a comma\n";
    return 2;
  }

  const z4400::GeneratedFile file = z4400::GenerateInstrumentFile(options);
  const std::string text =
      kind == "xml" ? z4400::InstrumentXml(file) : z4400::InstrumentCsv(file, bare_line_feeds);
  if (output.empty()) {
    std::cout << text;
    return std::cout.good() ? 0 : 1;
  }
  std::ofstream out(output, std::ios::binary);
  out << text;
  out.close();
  if (!out) {
    std::cerr << "z4400gen: cannot write " << output << "\n";
    return 1;
  }
  return 0;
}
