// Pictures of levels against the block picture files themselves: every code
// of both games at two zooms, the custom pictures, a sheet's layout, fitting.
#include <gtest/gtest.h>

#include <QDir>
#include <QGuiApplication>
#include <QImageReader>

#include "render/Render.h"

namespace shd::render {
namespace {

// Which file shows each code, written out rather than computed.
const char* const kShardlesFiles[16] = {"nothing", "shdblock1", "shdblock2", "shdblock3", "shdblock4", "shdblock5",
                                        "shdblock6", "shdblock7", "shdblock8", "shdblock9", "shdblockA", "shdblockB",
                                        "shdblockC", "shdblockD", "shdblockE", "shdblockF"};
const char* const kTiltbashFiles[16] = {"nothing", "tlblock1", "tlblock2", "tlblock3", "tlblock4", "tlblock5",
                                        "tlblock6", "tlblockB", "tlblock7", "tlblock8", "tlblock9", "tlblockA",
                                        "tlblockC", "tlblockD", "tlblockE", "tlblockF"};

QImage PictureImage(GameKind kind, int code) {
    const char* name = (kind == GameKind::Shardles ? kShardlesFiles : kTiltbashFiles)[code];
    const QImage file(QDir(ASSETS_DIR).filePath(QString::fromLatin1(name) + ".gif"));
    // Seen on white paper: a transparent pixel is white.
    QImage image(file.size(), QImage::Format_RGB32);
    for (int y = 0; y < file.height(); ++y)
        for (int x = 0; x < file.width(); ++x) {
            const QRgb pixel = file.pixel(x, y);
            image.setPixel(x, y, qAlpha(pixel) == 0 ? qRgb(255, 255, 255) : pixel);
        }
    return image;
}

// A level whose cells run through the sixteen codes, again and again.
LevelSet EveryCode(GameKind kind) {
    LevelSet set = NewSet(kind);
    for (int i = 0; i < CellCount(kind); ++i) set.Layout(1).Cells[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i % 16);
    return set;
}

// Where the picture of cell `index` differs from `expected` blown up `zoom` times; empty when it does not.
std::string Difference(const QImage& drawn, QPoint origin, int zoom, const QImage& expected) {
    for (int y = 0; y < kBlockHeight * zoom; ++y)
        for (int x = 0; x < expected.width() * zoom; ++x)
            if (drawn.pixel(origin.x() + x, origin.y() + y) != expected.pixel(x / zoom, y / zoom))
                return "pixel " + std::to_string(x) + "," + std::to_string(y);
    return {};
}

struct Case {
    GameKind kind;
    int zoom;
};
class EveryCodeDrawn : public testing::TestWithParam<Case> {};

TEST_P(EveryCodeDrawn, AsItsPictureFile) {
    const auto [kind, zoom] = GetParam();
    const LevelSet set = EveryCode(kind);
    const QImage drawn = DrawLevel(set, 1, BlockImages(ASSETS_DIR, kind), zoom);
    ASSERT_EQ(drawn.size(), QSize(kColumns * BlockWidth(kind) * zoom, RowCount(kind) * kBlockHeight * zoom));
    for (int i = 0; i < CellCount(kind); ++i) {
        const QPoint origin(i % kColumns * BlockWidth(kind) * zoom, i / kColumns * kBlockHeight * zoom);
        QImage expected = PictureImage(kind, i % 16);
        // nothing.gif serves both games, stretched to a Tiltbash cell.
        if (i % 16 == 0) expected = expected.scaled(BlockWidth(kind), kBlockHeight);
        ASSERT_EQ(expected.size(), QSize(BlockWidth(kind), kBlockHeight));
        EXPECT_EQ(Difference(drawn, origin, zoom, expected), "") << "cell " << i << ", code " << i % 16;
    }
}

INSTANTIATE_TEST_SUITE_P(BothGames, EveryCodeDrawn,
                         testing::Values(Case{GameKind::Shardles, 1}, Case{GameKind::Shardles, 3},
                                         Case{GameKind::Tiltbash, 1}, Case{GameKind::Tiltbash, 3}));

TEST(BlockImages, AMissingFileIsATileNotAHole) {
    const BlockImages images(QDir::tempPath() + "/no-such-folder", GameKind::Shardles);
    EXPECT_FALSE(images.Loaded(2));
    EXPECT_EQ(images.Of(2).size(), QSize(BlockWidth(GameKind::Shardles), kBlockHeight));
    EXPECT_EQ(images.Of(2).pixel(0, 0), qRgb(96, 96, 96));
    EXPECT_NE(images.Of(2), images.Of(3));  // each with its own digit
    EXPECT_TRUE(BlockImages(ASSETS_DIR, GameKind::Shardles).Loaded(2));
}

TEST(CustomPictures, ShowOnTheCustomShardlesOnlyWhenTheSetUsesThem) {
    LevelSet set = EveryCode(GameKind::Shardles);
    set.CustomShardlePicture.at(8) = 1;       // row 0, shown first from the left
    set.CustomShardlePicture.at(10 + 9) = 1;  // row 1, shown last
    set.CustomChangerPicture.at(50 + 1) = 1;  // row 5, the eighth shown
    const BlockImages images(ASSETS_DIR, GameKind::Shardles);
    const QImage plain = DrawLevel(set, 1, images, 1);
    EXPECT_EQ(Difference(plain, {5 * BlockWidth(GameKind::Shardles), kBlockHeight}, 1, PictureImage(GameKind::Shardles, 13)), "");

    set.UseCustomShardles = true;
    const QImage custom = DrawLevel(set, 1, images, 2);
    const QPoint shardle(5 * BlockWidth(GameKind::Shardles) * 2, kBlockHeight * 2), changer(6 * BlockWidth(GameKind::Shardles) * 2, kBlockHeight * 2);
    QImage expected = PictureImage(GameKind::Shardles, 13);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 4; ++x) {
            expected.setPixel(x, y, qRgb(0, 0, 0));
            expected.setPixel(36 + x, 5 + y, qRgb(0, 0, 0));
        }
    EXPECT_EQ(Difference(custom, shardle, 2, expected), "");
    expected = PictureImage(GameKind::Shardles, 14);
    for (int y = 25; y < 30; ++y)
        for (int x = 28; x < 32; ++x) expected.setPixel(x, y, qRgb(0, 0, 0));
    EXPECT_EQ(Difference(custom, changer, 2, expected), "");
    // Tiltbash has no custom shardles, whatever the flag says.
    set.Kind = GameKind::Tiltbash;
    EXPECT_EQ(BlockOf(set, images, 13), images.Of(13));
}

// Level n of the set filled with code n, so each level's place shows whose it is.
LevelSet NumberedLevels(GameKind kind, int count) {
    LevelSet set = NewSet(kind);
    set.Title = "Sheet \xe9";  // Windows-1252, as files carry it
    MakeLevels(set, count);
    for (int level = 1; level <= count; ++level)
        std::fill(set.Layout(level).Cells.begin(), set.Layout(level).Cells.end(), static_cast<std::uint8_t>(level % 16));
    return set;
}

bool HasInk(const QImage& image, QRect area) {
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (qGray(image.pixel(x, y)) < 128) return true;
    return false;
}

TEST(Sheet, PutsEachLevelInItsPlaceWithItsNumberUnderIt) {
    const LevelSet set = NumberedLevels(GameKind::Tiltbash, 5);
    const BlockImages images(ASSETS_DIR, GameKind::Tiltbash);
    const SheetLayout layout = LayOutSheet(set, 2, 1);
    const QImage sheet = DrawSheet(set, images, 2, 1);
    ASSERT_EQ(sheet.size(), layout.size);
    EXPECT_EQ(layout.LevelRect(2).top(), layout.LevelRect(1).top());
    EXPECT_GT(layout.LevelRect(2).left(), layout.LevelRect(1).right());
    EXPECT_EQ(layout.LevelRect(3).left(), layout.LevelRect(1).left());
    EXPECT_GT(layout.LevelRect(3).top(), layout.NumberRect(1).bottom());
    EXPECT_TRUE(QRect(QPoint(0, 0), sheet.size()).contains(layout.NumberRect(5)));
    for (int level = 1; level <= 5; ++level) {
        const QRect place = layout.LevelRect(level);
        EXPECT_EQ(Difference(sheet, place.topLeft(), 1, PictureImage(GameKind::Tiltbash, level)), "") << level;
        EXPECT_EQ(Difference(sheet, place.bottomRight() - QPoint(BlockWidth(GameKind::Tiltbash) - 1, kBlockHeight - 1), 1,
                             PictureImage(GameKind::Tiltbash, level)),
                  "")
            << level;
        EXPECT_TRUE(HasInk(sheet, layout.NumberRect(level))) << "no number under level " << level;
    }
    // The title stands above the first row; the empty sixth place stays blank.
    EXPECT_TRUE(HasInk(sheet, QRect(0, 0, sheet.width(), layout.LevelRect(1).top())));
    EXPECT_FALSE(HasInk(sheet, layout.LevelRect(6)));
}

TEST(Sheet, DrawsTwoHundredFiftyFiveLevelsInTheColumnsAsked) {
    const LevelSet set = NumberedLevels(GameKind::Shardles, kMaxLevels);
    const SheetLayout layout = LayOutSheet(set, 16, 1);
    EXPECT_EQ(layout.LevelRect(17).left(), layout.LevelRect(1).left());
    EXPECT_EQ(layout.LevelRect(16).right() + layout.gap + 1, layout.size.width());
    EXPECT_EQ(layout.NumberRect(kMaxLevels).bottom() + layout.gap + 1, layout.size.height());
    EXPECT_EQ(DefaultColumns(kMaxLevels), 16);
    EXPECT_EQ(DefaultColumns(1), 1);
    EXPECT_EQ(LayOutSheet(set, 999, 1).columns, kMaxLevels);
}

TEST(Miniature, ShowsEachCellInItsBlocksAverageColour) {
    const LevelSet set = EveryCode(GameKind::Tiltbash);
    const BlockImages images(ASSETS_DIR, GameKind::Tiltbash);
    const auto colours = AverageColours(images);
    EXPECT_NE(colours[1], colours[2]);
    const QImage small = DrawMiniature(set.Kind, set.Layout(1).Cells, colours, {6, 4});
    ASSERT_EQ(small.size(), QSize(kColumns * 6, RowCount(set.Kind) * 4));
    for (int i = 0; i < CellCount(set.Kind); ++i)
        EXPECT_EQ(small.pixel(i % kColumns * 6 + 5, i / kColumns * 4 + 3), colours[static_cast<std::size_t>(i % 16)]) << i;
}

TEST(FitInto, ShrinksTheLongerSideAndNeverEnlarges) {
    const QImage wide(640, 200, QImage::Format_RGB32), tall(100, 300, QImage::Format_RGB32);
    EXPECT_EQ(FitInto(wide, 128).size(), QSize(128, 40));
    EXPECT_EQ(FitInto(tall, 150).size(), QSize(50, 150));
    EXPECT_EQ(FitInto(tall, 1000).size(), tall.size());
}

}  // namespace
}  // namespace shd::render

int main(int argc, char** argv) {
    // Numbers and titles need fonts, hence an application; never a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
