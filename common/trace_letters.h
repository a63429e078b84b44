// The letters of the five traces of a screen, by trace index.
#ifndef Z4400_COMMON_TRACE_LETTERS_H_
#define Z4400_COMMON_TRACE_LETTERS_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace z4400 {

/// Trace 0 to 4: "A", "B", "C", "M" (the math trace) and "O".
inline constexpr std::array<std::string_view, 5> kTraceLetters = {"A", "B", "C", "M", "O"};

/// The letter of trace `trace`; any index outside 0 to 4 gives "A".
inline std::string TraceLetter(int32_t trace) {
  if (trace < 0 || trace >= static_cast<int32_t>(kTraceLetters.size())) return "A";
  return std::string(kTraceLetters[static_cast<std::size_t>(trace)]);
}

}  // namespace z4400

#endif  // Z4400_COMMON_TRACE_LETTERS_H_
