#include <gtest/gtest.h>

#include "model/LevelSet.h"
#include "model/Numbers.h"

namespace shd {
namespace {

TEST(LevelSet, NewSetsHaveTheDefaultsAndOneEmptyLevelOfTheirKind) {
    const LevelSet shardles = NewSet(GameKind::Shardles);
    EXPECT_EQ(shardles.LevelCount(), 1);
    ASSERT_EQ(shardles.Layout(1).Cells.size(), 80u);
    EXPECT_TRUE(shardles.UseShardlesDebugger);
    EXPECT_TRUE(shardles.MatchLocksToBlocks);
    EXPECT_FALSE(shardles.UseCustomShardles || shardles.UseWrapAround || shardles.ArrowBlocksBreakable);
    EXPECT_EQ(shardles.BonusClock, "30");
    EXPECT_EQ(shardles.ExtraLifePoints, "100");
    EXPECT_EQ(shardles.Title, "Please Add a Title");
    EXPECT_EQ(CheckConsistent(shardles), "");

    const LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    EXPECT_EQ(tiltbash.Layout(1).Cells.size(), 64u);
    EXPECT_EQ(CheckConsistent(tiltbash), "");
}

TEST(LevelSet, RecountSetsTheEightCountsFromTheCellsAndLeavesFlags) {
    LevelSet set = NewSet(GameKind::Shardles);
    auto& cells = set.Current().Cells;
    cells[0] = 2, cells[9] = 2, cells[30] = 3, cells[79] = 14, cells[40] = 6;
    LevelRecord& r = set.CurrentRecord();
    r.ZigZagCount = 9, r.CenterLineChangerCount = 4, r.SpottedUnused = true, r.SpecialUnusedCount = 5;
    RecountCurrentLevel(set);
    EXPECT_EQ(r.SpottedCount, 2);
    EXPECT_EQ(r.SpottedChangerCount, 1);
    EXPECT_EQ(r.CustomChangerCount, 1);
    EXPECT_EQ(r.ZigZagCount + r.ZigZagChangerCount + r.CenterLineCount + r.CenterLineChangerCount + r.CustomCount, 0);
    EXPECT_TRUE(r.SpottedUnused);
    EXPECT_EQ(r.SpecialUnusedCount, 5);
}

TEST(LevelSet, ConsistencyCheckFindsBrokenInvariants) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Layout(1).Cells[3] = 16;
    EXPECT_NE(CheckConsistent(set), "");
    set = NewSet(GameKind::Shardles);
    set.Layout(1).Cells.resize(64);
    EXPECT_NE(CheckConsistent(set), "");
    set = NewSet(GameKind::Tiltbash);
    set.Records.clear();
    EXPECT_NE(CheckConsistent(set), "");
    set = NewSet(GameKind::Tiltbash);
    MakeLevels(set, 255);
    EXPECT_EQ(CheckConsistent(set), "");
    AddEmptyLevel(set);
    EXPECT_NE(CheckConsistent(set), "");
}

TEST(TypedNumbers, AcceptOnlyPlainDecimalNotation) {
    EXPECT_EQ(ParseTypedNumber("12"), 12.0);
    EXPECT_EQ(ParseTypedNumber("  +3.5  "), 3.5);
    EXPECT_EQ(ParseTypedNumber("-0.4"), -0.4);
    EXPECT_EQ(ParseTypedNumber(".5"), 0.5);
    EXPECT_EQ(ParseTypedNumber("5."), 5.0);
    EXPECT_EQ(ParseTypedNumber("-7"), -7.0);
    // Whole numbers take a short way up to 15 digits and strtod's beyond; both agree at the seam.
    EXPECT_EQ(ParseTypedNumber("999999999999999"), 999999999999999.0);
    EXPECT_EQ(ParseTypedNumber("-1234567890123456789"), -1234567890123456789.0);
    EXPECT_EQ(ParseTypedNumber("00000000000000000012"), 12.0);
    for (const char* bad : {"", " ", "-", "+", ".", "12a", "1e3", "0x10", "1,000", "$5", "5 5", "--1", "1.2.3"})
        EXPECT_FALSE(ParseTypedNumber(bad).has_value()) << bad;
}

TEST(TypedNumbers, RoundHalvesToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(5.5), 6);
    EXPECT_EQ(RoundHalfEven(6.5), 6);
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(-0.4), 0);
    EXPECT_EQ(RoundHalfEven(-0.6), -1);
    EXPECT_EQ(RoundHalfEven(-1.5), -2);
}

}  // namespace
}  // namespace shd
