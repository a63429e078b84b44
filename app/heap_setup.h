// How the command-line program sets up its memory before converting files
// one after another.
#ifndef Z4400_APP_HEAP_SETUP_H_
#define Z4400_APP_HEAP_SETUP_H_

#include <cstddef>

namespace z4400 {

/// Room the heap is given at once; a conversion of the largest instrument
/// files stays well within it.
inline constexpr std::size_t kHeapRoom = std::size_t{24} << 20;

/// Sets the allocator up for a run of conversions: large buffers come from
/// the heap and stay in it when freed, so that the next file reuses memory
/// the process already has instead of asking the system for fresh pages;
/// the heap gets `kHeapRoom` at once, marked for huge pages where the
/// system offers them on request, so that a conversion's first touch of its
/// memory costs one page fault per 2 MiB instead of one per 4 KiB.
void SetUpHeapForConversions();

}  // namespace z4400

#endif  // Z4400_APP_HEAP_SETUP_H_
