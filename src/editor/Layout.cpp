#include "editor/Layout.h"

#include <algorithm>

namespace shd {

GridShape ShapeOf(GameKind kind) {
    // Tiltbash blocks are a little wider than Shardles ones.
    return kind == GameKind::Shardles ? GridShape{kColumns, RowCount(kind), 40, 30}
                                      : GridShape{kColumns, RowCount(kind), 44, 30};
}

int FitZoom(const GridShape& shape, int width, int height) {
    if (shape.columns * shape.pictureWidth <= 0 || shape.rows * shape.pictureHeight <= 0) return 1;
    const int across = width / (shape.columns * shape.pictureWidth);
    const int down = height / (shape.rows * shape.pictureHeight);
    return std::clamp(std::min(across, down), 1, kMostZoom);
}

int CellAt(const GridShape& shape, int zoom, Point at) {
    if (at.x < 0 || at.y < 0 || zoom < 1 || shape.pictureWidth <= 0 || shape.pictureHeight <= 0) return -1;
    const int column = at.x / (shape.pictureWidth * zoom);
    const int row = at.y / (shape.pictureHeight * zoom);
    if (column >= shape.columns || row >= shape.rows) return -1;
    return row * shape.columns + column;
}

std::string ZoomText(int zoom, bool fitting) {
    return "Zoom " + std::to_string(zoom * 100) + "%" + (fitting ? " (fit)" : "");
}

namespace {
// What the editor knows each Shardles code as; the game gives 7 and 10 no
// meaning the editor needs.
const char* ShardlesName(int code) {
    static const char* const kNames[16] = {
        "empty cell",          "block",           "spotted shardle", "spotted changer",
        "center-line shardle", "center-line changer", "last block",  nullptr,
        "zig-zag shardle",     "zig-zag changer", nullptr,           "block that match-locks leaves out",
        "block that match-locks counts twice", "custom shardle", "custom changer", "arrow block",
    };
    return code >= 0 && code < 16 ? kNames[code] : nullptr;
}

// A code's name, or "" where the editor knows none: Tiltbash blocks differ
// only in how much they count.
std::string NameOf(GameKind kind, int code) {
    if (code == 0) return "empty cell";
    const char* name = kind == GameKind::Shardles ? ShardlesName(code) : nullptr;
    return name ? name : "";
}

}  // namespace

std::string BlockTip(GameKind kind, int code) {
    const std::string name = NameOf(kind, code);
    return "Code " + std::to_string(code) + (name.empty() ? "" : ": " + name);
}

std::string CellText(const LevelSet& set, int index) {
    const auto& cells = set.Current().Cells;
    if (index < 0 || static_cast<std::size_t>(index) >= cells.size()) return {};
    const int code = cells[static_cast<std::size_t>(index)];
    const std::string name = NameOf(set.Kind, code);
    return "Row " + std::to_string(index / kColumns + 1) + ", column " + std::to_string(index % kColumns + 1) +
           ": code " + std::to_string(code) + (name.empty() ? "" : ", " + name);
}

}  // namespace shd
