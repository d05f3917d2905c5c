#include "gui/Widgets.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <qdrawutil.h>

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

// ---- PictureCell ----

PictureCell::PictureCell(int index, QWidget* parent) : QWidget(parent), index_(index) {
    // Clicking the grid takes the focus from a text box, so typed digits choose blocks.
    setFocusPolicy(Qt::ClickFocus);
}

void PictureCell::setPicture(const QPixmap& picture) {
    if (picture_.cacheKey() == picture.cacheKey()) return;
    picture_ = picture;
    update();
}

void PictureCell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), picture_);
}

void PictureCell::mousePressEvent(QMouseEvent* event) {
    emit pressed(index_, event->button(), event->buttons(), event->globalPosition().toPoint());
    event->accept();
}

void PictureCell::mouseMoveEvent(QMouseEvent* event) {
    // Without mouse tracking, moves come only while a button is down.
    emit dragged(event->globalPosition().toPoint(), event->buttons());
    event->accept();
}

void PictureCell::mouseReleaseEvent(QMouseEvent* event) {
    emit released(index_, event->button());
    event->accept();
}

void PictureCell::keyPressEvent(QKeyEvent* event) {
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
