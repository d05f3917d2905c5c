// The editor's undo steps on Qt's undo stack: one command class per kind of
// change, each putting back the whole state recorded before or after it.
#pragma once

#include <QUndoCommand>
#include <functional>
#include <memory>

#include "editor/History.h"

class QUndoStack;

namespace shd::gui {

// Puts a recorded state into the editor and shows it.
using ApplyState = std::function<void(const EditorState&)>;

// A command for one step; its class is chosen by the step's kind.
std::unique_ptr<QUndoCommand> MakeStepCommand(Step step, ApplyState apply);

// The editor records into this; every step becomes a command on `stack`.
class UndoSteps : public StepSink {
public:
    UndoSteps(QUndoStack& stack, ApplyState apply) : stack_(stack), apply_(std::move(apply)) {}
    void Push(Step step) override;
    void Clear() override;

private:
    QUndoStack& stack_;
    ApplyState apply_;
};

}  // namespace shd::gui
