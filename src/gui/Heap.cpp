#include "gui/Heap.h"

#include <cstdint>
#include <cstdlib>

#if defined(__linux__) && defined(__GLIBC__)
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace shd::gui {

#if defined(__linux__) && defined(__GLIBC__) && defined(MADV_HUGEPAGE)
namespace {
// These blocks are made for what they do to the heap, so the compiler must
// not drop them as unused.
void* volatile heldBlock = nullptr;

void* Allocate(std::size_t bytes) {
    void* block = std::malloc(bytes);
    heldBlock = block;
    return block;
}
}  // namespace
#endif

void ReserveHeap(std::size_t bytes) {
#if defined(__linux__) && defined(__GLIBC__) && defined(MADV_HUGEPAGE)
    constexpr std::uintptr_t kHugePage = std::uintptr_t{2} << 20;
    constexpr std::size_t kMostOnHeap = std::size_t{32} << 20;  // glibc's largest mmap threshold
    constexpr std::uintptr_t kHeader = 2 * sizeof(std::size_t);  // of a glibc block
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    bytes = (bytes + kHugePage - 1) / kHugePage * kHugePage;
    if (bytes == 0 || bytes >= kMostOnHeap) return;
    // Blocks smaller than the threshold come from the heap, not from mappings
    // of their own, and freed room stays with the heap below the trim threshold.
    if (!mallopt(M_MMAP_THRESHOLD, static_cast<int>(kMostOnHeap)) ||
        !mallopt(M_TRIM_THRESHOLD, static_cast<int>(2 * kMostOnHeap)))
        return;
    // A large block is cut from the start of the free room at the heap's top.
    // Only whole 2 MB stretches that no page has been touched in can become
    // huge pages, so the room is first moved up to start one page below
    // such a boundary, by a block that is kept and never touched past its
    // header; the reserved block's own header then lies in that page.
    void* probe = Allocate(bytes);
    if (!probe) return;
    const std::uintptr_t top = reinterpret_cast<std::uintptr_t>(probe) - kHeader;
    std::free(probe);
    std::uintptr_t boundary = (top + pageSize + kHugePage - 1) / kHugePage * kHugePage;
    if (boundary - pageSize - top < 4 * kHeader) boundary += kHugePage;  // room for the smallest block
    const std::uintptr_t pad = boundary - pageSize - top;
    void* padding = Allocate(pad - kHeader / 2);  // its block is exactly `pad` long
    void* room = Allocate(bytes);
    if (!room) {
        std::free(padding);
        return;
    }
    const auto address = reinterpret_cast<std::uintptr_t>(room);
    const std::uintptr_t begin = (address + pageSize - 1) / pageSize * pageSize;
    const std::uintptr_t end = (address + bytes) / pageSize * pageSize;
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
    std::free(room);  // back to the top of the heap, where the next blocks come from
#else
    (void)bytes;
#endif
}

}  // namespace shd::gui
