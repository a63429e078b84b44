// Raw deflate compression of workbook parts, with one compressor kept for
// all the parts of a save.
#ifndef Z4400_WORKBOOK_PACKAGE_DEFLATE_H_
#define Z4400_WORKBOOK_PACKAGE_DEFLATE_H_

#include <cstdint>
#include <memory>
#include <string_view>

struct libdeflate_compressor;

namespace z4400 {

/// A raw deflate (RFC 1951) compressor at one level, reused across inputs.
class Deflater {
 public:
  /// `level` from 0 (stored blocks) to 12 (smallest); clamped into range.
  explicit Deflater(int level);
  ~Deflater();
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  /// False when the compressor could not be allocated (out of memory).
  bool ok() const { return compressor_ != nullptr; }
  /// The level, after clamping.
  int level() const { return level_; }

  /// Deflates `data` into the compressor's own buffer and points `*out` at
  /// the result, which stays valid until the next call. Returns false only
  /// when the compressor is missing or the output would not fit the bound.
  bool Compress(std::string_view data, std::string_view* out);

 private:
  int level_;
  libdeflate_compressor* compressor_;
  std::unique_ptr<char[]> buffer_;
  size_t capacity_ = 0;
};

/// CRC-32 (the zip and gzip polynomial) of `data`, continuing from `crc`.
uint32_t Crc32(std::string_view data, uint32_t crc = 0);

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_DEFLATE_H_
