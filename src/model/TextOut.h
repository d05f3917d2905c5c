// A file's text built in one buffer: numbers go straight in as digits, with
// no temporary strings, and the buffer's memory is made ready in one step.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace shd {

class TextOut {
public:
    // `expected` is about the size the text will have; a longer text still
    // fits, only less quickly.
    explicit TextOut(std::size_t expected);
    TextOut(const TextOut&) = delete;
    TextOut& operator=(const TextOut&) = delete;

    TextOut& operator<<(std::string_view text) {
        if (text.empty()) return *this;  // an empty view may have no data at all
        Room(text.size());
        std::memcpy(end_, text.data(), text.size());
        end_ += text.size();
        return *this;
    }
    TextOut& operator<<(char c) {
        Room(1);
        *end_++ = c;
        return *this;
    }
    TextOut& Number(long value) {
        constexpr std::size_t kLongest = 20;  // "-9223372036854775808"
        Room(kLongest);
        end_ = std::to_chars(end_, end_ + kLongest, value).ptr;
        return *this;
    }
    TextOut& Line(std::string_view text = {}) { return *this << text << "\r\n"; }

    std::string Take();

private:
    void Room(std::size_t size) {
        if (static_cast<std::size_t>(limit_ - end_) < size) Grow(size);
    }
    void Grow(std::size_t size);
    void Prepare(std::size_t capacity);

    // The text is written into the string's own storage up to `end_`; the
    // string is cut to that length when it is taken.
    std::string out_;
    char* end_ = nullptr;
    char* limit_ = nullptr;
};

}  // namespace shd
