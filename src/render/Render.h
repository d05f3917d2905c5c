// Pictures of levels: one level, or a sheet of every level with its number
// and the set's title, drawn with the block pictures the editor shows. The
// window's overview, Export Picture and shardles-render all draw here.
#pragma once

#include <QImage>
#include <QString>
#include <array>

#include "model/LevelSet.h"

namespace shd::render {

// One block's picture at zoom 1, as the picture files have it: a Tiltbash
// cell is wider than a Shardles one.
constexpr int kBlockHeight = 30;
inline int BlockWidth(GameKind kind) { return kind == GameKind::Shardles ? 40 : 44; }

// The picture file of each block code, e.g. "shdblockA.gif"; Tiltbash swaps 7 and 8-11.
QString PictureFileName(GameKind kind, int code);

// A plain tile of `size` with `text` on it, where a picture cannot be read.
QImage Tile(const QString& text, QSize size);

// The sixteen block pictures of one game. A missing file is a plain tile
// with the code's hex digit, so a picture is always drawn.
class BlockImages {
public:
    BlockImages() = default;
    BlockImages(const QString& folder, GameKind kind);
    // Pictures given directly, each scaled to the game's block size if need be.
    BlockImages(const std::array<QImage, 16>& pictures, GameKind kind);

    const QImage& Of(int code) const;
    bool Loaded(int code) const { return code >= 0 && code < 16 && loaded_[static_cast<std::size_t>(code)]; }

private:
    std::array<QImage, 16> pictures_;
    std::array<bool, 16> loaded_{};
    QSize size_;
    QImage unknown_;
};

// A block as a level shows it: codes 13 and 14 of a Shardles set that uses
// custom shardles carry the set's custom pictures over the block's picture.
QImage BlockOf(const LevelSet& set, const BlockImages& images, int code);

// Level `level` (1-based) at `zoom` times the pictures' size.
QImage DrawLevel(const LevelSet& set, int level, const BlockImages& images, int zoom);

// How a sheet is laid out: `columns` levels a row, each drawn at `zoom`,
// its number under it; the set's title above them all.
struct SheetLayout {
    int columns = 1;
    int zoom = 1;
    int levelWidth = 0, levelHeight = 0;  // one level's picture
    int captionHeight = 0;                // room for a level's number
    int titleHeight = 0;
    int gap = 0;
    QSize size;
    QRect LevelRect(int level) const;  // where a level's picture stands
    QRect NumberRect(int level) const;  // where its number is written
};
SheetLayout LayOutSheet(const LevelSet& set, int columns, int zoom);

// Every level of the set on one sheet.
QImage DrawSheet(const LevelSet& set, const BlockImages& images, int columns, int zoom);

// Each block's picture seen from afar: all its pixels averaged.
std::array<QRgb, 16> AverageColours(const BlockImages& images);

// A level seen from afar, as the window's overview lists it: each cell a
// patch of `cell` pixels in its block's average colour (magenta for a code
// outside 0..15); no smoothing, so blocks stay blocks.
QImage DrawMiniature(GameKind kind, const BlockGrid& cells, const std::array<QRgb, 16>& colours, QSize cell);

// `image` made to fit `pixels` on its longer side: shrunk smoothly, never enlarged.
QImage FitInto(const QImage& image, int pixels);

// The columns a sheet of `levels` levels gets when none are asked for: about square.
int DefaultColumns(int levels);

}  // namespace shd::render
