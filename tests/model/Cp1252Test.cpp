#include "model/Cp1252.h"

#include <gtest/gtest.h>

#include <set>

namespace shd {
namespace {

std::string AllBytes() {
    std::string bytes;
    for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
    return bytes;
}

TEST(Cp1252, EveryByteSurvivesTheTripToUnicodeAndBack) {
    const std::string bytes = AllBytes();
    const auto back = Utf8ToCp1252(Cp1252ToUtf8(bytes));
    ASSERT_TRUE(back.ok()) << back.fault->reason;
    EXPECT_EQ(back.bytes, bytes);
}

TEST(Cp1252, EveryByteHasItsOwnCodePoint) {
    std::set<std::string> seen;
    for (int b = 0; b < 256; ++b) seen.insert(Cp1252ToUtf8(std::string(1, static_cast<char>(b))));
    EXPECT_EQ(seen.size(), 256u);
}

TEST(Cp1252, MapsTheLettersAndSignsOfWindows1252) {
    EXPECT_EQ(Cp1252ToUtf8("Plain ASCII ~"), "Plain ASCII ~");
    EXPECT_EQ(Cp1252ToUtf8("\x80"), "\u20AC");  // euro sign
    EXPECT_EQ(Cp1252ToUtf8("\x8A"), "\u0160");
    EXPECT_EQ(Cp1252ToUtf8("\x99"), "\u2122");
    EXPECT_EQ(Cp1252ToUtf8("\x9F"), "\u0178");
    EXPECT_EQ(Cp1252ToUtf8("\xA0"), "\u00A0");
    EXPECT_EQ(Cp1252ToUtf8("Caf\xE9"), "Caf\u00E9");
    EXPECT_EQ(Cp1252ToUtf8("\xFF"), "\u00FF");
    EXPECT_EQ(Cp1252ToUtf8(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Cp1252, UndefinedBytesGoToTheC1ControlOfTheSameNumber) {
    for (unsigned char b : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
        const std::string utf8 = Cp1252ToUtf8(std::string(1, static_cast<char>(b)));
        ASSERT_EQ(utf8.size(), 2u);
        EXPECT_EQ(static_cast<unsigned char>(utf8[0]), 0xC2);
        EXPECT_EQ(static_cast<unsigned char>(utf8[1]), b);
    }
}

TEST(Cp1252, RefusesCharactersWithoutAByteAndSaysWhichAndWhere) {
    struct Case {
        std::string utf8;
        std::size_t offset;
        std::string reason;
    };
    const Case cases[] = {
        {"ab\u0100", 2, "U+0100 is not a Windows-1252 character"},
        // 0x80 is the euro sign, so the C1 control U+0080 has no byte.
        {"\u0080", 0, "U+0080 is not a Windows-1252 character"},
        {"x\u009F", 1, "U+009F is not a Windows-1252 character"},
        {"\u20AC\u20AD", 3, "U+20AD is not a Windows-1252 character"},
        {"\U0001F600", 0, "U+1F600 is not a Windows-1252 character"},
    };
    for (const auto& c : cases) {
        const auto result = Utf8ToCp1252(c.utf8);
        ASSERT_FALSE(result.ok()) << c.utf8;
        EXPECT_EQ(result.fault->offset, c.offset) << c.utf8;
        EXPECT_EQ(result.fault->reason, c.reason);
        EXPECT_TRUE(result.bytes.empty());
    }
}

TEST(Cp1252, RefusesMalformedUtf8) {
    struct Case {
        std::string utf8;
        std::size_t offset;
    };
    const Case cases[] = {
        {"a\x80", 1},              // continuation byte without a lead
        {"\xC0\xAF", 0},           // overlong "/"
        {"\xE0\x80\xAF", 0},       // overlong, three bytes
        {"ok\xED\xA0\x80", 2},     // surrogate
        {"\xF4\x90\x80\x80", 0},   // beyond U+10FFFF
        {"\xE2\x82", 0},           // cut short at the end
        {"\xE2\x82x", 0},          // cut short before another character
        {"\xFF", 0},
    };
    for (const auto& c : cases) {
        const auto result = Utf8ToCp1252(c.utf8);
        ASSERT_FALSE(result.ok());
        EXPECT_EQ(result.fault->offset, c.offset);
        EXPECT_EQ(result.fault->reason, "is not valid UTF-8");
    }
}

}  // namespace
}  // namespace shd
