// The 16-bit integer arithmetic the row and column computations have always
// been done in: a result outside that range is an overflow.
#ifndef Z4400_COMMON_CHECKED16_H_
#define Z4400_COMMON_CHECKED16_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "common/runtime_failure.h"

namespace z4400 {

/// `value` as a 16-bit integer. Throws `RuntimeFailure` when it does not
/// fit: "Overflow", or "Overflow: `what` `value`" when `what` is given.
inline int16_t Checked16(int64_t value, std::string_view what = {}) {
  if (value < INT16_MIN || value > INT16_MAX) {
    if (what.empty()) throw RuntimeFailure("Overflow");
    throw RuntimeFailure("Overflow: " + std::string(what) + " " + std::to_string(value));
  }
  return static_cast<int16_t>(value);
}

}  // namespace z4400

#endif  // Z4400_COMMON_CHECKED16_H_
