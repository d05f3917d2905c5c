// Drag painting and undo/redo in the real window: strokes across cells, the
// Edit menu, and that an undo gives back exactly what the window showed.
#include <QAction>
#include <QComboBox>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QUndoStack>

#include "GuiFixture.h"

namespace shd::gui::test {
namespace {

constexpr const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

class UndoTest : public WindowTest {
protected:
    // Where cell `index` is, in the coordinates of cell `from`.
    QPoint CentreOf(int index, int from) const {
        const PictureCell* to = window->cell(index);
        return window->cell(from)->mapFromGlobal(to->mapToGlobal(to->rect().center()));
    }

    // A drag as Qt reports it: once pressed, every move and the release go to
    // the cell where the press began, wherever the pointer is.
    void Drag(const std::vector<int>& cells, Qt::MouseButton button = Qt::LeftButton) {
        PictureCell* pressed = window->cell(cells.front());
        QTest::mousePress(pressed, button);
        for (std::size_t k = 1; k < cells.size(); ++k) QTest::mouseMove(pressed, CentreOf(cells[k], cells.front()));
        QTest::mouseRelease(pressed, button, {}, CentreOf(cells.back(), cells.front()));
    }

    void Choose(int code) { Click(window->paletteButton(code)); }
    std::uint8_t CellCode(int index) const { return set().Current().Cells[static_cast<std::size_t>(index)]; }
    bool CanUndo() const { return Action("mnuUndo")->isEnabled(); }
    bool CanRedo() const { return Action("mnuRedo")->isEnabled(); }
    QString LevelList() const {
        auto* combo = Find<QComboBox>("cmbLevels");
        QStringList items;
        for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
        return items.join(QLatin1Char(',')) + QStringLiteral(" / ") + combo->currentText();
    }
};

TEST_F(UndoTest, ADragPaintsEveryCellItEntersAndTheDebuggerAsksOnceAtTheRelease) {
    Choose(2);
    const std::vector<int> stroke{10, 11, 12, 20};  // along row 1, then down into row 2
    prompts.ExpectYesNo(kSpottedQuestion, false).Then([&] {
        // Asked once, with the whole stroke already on the grid.
        for (int cell : stroke) EXPECT_TRUE(CellShows(cell, 2)) << cell;
    });
    Drag(stroke);
    for (int cell : stroke) EXPECT_EQ(CellCode(cell), 2) << cell;
    for (int cell : {9, 13, 19, 21, 4}) EXPECT_EQ(CellCode(cell), 0) << cell;
    EXPECT_EQ(set().Record(1).SpottedCount, 4);
    EXPECT_EQ(window->undoStack()->count(), 1);
}

TEST_F(UndoTest, AStrokeUndoesAndRedoesInOneStepThroughTheEditMenu) {
    Trigger("mnuNewTil");  // no debugger
    EXPECT_FALSE(CanUndo());
    EXPECT_FALSE(CanRedo());
    Choose(8);  // a zig-zag shardle: ZigZagCount follows it
    Drag({0, 1, 2, 3, 11});
    ASSERT_EQ(set().Record(1).ZigZagCount, 5);
    EXPECT_TRUE(CanUndo());

    Trigger("mnuUndo");
    for (int cell = 0; cell < 64; ++cell) {
        EXPECT_EQ(CellCode(cell), 0) << cell;
        EXPECT_TRUE(CellShows(cell, 0)) << cell;
    }
    EXPECT_EQ(set().Record(1).ZigZagCount, 0);
    EXPECT_FALSE(CanUndo());
    EXPECT_TRUE(CanRedo());

    Trigger("mnuRedo");
    for (int cell : {0, 1, 2, 3, 11}) EXPECT_TRUE(CellShows(cell, 8)) << cell;
    EXPECT_EQ(set().Record(1).ZigZagCount, 5);
    EXPECT_TRUE(CanUndo());
    EXPECT_FALSE(CanRedo());
}

TEST_F(UndoTest, AQuickDragReportedInOneJumpPaintsTheCellsBetween) {
    Trigger("mnuNewTil");
    Choose(1);
    Drag({8, 15});  // one move from the first to the last cell of row 1
    for (int cell = 8; cell <= 15; ++cell) EXPECT_EQ(CellCode(cell), 1) << cell;
    EXPECT_EQ(CellCode(7), 0);
    EXPECT_EQ(CellCode(16), 0);
}

TEST_F(UndoTest, TheRightButtonErasesAlongItsStrokeAndTheCountsFollow) {
    Trigger("mnuNewTil");
    Choose(2);
    Drag({16, 17, 18, 19});
    ASSERT_EQ(set().Record(1).SpottedCount, 4);
    Drag({17, 18}, Qt::RightButton);
    EXPECT_EQ(CellCode(16), 2);
    EXPECT_EQ(CellCode(17), 0);
    EXPECT_EQ(CellCode(18), 0);
    EXPECT_EQ(CellCode(19), 2);
    EXPECT_TRUE(CellShows(17, 0));
    EXPECT_EQ(set().Record(1).SpottedCount, 2);
    EXPECT_EQ(window->undoStack()->count(), 2);
    Trigger("mnuUndo");
    EXPECT_EQ(set().Record(1).SpottedCount, 4);
    EXPECT_TRUE(CellShows(17, 2));
}

TEST_F(UndoTest, TheMiddleButtonDragsWithoutPaintingAndStillRunsTheDebugger) {
    Choose(2);
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Click(window->cell(0));
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Drag({1, 2, 3}, Qt::MiddleButton);
    for (int cell : {1, 2, 3}) EXPECT_EQ(CellCode(cell), 0) << cell;
}

TEST_F(UndoTest, AYesToTheDebuggerBelongsToTheStrokeThatCausedIt) {
    Choose(2);
    prompts.ExpectYesNo(kSpottedQuestion, true);
    Drag({30, 31});
    ASSERT_TRUE(Action("mnuSpot")->isChecked());
    EXPECT_EQ(window->undoStack()->count(), 1);
    Trigger("mnuUndo");
    EXPECT_FALSE(Action("mnuSpot")->isChecked());
    EXPECT_FALSE(set().Record(1).SpottedUnused);
    EXPECT_EQ(CellCode(30), 0);
}

TEST_F(UndoTest, UndoingARemovalBringsBackTheLevelListCountLabelAndGrid) {
    Trigger("mnuNewTil");
    Click(Find("cmdAddLev"));
    Click(Find("cmdAddLev"));
    auto* levels = Find<QComboBox>("cmbLevels");
    levels->setCurrentIndex(1);
    emit levels->activated(1);
    ASSERT_EQ(set().CurrentLevel, 2);
    Choose(5);
    Drag({40, 41});
    const QString list = LevelList();
    const QString label = Find<QLabel>("lblLevel")->text();
    const LevelSet before = set();

    prompts.ExpectYesNoCancel("Is this the level to trash? (No trashes the last Level)", Answer::Yes);
    Click(Find("cmdLoseLev"));
    ASSERT_EQ(set().LevelCount(), 2);
    ASSERT_TRUE(CellShows(40, 0));

    Trigger("mnuUndo");
    EXPECT_EQ(set(), before);
    EXPECT_EQ(LevelList(), list);
    EXPECT_EQ(list, QStringLiteral("Level 1,Level 2,Level 3 / Level 2"));
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), label);
    EXPECT_TRUE(CellShows(40, 5));
    EXPECT_TRUE(CellShows(41, 5));
    EXPECT_EQ(Find<QLabel>("statusLevel")->text(), QStringLiteral("Level 2 of 3"));

