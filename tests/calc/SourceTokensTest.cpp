#include <gtest/gtest.h>

#include <vector>

#include "calc/SourceTokens.h"

namespace shd::source {
namespace {

using Strings = std::vector<std::string>;

TEST(CalcSourceTokens, FieldsSplitAtCommasAndLineEnds) {
    const std::pair<const char*, Strings> cases[] = {
        {"        .db             $12,$34,$56,$78", {".db             $12", "$34", "$56", "$78"}},
        // An empty line is one empty field; quotes are ordinary; blanks at the end stay.
        {"a\r\n\r\n\"x,y\" \r\n", {"a", "", "\"x", "y\" "}},
        {"\t .db\t$00,\t$01\n", {".db\t$00", "$01"}},  // tabs in front count as blanks
        {"a\nb\r\rc\r\n", {"a", "b", "", "c"}},
        {"", {}},
    };
    for (const auto& [text, want] : cases) {
        FieldReader reader(text);
        Strings fields;
        while (auto field = reader.ReadField()) fields.emplace_back(*field);
        EXPECT_EQ(fields, want) << text;
    }
}

TEST(CalcSourceTokens, ReadLineAndLineNumbers) {
    FieldReader reader("one\rtwo, ;x\nthree\r\nfour");
    for (auto [line, field, want] : {std::tuple{1, true, "one"}, {2, false, "two, ;x"}, {3, true, "three"}, {4, false, "four"}}) {
        EXPECT_EQ(field ? reader.ReadField() : reader.ReadLine(), want);
        EXPECT_EQ(reader.LastLine(), line);
    }
    EXPECT_FALSE(reader.ReadField());
    EXPECT_FALSE(reader.ReadLine());
    EXPECT_EQ(reader.LastLine(), 4);
}

TEST(CalcSourceTokens, NextStringPassesOverBlankAndCommentLines) {
    // A comment holding a comma yields the text after the comma.
    FieldReader reader("\r\n; a comment\r\n   ;indented\r\n  $12;note\r\n$12 ;note\r\n; one, two\r\n");
    for (const char* want : {"$12", "$12 ", "two"}) EXPECT_EQ(reader.NextString(), want);
    EXPECT_FALSE(reader.NextString());
}

TEST(CalcSourceTokens, GetNextByte) {
    FieldReader reader(
        "        .db             %00101001\r\n"
        "blockE:\r\n"
        "        .db             11000000b\r\n"
        "123456789\r\n"
        "12345678b 87654321x\r\n"
        "1234 5678\r\n"
        "second stray\r\n"
        "        .db             1234567b\r\n");
    EXPECT_EQ(reader.GetNextByte(), "00101001");
    EXPECT_EQ(reader.GetNextByte(), "11000000");      // one label passed over
    EXPECT_EQ(reader.GetNextByte(), "23456789");      // the last eight of a longer run
    EXPECT_EQ(reader.GetNextByte(), "87654321");      // the last run
    EXPECT_EQ(reader.GetNextByte(), "second stray");  // split digits are a stray; a second one is not passed over
    // Seven digits are a stray token: the second try runs into the end of the text.
    EXPECT_FALSE(reader.GetNextByte());
}

TEST(CalcSourceTokens, HexToDec) {
    for (auto [text, want] : {std::pair{"1F", 31}, {"FF", 255}, {"7", 7}, {"A", 10}, {"0a", 0},
                              {"G5", 5}, {"ab", 0}, {"aB", 11}, {"F ", 240}, {"", 0}})
        EXPECT_EQ(HexToDec(text), want) << text;
}

TEST(CalcSourceTokens, GetTokenValue) {
    const std::pair<const char*, std::optional<long>> cases[] = {
        // Hexadecimal: "$NN" or "NNh" at the end.
        {"$1F", 31}, {".db             $1F", 31}, {"1Fh", 31}, {"F0h", 240}, {"$F0", 240}, {"$0F", 15}, {"$ab", 0},
        {"each", 0},  // a lower-case h makes it hexadecimal: "ac" has no hex digits
        {"$12 ", std::nullopt}, {"$1", std::nullopt}, {"h", std::nullopt}, {"1F$x", std::nullopt},
        {"1FH$", std::nullopt},
        // Decimal: a number in the last three characters, cut back to a digit.
        {"240", 240}, {"007", 7}, {"        .db             7", 7}, {".db             128", 128},
        {".db 7", 0},  // "b 7" does not start with a number
        {"1234", 234}, {"2.5", 2}, {"x12y", 0}, {"ab123xyz", 123}, {"-12", -12}, {"999", 999},
        {"12", std::nullopt}, {"7", std::nullopt}, {"12a", std::nullopt}, {"abc", std::nullopt},
    };
    for (const auto& [token, want] : cases) EXPECT_EQ(GetTokenValue(token), want) << '"' << token << '"';
    EXPECT_EQ(DecimalTokenValue("$1F0"), 1);  // the decimal rule alone ignores the "$"
}

TEST(CalcSourceTokens, FieldNumbers) {
    for (auto [field, want] : {std::pair{"5", 5L}, {" 200 ", 200L}, {"-7", -7L}, {"2.5", 2L}, {"3.5", 4L},
                               {"x", 0L}, {"12abc", 0L}, {"", 0L}, {"99999999999999999999", 1000000000L}})
        EXPECT_EQ(FieldNumber(field), want) << '"' << field << '"';
}

TEST(CalcSourceTokens, LevelLabels) {
    for (const char* label : {"level1:", "level12:", "level255:", "level0001:"}) EXPECT_TRUE(IsLevelLabel(label));
    for (const char* other : {"level:", "Level1:", "level1", "level1: ", " level1:", "level1a:", "LEVEL1:"})
        EXPECT_FALSE(IsLevelLabel(other)) << other;
}

}  // namespace
}  // namespace shd::source
