#include "workbook/number_texts.h"

#include <bit>

#include "workbook/xml_writer.h"

namespace z4400 {
namespace {

constexpr std::size_t kInitialSlots = 1 << 12;

std::size_t SlotOf(std::uint64_t bits, std::size_t mask) {
  // Fibonacci hashing: the high bits of the product spread nearby values.
  return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ULL) >> 32) & mask;
}

}  // namespace

NumberTexts::NumberTexts() : slots_(kInitialSlots) {}

std::string_view NumberTexts::Text(double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t i = SlotOf(bits, mask);; i = (i + 1) & mask) {
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
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.length == 0) continue;
    std::size_t i = SlotOf(slot.bits, mask);
    while (slots_[i].length != 0) i = (i + 1) & mask;
    slots_[i] = slot;
  }
}

}  // namespace z4400