    // And the add before it, back to two levels.
    Trigger("mnuUndo");
    Trigger("mnuUndo");
    EXPECT_EQ(set().LevelCount(), 2);
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 2"));
    EXPECT_EQ(levels->count(), 2);
}

TEST_F(UndoTest, TypingInOneFieldIsOneStepAndTheBoxShowsTheTextBack) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->setFocus();
    title->end(false);
    // Typing that ends where it began leaves nothing to undo.
    QTest::keyClicks(title, "X");
    QTest::keyClick(title, Qt::Key_Backspace);
    ASSERT_EQ(set().Title, "Please Add a Title");
    EXPECT_FALSE(CanUndo());

    title->selectAll();
    QTest::keyClicks(title, "Caves");
    ASSERT_EQ(set().Title, "Caves");
    EXPECT_EQ(window->undoStack()->count(), 1);
    Trigger("mnuUndo");
    EXPECT_EQ(title->text(), QStringLiteral("Please Add a Title"));
    EXPECT_EQ(set().Title, "Please Add a Title");
    Trigger("mnuRedo");
    EXPECT_EQ(title->text(), QStringLiteral("Caves"));

    // Another field's typing is a step of its own.
    auto* ballx = Find<QLineEdit>("txtBallx");
    ballx->selectAll();
    QTest::keyClicks(ballx, "42");
    ASSERT_EQ(set().Layout(1).BallX, 42);
    EXPECT_EQ(window->undoStack()->count(), 2);
    Trigger("mnuUndo");
    EXPECT_EQ(set().Layout(1).BallX, 0);
    EXPECT_EQ(set().Title, "Caves");
}

TEST_F(UndoTest, OptionTogglesUndoWithTheirCheckMarks) {
    Trigger("mnuWrap");
    Trigger("mnuSpot");
    ASSERT_TRUE(Action("mnuWrap")->isChecked());
    Trigger("mnuUndo");
    EXPECT_FALSE(Action("mnuSpot")->isChecked());
    EXPECT_TRUE(Action("mnuWrap")->isChecked());
    Trigger("mnuUndo");
    EXPECT_FALSE(Action("mnuWrap")->isChecked());
    EXPECT_FALSE(set().UseWrapAround);
}

TEST_F(UndoTest, ANewSetStartsAnEmptyHistory) {
    Trigger("mnuNewTil");
    Choose(1);
    Drag({0, 1});
    Trigger("mnuUndo");
    ASSERT_TRUE(CanRedo());
    Click(window->cell(5));
    ASSERT_TRUE(CanUndo());
    Trigger("mnuNewShd");
    EXPECT_FALSE(CanUndo());
    EXPECT_FALSE(CanRedo());
    EXPECT_EQ(window->undoStack()->count(), 0);
}

TEST_F(UndoTest, TheEditEntriesCarryThePlatformsShortcutsAndCtrlZUndoesFromTheGrid) {
    EXPECT_EQ(Action("mnuUndo")->shortcuts(), QKeySequence::keyBindings(QKeySequence::Undo));
    EXPECT_EQ(Action("mnuRedo")->shortcuts(), QKeySequence::keyBindings(QKeySequence::Redo));
    Trigger("mnuNewTil");
    Choose(3);
    Drag({20, 21, 22});
    ASSERT_EQ(window->focusWidget(), window->cell(20));
    QTest::keyClick(window->cell(20), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(CellCode(20), 0);
    EXPECT_EQ(CellCode(22), 0);
    EXPECT_TRUE(CanRedo());
}

}  // namespace
}  // namespace shd::gui::test
