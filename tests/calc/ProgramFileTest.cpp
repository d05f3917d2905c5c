#include <gtest/gtest.h>

#include <tuple>

#include "calc/CalcTestSupport.h"
#include "calc/ProgramFile.h"

namespace shd {
namespace {

using test::ByteString;
using test::InContainer;

LevelSet TiltbashAB() {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "AB";
    return set;
}

TEST(CalcProgramWriter, TiltbashTwoCharacterTitleIs120Bytes) {
    const WriteResult file = WriteProgramFile(TiltbashAB(), "ABCDEF");
    ASSERT_TRUE(file.ok) << file.message;
    // Signature, comment, the lengths 63, 11 and 48, the type, the name, 48 and 46 again.
    const std::string header = "**TI83**" + ByteString({0x1A, 0x0A, 0x00}) + "Rovak's Shardles & Tiltbash Level Editor" +
                               ByteString({0, 0, 63, 0, 11, 0, 48, 0, 0x06}) + "ABCDEF" + ByteString({0, 0, 48, 0, 46, 0});
    // The 46-byte image: ID, CountOffset, title, 0, TitleBackOffset, 0, 0, count, one empty level.
    const std::string image = "TL1KZ" + ByteString({7}) + "AB" + ByteString({0x00, 3, 0x00, 0x00, 1}) + std::string(33, '\0');
    // 0x0B + 48 + 6 + "ABCDEF" + 48 + 46, then "TL1KZ" + 7 + "AB" + 3 + 1 = 1080.
    const std::string want = header + image + ByteString({0x38, 0x04});
    ASSERT_EQ(want.size(), 120u);
    EXPECT_EQ(file.bytes, want);
    const WriteResult tooLong = WriteProgramFile(TiltbashAB(), "NINECHARS");  // names have at most 8 characters
    EXPECT_FALSE(tooLong.ok);
    EXPECT_NE(tooLong.message.find("NINECHARS"), std::string::npos);
}

std::string ShardlesImage(int settings, int countOffset, const std::string& pictures, const std::string& title,
                          const std::string& level = std::string(44, '\0')) {
    return std::string("Shd1KZ") + ByteString({settings, countOffset}) + pictures + title +
           ByteString({0, static_cast<int>(title.size()) + 1, 0, 0, 1}) + level;
}

TEST(CalcProgramReader, SettingsByte) {
    for (auto [byte, bonus, life, flags] : {std::tuple{0x7F, "120", "800", true}, {0x00, "30", "100", false},
                                            {0x9C, "30", "800", false}}) {  // the top bit is not looked at
        const ReadResult read = ReadProgramFile(InContainer(ShardlesImage(byte, 7, "", "AB")));
        ASSERT_TRUE(read.complete()) << byte;
        LevelSet want = NewSet(GameKind::Shardles);
        want.Title = "AB";
        std::tie(want.BonusClock, want.ExtraLifePoints, want.UseWrapAround, want.ArrowBlocksBreakable) =
            std::tuple(bonus, life, flags, flags);
        EXPECT_EQ(read.set, want) << byte;
    }
}

TEST(CalcProgramReader, CountOffsetDecidesThePictures) {
    // CountOffset 31: a two-character title after 24 picture bytes.
    std::string pictures(24, '\0');
    pictures[0] = 0x01;    // shardle row 0: in-row number 1
    pictures[6] = '\x80';  // shardle row 0: in-row number 10
    pictures[13] = 0x01;   // changer row 1: in-row number 1
    pictures[18] = 0x3F;   // changer row 0, 9-10 group: the low bits mean nothing
    pictures[23] = 0x40;   // changer row 5: in-row number 9
    ReadResult read = ReadProgramFile(InContainer(ShardlesImage(0, 31, pictures, "AB")));
    ASSERT_TRUE(read.complete());
    EXPECT_TRUE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, "AB");
    PiecePicture shardle, changer;
    shardle.at(1) = shardle.at(10) = changer.at(11) = changer.at(59) = 1;
    EXPECT_EQ(read.set.CustomShardlePicture, shardle);
    EXPECT_EQ(read.set.CustomChangerPicture, changer);

    // CountOffset 25: a twenty-character title and no pictures.
    read = ReadProgramFile(InContainer(ShardlesImage(0, 25, "", std::string(20, 'T'))));
    ASSERT_TRUE(read.complete());
    EXPECT_FALSE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, std::string(20, 'T'));
}

