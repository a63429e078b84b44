// The texts of the numbers of one saved workbook, formatted once and found
// again: the chart caches hold the same values as the cells they are read
// from, and a trace holds many equal levels.
//
// Texts are remembered by cell, so that a chart cache reading a sheet's
// cells in column order finds what the sheet part wrote in row order (or
// the other way round) without a lookup by value; the table by value is
// kept small enough for the processor's cache.
#ifndef Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_
#define Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace z4400 {

class Worksheet;

/// Formats numbers as `FormatNumber` does, remembering the texts of the
/// first 8,192 distinct numbers and of every cell.
class NumberTexts {
 public:
  NumberTexts();

  /// The text of `value` (shortest round-trip form, "NaN", "INF", "-INF"),
  /// valid until the next call.
  std::string_view Text(double value);

  /// The text of the number `value` stored in cell (`row`, `column`) of
  /// `sheet` (both from 1), as `Text(value)`; the cell must hold `value`
  /// for the whole save. Valid until the next call.
  std::string_view CellText(const Worksheet& sheet, int row, int column, double value);

 private:
  struct Slot {
    std::uint64_t bits = 0;
    std::uint32_t offset = 0;  // into texts_
    std::uint8_t length = 0;   // 0: empty slot
  };

  std::string_view TextOf(const Slot& slot) const {
    return std::string_view(texts_).substr(slot.offset, slot.length);
  }

  // A text remembered for a cell: its offset into texts_ shifted past its
  // length; 0 before the cell's first lookup.
  using CellRef = std::uint32_t;
  static constexpr int kLengthBits = 5;
  // Each column's refs indexed by row.
  using SheetRefs = std::vector<std::vector<CellRef>>;

  SheetRefs& RefsOf(const Worksheet& sheet);

  std::vector<Slot> slots_;  // open addressing, never more than half full
  std::string texts_;        // every text, one after the other
  std::size_t count_ = 0;
  Slot last_;  // the number looked up last
  std::vector<std::pair<const Worksheet*, SheetRefs>> sheets_;
  std::size_t last_sheet_ = 0;  // index into sheets_ of the sheet looked up last
};

}  // namespace z4400

#endif  // Z4400_WORKBOOK_XLSX_NUMBER_TEXTS_H_
