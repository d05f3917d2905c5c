#include "rules/CustomPiece.h"

namespace shd {

namespace {
constexpr std::array<int, 10> kDisplayOrder{8, 7, 6, 5, 4, 3, 2, 1, 10, 9};

PiecePicture& PictureOf(LevelSet& set, PictureKind kind) {
    return kind == PictureKind::Normal ? set.CustomShardlePicture : set.CustomChangerPicture;
}
}  // namespace

CustomPieceEdit::CustomPieceEdit(const LevelSet& set, PictureKind kind) : kind_(kind) {
    const PiecePicture& picture = kind == PictureKind::Normal ? set.CustomShardlePicture : set.CustomChangerPicture;
    values_ = picture.cells;
}

void CustomPieceEdit::Click(int cell) {
    auto& v = values_[static_cast<std::size_t>(cell - 1)];
    if (v == 0) v = 1;
    else if (v == 1) v = 0;
}

void CustomPieceEdit::Reset() { values_.fill(0); }

void CustomPieceEdit::Default() {
    values_.fill(0);
    auto set = [this](int cell, std::uint8_t v) { values_[static_cast<std::size_t>(cell - 1)] = v; };
    if (kind_ == PictureKind::Change) {
        for (int n = 1; n <= kPictureCells; ++n) {
            const int column = (n - 1) % 10 + 1;
            if (column <= 4 || column >= 9) set(n, 1);
        }
    }
    for (int n = 1; n <= 10; ++n) set(n, 1);
    for (int n = 51; n <= 60; ++n) set(n, 1);
    for (int n : {18, 19, 28, 29, 38, 39, 48, 49, 58, 59}) set(n, 1);
    for (int n : {8, 59, 58, 9}) set(n, 0);
}

void CustomPieceEdit::StoreInto(LevelSet& set) const { PictureOf(set, kind_).cells = values_; }

int CustomPieceEdit::DisplayedPosition(int cell) {
    const int column = (cell - 1) % 10 + 1;
    for (int p = 0; p < 10; ++p)
        if (kDisplayOrder[static_cast<std::size_t>(p)] == column) return p;
    return 0;
}

int CustomPieceEdit::CellAt(int row, int position) {
    return 10 * row + kDisplayOrder[static_cast<std::size_t>(position)];
}

}  // namespace shd
