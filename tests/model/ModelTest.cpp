// The level set's counts and invariants, typed numbers and Windows-1252.
#include <gtest/gtest.h>

#include <cmath>

#include "model/Cp1252.h"
#include "model/LevelSet.h"
#include "model/Numbers.h"

namespace shd {
namespace {

TEST(LevelSet, RecountSetsTheEightCountsFromTheCellsAndLeavesTheRest) {
    LevelSet set = NewSet(GameKind::Shardles);
    for (const int cell : {0, 9}) set.Layout(1).Cells[static_cast<std::size_t>(cell)] = 2;
    set.Layout(1).Cells[79] = 3;
    set.Layout(1).Cells[40] = 14;
    set.Record(1) = {.SpottedUnused = true, .ZigZagCount = 7, .CustomCount = 5, .SpecialUnusedCount = 4};
    RecountCurrentLevel(set);
    const LevelRecord want{.SpottedUnused = true, .SpottedCount = 2, .SpottedChangerCount = 1,
                           .CustomChangerCount = 1, .SpecialUnusedCount = 4};
    EXPECT_EQ(set.Record(1), want);
}

TEST(LevelSet, TheConsistencyCheckFindsEveryBrokenInvariant) {
    EXPECT_EQ(CheckConsistent(NewSet(GameKind::Tiltbash)), "");
    auto broken = [](auto breakIt) {
        LevelSet set = NewSet(GameKind::Shardles);
        MakeLevels(set, 2);
        breakIt(set);
        return CheckConsistent(set);
    };
    EXPECT_NE(broken([](LevelSet& s) { s.Layouts.clear(); }), "");
    EXPECT_NE(broken([](LevelSet& s) { s.Records.pop_back(); }), "");
    EXPECT_NE(broken([](LevelSet& s) { s.CurrentLevel = 3; }), "");
    EXPECT_NE(broken([](LevelSet& s) { s.Layout(2).Cells.pop_back(); }), "");
    EXPECT_NE(broken([](LevelSet& s) { s.Layout(2).Cells[5] = 16; }), "");
    EXPECT_NE(broken([](LevelSet& s) { MakeLevels(s, 255), AddEmptyLevel(s); }), "");
}

TEST(Numbers, TypedNumbersArePlainDecimalsWhateverTheirBlanks) {
    const std::pair<const char*, double> numbers[] = {
        {"5.5", 5.5}, {" 12 ", 12}, {"+3", 3}, {"-0.4", -0.4}, {".5", 0.5}, {"5.", 5}, {"007", 7},
        {"123456789012345678", 123456789012345678.0}, {"0.000000000000000000001", 1e-21}};
    for (const auto& [text, value] : numbers) EXPECT_EQ(ParseTypedNumber(text), value) << text;
    for (const char* text : {"", " ", "-", "+", ".", "1e3", "12a", "1,5", "1 2", "--1", "0x10", "\t1"})
        EXPECT_FALSE(ParseTypedNumber(text)) << text;
    EXPECT_TRUE(std::isinf(*ParseTypedNumber(std::string(400, '9'))));
    EXPECT_EQ(ParseTypedNumber("0." + std::string(400, '0') + "1"), 0.0);
}

TEST(Numbers, RoundingTakesHalvesToTheEvenNeighbourAndLeadingNumbersAreCut) {
    for (const auto& [value, rounded] : {std::pair{0.5, 0.0}, {1.5, 2.0}, {2.5, 2.0}, {-1.5, -2.0}, {-0.6, -1.0}})
        EXPECT_EQ(RoundHalfEven(value), rounded) << value;
    EXPECT_EQ(LeadingNumber("12abc"), 12);
    EXPECT_EQ(LeadingNumber(" \t-3.5;x"), -4);
    EXPECT_EQ(LeadingNumber("2.5.5"), 2);
    EXPECT_FALSE(LeadingNumber("x12"));
    EXPECT_FALSE(LeadingNumber("-"));
}

TEST(Cp1252, EveryByteSurvivesTheTripThroughUnicode) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    const Cp1252Result back = Utf8ToCp1252(Cp1252ToUtf8(all));
    ASSERT_TRUE(back.ok());
    EXPECT_EQ(back.bytes, all);
    EXPECT_EQ(Cp1252ToUtf8("\x80\x9f\xe9\x81"), "\xE2\x82\xAC\xC5\xB8\xC3\xA9\xC2\x81");  // euro, Y diaeresis, e acute
}

TEST(Cp1252, WhatHasNoByteOrIsNotUtf8IsRefusedWhereItStands) {
    const std::pair<const char*, Cp1252Fault> faults[] = {
        {"ab\xC4\x80", {2, "U+0100 is not a Windows-1252 character"}},
        {"a\xF0\x9F\x98\x80", {1, "U+1F600 is not a Windows-1252 character"}},
        {"\xC0\xAF", {0, "is not valid UTF-8"}},        // overlong
        {"abc\xE2\x82", {3, "is not valid UTF-8"}},     // cut short
        {"\xED\xA0\x80", {0, "is not valid UTF-8"}}};  // a surrogate
    for (const auto& [text, fault] : faults) {
        const Cp1252Result result = Utf8ToCp1252(text);
        ASSERT_FALSE(result.ok()) << text;
        EXPECT_EQ(result.fault->offset, fault.offset) << text;
        EXPECT_EQ(result.fault->reason, fault.reason) << text;
    }
}

}  // namespace
}  // namespace shd
