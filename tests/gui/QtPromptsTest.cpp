// The real dialogs behind the editor's prompts, answered while they are open.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
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
#include "rules/CustomPiece.h"

namespace shd::gui::test {
namespace {

const ScreenMetrics kScreen{96, 96, QSize(1024, 768)};

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

class QtPromptsTest : public ::testing::Test {
protected:
    QWidget parent;
    QtPrompts prompts{&parent, kScreen};
};

TEST_F(QtPromptsTest, MessageHasTheProgramTitleAndOnlyOk) {
    QString title, text;
    QMessageBox::StandardButtons buttons;
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        title = box->windowTitle();
        text = box->text();
        buttons = box->standardButtons();
        box->button(QMessageBox::Ok)->click();
    });
    prompts.Message("There has to be at least ONE Level!!!!!");
    EXPECT_EQ(title, QStringLiteral("Shardles/Tiltbash Level Editor"));
    EXPECT_EQ(text, QStringLiteral("There has to be at least ONE Level!!!!!"));
    EXPECT_EQ(buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

TEST_F(QtPromptsTest, QuestionsKeepTheirDoubleBlanksAndAnswer) {
    QString text;
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        text = box->text();
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No);
        box->button(QMessageBox::Yes)->click();
    });
    EXPECT_TRUE(prompts.AskYesNo("You have a Spotted Shardle without a Changer.  Set Spotted as Unused?"));
    EXPECT_EQ(text, QStringLiteral("You have a Spotted Shardle without a Changer.  Set Spotted as Unused?"));

    WhenShown<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::No)->click(); });
    EXPECT_FALSE(prompts.AskYesNo("?"));
}

TEST_F(QtPromptsTest, YesNoCancelMapsEveryButtonAndEscIsCancel) {
    WhenShown<QMessageBox>([](QMessageBox* box) {
        EXPECT_EQ(box->standardButtons(), QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box->button(QMessageBox::No)->click();
    });
    EXPECT_EQ(prompts.AskYesNoCancel("Save before quiting?"), Answer::No);
    WhenShown<QMessageBox>([](QMessageBox* box) { box->button(QMessageBox::Yes)->click(); });
    EXPECT_EQ(prompts.AskYesNoCancel("Save before quiting?"), Answer::Yes);
    WhenShown<QMessageBox>([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); });
    EXPECT_EQ(prompts.AskYesNoCancel("Save before quiting?"), Answer::Cancel);
}

TEST_F(QtPromptsTest, InputBoxShowsPromptAndDefaultAndCancelGivesNothing) {
    WhenShown<QInputDialog>([](QInputDialog* dialog) {
        EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Shardles/Tiltbash Level Editor"));
        EXPECT_EQ(dialog->labelText(), QStringLiteral("How many?"));
        EXPECT_EQ(dialog->textValue(), QStringLiteral("0"));
        dialog->setTextValue(QStringLiteral("12"));
        dialog->accept();
    });
    EXPECT_EQ(prompts.InputBox("How many?", "0"), "12");
    WhenShown<QInputDialog>([](QInputDialog* dialog) { dialog->reject(); });
    EXPECT_EQ(prompts.InputBox("How many?", "5"), "");
}

TEST_F(QtPromptsTest, SaveDialogStartsInTheFolderWithNoNameAndReplacesWithoutAsking) {
    QTemporaryDir folder;
    QFile existing(folder.filePath(QStringLiteral("levels.rsx")));
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
        dialog->selectFile(folder.filePath(QStringLiteral("levels.rsx")));
        QMetaObject::invokeMethod(dialog, "accept");  // as the Save button does
    });
    const FileChoice choice = prompts.SaveFileDialog("My File (*.rxs)|*.rsx", PathBytes(folder.path()));
    EXPECT_EQ(choice.path, PathBytes(folder.filePath(QStringLiteral("levels.rsx"))));
    EXPECT_EQ(choice.title, "levels.rsx");

    WhenShown<QFileDialog>([](QFileDialog* dialog) { dialog->reject(); });
    EXPECT_TRUE(prompts.OpenFileDialog("TI-83 List File|*.83l", PathBytes(folder.path())).path.empty());
}

TEST_F(QtPromptsTest, EditPictureRunsTheCustomPieceDialog) {
    LevelSet set = NewSet(GameKind::Shardles);
    CustomPieceEdit edit(set, PictureKind::Normal);
    WhenShown<frmCusShd>([](frmCusShd* dialog) {
        QTest::mouseClick(dialog->cell(8), Qt::LeftButton);
        dialog->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    });
    EXPECT_TRUE(prompts.EditPicture(edit));
    EXPECT_EQ(edit.value(8), 1);
    WhenShown<frmCusShd>([](frmCusShd* dialog) { dialog->reject(); });
    EXPECT_FALSE(prompts.EditPicture(edit));
}

}  // namespace
}  // namespace shd::gui::test
