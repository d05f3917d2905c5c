// The real dialogs behind the editor's prompts, answered while they are open,
// the custom piece dialog, where the program finds its files, whether built
// or installed, and the small pieces under the windows.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTest>
#include <QTimer>
#include <functional>

#include "editor/Layout.h"
#include "gui/BlockPictures.h"
#include "gui/EditorStyle.h"
#include "gui/Places.h"
#include "gui/QtPrompts.h"
#include "gui/Text.h"
#include "gui/Widgets.h"
#include "gui/CustomPieceDialog.h"
#include "gui/MainWindow.h"
#include "support/Support.h"

// Texts in a failure message as text.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace shd::gui {
namespace {

// Runs `answer` on the modal dialog as soon as it is up.
template <typename Dialog>
void WhenShown(std::function<void(Dialog*)> answer) {
    QTimer::singleShot(0, qApp, [answer = std::move(answer)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (dialog) return answer(dialog);
        ADD_FAILURE() << "no dialog of the expected kind";
        if (QWidget* other = QApplication::activeModalWidget()) other->close();
    });
}

TEST(Dialogs, BoxesHaveTheProgramsTitleTheTextAsItIsAndTheirButtons) {
    QWidget parent;
    QtPrompts prompts(&parent);
    using B = QMessageBox;
    const std::string text = "Two  blanks & an ampersand";
    auto answer = [&](B::StandardButtons buttons, B::StandardButton press) {
        WhenShown<B>([=](B* box) {
            EXPECT_EQ(box->windowTitle(), QStringLiteral("Shardles/Tiltbash Level Editor"));
            EXPECT_EQ(box->text(), QString::fromStdString(text));
            EXPECT_EQ(box->standardButtons(), buttons);
            if (press == B::NoButton) QTest::keyClick(box, Qt::Key_Escape);
            else box->button(press)->click();
        });
    };
    answer(B::Ok, B::Ok);
    prompts.Message(text);
    answer(B::Yes | B::No, B::No);
    EXPECT_FALSE(prompts.AskYesNo(text));
    for (const auto& [press, expected] : {std::pair{B::Yes, Answer::Yes}, {B::No, Answer::No}, {B::NoButton, Answer::Cancel}}) {
        answer(B::Yes | B::No | B::Cancel, press);
        EXPECT_EQ(prompts.AskYesNoCancel(text), expected);
    }
    WhenShown<QInputDialog>([](QInputDialog* dialog) {
        EXPECT_EQ(dialog->labelText() + dialog->textValue(), QStringLiteral("How many?0"));
        dialog->setTextValue(QStringLiteral("12"));
        dialog->accept();
    });
    EXPECT_EQ(prompts.InputBox("How many?", "0"), "12");
    WhenShown<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
    EXPECT_EQ(prompts.InputBox("How many?", "5"), "");

    test::TempDir folder;
    WhenShown<QFileDialog>([&](QFileDialog* dialog) {
        EXPECT_EQ(QDir(dialog->directory()).canonicalPath(), QDir(PathText(folder.path)).canonicalPath());
        EXPECT_FALSE(dialog->testOption(QFileDialog::DontConfirmOverwrite));  // it asks before replacing
        EXPECT_EQ(dialog->defaultSuffix(), QStringLiteral("83p"));
        EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("TI-83 Program File (*.83p)")});
        dialog->selectFile(QStringLiteral("LEVELS"));
        QMetaObject::invokeMethod(dialog, "accept");  // as the Save button does
    });
    const FileChoice choice = prompts.SaveFileDialog("TI-83 Program File|*.83p", folder.path, ".83p");
    EXPECT_EQ(choice.path + "|" + choice.title, folder / "LEVELS.83p" + "|LEVELS.83p");
    WhenShown<QFileDialog>([](QFileDialog* dialog) { dialog->reject(); });
    EXPECT_TRUE(prompts.OpenFileDialog("TI-83 List File|*.83l", folder.path).path.empty());
    EXPECT_EQ(QtFilter("TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm"),
              QStringLiteral("TI-83 Source Files (*.z80, *.asm) (*.z80 *.asm)"));
    EXPECT_EQ(QtFilter("Any Readable Files|*.*|B|*.b"), QStringLiteral("Any Readable Files (*);;B (*.b)"));
}

