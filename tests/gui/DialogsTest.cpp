// The real dialogs behind the editor's prompts, answered while they are
// open, and the custom piece dialog's cells and buttons.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>

#include "gui/QtPrompts.h"
#include "gui/Text.h"
#include "gui/Widgets.h"
#include "gui/frmCusShd.h"
#include "model/LevelSet.h"

namespace shd::gui::test {
namespace {

const QString kTitle = QStringLiteral("Shardles/Tiltbash Level Editor");
const ScreenMetrics kScreen{96, 96, QSize(1024, 768)};  // 15 twips to a pixel

// Runs `answer` on the modal dialog as soon as it is up.
template <typename Dialog>
void WhenShown(std::function<void(Dialog*)> answer) {
    QTimer::singleShot(0, qApp, [answer = std::move(answer)] {
        auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog) {
            ADD_FAILURE() << "no dialog of the expected kind";
            if (QWidget* other = QApplication::activeModalWidget()) other->close();
            return;
        }
        answer(dialog);
    });
}

class DialogTest : public ::testing::Test {
protected:
    QWidget parent;
    QtPrompts prompts{&parent, kScreen};
    LevelSet set = NewSet(GameKind::Shardles);

    static QPushButton* Button(const frmCusShd& dialog, const char* name) {
        auto* button = dialog.findChild<QPushButton*>(QString::fromLatin1(name));
        EXPECT_NE(button, nullptr) << name;
        return button;
    }
    static QString Captions(const frmCusShd& dialog, std::initializer_list<int> cells) {
        QString captions;
        for (int n : cells) captions += dialog.cell(n)->text();
        return captions;
    }
};

TEST_F(DialogTest, MessageBoxesHaveTheProgramTitleTheTextAsItIsAndTheirButtons) {
    using B = QMessageBox;
    const std::string text = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";
    // Expects a box with `buttons` and presses `press`, or Esc for none.
    auto answer = [&](B::StandardButtons buttons, B::StandardButton press) {
        WhenShown<B>([=](B* box) {
            EXPECT_EQ(box->windowTitle(), kTitle);
            EXPECT_EQ(box->text(), QString::fromStdString(text));  // the double blank kept
            EXPECT_EQ(box->standardButtons(), buttons);
            if (press == B::NoButton) QTest::keyClick(box, Qt::Key_Escape);
            else box->button(press)->click();
        });
    };
    answer(B::Ok, B::Ok);
    prompts.Message(text);
    answer(B::Yes | B::No, B::Yes);
    EXPECT_TRUE(prompts.AskYesNo(text));
    answer(B::Yes | B::No, B::No);
    EXPECT_FALSE(prompts.AskYesNo(text));
    for (const auto& [press, expected] : {std::pair{B::Yes, Answer::Yes}, std::pair{B::No, Answer::No},
                                          std::pair{B::NoButton, Answer::Cancel}}) {
        answer(B::Yes | B::No | B::Cancel, press);
        EXPECT_EQ(prompts.AskYesNoCancel(text), expected);
    }
}

TEST_F(DialogTest, InputBoxShowsPromptAndDefaultAndCancelGivesNothing) {
    WhenShown<QInputDialog>([](QInputDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), kTitle);
        EXPECT_EQ(dialog->labelText(), QStringLiteral("How many?"));
        EXPECT_EQ(dialog->textValue(), QStringLiteral("0"));
        dialog->setTextValue(QStringLiteral("12"));
        dialog->accept();
    });
    EXPECT_EQ(prompts.InputBox("How many?", "0"), "12");
    WhenShown<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
    EXPECT_EQ(prompts.InputBox("How many?", "5"), "");
}

TEST_F(DialogTest, SaveDialogStartsInTheFolderWithNoNameAndReplacesWithoutAsking) {
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("levels.rsx"));
    QFile existing(file);
    ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
    existing.close();
    WhenShown<QFileDialog>([&](QFileDialog* dialog) {
        EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
        EXPECT_EQ(QDir(dialog->directory()).canonicalPath(), QDir(folder.path()).canonicalPath());
        EXPECT_TRUE(dialog->testOption(QFileDialog::DontConfirmOverwrite));
        EXPECT_TRUE(dialog->defaultSuffix().isEmpty());
        EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("My File (*.rxs) (*.rsx)")});
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        EXPECT_TRUE(name->text().isEmpty());
        dialog->selectFile(file);
        QMetaObject::invokeMethod(dialog, "accept");  // as the Save button does
    });
    const FileChoice choice = prompts.SaveFileDialog("My File (*.rxs)|*.rsx", PathBytes(folder.path()));
    EXPECT_EQ(choice.path, PathBytes(file));
    EXPECT_EQ(choice.title, "levels.rsx");

    WhenShown<QFileDialog>([](QFileDialog* dialog) { dialog->reject(); });
    EXPECT_TRUE(prompts.OpenFileDialog("TI-83 List File|*.83l", PathBytes(folder.path())).path.empty());
}

