// Keyboard shortcuts for the common commands, typed palette codes, and the
// status bar under the window.
#include <QFile>
#include <QLineEdit>
#include <QStatusBar>

#include "GuiFixture.h"
#include "formats/Formats.h"
#include "gui/Text.h"

namespace shd::gui::test {
namespace {

constexpr const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

class ShortcutsTest : public WindowTest {
protected:
    QString Status(const char* name) const { return Find<QLabel>(name)->text(); }

    // Writes `bytes` into the temporary folder and returns its path.
    std::string WriteFile(const char* name, const std::string& bytes) {
        const QString path = temp.filePath(QString::fromLatin1(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
        return PathBytes(path);
    }

    void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(widget, key, modifiers);
    }
};

TEST_F(ShortcutsTest, DigitsTypedOnTheGridChooseTheirBlockAndThePaletteKeysStillStep) {
    Trigger("mnuNewTil");  // no debugger
    Click(window->cell(9));
    ASSERT_EQ(window->focusWidget(), window->cell(9));
    Press(window->cell(9), Qt::Key_2);
    EXPECT_EQ(ui().SelectedBlock, 2);
    EXPECT_TRUE(window->paletteButton(2)->isChecked());
    EXPECT_EQ(window->focusWidget(), window->paletteButton(2));

    // Now on the palette: B is 11, and Left and Right step from there as always.
    Press(window->focusWidget(), Qt::Key_B);
    EXPECT_EQ(ui().SelectedBlock, 11);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(11));
    Press(window->focusWidget(), Qt::Key_Right);
    EXPECT_EQ(ui().SelectedBlock, 12);
    Press(window->focusWidget(), Qt::Key_F);
    EXPECT_EQ(ui().SelectedBlock, 15);
    Press(window->focusWidget(), Qt::Key_Right);  // 15 wraps to 1
    EXPECT_EQ(ui().SelectedBlock, 1);
    EXPECT_TRUE(window->paletteButton(1)->isChecked());

    // Painting afterwards uses the typed choice.
    Press(window->focusWidget(), Qt::Key_0);
    Press(window->focusWidget(), Qt::Key_9);
    Click(window->cell(4));
    EXPECT_EQ(set().Layout(1).Cells[4], 9);
}

TEST_F(ShortcutsTest, LettersBeyondFAndKeysHeldWithCtrlChooseNothing) {
    Trigger("mnuNewTil");
    Click(window->cell(0));
    Press(window->cell(0), Qt::Key_4, Qt::ControlModifier);
    EXPECT_EQ(ui().SelectedBlock, 0);
    Press(window->paletteButton(0), Qt::Key_G);
    EXPECT_EQ(ui().SelectedBlock, 0);
    Press(window->paletteButton(0), Qt::Key_E);
    EXPECT_EQ(ui().SelectedBlock, 14);
}

TEST_F(ShortcutsTest, OtherKeysOnTheGridGoToThePaletteAsBefore) {
    Trigger("mnuNewTil");
    Click(window->paletteButton(5));
    Click(window->cell(30));
    ASSERT_EQ(window->focusWidget(), window->cell(30));
    Press(window->cell(30), Qt::Key_Left);
    EXPECT_EQ(ui().SelectedBlock, 4);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(4));
}

TEST_F(ShortcutsTest, TypingDigitsInTheTextBoxesChoosesNoBlock) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->setFocus();
    title->selectAll();
    QTest::keyClicks(title, "2B level");
    EXPECT_EQ(set().Title, "2B level");
    auto* ballx = Find<QLineEdit>("txtBallx");
    ballx->setFocus();
    ballx->selectAll();
    QTest::keyClicks(ballx, "12");
    EXPECT_EQ(set().Layout(1).BallX, 12);
    EXPECT_EQ(ui().SelectedBlock, 0);
    EXPECT_EQ(window->focusWidget(), ballx);
}

