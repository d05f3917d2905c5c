// The editor's steps as commands on a QUndoStack, without a window: what is
// put back on push, undo and redo, and which steps merge.
#include <gtest/gtest.h>

#include <QUndoStack>
#include <string>
#include <vector>

#include "gui/UndoSteps.h"

namespace shd::gui::test {
namespace {

EditorState Titled(const std::string& title) {
    EditorState state;
    state.set.Title = title;
    return state;
}

class UndoStepsTest : public ::testing::Test {
protected:
    // Every state the stack puts back, by its title.
    std::vector<std::string> applied;
    QUndoStack stack;
    UndoSteps steps{stack, [this](const EditorState& state) { applied.push_back(state.set.Title); }};

    void Push(StepKind kind, const std::string& before, const std::string& after) {
        steps.Push({kind, Titled(before), Titled(after)});
    }
};

TEST_F(UndoStepsTest, APushedStepIsNotAppliedAgainButUndoAndRedoPutItsStatesBack) {
    Push(StepKind::Paint, "a", "b");
    EXPECT_TRUE(applied.empty());  // the editor made the change itself
    ASSERT_TRUE(stack.canUndo());
    EXPECT_EQ(stack.undoText(), QStringLiteral("Paint"));
    stack.undo();
    stack.redo();
    stack.undo();
    EXPECT_EQ(applied, (std::vector<std::string>{"a", "b", "a"}));
}

TEST_F(UndoStepsTest, TypingInOneFieldMergesKeepingTheFirstStateBeforeAndTheLastAfter) {
    Push(StepKind::Title, "a", "ab");
    Push(StepKind::Title, "ab", "abc");
    Push(StepKind::Title, "abc", "abcd");
    EXPECT_EQ(stack.count(), 1);
    stack.undo();
    stack.redo();
    EXPECT_EQ(applied, (std::vector<std::string>{"a", "abcd"}));
}

TEST_F(UndoStepsTest, OnlyTheTextFieldsMergeAndOnlyWithTheirOwnKind) {
    Push(StepKind::Title, "a", "b");
    Push(StepKind::BallX, "b", "c");
    Push(StepKind::BallX, "c", "d");  // merges with the one before
    Push(StepKind::Title, "d", "e");
    Push(StepKind::Paint, "e", "f");
    Push(StepKind::Paint, "f", "g");
    Push(StepKind::Toggle, "g", "h");
    Push(StepKind::Toggle, "h", "i");
    EXPECT_EQ(stack.count(), 7);
    while (stack.canUndo()) stack.undo();
    EXPECT_EQ(applied, (std::vector<std::string>{"h", "g", "f", "e", "d", "b", "a"}));
}

TEST_F(UndoStepsTest, TypingThatEndsWhereItBeganLeavesNoStep) {
    Push(StepKind::Paint, "a", "b");
    Push(StepKind::Title, "b", "bX");
    Push(StepKind::Title, "bX", "b");
    EXPECT_EQ(stack.count(), 1);
    stack.undo();
    EXPECT_EQ(applied, (std::vector<std::string>{"a"}));
}

TEST_F(UndoStepsTest, AfterAnUndoANewStepNeitherMergesWithTheUndoneOneNorKeepsItsRedo) {
    Push(StepKind::Title, "a", "b");
    stack.undo();
    Push(StepKind::Title, "a", "c");
    EXPECT_FALSE(stack.canRedo());
    EXPECT_EQ(stack.count(), 1);
    stack.undo();
    EXPECT_EQ(applied, (std::vector<std::string>{"a", "a"}));
}

TEST_F(UndoStepsTest, ClearForgetsEveryStep) {
    Push(StepKind::AddLevel, "a", "b");
    Push(StepKind::Paint, "b", "c");
    stack.undo();
    steps.Clear();
    EXPECT_FALSE(stack.canUndo());
    EXPECT_FALSE(stack.canRedo());
}

}  // namespace
}  // namespace shd::gui::test
