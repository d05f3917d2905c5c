#include "model/Cp1252.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace shd {

namespace {

// Code points of the bytes 0x80 to 0x9F; the undefined five map to themselves.
constexpr std::array<char32_t, 32> kHighControls{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char32_t CodePointOf(unsigned char byte) {
    if (byte >= 0x80 && byte <= 0x9F) return kHighControls[byte - 0x80u];
    return byte;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        // Nothing in the table lies beyond the Basic Multilingual Plane.
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

std::optional<unsigned char> ByteOf(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<unsigned char>(cp);
    for (std::size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == cp) return static_cast<unsigned char>(0x80 + i);
    return std::nullopt;
}

// One strictly valid UTF-8 sequence at `at`: its code point and length, or nothing.
std::optional<std::pair<char32_t, std::size_t>> DecodeOne(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    if (lead < 0x80) return std::pair{char32_t{lead}, std::size_t{1}};
    std::size_t length = 0;
    char32_t cp = 0;
    char32_t least = 0;
    if ((lead & 0xE0) == 0xC0) { length = 2; cp = lead & 0x1F; least = 0x80; }
    else if ((lead & 0xF0) == 0xE0) { length = 3; cp = lead & 0x0F; least = 0x800; }
    else if ((lead & 0xF8) == 0xF0) { length = 4; cp = lead & 0x07; least = 0x10000; }
    else return std::nullopt;
    if (text.size() - at < length) return std::nullopt;
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0) != 0x80) return std::nullopt;
        cp = (cp << 6) | (next & 0x3F);
    }
    if (cp < least || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return std::nullopt;
    return std::pair{cp, length};
}

std::string CodePointName(char32_t cp) {
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(cp));
    return name;
}

}  // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (char c : bytes) AppendUtf8(out, CodePointOf(static_cast<unsigned char>(c)));
    return out;
}

Cp1252Result Utf8ToCp1252(std::string_view utf8) {
    Cp1252Result result;
    result.bytes.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto decoded = DecodeOne(utf8, at);
        if (!decoded) {
            result.fault = Cp1252Fault{at, "is not valid UTF-8"};
            result.bytes.clear();
            return result;
        }
        const auto byte = ByteOf(decoded->first);
        if (!byte) {
            result.fault = Cp1252Fault{at, CodePointName(decoded->first) + " is not a Windows-1252 character"};
            result.bytes.clear();
            return result;
        }
        result.bytes += static_cast<char>(*byte);
        at += decoded->second;
    }
    return result;
}

}  // namespace shd
