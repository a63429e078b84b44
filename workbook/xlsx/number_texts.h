// The texts of the numbers of one saved workbook, each number formatted
// once: the chart caches hold the same values as the cells they are read
// from, and a trace holds many equal levels.
#ifndef Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_
#define Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace z4400 {

/// Formats numbers as `FormatNumber` does, remembering each text.
class NumberTexts {
 public:
  NumberTexts();

  /// The text of `value` (shortest round-trip form, "NaN", "INF", "-INF"),
  /// valid until the next call.
  std::string_view Text(double value);

  /// Distinct numbers formatted so far.
  std::size_t size() const { return count_; }

 private:
  struct Slot {
    std::uint64_t bits = 0;
    std::uint32_t offset = 0;  // into texts_
    std::uint8_t length = 0;   // 0: empty slot
  };

  void Grow();

  std::vector<Slot> slots_;  // open addressing, 2^slot_bits_ of them
  int slot_bits_;
  std::string texts_;  // every text, one after the other
  std::size_t count_ = 0;
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_
