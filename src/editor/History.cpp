#include "editor/History.h"

namespace shd {

namespace {
bool IsTyping(StepKind kind) {
    return kind == StepKind::Title || kind == StepKind::BallX || kind == StepKind::BallY ||
           kind == StepKind::BonusClock || kind == StepKind::ExtraLifePoints;
}
}  // namespace

void History::Push(Step step) {
    steps_.resize(next_);
    // Only typing that follows on directly joins: a level switch between two
    // edits of a ball box leaves them two steps.
    if (!steps_.empty() && IsTyping(step.kind) && steps_.back().kind == step.kind &&
        steps_.back().after == step.before) {
        steps_.back().after = std::move(step.after);
        if (steps_.back().after == steps_.back().before) steps_.pop_back();
    } else {
        steps_.push_back(std::move(step));
        if (steps_.size() > kMostSteps) steps_.pop_front();
    }
    next_ = steps_.size();
}

void History::Clear() {
    steps_.clear();
    next_ = 0;
}

const EditorState* History::Undo() { return CanUndo() ? &steps_[--next_].before : nullptr; }
const EditorState* History::Redo() { return CanRedo() ? &steps_[next_++].after : nullptr; }

}  // namespace shd
