// Block counting, the debugger's checks and the custom piece rules.
#include <gtest/gtest.h>

#include "rules/CustomPiece.h"
#include "rules/LevelChecks.h"

namespace shd {
namespace {

struct CountCase {
    GameKind kind;
    std::vector<std::pair<int, int>> cells;  // code, how many
    void (*tweak)(LevelSet&);
    int blocks, last;
};

void Nothing(LevelSet&) {}

TEST(CountBlocks, WeighsEachCodeByTheGameAndTheLevelsOptions) {
    using K = GameKind;
    const CountCase cases[] = {
        {K::Shardles, {}, Nothing, 0, 0},
        {K::Shardles, {{1, 10}, {6, 1}}, [](LevelSet& s) { s.Record(1).SpecialUnusedCount = 3; }, 7, 1},
        {K::Shardles, {{1, 2}, {6, 2}}, [](LevelSet& s) { s.Record(1).SpecialUnusedCount = 5; }, -3, 2},
        {K::Shardles, {{2, 2}, {4, 1}, {8, 1}, {13, 1}}, Nothing, 5, 0},
        {K::Shardles, {{2, 2}}, [](LevelSet& s) { s.Record(1).SpottedUnused = true; }, 0, 0},
        {K::Shardles, {{4, 2}}, [](LevelSet& s) { s.Record(1).CenterLineUnused = true; }, 0, 0},
        {K::Shardles, {{8, 2}}, [](LevelSet& s) { s.Record(1).ZigZagUnused = true; }, 0, 0},
        {K::Shardles, {{13, 2}}, [](LevelSet& s) { s.Record(1).CustomUnused = true; }, 0, 0},
        {K::Shardles, {{3, 1}, {5, 1}, {7, 1}, {9, 1}, {10, 1}, {14, 1}, {15, 3}}, Nothing, 0, 0},
        {K::Shardles, {{15, 3}}, [](LevelSet& s) { s.ArrowBlocksBreakable = true; }, 3, 0},
        {K::Shardles, {{11, 3}, {12, 3}}, Nothing, 6, 0},
        {K::Shardles, {{11, 1}, {12, 5}}, Nothing, 10, 0},
        {K::Shardles, {{11, 1}, {12, 5}}, [](LevelSet& s) { s.MatchLocksToBlocks = false; }, 6, 0},
        {K::Tiltbash, {{1, 1}, {8, 1}, {15, 1}}, Nothing, 3, 0},
        {K::Tiltbash, {{1, 1}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1}, {7, 1}, {9, 1}, {10, 1}, {11, 1}, {12, 1},
                       {13, 1}, {14, 1}, {15, 1}},
         [](LevelSet& s) { s.Record(1).SpecialUnusedCount = 1; }, 18, 0},
    };
    int row = 0;
    for (const CountCase& c : cases) {
        LevelSet set = NewSet(c.kind);
        set.MatchLocksToBlocks = true;
        std::size_t at = 0;
        for (const auto& [code, count] : c.cells)
            for (int k = 0; k < count; ++k) set.Layout(1).Cells[at++] = static_cast<std::uint8_t>(code);
        c.tweak(set);
        const BlockCounts counts = ComputeBlockCounts(set, 1);
        EXPECT_EQ(counts.blockCount, c.blocks) << "row " << row;
        EXPECT_EQ(counts.lastBlockCount, c.last) << "row " << row;
        EXPECT_EQ(counts.missingLastBlocks, c.kind == K::Shardles && c.last == 0) << "row " << row++;
    }
    EXPECT_EQ(NoLastBlocksMessage(3), "Level #3 has no Last Blocks.");
}

TEST(CountBlocks, SavingCountsEveryLevelUpToTheFirstWithoutLastBlocks) {
    LevelSet set = NewSet(GameKind::Shardles);
    MakeLevels(set, 4);
    for (int level : {1, 2, 4}) set.Layout(level).Cells[0] = 6;
    set.Layout(1).Cells[1] = 1;
    set.Layout(4).BlockCount = 99;
    EXPECT_EQ(CountAllLevels(set), 3);
    EXPECT_EQ(set.Layout(1).BlockCount, 1);
    EXPECT_EQ(set.Layout(2).LastBlockCount, 1);
    EXPECT_EQ(set.Layout(4).BlockCount, 99);  // not reached
    set.Layout(3).Cells[0] = 6;
    EXPECT_EQ(CountAllLevels(set), 0);
    EXPECT_EQ(set.Layout(4).BlockCount, 0);
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    EXPECT_EQ(CountAllLevels(tiltbash), 0);
}

TEST(DebugChecks, NineQuestionsInTheirOrderWithTheirTextsAndAnswers) {
    const auto& checks = DebugChecks();
    // Their texts are checked where they are shown: the editor's and --check's tests.
    const Toggle order[9] = {Toggle::Spotted, Toggle::CenterLine, Toggle::ZigZag, Toggle::Custom, Toggle::CenterLine,
                             Toggle::ZigZag, Toggle::Custom, Toggle::Spotted, Toggle::CustomShardles};
    // Each check holds for its own record and no other.
    const LevelRecord records[9] = {{.SpottedCount = 1}, {.CenterLineCount = 1}, {.ZigZagCount = 1},
                                    {.CustomCount = 1},
                                    {.CenterLineUnused = true, .CenterLineChangerCount = 1},
                                    {.ZigZagUnused = true, .ZigZagChangerCount = 1},
                                    {.CustomUnused = true, .CustomChangerCount = 1},
                                    {.SpottedUnused = true, .SpottedChangerCount = 1}, {.CustomChangerCount = 1}};
    for (int i = 0; i < 9; ++i) {
        EXPECT_EQ(checks[static_cast<std::size_t>(i)].onYes, order[i]) << i;
        LevelSet set = NewSet(GameKind::Shardles);
        set.UseCustomShardles = i != 8;
        set.Record(1) = records[i];
        for (int j = 0; j < 9; ++j)
            EXPECT_EQ(checks[static_cast<std::size_t>(j)].holds(set, 1), i == j)
                << "record " << i << ", check " << j;
    }
    LevelSet inUse = NewSet(GameKind::Shardles);  // shardles with their changers, every kind in use
    inUse.UseCustomShardles = true;
    inUse.Record(1) = {.SpottedCount = 1, .SpottedChangerCount = 1, .ZigZagCount = 1, .ZigZagChangerCount = 1,
                       .CenterLineCount = 1, .CenterLineChangerCount = 1, .CustomCount = 1, .CustomChangerCount = 1};
    for (const DebugCheck& check : checks) EXPECT_FALSE(check.holds(inUse, 1)) << check.question;
}

std::vector<int> SetCells(const PiecePicture& picture) {
    std::vector<int> cells;
    for (int n = 1; n <= 60; ++n)
        if (picture.at(n) == 1) cells.push_back(n);
    return cells;
}

TEST(CustomPiece, DefaultsClicksResetAndOkAsTheDialogHasThem) {
    LevelSet set = NewSet(GameKind::Shardles);
    CustomPieceEdit normal(set, PictureKind::Normal);
    normal.Default();
    normal.StoreInto(set);
    const std::vector<int> normalCells{1, 2, 3, 4, 5, 6, 7, 10, 18, 19, 28, 29, 38, 39, 48, 49,
                                       51, 52, 53, 54, 55, 56, 57, 60};
    EXPECT_EQ(SetCells(set.CustomShardlePicture), normalCells);
    EXPECT_EQ(SetCells(set.CustomChangerPicture), std::vector<int>{});
    CustomPieceEdit change(set, PictureKind::Change);
    change.Default();
    change.StoreInto(set);
    std::vector<int> changeCells = normalCells;
    for (int n : {11, 12, 13, 14, 20, 21, 22, 23, 24, 30, 31, 32, 33, 34, 40, 41, 42, 43, 44, 50}) changeCells.push_back(n);
    std::sort(changeCells.begin(), changeCells.end());
    EXPECT_EQ(SetCells(set.CustomChangerPicture), changeCells);

    set.CustomShardlePicture.at(5) = 7;  // a digit a source file may bring
    CustomPieceEdit edit(set, PictureKind::Normal);
    edit.Click(8);
    EXPECT_EQ(edit.caption(8), "1");
    edit.Click(8);
    edit.Click(5);
    edit.Click(9);
    EXPECT_EQ(edit.caption(8) + edit.caption(5) + edit.caption(9), "071");
    EXPECT_EQ(set.CustomShardlePicture.at(9), 0);  // nothing stored before OK
    edit.StoreInto(set);
    EXPECT_EQ(set.CustomShardlePicture.at(9), 1);
    edit.Reset();
    EXPECT_EQ(edit.caption(5) + edit.caption(1), "00");
}

}  // namespace
}  // namespace shd
