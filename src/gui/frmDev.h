// The main window: shows the editor's state and hands every event to the
// editor's handler for it. No rule of the program lives here.
#pragma once

#include <QMainWindow>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "editor/Editor.h"
#include "gui/BlockPictures.h"
#include "gui/QtPrompts.h"
#include "gui/Twips.h"

class QAction;
class QComboBox;
class QDockWidget;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;

namespace shd::gui {

class Background;
class PaletteButton;
class GridView;
class LevelOverview;
class PictureGrid;

// Where "info.ini" lives: beside the program, or in the user's configuration
// folder when the program's folder cannot be written.
QString SettingsPath(const QString& programFolder);
// The list of recent files, always in the user's configuration folder.
QString RecentFilesPath();

class frmDev : public QMainWindow {
    Q_OBJECT
public:
    // With no prompts the window shows real dialogs; with no metrics it measures the primary screen.
    explicit frmDev(Prompts* prompts = nullptr, std::optional<ScreenMetrics> metrics = std::nullopt,
                    QWidget* parent = nullptr);
    ~frmDev() override;

    // Form_Load: the last folder from `iniPath`, the recent files from
    // `recentPath`, a new Shardles set, palette button 0 focused. The block
    // pictures are read from `pictureFolder`, or else from `programFolder`.
    void Start(const QString& iniPath, const QString& programFolder, const QString& pictureFolder = {},
               const QString& recentPath = {});
    // A file from outside the window: the command line, a drop, Open Recent.
    void OpenPath(const QString& path);

    Editor& editor() { return editor_; }
    const ScreenMetrics& metrics() const { return metrics_; }
    const BlockPictures& pictures() const { return pictures_; }

    PaletteButton* paletteButton(int code) const { return palette_[static_cast<std::size_t>(code)]; }
    // The grid cells pctBox 0 to cellCount() - 1, drawn by one widget in the room the controls leave.
    PictureGrid* grid() const { return grid_; }
    GridView* gridView() const { return gridView_; }
    LevelOverview* overview() const { return overview_; }
    int cellCount() const;
    // Where a cell stands on the window's client area, as a control of its own would.
    QRect cellGeometry(int index) const;
    QMenu* trickyMenu() const { return mnuTrickey_; }

    // Shows the state: every control, picture, text, check mark and visibility.
    void SyncFromState();

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void BuildGrid();
    void BuildOverview();
    void BuildMenus();
    void BuildEditingMenus(QMenuBar* bar, QMenu* mnuEdit);
    void BuildStatusBar();
    QMenu* AddMenu(QWidget* parent, const char* caption, const char* name);
    QAction* AddAction(QMenu* menu, const char* caption, const char* name, std::function<void()> handler,
                       bool focusPalette = false);
    // Runs one handler of the editor, then shows the state it left.
    void Run(const std::function<void()>& handler, bool focusPalette = false);
    void Sync(bool focusPalette);
    void SyncGrid();
    void SyncTexts();
    void SyncMenus();

    void SyncStatus();
    void ListRecentFiles();

    void CellPressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint position);
    void CellDragged(QPoint position, Qt::MouseButtons held);
    void SyncZoom();
    void ChooseTypedCode(int code);
    void BackgroundPressed(Qt::MouseButton button, QPoint globalPosition);

    ScreenMetrics metrics_;
    std::unique_ptr<Prompts> ownPrompts_;
    std::unique_ptr<SyncingPrompts> prompts_;
    Editor editor_;
    QString programFolder_;
    BlockPictures pictures_;
    int loadedGeneration_ = -1;
    bool syncing_ = false;

    QAction* mnuUndo_ = nullptr;
    QAction* mnuRedo_ = nullptr;
    QAction* mnuExportAgain_ = nullptr;
    QMenu* mnuRecent_ = nullptr;
    QLabel* statusLine_ = nullptr;
    QLabel* statusCell_ = nullptr;
    QLabel* statusZoom_ = nullptr;
    QLabel* statusLevel_ = nullptr;
    QLabel* statusBlocks_ = nullptr;

    Background* background_ = nullptr;
    std::array<PaletteButton*, 16> palette_{};
    GridView* gridView_ = nullptr;
    QDockWidget* overviewDock_ = nullptr;
    LevelOverview* overview_ = nullptr;
    PictureGrid* grid_ = nullptr;
    QLabel* lblTitle_ = nullptr;
    QLineEdit* txtTitle_ = nullptr;
    QLabel* lblLevel_ = nullptr;
    QPushButton* cmdAddLev_ = nullptr;
    QPushButton* cmdLoseLev_ = nullptr;
    QLabel* lblLevels_ = nullptr;
    QComboBox* cmbLevels_ = nullptr;
    QLabel* lblBonus_ = nullptr;
    QComboBox* cmbBonus_ = nullptr;
    QLabel* lblExLife_ = nullptr;
    QComboBox* cmbExLife_ = nullptr;
    QLabel* lblBallx_ = nullptr;
    QLineEdit* txtBallx_ = nullptr;
    QLabel* lblBally_ = nullptr;
    QLineEdit* txtBally_ = nullptr;

    QMenu* mnuCreate_ = nullptr;
    QMenu* mnuTrickey_ = nullptr;
    QMenu* mnuUn_ = nullptr;
    QMenu* mnuShdOp_ = nullptr;
    struct Mark {
        QAction* action;
        bool MenuMarks::*mark;
    };
    std::vector<Mark> marks_;
    std::vector<std::pair<QAction*, Tool>> tools_;
    std::array<QAction*, 2> selectionActions_{};
};

}  // namespace shd::gui
