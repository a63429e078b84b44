#include "testing/test_files.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>

namespace z4400::testing {
namespace {

/// The folder named by `variable`, else the one this build was configured
/// with; nothing when neither exists.
std::optional<std::filesystem::path> DirFromEnvironment(const char* variable,
                                                        const char* configured) {
  const char* value = std::getenv(variable);
  if (value == nullptr || *value == '\0') value = configured;
  std::error_code error;
  if (!std::filesystem::is_directory(value, error)) return std::nullopt;
  return std::filesystem::path(value);
}

}  // namespace

std::optional<std::filesystem::path> OoxmlDir() {
  return DirFromEnvironment("Z4400_OOXML_DIR", Z4400_DEFAULT_OOXML_DIR);
}

std::string OoxmlDirMissing() {
  const char* value = std::getenv("Z4400_OOXML_DIR");
  const std::string looked = value != nullptr && *value != '\0' ? value : Z4400_DEFAULT_OOXML_DIR;
  return "needs the OOXML schemas and spreadsheet-made workbooks, not found at " + looked +
         " (../shared/ooxml beside the source tree, or Z4400_OOXML_DIR)";
}

std::filesystem::path SourceDir() {
  if (auto dir = DirFromEnvironment("Z4400_SOURCE_DIR", Z4400_DEFAULT_SOURCE_DIR)) return *dir;
  return std::filesystem::current_path();
}

bool DropRootPrivileges() {
  if (::geteuid() != 0) return true;
  const passwd* nobody = ::getpwnam("nobody");
  return nobody != nullptr && ::setgroups(0, nullptr) == 0 && ::setgid(nobody->pw_gid) == 0 &&
         ::setuid(nobody->pw_uid) == 0;
}

ScratchDir::ScratchDir() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string name = info != nullptr ? std::string(info->test_suite_name()) + "-" + info->name()
                                     : std::string("scratch");
  for (char& c : name) {
    // No dots: output naming takes the first dot of a path as the extension.
    if (c == '/' || c == '.') c = '_';
  }
  path_ =
      std::filesystem::temp_directory_path() / ("z4400-" + std::to_string(::getpid()) + "-" + name);
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

ScratchDir::~ScratchDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace z4400::testing
