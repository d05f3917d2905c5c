// The rules of the custom piece dialog: the captions being edited and what
// its four buttons do. The stored picture changes only on OK.
#pragma once

#include <array>
#include <string>

#include "model/LevelSet.h"

namespace shd {

enum class PictureKind { Normal, Change };

class CustomPieceEdit {
public:
    // The captions from the stored picture of `kind`.
    CustomPieceEdit(const LevelSet& set, PictureKind kind);

    PictureKind kind() const { return kind_; }
    std::uint8_t value(int cell) const { return values_[static_cast<std::size_t>(cell - 1)]; }
    std::string caption(int cell) const { return std::to_string(value(cell)); }

    void Click(int cell);  // "1" and "0" swap; any other caption stays
    void Reset();          // every caption "0"
    void Default();        // the kind's default picture
    void StoreInto(LevelSet& set) const;  // OK

    // Where cell n is shown: in row (n - 1) / 10, at the displayed position
    // p, 0..9 from the left, that the columns 8..1, 10, 9 take.
    static int DisplayedPosition(int cell);
    static int CellAt(int row, int position);  // row 0..5, position 0..9

private:
    PictureKind kind_;
    std::array<std::uint8_t, kPictureCells> values_{};
};

}  // namespace shd
