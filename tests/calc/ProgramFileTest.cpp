#include <gtest/gtest.h>

#include <random>

#include "calc/LevelImage.h"
#include "calc/ProgramFile.h"
#include "calc/CalcTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

using test::ByteAt;
using test::ByteString;
using test::InContainer;

LevelSet TiltbashAB() {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "AB";
    return set;
}

int Word(const std::string& bytes, std::size_t offset) { return ByteAt(bytes, offset) | ByteAt(bytes, offset + 1) << 8; }

// ---------------------------------------------------------------- writer

TEST(CalcProgramWriter, TiltbashTwoCharacterTitleIs120Bytes) {
    const WriteResult file = WriteProgramFile(TiltbashAB(), "ABCDEF");
    ASSERT_TRUE(file.ok) << file.message;
    const std::string& f = file.bytes;
    ASSERT_EQ(f.size(), 120u);
    EXPECT_EQ(f.substr(0, 11), ByteString({0x2A, 0x2A, 0x54, 0x49, 0x38, 0x33, 0x2A, 0x2A, 0x1A, 0x0A, 0x00}));
    EXPECT_EQ(f.substr(11, 42), std::string("Rovak's Shardles & Tiltbash Level Editor") + ByteString({0, 0}));
    EXPECT_EQ(Word(f, 53), 63);
    EXPECT_EQ(Word(f, 55), 11);
    EXPECT_EQ(Word(f, 57), 48);
    EXPECT_EQ(ByteAt(f, 59), 0x06);
    EXPECT_EQ(f.substr(60, 8), std::string("ABCDEF") + ByteString({0, 0}));
    EXPECT_EQ(Word(f, 68), 48);
    EXPECT_EQ(Word(f, 70), 46);
    EXPECT_EQ(f.substr(72, 5), "TL1KZ");
    EXPECT_EQ(f.substr(72, 46), BuildLevelImage(TiltbashAB()).bytes);
    EXPECT_EQ(ByteAt(f, 117), 0);  // the level's BlockCount, last image byte
    // 0x0B + 48 + 6 + "ABCDEF" + 48 + 46, then "TL1KZ" + 7 + "AB" + 3 + 1 = 1080.
    EXPECT_EQ(Word(f, 118), 0x0438);
}

TEST(CalcProgramWriter, CalculatorNameIsPaddedToEightBytes) {
    EXPECT_EQ(WriteProgramFile(TiltbashAB(), "LEVELSET").bytes.substr(60, 8), "LEVELSET");
    EXPECT_EQ(WriteProgramFile(TiltbashAB(), "AB").bytes.substr(60, 8), std::string("AB") + std::string(6, '\0'));
    EXPECT_EQ(WriteProgramFile(TiltbashAB(), "").bytes.substr(60, 8), std::string(8, '\0'));
    const WriteResult tooLong = WriteProgramFile(TiltbashAB(), "NINECHARS");
    EXPECT_FALSE(tooLong.ok);
    EXPECT_NE(tooLong.message.find("NINECHARS"), std::string::npos);
}

TEST(CalcProgramWriter, RefusesWhatTheImageRefuses) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.ExtraLifePoints = "1000";
    const WriteResult file = WriteProgramFile(set, "X");
    EXPECT_FALSE(file.ok);
    EXPECT_TRUE(file.bytes.empty());
    EXPECT_EQ(file.message, BuildLevelImage(set).message);
}

TEST(CalcProgramWriter, LengthsAndChecksumOfALargeSet) {
    // 255 full Shardles levels: the lengths need both bytes and the checksum wraps.
    LevelSet set = test::RandomSet({GameKind::Shardles, 255, true, 20}, 11u);
    for (auto& layout : set.Layouts) std::fill(layout.Cells.begin(), layout.Cells.end(), std::uint8_t{15});
    const std::string f = WriteProgramFile(set, "BIG").bytes;
    const std::size_t n = 6 + 1 + 1 + 24 + 20 + 1 + 1 + 2 + 1 + 255 * 44;
    ASSERT_EQ(f.size(), 74 + n);
    EXPECT_EQ(Word(f, 53), static_cast<int>(n + 17));
    EXPECT_EQ(Word(f, 57), static_cast<int>(n + 2));
    EXPECT_EQ(Word(f, 68), static_cast<int>(n + 2));
    EXPECT_EQ(Word(f, 70), static_cast<int>(n));
    unsigned long sum = 0;
    for (std::size_t i = 55; i < 72 + n; ++i) sum += static_cast<std::uint8_t>(f[i]);
    ASSERT_GT(sum, 65535u);
    EXPECT_EQ(Word(f, 72 + n), static_cast<int>(sum % 65536));
}

