#include "model/Cp1252.h"

#include <gtest/gtest.h>

namespace shd {
namespace {

// That every byte survives the trip to Unicode and back is checked by the JSON
// round trip, whose titles hold all 256 bytes.
TEST(Cp1252, MapsTheLettersAndSignsOfWindows1252) {
    const std::pair<std::string, std::string> cases[] = {
        {std::string("Plain ~\0", 8), std::string("Plain ~\0", 8)},
        {"\x80", "\u20AC"}, {"\x8A", "\u0160"}, {"\x91\x94", "\u2018\u201D"}, {"\x99", "\u2122"}, {"\x9F", "\u0178"},
        {"\xA0", "\u00A0"}, {"Caf\xE9", "Caf\u00E9"}, {"\xFF", "\u00FF"},
        // The five undefined bytes go to the C1 control of the same number.
        {"\x81\x8D\x8F\x90\x9D", "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"},
    };
    for (const auto& [bytes, utf8] : cases) EXPECT_EQ(Cp1252ToUtf8(bytes), utf8) << bytes;
}

TEST(Cp1252, RefusesWhatHasNoByteOrIsNotUtf8AndSaysWhere) {
    const std::string noByte = " is not a Windows-1252 character";
    const std::string malformed = "is not valid UTF-8";
    const struct {
        std::string utf8;
        std::size_t offset;
        std::string reason;
    } cases[] = {
        {"ab\u0100", 2, "U+0100" + noByte},
        // 0x80 is the euro sign, so the C1 control U+0080 has no byte.
        {"\u0080", 0, "U+0080" + noByte},
        {"x\u009F", 1, "U+009F" + noByte},
        {"\u20AC\u20AD", 3, "U+20AD" + noByte},
        {"a\x80", 1, malformed},           // continuation byte without a lead
        {"\xC0\xAF", 0, malformed},        // overlong "/"
        {"\xE0\x80\xAF", 0, malformed},    // overlong, three bytes
        {"ok\xED\xA0\x80", 2, malformed},  // surrogate
        {"\xF4\x90\x80\x80", 0, malformed},  // beyond U+10FFFF
        {"\xE2\x82", 0, malformed},        // cut short at the end
        {"\xE2\x82x", 0, malformed},       // cut short before another character
    };
    for (const auto& c : cases) {
        const auto result = Utf8ToCp1252(c.utf8);
        ASSERT_FALSE(result.ok()) << c.utf8;
        EXPECT_EQ(result.fault->offset, c.offset) << c.utf8;
        EXPECT_EQ(result.fault->reason, c.reason);
        EXPECT_TRUE(result.bytes.empty());
    }
}

}  // namespace
}  // namespace shd
