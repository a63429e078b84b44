// A private scratch folder for the steps of a save that go through files.
#ifndef Z4400_WORKBOOK_PACKAGE_TEMPORARY_FOLDER_H_
#define Z4400_WORKBOOK_PACKAGE_TEMPORARY_FOLDER_H_

#include <filesystem>
#include <string>

namespace z4400 {

/// A new folder, readable only by this user, under the system's temporary
/// folder; removed with everything in it when the object goes away.
class TemporaryFolder {
 public:
  /// `prefix` starts the folder's name ("z4400-xls" → "z4400-xls-a1B2c3").
  explicit TemporaryFolder(const std::string& prefix);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// False when the folder could not be made; `errno` tells why.
  bool ok() const { return !path_.empty(); }
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_TEMPORARY_FOLDER_H_
