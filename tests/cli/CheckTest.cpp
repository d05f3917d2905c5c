// --check: what the editor's level checks would say, without asking.
#include <gtest/gtest.h>

#include "cli/CliSupport.h"

namespace shd::cli_test {
namespace {

Outcome Check(const LevelSet& set) {
    Folder folder;
    WriteJson(folder / "set.json", set);
    return Convert({"--check", folder / "set.json"});
}

LevelSet WithLastBlocks(GameKind kind, int levels) {
    LevelSet set = NewSet(kind);
    for (int i = 1; i < levels; ++i) AddEmptyLevel(set);
    for (auto& layout : set.Layouts) layout.Cells[0] = 6;
    return set;
}

TEST(Check, ACleanSetHasNoFindings) {
    const Outcome run = Check(WithLastBlocks(GameKind::Shardles, 3));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 findings\n");
    EXPECT_EQ(run.err, "");
}

TEST(Check, NamesEveryShardlesLevelWithoutLastBlocks) {
    LevelSet set = WithLastBlocks(GameKind::Shardles, 4);
    set.Layout(2).Cells[0] = 0;
    set.Layout(4).Cells[0] = 0;
    const Outcome run = Check(set);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "Level 2: Level #2 has no Last Blocks.\n"
              "Level 4: Level #4 has no Last Blocks.\n"
              "2 findings\n");
}

TEST(Check, AsksNoQuestionsAboutATiltbashSet) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Layout(1).Cells[0] = 13;  // would be a custom shardle without changer in Shardles
    const Outcome run = Check(set);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "0 findings\n");
}

TEST(Check, GivesEachOfTheNineQuestionsWhenItsConditionHolds) {
    LevelSet set = WithLastBlocks(GameKind::Shardles, 1);
    auto& cells = set.Layout(1).Cells;
    // Shardles without changers for spotted, center-line, zig-zag and custom ...
    cells[1] = 2; cells[2] = 4; cells[3] = 8; cells[4] = 13;
    LevelSet changers = WithLastBlocks(GameKind::Shardles, 1);
    // ... and changers of kinds marked unused.
    changers.Layout(1).Cells[1] = 5;
    changers.Layout(1).Cells[2] = 9;
    changers.Layout(1).Cells[3] = 14;
    changers.Layout(1).Cells[4] = 3;
    changers.Record(1).CenterLineUnused = true;
    changers.Record(1).ZigZagUnused = true;
    changers.Record(1).CustomUnused = true;
    changers.Record(1).SpottedUnused = true;
    changers.UseCustomShardles = true;

    EXPECT_EQ(Check(set).out,
              "Level 1: You have a Spotted Shardle without a Changer.  Set Spotted as Unused?\n"
              "Level 1: You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?\n"
              "Level 1: You have a Zig-Zag Shardle without a Changer.  Set Zig-Zag as Unused?\n"
              "Level 1: You have a Custom Shardle without a Changer.  Set Custom as Unused?\n"
              "Level 1: You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom "
              "Shardles?\n"
              "5 findings\n");
    EXPECT_EQ(Check(changers).out,
              "Level 1: You have a Center-Line Changer, but Center-Line's are Unused!  Make Center-Line a Used "
              "Shardle?\n"
              "Level 1: You have a Zig-Zag Changer, but Zig-Zag's are Unused!  Make Zig-Zag a Used Shardle?\n"
              "Level 1: You have a Custom Changer, but Custom's are Unused!  Make Custom a Used Shardle?\n"
              "Level 1: You have a Spotted Changer, but Spotted's are Unused!  Make Spotted a Used Shardle?\n"
              "4 findings\n");
}

TEST(Check, CountsEachLevelFromItsCellsNotFromTheStoredCounts) {
    LevelSet set = WithLastBlocks(GameKind::Shardles, 3);
    // Level 3 holds a spotted shardle, yet its record says there is none and
    // that it has a changer; level 2 claims a shardle it does not hold.
    set.Layout(3).Cells[5] = 2;
    set.Record(3).SpottedChangerCount = 1;
    set.Record(2).SpottedCount = 4;
    const Outcome run = Check(set);
    EXPECT_EQ(run.out,
              "Level 3: You have a Spotted Shardle without a Changer.  Set Spotted as Unused?\n"
              "1 finding\n");
    EXPECT_EQ(run.status, 1);
}

TEST(Check, RunsEvenWhenTheSetHasTheDebuggerOff) {
    LevelSet set = WithLastBlocks(GameKind::Shardles, 1);
    set.UseShardlesDebugger = false;
    set.Layout(1).Cells[1] = 8;
    EXPECT_EQ(Check(set).out,
              "Level 1: You have a Zig-Zag Shardle without a Changer.  Set Zig-Zag as Unused?\n"
              "1 finding\n");
}

TEST(Check, ReportsTheLastBlocksBeforeTheQuestionsOfTheSameLevel) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Layout(1).Cells[1] = 4;
    EXPECT_EQ(Check(set).out,
              "Level 1: Level #1 has no Last Blocks.\n"
              "Level 1: You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?\n"
              "2 findings\n");
}

TEST(Check, ReadsAnyFormAndRefusesBrokenInputLikeAConversion) {
    Folder folder;
    LevelSet set = WithLastBlocks(GameKind::Shardles, 2);
    set.Layout(2).Cells[0] = 0;
    WriteJson(folder / "set.json", set);
    ASSERT_EQ(Convert({folder / "set.json", folder / "set.z80"}).status, 0);
    const Outcome fromSource = Convert({"--check", folder / "set.z80"});
    EXPECT_EQ(fromSource.out, "Level 2: Level #2 has no Last Blocks.\n1 finding\n");

    WriteBytes(folder / "bad.rsx", "nope\r\n");
    const Outcome bad = Convert({"--check", "--from", "myfile", folder / "bad.rsx"});
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.err, folder / "bad.rsx: Not one of my files.\n");
    EXPECT_EQ(bad.out, "");
}

}  // namespace
}  // namespace shd::cli_test
