// Painting: the palette's chosen block, and the pencil's strokes on the grid.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "editor/Editor.h"

namespace shd {

void Editor::ChooseBlock(int code) {
    if (code >= 0 && code <= 15) ui_.selectedBlock = code;
}

void Editor::StepBlock(Key key) {
    int& block = ui_.selectedBlock;
    if (key == Key::Right) {
        if (block == 15) block = 0;
        if (block < 15) ++block;
    } else if (key == Key::Left) {
        if (block == 0) block = 15;
        if (block > 0) --block;
    }
    ui_.focusedPalette = block;
}

void Editor::PaintCell(int index, MouseButton button) {
    auto& cells = set_.Current().Cells;
    if (index < 0 || static_cast<std::size_t>(index) >= cells.size()) return;
    if (button != MouseButton::Left && button != MouseButton::Right) return;
    SetCell(index, button == MouseButton::Left ? ui_.selectedBlock : 0);
}

void Editor::SetCell(int index, int code) {
    std::uint8_t& cell = set_.Current().Cells[static_cast<std::size_t>(index)];
    LevelRecord& record = set_.CurrentRecord();
    if (auto field = CountFieldFor(cell)) --(record.*field);
    if (auto field = CountFieldFor(code)) ++(record.*field);
    ui_.shownPictures[static_cast<std::size_t>(index)] = code <= 15 ? code : kUnknownPicture;
    cell = static_cast<std::uint8_t>(code);
}

void Editor::ClickCell(int index, MouseButton button) {
    PressCell(index, {}, button, static_cast<int>(button));
    ReleaseButton(button);
}

void Editor::PressCell(int index, Point at, MouseButton button, int held) {
    // A stroke whose release never came (the pointer was taken away) ends now;
    // another button during a stroke does nothing.
    if (stroke_ && !(held & static_cast<int>(stroke_->button))) EndStroke();
    if (stroke_) return;
    if (ui_.tool != Tool::Pencil) return PressWithTool(index, at, button);
    stroke_ = Stroke{button, index, at, CaptureState()};
    PaintCell(index, button);  // the middle button paints nothing, but its release still runs the debugger
}

void Editor::DragTo(Point at, int held, const CellLocator& cellAt) {
    if (!stroke_ || !(held & static_cast<int>(stroke_->button))) return;
    // Walk the way from the last point one unit at a time, so a quick drag
    // reported in big jumps still paints every cell it crossed.
    const Point from = stroke_->last;
    const int steps = std::max(std::abs(at.x - from.x), std::abs(at.y - from.y));
    for (int s = 1; s <= steps; ++s) {
        const double t = static_cast<double>(s) / steps;
        const Point p{from.x + static_cast<int>(std::lround((at.x - from.x) * t)),
                      from.y + static_cast<int>(std::lround((at.y - from.y) * t))};
        const int cell = cellAt(p);
        if (stroke_->tool == Tool::Pencil) {
            if (cell >= 0 && cell != stroke_->lastCell) PaintCell(cell, stroke_->button);
            stroke_->lastCell = cell;
        } else if (cell >= 0) {
            stroke_->lastCell = cell;  // off the grid, a rectangle keeps the last cell it was on
        }
    }
    stroke_->last = at;
    if (stroke_->tool != Tool::Pencil) StretchToolStroke();
}

void Editor::ReleaseButton(MouseButton button) {
    if (stroke_ && stroke_->button == button) EndStroke();
}

void Editor::EndStroke() {
    if (!stroke_) return;
    Stroke stroke = std::move(*stroke_);
    stroke_.reset();
    if (stroke.tool == Tool::Select) return;  // selecting changes nothing: no step, no debugger
    // The rectangle's cells and the debugger's answers join the stroke's step.
    ++recording_;
    if (stroke.tool == Tool::Rectangle) {
        const int code = stroke.button == MouseButton::Left ? ui_.selectedBlock : 0;
        // Clipped, as the grid may have been replaced under an unfinished stroke.
        if (stroke.button != MouseButton::Middle)
            for (int cell : CellsIn(ClipRange(ui_.preview, RowsOf(set_.Current().Cells)))) SetCell(cell, code);
        ui_.preview = {};
    }
    RunDebuggerIfOn();
    --recording_;
    EditorState after = CaptureState();
    const StepKind kind = stroke.tool == Tool::Fill        ? StepKind::Fill
                          : stroke.tool == Tool::Rectangle ? StepKind::Rectangle
                                                           : StepKind::Paint;
    if (!(after == stroke.before)) history_.Push({kind, std::move(stroke.before), std::move(after)});
}

}  // namespace shd
