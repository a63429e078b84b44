#include "app/summary_file.h"

#include <filesystem>
#include <system_error>

#include "summary/summary_workbook.h"

namespace z4400 {

std::string SummaryFile::Refusal(const std::string& path) {
  if (!path.ends_with(".xlsx")) return "--summary " + path + ": the name must end in .xlsx";
  std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (folder.empty()) folder = ".";
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    return "--summary " + path + ": no such folder " + folder.string();
  }
  return {};
}

void SummaryFile::Add(const FileReport& report) {
  run_.Add(report.Source, report.Status == FileStatus::kConverted, report.Reason, report.Workbook);
}

void SummaryFile::AddUpToDate(const std::string& source, const std::string& workbook) {
  run_.Add(source, true, "", workbook);
}

bool SummaryFile::Write(std::string* error) const {
  return SaveSummaryWorkbook(run_.files(), path_, error);
}

}  // namespace z4400
