#include "testing/test_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <unistd.h>

#include <system_error>

namespace z4400::testing {
namespace {

std::optional<std::filesystem::path> DirFromEnvironment(const char* variable) {
  const char* value = std::getenv(variable);
  if (value == nullptr || *value == '\0') return std::nullopt;
  std::error_code error;
  if (!std::filesystem::is_directory(value, error)) return std::nullopt;
  return std::filesystem::path(value);
}

}  // namespace

std::optional<std::filesystem::path> SamplesDir() {
  return DirFromEnvironment("Z4400_SAMPLES_DIR");
}

std::optional<std::filesystem::path> OoxmlDir() { return DirFromEnvironment("Z4400_OOXML_DIR"); }

std::filesystem::path SourceDir() {
  if (auto dir = DirFromEnvironment("Z4400_SOURCE_DIR")) return *dir;
  return std::filesystem::current_path();
}

ScratchDir::ScratchDir() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string name = info != nullptr
                         ? std::string(info->test_suite_name()) + "." + info->name()
                         : std::string("scratch");
  for (char& c : name) {
    if (c == '/') c = '_';
  }
  path_ = std::filesystem::temp_directory_path() /
          ("z4400-" + std::to_string(::getpid()) + "-" + name);
  std::filesystem::remove_all(path_);
  std::filesystem::create_directories(path_);
}

ScratchDir::~ScratchDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace z4400::testing
