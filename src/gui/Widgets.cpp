#include "gui/Widgets.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPen>
#include <QWheelEvent>
#include <QRegion>
#include <QStyleOptionFocusRect>
#include <qdrawutil.h>
#include <algorithm>

#include "gui/KeyCodes.h"

namespace shd::gui {

// ---- PaletteButton ----

PaletteButton::PaletteButton(int index, QWidget* parent) : QAbstractButton(parent), index_(index) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
}

void PaletteButton::setPicture(const QPixmap& picture) {
    if (picture_.cacheKey() == picture.cacheKey()) return;
    const bool resized = picture.size() != picture_.size();
    picture_ = picture;
    if (resized) updateGeometry();
    update();
}

void PaletteButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const bool sunken = isChecked() || isDown();
    painter.fillRect(rect(), palette().button());
    const QRect inner = rect().adjusted(2, 2, -2, -2);
    painter.drawPixmap(sunken ? inner.translated(1, 1) : inner, picture_);
    qDrawShadePanel(&painter, rect(), palette(), sunken, 2);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect().adjusted(3, 3, -3, -3);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void PaletteButton::keyPressEvent(QKeyEvent* event) {
    emit keyDown(KeyOf(*event));
    if (const int code = PaletteCodeOfKey(*event); code >= 0) {
        emit codeTyped(code);
        event->accept();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
        // The palette steps by its own rule; Qt's movement among the buttons would add a second step.
        event->accept();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}

// ---- PictureGrid ----

PictureGrid::PictureGrid(QWidget* parent) : QWidget(parent) {
    // Clicking the grid takes the focus from a text box, so typed digits choose blocks.
    setFocusPolicy(Qt::ClickFocus);
    // Moves without a button name the cell under the pointer.
    setMouseTracking(true);
    setShape(ShapeOf(GameKind::Shardles), 1);
}

void PictureGrid::setShape(const GridShape& shape, int zoom) {
    const auto count = static_cast<std::size_t>(shape.columns * shape.rows);
    if (shape == shape_ && zoom == zoom_ && pictures_.size() == count) return;
    shape_ = shape;
    zoom_ = zoom;
    pictures_.resize(count);
    setFixedSize(shape.columns * shape.pictureWidth * zoom, shape.rows * shape.pictureHeight * zoom);
    update();
}

QRect PictureGrid::cellRect(int index) const {
    const int width = shape_.pictureWidth * zoom_, height = shape_.pictureHeight * zoom_;
    return {index % shape_.columns * width, index / shape_.columns * height, width, height};
}

int PictureGrid::cellAt(QPoint position) const { return CellAt(shape_, zoom_, {position.x(), position.y()}); }

void PictureGrid::setPicture(int index, const QPixmap& picture) {
    QPixmap& shown = pictures_[static_cast<std::size_t>(index)];
    if (shown.cacheKey() == picture.cacheKey()) return;
    shown = picture;
    update(cellRect(index));
}

QRect PictureGrid::RangeRect(const CellRange& range) const {
    if (range.empty()) return {};
    const QRect first = cellRect(range.row * shape_.columns + range.column);
    return {first.topLeft(), QSize(first.width() * range.columns, first.height() * range.rows)};
}

void PictureGrid::setMarks(const CellRange& selection, const CellRange& preview) {
    if (selection == selection_ && preview == preview_) return;
    // Only the cells under the old and new outlines are drawn again.
    for (const QRect& r : {RangeRect(selection_), RangeRect(preview_), RangeRect(selection), RangeRect(preview)})
        if (!r.isEmpty()) update(r);
    selection_ = selection;
    preview_ = preview;
}

void PictureGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    // Whole multiples need no smoothing, and stay sharp without it.
    for (int i = 0; i < count(); ++i) {
        const QRect cell = cellRect(i);
        if (event->rect().intersects(cell)) painter.drawPixmap(cell, pictures_[static_cast<std::size_t>(i)]);
    }
    auto outline = [&](const CellRange& range, const QColor& colour, Qt::PenStyle style) {
        if (range.empty()) return;
        painter.setPen(QPen(colour, 2, style));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(RangeRect(range).adjusted(1, 1, -1, -1));
    };
    outline(preview_, QColor(0, 0, 160), Qt::SolidLine);
    outline(selection_, QColor(0, 0, 0), Qt::DashLine);
}

void PictureGrid::mousePressEvent(QMouseEvent* event) {
    const int index = cellAt(event->position().toPoint());
    if (index < 0) {
        event->ignore();
        return;
    }
    Hover(-1);
    emit pressed(index, event->button(), event->buttons(), event->position().toPoint());
    event->accept();
}

void PictureGrid::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() == Qt::NoButton) Hover(cellAt(event->position().toPoint()));
    else emit dragged(event->position().toPoint(), event->buttons());
    event->accept();
}

void PictureGrid::mouseReleaseEvent(QMouseEvent* event) {
    emit released(event->button());
    event->accept();
}

void PictureGrid::leaveEvent(QEvent*) { Hover(-1); }

void PictureGrid::Hover(int index) {
    if (index == hovered_) return;
    hovered_ = index;
    emit hovered(index);
}

void PictureGrid::keyPressEvent(QKeyEvent* event) {
    if (const int code = PaletteCodeOfKey(*event); code >= 0) emit codeTyped(code);
    else emit keyDown(KeyOf(*event));
    event->accept();
}

// ---- GridView ----

GridView::GridView(QWidget* parent) : QScrollArea(parent), grid_(new PictureGrid(this)) {
    setFrameShape(QFrame::NoFrame);
    // The window's grey shows around the grid.
    setBackgroundRole(QPalette::Window);
    viewport()->setBackgroundRole(QPalette::Window);
    setAlignment(Qt::AlignCenter);
    setWidget(grid_);
}

int GridView::fitZoom() const {
    return FitZoom(grid_->shape(), viewport()->width(), viewport()->height());
}

QSize GridView::minimumSizeHint() const {
    const GridShape& s = grid_->shape();
    return {s.columns * s.pictureWidth, s.rows * s.pictureHeight};
}

void GridView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    emit resized();
}

void GridView::wheelEvent(QWheelEvent* event) {
    if (!(event->modifiers() & Qt::ControlModifier)) {
        QScrollArea::wheelEvent(event);
        return;
    }
    // One notch is 120; a touchpad's small steps add up to one.
    wheel_ += event->angleDelta().y();
    const int steps = wheel_ / 120;
    wheel_ -= steps * 120;
    if (steps != 0) emit zoomBy(steps);
    event->accept();
}

// ---- ClickLabel ----

void ClickLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) event->accept();
    else QLabel::mousePressEvent(event);
}

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit clicked();
    event->accept();
}

// ---- Background ----

void Background::mousePressEvent(QMouseEvent* event) {
    // A press a control let through (a label, say) is not a press on the
    // background; the grey around the grid is.
    const QWidget* under = childAt(event->position().toPoint());
    if (under == nullptr || qobject_cast<const GridView*>(under->parentWidget()))
        emit pressed(event->button(), event->globalPosition().toPoint());
    event->accept();
}

}  // namespace shd::gui