// ---------------------------------------------------------------- reader

TEST(CalcProgramReader, TiltbashFileReadsBack) {
    LevelSet set = TiltbashAB();
    set.Layout(1).Cells[63] = 9;
    set.Layout(1).BlockCount = 2;
    const ReadResult read = ReadProgramFile(WriteProgramFile(set, "AB").bytes);
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    test::ExpectSameAsImageCarries(set, read.set);
    EXPECT_EQ(read.set.BonusClock, "30");
    EXPECT_EQ(read.set.ExtraLifePoints, "100");
    EXPECT_FALSE(read.set.UseCustomShardles);
}

std::string ShardlesImage(int settings, int countOffset, const std::string& pictures, const std::string& title,
                          const std::string& levels, int levelCount = 1) {
    return std::string("Shd1KZ") + ByteString({settings, countOffset}) + pictures + title +
           ByteString({0, static_cast<int>(title.size()) + 1, 0, 0, levelCount}) + levels;
}

const std::string kEmptyShardlesLevel(44, '\0');

TEST(CalcProgramReader, SettingsByte) {
    struct Case {
        int byte;
        const char* bonus;
        const char* life;
        bool wrap;
        bool arrow;
    };
    for (const Case& c : {Case{0x7F, "120", "800", true, true}, Case{0x00, "30", "100", false, false},
                          Case{0x9C, "30", "800", false, false}, Case{0x29, "60", "300", false, true},
                          Case{0x42, "90", "100", true, false}}) {
        const ReadResult read = ReadProgramFile(InContainer(ShardlesImage(c.byte, 7, "", "AB", kEmptyShardlesLevel)));
        SCOPED_TRACE(c.byte);
        ASSERT_TRUE(read.complete());
        EXPECT_EQ(read.set.Kind, GameKind::Shardles);
        EXPECT_EQ(read.set.BonusClock, c.bonus);
        EXPECT_EQ(read.set.ExtraLifePoints, c.life);
        EXPECT_EQ(read.set.UseWrapAround, c.wrap);
        EXPECT_EQ(read.set.ArrowBlocksBreakable, c.arrow);
        EXPECT_FALSE(read.set.UseCustomShardles);
        EXPECT_TRUE(read.set.UseShardlesDebugger);
    }
}

TEST(CalcProgramReader, CountOffsetDecidesThePictures) {
    // CountOffset 31: a two-character title after 24 picture bytes.
    std::string pictures(24, '\0');
    pictures[0] = 0x01;   // shardle row 0: in-row number 1
    pictures[6] = '\x80';  // shardle row 0: in-row number 10
    pictures[13] = 0x01;  // changer row 1: in-row number 1
    pictures[18] = 0x3F;  // changer row 0, 9-10 group: the low bits mean nothing
    pictures[23] = 0x40;  // changer row 5: in-row number 9
    ReadResult read = ReadProgramFile(InContainer(ShardlesImage(0, 31, pictures, "AB", kEmptyShardlesLevel)));
    ASSERT_TRUE(read.complete());
    EXPECT_TRUE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, "AB");
    PiecePicture shardle, changer;
    shardle.at(1) = 1;
    shardle.at(10) = 1;
    changer.at(11) = 1;
    changer.at(59) = 1;
    EXPECT_EQ(read.set.CustomShardlePicture, shardle);
    EXPECT_EQ(read.set.CustomChangerPicture, changer);

    // CountOffset 25: a twenty-character title and no pictures.
    const std::string title(20, 'T');
    read = ReadProgramFile(InContainer(ShardlesImage(0, 25, "", title, kEmptyShardlesLevel)));
    ASSERT_TRUE(read.complete());
    EXPECT_FALSE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, title);
    EXPECT_EQ(read.set.CustomShardlePicture, PiecePicture{});
}

