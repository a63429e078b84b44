// z4400conv: converts Z4400 instrument files to spreadsheet workbooks.
#include <CLI/CLI.hpp>
#include <iostream>

#include "app/commands.h"
#include "app/heap_setup.h"

int main(int argc, char** argv) {
  CLI::App cli{"Z4400 Converter: turns Z4400 instrument files (.xml, .csv) into workbooks."};
  cli.set_version_flag("--version", std::string("z4400conv ") + Z4400_VERSION);
  cli.footer(
      "Batch exit status: 0 every file converted; 1 a conversion failed (its message on\n"
      "stderr, later files not converted); 2 wrong usage; 3 stopped without an error (an\n"
      "output workbook exists and --overwrite was not given, or no output name could be\n"
      "formed), later files not converted.");

  std::optional<std::string> dump_path;
  bool batch = false;
  z4400::BatchOptions batch_options;

  cli.add_option("--dump", dump_path, "Print the measurement data of FILE as JSON and exit")
      ->option_text("FILE");
  cli.add_flag("--batch", batch, "Convert FILE... without opening the window");
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
  cli.add_option("files", batch_options.files, "Instrument files to convert")
      ->option_text("FILE...");

  try {
    cli.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int status = cli.exit(error);
    return status == 0 ? 0 : 2;
  }

  if (dump_path || batch) z4400::SetUpHeapForConversions();
  if (dump_path) return z4400::RunDump(*dump_path);
  if (batch) return z4400::RunBatch(batch_options);
  return z4400::LaunchWindow(batch_options.files, batch_options.settings_dir,
                             batch_options.excel_version);
}
