// Where the grid cells and palette buttons stand, in twips (1/1440 inch).
#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/LevelSet.h"

namespace shd {

struct TwipRect {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const TwipRect&) const = default;
};

// A point on the grid's own surface, in whatever unit its cells are found by.
struct Point {
    int x = 0, y = 0;
};

constexpr int kCellHeight = 445;

inline int CellWidth(GameKind kind) { return kind == GameKind::Shardles ? 600 : 660; }

// The grid centred across a screen of the given size, 200 twips below centre.
std::vector<TwipRect> LocateBoxes(int rows, int columns, int cellWidth, int cellCount, int screenWidth,
                                  int screenHeight);

// The sixteen palette buttons in one row at top 240.
std::array<TwipRect, 16> PaletteLayout(GameKind kind);

// The picture file of each block code, e.g. "shdblockA.gif"; Tiltbash swaps 7 and 8-11.
std::string PictureFile(GameKind kind, int code);

}  // namespace shd
