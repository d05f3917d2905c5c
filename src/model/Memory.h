// Fresh memory costs a page fault at the first write to each page; on some
// virtual machines that is about 10 microseconds a page, more than the work
// a converter run does in it. These make the pages ready in one call.
#pragma once

#include <cstddef>

namespace shd {

// Makes the whole pages inside [data, data + size) ready for writing. Does
// nothing where the system cannot.
void PrefaultForWriting(void* data, std::size_t size);

// Makes `bytes` of the heap's free room ready before a run's allocations
// take it, for a short-lived process that is about to fill that much.
void PrepareHeap(std::size_t bytes);

}  // namespace shd
