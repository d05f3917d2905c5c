// The undo step around an operation, shared by the files that hold Editor's operations.
#pragma once

#include "editor/Editor.h"

namespace shd {

// Records the operation it guards as one step, unless an outer operation already
// records (the debugger's answers after a click belong to the click) or a
// stroke is open (its step is recorded when it ends).
class StepRecorder {
public:
    StepRecorder(Editor& editor, StepKind kind) : editor_(editor), kind_(kind) {
        outermost_ = editor_.recording_++ == 0 && !editor_.stroke_;
        if (outermost_) before_ = editor_.CaptureState();
    }
    ~StepRecorder() {
        --editor_.recording_;
        if (!outermost_) return;
        EditorState after = editor_.CaptureState();
        if (!(after == before_)) editor_.history_.Push({kind_, std::move(before_), std::move(after)});
    }
    StepRecorder(const StepRecorder&) = delete;
    StepRecorder& operator=(const StepRecorder&) = delete;

private:
    Editor& editor_;
    StepKind kind_;
    bool outermost_ = false;
    EditorState before_;
};

}  // namespace shd
