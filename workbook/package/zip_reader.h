// Reading the members of a zip archive (an .xlsx package) that may come from
// anywhere: sizes, names and contents are checked before anything is trusted.
#ifndef Z4400_WORKBOOK_PACKAGE_ZIP_READER_H_
#define Z4400_WORKBOOK_PACKAGE_ZIP_READER_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workbook/package/archive_bytes.h"
#include "workbook/package/inflate.h"
#include "workbook/package/zip_directory.h"

namespace z4400 {

/// How much an archive may make the reader allocate.
struct ZipLimits {
  /// Largest uncompressed member that is read at all.
  uint64_t max_member_size = uint64_t{256} << 20;
  /// Members larger than `ratio_floor` may expand at most this many times
  /// their compressed size; the spreadsheet parts of a real workbook stay
  /// far below it, a zip bomb does not.
  uint64_t max_ratio = 200;
  uint64_t ratio_floor = uint64_t{1} << 20;
  /// Sum of all member sizes read through one reader.
  uint64_t max_total_size = uint64_t{1} << 30;
  /// Members in the central directory.
  uint64_t max_members = 10000;
};

/// An open zip archive, read-only.
class ZipReader {
 public:
  /// Opens the archive at `path`. Returns null and sets `*error` when the
  /// file cannot be read, is not a zip archive, is damaged, or lists a member
  /// whose name is unsafe (absolute, "..", backslash, drive letter, control
  /// characters) or appears twice.
  static std::unique_ptr<ZipReader> Open(const std::filesystem::path& path, std::string* error,
                                         const ZipLimits& limits = {});

  /// The same over archive bytes in memory; `bytes` is copied.
  static std::unique_ptr<ZipReader> OpenBytes(std::string_view bytes, std::string* error,
                                              const ZipLimits& limits = {});

  /// Use `Open` or `OpenBytes`; the key keeps this constructor theirs.
  struct Key {
    explicit Key() = default;
  };
  ZipReader(Key, std::string bytes, const ZipLimits& limits, std::string label);
  ~ZipReader();
  ZipReader(const ZipReader&) = delete;
  ZipReader& operator=(const ZipReader&) = delete;

  /// Member names in central-directory order (folders included, ending "/").
  const std::vector<std::string>& names() const { return names_; }

  /// True when the archive has a member named exactly `name`.
  bool Has(std::string_view name) const;

  /// Replaces `*out` with the uncompressed bytes of member `name`. Returns
  /// false with `*error` set (and `*out` empty) when the member is missing,
  /// encrypted, stored with an unsupported method (only stored and deflated
  /// members are read), over a limit, or its data do not match its declared
  /// size or checksum.
  bool Read(std::string_view name, std::string* out, std::string* error);

 private:
  bool Index(std::string* error);
  bool Fail(std::string_view name, const char* reason, std::string* error) const;

  ArchiveBytes archive_;
  ZipLimits limits_;
  std::string label_;  // the archive as named in messages
  std::vector<std::string> names_;
  std::vector<ZipEntry> entries_;  // one per name
  Inflater inflater_;
  uint64_t total_read_ = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ZIP_READER_H_