TEST(Dialogs, TheCustomPieceDialogShowsTheColumnsInItsOrderAndItsButtonsEdit) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.CustomChangerPicture.at(4) = 7;  // only a file brings such a value
    CustomPieceEdit edit(set, PictureKind::Change);
    CustomPieceDialog dialog(edit);
    dialog.adjustSize();
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Create a Shardle"));
    // From the left, the columns 8 to 1, then 10 and 9; the rows in order
    // below one another, each cell whole and clear of its neighbours.
    const int order[] = {8, 7, 6, 5, 4, 3, 2, 1, 10, 9};
    for (int row = 0; row < 6; ++row) {
        for (int p = 0; p < 10; ++p) {
            const int n = 10 * row + order[p];
            const QRect place = dialog.cell(n)->geometry();
            EXPECT_TRUE(place.width() >= dialog.cell(n)->sizeHint().width() &&
                        place.height() >= dialog.cell(n)->sizeHint().height()) << n;
            if (p > 0) {
                const QRect left = dialog.cell(10 * row + order[p - 1])->geometry();
                EXPECT_GT(place.left(), left.right()) << n;
                EXPECT_EQ(place.top(), left.top()) << n;
            }
            if (row > 0) {
                const QRect above = dialog.cell(n - 10)->geometry();
                EXPECT_GT(place.top(), above.bottom()) << n;
                EXPECT_EQ(place.left(), above.left()) << n;
            }
        }
    }
    auto captions = [&](std::initializer_list<int> cells) {
        QString text;
        for (int n : cells) text += dialog.cell(n)->text();
        return text;
    };
    for (int n : {3, 4}) QTest::mouseClick(dialog.cell(n), Qt::LeftButton);
    EXPECT_EQ(captions({3, 4, 5}), QStringLiteral("170"));
    auto button = [&](const char* name) { return dialog.findChild<QPushButton*>(QString::fromLatin1(name)); };
    QTest::mouseClick(button("defaultButton"), Qt::LeftButton);
    EXPECT_EQ(captions({1, 8, 11, 15}), QStringLiteral("1010"));
    QTest::mouseClick(button("resetButton"), Qt::LeftButton);
    EXPECT_EQ(captions({1, 4, 11}), QStringLiteral("000"));
    EXPECT_TRUE(button("okButton")->isDefault());
    int left = 0;
    for (const char* name : {"okButton", "defaultButton", "resetButton", "cancelButton"}) {
        EXPECT_GT(button(name)->x(), left) << name;  // one row below the cells, in this order
        EXPECT_GT(button(name)->y(), dialog.cell(60)->geometry().bottom());
        left = button(name)->x();
    }

    QWidget parent;
    QtPrompts prompts(&parent);
    const std::pair<std::function<void(CustomPieceDialog*)>, bool> closings[] = {
        {[](CustomPieceDialog* d) { QTest::keyClick(d, Qt::Key_Return); }, true},
        {[](CustomPieceDialog* d) { QTest::keyClick(d, Qt::Key_Escape); }, false}};
    for (const auto& [close, accepted] : closings) {
        WhenShown<CustomPieceDialog>([&](CustomPieceDialog* shown) {
            const QRect screen = shown->screen()->geometry();
            EXPECT_EQ(shown->pos(), screen.topLeft() + QPoint((screen.width() - shown->width()) / 2,
                                                              (screen.height() - shown->height()) / 2));
            QTest::mouseClick(shown->cell(8), Qt::LeftButton);
            close(shown);
        });
        EXPECT_EQ(prompts.EditPicture(edit), accepted);
        EXPECT_EQ(edit.value(8), 1);  // the dialog works on the editor's own edit
        edit.Reset();
    }
}

