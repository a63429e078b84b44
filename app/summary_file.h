// `--summary FILE.xlsx`: the summary workbook of a batch or a watched
// folder, gathered file by file as the results come in.
#ifndef Z4400_APP_SUMMARY_FILE_H_
#define Z4400_APP_SUMMARY_FILE_H_

#include <string>

#include "driver/batch_runner.h"
#include "summary/run_summary.h"

namespace z4400 {

class SummaryFile {
 public:
  /// Why `path` cannot take the summary, or empty: the name must end in
  /// ".xlsx" and its folder must exist.
  static std::string Refusal(const std::string& path);

  explicit SummaryFile(std::string path) : path_(std::move(path)) {}

  const std::string& path() const { return path_; }
  /// Lists the file of `report`: converted, or failed with its reason.
  void Add(const FileReport& report);
  /// Lists `source`, whose workbook `workbook` is up to date, as converted.
  void AddUpToDate(const std::string& source, const std::string& workbook);
  /// Writes the summary of the files so far (atomically); false with
  /// `*error` set when it cannot be written.
  bool Write(std::string* error) const;

 private:
  std::string path_;
  RunSummary run_;
};

}  // namespace z4400

#endif  // Z4400_APP_SUMMARY_FILE_H_
