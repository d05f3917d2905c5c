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

// A Shardles level as the example in the level file description has it.
LevelSet ShardlesExample() {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "Example";
    LevelLayout& layout = set.Layout(1);
    layout.Cells[0] = 12;
    layout.Cells[79] = 15;
    layout.BlockCount = 7;
    layout.LastBlockCount = 1;
    layout.BallX = 40;
    layout.BallY = 30;
    set.Record(1).CenterLineUnused = true;
    set.Record(1).SpecialUnusedCount = 2;
    return set;
}

TEST(MyFileWriter, TiltbashLevelIsByteExact) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "Tilt";
    set.Layout(1).Cells[0] = 3;
    set.Layout(1).BlockCount = 1;
    const WriteResult written = WriteMyFile(set);
    ASSERT_TRUE(written.ok) << written.message;
    EXPECT_EQ(written.bytes,
              "QUARTLEV\r\nTilt\r\nFalse\r\n 1 \r\n3," + Repeat("0,", 62) + " 0 \r\n 1 \r\n");
}

TEST(MyFileWriter, PrintedNumbersCarryTheirBlanks) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    MakeLevels(set, 12);
    set.Layout(1).BlockCount = 12;
    set.Layout(2).BlockCount = -3;
    set.Layout(3).BlockCount = -32768;
    const auto lines = SplitCrLf(WriteMyFile(set).bytes);
    ASSERT_EQ(lines.size(), 4u + 2 * 12);
    EXPECT_EQ(lines[3], " 12 ");
    EXPECT_EQ(lines[5], " 12 ");
    EXPECT_EQ(lines[7], "-3 ");
    EXPECT_EQ(lines[9], "-32768 ");
}

TEST(MyFileWriter, ShardlesSetWideLinesWithoutPictures) {
    LevelSet set = ShardlesExample();
    set.ArrowBlocksBreakable = true;
    set.ExtraLifePoints = "200";
    set.BonusClock = "90";
    set.MatchLocksToBlocks = false;
    const auto lines = SplitCrLf(WriteMyFile(set).bytes);
    ASSERT_EQ(lines.size(), 11u + 3);
    const std::vector<std::string> setWide{"QUARTLEV", "Example", "True", " 1 ", "True", "200",
                                           "90",       "False",   "False", "True", "False"};
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 11), setWide);
    EXPECT_EQ(lines[11], "12," + Repeat("0,", 78) + " 15 ");
    EXPECT_EQ(lines[12], "7,1,40,30");
    EXPECT_EQ(lines[13], "#TRUE#,0,0,0,2");
}

TEST(MyFileWriter, CustomShardlesAddTwoPictureRowsInCellOrder) {
    LevelSet set = ShardlesExample();
    set.UseCustomShardles = true;
    set.CustomShardlePicture.at(1) = 1;
    set.CustomShardlePicture.at(10) = 1;
    set.CustomShardlePicture.at(60) = 7;
    set.CustomChangerPicture.at(8) = 1;
    const auto lines = SplitCrLf(WriteMyFile(set).bytes);
    ASSERT_EQ(lines.size(), 13u + 3);
    EXPECT_EQ(lines[8], "True");
    EXPECT_EQ(lines[11], "1," + Repeat("0,", 8) + "1," + Repeat("0,", 49) + " 7 ");
    EXPECT_EQ(lines[12], Repeat("0,", 7) + "1," + Repeat("0,", 51) + " 0 ");
    EXPECT_EQ(lines[13].substr(0, 3), "12,");
}

TEST(MyFileWriter, RecordLineHoldsItsFiveFieldsInOrder) {
    LevelSet set = ShardlesExample();
    MakeLevels(set, 2);
    LevelRecord& record = set.Record(2);
    record = {true, 11, 5, true, 12, 6, false, 13, 14, true, 15, 4, -2};
    set.Layout(2).BlockCount = -1;
    set.Layout(2).BallX = 94;
    set.Layout(2).BallY = 62;
    const auto lines = SplitCrLf(WriteMyFile(set).bytes);
    ASSERT_EQ(lines.size(), 11u + 6);
    EXPECT_EQ(lines[15], "-1,0,94,62");
    EXPECT_EQ(lines[16], "#FALSE#,4,5,6,-2");
}

