#include "gui/MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QBoxLayout>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <chrono>

#include <QBuffer>

#include "files/FileIo.h"
#include "gui/BlockPictures.h"
#include "gui/HelpAndAbout.h"
#include "gui/KeyCodes.h"
#include "gui/Overview.h"
#include "gui/Text.h"
#include "gui/Widgets.h"
#include "render/Render.h"

namespace shd::gui {

namespace {
// Long enough that a burst of edits is one write, short enough that little is lost.
constexpr std::chrono::milliseconds kRecoveryDelay{3000};
}  // namespace

MainWindow::MainWindow(Prompts* prompts, QWidget* parent)
    : QMainWindow(parent),
      ownPrompts_(prompts ? nullptr : std::make_unique<QtPrompts>(this)),
      prompts_(std::make_unique<SyncingPrompts>(prompts ? *prompts : *ownPrompts_, [this] { SyncFromState(); })),
      editor_(*prompts_) {
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    QPalette grey = palette();
    grey.setColor(QPalette::Window, QColor(192, 192, 192));
    setPalette(grey);

    // The window's own grey shows through the client area: filling it again
    // would go over the whole screen a second time.
    background_ = new Background(this);
    setCentralWidget(background_);
    connect(background_, &Background::pressed, this, &MainWindow::BackgroundPressed);

    status_ = std::make_unique<StatusLine>(statusBar());
    const Runner run = [this](const std::function<void()>& call, bool focusPalette) { Run(call, focusPalette); };
    blocks_ = std::make_unique<GridAndPalette>(background_, editor_, run, [this] { Sync(false); });
    connect(blocks_.get(), &GridAndPalette::hovered, this, [this](int index) { status_->ShowCell(editor_, index); });
    connect(blocks_.get(), &GridAndPalette::resized, this, &MainWindow::SyncZoom);
    fields_ = std::make_unique<LevelFields>(background_, editor_, run);

    // Top to bottom: the palette, the set's title and levels, then the grid
    // with the Shardles settings on either side of it.
    auto* body = new QHBoxLayout;
    body->addLayout(fields_->settingsColumn());
    body->addWidget(blocks_->view(), 1);
    body->addLayout(fields_->ballColumn());
    auto* outer = new QVBoxLayout(background_);
    outer->addLayout(blocks_->paletteRow());
    outer->addLayout(fields_->setRow());
    outer->addLayout(body, 1);

    BuildOverview();
    QToolBar* tools = addToolBar(QStringLiteral("Tools"));
    tools->setObjectName(QStringLiteral("toolBar"));
    tools->setMovable(false);
    actions_ = std::make_unique<WindowActions>(*this, menuBar(), tools);
    connect(actions_->menu("recentMenu"), &QMenu::aboutToShow, this, &MainWindow::ListRecentFiles);
    recoveryTimer_ = new QTimer(this);
    recoveryTimer_->setSingleShot(true);
    recoveryTimer_->setInterval(kRecoveryDelay);
    connect(recoveryTimer_, &QTimer::timeout, this, [this] { KeepRecoveryCopy(); });
    Sync(false);
}

void MainWindow::KeepRecoveryCopy(bool untilWritten) {
    recoveryTimer_->stop();
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    editor_.KeepRecoveryCopy(std::chrono::duration_cast<std::chrono::seconds>(now).count(), untilWritten);
    status_->Show(editor_);  // a copy that could not be written says so there
}

MainWindow::~MainWindow() = default;

void MainWindow::BuildOverview() {
    overviewDock_ = new QDockWidget(QStringLiteral("Overview"), this);
    overviewDock_->setObjectName(QStringLiteral("overviewDock"));
    overviewDock_->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    overview_ = new LevelOverview(overviewDock_);
    overview_->setObjectName(QStringLiteral("overview"));
    overviewDock_->setWidget(overview_);
    addDockWidget(Qt::RightDockWidgetArea, overviewDock_);
    // Choosing a level here is choosing it in the level list.
    connect(overview_, &LevelOverview::chosen, this, [this](int level) { Run([&] { editor_.GoToLevel(level); }); });
    connect(overview_, &LevelOverview::moved, this,
            [this](int from, int to) { Run([&] { editor_.MoveLevel(from, to); }); });
}

QAction* MainWindow::overviewAction() const { return overviewDock_->toggleViewAction(); }

void MainWindow::ExportPicture() {
    const LevelSet& set = editor_.set();
    int choice = 0;  // 0: the current level, 1: every level
    if (set.LevelCount() > 1) {
        choice = prompts_->ChooseFromList("Export a picture of", {"Level " + std::to_string(set.CurrentLevel), "Every Level"});
        if (choice < 0) return;
    }
    const FileChoice file = prompts_->SaveFileDialog("PNG Pictures (*.png)|*.png", editor_.lastFolder(), ".png");
    if (file.path.empty()) return;
    std::array<QImage, 16> shown;
    for (int code = 0; code < 16; ++code) shown[static_cast<std::size_t>(code)] = pictures().Of(code).toImage();
    const render::BlockImages images(shown, set.Kind);
    const QImage picture = choice == 0 ? render::DrawLevel(set, set.CurrentLevel, images, 1)
                                       : render::DrawSheet(set, images, render::DefaultColumns(set.LevelCount()), 1);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    std::string error;
    if (!picture.save(&buffer, "PNG")) error = "the picture could not be made";
    else if (WriteFileAtomic(file.path, png.toStdString(), &error)) return;
    prompts_->Message(file.title + ": " + error);
}

void MainWindow::ShowGuide() {
    // The guide ships with the block pictures: the README's sections for users.
    ShowUserGuide(this, QDir(programFolder_).filePath(QStringLiteral("user-guide.md")));
}

void MainWindow::Start(const QString& iniPath, const QString& programFolder, const QString& pictureFolder,
                       const QString& recentPath) {
    programFolder_ = pictureFolder.isEmpty() ? programFolder : pictureFolder;
    blocks_->setPictureFolder(programFolder_);
    Run([&] { editor_.Start(PathBytes(iniPath), PathBytes(programFolder), PathBytes(recentPath)); }, true);
}

void MainWindow::OpenPath(const QString& path) {
    Run([&] { editor_.OpenPath(PathBytes(QFileInfo(path).absoluteFilePath())); }, true);
}

void MainWindow::ListRecentFiles() {
    QMenu* recent = actions_->menu("recentMenu");
    recent->clear();
    int n = 0;
    for (const std::string& path : editor_.recentFiles()) {
        const QString file = PathText(path);
        QAction* entry = recent->addAction(QStringLiteral("&%1 %2").arg(++n).arg(QFileInfo(file).fileName()));
        entry->setToolTip(file);
        connect(entry, &QAction::triggered, this, [this, file] { OpenPath(file); });
    }
    if (n == 0) recent->addAction(QStringLiteral("(none)"))->setEnabled(false);
}

// A file dropped on the window opens as one named on the command line does.
void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.first().isLocalFile()) return;
    event->acceptProposedAction();
    OpenPath(urls.first().toLocalFile());
}

