// A file's text built in one buffer: lines end in CR LF, and numbers go in
// as digits without a temporary string each.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace shd {

class TextOut {
public:
    // `expected` is about the size the text will have; a longer one still fits.
    explicit TextOut(std::size_t expected) { Grow(std::max<std::size_t>(expected, 64)); }
    TextOut(const TextOut&) = delete;
    TextOut& operator=(const TextOut&) = delete;

    TextOut& operator<<(std::string_view text) {
        Room(text.size());
        if (!text.empty()) std::memcpy(out_.data() + used_, text.data(), text.size());
        used_ += text.size();
        return *this;
    }
    TextOut& operator<<(char c) {
        Room(1);
        out_[used_++] = c;
        return *this;
    }
    TextOut& Number(long value) {
        constexpr std::size_t kLongest = 20;  // "-9223372036854775808"
        Room(kLongest);
        char* at = out_.data() + used_;
        used_ += static_cast<std::size_t>(std::to_chars(at, at + kLongest, value).ptr - at);
        return *this;
    }
    TextOut& Line(std::string_view text = {}) { return *this << text << "\r\n"; }

    std::string Take() {
        out_.resize(used_);
        used_ = 0;
        return std::move(out_);
    }

private:
    // The text is written into the string's own storage up to `used_`, so
    // appending stays a copy and a count; the string is cut when taken.
    void Room(std::size_t size) {
        if (out_.size() - used_ < size) Grow(std::max(2 * out_.size(), used_ + size));
    }
    void Grow(std::size_t size) { out_.resize(size); }

    std::string out_;
    std::size_t used_ = 0;
};

}  // namespace shd
