// z4400conv --batch: the conversion of the Start button without a window.
#include <unistd.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "app/commands.h"
#include "driver/console_ui.h"
#include "driver/converter.h"
#include "driver/file_list.h"
#include "driver/settings_file.h"
#include "driver/workbook_stages.h"

namespace z4400 {
namespace {

constexpr int kExitConverted = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;
constexpr int kExitStopped = 3;

/// A file argument as the list takes it: absolute, with "." and ".."
/// resolved, so that the output name is formed from the file's own name.
std::string ListedPath(const std::string& argument) {
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(argument, error);
  if (error) return argument;
  return absolute.lexically_normal().string();
}

std::string CurrentFolder() {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::current_path(error);
  return error ? std::string() : folder.string();
}

}  // namespace

int RunBatch(const BatchOptions& options) {
  ConsoleUi ui(std::cerr, ::isatty(STDERR_FILENO) == 1, options.overwrite, CurrentFolder());
  if (options.files.empty()) {
    ui.Note("--batch needs at least one FILE to convert (see --help)");
    return kExitUsage;
  }
  const std::filesystem::path settings_folder =
      options.settings_dir ? std::filesystem::path(*options.settings_dir) : ProgramFolder();
  std::string output_directory;
  if (options.output_dir) {
    std::error_code error;
    if (!std::filesystem::is_directory(*options.output_dir, error)) {
      ui.Note("--output-dir " + *options.output_dir + ": no such folder");
      return kExitUsage;
    }
    output_directory = ListedPath(*options.output_dir);
  }
  const std::string version =
      options.excel_version ? std::to_string(*options.excel_version) + ".0" : kDefaultVersion;

  Converter converter(ui, settings_folder, WorkbookStagesFactory(version));
  converter.SetFinishPause(0);
  converter.InitDefaults();
  {
    std::error_code error;
    if (options.settings_dir && !std::filesystem::is_directory(settings_folder, error)) {
      converter.LoadSettings();  // shows "Can not find Directory."
      return kExitUsage;
    }
  }
  converter.LoadSettings();

  for (const std::string& file : options.files) {
    const std::string path = ListedPath(file);
    if (!IsAcceptedKind(SourceKindOf(path))) {
      ui.Note("skipped " + file + ": not an .xml or .csv file");
      continue;
    }
    converter.AddFile(path);
  }
  if (converter.files().FileCount() == 0) {
    ui.Note("no .xml or .csv file to convert");
    return kExitUsage;
  }

  const bool use_output_directory =
      options.output_dir ? true : converter.settings().UseOutputDirectory != 0;
  if (!options.output_dir) output_directory = converter.settings().OutputDirectory;
  int32_t result = 0;
  try {
    result = converter.StartConversion(output_directory, use_output_directory);
  } catch (const std::exception& failure) {
    // Debug mode lets run-time failures through the driver.
    ui.Note(std::string("run-time failure: ") + failure.what());
    return kExitFailed;
  }
  if (converter.ProgramEnded()) return kExitFailed;
  if (result == 0) return kExitConverted;
  return result == kStoppedQuietly ? kExitStopped : kExitFailed;
}

}  // namespace z4400