void MainWindow::Run(const std::function<void()>& call, bool focusPalette) {
    // Whatever comes in while a button is still down on the grid ends its stroke first.
    editor_.EndStroke();
    call();
    Sync(focusPalette);
}

void MainWindow::SyncFromState() { Sync(false); }

void MainWindow::Sync(bool focusPalette) {
    SyncZoom();
    blocks_->Show();
    overview_->showSet(editor_.set(), blocks_->pictures(), blocks_->picturesGeneration());
    fields_->Show();
    actions_->Show(editor_);
    status_->Show(editor_);
    setWindowTitle(ToQt(editor_.DocumentName()) + QStringLiteral("[*] - ") + QString::fromLatin1(kWindowCaption));
    setWindowModified(editor_.IsModified());
    if (editor_.changeCount() != seenChanges_) {
        seenChanges_ = editor_.changeCount();
        recoveryTimer_->start();
    }
    if (focusPalette) blocks_->FocusPalette();
}

// The grid's shape and zoom, which change with the game, a chosen zoom and the room it has.
void MainWindow::SyncZoom() {
    const int zoom = blocks_->ShowShape();
    status_->ShowZoom(ToQt(ZoomText(zoom, editor_.ui().zoom == 0)));
}

int MainWindow::cellCount() const { return grid()->count(); }

QRect MainWindow::cellGeometry(int index) const {
    return QRect(grid()->mapTo(this, grid()->cellRect(index).topLeft()), grid()->cellRect(index).size());
}

void MainWindow::BackgroundPressed(Qt::MouseButton button, QPoint globalPosition) {
    const auto b = MouseButtonOf(button);
    if (!b) return;
    bool popUp = false;
    Run([&] { popUp = editor_.PressBackground(*b); });
    if (popUp) trickyMenu()->popup(globalPosition);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bool mayClose = false;
    Run([&] { mayClose = editor_.MayClose(); });
    if (!mayClose) {
        event->ignore();
        return;
    }
    editor_.Close();
    event->accept();
}

}  // namespace shd::gui
