#include "model/TextOut.h"

#include <algorithm>

#include "model/Memory.h"

namespace shd {

TextOut::TextOut(std::size_t expected) { Prepare(std::max<std::size_t>(expected, 64)); }

void TextOut::Prepare(std::size_t capacity) {
    const std::size_t used = end_ ? static_cast<std::size_t>(end_ - out_.data()) : 0;
    out_.resize(used);
    out_.reserve(capacity);
    // A fresh buffer of this size comes as untouched pages; one call makes them all.
    PrefaultForWriting(out_.data(), out_.capacity());
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
