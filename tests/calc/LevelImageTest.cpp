#include <gtest/gtest.h>

#include "calc/CalcTestSupport.h"
#include "calc/LevelImage.h"
#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"

namespace shd {
namespace {

using test::ByteAt;
using test::ByteString;

std::string AsString(const std::array<std::uint8_t, 12>& bytes) { return {bytes.begin(), bytes.end()}; }

TEST(CalcImage, SettingsByte) {
    struct Case {
        const char* bonus;
        const char* life;
        bool wrap, arrow;
        int byte;
    };
    for (const Case& c : {Case{"120", "800", true, true, 0x7F}, Case{"30", "100", false, false, 0x00},
                          Case{"60", "300", false, true, 0x29}, Case{"90", "100", false, false, 0x40},
                          Case{"30", "500", false, false, 0x10}, Case{"30", "200", true, false, 0x06}})
        EXPECT_EQ(EncodeSettingsByte(c.bonus, c.life, c.wrap, c.arrow), c.byte) << c.bonus << ' ' << c.life;
    for (const char* bonus : {"", "0", "45", "030", "150", "120 ", " 30", "100"})
        EXPECT_FALSE(EncodeSettingsByte(bonus, "100", false, false)) << '"' << bonus << '"';
    for (const char* life : {"", "900", "150", "0100", "100 ", "30"})
        EXPECT_FALSE(EncodeSettingsByte("30", life, false, false)) << '"' << life << '"';
}

TEST(CalcImage, PictureBytes) {
    // Cell and value, then the one byte set: rows of ten, in-row numbers 1-8
    // in bytes 0-5 (number 1 lowest), 10 and 9 in the top bits of bytes 6-11.
    // A digit kept from a source file is still one pixel.
    const int cases[][4] = {{1, 1, 0, 0x01},  {8, 1, 0, 0x80},  {10, 1, 6, 0x80},  {9, 1, 6, 0x40}, {11, 1, 1, 0x01},
                            {51, 1, 5, 0x01}, {60, 1, 11, 0x80}, {59, 1, 11, 0x40}, {3, 7, 0, 0x04}};
    for (const auto& [cell, value, index, byte] : cases) {
        PiecePicture picture;
        picture.at(cell) = static_cast<std::uint8_t>(value);
        std::array<std::uint8_t, 12> want{};
        want[static_cast<std::size_t>(index)] = static_cast<std::uint8_t>(byte);
        EXPECT_EQ(EncodePictureBytes(picture), want) << "cell " << cell;
    }
}

TEST(CalcImage, ShardlesLevelRecordIsGridThenLowBytesOfTheNumbers) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "T";
    LevelLayout& level = set.Layout(1);
    for (int i = 0; i < 80; ++i) level.Cells[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i % 16);
    level.BallX = -1;
    level.BallY = 256;
    level.BlockCount = 300;
    level.LastBlockCount = 255;
    const std::string image = BuildLevelImage(set).bytes;
    std::string want = std::string("Shd1KZ") + ByteString({0x00, 6}) + "T" + ByteString({0, 2, 0, 0, 1});
    for (int i = 0; i < 5; ++i) want += ByteString({0x01, 0x23, 0x45, 0x67, 0x89, 0xAB, 0xCD, 0xEF});
    EXPECT_EQ(image, want + ByteString({0xFF, 0x00, 0x2C, 0xFF}));
}

TEST(CalcImage, LayoutForEveryShape) {
    unsigned seed = 7;
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash})
        for (bool pictures : {false, true})
            for (auto [length, levels] : {std::pair{0, 1}, {1, 2}, {2, 255}, {20, 1}, {21, 3}, {100, 2}}) {
                LevelSet set = test::RandomSet({kind, levels, pictures, length}, ++seed);
                set.UseCustomShardles = pictures;  // also on a Tiltbash set, where it must not show
                const std::string image = BuildLevelImage(set).bytes;
                const bool shardles = kind == GameKind::Shardles;
                SCOPED_TRACE(std::to_string(length) + (shardles ? " Shardles" : " Tiltbash") + (pictures ? " +" : ""));
                ASSERT_EQ(image.substr(0, shardles ? 6 : 5), shardles ? "Shd1KZ" : "TL1KZ");
                const std::size_t at = shardles ? 7 : 5;
                std::string head = set.Title + ByteString({0, length + 1, 0, 0, levels});
                if (pictures && shardles)
                    head = AsString(EncodePictureBytes(set.CustomShardlePicture)) +
                           AsString(EncodePictureBytes(set.CustomChangerPicture)) + head;
                EXPECT_EQ(image.substr(at + 1, head.size()), head);
                ASSERT_EQ(ByteAt(image, at), head.size());  // CountOffset leads to the level count
                const std::size_t size = shardles ? 44 : 33, grid = shardles ? 40 : 32;
                ASSERT_EQ(image.size(), at + 1 + head.size() + levels * size);
                for (int level = 1; level <= levels; ++level) {
                    const LevelLayout& l = set.Layout(level);
                    const std::string record = image.substr(at + 1 + head.size() + (level - 1) * size, size);
                    EXPECT_EQ(ByteAt(record, 0), l.Cells[0] << 4 | l.Cells[1]) << level;
                    EXPECT_EQ(record.substr(grid), shardles ? ByteString({l.BallX, l.BallY, l.BlockCount, l.LastBlockCount})
                                                            : ByteString({l.BlockCount}))
                        << level;
                }
            }
}