TEST_F(DialogTest, CellsStandInTheDisplayedColumnOrderAndButtonsInOneRowBelow) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    frmCusShd dialog(edit, kScreen);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Create a Shardle"));
    EXPECT_EQ(dialog.cell(8)->geometry(), QRect(56, 16, 9, 17));  // left 840, top 240
    EXPECT_EQ(dialog.cell(8)->objectName(), QStringLiteral("lblCusShd8"));
    // Columns 240 twips apart in the order 8 ... 1, 10, 9; rows 360 twips apart.
    const int lefts[] = {168, 152, 136, 120, 104, 88, 72, 56, 200, 184};  // cells 1 to 10
    for (int row = 0; row < 6; ++row)
        for (int c = 1; c <= 10; ++c)
            EXPECT_EQ(dialog.cell(10 * row + c)->pos(), QPoint(lefts[c - 1], 16 + 24 * row)) << 10 * row + c;

    // From the left in one row below the cells, each wide enough for its caption.
    QRect last(0, dialog.cell(60)->geometry().bottom() + 1, 0, 0);
    for (const auto& [name, caption] : {std::pair{"cmdOK", "OK"}, std::pair{"cmdDefault", "Default"},
                                        std::pair{"cmdReset", "Reset"}, std::pair{"cmdCancel", "Cancel"}}) {
        QPushButton* button = Button(dialog, name);
        ASSERT_NE(button, nullptr);
        EXPECT_EQ(button->text(), QString::fromLatin1(caption));
        EXPECT_TRUE(button->x() > last.right() && button->y() >= last.y() && dialog.rect().contains(button->geometry()));
        EXPECT_GE(button->width(), button->sizeHint().width());
        last = button->geometry();
    }
    EXPECT_EQ(Button(dialog, "cmdCancel")->y(), Button(dialog, "cmdOK")->y());
    EXPECT_TRUE(Button(dialog, "cmdOK")->isDefault());
}

TEST_F(DialogTest, ClicksDefaultAndResetRedrawTheCellsButStoreNothing) {
    set.CustomChangerPicture.at(3) = 1;
    set.CustomChangerPicture.at(4) = 7;  // only a file brings such a value
    CustomPieceEdit edit(set, PictureKind::Change);
    frmCusShd dialog(edit, kScreen);
    EXPECT_EQ(Captions(dialog, {3, 4, 5}), QStringLiteral("170"));
    for (int n : {3, 5, 4}) QTest::mouseClick(dialog.cell(n), Qt::LeftButton);
    EXPECT_EQ(Captions(dialog, {3, 4, 5}), QStringLiteral("071"));
    EXPECT_EQ(edit.value(5), 1);
    EXPECT_EQ(set.CustomChangerPicture.at(5), 0);  // stored only on OK, by the editor

    QTest::mouseClick(Button(dialog, "cmdDefault"), Qt::LeftButton);
    EXPECT_EQ(Captions(dialog, {1, 8, 11, 15}), QStringLiteral("1010"));  // with the changer's extra columns
    QTest::mouseClick(Button(dialog, "cmdReset"), Qt::LeftButton);
    for (int n = 1; n <= 60; ++n) EXPECT_EQ(dialog.cell(n)->text(), QStringLiteral("0")) << n;
}

TEST_F(DialogTest, TheCustomPieceDialogOpensInTheMiddleOkAndEnterAcceptCancelAndEscReject) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    const std::pair<std::function<void(frmCusShd*)>, bool> closings[] = {
        {[](frmCusShd* d) { QTest::mouseClick(Button(*d, "cmdOK"), Qt::LeftButton); }, true},
        {[](frmCusShd* d) { QTest::keyClick(d, Qt::Key_Return); }, true},
        {[](frmCusShd* d) { QTest::mouseClick(Button(*d, "cmdCancel"), Qt::LeftButton); }, false},
        {[](frmCusShd* d) { QTest::keyClick(d, Qt::Key_Escape); }, false}};
    for (const auto& [close, accepted] : closings) {
        WhenShown<frmCusShd>([&](frmCusShd* dialog) {
            EXPECT_EQ(dialog->pos(), QPoint((1024 - dialog->width()) / 2, (768 - dialog->height()) / 2));
            QTest::mouseClick(dialog->cell(8), Qt::LeftButton);
            close(dialog);
            EXPECT_FALSE(dialog->isVisible());
        });
        EXPECT_EQ(prompts.EditPicture(edit), accepted);
        EXPECT_EQ(edit.value(8), 1);  // the dialog works on the editor's own edit
        edit.Reset();
    }
}

}  // namespace
}  // namespace shd::gui::test