TEST(CalcProgramReader, PicturesWithShortTitlesFollowTheLayoutThatFits) {
    for (int length : {0, 1}) {
        LevelSet set = test::RandomSet({GameKind::Shardles, 2, true, length}, 5u + static_cast<unsigned>(length));
        const std::string file = WriteProgramFile(set, "P").bytes;
        ASSERT_EQ(ByteAt(file, 72 + 7), 29 + length);
        const ReadResult read = ReadProgramFile(file);
        ASSERT_TRUE(read.complete()) << read.outcome.why;
        test::ExpectSameAsImageCarries(set, read.set);
    }
}

TEST(CalcProgramReader, ThresholdDecidesWhenNoLayoutFits) {
    // The TitleBackOffset byte is wrong for both layouts: 30 means no
    // pictures, 31 means pictures.
    auto image = [](int countOffset) {
        std::string bytes = std::string("Shd1KZ") + ByteString({0, countOffset});
        const std::size_t countAt = 7 + static_cast<std::size_t>(countOffset);
        bytes += std::string(countAt - 4 - bytes.size(), 'x');  // title up to the terminator
        bytes += ByteString({0, 99, 0, 0, 1}) + kEmptyShardlesLevel;
        return bytes;
    };
    ReadResult read = ReadProgramFile(InContainer(image(30)));
    ASSERT_TRUE(read.complete());
    EXPECT_FALSE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, std::string(25, 'x'));
    read = ReadProgramFile(InContainer(image(31)));
    ASSERT_TRUE(read.complete());
    EXPECT_TRUE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, std::string(2, 'x'));
    EXPECT_EQ(read.set.CustomShardlePicture.at(4), 1);  // 'x' is 0x78: in-row numbers 4 to 7
}

TEST(CalcProgramReader, TiltbashNeverCarriesPictures) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = std::string(40, 'L');  // CountOffset 45, well above the threshold
    const ReadResult read = ReadProgramFile(WriteProgramFile(set, "T").bytes);
    ASSERT_TRUE(read.complete());
    EXPECT_FALSE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, set.Title);
}

TEST(CalcProgramReader, GridBytesSplitIntoNibblesAndNumbersStayUnsigned) {
    std::string level(44, '\0');
    level[0] = '\xF0';
    level[1] = 0x0F;
    level[39] = '\xAB';
    level[40] = '\xC8';  // BallX 200
    level[41] = '\xFF';
    level[42] = '\x80';
    level[43] = 0x01;
    const ReadResult read = ReadProgramFile(InContainer(ShardlesImage(0, 5, "", "", level)));
    ASSERT_TRUE(read.complete());
    const LevelLayout& got = read.set.Layout(1);
    EXPECT_EQ(got.Cells[0], 15);
    EXPECT_EQ(got.Cells[1], 0);
    EXPECT_EQ(got.Cells[2], 0);
    EXPECT_EQ(got.Cells[3], 15);
    EXPECT_EQ(got.Cells[78], 10);
    EXPECT_EQ(got.Cells[79], 11);
    EXPECT_EQ(got.BallX, 200);
    EXPECT_EQ(got.BallY, 255);
    EXPECT_EQ(got.BlockCount, 128);
    EXPECT_EQ(got.LastBlockCount, 1);
}

TEST(CalcProgramReader, EmptyTitleTakesTheCountFourBytesOn) {
    // Reserved bytes that are not 0 must not matter.
    const std::string image = std::string("TL1KZ") + ByteString({5, 0, 1, 7, 7, 2}) + std::string(66, '\0');
    const ReadResult read = ReadProgramFile(InContainer(image));
    ASSERT_TRUE(read.complete());
    EXPECT_EQ(read.set.Title, "");
    EXPECT_EQ(read.set.LevelCount(), 2);
}