// Every calculator writer refuses what the image cannot carry, with the same
// message naming the value and what is allowed; the longest titles fill CountOffset.
TEST(CalcExport, RefusesWhatHasNoEncoding) {
    struct Case {
        GameKind kind;
        bool pictures;
        std::size_t title;
        const char *bonus, *life;
        int levels;
        std::vector<std::string> named;  // empty: accepted
    };
    const GameKind S = GameKind::Shardles, T = GameKind::Tiltbash;
    const Case cases[] = {
        {S, false, 1, "45", "100", 1, {"\"45\"", "30, 60, 90 or 120"}},
        {S, false, 1, "30", "850", 1, {"\"850\"", "100, 200, 300, 400, 500, 600, 700 or 800"}},
        {S, false, 251, "30", "100", 1, {"251", "250"}},  {T, false, 251, "30", "100", 1, {"251", "250"}},
        {S, true, 227, "30", "100", 1, {"227", "226"}},   {T, false, 1, "30", "100", 0, {"0 levels", "1 to 255"}},
        {T, false, 1, "30", "100", 256, {"256", "1 to 255"}},
        {S, false, 250, "30", "100", 1, {}}, {S, true, 226, "30", "100", 1, {}}, {T, true, 250, "45", "x", 1, {}},
    };
    for (const Case& c : cases) {
        LevelSet set = NewSet(c.kind);
        set.UseCustomShardles = c.pictures;
        set.Title = std::string(c.title, 'x');
        set.BonusClock = c.bonus;
        set.ExtraLifePoints = c.life;
        c.levels ? MakeLevels(set, c.levels) : (set.Layouts.clear(), set.Records.clear());
        const WriteResult image = BuildLevelImage(set);
        SCOPED_TRACE(std::to_string(c.title) + ": " + image.message);
        ASSERT_EQ(image.ok, c.named.empty());
        EXPECT_EQ(image.ok ? ByteAt(image.bytes, c.kind == S ? 7 : 5) : 255, 255);  // CountOffset
        for (const std::string& text : c.named) EXPECT_NE(image.message.find(text), std::string::npos) << text;
        for (const WriteResult& other : {WriteProgramFile(set, "X"), WriteSourceFile(set)}) {
            EXPECT_EQ(other.ok, image.ok);
            EXPECT_EQ(other.bytes.empty(), !image.ok);
            EXPECT_EQ(other.message, image.message);
        }
    }
}

}  // namespace
}  // namespace shd
