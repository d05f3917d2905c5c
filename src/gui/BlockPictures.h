// The sixteen palette pictures of the current game. A grid cell shows the
// very pixmap of the palette button of its code.
#pragma once

#include <QImage>
#include <QPixmap>
#include <QString>
#include <array>
#include <string>

namespace shd::gui {

// Reads an image of a known format, or gives a null one. Naming the format
// spares Qt loading every image plugin to ask which one reads the file.
QImage ReadImage(const QString& path, const char* format);

class BlockPictures {
public:
    BlockPictures();  // empty until the first Load

    // Reads the sixteen files from `folder`; a file that is missing or
    // unreadable is replaced by a drawn tile, without a word.
    void Load(const QString& folder, const std::array<std::string, 16>& files);

    // The picture of a code, or the "?" tile for anything outside 0..15.
    const QPixmap& Of(int code) const;
    bool IsDrawnTile(int code) const { return code >= 0 && code < 16 && drawn_[static_cast<std::size_t>(code)]; }

    // The stand-ins: a plain square with the code's hex digit, or with "?".
    static QPixmap Tile(const QString& text);

private:
    std::array<QPixmap, 16> pictures_;
    std::array<bool, 16> drawn_{};
    mutable QPixmap unknown_;
};

}  // namespace shd::gui
