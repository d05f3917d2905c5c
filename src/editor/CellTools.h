// The cell algorithms of the editing tools, as pure functions on one level's
// grid (8 columns, row by row), and the clipboard's plain-text forms, which
// let two running editors exchange cells and levels.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/WindowState.h"
#include "model/LevelSet.h"

namespace shd {

inline int RowsOf(const BlockGrid& grid) { return static_cast<int>(grid.size()) / kColumns; }

// The rectangle with cells `a` and `b` at opposite corners, in any order.
CellRange RangeBetween(int a, int b);
// The part of `range` on a grid of `rows` rows; empty when none is.
CellRange ClipRange(const CellRange& range, int rows);
// The cells of a range on the grid, row by row.
std::vector<int> CellsIn(const CellRange& range);

// The cells 4-connected to `start` that hold its code, `start` first.
std::vector<int> ConnectedArea(const BlockGrid& grid, int start);

BlockGrid FlippedLeftRight(const BlockGrid& grid);
BlockGrid FlippedTopBottom(const BlockGrid& grid);
// Moved right by `columns` and down by `rows` (negative: left, up). What
// leaves one edge comes back at the other, so a shift never loses a block
// and the opposite shift restores the level.
BlockGrid Shifted(const BlockGrid& grid, int columns, int rows);

// A rectangle of codes, row by row, as the clipboard carries it.
struct CellBlock {
    int columns = 0, rows = 0;
    std::vector<std::uint8_t> codes;
    bool operator==(const CellBlock&) const = default;
};

// The codes of a range on the grid.
CellBlock CopyRange(const BlockGrid& grid, const CellRange& range);
// `grid` with `block` written from `column`, `row` on; what would fall past
// the right or bottom edge is dropped. `covered` gets the cells written.
BlockGrid Placed(BlockGrid grid, const CellBlock& block, int column, int row, CellRange* covered = nullptr);

// Cells as text:
//   shardles-editor cells 3 2
//   10F
//   0A6
// one hexadecimal digit a cell, written upper-case and read in either case.
// A reader takes lines ended by "\n" or "\r\n" and blank lines at the end; a
// side longer than kMaxClipSide makes the text no cells at all.
inline constexpr int kMaxClipSide = 255;
std::string CellsText(const CellBlock& block);
std::optional<CellBlock> ParseCellsText(std::string_view text);

// A whole level as text: its ball start, its counts, its record's thirteen
// fields in their declared order (unused flags 0 or 1), then its cells:
//   shardles-editor level
//   ball 12 40
//   blocks 31 2
//   record 0 1 1 0 0 0 1 2 0 0 0 0 3
//   shardles-editor cells 8 10
//   ...ten rows of eight digits
struct LevelClip {
    LevelLayout layout;
    LevelRecord record;
};
std::string LevelText(const LevelLayout& layout, const LevelRecord& record);
// The level fitted to a grid of `kind`: the cells are laid from the top-left
// corner, rows past the grid's end dropped and missing rows left empty, so a
// Shardles level pasted into a Tiltbash set loses its bottom two rows and a
// Tiltbash level in a Shardles set gains two empty ones.
std::optional<LevelClip> ParseLevelText(std::string_view text, GameKind kind);

}  // namespace shd
