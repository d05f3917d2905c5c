#include "editor/Layout.h"

#include "model/Numbers.h"

namespace shd {

std::vector<TwipRect> LocateBoxes(int rows, int columns, int cellWidth, int cellCount, int screenWidth,
                                  int screenHeight) {
    // Both halves may be fractional (odd screen sizes, odd row counts); round as a whole.
    const int x0 = static_cast<int>(RoundHalfEven(screenWidth / 2.0 - (columns / 2.0) * cellWidth));
    const int y0 = static_cast<int>(RoundHalfEven(screenHeight / 2.0 - (rows / 2.0) * kCellHeight + 200));
    std::vector<TwipRect> cells;
    cells.reserve(static_cast<std::size_t>(cellCount));
    for (int i = 0; i < cellCount; ++i)
        cells.push_back({x0 + (i % columns) * cellWidth, y0 + (i / columns) * kCellHeight, cellWidth, kCellHeight});
    return cells;
}

std::array<TwipRect, 16> PaletteLayout(GameKind kind) {
    const bool shardles = kind == GameKind::Shardles;
    const int width = shardles ? 615 : 650;
    std::array<TwipRect, 16> buttons;
    int left = shardles ? 1200 : 640;
    for (auto& button : buttons) {
        button = {left, 240, width, 445};
        left += width;
    }
    return buttons;
}

std::string PictureFile(GameKind kind, int code) {
    static const char* kHex = "0123456789ABCDEF";
    if (code == 0) return "nothing.gif";
    if (kind == GameKind::Shardles) return std::string("shdblock") + kHex[code & 15] + ".gif";
    int file = code;
    if (code == 7) file = 11;
    else if (code >= 8 && code <= 11) file = code - 1;
    return std::string("tlblock") + kHex[file & 15] + ".gif";
}

}  // namespace shd
