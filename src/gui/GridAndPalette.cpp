#include "gui/GridAndPalette.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <cstdlib>

#include "gui/KeyCodes.h"
#include "gui/Text.h"

namespace shd::gui {

GridAndPalette::GridAndPalette(QWidget* parent, Editor& editor, Runner run, std::function<void()> show)
    : QObject(parent), editor_(editor), run_(std::move(run)), show_(std::move(show)) {
    paletteRow_ = new QHBoxLayout;
    paletteRow_->setSpacing(0);
    paletteRow_->addStretch();
    auto* group = new QButtonGroup(this);
    group->setExclusive(true);
    for (int code = 0; code < 16; ++code) {
        auto* button = new PaletteButton(code, parent);
        button->setObjectName(QStringLiteral("paletteButton%1").arg(code));
        group->addButton(button, code);
        paletteRow_->addWidget(button);
        connect(button, &QAbstractButton::clicked, this, [this, code] { run_([&] { editor_.ChooseBlock(code); }, false); });
        connect(button, &PaletteButton::keyDown, this,
                [this](Key key) { run_([&] { editor_.StepBlock(key); }, true); });
        connect(button, &PaletteButton::codeTyped, this, &GridAndPalette::ChooseTypedCode);
        palette_[static_cast<std::size_t>(code)] = button;
    }
    paletteRow_->addStretch();

    view_ = new GridView(parent);
    view_->setObjectName(QStringLiteral("gridView"));
    PictureGrid* grid = view_->grid();
    grid->setObjectName(QStringLiteral("grid"));
    connect(grid, &PictureGrid::pressed, this, &GridAndPalette::CellPressed);
    connect(grid, &PictureGrid::dragged, this, &GridAndPalette::CellDragged);
    connect(grid, &PictureGrid::released, this, [this](Qt::MouseButton button) {
        if (const auto b = MouseButtonOf(button)) editor_.ReleaseButton(*b);
        show_();
    });
    connect(grid, &PictureGrid::hovered, this, &GridAndPalette::hovered);
    connect(grid, &PictureGrid::codeTyped, this, &GridAndPalette::ChooseTypedCode);
    // Any other key acts as on the palette, so Left and Right still step after painting.
    connect(grid, &PictureGrid::keyDown, this, [this](Key key) {
        if (key == Key::Escape) run_([&] { editor_.ClearSelection(); }, false);
        else run_([&] { editor_.StepBlock(key); }, true);
    });
    // The grid follows the room it is given until a zoom is chosen.
    connect(view_, &GridView::resized, this, &GridAndPalette::resized);
    connect(view_, &GridView::zoomBy, this, [this](int steps) {
        const int fit = view_->fitZoom();
        run_([&] {
            for (int i = 0; i < std::abs(steps); ++i) steps > 0 ? editor_.ZoomIn(fit) : editor_.ZoomOut(fit);
        }, false);
    });
}

void GridAndPalette::Show() {
    const WindowState& ui = editor_.ui();
    // The pictures and tips change only with the game, when the palette is loaded anew.
    if (ui.paletteGeneration != loadedGeneration_) {
        if (ui.paletteGeneration > 0) pictures_.Load(pictureFolder_, ui.paletteFiles);
        loadedGeneration_ = ui.paletteGeneration;
        for (int code = 0; code < 16; ++code) {
            PaletteButton* button = palette_[static_cast<std::size_t>(code)];
            button->setPicture(pictures_.Of(code));
            button->setToolTip(ToQt(BlockTip(ui.gridKind, code)));
        }
    }
    // Like a group of option buttons, the palette is one stop for Tab: its chosen button.
    for (int code = 0; code < 16; ++code)
        palette_[static_cast<std::size_t>(code)]->setFocusPolicy(code == ui.selectedBlock ? Qt::StrongFocus : Qt::ClickFocus);
    if (ui.selectedBlock >= 0 && ui.selectedBlock < 16) palette_[static_cast<std::size_t>(ui.selectedBlock)]->setChecked(true);

    PictureGrid* grid = view_->grid();
    const std::size_t count = static_cast<std::size_t>(grid->count());
    for (std::size_t i = 0; i < count; ++i) {
        const int code = i < ui.shownPictures.size() ? ui.shownPictures[i] : 0;
        grid->setPicture(static_cast<int>(i), pictures_.Of(code));
    }
    grid->setMarks(ui.selection, ui.preview);
}

int GridAndPalette::ShowShape() {
    const WindowState& ui = editor_.ui();
    PictureGrid* grid = view_->grid();
    grid->setShape(ShapeOf(ui.gridKind), 1);  // what the fit is measured for
    const int zoom = editor_.ZoomOf(view_->fitZoom());
    grid->setShape(ShapeOf(ui.gridKind), zoom);
    return zoom;
}

void GridAndPalette::FocusPalette() {
    const int code = editor_.ui().focusedPalette;
    if (code < 0 || code >= 16) return;
    PaletteButton* button = palette_[static_cast<std::size_t>(code)];
    button->setFocus(Qt::OtherFocusReason);
    button->setChecked(true);
}

// The stroke's rules are the editor's; the grid reports where the pointer
// went, in the window's client area, and which cell lies there.
void GridAndPalette::CellPressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint position) {
    const auto b = MouseButtonOf(button);
    if (!b) return;
    editor_.PressCell(index, {position.x(), position.y()}, *b, HeldButtons(held));
    show_();
}

void GridAndPalette::CellDragged(QPoint position, Qt::MouseButtons held) {
    PictureGrid* grid = view_->grid();
    editor_.DragTo({position.x(), position.y()}, HeldButtons(held),
                   [grid](Point p) { return grid->cellAt(QPoint(p.x, p.y)); });
    show_();
}

// A digit typed on the grid or the palette chooses its block as a click on
// its palette button would.
void GridAndPalette::ChooseTypedCode(int code) {
    run_([&] { editor_.ChooseBlock(code); }, false);
    PaletteButton* button = palette_[static_cast<std::size_t>(code)];
    button->setChecked(true);
    button->setFocus(Qt::OtherFocusReason);
}

}  // namespace shd::gui
