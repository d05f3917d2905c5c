#include "model/Quoted.h"

#include <cstdint>
#include <optional>

namespace shd {

namespace {

std::string EscapedUpTo(std::string_view text, std::size_t most) {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string shown;
    for (const char c : text.substr(0, most)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte >= 0x7F) shown += {'\\', 'x', kHex[byte >> 4], kHex[byte & 0x0F]};
        else if (c == '\\') shown += "\\\\";
        else shown += c;
    }
    if (text.size() > most) shown += "...";
    return shown;
}

// The code point of the UTF-8 sequence at `at`, moving past it; nothing
// when it is not well formed.
std::optional<std::uint32_t> NextCodePoint(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 && lead <= 0xF4 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 && lead < 0xE0 ? 1 : -1;
    if (more < 0 || lead > 0xF4) return std::nullopt;
    std::uint32_t cp = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i, ++at) {
        if (at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return std::nullopt;
        cp = cp << 6 | (static_cast<unsigned char>(text[at]) & 0x3F);
    }
    constexpr std::uint32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kLeast[more] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return std::nullopt;
    return cp;
}

// A character a terminal shows as itself: no control of either set, and
// none of the marks that turn the direction of the text around it.
bool PrintsAsItself(std::uint32_t cp) {
    if (cp < 0x20 || (cp >= 0x7F && cp < 0xA0)) return false;
    if (cp == 0x200E || cp == 0x200F || cp == 0x061C) return false;
    if ((cp >= 0x202A && cp <= 0x202E) || (cp >= 0x2066 && cp <= 0x2069)) return false;
    return true;
}

}  // namespace

std::string Escaped(std::string_view text) { return EscapedUpTo(text, 40); }

std::string ShownName(std::string_view name) {
    bool plain = true;
    for (std::size_t at = 0; plain && at < name.size();) {
        const auto cp = NextCodePoint(name, at);
        plain = cp && PrintsAsItself(*cp);
    }
    return plain ? std::string(name) : "\"" + EscapedUpTo(name, name.size()) + "\"";
}

}  // namespace shd
