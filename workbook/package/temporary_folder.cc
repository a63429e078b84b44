#include "workbook/package/temporary_folder.h"

#include <stdlib.h>

#include <system_error>

namespace z4400 {

TemporaryFolder::TemporaryFolder(const std::string& prefix) {
  std::error_code error;
  const auto base = std::filesystem::temp_directory_path(error);
  if (error) return;
  std::string pattern = (base / (prefix + "-XXXXXX")).string();
  if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
}

}  // namespace z4400
