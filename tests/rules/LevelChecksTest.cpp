#include <gtest/gtest.h>

#include <algorithm>

#include "rules/CustomPiece.h"
#include "rules/LevelChecks.h"

namespace shd {
namespace {

LevelSet WithCells(GameKind kind, std::initializer_list<std::pair<int, int>> codes) {
    LevelSet set = NewSet(kind);
    int i = 0;
    for (auto [code, count] : codes)
        for (int k = 0; k < count; ++k) set.Current().Cells[static_cast<std::size_t>(i++)] = static_cast<std::uint8_t>(code);
    return set;
}

TEST(CountBlocks, EmptyShardlesLevelHasNoLastBlocks) {
    const BlockCounts c = ComputeBlockCounts(NewSet(GameKind::Shardles), 1);
    EXPECT_EQ(c.blockCount, 0);
    EXPECT_EQ(c.lastBlockCount, 0);
    EXPECT_TRUE(c.missingLastBlocks);
    EXPECT_EQ(NoLastBlocksMessage(3), "Level #3 has no Last Blocks.");
}

TEST(CountBlocks, SpecialUnusedCountIsSubtractedAndMayGoNegative) {
    LevelSet set = WithCells(GameKind::Shardles, {{1, 10}, {6, 1}});
    set.CurrentRecord().SpecialUnusedCount = 3;
    BlockCounts c = ComputeBlockCounts(set, 1);
    EXPECT_EQ(c.blockCount, 7);
    EXPECT_EQ(c.lastBlockCount, 1);
    EXPECT_FALSE(c.missingLastBlocks);
    set.CurrentRecord().SpecialUnusedCount = 15;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, -5);
}

TEST(CountBlocks, ShardlesCountOnlyWhileTheirKindIsInUse) {
    struct Case { int code; bool LevelRecord::*unused; };
    for (Case k : {Case{2, &LevelRecord::SpottedUnused}, Case{4, &LevelRecord::CenterLineUnused},
                   Case{8, &LevelRecord::ZigZagUnused}, Case{13, &LevelRecord::CustomUnused}}) {
        LevelSet set = WithCells(GameKind::Shardles, {{k.code, 2}, {6, 1}});
        EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 2) << k.code;
        set.CurrentRecord().*k.unused = true;
        EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 0) << k.code;
    }
    // Changers, last blocks and the codes without a weight add nothing.
    EXPECT_EQ(ComputeBlockCounts(WithCells(GameKind::Shardles, {{3, 1}, {5, 1}, {6, 2}, {7, 1}, {9, 1}, {10, 1}, {14, 1}}), 1)
                  .blockCount,
              0);
}

TEST(CountBlocks, MatchLocksWeighsElevenAndTwelve) {
    LevelSet set = WithCells(GameKind::Shardles, {{11, 3}, {12, 3}, {6, 1}});
    set.MatchLocksToBlocks = false;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 6);
    set.MatchLocksToBlocks = true;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 6);
    set = WithCells(GameKind::Shardles, {{12, 5}, {11, 1}, {6, 1}});
    set.MatchLocksToBlocks = false;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 6);
    set.MatchLocksToBlocks = true;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 10);
}

TEST(CountBlocks, ArrowBlocksCountOnlyWhenBreakable) {
    LevelSet set = WithCells(GameKind::Shardles, {{15, 4}, {6, 1}});
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 0);
    set.ArrowBlocksBreakable = true;
    EXPECT_EQ(ComputeBlockCounts(set, 1).blockCount, 4);
}

TEST(CountBlocks, TiltbashWeighsOneTwoOrNothingAndNeverWantsLastBlocks) {
    const BlockCounts c = ComputeBlockCounts(WithCells(GameKind::Tiltbash, {{1, 1}, {8, 1}, {15, 1}}), 1);
    EXPECT_EQ(c.blockCount, 3);
    EXPECT_EQ(c.lastBlockCount, 0);
    EXPECT_FALSE(c.missingLastBlocks);
    int expected = 0;
    LevelSet all = NewSet(GameKind::Tiltbash);
    for (int code = 0; code < 16; ++code) {
        all.Current().Cells[static_cast<std::size_t>(code)] = static_cast<std::uint8_t>(code);
        expected += code >= 1 && code <= 7 ? 1 : code >= 8 && code <= 14 ? 2 : 0;
    }
    all.MatchLocksToBlocks = true;  // a Shardles-only option
    EXPECT_EQ(ComputeBlockCounts(all, 1).blockCount, expected);
    EXPECT_EQ(expected, 21);
}

