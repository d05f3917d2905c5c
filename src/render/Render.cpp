#include "render/Render.h"

#include <QDir>
#include <QFont>
#include <QImageReader>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "model/Cp1252.h"

namespace shd::render {

namespace {

constexpr int kGap = 8;  // between levels of a sheet, and around them

QString HexDigit(int code) { return QString::number(code, 16).toUpper(); }

}  // namespace

QImage Tile(const QString& text, QSize size) {
    QImage tile(size, QImage::Format_RGB32);
    tile.fill(QColor(224, 224, 224));
    QPainter painter(&tile);
    painter.setPen(QColor(96, 96, 96));
    painter.drawRect(0, 0, size.width() - 1, size.height() - 1);
    QFont font = painter.font();
    font.setPixelSize(18);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(tile.rect(), Qt::AlignCenter, text);
    return tile;
}

namespace {

// A picture at the block's size, its transparent pixels on white paper.
QImage Normalised(const QImage& image, QSize size) {
    QImage block(size, QImage::Format_RGB32);
    block.fill(Qt::white);
    QPainter painter(&block);
    painter.drawImage(block.rect(), image);
    return block;
}

// A custom piece's picture shows a row's cells in this in-row order, left to right.
constexpr std::array<int, 10> kPictureColumns = {8, 7, 6, 5, 4, 3, 2, 1, 10, 9};
constexpr int kPictureRows = 6;

QFont NumberFont(int pixels) {
    QFont font;
    font.setPixelSize(std::max(8, pixels));
    return font;
}

}  // namespace

QString PictureFileName(GameKind kind, int code) { return QString::fromStdString(PictureFile(kind, code)); }

BlockImages::BlockImages(const QString& folder, GameKind kind) : size_(BlockWidth(kind), kBlockHeight) {
    const QDir dir(folder);
    for (int code = 0; code < 16; ++code) {
        const auto k = static_cast<std::size_t>(code);
        QImageReader reader(dir.filePath(PictureFileName(kind, code)), QByteArray("gif"));
        reader.setAutoDetectImageFormat(false);  // spares asking every image plugin
        const QImage image = reader.read();
        loaded_[k] = !image.isNull();
        pictures_[k] = loaded_[k] ? Normalised(image, size_) : Tile(HexDigit(code), size_);
    }
    unknown_ = Tile(QStringLiteral("?"), size_);
}

BlockImages::BlockImages(const std::array<QImage, 16>& pictures, GameKind kind)
    : size_(BlockWidth(kind), kBlockHeight) {
    for (std::size_t k = 0; k < 16; ++k) {
        loaded_[k] = !pictures[k].isNull();
        pictures_[k] = loaded_[k] ? Normalised(pictures[k], size_) : Tile(HexDigit(static_cast<int>(k)), size_);
    }
    unknown_ = Tile(QStringLiteral("?"), size_);
}

const QImage& BlockImages::Of(int code) const {
    if (code < 0 || code > 15) return unknown_;
    return pictures_[static_cast<std::size_t>(code)];
}

QImage BlockOf(const LevelSet& set, const BlockImages& images, int code) {
    QImage block = images.Of(code);
    if (!set.IsShardles() || !set.UseCustomShardles || (code != 13 && code != 14)) return block;
    const PiecePicture& picture = code == 13 ? set.CustomShardlePicture : set.CustomChangerPicture;
    // 10 x 6 cells over the 40 x 30 block: each 4 x 5 pixels.
    const int cellWidth = block.width() / 10, cellHeight = kBlockHeight / kPictureRows;
    QPainter painter(&block);
    for (int row = 0; row < kPictureRows; ++row)
        for (int x = 0; x < 10; ++x)
            if (picture.at(10 * row + kPictureColumns[static_cast<std::size_t>(x)]) != 0)
                painter.fillRect(x * cellWidth, row * cellHeight, cellWidth, cellHeight, Qt::black);
    return block;
}

namespace {

// The blocks a set's levels are drawn with, each at `zoom`, made once.
std::array<QImage, 17> ZoomedBlocks(const LevelSet& set, const BlockImages& images, int zoom) {
    std::array<QImage, 17> blocks;  // the 17th: any code outside 0..15
    for (int code = 0; code <= 16; ++code) {
        const QImage block = code < 16 ? BlockOf(set, images, code) : images.Of(-1);
        blocks[static_cast<std::size_t>(code)] =
            zoom == 1 ? block : block.scaled(block.width() * zoom, block.height() * zoom);  // no smoothing: blocks stay blocks
    }
    return blocks;
}

void PaintLevel(QPainter& painter, QPoint at, const LevelSet& set, int level, const std::array<QImage, 17>& blocks,
                int zoom) {
    const BlockGrid& cells = set.Layout(level).Cells;
    const int count = std::min(static_cast<int>(cells.size()), CellCount(set.Kind));
    for (int i = 0; i < count; ++i) {
        const int code = cells[static_cast<std::size_t>(i)];
        painter.drawImage(at.x() + i % kColumns * BlockWidth(set.Kind) * zoom, at.y() + i / kColumns * kBlockHeight * zoom,
                          blocks[static_cast<std::size_t>(code < 16 ? code : 16)]);
    }
}

}  // namespace

QImage DrawLevel(const LevelSet& set, int level, const BlockImages& images, int zoom) {
    zoom = std::max(1, zoom);
    QImage image(kColumns * BlockWidth(set.Kind) * zoom, RowCount(set.Kind) * kBlockHeight * zoom, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintLevel(painter, {0, 0}, set, level, ZoomedBlocks(set, images, zoom), zoom);
    return image;
}

QRect SheetLayout::LevelRect(int level) const {
    const int index = level - 1;
    const int x = gap + index % columns * (levelWidth + gap);
    const int y = titleHeight + gap + index / columns * (levelHeight + captionHeight + gap);
    return {x, y, levelWidth, levelHeight};
}

QRect SheetLayout::NumberRect(int level) const {
    const QRect picture = LevelRect(level);
    return {picture.left(), picture.bottom() + 1, levelWidth, captionHeight};
}

SheetLayout LayOutSheet(const LevelSet& set, int columns, int zoom) {
    SheetLayout layout;
    layout.zoom = std::max(1, zoom);
    layout.columns = std::clamp(columns, 1, std::max(1, set.LevelCount()));
    layout.levelWidth = kColumns * BlockWidth(set.Kind) * layout.zoom;
    layout.levelHeight = RowCount(set.Kind) * kBlockHeight * layout.zoom;
    layout.captionHeight = 20 * layout.zoom;
    layout.titleHeight = 28 * layout.zoom;
    layout.gap = kGap * layout.zoom;
    const int rows = (set.LevelCount() + layout.columns - 1) / layout.columns;
    layout.size = {layout.gap + layout.columns * (layout.levelWidth + layout.gap),
                   layout.titleHeight + layout.gap + rows * (layout.levelHeight + layout.captionHeight + layout.gap)};
    return layout;
}

QImage DrawSheet(const LevelSet& set, const BlockImages& images, int columns, int zoom) {
    const SheetLayout layout = LayOutSheet(set, columns, zoom);
    QImage image(layout.size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const auto blocks = ZoomedBlocks(set, images, layout.zoom);
    for (int level = 1; level <= set.LevelCount(); ++level)
        PaintLevel(painter, layout.LevelRect(level).topLeft(), set, level, blocks, layout.zoom);
    painter.setPen(Qt::black);
    painter.setFont(NumberFont(layout.captionHeight * 3 / 4));
    for (int level = 1; level <= set.LevelCount(); ++level)
        painter.drawText(layout.NumberRect(level), Qt::AlignCenter, QString::number(level));
    QFont titleFont = NumberFont(layout.titleHeight * 2 / 3);
    titleFont.setBold(true);
    painter.setFont(titleFont);
    // Titles are Windows-1252 bytes, as the files carry them.
    painter.drawText(QRect(layout.gap, 0, layout.size.width() - 2 * layout.gap, layout.titleHeight + layout.gap),
                     Qt::AlignLeft | Qt::AlignBottom,
                     QString::fromStdString(Cp1252ToUtf8(set.Title)));
    return image;
}

std::array<QRgb, 16> AverageColours(const BlockImages& images) {
    std::array<QRgb, 16> colours{};
    for (int code = 0; code < 16; ++code)
        colours[static_cast<std::size_t>(code)] =
            images.Of(code).scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0);
    return colours;
}

QImage DrawMiniature(GameKind kind, const BlockGrid& cells, const std::array<QRgb, 16>& colours, QSize cell) {
    // One pixel a cell, blown up.
    QImage image(kColumns, RowCount(kind), QImage::Format_RGB32);
    image.fill(Qt::white);
    const int count = std::min(static_cast<int>(cells.size()), CellCount(kind));
    for (int i = 0; i < count; ++i) {
        const std::uint8_t code = cells[static_cast<std::size_t>(i)];
        image.setPixel(i % kColumns, i / kColumns, code < 16 ? colours[code] : qRgb(255, 0, 255));
    }
    return image.scaled(kColumns * cell.width(), RowCount(kind) * cell.height());
}

QImage FitInto(const QImage& image, int pixels) {
    if (pixels <= 0 || std::max(image.width(), image.height()) <= pixels) return image;
    return image.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

int DefaultColumns(int levels) { return std::max(1, static_cast<int>(std::ceil(std::sqrt(std::max(1, levels))))); }

}  // namespace shd::render
