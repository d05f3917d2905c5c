#include "editor/EditorFixture.h"

namespace shd::test {
namespace {

class Undo : public EditorTest {
protected:
    Undo() { editor.SetStepSink(&history); }

    void UndoStep() {
        const Step* step = history.Undo();
        ASSERT_NE(step, nullptr);
        editor.ApplyState(step->before);
    }
    void RedoStep() {
        const Step* step = history.Redo();
        ASSERT_NE(step, nullptr);
        editor.ApplyState(step->after);
    }
    // Runs `action` as one step: undo gives back exactly the state before,
    // redo exactly the state after.
    template <class Action>
    void ExpectOneStep(StepKind kind, Action action) {
        const EditorState before = editor.CaptureState();
        const std::size_t steps = history.size();
        action();
        const EditorState after = editor.CaptureState();
        ASSERT_FALSE(after == before) << StepLabel(kind);
        ASSERT_EQ(history.size(), steps + 1) << StepLabel(kind);
        UndoStep();
        EXPECT_TRUE(editor.CaptureState() == before) << StepLabel(kind);
        RedoStep();
        EXPECT_TRUE(editor.CaptureState() == after) << StepLabel(kind);
    }

    History history;
};

TEST_F(Undo, EveryKindOfChangeIsOneStepThatUndoesAndRedoesExactly) {
    TurnDebuggerOff();
    ExpectOneStep(StepKind::Paint, [&] { Paint(12, 8); });
    ExpectOneStep(StepKind::AddLevel, [&] { editor.cmdAddLev_Click(); });
    ExpectOneStep(StepKind::Toggle, [&] { editor.Toggle(Toggle::ZigZag); });
    ExpectOneStep(StepKind::Toggle, [&] { editor.Toggle(Toggle::WrapAround); });
    ExpectOneStep(StepKind::SpecialCount, [&] {
        prompts.ExpectInput("How many other blocks are not used? Don't count blocks affected by the Flags.", "9");
        editor.mnuSpecial_Click();
    });
    ExpectOneStep(StepKind::BallX, [&] { editor.txtBallx_KeyUp('4', "40"); });
    ExpectOneStep(StepKind::BallY, [&] { editor.txtBally_KeyUp('9', "99"); });
    ExpectOneStep(StepKind::Title, [&] { editor.txtTitle_Changed("Caves"); });
    ExpectOneStep(StepKind::BonusClock, [&] { editor.cmbBonus_Changed("90"); });
    ExpectOneStep(StepKind::ExtraLifePoints, [&] { editor.cmbExLife_Changed("700"); });
    ExpectOneStep(StepKind::Picture, [&] {
        prompts.ExpectPicture([](CustomPieceEdit& edit) {
            edit.Click(1);
            return true;
        });
        editor.mnuCreateNormShd_Click();
    });
    ExpectOneStep(StepKind::ResetLevel, [&] { editor.mnuResetAll_Click(); });
    // Removing a level between others: undo brings back its grid, counts, list entry and label.
    editor.cmdAddLev_Click();
    SwitchTo(2);
    Paint(0, 2);
    ExpectOneStep(StepKind::RemoveLevel, [&] {
        prompts.ExpectYesNoCancel("Is this the level to trash? (No trashes the last Level)", Answer::Yes);
        editor.cmdLoseLev_Click();
    });
    EXPECT_EQ(CheckConsistent(set()), "");
}

TEST_F(Undo, AStrokeAndTheDebuggersAnswersAreOneStep) {
    Select(2);
    editor.BeginStroke();
    editor.PaintCell(0, MouseButton::Left);
    editor.PaintCell(1, MouseButton::Left);
    editor.PaintCell(2, MouseButton::Left);
    prompts.ExpectYesNo("You have a Spotted Shardle without a Changer.  Set Spotted as Unused?", true);
    editor.EndStroke();  // the debugger runs once, at the release
    EXPECT_EQ(set().Record(1).SpottedCount, 3);
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    ASSERT_EQ(history.size(), 1u);
    UndoStep();
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
    EXPECT_FALSE(set().Record(1).SpottedUnused);
    EXPECT_FALSE(ui().marks.Spotted);
    EXPECT_EQ(set().Layout(1).Cells[2], 0);
}

TEST_F(Undo, TextEditsMergeAndNothingChangedRecordsNothing) {
    editor.txtTitle_Changed("C");
    editor.txtTitle_Changed("Ca");
    editor.txtTitle_Changed("Cav");
    editor.txtTitle_KeyUp('V');
    EXPECT_EQ(history.size(), 1u);
    editor.optBlocks_Click(4);
    editor.Form_MouseDown(MouseButton::Left);
    EXPECT_EQ(history.size(), 1u);
    UndoStep();
    EXPECT_EQ(set().Title, "Please Add a Title");
    EXPECT_EQ(ui().SelectedBlock, 4);  // the palette choice is not part of the set
}

TEST_F(Undo, TypingMergesOnlyWhenNothingCameBetween) {
    TurnDebuggerOff();
    AddLevels(1);
    const std::size_t start = history.size();
    editor.txtBallx_KeyUp('1', "1");
    editor.txtBallx_KeyUp('2', "12");
    EXPECT_EQ(history.size(), start + 1);
    SwitchTo(2);
    editor.txtBallx_KeyUp('3', "3");
    EXPECT_EQ(history.size(), start + 2);
    UndoStep();
    EXPECT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(set().Layout(1).BallX, 12);
}

TEST_F(Undo, NewAndOpenStartAnEmptyHistory) {
    TurnDebuggerOff();
    Paint(3, 1);
    EXPECT_TRUE(history.CanUndo());
    editor.mnuNewTil_Click();
    EXPECT_FALSE(history.CanUndo());
    Paint(3, 1);
    prompts.ExpectOpen("My Files (*.rsx)|*.rsx", "");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.CanRedo());
}

TEST_F(Undo, ANewStepDropsTheRedoBranch) {
    TurnDebuggerOff();
    Paint(0, 1);
    Paint(1, 1);
    UndoStep();
    EXPECT_TRUE(history.CanRedo());
    Paint(5, 1);
    EXPECT_FALSE(history.CanRedo());
    EXPECT_EQ(set().Layout(1).Cells[1], 0);
}

}  // namespace
}  // namespace shd::test
