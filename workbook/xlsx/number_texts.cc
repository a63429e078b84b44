#include "workbook/xlsx/number_texts.h"

#include <algorithm>
#include <bit>

#include "workbook/model/worksheet.h"
#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

// 2^14 slots of 16 bytes: the table stays in the processor's cache; past
// half of them a number is formatted again at each use, which costs less
// than looking it up in a table that does not.
constexpr int kSlotBits = 14;
constexpr std::size_t kSlotCount = std::size_t{1} << kSlotBits;

std::size_t SlotOf(std::uint64_t bits) {
  // Fibonacci hashing: the top bits of the product depend on every bit of
  // the number, also for the many whose low mantissa bits are all zero.
  return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ULL) >> (64 - kSlotBits));
}

}  // namespace

NumberTexts::NumberTexts() : slots_(kSlotCount) {}

std::string_view NumberTexts::Text(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  // "Raw Data" keeps a copy of each level beside it: the number just
  // looked up comes again at once.
  if (last_.length != 0 && last_.bits == bits) return TextOf(last_);
  for (std::size_t i = SlotOf(bits);; i = (i + 1) & (kSlotCount - 1)) {
    Slot& slot = slots_[i];
    if (slot.length == 0) {
      char buffer[kNumberBufferSize];
      const std::string_view text = FormatNumber(value, buffer);
      last_ = {bits, static_cast<std::uint32_t>(texts_.size()),
               static_cast<std::uint8_t>(text.size())};
      if (count_ * 2 < kSlotCount) {
        slot = last_;
        ++count_;
      }
      texts_.append(text);
      return TextOf(last_);
    }
    if (slot.bits == bits) {
      last_ = slot;
      return TextOf(slot);
    }
  }
}

std::string_view NumberTexts::CellText(const Worksheet& sheet, int row, int column, double value) {
  SheetRefs& columns = RefsOf(sheet);
  const auto column_index = static_cast<std::size_t>(column);
  const auto row_index = static_cast<std::size_t>(row);
  if (column_index >= columns.size()) columns.resize(column_index + 1);
  std::vector<CellRef>& rows = columns[column_index];
  if (row_index >= rows.size()) {
    rows.resize(std::max(row_index, static_cast<std::size_t>(sheet.grid().RowCount())) + 1);
  }
  CellRef& ref = rows[row_index];
  if (ref != 0) {
    return std::string_view(texts_).substr(ref >> kLengthBits, ref & ((1U << kLengthBits) - 1));
  }
  const std::string_view text = Text(value);
  const auto offset = static_cast<std::size_t>(text.data() - texts_.data());
  // Past 128 MiB of texts a cell is looked up by value each time.
  if (offset < (std::size_t{1} << (32 - kLengthBits)) && text.size() < (1U << kLengthBits)) {
    ref = static_cast<CellRef>(offset << kLengthBits | text.size());
  }
  return text;
}

NumberTexts::SheetRefs& NumberTexts::RefsOf(const Worksheet& sheet) {
  if (last_sheet_ < sheets_.size() && sheets_[last_sheet_].first == &sheet) {
    return sheets_[last_sheet_].second;
  }
  for (last_sheet_ = 0; last_sheet_ < sheets_.size(); ++last_sheet_) {
    if (sheets_[last_sheet_].first == &sheet) return sheets_[last_sheet_].second;
  }
  sheets_.emplace_back(&sheet, SheetRefs());
  return sheets_.back().second;
}

}  // namespace z4400
