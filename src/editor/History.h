// Undo and redo as whole-state steps: each user action that changes the set
// is recorded as the state before and after it. The Qt window keeps these in
// a QUndoStack; tests and other hosts can use History.
#pragma once

#include <cstddef>
#include <vector>

#include "editor/WindowState.h"
#include "model/LevelSet.h"

namespace shd {


enum class StepKind {
    Paint, ResetLevel, AddLevel, RemoveLevel, Toggle, SpecialCount, BallX, BallY, Title, BonusClock,
    ExtraLifePoints, Picture,
};

const char* StepLabel(StepKind kind);

// Consecutive edits of one text field make one step.
bool MergesWithPrevious(StepKind kind);

// What an undo step restores: the set and the parts of the window that show it.
struct EditorState {
    LevelSet set;
    std::vector<std::string> levelEntries;
    std::string levelText, levelCountLabel, ballXText, ballYText;
    std::vector<int> shownPictures;
    MenuMarks marks;
    bool operator==(const EditorState&) const = default;
};

struct Step {
    StepKind kind;
    EditorState before, after;
};

class StepSink {
public:
    virtual ~StepSink() = default;
    virtual void Push(Step step) = 0;  // a new step; the redo branch is dropped
    virtual void Clear() = 0;          // a new or opened set starts an empty history
};

// A plain undo stack over steps.
class History : public StepSink {
public:
    void Push(Step step) override;
    void Clear() override;
    bool CanUndo() const { return next_ > 0; }
    bool CanRedo() const { return next_ < steps_.size(); }
    const Step* Undo();  // the step to roll back, or nullptr
    const Step* Redo();  // the step to apply again, or nullptr
    std::size_t size() const { return steps_.size(); }

private:
    std::vector<Step> steps_;
    std::size_t next_ = 0;
};

}  // namespace shd
