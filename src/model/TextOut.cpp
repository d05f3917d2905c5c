#include "model/TextOut.h"

#include <algorithm>
#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace shd {

TextOut::TextOut(std::size_t expected) { Prepare(std::max<std::size_t>(expected, 64)); }

void TextOut::Prepare(std::size_t capacity) {
    const std::size_t used = end_ ? static_cast<std::size_t>(end_ - out_.data()) : 0;
    out_.resize(used);
    out_.reserve(capacity);
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    // A fresh buffer of this size comes as untouched pages, each costing a
    // fault when first written; one call makes them all at once. Where the
    // system cannot, the pages simply come one by one.
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto first = (reinterpret_cast<std::uintptr_t>(out_.data()) + page - 1) / page * page;
    const auto last = (reinterpret_cast<std::uintptr_t>(out_.data()) + out_.capacity()) / page * page;
    if (last > first) ::madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
#endif
    out_.resize(out_.capacity());
    end_ = out_.data() + used;
    limit_ = out_.data() + out_.size();
}

void TextOut::Grow(std::size_t size) {
    const std::size_t used = static_cast<std::size_t>(end_ - out_.data());
    Prepare(std::max(2 * out_.size(), used + size));
}

std::string TextOut::Take() {
    out_.resize(static_cast<std::size_t>(end_ - out_.data()));
    end_ = limit_ = nullptr;
    return std::move(out_);
}

}  // namespace shd
