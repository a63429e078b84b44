#include "workbook/xlsx/number_texts.h"

#include <bit>

#include "workbook/xlsx/xml_writer.h"

namespace z4400 {
namespace {

constexpr int kInitialSlotBits = 14;

std::size_t SlotOf(std::uint64_t bits, int slot_bits) {
  // Fibonacci hashing: the top bits of the product depend on every bit of
  // the number, also for the many whose low mantissa bits are all zero.
  return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ULL) >> (64 - slot_bits));
}

}  // namespace

NumberTexts::NumberTexts()
    : slots_(std::size_t{1} << kInitialSlotBits), slot_bits_(kInitialSlotBits) {}

std::string_view NumberTexts::Text(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = SlotOf(bits, slot_bits_);; i = (i + 1) & mask) {
    Slot& slot = slots_[i];
    if (slot.length == 0) {
      char buffer[kNumberBufferSize];
      const std::string_view text = FormatNumber(value, buffer);
      slot = {bits, static_cast<std::uint32_t>(texts_.size()),
              static_cast<std::uint8_t>(text.size())};
      texts_.append(text);
      if (++count_ * 2 > slots_.size()) Grow();
      return std::string_view(texts_).substr(texts_.size() - text.size());
    }
    if (slot.bits == bits) return std::string_view(texts_).substr(slot.offset, slot.length);
  }
}

void NumberTexts::Grow() {
  std::vector<Slot> old(slots_.size() * 2);
  old.swap(slots_);
  ++slot_bits_;
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.length == 0) continue;
    std::size_t i = SlotOf(slot.bits, slot_bits_);
    while (slots_[i].length != 0) i = (i + 1) & mask;
    slots_[i] = slot;
  }
}

}  // namespace z4400
