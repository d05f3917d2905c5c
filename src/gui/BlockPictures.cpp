#include "gui/BlockPictures.h"

#include <QDir>
#include <QImageReader>

#include "gui/Text.h"
#include "render/Render.h"

namespace shd::gui {

namespace {
// Drawn at the size of a Shardles cell on a 96 DPI screen, like the files.
constexpr int kTileWidth = 40;
constexpr int kTileHeight = 30;

QString HexDigit(int code) { return QString::number(code, 16).toUpper(); }
}  // namespace

QImage ReadImage(const QString& path, const char* format) {
    QImageReader reader(path, QByteArray(format));
    reader.setAutoDetectImageFormat(false);
    return reader.read();
}

// Stand-in tiles are drawn only when needed: painting text is a good part of
// the window's start-up, and with the picture files in place none is shown.
BlockPictures::BlockPictures() = default;

QPixmap BlockPictures::Tile(const QString& text) {
    return QPixmap::fromImage(render::Tile(text, QSize(kTileWidth, kTileHeight)));
}

void BlockPictures::Load(const QString& folder, const std::array<std::string, 16>& files) {
    const QDir dir(folder);
    for (int code = 0; code < 16; ++code) {
        const auto k = static_cast<std::size_t>(code);
        const QString path = dir.filePath(PathText(files[k]));
        QImage image = ReadImage(path, "gif");
        if (image.isNull()) image = QImageReader(path).read();  // a picture replaced by one of another kind
        drawn_[k] = image.isNull();
        pictures_[k] = drawn_[k] ? Tile(HexDigit(code)) : QPixmap::fromImage(image);
    }
}

const QPixmap& BlockPictures::Of(int code) const {
    if (code < 0 || code > 15) {
        if (unknown_.isNull()) unknown_ = Tile(QStringLiteral("?"));
        return unknown_;
    }
    return pictures_[static_cast<std::size_t>(code)];
}

}  // namespace shd::gui
