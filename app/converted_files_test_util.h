// Test side: instrument files converted in one call of z4400conv --batch, as
// a user runs it, each with its source read as text and its workbook read
// back (cells through our .xlsx reader, charts from the package's XML).
#ifndef Z4400_APP_CONVERTED_FILES_TEST_UTIL_H_
#define Z4400_APP_CONVERTED_FILES_TEST_UTIL_H_

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/converted_package_test_util.h"
#include "app/instrument_sample_test_util.h"
#include "app/shell_commands_test_util.h"
#include "workbook/model/application.h"
#include "workbook/model/workbook.h"
#include "workbook/xlsx/xlsx_reader.h"

namespace z4400::testing {

/// One converted file.
struct ConvertedFile {
  std::filesystem::path source;
  InstrumentSample sample;
  std::filesystem::path workbook;
  std::unique_ptr<ConvertedPackage> package;
  std::unique_ptr<Application> application;
  std::unique_ptr<Workbook> cells;
  std::string read_error;  ///< empty when the workbook read back
};

/// What one batch call left: its exit status, its standard error and the
/// files by source file name.
struct ConvertedFiles {
  int status = -1;
  std::string errors;
  std::map<std::string, ConvertedFile> files;
};

/// Converts `sources` with `program --batch --overwrite`, settings in
/// `settings_folder`, workbooks into `out`, and reads every workbook back.
inline ConvertedFiles ConvertWithBatch(const std::string& program,
                                       const std::vector<std::filesystem::path>& sources,
                                       const std::filesystem::path& settings_folder,
                                       const std::filesystem::path& out) {
  std::string command = Quoted(program) + " --batch --overwrite --settings-dir " +
                        Quoted(settings_folder.string()) + " --output-dir " + Quoted(out.string());
  for (const std::filesystem::path& source : sources) command += " " + Quoted(source.string());
  ConvertedFiles converted;
  converted.status = RunShell(command + " >/dev/null", &converted.errors);
  for (const std::filesystem::path& source : sources) {
    ConvertedFile& c = converted.files[source.filename().string()];
    c.source = source;
    c.sample = ReadSample(source);
    c.workbook = out / (source.stem().string() + ".xlsx");
    c.package = std::make_unique<ConvertedPackage>(c.workbook);
    c.application = std::make_unique<Application>();
    c.cells = std::make_unique<Workbook>(c.application.get(), "read back");
    if (!ReadXlsx(c.workbook, c.cells.get(), &c.read_error) && c.read_error.empty()) {
      c.read_error = "unreadable";
    }
  }
  return converted;
}

}  // namespace z4400::testing

#endif  // Z4400_APP_CONVERTED_FILES_TEST_UTIL_H_
