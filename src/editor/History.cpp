#include "editor/History.h"

namespace shd {

namespace {
bool IsTyping(StepKind kind) {
    return kind == StepKind::Title || kind == StepKind::BallX || kind == StepKind::BallY ||
           kind == StepKind::BonusClock || kind == StepKind::ExtraLifePoints;
}
}  // namespace

void History::Push(Step step) {
    ++changes_;
    // The redo branch goes, and with it the file's state if it lay there.
    steps_.resize(next_);
    if (clean_ != kNowhere && clean_ > next_) clean_ = kNowhere;
    // Only typing that follows on directly joins: a level switch between two
    // edits of a ball box leaves them two steps.
    if (!steps_.empty() && IsTyping(step.kind) && steps_.back().kind == step.kind &&
        steps_.back().after == step.before) {
        if (clean_ == next_) clean_ = kNowhere;  // the state it changes was the file's
        steps_.back().after = std::move(step.after);
        if (steps_.back().after == steps_.back().before) steps_.pop_back();
    } else {
        steps_.push_back(std::move(step));
        if (steps_.size() > kMostSteps) {
            steps_.pop_front();
            if (clean_ != kNowhere) clean_ = clean_ == 0 ? kNowhere : clean_ - 1;
        }
    }
    next_ = steps_.size();
}

void History::Clear() {
    ++changes_;
    steps_.clear();
    next_ = 0;
    clean_ = 0;
}

const EditorState* History::Undo() {
    if (!CanUndo()) return nullptr;
    ++changes_;
    return &steps_[--next_].before;
}

const EditorState* History::Redo() {
    if (!CanRedo()) return nullptr;
    ++changes_;
    return &steps_[next_++].after;
}

}  // namespace shd