TEST(Pieces, TextsCrossAsWindows1252) {
    std::string all;
    for (int b = 0; b < 256; ++b) all += static_cast<char>(b);
    EXPECT_EQ(ToBytes(ToQt(all)), all);
    EXPECT_EQ(ToQt("\x80\x9f\xe9"), QString::fromUtf8("\xE2\x82\xAC\xC5\xB8\xC3\xA9"));
    EXPECT_EQ(ToBytes(QString::fromUtf8("A\xC4\x89\xF0\x9F\x98\x80" "b")), "A??b");  // an emoji is one "?"
}

TEST(Pieces, EveryBlockLooksDifferentAndWhatCannotBeReadIsADrawnTile) {
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
        std::array<std::string, 16> files;
        for (int code = 0; code < 16; ++code) files[static_cast<std::size_t>(code)] = PictureFile(kind, code);
        files[3] = "../README.md";  // not a picture
        BlockPictures pictures;
        pictures.Load(QStringLiteral(ASSETS_DIR), files);
        for (int a = 0; a < 16; ++a) {
            EXPECT_EQ(pictures.IsDrawnTile(a), a == 3) << a;
            for (int b = a + 1; b < 16; ++b) EXPECT_NE(pictures.Of(a).toImage(), pictures.Of(b).toImage()) << a << b;
        }
        EXPECT_EQ(pictures.Of(3).toImage(), BlockPictures::Tile(QStringLiteral("3")).toImage());
        EXPECT_EQ(pictures.Of(kUnknownPicture).toImage(), BlockPictures::Tile(QStringLiteral("?")).toImage());
    }
}

TEST(Pieces, TheMenuBarsOverflowArrowIsTheBaseStylesOwnWhenFirstDrawn) {
    EditorStyle style(QStyleFactory::create(QStringLiteral("Fusion")));
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QStyleOption option;
        option.direction = direction;
        for (const auto which : {QStyle::SP_ToolBarHorizontalExtensionButton, QStyle::SP_MessageBoxQuestion}) {
            const QIcon mine = style.standardIcon(which, &option);
            const QIcon theirs = style.baseStyle()->standardIcon(which, &option);
            EXPECT_EQ(mine.availableSizes(), theirs.availableSizes()) << which;
            for (const int size : {12, 16, 32})
                EXPECT_EQ(mine.pixmap(size).toImage(), theirs.pixmap(size).toImage()) << which << " " << size;
        }
    }
}

// The settings file goes where the program can write: beside it when built,
// else in the user's configuration folder, made when missing.
TEST(Places, BesideTheProgramWhenBuiltInTheShareFolderWhenInstalled) {
    QStandardPaths::setTestModeEnabled(true);
    test::TempDir dir;
    const QString root = PathText(dir.path.string());
    QDir(root).mkpath(QStringLiteral("bin"));
    QDir(root).mkpath(QStringLiteral("share/shardles-editor"));
    test::WriteFile(dir.path / "share/shardles-editor/shdblock1.gif", "");
    const Places installed = FindPlaces(root + QStringLiteral("/bin"));
    EXPECT_EQ(installed.data, root + QStringLiteral("/share/shardles-editor"));
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    EXPECT_EQ(installed.settings, config + QStringLiteral("/info.ini"));
    EXPECT_TRUE(QDir(config).exists());
    EXPECT_EQ(installed.startFolder, QDir::homePath());

    test::WriteFile(dir.path / "bin/shdblock1.gif", "");
    const Places built = FindPlaces(root + QStringLiteral("/bin"));
    EXPECT_EQ(built.data + "|" + built.settings + "|" + built.startFolder,
              root + "/bin|" + root + "/bin/info.ini|" + root + "/bin");
    QStandardPaths::setTestModeEnabled(false);
}

}  // namespace
}  // namespace shd::gui