TEST(ListFileWriter, TiltbashSetOfTwoLevelsHas134Lines) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    MakeLevels(set, 2);
    set.Title = "Two";
    set.Layout(1).Cells[0] = 3;
    set.Layout(1).BlockCount = 1;
    set.Layout(2).Cells[63] = 15;
    set.Layout(2).BlockCount = -4;
    const WriteResult written = WriteListFile(set);
    ASSERT_TRUE(written.ok) << written.message;
    const auto lines = SplitCrLf(written.bytes);
    ASSERT_EQ(lines.size(), 134u);
    std::vector<std::string> expected{"Two", "//LQRVLE", "False", " 2 ", " 3 "};
    expected.insert(expected.end(), 63, " 0 ");
    expected.push_back("1");
    expected.insert(expected.end(), 63, " 0 ");
    expected.push_back(" 15 ");
    expected.push_back("-4");
    EXPECT_EQ(lines, expected);
}

TEST(ListFileWriter, ShardlesLevelEndsWithFourPlainNumbers) {
    LevelSet set = ShardlesExample();
    set.Layout(1).BlockCount = 12;
    set.Layout(1).BallY = 3;
    set.UseShardlesDebugger = false;
    const auto lines = SplitCrLf(WriteListFile(set).bytes);
    ASSERT_EQ(lines.size(), 11u + 84);
    const std::vector<std::string> setWide{"Example", "//LQRVLE", "True",  " 1 ",  "False", "100",
                                           "30",      "False",    "False", "False", "True"};
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 11), setWide);
    EXPECT_EQ(lines[11], " 12 ");
    EXPECT_EQ(lines[90], " 15 ");
    EXPECT_EQ(std::vector<std::string>(lines.end() - 4, lines.end()),
              (std::vector<std::string>{"12", "1", "40", "3"}));
}

TEST(ListFileWriter, PicturesFollowTheOptionLinesInCellOrder) {
    LevelSet set = ShardlesExample();
    set.UseCustomShardles = true;
    set.CustomShardlePicture.at(2) = 1;
    set.CustomChangerPicture.at(59) = 1;
    const auto lines = SplitCrLf(WriteListFile(set).bytes);
    ASSERT_EQ(lines.size(), 13u + 84);
    EXPECT_EQ(lines[9], "True");
    EXPECT_EQ(lines[10], "True");
    EXPECT_EQ(lines[11], "0,1," + Repeat("0,", 57) + " 0 ");
    EXPECT_EQ(lines[12], Repeat("0,", 58) + "1, 0 ");
    EXPECT_EQ(lines[13], " 12 ");
}

TEST(EditorFileWriters, RefuseSetsTheyCouldNotBringBack) {
    for (auto write : {WriteMyFile, WriteListFile}) {
        const WriteResult noLevels = write(LevelSet{});
        EXPECT_FALSE(noLevels.ok);
        EXPECT_FALSE(noLevels.message.empty());

        LevelSet brokenTitle = NewSet(GameKind::Tiltbash);
        brokenTitle.Title = "two\r\nlines";
        EXPECT_FALSE(write(brokenTitle).ok);

        LevelSet shardles = NewSet(GameKind::Shardles);
        shardles.BonusClock = "3\n0";
        EXPECT_FALSE(write(shardles).ok);
        // A Tiltbash file does not carry the bonus clock, so it cannot break it.
        LevelSet tiltbash = NewSet(GameKind::Tiltbash);
        tiltbash.BonusClock = "3\n0";
        EXPECT_TRUE(write(tiltbash).ok);
    }
}

}  // namespace
}  // namespace shd
