// Titles and settings texts are kept as Windows-1252 bytes; ordinary tools
// (JSON among them) want Unicode. These convert between the two.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shd {

// Every byte has a code point: the 27 letters and signs of 0x80..0x9F, and
// the five bytes Windows-1252 leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D)
// go to the C1 control of the same number, as Windows itself maps them. So
// any text a file brings survives the trip to Unicode and back.
std::string Cp1252ToUtf8(std::string_view bytes);

struct Cp1252Fault {
    std::size_t offset = 0;  // byte offset of the offending character in the UTF-8 input
    std::string reason;
};

// The Windows-1252 bytes of a UTF-8 text, or the first character that is not
// valid UTF-8 or has no byte in Windows-1252.
struct Cp1252Result {
    std::string bytes;
    std::optional<Cp1252Fault> fault;
    bool ok() const { return !fault; }
};
Cp1252Result Utf8ToCp1252(std::string_view utf8);

}  // namespace shd
