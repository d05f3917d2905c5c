// Block counting, the debugger's checks and the custom piece rules.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "rules/CustomPiece.h"
#include "rules/LevelChecks.h"
#include "support/Support.h"

namespace shd {
namespace {

TEST(CountBlocks, WeighsEachCodeByTheGameAndTheLevelsOptions) {
    const std::map<std::string, void (*)(LevelSet&)> options{
        {"spotted-unused", [](LevelSet& s) { s.Record(1).SpottedUnused = true; }},
        {"center-line-unused", [](LevelSet& s) { s.Record(1).CenterLineUnused = true; }},
        {"zig-zag-unused", [](LevelSet& s) { s.Record(1).ZigZagUnused = true; }},
        {"custom-unused", [](LevelSet& s) { s.Record(1).CustomUnused = true; }},
        {"arrows-breakable", [](LevelSet& s) { s.ArrowBlocksBreakable = true; }},
        {"no-match-locks", [](LevelSet& s) { s.MatchLocksToBlocks = false; }}};
    std::istringstream lines(test::ReadFile(test::DataDir() / "rules/counts.txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        SCOPED_TRACE(line);
        std::istringstream words(line);
        std::string game, word;
        words >> game;
        LevelSet set = NewSet(game == "tiltbash" ? GameKind::Tiltbash : GameKind::Shardles);
        std::size_t at = 0;
        while (words >> word && word != "=") {
            if (const auto times = word.find('*'); times != std::string::npos)
                for (int k = std::stoi(word.substr(times + 1)); k > 0; --k)
                    set.Layout(1).Cells.at(at++) = static_cast<std::uint8_t>(std::stoi(word));
            else if (word.starts_with("special="))
                set.Record(1).SpecialUnusedCount = static_cast<std::int16_t>(std::stoi(word.substr(8)));
            else options.at(word)(set);
        }
        int blocks = 0, last = 0;
        ASSERT_TRUE(words >> blocks >> last);
        const BlockCounts counts = ComputeBlockCounts(set, 1);
        EXPECT_EQ(counts.blockCount, blocks);
        EXPECT_EQ(counts.lastBlockCount, last);
        EXPECT_EQ(counts.missingLastBlocks, set.IsShardles() && last == 0);
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
