#include "gui/Widgets.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
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
    picture_ = picture;
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
    emit keyDown(VirtualKey(*event));
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
}

void PictureGrid::setCells(const std::vector<QRect>& cells) {
    QRect bounds;
    for (const QRect& cell : cells) bounds |= cell;
    const bool same = bounds == geometry() && cells.size() == cells_.size() &&
                      std::equal(cells.begin(), cells.end(), cells_.begin(),
                                 [&](const QRect& cell, const Cell& had) { return cell.translated(-bounds.topLeft()) == had.rect; });
    if (same) return;
    cells_.resize(cells.size());
    QRegion covered;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        cells_[i].rect = cells[i].translated(-bounds.topLeft());
        covered += cells_[i].rect;
    }
    setGeometry(bounds);
    // Where no cell stands, presses belong to what is under the grid.
    if (covered == QRegion(rect())) clearMask();
    else setMask(covered);
    update();
}

int PictureGrid::cellAt(QPoint position) const {
    for (std::size_t i = 0; i < cells_.size(); ++i)
        if (cells_[i].rect.contains(position)) return static_cast<int>(i);
    return -1;
}

void PictureGrid::setPicture(int index, const QPixmap& picture) {
    Cell& cell = cells_[static_cast<std::size_t>(index)];
    if (cell.picture.cacheKey() == picture.cacheKey()) return;
    cell.picture = picture;
    update(cell.rect);
}

void PictureGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const Cell& cell : cells_)
        if (event->rect().intersects(cell.rect)) painter.drawPixmap(cell.rect, cell.picture);
}

void PictureGrid::mousePressEvent(QMouseEvent* event) {
    const int index = cellAt(event->position().toPoint());
    if (index < 0) {
        event->ignore();
        return;
    }
    emit pressed(index, event->button(), event->buttons(), event->globalPosition().toPoint());
    event->accept();
}

void PictureGrid::mouseMoveEvent(QMouseEvent* event) {
    // Without mouse tracking, moves come only while a button is down.
    emit dragged(event->globalPosition().toPoint(), event->buttons());
    event->accept();
}

void PictureGrid::mouseReleaseEvent(QMouseEvent* event) {
    emit released(event->button());
    event->accept();
}

void PictureGrid::keyPressEvent(QKeyEvent* event) {
    if (const int code = PaletteCodeOfKey(*event); code >= 0) emit codeTyped(code);
    else emit keyDown(VirtualKey(*event));
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
    // A press a control let through (a label, say) is not a press on the background.
    if (childAt(event->position().toPoint()) == nullptr)
        emit pressed(event->button(), event->globalPosition().toPoint());
    event->accept();
}

}  // namespace shd::gui
