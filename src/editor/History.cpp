#include "editor/History.h"

namespace shd {

const char* StepLabel(StepKind kind) {
    switch (kind) {
    case StepKind::Paint: return "Paint";
    case StepKind::ResetLevel: return "Reset All";
    case StepKind::AddLevel: return "Add a Level";
    case StepKind::RemoveLevel: return "Lose a Level";
    case StepKind::Toggle: return "Option";
    case StepKind::SpecialCount: return "Special Unused Blocks";
    case StepKind::BallX: return "Ball Start Across";
    case StepKind::BallY: return "Ball Start Down";
    case StepKind::Title: return "Level Name";
    case StepKind::BonusClock: return "Bonus Clock";
    case StepKind::ExtraLifePoints: return "Extra Life Points";
    case StepKind::Picture: return "Custom Piece";
    }
    return "";
}

bool MergesWithPrevious(StepKind kind) {
    return kind == StepKind::Title || kind == StepKind::BallX || kind == StepKind::BallY ||
           kind == StepKind::BonusClock || kind == StepKind::ExtraLifePoints;
}

void History::Push(Step step) {
    steps_.resize(next_);
    // Only typing that follows on directly merges: a level switch between two
    // edits of a ball box leaves them two steps.
    if (!steps_.empty() && MergesWithPrevious(step.kind) && steps_.back().kind == step.kind &&
        steps_.back().after == step.before) {
        steps_.back().after = std::move(step.after);
        return;
    }
    steps_.push_back(std::move(step));
    next_ = steps_.size();
}

void History::Clear() {
    steps_.clear();
    next_ = 0;
}

const Step* History::Undo() { return CanUndo() ? &steps_[--next_] : nullptr; }
const Step* History::Redo() { return CanRedo() ? &steps_[next_++] : nullptr; }

}  // namespace shd
