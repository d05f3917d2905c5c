#include <gtest/gtest.h>

#include "calc/LevelImage.h"
#include "calc/CalcTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

using test::ByteAt;
using test::ByteString;

LevelSet ShardlesSet(std::string title, bool pictures) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = std::move(title);
    set.UseCustomShardles = pictures;
    return set;
}

TEST(CalcImage, TiltbashTwoCharacterTitleOneEmptyLevel) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "AB";
    const WriteResult image = BuildLevelImage(set);
    ASSERT_TRUE(image.ok) << image.message;
    const std::string want = std::string("TL1KZ") + ByteString({7}) + "AB" + ByteString({0x00, 3, 0x00, 0x00, 1}) +
                             std::string(32, '\0') + ByteString({0});
    EXPECT_EQ(image.bytes.size(), 46u);
    EXPECT_EQ(image.bytes, want);
    EXPECT_EQ(ByteAt(image.bytes, 5 + 7), 1);  // CountOffset leads to the level count
}

TEST(CalcImage, ShardlesLevelRecordIsGridThenBallAndCounts) {
    LevelSet set = ShardlesSet("T", false);
    LevelLayout& level = set.Layout(1);
    for (int i = 0; i < 80; ++i) level.Cells[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i % 16);
    level.BallX = 94;
    level.BallY = 62;
    level.BlockCount = 77;
    level.LastBlockCount = 3;
    const std::string image = BuildLevelImage(set).bytes;
    // "Shd1KZ", settings, CountOffset, title, 0, back offset, 0, 0, count.
    const std::size_t record = 6 + 1 + 1 + 1 + 1 + 1 + 2 + 1;
    ASSERT_EQ(image.size(), record + 44);
    EXPECT_EQ(image.substr(0, 6), "Shd1KZ");
    EXPECT_EQ(ByteAt(image, 7), 6);
    EXPECT_EQ(ByteAt(image, 7 + 6), 1);
    EXPECT_EQ(ByteAt(image, record + 0), 0x01);
    EXPECT_EQ(ByteAt(image, record + 7), 0xEF);
    EXPECT_EQ(ByteAt(image, record + 8), 0x01);  // cells 16 and 17 wrap to codes 0 and 1
    EXPECT_EQ(ByteAt(image, record + 39), 0xEF);
    EXPECT_EQ(image.substr(record + 40), ByteString({94, 62, 77, 3}));
}

TEST(CalcImage, NumbersTakeTheLowByte) {
    LevelSet set = ShardlesSet("", false);
    set.Layout(1).BallX = -1;
    set.Layout(1).BallY = 256;
    set.Layout(1).BlockCount = 300;
    set.Layout(1).LastBlockCount = 255;
    const std::string image = BuildLevelImage(set).bytes;
    EXPECT_EQ(image.substr(image.size() - 4), ByteString({0xFF, 0x00, 0x2C, 0xFF}));
}

TEST(CalcImage, SettingsByte) {
    EXPECT_EQ(EncodeSettingsByte("120", "800", true, true), 0x7F);
    EXPECT_EQ(EncodeSettingsByte("30", "100", false, false), 0x00);
    EXPECT_EQ(EncodeSettingsByte("60", "300", false, true), 0x29);
    EXPECT_EQ(EncodeSettingsByte("90", "100", false, false), 0x40);
    EXPECT_EQ(EncodeSettingsByte("30", "500", false, false), 0x10);
    EXPECT_EQ(EncodeSettingsByte("30", "200", true, false), 0x06);
    for (const char* bonus : {"", "0", "45", "030", "150", "120 ", " 30", "100"})
        EXPECT_FALSE(EncodeSettingsByte(bonus, "100", false, false)) << '"' << bonus << '"';
    for (const char* life : {"", "0", "900", "150", "0100", "100 ", "30"})
        EXPECT_FALSE(EncodeSettingsByte("30", life, false, false)) << '"' << life << '"';
}

