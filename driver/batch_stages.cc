#include "driver/batch_stages.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <exception>
#include <memory>
#include <utility>

#include "workbook/model/application.h"
#include "workbook/model/workbook.h"

namespace z4400 {

std::string SourceRefusal(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return std::strerror(errno);
  if (!S_ISREG(status.st_mode)) return "not a regular file";
  if (::access(path.c_str(), R_OK) != 0) return std::strerror(errno);
  return {};
}

void BatchStages::BeginFile() {
  WorkbookStages::BeginFile();
  refusal_.clear();
  created_ = false;
  output_taken_ = false;
}

int16_t BatchStages::OpenSource(const std::string& path) {
  refusal_ = SourceRefusal(path);
  if (!refusal_.empty()) return 1;
  return WorkbookStages::OpenSource(path);
}

std::string BatchStages::ErrorText() const {
  return refusal_.empty() ? WorkbookStages::ErrorText() : refusal_;
}

void BatchStages::CreateResultSheets(const std::string& output_path) {
  try {
    WorkbookStages::CreateResultSheets(output_path);
  } catch (const OutputExists&) {
    output_taken_ = true;
    throw;
  } catch (const std::exception&) {
    // The workbook may have been saved before the layout failed.
    const std::shared_ptr<Application>& application = excel().application();
    created_ = application != nullptr && application->HasActiveWorkbook() &&
               application->ActiveWorkbook().HasFile();
    throw;
  }
  created_ = true;
}

StagesFactory BatchStagesFactory(std::string version_text) {
  return [version_text = std::move(version_text)](const StageContext& context) {
    return std::make_unique<BatchStages>(context, version_text);
  };
}

}  // namespace z4400
