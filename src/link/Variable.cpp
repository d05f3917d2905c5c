#include "link/Link.h"

#include <cstdint>

namespace shd::link {

namespace {
constexpr std::string_view kSignature = "**TI83**\x1a\x0a";
constexpr std::size_t kHeaderSize = 55;  // signature, comment, data length
constexpr std::size_t kEntryHeader = 0x0B;

std::size_t Word(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint8_t>(bytes[at]) | static_cast<std::size_t>(static_cast<std::uint8_t>(bytes[at + 1])) << 8;
}
}  // namespace

std::optional<Variable> VariableOfProgramFile(std::string_view bytes) {
    if (bytes.size() < kHeaderSize + 2 + kEntryHeader + 2 || !bytes.starts_with(kSignature)) return std::nullopt;
    const std::size_t dataLength = Word(bytes, 53);
    if (bytes.size() != kHeaderSize + dataLength + 2) return std::nullopt;
    const std::string_view section = bytes.substr(kHeaderSize, dataLength);
    std::size_t sum = 0;
    for (const char c : section) sum += static_cast<std::uint8_t>(c);
    if ((sum & 0xFFFF) != Word(bytes, kHeaderSize + dataLength)) return std::nullopt;
    // One entry: header length, data length, type, name, data length again, data.
    if (Word(section, 0) != kEntryHeader) return std::nullopt;
    const std::size_t size = Word(section, 2);
    if (Word(section, 2 + kEntryHeader) != size || section.size() != 2 + kEntryHeader + 2 + size) return std::nullopt;
    Variable variable;
    variable.type = static_cast<std::uint8_t>(section[4]);
    const std::string_view name = section.substr(5, 8);
    variable.name = std::string(name.substr(0, name.find('\0')));
    variable.data = std::string(section.substr(2 + kEntryHeader + 2));
    return variable;
}

}  // namespace shd::link
