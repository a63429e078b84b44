#include "workbook/package/inflate.h"

#include <libdeflate.h>

namespace z4400 {

Inflater::Inflater() : decompressor_(libdeflate_alloc_decompressor()) {}

Inflater::~Inflater() {
  if (decompressor_ != nullptr) libdeflate_free_decompressor(decompressor_);
}

Inflater::Result Inflater::Inflate(std::string_view compressed, std::span<char> out) {
  size_t produced = 0;
  switch (libdeflate_deflate_decompress(decompressor_, compressed.data(), compressed.size(),
                                        out.data(), out.size(), &produced)) {
    case LIBDEFLATE_SUCCESS:
      return produced == out.size() ? Result::kDone : Result::kShort;
    case LIBDEFLATE_INSUFFICIENT_SPACE:
      return Result::kLong;
    default:
      return Result::kDamaged;
  }
}

}  // namespace z4400
