// The editing tools other than the pencil, the selection and the clipboard,
// and the commands that change a level's cells as a whole.
#include <algorithm>

#include "editor/CellTools.h"
#include "editor/Editor.h"
#include "editor/StepRecorder.h"

namespace shd {

namespace {
constexpr const char* kNoCells = "The clipboard holds no cells to paste.";
}  // namespace

// ---- tools on the grid ----

void Editor::ChooseTool(Tool tool) {
    EndStroke();
    ui_.tool = tool;
}

// Rectangle and Fill open a stroke like the pencil's, so that their change
// and the debugger's answers at the release are one step; Select opens one
// that only moves the selection.
void Editor::PressWithTool(int index, Point at, MouseButton button) {
    if (index < 0 || index >= static_cast<int>(set_.Current().Cells.size())) return;
    const Tool tool = ui_.tool;
    // Other buttons leave the selection alone, for a context menu to act on.
    if (tool == Tool::Select && button != MouseButton::Left) return;
    stroke_ = Stroke{button, index, at, tool == Tool::Select ? EditorState{} : CaptureState(), tool, index};
    StretchToolStroke();
    if (tool == Tool::Fill && button != MouseButton::Middle) {
        const int code = button == MouseButton::Left ? ui_.selectedBlock : 0;
        for (int cell : ConnectedArea(set_.Current().Cells, index)) SetCell(cell, code);
    }
}

void Editor::StretchToolStroke() {
    const CellRange range = RangeBetween(stroke_->anchor, stroke_->lastCell);
    if (stroke_->tool == Tool::Rectangle) ui_.preview = range;
    if (stroke_->tool == Tool::Select) ui_.selection = range;
}

// ---- the selection and the clipboard ----

void Editor::ClearSelection() {
    EndStroke();
    ui_.selection = {};
}

std::string Editor::CopySelection() const {
    const BlockGrid& cells = set_.Current().Cells;
    const CellRange range = ClipRange(ui_.selection, RowsOf(cells));
    return range.empty() ? std::string{} : CellsText(CopyRange(cells, range));
}

std::string Editor::CutSelection() {
    EndStroke();
    const std::string text = CopySelection();
    if (text.empty()) return text;
    BlockGrid cells = set_.Current().Cells;
    for (int cell : CellsIn(ClipRange(ui_.selection, RowsOf(cells)))) cells[static_cast<std::size_t>(cell)] = 0;
    ChangeCells(StepKind::CutCells, cells);
    return text;
}

void Editor::PasteCells(const std::string& text) {
    EndStroke();
    const auto block = ParseCellsText(text);
    if (!block) {
        ui_.status = kNoCells;
        return;
    }
    const BlockGrid& cells = set_.Current().Cells;
    const CellRange at = ClipRange(ui_.selection, RowsOf(cells));
    CellRange pasted;
    const BlockGrid next = Placed(cells, *block, at.column, at.row, &pasted);  // an empty range is at 0, 0
    ui_.selection = pasted;
    ChangeCells(StepKind::PasteCells, next);
}

// ---- whole-level cell commands ----

void Editor::FlipLeftRight() { ChangeCells(StepKind::Flip, FlippedLeftRight(set_.Current().Cells)); }
void Editor::FlipTopBottom() { ChangeCells(StepKind::Flip, FlippedTopBottom(set_.Current().Cells)); }
void Editor::ShiftCells(int columns, int rows) {
    ChangeCells(StepKind::Shift, Shifted(set_.Current().Cells, columns, rows));
}

// The current level's cells become `cells`, one cell at a time so the piece
// counts stay in step, as one step followed by the debugger.
void Editor::ChangeCells(StepKind kind, const BlockGrid& cells) {
    EndStroke();
    StepRecorder step(*this, kind);
    PutCells(cells);
    RunDebuggerIfOn();
}

void Editor::PutCells(const BlockGrid& cells) {
    const BlockGrid& now = set_.Current().Cells;
    for (std::size_t i = 0; i < cells.size() && i < now.size(); ++i)
        if (cells[i] != now[i]) SetCell(static_cast<int>(i), cells[i]);
}

}  // namespace shd
