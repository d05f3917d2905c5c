#include "gui/Overview.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include "gui/BlockPictures.h"
#include "render/Render.h"

namespace shd::gui {

namespace {
constexpr int kCellWidth = 6, kCellHeight = 4;  // one block, in the level's picture
constexpr int kPadding = 6;
}  // namespace

LevelOverview::LevelOverview(QWidget* parent) : QAbstractScrollArea(parent), shape_(ShapeOf(GameKind::Shardles)) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Base);
}

QSize LevelOverview::EntrySize() const {
    return {shape_.columns * kCellWidth + 2 * kPadding,
            shape_.rows * kCellHeight + fontMetrics().height() + 2 * kPadding};
}

QSize LevelOverview::minimumSizeHint() const {
    return {EntrySize().width() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(), EntrySize().height()};
}

QSize LevelOverview::sizeHint() const {
    return {2 * EntrySize().width() + verticalScrollBar()->sizeHint().width() + 2 * frameWidth(),
            4 * EntrySize().height()};
}

int LevelOverview::Columns() const { return std::max(1, viewport()->width() / EntrySize().width()); }

QRect LevelOverview::entryRect(int level) const {
    const QSize size = EntrySize();
    const int index = level - 1, columns = Columns();
    return {index % columns * size.width(), index / columns * size.height() - verticalScrollBar()->value(),
            size.width(), size.height()};
}

int LevelOverview::levelAt(QPoint position) const {
    const QSize size = EntrySize();
    const int y = position.y() + verticalScrollBar()->value();
    if (position.x() < 0 || y < 0 || position.x() >= Columns() * size.width()) return 0;
    const int level = y / size.height() * Columns() + position.x() / size.width() + 1;
    return level <= static_cast<int>(entries_.size()) ? level : 0;
}

QPixmap LevelOverview::Draw(const BlockGrid& cells) const {
    return QPixmap::fromImage(render::DrawMiniature(kind_, cells, colours_, {kCellWidth, kCellHeight}));
}

void LevelOverview::showSet(const LevelSet& set, const BlockPictures& pictures, int pictureGeneration) {
    const GridShape shape = ShapeOf(set.Kind);
    const bool redrawAll = pictureGeneration != generation_ || shape != shape_;
    if (redrawAll) {
        generation_ = pictureGeneration;
        shape_ = shape;
        kind_ = set.Kind;
        std::array<QImage, 16> shown;
        for (int code = 0; code < 16; ++code) shown[static_cast<std::size_t>(code)] = pictures.Of(code).toImage();
        colours_ = render::AverageColours(render::BlockImages(shown, set.Kind));
        viewport()->update();
    }
    const auto count = static_cast<std::size_t>(set.LevelCount());
    if (count != entries_.size()) viewport()->update();  // the numbers after the change move
    entries_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        Entry& entry = entries_[i];
        const BlockGrid& cells = set.Layouts[i].Cells;
        if (!redrawAll && !entry.picture.isNull() && entry.cells == cells) continue;
        entry.cells = cells;
        entry.picture = Draw(cells);
        ++drawn_;
        UpdateEntry(static_cast<int>(i) + 1);
    }
    UpdateScrollRange();
    if (set.CurrentLevel != current_) {
        UpdateEntry(current_);
        current_ = set.CurrentLevel;
        UpdateEntry(current_);
        // Keep the current level in sight.
        const QRect shown = entryRect(current_);
        if (shown.top() < 0 || shown.bottom() > viewport()->height())
            verticalScrollBar()->setValue(verticalScrollBar()->value() + shown.top());
    }
}

void LevelOverview::UpdateEntry(int level) {
    if (level >= 1 && level <= static_cast<int>(entries_.size())) viewport()->update(entryRect(level));
}

void LevelOverview::UpdateScrollRange() {
    const int rows = (static_cast<int>(entries_.size()) + Columns() - 1) / Columns();
    verticalScrollBar()->setRange(0, std::max(0, rows * EntrySize().height() - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(EntrySize().height() / 2);
}

void LevelOverview::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    UpdateScrollRange();
}

void LevelOverview::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QPalette& colours = palette();
    for (int level = 1; level <= static_cast<int>(entries_.size()); ++level) {
        const QRect place = entryRect(level);
        if (!place.intersects(event->rect())) continue;
        if (level == current_) painter.fillRect(place, colours.highlight());
        const QPixmap& picture = entries_[static_cast<std::size_t>(level - 1)].picture;
        painter.drawPixmap(place.left() + kPadding, place.top() + kPadding, picture);
        painter.setPen(level == current_ ? colours.highlightedText().color() : colours.text().color());
        painter.drawText(QRect(place.left(), place.top() + kPadding + picture.height(), place.width(),
                               fontMetrics().height()),
                         Qt::AlignCenter, QString::number(level));
        if (level == dropOn_ && dropOn_ != pressed_) {
            painter.setPen(QPen(colours.highlight().color(), 2, Qt::DashLine));
            painter.drawRect(place.adjusted(1, 1, -1, -1));
        }
    }
}

void LevelOverview::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    pressed_ = levelAt(event->position().toPoint());
    pressedAt_ = event->position().toPoint();
    dropOn_ = 0;
}

void LevelOverview::mouseMoveEvent(QMouseEvent* event) {
    if (!pressed_ || !(event->buttons() & Qt::LeftButton)) return;
    const QPoint at = event->position().toPoint();
    if (!dropOn_ && (at - pressedAt_).manhattanLength() < QApplication::startDragDistance()) return;
    // Past the last entry, the level goes to the end.
    const int under = levelAt(at);
    const int target = under ? under : static_cast<int>(entries_.size());
    if (target == dropOn_) return;
    UpdateEntry(dropOn_);
    dropOn_ = target;
    UpdateEntry(dropOn_);
}

void LevelOverview::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pressed_) return;
    const int from = pressed_, to = dropOn_;
    pressed_ = dropOn_ = 0;
    UpdateEntry(to);
    if (to == 0) {
        if (levelAt(event->position().toPoint()) == from) emit chosen(from);
    } else if (to != from) {
        emit moved(from, to);
    }
}

}  // namespace shd::gui
