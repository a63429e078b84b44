// The zip container of a saved workbook: every part of the .xlsx goes in as
// one deflated member, and the archive is written straight to its file.
#ifndef Z4400_WORKBOOK_PACKAGE_ZIP_WRITER_H_
#define Z4400_WORKBOOK_PACKAGE_ZIP_WRITER_H_

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

class Deflater;

/// Writes a zip archive (deflated members) to one file.
///
/// Every member carries the same fixed time stamp (1980-01-01 00:00), so
/// saving the same workbook twice gives the same bytes. The archive is a
/// classic (non-zip64) one: a member or an archive that would pass 4 GiB,
/// or more than 65,535 members, is refused with an error instead of
/// producing a damaged file. After the first failure every call returns
/// false and `error()` says what went wrong; the partly written file is left
/// for the caller to discard (see `WriteAtomically`).
class ZipWriter {
 public:
  /// Deflate level used when none is given: fast, with files close to what
  /// the spreadsheet application itself writes.
  static constexpr int kDefaultLevel = 1;

  /// Creates (or truncates) `path`. `level` is a deflate level from 0
  /// (stored, still deflate-framed) to 12; values outside are clamped.
  explicit ZipWriter(const std::filesystem::path& path, int level = kDefaultLevel);
  /// The same with a compressor of the caller's, so that its memory serves
  /// one archive after another; it must outlive the writer.
  ZipWriter(const std::filesystem::path& path, Deflater& deflater);
  ~ZipWriter();
  ZipWriter(const ZipWriter&) = delete;
  ZipWriter& operator=(const ZipWriter&) = delete;

  /// False once the file could not be opened or any write failed.
  bool ok() const { return error_.empty(); }

  /// Deflates `data` and appends it as member `name` (a relative path with
  /// forward slashes, e.g. "xl/worksheets/sheet1.xml"; see
  /// `IsSafeMemberName`). Returns `ok()`.
  bool AddMember(std::string_view name, std::string_view data);

  /// Writes the central directory and closes the file. Returns false when
  /// any step failed (including earlier ones); calling it twice fails.
  bool Finish();

  /// Empty while everything succeeded; otherwise the first failure, in words
  /// fit for the user ("Cannot write …: No space left on device").
  const std::string& error() const { return error_; }

 private:
  struct Entry {
    std::string name;
    uint32_t crc = 0;
    uint32_t compressed_size = 0;
    uint32_t size = 0;
    uint32_t offset = 0;
    uint16_t flags = 0;
  };

  /// The open archive file, closed by std::fclose.
  using FileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

  /// The file at `path` created empty for writing (null when it cannot be).
  static FileHandle OpenForWriting(const std::filesystem::path& path);
  void Start();
  bool Fail(std::string message);
  bool Write(std::string_view bytes);

  std::filesystem::path path_;
  FileHandle file_;
  std::unique_ptr<Deflater> own_deflater_;  // when the caller gave none
  Deflater* deflater_;
  std::vector<Entry> entries_;
  std::string header_;  // scratch for one local header
  uint64_t offset_ = 0;
  bool finished_ = false;
  std::string error_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_ZIP_WRITER_H_
