// Raw deflate decompression of package members, with one decompressor kept
// for all the members of an archive.
#ifndef Z4400_WORKBOOK_PACKAGE_INFLATE_H_
#define Z4400_WORKBOOK_PACKAGE_INFLATE_H_

#include <span>
#include <string_view>

struct libdeflate_decompressor;

namespace z4400 {

/// A raw deflate (RFC 1951) decompressor, reused across inputs.
class Inflater {
 public:
  /// What became of one input.
  enum class Result {
    kDone,     // filled the output exactly
    kDamaged,  // not valid deflate data
    kShort,    // ended before the output was full
    kLong,     // would give more bytes than the output holds
  };

  Inflater();
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  /// False when the decompressor could not be allocated (out of memory).
  bool ok() const { return decompressor_ != nullptr; }

  /// Inflates `compressed` into `out`, which has the size the data should
  /// have. Bytes that follow the end of the deflate stream are ignored.
  /// Needs `ok()`.
  Result Inflate(std::string_view compressed, std::span<char> out);

 private:
  libdeflate_decompressor* decompressor_;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_PACKAGE_INFLATE_H_
