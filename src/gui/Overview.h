// The overview: every level of the set as a small picture of its grid with
// its number, the current one marked; the pictures come from src/render. A click makes a level current, a drag
// moves it. Only levels whose cells changed are drawn again.
#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>
#include <array>
#include <vector>

#include "editor/Layout.h"
#include "model/LevelSet.h"

namespace shd::gui {

class BlockPictures;

class LevelOverview : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit LevelOverview(QWidget* parent);

    // Shows the set as it is now; `pictureGeneration` tells when the block pictures were loaded again.
    void showSet(const LevelSet& set, const BlockPictures& pictures, int pictureGeneration);
    // Where a level's entry stands in the viewport, and the level at a point of it (0: none).
    QRect entryRect(int level) const;
    int levelAt(QPoint position) const;
    // How many level pictures have been drawn so far.
    int drawnCount() const { return drawn_; }

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

signals:
    void chosen(int level);
    void moved(int from, int to);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Entry {
        BlockGrid cells;
        QPixmap picture;
    };
    QSize EntrySize() const;
    int Columns() const;
    QPixmap Draw(const BlockGrid& cells) const;
    void UpdateScrollRange();
    void UpdateEntry(int level);

    std::vector<Entry> entries_;
    std::array<QRgb, 16> colours_{};  // each block's picture, seen from afar
    GridShape shape_;
    GameKind kind_ = GameKind::Shardles;
    int generation_ = -1;
    int current_ = 0;
    int pressed_ = 0;   // the level a press went down on
    int dropOn_ = 0;    // while dragging, the level the pressed one would take the place of
    QPoint pressedAt_;
    int drawn_ = 0;
};

}  // namespace shd::gui
