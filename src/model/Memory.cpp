#include "model/Memory.h"

#include <cstdint>
#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace shd {

void PrefaultForWriting(void* data, std::size_t size) {
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto start = reinterpret_cast<std::uintptr_t>(data);
    const auto first = (start + page - 1) / page * page;
    const auto last = (start + size) / page * page;
    if (last > first) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#else
    (void)data;
    (void)size;
#endif
}

void PrepareHeap(std::size_t bytes) {
    // A block taken and given straight back returns to the heap's free room,
    // where the next allocations come from, with its pages still in place.
    void* block = std::malloc(bytes);
    if (!block) return;
    PrefaultForWriting(block, bytes);
    std::free(block);
}

}  // namespace shd
