// The custom piece dialog: where its cells stand, what clicks and buttons do.
#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <algorithm>

#include "gui/Widgets.h"
#include "gui/frmCusShd.h"
#include "model/LevelSet.h"

namespace shd::gui::test {
namespace {

const ScreenMetrics kScreen{96, 96, QSize(1024, 768)};  // 15 twips to a pixel

QPushButton* Button(const frmCusShd& dialog, const char* name) {
    return dialog.findChild<QPushButton*>(QString::fromLatin1(name));
}

// Runs `whileOpen` as soon as the dialog is shown modally, then LoadUp's answer.
bool RunModal(frmCusShd& dialog, std::function<void()> whileOpen) {
    QTimer::singleShot(0, &dialog, [&dialog, whileOpen = std::move(whileOpen)] {
        EXPECT_TRUE(dialog.isVisible());
        whileOpen();
        if (dialog.isVisible()) {
            ADD_FAILURE() << "the dialog is still open";
            dialog.reject();
        }
    });
    return dialog.LoadUp();
}

class CustomPieceDialogTest : public ::testing::Test {
protected:
    LevelSet set = NewSet(GameKind::Shardles);
};

TEST_F(CustomPieceDialogTest, CellLabelsStandInTheDisplayedColumnOrder) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    frmCusShd dialog(edit, kScreen);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Create a Shardle"));
    EXPECT_EQ(dialog.cell(8)->geometry(), QRect(56, 16, 9, 17));   // left 840, top 240
    EXPECT_EQ(dialog.cell(1)->geometry().left(), 168);             // 2520
    EXPECT_EQ(dialog.cell(10)->geometry().left(), 184);            // 2760
    EXPECT_EQ(dialog.cell(9)->geometry().left(), 200);             // 3000
    EXPECT_EQ(dialog.cell(58)->geometry().topLeft(), QPoint(56, 136));  // row 6 at 240 + 5 * 360
    for (int row = 0; row < 6; ++row) {
        std::vector<QLabel*> labels;
        for (int c = 1; c <= 10; ++c) labels.push_back(dialog.cell(10 * row + c));
        std::sort(labels.begin(), labels.end(), [](QLabel* a, QLabel* b) { return a->x() < b->x(); });
        QStringList names;
        for (QLabel* label : labels) {
            names << label->objectName();
            EXPECT_EQ(label->y(), labels.front()->y());
        }
        QStringList expected;
        for (int c : {8, 7, 6, 5, 4, 3, 2, 1, 10, 9}) expected << QStringLiteral("lblCusShd%1").arg(10 * row + c);
        EXPECT_EQ(names, expected) << "row " << row;
    }
}

TEST_F(CustomPieceDialogTest, ButtonsStandInOneRowBelowTheCells) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    frmCusShd dialog(edit, kScreen);
    const char* order[] = {"cmdOK", "cmdDefault", "cmdReset", "cmdCancel"};
    const char* captions[] = {"OK", "Default", "Reset", "Cancel"};
    int lastRight = -1;
    for (int i = 0; i < 4; ++i) {
        QPushButton* button = Button(dialog, order[i]);
        ASSERT_NE(button, nullptr) << order[i];
        EXPECT_EQ(button->text(), QString::fromLatin1(captions[i]));
        EXPECT_GT(button->y(), dialog.cell(60)->geometry().bottom());
        EXPECT_EQ(button->y(), Button(dialog, "cmdOK")->y());
        EXPECT_GT(button->x(), lastRight);
        EXPECT_LE(button->geometry().right(), dialog.width());
        EXPECT_LE(button->geometry().bottom(), dialog.height());
        EXPECT_GE(button->width(), button->sizeHint().width());
        lastRight = button->geometry().right();
    }
    EXPECT_TRUE(Button(dialog, "cmdOK")->isDefault());
}

TEST_F(CustomPieceDialogTest, ShowsTheStoredPictureAndClicksSwapZeroAndOne) {
    set.CustomShardlePicture.at(3) = 1;
    set.CustomShardlePicture.at(4) = 7;  // only a file brings such a value
    CustomPieceEdit edit(set, PictureKind::Normal);
    frmCusShd dialog(edit, kScreen);
    EXPECT_EQ(dialog.cell(3)->text(), QStringLiteral("1"));
    EXPECT_EQ(dialog.cell(4)->text(), QStringLiteral("7"));
    EXPECT_EQ(dialog.cell(5)->text(), QStringLiteral("0"));
    QTest::mouseClick(dialog.cell(3), Qt::LeftButton);
    QTest::mouseClick(dialog.cell(5), Qt::LeftButton);
    QTest::mouseClick(dialog.cell(4), Qt::LeftButton);
    EXPECT_EQ(dialog.cell(3)->text(), QStringLiteral("0"));
    EXPECT_EQ(dialog.cell(5)->text(), QStringLiteral("1"));
    EXPECT_EQ(dialog.cell(4)->text(), QStringLiteral("7"));
    EXPECT_EQ(edit.value(5), 1);
    EXPECT_EQ(set.CustomShardlePicture.at(5), 0);  // stored only on OK, by the editor
}

TEST_F(CustomPieceDialogTest, DefaultAndResetRedrawTheCells) {
    CustomPieceEdit edit(set, PictureKind::Change);
    frmCusShd dialog(edit, kScreen);
    QTest::mouseClick(Button(dialog, "cmdDefault"), Qt::LeftButton);
    EXPECT_EQ(dialog.cell(1)->text(), QStringLiteral("1"));
    EXPECT_EQ(dialog.cell(8)->text(), QStringLiteral("0"));
    EXPECT_EQ(dialog.cell(11)->text(), QStringLiteral("1"));  // the changer's extra columns
    EXPECT_EQ(dialog.cell(15)->text(), QStringLiteral("0"));
    QTest::mouseClick(Button(dialog, "cmdReset"), Qt::LeftButton);
    for (int n = 1; n <= 60; ++n) EXPECT_EQ(dialog.cell(n)->text(), QStringLiteral("0")) << n;
}

TEST_F(CustomPieceDialogTest, OkAndEnterAcceptCancelAndEscReject) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    {
        frmCusShd dialog(edit, kScreen);
        EXPECT_TRUE(RunModal(dialog, [&] { QTest::mouseClick(Button(dialog, "cmdOK"), Qt::LeftButton); }));
    }
    {
        frmCusShd dialog(edit, kScreen);
        EXPECT_TRUE(RunModal(dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Return); }));
    }
    {
        frmCusShd dialog(edit, kScreen);
        EXPECT_FALSE(RunModal(dialog, [&] { QTest::mouseClick(Button(dialog, "cmdCancel"), Qt::LeftButton); }));
    }
    {
        frmCusShd dialog(edit, kScreen);
        EXPECT_FALSE(RunModal(dialog, [&] { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    }
}

TEST_F(CustomPieceDialogTest, OpensInTheMiddleOfTheScreen) {
    CustomPieceEdit edit(set, PictureKind::Normal);
    frmCusShd dialog(edit, kScreen);
    QPoint where;
    RunModal(dialog, [&] {
        where = dialog.pos();
        dialog.reject();
    });
    EXPECT_EQ(where, QPoint((1024 - dialog.width()) / 2, (768 - dialog.height()) / 2));
}

}  // namespace
}  // namespace shd::gui::test
