// --check: what the editor's level checks would say, without asking.
#include <gtest/gtest.h>

#include <algorithm>

#include "cli/CliSupport.h"

namespace shd::cli_test {
namespace {

// A Shardles set whose levels hold the given cells from cell 1 on, and a last
// block in cell 0 unless their number is among those without.
LevelSet Shardles(const std::vector<std::vector<int>>& levels, const std::vector<int>& without = {}) {
    LevelSet set = NewSet(GameKind::Shardles);
    for (int level = 1; level <= static_cast<int>(levels.size()); ++level) {
        if (level > 1) AddEmptyLevel(set);
        auto& cells = set.Layout(level).Cells;
        cells[0] = std::ranges::count(without, level) ? 0 : 6;
        std::ranges::copy(levels[static_cast<std::size_t>(level - 1)], cells.begin() + 1);
    }
    return set;
}

TEST(Check, PrintsEachLevelsFindingsAndTheirNumber) {
    // Level 2 lacks last blocks and holds a center-line shardle; level 3 holds
    // shardles without changers and a custom one with custom shardles off;
    // level 4 holds a spotted shardle its record denies, level 5 one its
    // record claims and does not hold. The debugger being off changes nothing.
    LevelSet questions = Shardles({{}, {4}, {2, 4, 8, 13}, {0, 0, 0, 0, 2}, {}, {}}, {2, 6});
    questions.UseShardlesDebugger = false;
    questions.Record(4).SpottedChangerCount = 1;
    questions.Record(5).SpottedCount = 4;
    // Changers of kinds marked unused.
    LevelSet changers = Shardles({{5, 9, 14, 3}});
    changers.Record(1) = {.SpottedUnused = true, .ZigZagUnused = true, .CenterLineUnused = true, .CustomUnused = true};
    changers.UseCustomShardles = true;
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    tiltbash.Layout(1).Cells[0] = 13;  // would be a custom shardle without changer in Shardles

    // Each set is read from the form given, written there by the program.
    const struct {
        LevelSet set;
        const char* extension;
        std::string said;
    } cases[] = {
        {questions, "json",
         "Level 2: Level #2 has no Last Blocks.\n"
         "Level 2: You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?\n"
         "Level 3: You have a Spotted Shardle without a Changer.  Set Spotted as Unused?\n"
         "Level 3: You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?\n"
         "Level 3: You have a Zig-Zag Shardle without a Changer.  Set Zig-Zag as Unused?\n"
         "Level 3: You have a Custom Shardle without a Changer.  Set Custom as Unused?\n"
         "Level 3: You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom "
         "Shardles?\n"
         "Level 4: You have a Spotted Shardle without a Changer.  Set Spotted as Unused?\n"
         "Level 6: Level #6 has no Last Blocks.\n"
         "9 findings\n"},
        {changers, "json",
         "Level 1: You have a Center-Line Changer, but Center-Line's are Unused!  Make Center-Line a Used "
         "Shardle?\n"
         "Level 1: You have a Zig-Zag Changer, but Zig-Zag's are Unused!  Make Zig-Zag a Used Shardle?\n"
         "Level 1: You have a Custom Changer, but Custom's are Unused!  Make Custom a Used Shardle?\n"
         "Level 1: You have a Spotted Changer, but Spotted's are Unused!  Make Spotted a Used Shardle?\n"
         "4 findings\n"},
        {tiltbash, "json", "0 findings\n"},
        {Shardles({{}, {}}, {2}), "z80", "Level 2: Level #2 has no Last Blocks.\n1 finding\n"},
    };
    for (const auto& [set, extension, said] : cases) {
        Folder folder;
        const std::string input = folder / (std::string("set.") + extension);
        WriteJson(folder / "in.json", set);
        ASSERT_EQ(Convert({folder / "in.json", input}).status, 0);
        const Outcome run = Convert({"--check", input});
        EXPECT_EQ(run.out, said);
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, said == "0 findings\n" ? 0 : 1);
    }
}

}  // namespace
}  // namespace shd::cli_test
