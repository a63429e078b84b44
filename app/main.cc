// z4400conv: converts Z4400 instrument files to spreadsheet workbooks.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "app/commands.h"
#include "app/heap_setup.h"

namespace {

/// The program without its last guard: parses the command line and runs
/// the command it names.
int Run(int argc, char** argv) {
  CLI::App cli{"Z4400 Converter: turns Z4400 instrument files (.xml, .csv) into workbooks."};
  cli.set_version_flag("--version", std::string("z4400conv ") + Z4400_VERSION);
  cli.footer(
      "With --batch a DIR converts every .xml and .csv file under it (sorted); with\n"
      "--output-dir OUT, DIR/a/b/meas.xml becomes OUT/a/b/meas.xlsx. Standard output\n"
      "lists each workbook written; errors name their file; a summary line ends the run.\n"
      "\n"
      "Batch exit status:\n"
      "  0    every file converted\n"
      "  1    at least one file failed (without --keep-going the batch stops there)\n"
      "  2    wrong usage, including no .xml or .csv file found\n"
      "  3    stopped without an error: a workbook exists and --overwrite was not\n"
      "       given, or no workbook name could be formed\n"
      "  130  interrupted (Ctrl-C); the workbooks finished before are kept\n"
      "\n"
      "With --watch DIR, every .xml and .csv file in DIR and its sub-folders is\n"
      "converted as --batch --keep-going would: the files already there first, then\n"
      "each file that appears or is replaced, once its size has not changed for the\n"
      "settle time and no program has it open for writing. A workbook older than its\n"
      "file is replaced; one that is up to date is left alone. Ctrl-C ends it (exit 0).\n"
      "--summary FILE.xlsx (with --batch or --watch) lists every file with its result\n"
      "on one sheet and every marker that is on on another; --watch rewrites it as\n"
      "files are converted.");

  bool dump = false;
  bool batch = false;
  std::optional<std::string> watch_dir;
  bool quiet = false;
  bool verbose = false;
  z4400::BatchOptions batch_options;

  cli.add_flag("--dump", dump,
               "Print the measurement data of FILE... as JSON (one line per file for several)");
  auto* batch_flag =
      cli.add_flag("--batch", batch, "Convert FILE... and DIR... without opening the window");
  cli.add_option("--watch", watch_dir,
                 "Convert every .xml and .csv file that appears in DIR, until Ctrl-C")
      ->option_text("DIR")
      ->excludes(batch_flag);
  cli.add_option("--summary", batch_options.summary,
                 "Write the files and their markers into one workbook (batch and watch modes)")
      ->option_text("FILE.xlsx");
  cli.add_option("--settle", batch_options.settle_ms,
                 "Milliseconds a file must stay unchanged before it is converted (watch mode; "
                 "default 2000)")
      ->option_text("MS")
      ->check(CLI::Range(0, 3'600'000));
  cli.add_option("--output-dir", batch_options.output_dir,
                 "Save the workbooks into DIR without asking (batch mode)")
      ->option_text("DIR");
  cli.add_option("--settings-dir", batch_options.settings_dir,
                 "Folder of Data.ini and Log.txt (default: the program's folder)")
      ->option_text("DIR");
  cli.add_flag("--overwrite", batch_options.overwrite,
               "Replace existing workbooks without asking (batch mode)");
  cli.add_option("--excel-version", batch_options.excel_version,
                 "Spreadsheet version to write for (default 16; below 12 writes .xls)")
      ->option_text("N");
  cli.add_flag("--keep-going", batch_options.keep_going,
               "Go on with the next file after one that fails (batch mode)");
  cli.add_option("--jobs", batch_options.jobs,
                 "Files converted at once (batch mode; default: the number of cores)")
      ->option_text("N");
  auto* quiet_flag = cli.add_flag("-q,--quiet", quiet, "Print only errors and the summary");
  cli.add_flag("-v,--verbose", verbose, "Print every stage of every file")->excludes(quiet_flag);
  cli.add_option("files", batch_options.files, "Instrument files (and folders, batch mode)")
      ->option_text("FILE...");

  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = cli.exit(error);
    return status == 0 ? 0 : 2;
  }

  if (batch_options.summary && !batch && !watch_dir) {
    std::cerr << "z4400conv: --summary needs --batch or --watch (see --help)\n";
    return 2;
  }
  if (dump || batch || watch_dir) z4400::SetUpHeapForConversions();
  if (dump) return z4400::RunDump(batch_options.files);
  if (quiet) batch_options.verbosity = z4400::Verbosity::kQuiet;
  if (verbose) batch_options.verbosity = z4400::Verbosity::kVerbose;
  if (batch) return z4400::RunBatch(batch_options);
  if (watch_dir) return z4400::RunWatch(batch_options, *watch_dir);
  return z4400::LaunchWindow(batch_options.files, batch_options.settings_dir,
                             batch_options.excel_version);
}

}  // namespace

int main(int argc, char** argv) {
  // What no command handles (memory exhausted, a stream that throws) ends
  // the program with a message rather than an abort.
  try {
    return Run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "z4400conv: " << failure.what() << "\n";
  } catch (...) {
    std::cerr << "z4400conv: unexpected failure\n";
  }
  return 1;
}
