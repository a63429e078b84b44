// Where the bytes of a zip archive being read come from: a copy held in
// memory, or a file read piece by piece as they are needed, so that opening
// a large file does not load it whole.
#ifndef Z4400_WORKBOOK_PACKAGE_ARCHIVE_BYTES_H_
#define Z4400_WORKBOOK_PACKAGE_ARCHIVE_BYTES_H_

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace z4400 {

/// The bytes of one archive, read by offset.
class ArchiveBytes {
 public:
  /// An archive held in memory.
  explicit ArchiveBytes(std::string bytes);

  /// The file at `path`, read as asked. Returns nothing and sets `*error`
  /// to the reason ("No such file or directory") when it cannot be opened
  /// as a regular file.
  static std::optional<ArchiveBytes> OpenFile(const std::filesystem::path& path,
                                              std::string* error);

  /// Size of the whole archive in bytes.
  uint64_t size() const { return size_; }

  /// Points `*out` at the `length` bytes from `offset`. Returns false when
  /// they do not lie inside the archive or the file cannot be read (then
  /// `read_failed()`). The bytes stay valid until the next call.
  bool View(uint64_t offset, uint64_t length, std::string_view* out);

  /// True once reading the file failed (a disk error, or the file became
  /// shorter since it was opened).
  bool read_failed() const { return read_failed_; }

 private:
  using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
  ArchiveBytes(File file, uint64_t size);

  File file_;          // null for an archive in memory
  std::string bytes_;  // the archive in memory, or the piece of the file read last
  uint64_t size_;
  bool read_failed_ = false;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ARCHIVE_BYTES_H_