TEST(CalcProgramReader, ThresholdDecidesWhenNoLayoutFits) {
    // The TitleBackOffset byte is wrong for both layouts: above 30 means
    // pictures, but only in a Shardles image.
    struct Case {
        std::string id;  // with the settings byte
        int countOffset;
        bool pictures;
        std::size_t titleLength;
    };
    const std::string shardles = std::string("Shd1KZ") + '\0';
    for (const Case& c : {Case{shardles, 30, false, 25}, Case{shardles, 31, true, 2}, Case{"TL1KZ", 31, false, 26}}) {
        std::string image = c.id + ByteString({c.countOffset});
        image += std::string(c.id.size() + c.countOffset - 4 - image.size(), 'x');  // up to the title's 0x00
        const ReadResult read = ReadProgramFile(InContainer(image + ByteString({0, 99, 0, 0, 1}) + std::string(44, '\0')));
        SCOPED_TRACE(c.id + std::to_string(c.countOffset));
        ASSERT_TRUE(read.complete());
        EXPECT_EQ(read.set.UseCustomShardles, c.pictures);
        EXPECT_EQ(read.set.Title, std::string(c.titleLength, 'x'));
        EXPECT_EQ(read.set.CustomShardlePicture.at(4), c.pictures ? 1 : 0);  // 'x' is 0x78: in-row numbers 4 to 7
    }
}

TEST(CalcProgramReader, GridBytesSplitIntoNibblesAndNumbersStayUnsigned) {
    const std::string level = ByteString({0xF0, 0x0F}) + std::string(37, '\0') + ByteString({0xAB, 200, 0xFF, 0x80, 0x01});
    const ReadResult read = ReadProgramFile(InContainer(ShardlesImage(0, 5, "", "", level)));
    ASSERT_TRUE(read.complete());
    const LevelLayout& got = read.set.Layout(1);
    EXPECT_EQ(std::vector<int>(got.Cells.begin(), got.Cells.begin() + 4), (std::vector<int>{15, 0, 0, 15}));
    EXPECT_EQ(got.Cells[78], 10);
    EXPECT_EQ(got.Cells[79], 11);
    EXPECT_EQ(std::vector<int>({got.BallX, got.BallY, got.BlockCount, got.LastBlockCount}),
              (std::vector<int>{200, 255, 128, 1}));
}

TEST(CalcProgramReader, EmptyTitleTakesTheCountFourBytesOn) {
    // Reserved bytes that are not 0 must not matter.
    const std::string image = std::string("TL1KZ") + ByteString({5, 0, 1, 7, 7, 2}) + std::string(66, '\0');
    const ReadResult read = ReadProgramFile(InContainer(image));
    ASSERT_TRUE(read.complete());
    EXPECT_EQ(read.set.Title, "");
    EXPECT_EQ(read.set.LevelCount(), 2);
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

TEST(CalcProgramReader, StopsWithAConsistentSet) {
    const std::string countZero = std::string("Shd1KZ") + ByteString({0x7F, 7}) + "AB" + ByteString({0, 3, 0, 0, 0});
    for (auto [bytes, where] : {std::pair{std::string(), "byte 72"}, {InContainer("Q no zed here"), "byte 85"},
                                {InContainer(countZero), "byte 86"}}) {
        const ReadResult read = ReadProgramFile(bytes);
        ASSERT_TRUE(read.stopped()) << where;
        EXPECT_EQ(read.outcome.where, where);
        EXPECT_EQ(CheckConsistent(read.set), "");
    }
    // Every cut of a whole file (its checksum is never read) ends short.
    for (const test::SetShape& shape : {test::SetShape{GameKind::Shardles, 2, true, 3},
                                        test::SetShape{GameKind::Tiltbash, 2, false, 3}}) {
        const std::string file = WriteProgramFile(test::RandomSet(shape, 21u), "CUT").bytes;
        const std::string whole = file.substr(0, file.size() - 2);
        ASSERT_TRUE(ReadProgramFile(whole).complete());
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const ReadResult read = ReadProgramFile(whole.substr(0, length));
            ASSERT_TRUE(read.stopped()) << length;
            ASSERT_EQ(read.outcome.where.rfind("byte ", 0), 0u) << length;
            ASSERT_EQ(CheckConsistent(read.set), "") << length;
        }
    }
}

}  // namespace
}  // namespace shd
