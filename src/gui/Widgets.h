// The small widgets the two windows are built from.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPixmap>
#include <QPoint>
#include <QWidget>

namespace shd::gui {

// A palette button: shows its block's picture, sunken while it is the chosen one.
class PaletteButton : public QAbstractButton {
    Q_OBJECT
public:
    PaletteButton(int index, QWidget* parent);
    int index() const { return index_; }
    void setPicture(const QPixmap& picture);
    const QPixmap& picture() const { return picture_; }
    QSize sizeHint() const override { return {41, 30}; }

signals:
    // Every key that goes down on the button, as a virtual-key code.
    void keyDown(int virtualKey);
    // A hexadecimal digit typed on the button: the palette code it names.
    void codeTyped(int code);

protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int index_;
    QPixmap picture_;
};

// A grid cell: shows a picture scaled to the cell and reports its mouse
// buttons and keys. A click gives it the focus.
class PictureCell : public QWidget {
    Q_OBJECT
public:
    PictureCell(int index, QWidget* parent);
    int index() const { return index_; }
    void setPicture(const QPixmap& picture);
    const QPixmap& picture() const { return picture_; }

signals:
    // `held` are the buttons down after the press, this one included.
    void pressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint globalPosition);
    // Qt sends the moves and the release to the cell where the press began,
    // wherever the pointer is; the global position tells where it is.
    void dragged(QPoint globalPosition, Qt::MouseButtons held);
    void released(int index, Qt::MouseButton button);
    // A hexadecimal digit typed on the cell: the palette code it names.
    void codeTyped(int code);
    // Any other key that goes down on the cell, as a virtual-key code.
    void keyDown(int virtualKey);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int index_;
    QPixmap picture_;
};

// A label that reports a click: press and release on it.
class ClickLabel : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
};

// The main window's client area: reports presses on the background itself,
// not on the controls standing on it.
class Background : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

signals:
    void pressed(Qt::MouseButton button, QPoint globalPosition);

protected:
    void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace shd::gui
