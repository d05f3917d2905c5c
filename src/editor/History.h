// Undo and redo as whole-state steps: each user action that changes the set
// is kept as the state before and after it.
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "editor/WindowState.h"
#include "model/LevelSet.h"

namespace shd {

// What a step was, so that typing into one field can become one step.
enum class StepKind {
    Paint, ResetLevel, AddLevel, RemoveLevel, Toggle, SpecialCount, BallX, BallY, Title, BonusClock,
    ExtraLifePoints, Picture, Rectangle, Fill, CutCells, PasteCells, Flip, Shift, DuplicateLevel, MoveLevel,
    PasteLevel,
};

// What an undo step restores: the set and the parts of the window that show it.
struct EditorState {
    LevelSet set;
    std::vector<std::string> levelEntries;
    std::string levelText, levelCountText, ballXText, ballYText;
    std::vector<int> shownPictures;
    MenuMarks marks;
    bool operator==(const EditorState&) const = default;
};

struct Step {
    StepKind kind;
    EditorState before, after;
};

class History {
public:
    // A new step; the redo branch goes. Typing into one text field that
    // follows on directly from the last step joins it, and typing that ends
    // where it began leaves no step.
    void Push(Step step);
    void Clear();
    bool CanUndo() const { return next_ > 0; }
    bool CanRedo() const { return next_ < steps_.size(); }
    // The state to go back or forward to, or nullptr when there is none.
    const EditorState* Undo();
    const EditorState* Redo();

    // The state the set's file holds: set when it is opened or saved, and
    // reached again by undoing or redoing back to it.
    void MarkClean() { clean_ = next_; }
    bool IsClean() const { return clean_ == next_; }
    // A set that differs from its file with no step to undo: a restored recovery copy.
    void MarkChanged() { clean_ = kNowhere; }
    // Goes up with every step, undo, redo and clearing, so a watcher can tell
    // the set may have changed without comparing it.
    std::size_t changes() const { return changes_; }

private:
    static constexpr std::size_t kMostSteps = 500;  // each holds the whole set twice
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
    std::deque<Step> steps_;
    std::size_t next_ = 0;   // steps before this one are done
    std::size_t clean_ = 0;  // kNowhere once no undo or redo can reach it
    std::size_t changes_ = 0;
};

}  // namespace shd
