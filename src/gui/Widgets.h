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

protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int index_;
    QPixmap picture_;
};

// A grid cell: shows a picture scaled to the cell and reports its mouse buttons.
class PictureCell : public QWidget {
    Q_OBJECT
public:
    PictureCell(int index, QWidget* parent);
    int index() const { return index_; }
    void setPicture(const QPixmap& picture);
    const QPixmap& picture() const { return picture_; }

signals:
    void pressed(int index, Qt::MouseButton button);
    // Qt sends the release to the cell where the press began, wherever the pointer is.
    void released(int index, Qt::MouseButton button);

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

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
