// The small widgets the two windows are built from.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPixmap>
#include <QPoint>
#include <QWidget>
#include <vector>

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

// The grid: a run of picture cells drawn by one widget, each picture scaled
// to its cell. It reports mouse buttons with the cell they went down on, and
// keys. A click gives it the focus. One widget rather than one per cell keeps
// the window quick to build and to paint.
class PictureGrid : public QWidget {
    Q_OBJECT
public:
    explicit PictureGrid(QWidget* parent);

    // Places the cells, given in the parent's coordinates; the widget covers
    // them all. Cells that stay keep their pictures.
    void setCells(const std::vector<QRect>& cells);
    int count() const { return static_cast<int>(cells_.size()); }
    // A cell in the widget's own coordinates.
    QRect cellRect(int index) const { return cells_[static_cast<std::size_t>(index)].rect; }
    // The cell under a point of the widget, or -1.
    int cellAt(QPoint position) const;

    void setPicture(int index, const QPixmap& picture);
    const QPixmap& picture(int index) const { return cells_[static_cast<std::size_t>(index)].picture; }

signals:
    // `held` are the buttons down after the press, this one included.
    void pressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint globalPosition);
    // Qt sends the moves and the release to the widget where the press began,
    // wherever the pointer is; the global position tells where it is.
    void dragged(QPoint globalPosition, Qt::MouseButtons held);
    void released(Qt::MouseButton button);
    // A hexadecimal digit typed on the grid: the palette code it names.
    void codeTyped(int code);
    // Any other key that goes down on the grid, as a virtual-key code.
    void keyDown(int virtualKey);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Cell {
        QRect rect;
        QPixmap picture;
    };
    std::vector<Cell> cells_;
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
