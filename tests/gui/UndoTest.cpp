// Undo steps on a QUndoStack and which of them merge; drag painting and
// undo/redo in the real window: strokes across cells, the Edit menu, and that
// an undo gives back exactly what the window showed.
#include <QAction>
#include <QKeySequence>
#include <QLineEdit>
#include <QUndoStack>

#include "GuiFixture.h"
#include "gui/UndoSteps.h"

namespace shd::gui::test {
namespace {

class UndoStepsTest : public ::testing::Test {
protected:
    // Every state the stack puts back, by its title.
    std::vector<std::string> applied;
    QUndoStack stack;
    UndoSteps steps{stack, [this](const EditorState& state) { applied.push_back(state.set.Title); }};

    void Push(StepKind kind, const std::string& before, const std::string& after) {
        EditorState from, to;
        from.set.Title = before;
        to.set.Title = after;
        steps.Push({kind, from, to});
    }
};

TEST_F(UndoStepsTest, PushedStepsAreNotAppliedAgainAndOnlyTypingThatFollowsOnInOneTextFieldMerges) {
    Push(StepKind::Title, "a", "ab");
    Push(StepKind::Title, "ab", "abc");  // merges: a to abc
    Push(StepKind::BallX, "abc", "d");
    Push(StepKind::BallX, "d", "e");     // merges: abc to e
    Push(StepKind::BallX, "x", "f");     // something came between: a step of its own
    Push(StepKind::Title, "f", "g");
    Push(StepKind::Paint, "g", "h");
    Push(StepKind::Paint, "h", "i");
    Push(StepKind::Toggle, "i", "j");
    Push(StepKind::Toggle, "j", "k");
    Push(StepKind::Title, "k", "kX");
    Push(StepKind::Title, "kX", "k");    // ends where it began: no step at all
    EXPECT_EQ(stack.count(), 8);
    EXPECT_TRUE(applied.empty());  // the editor made each change itself
    while (stack.canUndo()) stack.undo();
    stack.redo();
    EXPECT_EQ(applied, (std::vector<std::string>{"j", "i", "h", "g", "f", "x", "abc", "a", "abc"}));
}

class UndoTest : public WindowTest {
protected:
    bool CanUndo() const { return Action("mnuUndo")->isEnabled(); }
    bool CanRedo() const { return Action("mnuRedo")->isEnabled(); }
    int Steps() const { return window->undoStack()->count(); }
};

TEST_F(UndoTest, ADragPaintsEveryCellItEntersAsksOnceAtTheReleaseAndIsOneStep) {
    EXPECT_FALSE(CanUndo());
    EXPECT_FALSE(CanRedo());
    Choose(2);
    const std::vector<int> stroke{10, 11, 12, 20};  // along row 1, then down into row 2
    prompts.ExpectYesNo(kSpottedQuestion, false).Then([&] {
        for (int cell : stroke) EXPECT_TRUE(CellShows(cell, 2)) << cell;  // the whole stroke is on the grid
    });
    Drag(stroke);
    EXPECT_EQ(Codes(0, 23), "000000000" "02220" "00000" "020" "00");
    EXPECT_EQ(set().Record(1).SpottedCount, 4);
    EXPECT_EQ(Steps(), 1);

    Trigger("mnuUndo");
    EXPECT_EQ(Codes(0, 79), std::string(80, '0'));
    for (int cell : stroke) EXPECT_TRUE(CellShows(cell, 0)) << cell;
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
    EXPECT_FALSE(CanUndo());
    EXPECT_TRUE(CanRedo());
    Trigger("mnuRedo");
    for (int cell : stroke) EXPECT_TRUE(CellShows(cell, 2)) << cell;
    EXPECT_EQ(set().Record(1).SpottedCount, 4);
    EXPECT_TRUE(CanUndo());
    EXPECT_FALSE(CanRedo());
}

TEST_F(UndoTest, AQuickDragPaintsTheCellsBetweenAndTheRightButtonErasesAlongItsStroke) {
    Trigger("mnuNewTil");
    Choose(2);
    Drag({16, 23});  // one move from the first to the last cell of row 2
    EXPECT_EQ(Codes(15, 24), "0222222220");
    Drag({17, 18}, Qt::RightButton);
    EXPECT_EQ(Codes(15, 24), "0200222220");
    EXPECT_TRUE(CellShows(17, 0));
    EXPECT_EQ(set().Record(1).SpottedCount, 6);
    EXPECT_EQ(Steps(), 2);
    Trigger("mnuUndo");
    EXPECT_EQ(set().Record(1).SpottedCount, 8);
    EXPECT_TRUE(CellShows(17, 2));
}

TEST_F(UndoTest, TheMiddleButtonOnlyRunsTheDebuggerAndAYesBelongsToTheStrokeThatCausedIt) {
    Choose(2);
    prompts.ExpectYesNo(kSpottedQuestion, false);
    ClickCell(0);
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Drag({1, 2, 3}, Qt::MiddleButton);
    EXPECT_EQ(Codes(0, 3), "2000");
    EXPECT_TRUE(CellShows(1, 0));
    prompts.ExpectYesNo(kSpottedQuestion, true);
    Drag({30, 31});
    ASSERT_TRUE(Checked("mnuSpot"));
    EXPECT_EQ(Steps(), 2);  // the middle button's stroke changed nothing
    Trigger("mnuUndo");
    EXPECT_FALSE(Checked("mnuSpot"));
    EXPECT_FALSE(set().Record(1).SpottedUnused);
    EXPECT_EQ(Codes(30, 31), "00");
}

TEST_F(UndoTest, TypingInOneFieldIsOneStepAndTheBoxShowsTheTextBack) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->setFocus();
    title->selectAll();
    QTest::keyClicks(title, "Caves");
    EXPECT_EQ(Steps(), 1);
    Trigger("mnuUndo");
    EXPECT_EQ(title->text(), QStringLiteral("Please Add a Title"));
    EXPECT_EQ(set().Title, "Please Add a Title");
    Trigger("mnuRedo");
    EXPECT_EQ(title->text(), QStringLiteral("Caves"));
}

TEST_F(UndoTest, TheEditEntriesCarryThePlatformsShortcutsAndCtrlZUndoesFromTheGrid) {
    EXPECT_EQ(Action("mnuUndo")->shortcuts(), QKeySequence::keyBindings(QKeySequence::Undo));
    EXPECT_EQ(Action("mnuRedo")->shortcuts(), QKeySequence::keyBindings(QKeySequence::Redo));
    Trigger("mnuNewTil");
    Choose(3);
    Drag({20, 21, 22});
    Drag({30, 31});
    ASSERT_EQ(Focused(), Grid());
    QTest::keyClick(Grid(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Codes(20, 31), "333000000000");
    EXPECT_TRUE(CanRedo());
}

}  // namespace
}  // namespace shd::gui::test
