// Where the tests find the instrument samples, the OOXML reference material
// and a scratch folder of their own.
#ifndef Z4400_TESTING_TEST_FILES_H_
#define Z4400_TESTING_TEST_FILES_H_

#include <filesystem>
#include <optional>
#include <string>

namespace z4400::testing {

/// Folder of the instrument sample files, when this checkout has it.
std::optional<std::filesystem::path> SamplesDir();

/// Folder of the OOXML schemas and spreadsheet-made workbooks, when present.
std::optional<std::filesystem::path> OoxmlDir();

/// Root of the source tree (for examples/ and other committed files).
std::filesystem::path SourceDir();

/// A fresh, empty folder for one test, removed when the object goes away.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace z4400::testing

/// Skips the current test when the samples folder is missing; otherwise
/// declares `samples` as its path.
#define Z4400_REQUIRE_SAMPLES(samples)                                                             \
  const auto samples##_opt = ::z4400::testing::SamplesDir();                                       \
  if (!samples##_opt) GTEST_SKIP() << "instrument samples not available";                          \
  const std::filesystem::path& samples /* NOLINT(bugprone-macro-parentheses): the name declared */ \
      = *samples##_opt

#endif  // Z4400_TESTING_TEST_FILES_H_
