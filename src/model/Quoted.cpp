#include "model/Quoted.h"

namespace shd {

std::string Escaped(std::string_view text) {
    constexpr std::size_t kMost = 40;
    static constexpr char kHex[] = "0123456789abcdef";
    std::string shown;
    for (const char c : text.substr(0, kMost)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F) shown += {'\\', 'x', kHex[byte >> 4], kHex[byte & 0x0F]};
        else if (c == '\\') shown += "\\\\";
        else shown += c;
    }
    if (text.size() > kMost) shown += "...";
    return shown;
}

}  // namespace shd
