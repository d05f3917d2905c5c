// Keys on the palette and the grid, shortcuts for the common commands, and the
// status bar under the window.
#include <QFile>
#include <QKeySequence>
#include <QStatusBar>

#include "GuiFixture.h"
#include "formats/Formats.h"
#include "gui/Text.h"

namespace shd::gui::test {
namespace {

TEST_F(WindowTest, KeysOnThePaletteAndTheGridChooseBlocksAndTheFocusFollows) {
    Trigger("mnuNewTil");  // no debugger, so cells can be clicked freely
    struct Step { int focus; Qt::Key key; Qt::KeyboardModifiers modifiers; int chosen; };
    // focus: a palette button (0..15) or a cell (100 + index) that gets the key;
    // -1 is whatever has the focus after the step before.
    const Step steps[] = {
        {0, Qt::Key_Left, {}, 14},  {-1, Qt::Key_Right, {}, 15}, {-1, Qt::Key_Right, {}, 1},  // Qt adds no step
        {-1, Qt::Key_Down, {}, 1},  {-1, Qt::Key_Up, {}, 1},     {-1, Qt::Key_B, {}, 11},
        {-1, Qt::Key_Right, {}, 12}, {-1, Qt::Key_E, {}, 14},
        {9, Qt::Key_G, {}, 14},  // not a code: the focus goes back to the chosen button
        {109, Qt::Key_2, {}, 2}, {130, Qt::Key_Left, {}, 1},      {100, Qt::Key_4, Qt::ControlModifier, 1},
        {-1, Qt::Key_9, {}, 9}};
    for (const Step& s : steps) {
        SCOPED_TRACE(testing::Message() << s.focus << " " << QKeySequence(s.key).toString().toStdString());
        QWidget* target = Focused();
        if (s.focus >= 100) {
            target = Grid();
            ClickCell(s.focus - 100);  // painting it with the block chosen before
            ASSERT_EQ(Focused(), target);
        } else if (s.focus >= 0) {
            target = window->paletteButton(s.focus);
            target->setFocus();
        }
        QTest::keyClick(target, s.key, s.modifiers);
        EXPECT_EQ(ui().SelectedBlock, s.chosen);
        EXPECT_EQ(Focused(), window->paletteButton(s.chosen));
        EXPECT_TRUE(window->paletteButton(s.chosen)->isChecked());
    }
    EXPECT_EQ(CellCode(30), 2);  // clicked after 2 was typed on the grid
    ClickCell(4);
    EXPECT_EQ(CellCode(4), 9);
}

TEST_F(WindowTest, TheStatusBarShowsTheLevelAndItsLiveBlockCount) {
    EXPECT_EQ(Text("statusLevel"), QStringLiteral("Level 1 of 1"));
    EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 0"));
    EXPECT_EQ(Text("statusLine"), QString());
    Choose(1);
    ClickCell(0);
    ClickCell(1);
    EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 2"));
    // A spotted shardle counts until the debugger's Yes marks spotted unused.
    Choose(2);
    prompts.ExpectYesNo(kSpottedQuestion, true).Then([&] { EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 3")); });
    ClickCell(2);
    EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 2"));

    Click(Find("cmdAddLev"));
    EXPECT_EQ(Text("statusLevel"), QStringLiteral("Level 1 of 2"));
    // An undo shows the level list, its label and the status as they were.
    Trigger("mnuUndo");
    EXPECT_EQ(Text("statusLevel"), QStringLiteral("Level 1 of 1"));
    EXPECT_EQ(LevelList(), QStringLiteral("Level 1 / Level 1"));
    EXPECT_EQ(Text("lblLevel"), QStringLiteral("Number of Levels: 1"));
}

TEST_F(WindowTest, CtrlSSavesAndCtrlOOpensAMyFileAndOneThatStoppedPartwaySaysWhereInTheStatusBar) {
    Trigger("mnuNewTil");  // a Tiltbash set needs no last block to be saved
    Click(Find("cmdAddLev"));
    Choose(1);
    ClickCell(3);
    const QString path = temp.filePath(QStringLiteral("cut.rsx"));
    prompts.ExpectSave(GetFormat(FormatId::MyFile).saveFilter, PathBytes(path));
    prompts.ExpectMessage("Saved Succesfully!");
    ASSERT_EQ(Focused(), Grid());
    QTest::keyClick(Grid(), Qt::Key_S, Qt::ControlModifier);
    ASSERT_TRUE(prompts.done());
    // Keep the first five lines: the second level is missing.
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    const QList<QByteArray> lines = file.readAll().split('\n');
    ASSERT_GT(lines.size(), 6);
    ASSERT_TRUE(file.resize(0));
    for (int line = 0; line < 5; ++line) file.write(lines[line] + '\n');
    file.close();

    ClickCell(10);
    ASSERT_TRUE(Action("mnuUndo")->isEnabled());
    // No message: the read stops quietly, and the status bar says where.
    prompts.ExpectOpen(GetFormat(FormatId::MyFile).openFilter, PathBytes(path));
    ASSERT_EQ(Focused(), Grid());
    QTest::keyClick(Grid(), Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(prompts.done());
    ASSERT_FALSE(ui().status.empty());
    EXPECT_TRUE(Text("statusLine").startsWith(QStringLiteral("Stopped reading cut.rsx at line ")));
    EXPECT_EQ(Text("statusLine"), PathText(ui().status));
    EXPECT_TRUE(window->statusBar()->currentMessage().isEmpty());
    EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 1"));  // the first level, as saved
    EXPECT_FALSE(Action("mnuUndo")->isEnabled());
    EXPECT_FALSE(Action("mnuRedo")->isEnabled());
    // A new set says nothing more about that file.
    Trigger("mnuNewShd");
    EXPECT_EQ(Text("statusLine"), QString());
}

}  // namespace
}  // namespace shd::gui::test
