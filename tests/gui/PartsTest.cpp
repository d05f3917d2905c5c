// The pieces under the windows: text conversion, dialog filters, the settings
// path, the block pictures and the application's style.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTemporaryDir>

#include "editor/Layout.h"
#include "gui/BlockPictures.h"
#include "gui/EditorStyle.h"
#include "gui/QtPrompts.h"
#include "gui/Text.h"
#include "gui/frmDev.h"

namespace shd::gui::test {
namespace {

TEST(TextTest, EveryWindows1252ByteSurvivesAndOtherCharactersBecomeOneQuestionMarkEach) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(ToBytes(ToQt(all)), all);
    EXPECT_EQ(ToQt("\x80\x9f\xe9"), QString::fromUtf8("\xE2\x82\xAC\xC5\xB8\xC3\xA9"));  // euro, Y diaeresis, e acute
    // n tilde, euro, c circumflex, an emoji (two UTF-16 units), a Chinese character
    EXPECT_EQ(ToBytes(QString::fromUtf8("A\xC3\xB1\xE2\x82\xAC\xC4\x89\xF0\x9F\x98\x80\xE4\xB8\xAD" "b")),
              "A\xf1\x80???b");
}

TEST(FilterTest, VerticalBarListsBecomeQtFilters) {
    EXPECT_EQ(QtFilter("TI-83 List|*.83l"), QStringLiteral("TI-83 List (*.83l)"));
    EXPECT_EQ(QtFilter("TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm"),
              QStringLiteral("TI-83 Source Files (*.z80, *.asm) (*.z80 *.asm)"));
    EXPECT_EQ(QtFilter("Any Readable Files|*.*"), QStringLiteral("Any Readable Files (*)"));
    EXPECT_EQ(QtFilter("A|*.a|B|*.b;*.c"), QStringLiteral("A (*.a);;B (*.b *.c)"));
}

TEST(SettingsPathTest, BesideTheProgramWhenItsFolderCanBeWrittenElseInTheUsersConfigurationFolder) {
    QTemporaryDir folder;
    EXPECT_EQ(SettingsPath(folder.path()), QDir(folder.path()).filePath(QStringLiteral("info.ini")));
    QStandardPaths::setTestModeEnabled(true);
    const QString path = SettingsPath(QStringLiteral("/no/such/folder"));
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QStandardPaths::setTestModeEnabled(false);
    EXPECT_EQ(path, QDir(config).filePath(QStringLiteral("info.ini")));
    EXPECT_TRUE(QFileInfo(config).isDir());  // made, so the file can be written there
}

std::array<std::string, 16> Files(GameKind kind) {
    std::array<std::string, 16> files;
    for (int code = 0; code < 16; ++code) files[static_cast<std::size_t>(code)] = PictureFile(kind, code);
    return files;
}

QString Assets() {
    return QFileInfo(QStringLiteral(__FILE__)).absoluteDir().absoluteFilePath(QStringLiteral("../../assets"));
}

TEST(BlockPicturesTest, EveryCodeOfEitherGameLooksDifferent) {
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
        BlockPictures pictures;
        pictures.Load(Assets(), Files(kind));
        for (int a = 0; a < 16; ++a) {
            EXPECT_FALSE(pictures.IsDrawnTile(a)) << a;
            for (int b = a + 1; b < 16; ++b)
                EXPECT_NE(pictures.Of(a).toImage(), pictures.Of(b).toImage()) << a << " and " << b;
        }
    }
}

TEST(BlockPicturesTest, AnUnreadableFileIsReplacedByItsDrawnTileAndOtherCodesByAQuestionMark) {
    std::array<std::string, 16> files = Files(GameKind::Shardles);
    files[3] = PathBytes(QStringLiteral(__FILE__));  // not a picture
    files[12] = "missing.gif";
    BlockPictures pictures;
    pictures.Load(Assets(), files);
    for (int code = 0; code < 16; ++code) EXPECT_EQ(pictures.IsDrawnTile(code), code == 3 || code == 12) << code;
    EXPECT_EQ(pictures.Of(3).toImage(), BlockPictures::Tile(QStringLiteral("3")).toImage());
    EXPECT_EQ(pictures.Of(12).toImage(), BlockPictures::Tile(QStringLiteral("C")).toImage());
    const QImage unknown = BlockPictures::Tile(QStringLiteral("?")).toImage();
    EXPECT_EQ(pictures.Of(kUnknownPicture).toImage(), unknown);
    EXPECT_EQ(pictures.Of(16).toImage(), unknown);
    for (int code = 0; code < 16; ++code) EXPECT_NE(pictures.Of(code).toImage(), unknown) << code;
}

TEST(EditorStyleTest, TheExtensionArrowsAreTheBaseStylesOwnAndOtherIconsPassThrough) {
    EditorStyle style(QStyleFactory::create(QStringLiteral("Fusion")));
    QStyle* base = style.baseStyle();
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QStyleOption option;
        option.direction = direction;
        for (const QStyle::StandardPixmap which :
             {QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_ToolBarVerticalExtensionButton,
              QStyle::SP_MessageBoxQuestion}) {
            const QIcon mine = style.standardIcon(which, &option);
            const QIcon theirs = base->standardIcon(which, &option);
            EXPECT_FALSE(mine.isNull()) << which;
            EXPECT_EQ(mine.availableSizes(), theirs.availableSizes()) << which;
            for (const int size : {12, 16, 32}) {
                EXPECT_EQ(mine.actualSize(QSize(size, size)), theirs.actualSize(QSize(size, size))) << which;
                EXPECT_EQ(mine.pixmap(size).toImage(), theirs.pixmap(size).toImage()) << which << " " << size;
                EXPECT_EQ(mine.pixmap(size, QIcon::Disabled).toImage(), theirs.pixmap(size, QIcon::Disabled).toImage())
                    << which << " " << size;
            }
        }
    }
    // The arrows differ by direction, so the direction is kept.
    QStyleOption rightToLeft;
    rightToLeft.direction = Qt::RightToLeft;
    EXPECT_NE(style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton).pixmap(16).toImage(),
              style.standardIcon(QStyle::SP_ToolBarHorizontalExtensionButton, &rightToLeft).pixmap(16).toImage());
}

}  // namespace
}  // namespace shd::gui::test
