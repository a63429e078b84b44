#include "app/heap_setup.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace z4400 {
namespace {

constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
// The largest block the allocator may take from the heap rather than map
// on its own (its limit on 64-bit systems).
constexpr int kLargestHeapBlock = 32 << 20;
// A block larger than any the allocator keeps in its lists of freed blocks.
constexpr std::uintptr_t kProbeSize = std::uintptr_t{64} << 10;
// The allocator's bookkeeping before each block (its size; 16-byte steps).
constexpr std::uintptr_t kBlockHeader = 16;

}  // namespace

void SetUpHeapForConversions() {
  // The batch converts in worker threads: they share this heap rather than
  // each getting an arena of its own, outside the huge pages and the reuse.
  mallopt(M_ARENA_MAX, 1);
  mallopt(M_MMAP_THRESHOLD, kLargestHeapBlock);
  mallopt(M_TRIM_THRESHOLD, static_cast<int>(2 * kHeapRoom));
  // New blocks come from the free end of the heap, one after the other. A
  // block too large for the allocator's lists shows where that end starts;
  // a second one, kept and never touched, reaches up to a 2 MiB boundary,
  // so that the conversions' memory starts on a huge page whose first bytes
  // nothing has touched before (a huge page is only given to a range of
  // which no page is in use yet).
  // The allocator's own blocks are what this arranges: plain malloc.
  static void* const probe = std::malloc(kProbeSize);  // NOLINT(cppcoreguidelines-*)
  if (probe == nullptr) return;
  const std::uintptr_t free_end = reinterpret_cast<std::uintptr_t>(probe) + kProbeSize;
  std::uintptr_t boundary = (free_end + kHugePage - 1) & ~(kHugePage - 1);
  if (boundary - free_end < kProbeSize) boundary += kHugePage;
  // A block's header precedes it: this one ends where the next block's
  // header begins, just below the boundary.
  // NOLINTNEXTLINE(cppcoreguidelines-*)
  static void* const head_of_heap = std::malloc(boundary - free_end - 2 * kBlockHeader);
  void* room = std::malloc(kHeapRoom);  // NOLINT(cppcoreguidelines-*)
  if (room == nullptr || head_of_heap == nullptr) return;
  const auto start = reinterpret_cast<std::uintptr_t>(room);
  const auto heap_end = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  // The room goes back to the heap untouched (but for its header).
  std::free(room);                                               // NOLINT(cppcoreguidelines-*)
  if (start > heap_end || heap_end - start < kHeapRoom) return;  // not from the heap
  const std::uintptr_t begin = (start + kHugePage - 1) & ~(kHugePage - 1);
  const std::uintptr_t end = heap_end & ~(kHugePage - 1);
  if (end > begin) {
    // Only advice: without huge pages on request nothing changes.
    ::madvise(reinterpret_cast<void*>(begin),  // NOLINT(performance-no-int-to-ptr)
              end - begin, MADV_HUGEPAGE);
  }
}

}  // namespace z4400
