// The small widgets the two windows are built from.
#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QPixmap>
#include <QPoint>
#include <QScrollArea>
#include <QWidget>
#include <vector>

#include "editor/Keys.h"
#include "editor/Layout.h"
#include "editor/WindowState.h"

namespace shd::gui {

// A palette button: shows its block's picture, sunken while it is the chosen one.
class PaletteButton : public QAbstractButton {
    Q_OBJECT
public:
    PaletteButton(int index, QWidget* parent);
    int index() const { return index_; }
    void setPicture(const QPixmap& picture);
    const QPixmap& picture() const { return picture_; }
    // The picture with room for the button's edge.
    QSize sizeHint() const override { return picture_.size().grownBy({2, 2, 2, 2}).expandedTo({20, 20}); }
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    // Every key that goes down on the button, as a virtual-key code.
    void keyDown(shd::Key key);
    // A hexadecimal digit typed on the button: the palette code it names.
    void codeTyped(int code);

protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int index_;
    QPixmap picture_;
};

// The grid: the current level's cells drawn by one widget, every picture at
// one whole multiple of its size. It reports mouse buttons with the cell
// they went down on, where the pointer goes, and keys. A click gives it the
// focus. One widget rather than one per cell keeps the window quick to build
// and to paint.
class PictureGrid : public QWidget {
    Q_OBJECT
public:
    explicit PictureGrid(QWidget* parent);

    // The game's grid at a zoom; the widget takes the size they give.
    // Cells that stay keep their pictures.
    void setShape(const GridShape& shape, int zoom);
    const GridShape& shape() const { return shape_; }
    int zoom() const { return zoom_; }
    int count() const { return static_cast<int>(pictures_.size()); }
    QRect cellRect(int index) const;
    // The cell under a point of the widget, or -1.
    int cellAt(QPoint position) const;

    void setPicture(int index, const QPixmap& picture);
    const QPixmap& picture(int index) const { return pictures_[static_cast<std::size_t>(index)]; }
    // Outlines: the selected cells and the rectangle being dragged.
    void setMarks(const CellRange& selection, const CellRange& preview);

signals:
    // `held` are the buttons down after the press, this one included;
    // positions are in the grid's own pixels.
    void pressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint position);
    // Qt sends the moves and the release to the widget where the press began,
    // wherever the pointer is.
    void dragged(QPoint position, Qt::MouseButtons held);
    void released(Qt::MouseButton button);
    // The cell under the pointer, while no button is down; -1 when it leaves the grid.
    void hovered(int index);
    // A hexadecimal digit typed on the grid: the palette code it names.
    void codeTyped(int code);
    // Any other key that goes down on the grid, as a virtual-key code.
    void keyDown(shd::Key key);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect RangeRect(const CellRange& range) const;
    void Hover(int index);

    GridShape shape_;
    int zoom_ = 1;
    std::vector<QPixmap> pictures_;
    CellRange selection_, preview_;
    int hovered_ = -1;
};

// The room the controls leave: holds the grid, centred while it fits and
// scrolled when it is zoomed past the room. Ctrl+wheel zooms.
class GridView : public QScrollArea {
    Q_OBJECT
public:
    explicit GridView(QWidget* parent);
    PictureGrid* grid() const { return grid_; }
    // The largest zoom at which the whole grid fits the room now.
    int fitZoom() const;
    // Never less than the grid at its pictures' own size.
    QSize minimumSizeHint() const override;
    QSize sizeHint() const override { return minimumSizeHint(); }

signals:
    void resized();
    void zoomBy(int steps);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    PictureGrid* grid_;
    int wheel_ = 0;  // wheel turned towards the next step
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
