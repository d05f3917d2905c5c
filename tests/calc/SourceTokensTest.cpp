#include <gtest/gtest.h>

#include <vector>

#include "calc/SourceTokens.h"

namespace shd::source {
namespace {

std::vector<std::string> AllFields(std::string_view text) {
    FieldReader reader(text);
    std::vector<std::string> fields;
    while (auto field = reader.ReadField()) fields.push_back(*field);
    return fields;
}

std::vector<std::string> AllTokens(std::string_view text) {
    FieldReader reader(text);
    std::vector<std::string> tokens;
    while (auto token = reader.NextString()) tokens.push_back(*token);
    return tokens;
}

using Strings = std::vector<std::string>;

TEST(CalcSourceTokens, FieldsSplitAtCommasAndLineEnds) {
    EXPECT_EQ(AllFields("        .db             $12,$34,$56,$78\r\n"),
              (Strings{".db             $12", "$34", "$56", "$78"}));
    EXPECT_EQ(AllFields("        .db             \"AB\",$00\r\n"), (Strings{".db             \"AB\"", "$00"}));
    // An empty line is one empty field; quotes are ordinary; blanks at the end stay.
    EXPECT_EQ(AllFields("a\r\n\r\n\"x,y\" \r\n"), (Strings{"a", "", "\"x", "y\" "}));
    // Tabs in front count as blanks.
    EXPECT_EQ(AllFields("\t .db\t$00,\t$01\n"), (Strings{".db\t$00", "$01"}));
    EXPECT_EQ(AllFields(""), Strings{});
    EXPECT_EQ(AllFields("last"), Strings{"last"});
}

TEST(CalcSourceTokens, LineEndsOfEveryKind) {
    const Strings want{"a", "b", "", "c"};
    EXPECT_EQ(AllFields("a\r\nb\r\n\r\nc\r\n"), want);
    EXPECT_EQ(AllFields("a\nb\n\nc\n"), want);
    EXPECT_EQ(AllFields("a\rb\r\rc\r"), want);
    FieldReader reader("one\rtwo\nthree\r\nfour");
    for (int line = 1; line <= 4; ++line) {
        ASSERT_TRUE(reader.ReadField());
        EXPECT_EQ(reader.LastLine(), line);
    }
    EXPECT_FALSE(reader.ReadField());
    EXPECT_EQ(reader.LastLine(), 4);
}

TEST(CalcSourceTokens, ReadLineTakesTheRestOfTheLine) {
    FieldReader reader("$00,$01\r\n        .db             128\r\nnext");
    EXPECT_EQ(reader.ReadField(), "$00");
    EXPECT_EQ(reader.ReadLine(), "$01");
    EXPECT_EQ(reader.ReadLine(), "        .db             128");
    EXPECT_EQ(reader.ReadLine(), "next");
    EXPECT_FALSE(reader.ReadLine());
}

TEST(CalcSourceTokens, NextStringPassesOverBlankAndCommentLines) {
    EXPECT_EQ(AllTokens("\r\n; a comment\r\n   ;indented\r\n  $12;note\r\n$12 ;note\r\n"),
              (Strings{"$12", "$12 "}));
    // A comment holding a comma yields the text after the comma.
    EXPECT_EQ(AllTokens("; one, two\r\nthree\r\n"), (Strings{"two", "three"}));
    FieldReader reader("\r\n;only comments\r\n");
    EXPECT_FALSE(reader.NextString());
}

TEST(CalcSourceTokens, GetNextByte) {
    FieldReader reader(
        "        .db             %00101001\r\n"
        "blockE:\r\n"
        "        .db             11000000b\r\n"
        "123456789\r\n"
        "12345678b 87654321x\r\n"
        "stray\r\n"
        "second stray\r\n"
        "        .db             01b\r\n");
    EXPECT_EQ(reader.GetNextByte(), "00101001");
    EXPECT_EQ(reader.GetNextByte(), "11000000");  // one label passed over
    EXPECT_EQ(reader.GetNextByte(), "23456789");  // the last eight of a longer run
    EXPECT_EQ(reader.GetNextByte(), "87654321");  // the last run
    EXPECT_EQ(reader.GetNextByte(), "second stray");  // a second stray token is not passed over
    // One stray token left: the second try runs into the end of the text.
    EXPECT_FALSE(reader.GetNextByte());
}

TEST(CalcSourceTokens, CutToEightDigits) {
    EXPECT_EQ(CutToEightDigits("x00000001b"), "00000001");
    EXPECT_EQ(CutToEightDigits("1234567"), std::nullopt);
    EXPECT_EQ(CutToEightDigits("1234 5678"), std::nullopt);
    EXPECT_EQ(CutToEightDigits("98765432101"), "65432101");
}

TEST(CalcSourceTokens, HexToDec) {
    EXPECT_EQ(HexToDec("1F"), "31");
    EXPECT_EQ(HexToDec("FF"), "255");
    EXPECT_EQ(HexToDec("7"), "7");
    EXPECT_EQ(HexToDec("A"), "10");
    EXPECT_EQ(HexToDec("0a"), "0");
    EXPECT_EQ(HexToDec("G5"), "5");
    EXPECT_EQ(HexToDec("ab"), "0");
    EXPECT_EQ(HexToDec("aB"), "11");
    EXPECT_EQ(HexToDec("F "), "240");
    EXPECT_EQ(HexToDec(""), "0");
}

TEST(CalcSourceTokens, HexadecimalTokens) {
    EXPECT_EQ(GetTokenValue("$1F"), 31);
    EXPECT_EQ(GetTokenValue(".db             $1F"), 31);
    EXPECT_EQ(GetTokenValue("1Fh"), 31);
    EXPECT_EQ(GetTokenValue("F0h"), 240);
    EXPECT_EQ(GetTokenValue("$F0"), 240);
    EXPECT_EQ(GetTokenValue("$0F"), 15);
    EXPECT_EQ(GetTokenValue("$ab"), 0);
    // A blank at the end, too few characters, or neither form: the read fails.
    EXPECT_EQ(GetTokenValue("$12 "), std::nullopt);
    EXPECT_EQ(GetTokenValue("$1"), std::nullopt);
    EXPECT_EQ(GetTokenValue("h"), std::nullopt);
    EXPECT_EQ(GetTokenValue("1F$x"), std::nullopt);
    EXPECT_EQ(GetTokenValue("1FH$"), std::nullopt);
    EXPECT_EQ(GetTokenValue("each"), 0);  // a lower-case h makes it hexadecimal: "ac" has no hex digits
}

TEST(CalcSourceTokens, DecimalTokens) {
    EXPECT_EQ(GetTokenValue("240"), 240);
    EXPECT_EQ(GetTokenValue("007"), 7);
    EXPECT_EQ(GetTokenValue("        .db             7"), 7);
    EXPECT_EQ(GetTokenValue(".db             128"), 128);
    EXPECT_EQ(GetTokenValue(".db 7"), 0);  // "b 7" does not start with a number
    EXPECT_EQ(GetTokenValue("1234"), 234);
    EXPECT_EQ(GetTokenValue("x12y"), 0);    // cut back to "x12"
    EXPECT_EQ(GetTokenValue("ab123xyz"), 123);
    EXPECT_EQ(GetTokenValue("-12"), -12);
    EXPECT_EQ(GetTokenValue("999"), 999);
    EXPECT_EQ(GetTokenValue("12"), std::nullopt);
    EXPECT_EQ(GetTokenValue("7"), std::nullopt);
    EXPECT_EQ(GetTokenValue("12a"), std::nullopt);
    EXPECT_EQ(GetTokenValue("abc"), std::nullopt);
    EXPECT_EQ(DecimalTokenValue("$1F0"), 1);  // the decimal rule alone ignores the "$"
}

TEST(CalcSourceTokens, FieldNumbers) {
    EXPECT_EQ(FieldNumber("5"), 5);
    EXPECT_EQ(FieldNumber(" 200 "), 200);
    EXPECT_EQ(FieldNumber("-7"), -7);
    EXPECT_EQ(FieldNumber("2.5"), 2);
    EXPECT_EQ(FieldNumber("3.5"), 4);
    EXPECT_EQ(FieldNumber("x"), 0);
    EXPECT_EQ(FieldNumber("12abc"), 0);
    EXPECT_EQ(FieldNumber(""), 0);
    EXPECT_EQ(FieldNumber("99999999999999999999"), 1000000000L);
}

TEST(CalcSourceTokens, LevelLabels) {
    for (const char* label : {"level1:", "level12:", "level255:", "level0001:"}) EXPECT_TRUE(IsLevelLabel(label));
    for (const char* other : {"level:", "Level1:", "level1", "level1: ", " level1:", "level1a:", "LEVEL1:"})
        EXPECT_FALSE(IsLevelLabel(other)) << other;
}

}  // namespace
}  // namespace shd::source