TEST(CalcProgramReader, ReadsExactly255LevelsAndNothingAfter) {
    LevelSet set = test::RandomSet({GameKind::Tiltbash, 255, false, 9}, 3u);
    const ReadResult read = ReadProgramFile(WriteProgramFile(set, "L").bytes + "trailing bytes\xFF");
    ASSERT_TRUE(read.complete());
    test::ExpectSameAsImageCarries(set, read.set);
}

TEST(CalcProgramReader, OtherFirstLetterIsRefused) {
    const std::string image = std::string("XL1KZ") + ByteString({7}) + "AB" + ByteString({0, 3, 0, 0, 1}) +
                              std::string(33, '\0');
    const ReadResult read = ReadProgramFile(InContainer(image));
    ASSERT_TRUE(read.refused());
    EXPECT_EQ(read.outcome.message, "This is not a Shardles or Tiltbash file.");
    EXPECT_EQ(CheckConsistent(read.set), "");
    EXPECT_EQ(read.set.Title, "Please Add a Title");
}

TEST(CalcProgramReader, NoZStopsTheReadBeforeTheKindTest) {
    const ReadResult read = ReadProgramFile(InContainer("Q no zed here"));
    ASSERT_TRUE(read.stopped());
    EXPECT_EQ(read.outcome.where, "byte 85");
    EXPECT_EQ(CheckConsistent(read.set), "");
}

TEST(CalcProgramReader, LevelCountZeroStops) {
    const std::string image = std::string("Shd1KZ") + ByteString({0x7F, 7}) + "AB" + ByteString({0, 3, 0, 0, 0});
    const ReadResult read = ReadProgramFile(InContainer(image));
    ASSERT_TRUE(read.stopped());
    EXPECT_EQ(read.outcome.where, "byte " + std::to_string(72 + image.size() - 1));
    EXPECT_EQ(CheckConsistent(read.set), "");
    EXPECT_EQ(read.set.Kind, GameKind::Shardles);
    EXPECT_EQ(read.set.LevelCount(), 1);
    EXPECT_EQ(read.set.Layout(1).Cells.size(), 80u);
}

TEST(CalcProgramReader, EveryTruncationStopsWithAConsistentSet) {
    for (const test::SetShape& shape : {test::SetShape{GameKind::Shardles, 2, true, 3},
                                        test::SetShape{GameKind::Tiltbash, 2, false, 3}}) {
        const LevelSet set = test::RandomSet(shape, 21u);
        const std::string file = WriteProgramFile(set, "CUT").bytes;
        const std::string whole = file.substr(0, file.size() - 2);  // the checksum is never read
        ASSERT_TRUE(ReadProgramFile(whole).complete());
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const ReadResult read = ReadProgramFile(whole.substr(0, length));
            SCOPED_TRACE(length);
            ASSERT_TRUE(read.stopped());
            EXPECT_EQ(read.outcome.where.rfind("byte ", 0), 0u);
            EXPECT_EQ(CheckConsistent(read.set), "");
        }
    }
    const ReadResult empty = ReadProgramFile("");
    EXPECT_TRUE(empty.stopped());
    EXPECT_EQ(empty.outcome.where, "byte 72");
}

TEST(CalcProgramReader, RandomBytesNeverBreakTheSet) {
    std::mt19937 rng(1234);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 600);
    const std::string prefixes[] = {"Shd1KZ", "TL1KZ", "S", "T", ""};
    for (int i = 0; i < 3000; ++i) {
        std::string bytes = InContainer(prefixes[i % 5]);
        const int extra = length(rng);
        for (int j = 0; j < extra; ++j) bytes.push_back(static_cast<char>(byte(rng)));
        const ReadResult read = ReadProgramFile(bytes);
        ASSERT_EQ(CheckConsistent(read.set), "") << "input " << i;
        if (read.stopped()) {
            ASSERT_FALSE(read.outcome.where.empty());
        }
    }
}

}  // namespace
}  // namespace shd
