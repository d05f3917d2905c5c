// The main window: shows the editor's state and hands every event to the
// editor. It is assembled from parts, each of which knows its own widgets:
// the palette and grid, the level fields, the status bar and the actions
// table's menus and tool bar. No rule of the program lives here.
#pragma once

#include <QMainWindow>
#include <QString>
#include <memory>

#include "editor/Editor.h"
#include "gui/Actions.h"
#include "gui/BlockPictures.h"
#include "gui/GridAndPalette.h"
#include "gui/LevelFields.h"
#include "gui/QtPrompts.h"
#include "gui/StatusLine.h"

class QDockWidget;
class QTimer;

namespace shd::gui {

class Background;
class LevelOverview;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    // With no prompts the window shows real dialogs.
    explicit MainWindow(Prompts* prompts = nullptr, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Start-up: the last folder from `iniPath`, the recent files from
    // `recentPath`, a new Shardles set, palette button 0 focused. The block
    // pictures are read from `pictureFolder`, or else from `programFolder`.
    void Start(const QString& iniPath, const QString& programFolder, const QString& pictureFolder = {},
               const QString& recentPath = {});
    // A file from outside the window: the command line, a drop, Open Recent.
    void OpenPath(const QString& path);

    Editor& editor() { return editor_; }
    const BlockPictures& pictures() const { return blocks_->pictures(); }
    WindowActions& actions() { return *actions_; }

    PaletteButton* paletteButton(int code) const { return blocks_->button(code); }
    // The grid's cells 0 to cellCount() - 1, drawn by one widget in the room the controls leave.
    PictureGrid* grid() const { return blocks_->grid(); }
    GridView* gridView() const { return blocks_->view(); }
    LevelOverview* overview() const { return overview_; }
    int cellCount() const;
    // Where a cell stands on the window's client area, as a control of its own would.
    QRect cellGeometry(int index) const;
    QMenu* trickyMenu() const { return actions_->menu("trickyMenu"); }

    // What the actions table's rows ask of the window.
    void Run(const std::function<void()>& call, bool focusPalette = false);
    int fitZoom() const { return blocks_->view()->fitZoom(); }
    QAction* overviewAction() const;
    void ShowGuide();
    // File -> Export Picture: the current level or every level as a PNG,
    // drawn as shardles-render draws it, with the pictures the window shows.
    void ExportPicture();

    // Writes the recovery copy now, or removes it when nothing is unsaved;
    // otherwise it is written a few seconds after the last change. The
    // timer's write does not wait for the disk; one before the end does.
    void KeepRecoveryCopy(bool untilWritten = false);

    // Shows the state: every control, picture, text, check mark and visibility.
    void SyncFromState();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void BuildOverview();
    void Sync(bool focusPalette);
    void SyncZoom();
    void ListRecentFiles();
    void BackgroundPressed(Qt::MouseButton button, QPoint globalPosition);

    std::unique_ptr<Prompts> ownPrompts_;
    std::unique_ptr<SyncingPrompts> prompts_;
    Editor editor_;
    QString programFolder_;

    Background* background_ = nullptr;
    std::unique_ptr<GridAndPalette> blocks_;
    std::unique_ptr<LevelFields> fields_;
    std::unique_ptr<StatusLine> status_;
    QDockWidget* overviewDock_ = nullptr;
    LevelOverview* overview_ = nullptr;
    std::unique_ptr<WindowActions> actions_;

    // Restarted by every change, so a drag is not written cell by cell.
    QTimer* recoveryTimer_ = nullptr;
    std::size_t seenChanges_ = 0;
};

}  // namespace shd::gui
