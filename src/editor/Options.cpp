// The checks and options: the Tricky menu's toggles, the special count, the
// custom pieces, Reset All, and the debugger's questions.
#include <algorithm>

#include "editor/Editor.h"
#include "editor/StepRecorder.h"
#include "model/Numbers.h"
#include "rules/CustomPiece.h"

namespace shd {

namespace {

bool& MarkOf(MenuMarks& marks, Toggle which) {
    switch (which) {
    case Toggle::Spotted: return marks.Spotted;
    case Toggle::CenterLine: return marks.CenterLine;
    case Toggle::ZigZag: return marks.ZigZag;
    case Toggle::Custom: return marks.Custom;
    case Toggle::CustomShardles: return marks.CustomShardles;
    case Toggle::WrapAround: return marks.WrapAround;
    case Toggle::ArrowBreakable: return marks.ArrowBreakable;
    case Toggle::MatchLocks: return marks.MatchLocks;
    case Toggle::Debugger: return marks.Debugger;
    }
    return marks.Special;
}

bool& FlagOf(LevelSet& set, Toggle which) {
    LevelRecord& record = set.CurrentRecord();
    switch (which) {
    case Toggle::Spotted: return record.SpottedUnused;
    case Toggle::CenterLine: return record.CenterLineUnused;
    case Toggle::ZigZag: return record.ZigZagUnused;
    case Toggle::Custom: return record.CustomUnused;
    case Toggle::CustomShardles: return set.UseCustomShardles;
    case Toggle::WrapAround: return set.UseWrapAround;
    case Toggle::ArrowBreakable: return set.ArrowBlocksBreakable;
    case Toggle::MatchLocks: return set.MatchLocksToBlocks;
    case Toggle::Debugger: return set.UseShardlesDebugger;
    }
    return set.UseShardlesDebugger;
}

bool IsPerLevel(Toggle which) {
    return which == Toggle::Spotted || which == Toggle::CenterLine || which == Toggle::ZigZag ||
           which == Toggle::Custom;
}

}  // namespace

void Editor::Toggle(shd::Toggle which) {
    StepRecorder step(*this, StepKind::Toggle);
    bool& mark = MarkOf(ui_.marks, which);
    bool& flag = FlagOf(set_, which);
    // Per-level kinds follow the check mark, set-wide options their flag.
    const bool on = IsPerLevel(which) ? !mark : !flag;
    mark = on;
    flag = on;
}

void Editor::AskSpecialCount() {
    StepRecorder step(*this, StepKind::SpecialCount);
    LevelRecord& record = set_.CurrentRecord();
    const std::string answer = prompts_.InputBox(
        "How many other blocks are not used? Don't count blocks affected by the Flags.",
        DecimalText(record.SpecialUnusedCount));
    const auto value = ParseTypedNumber(answer);
    if (value && *value > 0 && *value <= 80) {
        record.SpecialUnusedCount = static_cast<std::int16_t>(RoundHalfEven(*value));
        ui_.marks.Special = true;
    } else {
        record.SpecialUnusedCount = 0;
        ui_.marks.Special = false;
    }
}

// Opening either picture switches custom shardles on, even when the dialog is cancelled.
void Editor::EditPiece(PictureKind kind) {
    StepRecorder step(*this, StepKind::Picture);
    set_.UseCustomShardles = true;
    ui_.marks.CustomShardles = true;
    CustomPieceEdit edit(set_, kind);
    if (prompts_.EditPicture(edit)) edit.StoreInto(set_);
}

void Editor::ResetAll() {
    if (!MayReplaceSet()) return;
    StepRecorder step(*this, StepKind::ResetLevel);
    auto& cells = set_.Current().Cells;
    std::fill(cells.begin(), cells.end(), 0);
    std::fill(ui_.shownPictures.begin(), ui_.shownPictures.end(), 0);
    LevelRecord& r = set_.CurrentRecord();
    r.CenterLineUnused = false, r.CenterLineCount = 0, r.CenterLineChangerCount = 0;
    r.CustomUnused = false, r.CustomCount = 0, r.CustomChangerCount = 0;
    r.SpottedUnused = false, r.SpottedCount = 0, r.SpottedChangerCount = 0;
    r.ZigZagUnused = false, r.ZigZagCount = 0, r.ZigZagChangerCount = 0;
    ui_.marks.CenterLine = ui_.marks.Custom = ui_.marks.Spotted = ui_.marks.ZigZag = false;
}

void Editor::ShardlesDebug() {
    for (const DebugCheck& check : DebugChecks()) {
        if (check.holds(set_, set_.CurrentLevel) && prompts_.AskYesNo(check.question)) Toggle(check.onYes);
    }
}

void Editor::RunDebuggerIfOn() {
    if (set_.IsShardles() && set_.UseShardlesDebugger) ShardlesDebug();
}

// Shows or hides the Shardles submenus; the right button pops the menu up.
bool Editor::PressBackground(MouseButton button) {
    const bool shardles = set_.IsShardles();
    ui_.unusedMenuVisible = shardles;
    ui_.optionsMenuVisible = shardles;
    return button == MouseButton::Right;
}

}  // namespace shd
