// The grid's geometry: how big its cells are drawn and which cell lies
// under a point, in the window's pixels; and what each block looks like.
#pragma once

#include <string>

#include "model/LevelSet.h"

namespace shd {

// A point on the grid's own surface, in pixels from its top-left corner.
struct Point {
    int x = 0, y = 0;
};

// A game's grid: its cells and the size of one block picture in pixels.
struct GridShape {
    int columns = kColumns, rows = 0;
    int pictureWidth = 0, pictureHeight = 0;
    bool operator==(const GridShape&) const = default;
};

GridShape ShapeOf(GameKind kind);

// Pictures are only ever drawn at whole multiples of their size, so they
// stay crisp; zoom is that multiple.
inline constexpr int kMostZoom = 16;

// The largest multiple at which the whole grid fits a `width` x `height`
// area, at least 1 (a smaller area scrolls).
int FitZoom(const GridShape& shape, int width, int height);

// The cell under a point of a grid drawn at `zoom`, or -1 off the grid.
int CellAt(const GridShape& shape, int zoom, Point at);

// How the status bar names a zoom: "Zoom 300%", with " (fit)" while the
// grid follows the window.
std::string ZoomText(int zoom, bool fitting);

// A palette entry's tooltip: "Code 2: spotted shardle"; Tiltbash blocks
// and unnamed Shardles codes give the code alone.
std::string BlockTip(GameKind kind, int code);

// The cell under the pointer for the status bar: "Row 3, column 5: code 2, spotted shardle".
std::string CellText(const LevelSet& set, int index);

}  // namespace shd