TEST(CalcImage, PictureBytes) {
    auto only = [](int cell) {
        PiecePicture picture;
        picture.at(cell) = 1;
        return EncodePictureBytes(picture);
    };
    auto expect = [](const std::array<std::uint8_t, 12>& bytes, std::size_t index, int value) {
        for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(bytes[i], i == index ? value : 0) << "byte " << i;
    };
    expect(only(1), 0, 0x01);
    expect(only(8), 0, 0x80);
    expect(only(10), 6, 0x80);
    expect(only(9), 6, 0x40);
    expect(only(11), 1, 0x01);  // row 1 starts at cell 11
    expect(only(51), 5, 0x01);
    expect(only(60), 11, 0x80);
    expect(only(59), 11, 0x40);

    PiecePicture full;
    full.cells.fill(1);
    const auto bytes = EncodePictureBytes(full);
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(bytes[i], 0xFF);
    for (std::size_t i = 6; i < 12; ++i) EXPECT_EQ(bytes[i], 0xC0);

    // A digit other than 0 and 1 (kept from a source file) still is one pixel.
    PiecePicture digits;
    digits.at(3) = 7;
    expect(EncodePictureBytes(digits), 0, 0x04);
}

TEST(CalcImage, GridRowPacking) {
    const std::uint8_t counting[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(PackGridRow(counting), (std::array<std::uint8_t, 4>{0x12, 0x34, 0x56, 0x78}));
    const std::uint8_t arrows[8] = {15, 15, 15, 15, 15, 15, 15, 15};
    EXPECT_EQ(PackGridRow(arrows), (std::array<std::uint8_t, 4>{0xFF, 0xFF, 0xFF, 0xFF}));
    const std::uint8_t mixed[8] = {10, 11, 12, 13, 14, 15, 0, 1};
    EXPECT_EQ(PackGridRow(mixed), (std::array<std::uint8_t, 4>{0xAB, 0xCD, 0xEF, 0x01}));
}

TEST(CalcImage, PicturesAndSixCharacterTitle) {
    LevelSet set = ShardlesSet("Sixsix", true);
    set.CustomShardlePicture.at(1) = 1;
    set.CustomChangerPicture.at(10) = 1;
    const std::string image = BuildLevelImage(set).bytes;
    EXPECT_EQ(ByteAt(image, 7), 35);
    EXPECT_EQ(ByteAt(image, 8), 0x01);
    EXPECT_EQ(ByteAt(image, 8 + 12 + 6), 0x80);
    EXPECT_EQ(image.substr(32, 6), "Sixsix");
    EXPECT_EQ(image.substr(38, 5), ByteString({0, 7, 0, 0, 1}));
    EXPECT_EQ(ByteAt(image, 7 + 35), 1);
}

TEST(CalcImage, EmptyTitle) {
    for (bool pictures : {false, true}) {
        const std::string image = BuildLevelImage(ShardlesSet("", pictures)).bytes;
        const std::size_t title = pictures ? 32 : 8;
        EXPECT_EQ(ByteAt(image, 7), pictures ? 29 : 5);
        EXPECT_EQ(image.substr(title, 5), ByteString({0, 1, 0, 0, 1}));
    }
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    tiltbash.Title = "";
    EXPECT_EQ(BuildLevelImage(tiltbash).bytes.substr(5, 6), ByteString({5, 0, 1, 0, 0, 1}));
}

TEST(CalcImage, CountOffsetLeadsToTheLevelCountForEveryShape) {
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash})
        for (bool pictures : {false, true})
            for (int length : {0, 1, 2, 19, 20, 21, 100}) {
                LevelSet set = test::RandomSet({kind, 3, pictures, length}, 7u + static_cast<unsigned>(length));
                set.UseCustomShardles = pictures;  // also on a Tiltbash set, where it must not show
                const std::string image = BuildLevelImage(set).bytes;
                const std::size_t at = kind == GameKind::Shardles ? 7 : 5;
                const bool carried = pictures && kind == GameKind::Shardles;
                SCOPED_TRACE(std::to_string(length) + (carried ? " with pictures" : ""));
                EXPECT_EQ(ByteAt(image, at), length + 5 + (carried ? 24 : 0));
                const std::size_t count = at + ByteAt(image, at);
                EXPECT_EQ(ByteAt(image, count), 3);
                EXPECT_EQ(ByteAt(image, count - 3), length + 1);  // TitleBackOffset
                EXPECT_EQ(image.substr(count - 4 - static_cast<std::size_t>(length), static_cast<std::size_t>(length)),
                          set.Title);
                EXPECT_EQ(image.size(), count + 1 + 3 * (kind == GameKind::Shardles ? 44u : 33u));
            }
}