TEST(DebugChecks, QuestionsKeepTheirExactTextsInOrder) {
    const auto& checks = DebugChecks();
    EXPECT_EQ(std::string(checks[0].question), "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?");
    EXPECT_EQ(std::string(checks[4].question),
              "You have a Center-Line Changer, but Center-Line's are Unused!  Make Center-Line a Used Shardle?");
    EXPECT_EQ(std::string(checks[8].question),
              "You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom Shardles?");
    const Toggle order[9] = {Toggle::Spotted, Toggle::CenterLine, Toggle::ZigZag, Toggle::Custom, Toggle::CenterLine,
                             Toggle::ZigZag, Toggle::Custom, Toggle::Spotted, Toggle::CustomShardles};
    for (int i = 0; i < 9; ++i) EXPECT_EQ(checks[static_cast<std::size_t>(i)].onYes, order[i]) << i;
}

// The Default pictures as cell lists.
std::vector<int> SetCells(const LevelSet& set, PictureKind kind) {
    std::vector<int> cells;
    const PiecePicture& p = kind == PictureKind::Normal ? set.CustomShardlePicture : set.CustomChangerPicture;
    for (int n = 1; n <= 60; ++n)
        if (p.at(n) == 1) cells.push_back(n);
    return cells;
}

TEST(CustomPiece, DefaultPicturesForNormalAndChange) {
    LevelSet set = NewSet(GameKind::Shardles);
    CustomPieceEdit normal(set, PictureKind::Normal);
    normal.Default();
    normal.StoreInto(set);
    const std::vector<int> normalCells{1, 2, 3, 4, 5, 6, 7, 10, 18, 19, 28, 29, 38, 39, 48, 49,
                                       51, 52, 53, 54, 55, 56, 57, 60};
    EXPECT_EQ(SetCells(set, PictureKind::Normal), normalCells);
    EXPECT_EQ(SetCells(set, PictureKind::Change), std::vector<int>{});

    CustomPieceEdit change(set, PictureKind::Change);
    change.Default();
    change.StoreInto(set);
    std::vector<int> changeCells = normalCells;
    for (int n : {11, 12, 13, 14, 20, 21, 22, 23, 24, 30, 31, 32, 33, 34, 40, 41, 42, 43, 44, 50}) changeCells.push_back(n);
    std::sort(changeCells.begin(), changeCells.end());
    EXPECT_EQ(SetCells(set, PictureKind::Change), changeCells);
    EXPECT_EQ(SetCells(set, PictureKind::Normal), normalCells);  // untouched
}

TEST(CustomPiece, ClickTogglesOnlyZeroAndOneAndNothingIsStoredBeforeOk) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.CustomShardlePicture.at(5) = 7;  // a digit a source file may bring
    CustomPieceEdit edit(set, PictureKind::Normal);
    edit.Click(8);
    EXPECT_EQ(edit.caption(8), "1");
    edit.Click(8);
    EXPECT_EQ(edit.caption(8), "0");
    edit.Click(5);
    EXPECT_EQ(edit.caption(5), "7");
    edit.Click(9);
    EXPECT_EQ(set.CustomShardlePicture.at(9), 0);
    edit.StoreInto(set);
    EXPECT_EQ(set.CustomShardlePicture.at(9), 1);
    EXPECT_EQ(set.CustomShardlePicture.at(5), 7);
    edit.Reset();
    EXPECT_EQ(edit.caption(5), "0");
}

TEST(CustomPiece, LabelsStandInTheDisplayedColumnOrder) {
    EXPECT_EQ(CustomPieceEdit::LabelLeft(8), 840);   // top-left corner
    EXPECT_EQ(CustomPieceEdit::LabelLeft(1), 2520);
    EXPECT_EQ(CustomPieceEdit::LabelLeft(10), 2760);
    EXPECT_EQ(CustomPieceEdit::LabelLeft(9), 3000);  // top-right corner
    EXPECT_EQ(CustomPieceEdit::LabelTop(9), 240);
    EXPECT_EQ(CustomPieceEdit::LabelTop(59), 240 + 360 * 5);
    EXPECT_EQ(CustomPieceEdit::CellAt(5, 0), 58);
    EXPECT_EQ(CustomPieceEdit::CellAt(5, 9), 59);
    for (int n = 1; n <= 60; ++n) EXPECT_EQ(CustomPieceEdit::CellAt((n - 1) / 10, CustomPieceEdit::DisplayedPosition(n)), n);
}

}  // namespace
}  // namespace shd
