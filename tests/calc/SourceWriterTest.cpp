#include <gtest/gtest.h>

#include <sstream>
#include <vector>

#include "calc/LevelImage.h"
#include "calc/SourceFile.h"
#include "support/Generators.h"

namespace shd {
namespace {

const std::string kDb = "        .db             ";

// Splits on CR LF and checks that nothing else ends a line.
std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find("\r\n", start);
        if (end == std::string::npos) {
            ADD_FAILURE() << "text after the last CR LF: " << text.substr(start);
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 2;
    }
    for (const auto& line : lines) EXPECT_EQ(line.find_first_of("\r\n"), std::string::npos) << line;
    return lines;
}

std::vector<std::string> Write(const LevelSet& set) {
    const WriteResult source = WriteSourceFile(set);
    EXPECT_TRUE(source.ok) << source.message;
    return Lines(source.bytes);
}

TEST(CalcSourceWriter, TiltbashTwoCharacterTitleGivesTwentyOneLines) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "AB";
    std::vector<std::string> want = {
        "        .org             9327h", kDb + "\"TL1KZ\"", kDb + "7", kDb + "\"AB\",$00", kDb + "3",
        kDb + "$00,$00",                   kDb + "1",         "",          "level1:"};
    for (int row = 0; row < 8; ++row) want.push_back(kDb + "$00,$00,$00,$00");
    for (const char* tail : {"        .db             0", "", ".end", "END"}) want.push_back(tail);
    ASSERT_EQ(want.size(), 21u);
    EXPECT_EQ(Write(set), want);
    EXPECT_EQ(WriteSourceFile(set).bytes.substr(WriteSourceFile(set).bytes.size() - 5), "END\r\n");
}

TEST(CalcSourceWriter, ShardlesHeaderAndLevelLines) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "Hi";
    set.BonusClock = "60";
    set.ExtraLifePoints = "300";
    set.ArrowBlocksBreakable = true;
    LevelLayout& level = set.Layout(1);
    const std::uint8_t row[8] = {10, 11, 12, 13, 14, 15, 0, 1};
    std::copy(row, row + 8, level.Cells.begin() + 72);  // row 9, the last
    level.BallX = 12;
    level.BallY = 5;
    level.BlockCount = 200;
    level.LastBlockCount = 1;
    const auto lines = Write(set);
    ASSERT_EQ(lines.size(), 1u + 1 + 1 + 1 + 1 + 1 + 1 + 1 + 1 + 1 + 10 + 1 + 1 + 2);
    EXPECT_EQ(lines[1], kDb + "\"Shd1KZ\"");
    EXPECT_EQ(lines[2], kDb + "%00101001");
    EXPECT_EQ(lines[3], kDb + "7");
    EXPECT_EQ(lines[4], kDb + "\"Hi\",$00");
    EXPECT_EQ(lines[9], "level1:");
    EXPECT_EQ(lines[10], kDb + "$00,$00,$00,$00");
    EXPECT_EQ(lines[19], kDb + "$AB,$CD,$EF,$01");
    EXPECT_EQ(lines[20], kDb + "12,5,200,1");
    EXPECT_EQ(lines[21], "");
}

TEST(CalcSourceWriter, SettingsLineAlwaysStartsWithPercentZero) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.BonusClock = "120";
    set.ExtraLifePoints = "800";
    set.UseWrapAround = set.ArrowBlocksBreakable = true;
    EXPECT_EQ(Write(set)[2], kDb + "%01111111");
    set = NewSet(GameKind::Shardles);
    EXPECT_EQ(Write(set)[2], kDb + "%00000000");
}

TEST(CalcSourceWriter, PictureRows) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "Sixsix";
    set.UseCustomShardles = true;
    set.CustomShardlePicture.at(1) = 1;
    // Row 1 is cells 11 to 20: 18 down to 11, then 20 and 19.
    set.CustomShardlePicture.at(18) = 1;
    set.CustomShardlePicture.at(12) = 1;
    set.CustomShardlePicture.at(20) = 1;
    set.CustomChangerPicture.at(59) = 1;
    set.CustomChangerPicture.at(51) = 1;
    const auto lines = Write(set);
    EXPECT_EQ(lines[3], kDb + "35");
    EXPECT_EQ(lines[4], "blockD:");
    const std::vector<std::string> shardle(lines.begin() + 5, lines.begin() + 17);
    EXPECT_EQ(shardle[0], kDb + "00000001b");
    EXPECT_EQ(shardle[1], kDb + "10000010b");
    for (int row : {2, 3, 4, 5}) EXPECT_EQ(shardle[static_cast<std::size_t>(row)], kDb + "00000000b");
    EXPECT_EQ(shardle[6], kDb + "00000000b");
    EXPECT_EQ(shardle[7], kDb + "10000000b");
    EXPECT_EQ(lines[17], "blockE:");
    EXPECT_EQ(lines[18 + 5], kDb + "00000001b");
    EXPECT_EQ(lines[18 + 11], kDb + "01000000b");
    EXPECT_EQ(lines[30], kDb + "\"Sixsix\",$00");
    EXPECT_EQ(lines[31], kDb + "7");
}

TEST(CalcSourceWriter, NoPicturesWithoutTheOptionOrInTiltbash) {
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    tiltbash.UseCustomShardles = true;
    tiltbash.Title = "";
    const auto lines = Write(tiltbash);
    EXPECT_EQ(lines[2], kDb + "5");
    EXPECT_EQ(lines[3], kDb + "\"\",$00");
    EXPECT_EQ(lines[4], kDb + "1");
}

TEST(CalcSourceWriter, TwoHundredFiftyFiveLabelsThenEnd) {
    LevelSet set = test::RandomSet({GameKind::Tiltbash, 255, false, 4}, 8u);
    const auto lines = Write(set);
    std::vector<std::string> labels;
    for (const auto& line : lines)
        if (line.rfind("level", 0) == 0) labels.push_back(line);
    ASSERT_EQ(labels.size(), 255u);
    for (int level = 1; level <= 255; ++level)
        EXPECT_EQ(labels[static_cast<std::size_t>(level - 1)], "level" + std::to_string(level) + ":");
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[lines.size() - 4], kDb + std::to_string(set.Layout(255).BlockCount));
    EXPECT_EQ(lines[lines.size() - 2], ".end");
    EXPECT_EQ(lines.size(), 8u + 255 * (1 + 8 + 1 + 1) + 2);
}

TEST(CalcSourceWriter, TitleIsWrittenUnchanged) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "Say \"hi\"; x,y \xE9";
    EXPECT_EQ(Write(set)[3], kDb + "\"Say \"hi\"; x,y \xE9\",$00");
}

TEST(CalcSourceWriter, NumbersTakeTheLowByte) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Layout(1).BallX = -1;
    set.Layout(1).BlockCount = 300;
    EXPECT_EQ(Write(set)[20], kDb + "255,0,44,0");
}

TEST(CalcSourceWriter, RefusesWhatTheImageRefuses) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.BonusClock = "31";
    WriteResult source = WriteSourceFile(set);
    EXPECT_FALSE(source.ok);
    EXPECT_EQ(source.message, BuildLevelImage(set).message);
    set.BonusClock = "30";
    set.UseCustomShardles = true;
    set.Title = std::string(227, 'x');
    source = WriteSourceFile(set);
    EXPECT_FALSE(source.ok);
    EXPECT_EQ(source.message, BuildLevelImage(set).message);
}

}  // namespace
}  // namespace shd
