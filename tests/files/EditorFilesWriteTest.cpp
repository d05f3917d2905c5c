// The My File and list file writers, byte for byte.
#include <gtest/gtest.h>

#include "files/EditorFiles.h"
#include "files/FileTestSupport.h"

namespace shd {
namespace {

using test::SplitCrLf;

std::string Repeat(const std::string& text, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += text;
    return out;
}

TEST(EditorFileWriters, TiltbashFilesAreByteExact) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    MakeLevels(set, 2);
    set.Title = "Two";
    set.Layout(1).Cells[0] = 3;
    set.Layout(1).BlockCount = 1;
    set.Layout(2).Cells[63] = 15;
    set.Layout(2).BlockCount = -32768;
    EXPECT_EQ(WriteMyFile(set).bytes, "QUARTLEV\r\nTwo\r\nFalse\r\n 2 \r\n3," + Repeat("0,", 62) + " 0 \r\n 1 \r\n" +
                                          Repeat("0,", 63) + " 15 \r\n-32768 \r\n");
    std::vector<std::string> list{"Two", "//LQRVLE", "False", " 2 ", " 3 "};
    list.insert(list.end(), 63, " 0 ");
    list.push_back("1");
    list.insert(list.end(), 63, " 0 ");
    list.insert(list.end(), {" 15 ", "-32768"});
    ASSERT_EQ(list.size(), 134u);
    EXPECT_EQ(SplitCrLf(WriteListFile(set).bytes), list);
}

// My File: 11 set-wide lines, 13 with the two picture rows, and three lines
// to a level. List file: the same set-wide lines after the title and header,
// then a cell to a line and four plain numbers.
TEST(EditorFileWriters, ShardlesFilesWithAndWithoutPictures) {
    // The first level as the example in the level file description has it,
    // the second with every record field set.
    LevelSet set = NewSet(GameKind::Shardles);
    MakeLevels(set, 2);
    set.Title = "Example";
    set.ArrowBlocksBreakable = true;
    set.ExtraLifePoints = "200";
    set.BonusClock = "90";
    set.MatchLocksToBlocks = false;
    set.Layout(1) = {BlockGrid(80, 0), 7, 1, 40, 30};
    set.Layout(1).Cells[0] = 12;
    set.Layout(1).Cells[79] = 15;
    set.Record(1).CenterLineUnused = true;
    set.Record(1).SpecialUnusedCount = 2;
    set.Layout(2) = {BlockGrid(80, 0), -1, 0, 94, 62};
    set.Record(2) = {true, 11, 5, true, 12, 6, false, 13, 14, true, 15, 4, -2};
    const std::vector<std::string> setWide{"True", " 2 ", "True", "200", "90", "False", "False", "True", "False"};
    std::vector<std::string> mine{"QUARTLEV", "Example"}, list{"Example", "//LQRVLE"};
    mine.insert(mine.end(), setWide.begin(), setWide.end());
    mine.insert(mine.end(), {"12," + Repeat("0,", 78) + " 15 ", "7,1,40,30", "#TRUE#,0,0,0,2",
                             Repeat("0,", 79) + " 0 ", "-1,0,94,62", "#FALSE#,4,5,6,-2"});
    list.insert(list.end(), setWide.begin(), setWide.end());
    list.push_back(" 12 ");
    list.insert(list.end(), 78, " 0 ");
    list.insert(list.end(), {" 15 ", "7", "1", "40", "30"});
    list.insert(list.end(), 80, " 0 ");
    list.insert(list.end(), {"-1", "0", "94", "62"});
    EXPECT_EQ(SplitCrLf(WriteMyFile(set).bytes), mine);
    EXPECT_EQ(SplitCrLf(WriteListFile(set).bytes), list);

    set.UseCustomShardles = true;
    set.CustomShardlePicture.at(1) = set.CustomShardlePicture.at(10) = 1;
    set.CustomShardlePicture.at(60) = 7;
    set.CustomChangerPicture.at(59) = 1;
    const std::vector<std::string> rows{"1," + Repeat("0,", 8) + "1," + Repeat("0,", 49) + " 7 ",
                                        Repeat("0,", 58) + "1, 0 "};
    for (auto* lines : {&mine, &list}) {
        (*lines)[8] = "True";
        lines->insert(lines->begin() + 11, rows.begin(), rows.end());
    }
    EXPECT_EQ(SplitCrLf(WriteMyFile(set).bytes), mine);
    EXPECT_EQ(SplitCrLf(WriteListFile(set).bytes), list);
}

TEST(EditorFileWriters, RefuseSetsTheyCouldNotBringBack) {
    for (auto write : {WriteMyFile, WriteListFile}) {
        const WriteResult noLevels = write(LevelSet{});
        EXPECT_FALSE(noLevels.ok);
        EXPECT_FALSE(noLevels.message.empty());
        LevelSet tiltbash = NewSet(GameKind::Tiltbash);
        LevelSet shardles = NewSet(GameKind::Shardles);
        // A Tiltbash file does not carry the bonus clock, so it cannot break it.
        tiltbash.BonusClock = shardles.BonusClock = "3\n0";
        EXPECT_TRUE(write(tiltbash).ok);
        EXPECT_FALSE(write(shardles).ok);
        tiltbash.Title = "two\r\nlines";
        EXPECT_FALSE(write(tiltbash).ok);
    }
}

}  // namespace
}  // namespace shd
