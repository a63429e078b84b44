#include "workbook/package/deflate.h"

#include <libdeflate.h>

#include <algorithm>

namespace z4400 {

Deflater::Deflater(int level)
    : level_(std::clamp(level, 0, 12)), compressor_(libdeflate_alloc_compressor(level_)) {}

Deflater::~Deflater() {
  if (compressor_ != nullptr) libdeflate_free_compressor(compressor_);
}

bool Deflater::Compress(std::string_view data, std::string_view* out) {
  if (compressor_ == nullptr) return false;
  const size_t bound = libdeflate_deflate_compress_bound(compressor_, data.size());
  if (capacity_ < bound) {
    // Grown, never shrunk: the parts of one save reuse a single buffer.
    buffer_ = std::make_unique_for_overwrite<char[]>(bound);
    capacity_ = bound;
  }
  const size_t written =
      libdeflate_deflate_compress(compressor_, data.data(), data.size(), buffer_.get(), bound);
  if (written == 0) return false;
  *out = std::string_view(buffer_.get(), written);
  return true;
}

uint32_t Crc32(std::string_view data, uint32_t crc) {
  return libdeflate_crc32(crc, data.data(), data.size());
}

}  // namespace z4400
