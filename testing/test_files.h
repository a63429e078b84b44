// Where the tests find the OOXML reference material, the source tree and a
// scratch folder of their own.
#ifndef Z4400_TESTING_TEST_FILES_H_
#define Z4400_TESTING_TEST_FILES_H_

#include <filesystem>
#include <optional>
#include <string>

namespace z4400::testing {

/// Folder of the OOXML schemas and spreadsheet-made workbooks, when present.
/// Only the schema validation and the comparisons with spreadsheet-made
/// workbooks need it; every other test runs from the source tree alone.
std::optional<std::filesystem::path> OoxmlDir();

/// What a test that needs OoxmlDir() says when it skips without it: what it
/// needs and where it looked.
std::string OoxmlDirMissing();

/// Root of the source tree (for examples/ and other committed files).
std::filesystem::path SourceDir();

/// For a child process that checks what permissions refuse (root is refused
/// nothing): when root, becomes the user "nobody". False when that fails.
bool DropRootPrivileges();

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

#endif  // Z4400_TESTING_TEST_FILES_H_
