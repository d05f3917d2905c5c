// The palette of sixteen blocks above the window and the grid of the current
// level: their widgets, what they show of the editor's state, and the
// presses, drags and keys they hand to the editor.
#pragma once

#include <QObject>
#include <QString>
#include <array>
#include <functional>

#include "editor/Editor.h"
#include "gui/BlockPictures.h"
#include "gui/Runner.h"
#include "gui/Widgets.h"

class QBoxLayout;
class QWidget;

namespace shd::gui {

class GridAndPalette : public QObject {
    Q_OBJECT
public:
    // The widgets stand on `parent`; `show` shows the whole window's state
    // after a press or drag on the grid, which must not end the stroke.
    GridAndPalette(QWidget* parent, Editor& editor, Runner run, std::function<void()> show);

    QBoxLayout* paletteRow() const { return paletteRow_; }
    PaletteButton* button(int code) const { return palette_[static_cast<std::size_t>(code)]; }
    GridView* view() const { return view_; }
    PictureGrid* grid() const { return view_->grid(); }
    const BlockPictures& pictures() const { return pictures_; }
    int picturesGeneration() const { return loadedGeneration_; }
    void setPictureFolder(const QString& folder) { pictureFolder_ = folder; }

    // The palette's pictures, tips and chosen button, and the grid's cells and outlines.
    void Show();
    // The grid's shape at the zoom the editor asks for in the room it has
    // now, which is returned.
    int ShowShape();
    // Gives the focus to the palette button the editor names, if any.
    void FocusPalette();

signals:
    // The cell under the pointer, -1 off the grid, for the status bar.
    void hovered(int index);
    // The room the grid has changed.
    void resized();

private:
    void CellPressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint position);
    void CellDragged(QPoint position, Qt::MouseButtons held);
    void ChooseTypedCode(int code);

    Editor& editor_;
    Runner run_;
    std::function<void()> show_;
    QString pictureFolder_;
    BlockPictures pictures_;
    int loadedGeneration_ = -1;
    QBoxLayout* paletteRow_ = nullptr;
    std::array<PaletteButton*, 16> palette_{};
    GridView* view_ = nullptr;
};

}  // namespace shd::gui
