#include "driver/conversion_job.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "common/checked16.h"
#include "common/runtime_failure.h"

namespace z4400 {
namespace {}  // namespace

void ComputeBlockRows(int32_t trace_points, int32_t screen, int16_t& top_row, int16_t& end_row) {
  const int64_t top =
      (static_cast<int64_t>(trace_points) + kBlockGapRows) * screen + kFirstBlockRow;
  top_row = Checked16(top, "block top row");
  end_row = Checked16(static_cast<int64_t>(top_row) + trace_points, "block end row");
}

int16_t VersionNumber(const std::string& version_text) {
  size_t start = version_text.find_first_not_of(" \t");
  if (start == std::string::npos) return 0;
  const char* begin = version_text.data() + start;
  const char* end = version_text.data() + version_text.size();
  if (*begin == '+') ++begin;
  double value = 0;
  const auto result = std::from_chars(begin, end, value, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) throw RuntimeFailure("overflow: version");
  if (result.ec != std::errc()) return 0;
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<int16_t>::min() &&
        rounded <= std::numeric_limits<int16_t>::max())) {
    throw RuntimeFailure("overflow: version " + version_text);
  }
  return static_cast<int16_t>(rounded);
}

}  // namespace z4400
