#include "gui/UndoSteps.h"

#include <QUndoStack>

namespace shd::gui {

namespace {

template <StepKind Kind>
class StepCommand final : public QUndoCommand {
public:
    StepCommand(EditorState before, EditorState after, ApplyState apply)
        : before_(std::move(before)), after_(std::move(after)), apply_(std::move(apply)) {
        setText(QString::fromLatin1(StepLabel(Kind)));
    }

    // Typing into one field merges with the typing before it; other kinds never merge.
    int id() const override { return MergesWithPrevious(Kind) ? static_cast<int>(Kind) : -1; }

    void undo() override { apply_(before_); }

    void redo() override {
        // The stack redoes a command as it is pushed, but the editor has just
        // made that change itself.
        if (justRecorded_) {
            justRecorded_ = false;
            return;
        }
        apply_(after_);
    }

    bool mergeWith(const QUndoCommand* other) override {
        // Only typing that follows on directly merges: a level switch between
        // two edits of a ball box leaves them two steps.
        const auto* next = dynamic_cast<const StepCommand*>(other);
        if (next == nullptr || !(next->before_ == after_)) return false;
        after_ = next->after_;
        // Typing that ends where it began is no step at all.
        setObsolete(after_ == before_);
        return true;
    }

private:
    EditorState before_, after_;
    ApplyState apply_;
    bool justRecorded_ = true;
};

template <StepKind Kind>
std::unique_ptr<QUndoCommand> Make(Step& step, ApplyState& apply) {
    return std::make_unique<StepCommand<Kind>>(std::move(step.before), std::move(step.after), std::move(apply));
}

}  // namespace

std::unique_ptr<QUndoCommand> MakeStepCommand(Step step, ApplyState apply) {
    switch (step.kind) {
    case StepKind::Paint: return Make<StepKind::Paint>(step, apply);
    case StepKind::ResetLevel: return Make<StepKind::ResetLevel>(step, apply);
    case StepKind::AddLevel: return Make<StepKind::AddLevel>(step, apply);
    case StepKind::RemoveLevel: return Make<StepKind::RemoveLevel>(step, apply);
    case StepKind::Toggle: return Make<StepKind::Toggle>(step, apply);
    case StepKind::SpecialCount: return Make<StepKind::SpecialCount>(step, apply);
    case StepKind::BallX: return Make<StepKind::BallX>(step, apply);
    case StepKind::BallY: return Make<StepKind::BallY>(step, apply);
    case StepKind::Title: return Make<StepKind::Title>(step, apply);
    case StepKind::BonusClock: return Make<StepKind::BonusClock>(step, apply);
    case StepKind::ExtraLifePoints: return Make<StepKind::ExtraLifePoints>(step, apply);
    case StepKind::Picture: return Make<StepKind::Picture>(step, apply);
    }
    return nullptr;
}

void UndoSteps::Push(Step step) {
    if (auto command = MakeStepCommand(std::move(step), apply_)) stack_.push(command.release());
}

void UndoSteps::Clear() { stack_.clear(); }

}  // namespace shd::gui