TEST(CalcImage, TwoHundredFiftyFiveLevelsInOrder) {
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
        LevelSet set = NewSet(kind);
        set.Title = "Big";
        MakeLevels(set, 255);
        for (int level = 1; level <= 255; ++level) {
            set.Layout(level).BlockCount = static_cast<std::int16_t>(level);
            set.Layout(level).Cells[0] = static_cast<std::uint8_t>(level % 16);
        }
        const std::string image = BuildLevelImage(set).bytes;
        const std::size_t count = kind == GameKind::Shardles ? 15 : 13;  // after the ID, "Big" and its four bytes
        const std::size_t size = kind == GameKind::Shardles ? 44 : 33;
        const std::size_t blockCountAt = kind == GameKind::Shardles ? 42 : 32;
        ASSERT_EQ(image.size(), count + 1 + 255 * size);
        EXPECT_EQ(ByteAt(image, count), 0xFF);
        for (int level = 1; level <= 255; ++level) {
            const std::size_t record = count + 1 + static_cast<std::size_t>(level - 1) * size;
            EXPECT_EQ(ByteAt(image, record + blockCountAt), level);
            EXPECT_EQ(ByteAt(image, record) >> 4, level % 16);
        }
    }
}

TEST(CalcImage, RefusesWhatHasNoEncoding) {
    LevelSet set = ShardlesSet("Fine", false);
    set.BonusClock = "45";
    WriteResult result = BuildLevelImage(set);
    EXPECT_FALSE(result.ok);
    EXPECT_TRUE(result.bytes.empty());
    EXPECT_NE(result.message.find("\"45\""), std::string::npos) << result.message;
    EXPECT_NE(result.message.find("30, 60, 90 or 120"), std::string::npos) << result.message;

    set.BonusClock = "30";
    set.ExtraLifePoints = "850";
    result = BuildLevelImage(set);
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.message.find("\"850\""), std::string::npos) << result.message;
    EXPECT_NE(result.message.find("100, 200, 300, 400, 500, 600, 700 or 800"), std::string::npos);

    // A Tiltbash image has no settings byte, so its settings texts do not matter.
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    tiltbash.BonusClock = "45";
    tiltbash.ExtraLifePoints = "x";
    EXPECT_TRUE(BuildLevelImage(tiltbash).ok);
}

TEST(CalcImage, TitleLengthLimitFollowsCountOffset) {
    for (bool pictures : {false, true}) {
        const std::size_t most = pictures ? 226 : 250;
        LevelSet set = ShardlesSet(std::string(most, 'x'), pictures);
        const WriteResult longest = BuildLevelImage(set);
        ASSERT_TRUE(longest.ok) << longest.message;
        EXPECT_EQ(ByteAt(longest.bytes, 7), 255);
        set.Title += 'x';
        const WriteResult tooLong = BuildLevelImage(set);
        EXPECT_FALSE(tooLong.ok);
        EXPECT_NE(tooLong.message.find(std::to_string(most + 1)), std::string::npos) << tooLong.message;
        EXPECT_NE(tooLong.message.find(std::to_string(most)), std::string::npos) << tooLong.message;
    }
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);
    tiltbash.Title = std::string(250, 't');
    EXPECT_TRUE(BuildLevelImage(tiltbash).ok);
    tiltbash.Title += 't';
    EXPECT_FALSE(BuildLevelImage(tiltbash).ok);
}

TEST(CalcImage, RefusesSetsWithoutAValidLevelCount) {
    LevelSet none = NewSet(GameKind::Tiltbash);
    none.Layouts.clear();
    none.Records.clear();
    EXPECT_FALSE(BuildLevelImage(none).ok);
    LevelSet many = NewSet(GameKind::Tiltbash);
    MakeLevels(many, 256);
    EXPECT_FALSE(BuildLevelImage(many).ok);
}

}  // namespace
}  // namespace shd