TEST_F(ShortcutsTest, CtrlSSavesAMyFileAndCtrlOOpensOne) {
    Trigger("mnuNewTil");  // a Tiltbash set needs no last block to be saved
    const std::string path = PathBytes(temp.filePath(QStringLiteral("keys.rsx")));
    prompts.ExpectSave(GetFormat(FormatId::MyFile).saveFilter, path);
    prompts.ExpectMessage("Saved Succesfully!");
    Press(window->cell(0), Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(prompts.done());
    EXPECT_TRUE(QFile::exists(PathText(path)));

    prompts.ExpectOpen(GetFormat(FormatId::MyFile).openFilter, path);
    prompts.ExpectMessage("Opened Succesfully");
    Press(window->paletteButton(0), Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(prompts.done());
}

TEST_F(ShortcutsTest, TheStatusBarShowsTheLevelAndItsLiveBlockCount) {
    EXPECT_EQ(Status("statusLevel"), QStringLiteral("Level 1 of 1"));
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 0"));
    EXPECT_EQ(Status("statusLine"), QString());

    Click(window->paletteButton(1));
    Click(window->cell(0));
    Click(window->cell(1));
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 2"));
    // A spotted shardle counts until the debugger's Yes marks spotted unused.
    Click(window->paletteButton(2));
    prompts.ExpectYesNo(kSpottedQuestion, true).Then([&] {
        EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 3"));
    });
    Click(window->cell(2));
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 2"));
    EXPECT_EQ(window->editor().LiveBlockCount(), 2);
    // The set's own count is only brought up to date by CountBlocks.
    EXPECT_EQ(set().Layout(1).BlockCount, 0);

    Click(Find("cmdAddLev"));
    EXPECT_EQ(Status("statusLevel"), QStringLiteral("Level 1 of 2"));
    Trigger("mnuUndo");
    EXPECT_EQ(Status("statusLevel"), QStringLiteral("Level 1 of 1"));
    Trigger("mnuUndo");  // the spotted shardle and its Yes
    EXPECT_FALSE(Action("mnuSpot")->isChecked());
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 2"));
    Trigger("mnuUndo");
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 1"));

    Trigger("mnuNewTil");
    Click(window->paletteButton(9));  // a double block in Tiltbash
    Click(window->cell(0));
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 2"));
}

TEST_F(ShortcutsTest, AnOpenThatStoppedPartwaySaysWhereInTheStatusBarAndClearsTheHistory) {
    Trigger("mnuNewTil");
    LevelSet written = NewSet(GameKind::Tiltbash);
    written.Title = "Cut short";
    AddEmptyLevel(written);
    written.Layouts[0].Cells[3] = 1;
    const WriteResult whole = GetFormat(FormatId::MyFile).write(written, "");
    ASSERT_TRUE(whole.ok);
    // Keep the first five lines: the second level is missing.
    std::size_t cut = 0;
    for (int line = 0; line < 5; ++line) cut = whole.bytes.find("\r\n", cut) + 2;
    const std::string path = WriteFile("cut.rsx", whole.bytes.substr(0, cut));

    Click(window->paletteButton(1));
    Click(window->cell(10));
    ASSERT_TRUE(Action("mnuUndo")->isEnabled());

    // No message: the read stops quietly, and the status bar says where.
    prompts.ExpectOpen(GetFormat(FormatId::MyFile).openFilter, path);
    Press(window->cell(10), Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(prompts.done());
    ASSERT_FALSE(ui().status.empty());
    const QString line = Status("statusLine");
    EXPECT_TRUE(line.startsWith(QStringLiteral("Stopped reading cut.rsx at line "))) << line.toStdString();
    EXPECT_EQ(line, PathText(ui().status));
    EXPECT_TRUE(window->statusBar()->currentMessage().isEmpty());
    EXPECT_EQ(set().Title, "Cut short");
    EXPECT_EQ(Status("statusBlocks"), QStringLiteral("Blocks: 1"));
    EXPECT_FALSE(Action("mnuUndo")->isEnabled());
    EXPECT_FALSE(Action("mnuRedo")->isEnabled());

    // A new set says nothing more about that file.
    Trigger("mnuNewShd");
    EXPECT_EQ(Status("statusLine"), QString());
}

TEST_F(ShortcutsTest, AFileTurnedAwayIsStillAMessageBox) {
    const std::string path = WriteFile("other.rsx", "NOTMINE\r\n");
    prompts.ExpectOpen(GetFormat(FormatId::MyFile).openFilter, path);
    prompts.ExpectMessage("Not one of my files.");
    Trigger("mnuOpenMyFile");
    EXPECT_TRUE(prompts.done());
}

}  // namespace
}  // namespace shd::gui::test
