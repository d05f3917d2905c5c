#include "gui/frmDev.h"

#include <QAction>
#include <QApplication>
#include <QActionGroup>
#include <QButtonGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QBoxLayout>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>
#include <cmath>
#include <cstdlib>

#include "gui/HelpAndAbout.h"
#include "gui/KeyCodes.h"
#include "gui/Overview.h"
#include "gui/SendToCalculator.h"
#include "gui/Text.h"
#include "gui/Widgets.h"

namespace shd::gui {

namespace {
const QColor kGrey(192, 192, 192);
constexpr int kButtonPadding = 4;  // pixels a button's caption keeps from each side

std::optional<MouseButton> ButtonOf(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton: return MouseButton::Left;
    case Qt::RightButton: return MouseButton::Right;
    case Qt::MiddleButton: return MouseButton::Middle;
    default: return std::nullopt;
    }
}

int ButtonsOf(Qt::MouseButtons held) {
    int bits = 0;
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        if (held.testFlag(button)) bits |= static_cast<int>(*ButtonOf(button));
    return bits;
}

QLabel* MakeLabel(QWidget* parent, const char* name, const char* text) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    return label;
}

QPushButton* MakeButton(QWidget* parent, const char* name, const char* text) {
    auto* button = new QPushButton(QString::fromLatin1(text), parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

QComboBox* MakeCombo(QWidget* parent, const char* name, const QStringList& items) {
    auto* combo = new QComboBox(parent);
    combo->setObjectName(QString::fromLatin1(name));
    // Editable by giving it its line edit: setEditable(true) would also build
    // the drop-down list at once, which the combo box otherwise builds when
    // it first drops down.
    combo->setLineEdit(new QLineEdit(combo));
    // Typed text is the setting itself: it is not completed to an entry it
    // starts ("6" stays 6, not 60), and it never becomes a list entry.
    combo->setCompleter(nullptr);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->addItems(items);
    return combo;
}

QLineEdit* MakeTextBox(QWidget* parent, const char* name, const char* text) {
    auto* box = new QLineEdit(QString::fromLatin1(text), parent);
    box->setObjectName(QString::fromLatin1(name));
    return box;
}

// A caption over its control, as one column of the window.
QVBoxLayout* Captioned(QLabel* label, QWidget* control) {
    auto* column = new QVBoxLayout;
    column->setSpacing(2);
    column->addWidget(label);
    column->addWidget(control);
    return column;
}

// Rewrites a box only when the state says something else, so typing is left alone.
void ShowText(QLineEdit* box, const QString& text) {
    if (box->text() == text) return;
    box->setText(text);
    box->setCursorPosition(static_cast<int>(text.size()));
}

void ShowText(QComboBox* combo, const QString& text) {
    if (combo->currentText() == text) return;
    combo->setEditText(text);
    if (QLineEdit* edit = combo->lineEdit()) edit->setCursorPosition(static_cast<int>(text.size()));
}
}  // namespace

QString SettingsPath(const QString& programFolder) {
    const QFileInfo folder(programFolder);
    if (folder.isDir() && folder.isWritable()) return QDir(programFolder).filePath(QStringLiteral("info.ini"));
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    return QDir(config).filePath(QStringLiteral("info.ini"));
}

QString RecentFilesPath() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    return QDir(config).filePath(QStringLiteral("recent.txt"));
}

frmDev::frmDev(Prompts* prompts, std::optional<ScreenMetrics> metrics, QWidget* parent)
    : QMainWindow(parent),
      metrics_(metrics ? *metrics : ScreenMetrics::Of(nullptr)),
      ownPrompts_(prompts ? nullptr : std::make_unique<QtPrompts>(this, metrics_)),
      prompts_(std::make_unique<SyncingPrompts>(prompts ? *prompts : *ownPrompts_, [this] { SyncFromState(); })),
      editor_(*prompts_) {
    setObjectName(QStringLiteral("frmDev"));
    setAcceptDrops(true);
    QPalette grey = palette();
    grey.setColor(QPalette::Window, kGrey);
    setPalette(grey);

    // The window's own grey shows through the client area: filling it again
    // would go over the whole screen a second time.
    background_ = new Background(this);
    setCentralWidget(background_);
    connect(background_, &Background::pressed, this, &frmDev::BackgroundPressed);

    BuildStatusBar();
    BuildControls();
    BuildGrid();
    BuildOverview();
    BuildMenus();
    Sync(false);
}

frmDev::~frmDev() = default;

void frmDev::BuildControls() {
    // Top to bottom: the palette, the set's title and levels, then the grid
    // with the Shardles settings on either side of it.
    auto* paletteRow = new QHBoxLayout;
    paletteRow->setSpacing(0);
    paletteRow->addStretch();
    auto* group = new QButtonGroup(this);
    group->setExclusive(true);
    for (int code = 0; code < 16; ++code) {
        auto* button = new PaletteButton(code, background_);
        button->setObjectName(QStringLiteral("optBlocks%1").arg(code));
        group->addButton(button, code);
        paletteRow->addWidget(button);
        connect(button, &QAbstractButton::clicked, this, [this, code] { Run([&] { editor_.ChooseBlock(code); }); });
        connect(button, &PaletteButton::keyDown, this,
                [this](Key key) { Run([&] { editor_.StepBlock(key); }, true); });
        connect(button, &PaletteButton::codeTyped, this, &frmDev::ChooseTypedCode);
        palette_[static_cast<std::size_t>(code)] = button;
    }
    paletteRow->addStretch();

    lblTitle_ = MakeLabel(background_, "lblTitle", "&Level Name");
    txtTitle_ = MakeTextBox(background_, "txtTitle", "Please Add a title");
    lblTitle_->setBuddy(txtTitle_);
    lblLevel_ = MakeLabel(background_, "lblLevel", "Number of Levels: 255");
    cmdAddLev_ = MakeButton(background_, "cmdAddLev", "Add a Level");
    cmdLoseLev_ = MakeButton(background_, "cmdLoseLev", "Lose a  Level");
    lblLevels_ = MakeLabel(background_, "lblLevels", "Current Level/Change Level");
    cmbLevels_ = MakeCombo(background_, "cmbLevels", {QStringLiteral("Level 1")});
    lblBonus_ = MakeLabel(background_, "lblBonus", "&Bonus Clock start number");
    cmbBonus_ = MakeCombo(background_, "cmbBonus",
                          {QStringLiteral("30"), QStringLiteral("60"), QStringLiteral("90"), QStringLiteral("120")});
    lblBonus_->setBuddy(cmbBonus_);
    lblExLife_ = MakeLabel(background_, "lblExLife", "&Extra Life Point Number:");
    QStringList points;
    for (int p = 100; p <= 800; p += 100) points << QString::number(p);
    cmbExLife_ = MakeCombo(background_, "cmbExLife", points);
    lblExLife_->setBuddy(cmbExLife_);
    lblBallx_ = MakeLabel(background_, "lblBallx", "Ball starts to the &right:");
    txtBallx_ = MakeTextBox(background_, "txtBallx", "");
    lblBallx_->setBuddy(txtBallx_);
    lblBally_ = MakeLabel(background_, "lblBally", "Ball starts &down:");
    txtBally_ = MakeTextBox(background_, "txtBally", "");
    lblBally_->setBuddy(txtBally_);

    // The level count's label keeps the width of its widest text.
    lblLevel_->setMinimumWidth(lblLevel_->sizeHint().width());
    auto* levelButtons = new QHBoxLayout;
    levelButtons->setSpacing(0);
    levelButtons->addWidget(cmdAddLev_);
    levelButtons->addWidget(cmdLoseLev_);
    auto* levelCount = new QVBoxLayout;
    levelCount->setSpacing(2);
    levelCount->addWidget(lblLevel_);
    levelCount->addLayout(levelButtons);
    auto* setRow = new QHBoxLayout;
    setRow->addStretch();
    setRow->addLayout(Captioned(lblTitle_, txtTitle_));
    setRow->addSpacing(24);
    setRow->addLayout(levelCount);
    setRow->addSpacing(24);
    setRow->addLayout(Captioned(lblLevels_, cmbLevels_));
    setRow->addStretch();
    for (auto* top : {lblTitle_, lblLevel_, lblLevels_}) top->setAlignment(Qt::AlignLeft | Qt::AlignBottom);

    auto side = [this](QLabel* first, QWidget* firstBox, QLabel* second, QWidget* secondBox) {
        auto* column = new QVBoxLayout;
        column->addLayout(Captioned(first, firstBox));
        column->addSpacing(16);
        column->addLayout(Captioned(second, secondBox));
        column->addStretch();
        return column;
    };
    gridView_ = new GridView(background_);
    gridView_->setObjectName(QStringLiteral("gridView"));
    auto* body = new QHBoxLayout;
    body->addLayout(side(lblBonus_, cmbBonus_, lblExLife_, cmbExLife_));
    body->addWidget(gridView_, 1);
    body->addLayout(side(lblBallx_, txtBallx_, lblBally_, txtBally_));

    auto* outer = new QVBoxLayout(background_);
    outer->addLayout(paletteRow);
    outer->addLayout(setRow);
    outer->addLayout(body, 1);

    connect(cmdAddLev_, &QPushButton::clicked, this, [this] { Run([&] { editor_.AddLevel(); }); });
    connect(cmdLoseLev_, &QPushButton::clicked, this, [this] { Run([&] { editor_.RemoveLevel(); }); });
    connect(cmbLevels_, &QComboBox::activated, this,
            [this](int index) { Run([&] { editor_.GoToLevel(index + 1); }); });
    connect(txtTitle_, &QLineEdit::textEdited, this,
            [this](const QString& text) { Run([&] { editor_.SetTitle(ToBytes(text)); }); });
    connect(cmbBonus_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!syncing_) Run([&] { editor_.SetBonusClock(ToBytes(text)); });
    });
    connect(cmbExLife_, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (!syncing_) Run([&] { editor_.SetExtraLifePoints(ToBytes(text)); });
    });
    for (QLineEdit* box : {txtBallx_, txtBally_})
        connect(box, &QLineEdit::textChanged, this, [this, box](const QString& text) {
            if (!syncing_) Run([&] { editor_.TypeBallStart(box == txtBallx_ ? Axis::Across : Axis::Down, ToBytes(text)); });
        });
    for (QLineEdit* box : {txtTitle_, txtBallx_, txtBally_}) box->installEventFilter(this);
}

void frmDev::BuildGrid() {
    grid_ = gridView_->grid();
    grid_->setObjectName(QStringLiteral("pctBox"));
    connect(grid_, &PictureGrid::pressed, this, &frmDev::CellPressed);
    connect(grid_, &PictureGrid::dragged, this, &frmDev::CellDragged);
    connect(grid_, &PictureGrid::released, this, [this](Qt::MouseButton button) {
        if (const auto b = ButtonOf(button)) editor_.ReleaseButton(*b);
        Sync(false);
    });
    connect(grid_, &PictureGrid::hovered, this, [this](int index) {
        statusCell_->setText(ToQt(CellText(editor_.set(), index)));
    });
    connect(grid_, &PictureGrid::codeTyped, this, &frmDev::ChooseTypedCode);
    // Any other key acts as on the palette, so Left and Right still step after painting.
    connect(grid_, &PictureGrid::keyDown, this, [this](Key key) {
        if (key == Key::Escape) Run([&] { editor_.ClearSelection(); });
        else Run([&] { editor_.StepBlock(key); }, true);
    });
    // The grid follows the room it is given until a zoom is chosen.
    connect(gridView_, &GridView::resized, this, &frmDev::SyncZoom);
    connect(gridView_, &GridView::zoomBy, this, [this](int steps) {
        const int fit = gridView_->fitZoom();
        Run([&] {
            for (int i = 0; i < std::abs(steps); ++i) steps > 0 ? editor_.ZoomIn(fit) : editor_.ZoomOut(fit);
        });
    });
}

void frmDev::BuildOverview() {
    overviewDock_ = new QDockWidget(QStringLiteral("Overview"), this);
    overviewDock_->setObjectName(QStringLiteral("overviewDock"));
    overviewDock_->setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);
    overview_ = new LevelOverview(overviewDock_);
    overview_->setObjectName(QStringLiteral("overview"));
    overviewDock_->setWidget(overview_);
    addDockWidget(Qt::RightDockWidgetArea, overviewDock_);
    // Choosing a level here is choosing it in the level list.
    connect(overview_, &LevelOverview::chosen, this,
            [this](int level) { Run([&] { editor_.GoToLevel(level); }); });
    connect(overview_, &LevelOverview::moved, this,
            [this](int from, int to) { Run([&] { editor_.MoveLevel(from, to); }); });
}

QMenu* frmDev::AddMenu(QWidget* parent, const char* caption, const char* name) {
    auto* menu = new QMenu(QString::fromLatin1(caption), parent);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name));
    if (auto* bar = qobject_cast<QMenuBar*>(parent)) bar->addMenu(menu);
    else if (auto* owner = qobject_cast<QMenu*>(parent)) owner->addMenu(menu);
    return menu;
}

QAction* frmDev::AddAction(QMenu* menu, const char* caption, const char* name, std::function<void()> handler,
                           bool focusPalette) {
    QAction* action = menu->addAction(QString::fromLatin1(caption));
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this,
            [this, handler = std::move(handler), focusPalette] { Run(handler, focusPalette); });
    return action;
}

void frmDev::BuildMenus() {
    Editor& e = editor_;
    QMenuBar* bar = menuBar();

    QMenu* mnuFile = AddMenu(bar, "&File", "mnuFile");
    QMenu* mnuNew = AddMenu(mnuFile, "&New", "mnuNew");
    // A new set puts the focus on palette button 0.
    AddAction(mnuNew, "&Shardles File", "mnuNewShd", [&e] { e.NewSet(GameKind::Shardles); }, true);
    AddAction(mnuNew, "&Tiltbash File", "mnuNewTil", [&e] { e.NewSet(GameKind::Tiltbash); }, true);
    // Ctrl+N asks which game, as the menu does: it opens the New menu.
    auto* newSet = new QAction(this);
    newSet->setShortcut(QKeySequence::New);
    connect(newSet, &QAction::triggered, this, [this, mnuNew] { mnuNew->popup(mapToGlobal(QPoint(0, 0))); });
    addAction(newSet);
    QMenu* mnuOpen = AddMenu(mnuFile, "&Open", "mnuOpen");
    AddAction(mnuOpen, "&My File", "mnuOpenMyFile", [&e] { e.OpenLevelFile(FormatId::MyFile); })
        ->setShortcuts(QKeySequence::Open);
    AddAction(mnuOpen, "&Old My File", "mnuOpenOld", [&e] { e.OpenLevelFile(FormatId::OldMyFile); });
    AddAction(mnuOpen, "&TI-83 List", "mnuOpenList", [&e] { e.OpenLevelFile(FormatId::List); });
    AddAction(mnuOpen, "&Compiled Code", "mnuOpenCode", [&e] { e.OpenProgram(); });
    AddAction(mnuOpen, "&Source Code", "mnuOpenSource", [&e] { e.OpenSource(); });
    mnuRecent_ = AddMenu(mnuFile, "Open &Recent", "mnuRecent");
    connect(mnuRecent_, &QMenu::aboutToShow, this, &frmDev::ListRecentFiles);
    mnuFile->addSeparator();
    AddAction(mnuFile, "Sa&ve", "mnuSaveDocument", [&e] { e.Save(); })
        ->setShortcuts(QKeySequence::Save);
    AddAction(mnuFile, "Save &As...", "mnuSaveAs", [&e] { e.SaveAs(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    QMenu* mnuSave = AddMenu(mnuFile, "&Save", "mnuSave");
    AddAction(mnuSave, "&My File", "mnuSaveMyFile", [&e] { e.SaveLevelFile(FormatId::MyFile); });
    AddAction(mnuSave, "&TI-83 List", "mnuSaveList", [&e] { e.SaveLevelFile(FormatId::List); });
    AddAction(mnuSave, "&Compiled Code", "mnuSaveCode", [&e] { e.SaveProgram(); });
    AddAction(mnuSave, "&Source Code", "mnuSaveSource", [&e] { e.SaveSource(); });
    mnuExportAgain_ = AddAction(mnuFile, "Export A&gain", "mnuExportAgain", [&e] { e.ExportAgain(); });
    mnuExportAgain_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    AddAction(mnuFile, "Send to &Calculator...", "mnuSendCalc", [this] {
        QtCalculatorLink link(this);
        editor_.SendToCalculator(link);
    });
    mnuFile->addSeparator()->setObjectName(QStringLiteral("mnu"));
    QAction* mnuExit = mnuFile->addAction(QStringLiteral("E&xit"));
    mnuExit->setObjectName(QStringLiteral("mnuExit"));
    mnuExit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    connect(mnuExit, &QAction::triggered, this, &QWidget::close);  // closing asks what closing asks

    // Undo and redo go through the stack; each is enabled while it has a step to take.
    // Alt+E belongs to "&Extra Life Point Number:", Alt+D to "Ball starts &down:".
    QMenu* mnuEdit = AddMenu(bar, "Ed&it", "mnuEdit");
    mnuUndo_ = mnuEdit->addAction(QStringLiteral("&Undo"));
    mnuUndo_->setObjectName(QStringLiteral("mnuUndo"));
    mnuUndo_->setShortcuts(QKeySequence::Undo);
    connect(mnuUndo_, &QAction::triggered, this, [this] { Run([&] { editor_.Undo(); }); });
    mnuRedo_ = mnuEdit->addAction(QStringLiteral("&Redo"));
    mnuRedo_->setObjectName(QStringLiteral("mnuRedo"));
    // Ctrl+Y as well as the platform's own: Linux key schemes have only Ctrl+Shift+Z.
    mnuRedo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(mnuRedo_, &QAction::triggered, this, [this] { Run([&] { editor_.Redo(); }); });
    BuildEditingMenus(bar, mnuEdit);

    // Zooming needs the room the grid has now, which only the window knows.
    QMenu* mnuView = AddMenu(bar, "&View", "mnuView");
    auto zoom = [this](void (Editor::*step)(int)) {
        return [this, step] { (editor_.*step)(gridView_->fitZoom()); };
    };
    AddAction(mnuView, "Zoom &In", "mnuZoomIn", zoom(&Editor::ZoomIn))
        ->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    AddAction(mnuView, "Zoom &Out", "mnuZoomOut", zoom(&Editor::ZoomOut))
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Minus));
    AddAction(mnuView, "&Fit to Window", "mnuZoomFit", [&e] { e.ZoomToFit(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_0));
    mnuView->addSeparator();
    QAction* overview = overviewDock_->toggleViewAction();
    overview->setText(QStringLiteral("&Overview"));
    overview->setObjectName(QStringLiteral("mnuOverview"));
    mnuView->addAction(overview);

    mnuCreate_ = AddMenu(bar, "&Create", "mnuCreate");
    AddAction(mnuCreate_, "&Normal Shardle", "mnuCreateNormShd", [&e] { e.EditPiece(PictureKind::Normal); });
    AddAction(mnuCreate_, "&Changer Shardle", "mnuCreateChangeShd", [&e] { e.EditPiece(PictureKind::Change); });

    mnuTrickey_ = AddMenu(bar, "&Tricky", "mnuTrickey");
    mnuUn_ = AddMenu(mnuTrickey_, "&Unused Shardles", "mnuUn");
    mnuShdOp_ = AddMenu(mnuTrickey_, "&Shardles Options", "mnuShdOp");
    auto toggle = [&](QMenu* menu, const char* caption, const char* name, Toggle which, bool MenuMarks::*mark) {
        QAction* action = AddAction(menu, caption, name, [&e, which] { e.Toggle(which); });
        action->setCheckable(true);
        marks_.push_back({action, mark});
    };
    toggle(mnuUn_, "&Spotted", "mnuSpot", Toggle::Spotted, &MenuMarks::Spotted);
    toggle(mnuUn_, "Center-&line", "mnuCenter", Toggle::CenterLine, &MenuMarks::CenterLine);
    toggle(mnuUn_, "&Zig-Zag", "mnuZig", Toggle::ZigZag, &MenuMarks::ZigZag);
    toggle(mnuUn_, "&Custom", "mnuCust", Toggle::Custom, &MenuMarks::Custom);
    toggle(mnuShdOp_, "Use &Custom Shardles", "mnuCus", Toggle::CustomShardles, &MenuMarks::CustomShardles);
    toggle(mnuShdOp_, "&Use Wrap Around", "mnuWrap", Toggle::WrapAround, &MenuMarks::WrapAround);
    toggle(mnuShdOp_, "&Arrow Blocks Are Breakable", "mnuArrow", Toggle::ArrowBreakable, &MenuMarks::ArrowBreakable);
    toggle(mnuShdOp_, "&Match # of Locks to # of Blocks", "mnuMatch", Toggle::MatchLocks, &MenuMarks::MatchLocks);
    toggle(mnuShdOp_, "Use &Shardles Debugger", "mnuUse", Toggle::Debugger, &MenuMarks::Debugger);
    QAction* special = AddAction(mnuTrickey_, "&Special Unused Blocks", "mnuSpecial", [&e] { e.AskSpecialCount(); });
    special->setCheckable(true);
    marks_.push_back({special, &MenuMarks::Special});
    AddAction(mnuTrickey_, "&Reset All", "mnuResetAll", [&e] { e.ResetAll(); });

    QMenu* mnuHelp = AddMenu(bar, "&Help", "mnuHelp");
    AddAction(mnuHelp, "&Contents", "mnuContents", [this] {
        // The guide ships with the block pictures: the README's sections for users.
        ShowUserGuide(this, QDir(programFolder_).filePath(QStringLiteral("user-guide.md")));
    })
        ->setShortcuts(QKeySequence::HelpContents);
    AddAction(mnuHelp, "&About", "mnuAbout", [&e] { e.ShowAbout(); });
}

// Cells and levels travel through the clipboard as plain text, so two
// running editors can exchange them.
namespace {
void ToClipboard(const std::string& text) {
    if (!text.empty()) QGuiApplication::clipboard()->setText(QString::fromLatin1(text));
}
std::string FromClipboard() { return QGuiApplication::clipboard()->text().toLatin1().toStdString(); }
}  // namespace

void frmDev::BuildEditingMenus(QMenuBar* bar, QMenu* mnuEdit) {
    Editor& e = editor_;
    mnuEdit->addSeparator();
    // Cut and Copy are there while cells are selected.
    selectionActions_ = {
        AddAction(mnuEdit, "Cu&t", "mnuCut", [&e] { ToClipboard(e.CutSelection()); }),
        AddAction(mnuEdit, "&Copy", "mnuCopy", [&e] { ToClipboard(e.CopySelection()); })};
    selectionActions_[0]->setShortcuts(QKeySequence::Cut);
    selectionActions_[1]->setShortcuts(QKeySequence::Copy);
    AddAction(mnuEdit, "&Paste", "mnuPaste", [&e] { e.PasteCells(FromClipboard()); })->setShortcuts(QKeySequence::Paste);
    AddAction(mnuEdit, "Select &None", "mnuSelectNone", [&e] { e.ClearSelection(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A));

    // The tools, in a submenu and on the tool bar.
    QMenu* mnuTool = AddMenu(mnuEdit, "T&ool", "mnuTool");
    QToolBar* tools = addToolBar(QStringLiteral("Tools"));
    tools->setObjectName(QStringLiteral("toolBar"));
    tools->setMovable(false);
    auto* group = new QActionGroup(this);
    const std::tuple<const char*, const char*, Tool, const char*> kTools[] = {
        {"&Pencil", "mnuPencil", Tool::Pencil, "Paint cells one by one, or drag a stroke"},
        {"&Rectangle", "mnuRectangle", Tool::Rectangle, "Drag to fill a rectangle with the chosen block"},
        {"&Fill", "mnuFill", Tool::Fill, "Fill the connected cells of one block"},
        {"&Select", "mnuSelect", Tool::Select, "Drag to select cells for Cut, Copy and Paste"}};
    for (const auto& [caption, name, tool, tip] : kTools) {
        QAction* action = AddAction(mnuTool, caption, name, [&e, tool = tool] { e.ChooseTool(tool); });
        action->setCheckable(true);
        action->setToolTip(QString::fromLatin1(tip));
        group->addAction(action);
        tools->addAction(action);
        tools_.push_back({action, tool});
    }

    mnuEdit->addSeparator();
    AddAction(mnuEdit, "Flip &Left to Right", "mnuFlipLeftRight", [&e] { e.FlipLeftRight(); });
    AddAction(mnuEdit, "Flip Top to &Bottom", "mnuFlipTopBottom", [&e] { e.FlipTopBottom(); });
    QMenu* mnuShift = AddMenu(mnuEdit, "S&hift Cells", "mnuShift");
    AddAction(mnuShift, "&Left", "mnuShiftLeft", [&e] { e.ShiftCells(-1, 0); });
    AddAction(mnuShift, "&Right", "mnuShiftRight", [&e] { e.ShiftCells(1, 0); });
    AddAction(mnuShift, "&Up", "mnuShiftUp", [&e] { e.ShiftCells(0, -1); });
    AddAction(mnuShift, "&Down", "mnuShiftDown", [&e] { e.ShiftCells(0, 1); });

    QMenu* mnuLevels = AddMenu(bar, "Level&s", "mnuLevels");
    AddAction(mnuLevels, "&Duplicate Level", "mnuDuplicateLevel", [&e] { e.DuplicateLevel(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    AddAction(mnuLevels, "Move Level &Up", "mnuMoveLevelUp", [&e] { e.MoveLevelUp(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up));
    AddAction(mnuLevels, "Move Level Do&wn", "mnuMoveLevelDown", [&e] { e.MoveLevelDown(); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down));
    mnuLevels->addSeparator();
    AddAction(mnuLevels, "&Copy Level", "mnuCopyLevel", [&e] { ToClipboard(e.CopyLevel()); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C));
    AddAction(mnuLevels, "&Paste Level", "mnuPasteLevel", [&e] { e.PasteLevel(FromClipboard()); })
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_V));
}

void frmDev::BuildStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("statusBar"));
    bar->setSizeGripEnabled(false);
    auto label = [bar](const char* name) {
        auto* l = new QLabel(bar);
        l->setObjectName(QString::fromLatin1(name));
        l->setTextFormat(Qt::PlainText);
        // Room on either side, so the counts never run together.
        l->setContentsMargins(8, 0, 8, 0);
        return l;
    };
    // How the last read or write ended on the left, where the level stands on the right.
    statusLine_ = label("statusLine");
    bar->addWidget(statusLine_, 1);
    statusCell_ = label("statusCell");
    bar->addPermanentWidget(statusCell_);
    statusZoom_ = label("statusZoom");
    bar->addPermanentWidget(statusZoom_);
    statusLevel_ = label("statusLevel");
    bar->addPermanentWidget(statusLevel_);
    statusBlocks_ = label("statusBlocks");
    bar->addPermanentWidget(statusBlocks_);
}

void frmDev::Start(const QString& iniPath, const QString& programFolder, const QString& pictureFolder,
                   const QString& recentPath) {
    programFolder_ = pictureFolder.isEmpty() ? programFolder : pictureFolder;
    Run([&] { editor_.Start(PathBytes(iniPath), PathBytes(programFolder), PathBytes(recentPath)); }, true);
}

void frmDev::OpenPath(const QString& path) {
    Run([&] { editor_.OpenPath(PathBytes(QFileInfo(path).absoluteFilePath())); }, true);
}

void frmDev::ListRecentFiles() {
    mnuRecent_->clear();
    int n = 0;
    for (const std::string& path : editor_.recentFiles()) {
        const QString file = PathText(path);
        QAction* entry = mnuRecent_->addAction(QStringLiteral("&%1 %2").arg(++n).arg(QFileInfo(file).fileName()));
        entry->setToolTip(file);
        connect(entry, &QAction::triggered, this, [this, file] { OpenPath(file); });
    }
    if (n == 0) mnuRecent_->addAction(QStringLiteral("(none)"))->setEnabled(false);
}

// A file dropped on the window opens as one named on the command line does.
void frmDev::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void frmDev::dropEvent(QDropEvent* event) {
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.isEmpty() || !urls.first().isLocalFile()) return;
    event->acceptProposedAction();
    OpenPath(urls.first().toLocalFile());
}

void frmDev::Run(const std::function<void()>& handler, bool focusPalette) {
    // Whatever comes in while a button is still down on the grid ends its stroke first.
    editor_.EndStroke();
    handler();
    Sync(focusPalette);
}

void frmDev::SyncFromState() { Sync(false); }

void frmDev::Sync(bool focusPalette) {
    const bool wasSyncing = syncing_;
    syncing_ = true;
    const WindowState& ui = editor_.ui();

    // The pictures and tips change only with the game, when the palette is loaded anew.
    if (ui.paletteGeneration != loadedGeneration_) {
        if (ui.paletteGeneration > 0) pictures_.Load(programFolder_, ui.paletteFiles);
        loadedGeneration_ = ui.paletteGeneration;
        for (int code = 0; code < 16; ++code) {
            PaletteButton* button = palette_[static_cast<std::size_t>(code)];
            button->setPicture(pictures_.Of(code));
            button->setToolTip(ToQt(BlockTip(ui.gridKind, code)));
        }
    }
    // Like a group of option buttons, the palette is one stop for Tab: its chosen button.
    for (int code = 0; code < 16; ++code)
        palette_[static_cast<std::size_t>(code)]->setFocusPolicy(code == ui.SelectedBlock ? Qt::StrongFocus : Qt::ClickFocus);
    if (ui.SelectedBlock >= 0 && ui.SelectedBlock < 16) palette_[static_cast<std::size_t>(ui.SelectedBlock)]->setChecked(true);

    SyncGrid();
    overview_->showSet(editor_.set(), pictures_, loadedGeneration_);
    SyncTexts();
    SyncMenus();
    SyncStatus();
    mnuUndo_->setEnabled(editor_.CanUndo());
    mnuRedo_->setEnabled(editor_.CanRedo());
    mnuExportAgain_->setEnabled(editor_.CanExportAgain());
    setWindowTitle(ToQt(editor_.DocumentName()) + QStringLiteral("[*] - ") + QString::fromLatin1(kWindowCaption));
    setWindowModified(editor_.IsModified());

    const bool shardles = ui.shardlesControlsVisible;
    for (QWidget* w : std::initializer_list<QWidget*>{lblBonus_, cmbBonus_, lblExLife_, cmbExLife_, lblBallx_,
                                                      txtBallx_, lblBally_, txtBally_})
        w->setVisible(shardles);

    if (focusPalette && ui.focusedPalette >= 0 && ui.focusedPalette < 16) {
        PaletteButton* button = palette_[static_cast<std::size_t>(ui.focusedPalette)];
        button->setFocus(Qt::OtherFocusReason);
        button->setChecked(true);
    }
    syncing_ = wasSyncing;
}

void frmDev::SyncGrid() {
    const WindowState& ui = editor_.ui();
    SyncZoom();
    const std::size_t count = static_cast<std::size_t>(grid_->count());
    for (std::size_t i = 0; i < count; ++i) {
        const int code = i < ui.shownPictures.size() ? ui.shownPictures[i] : 0;
        grid_->setPicture(static_cast<int>(i), pictures_.Of(code));
    }
    grid_->setMarks(ui.selection, ui.preview);
}

// The grid's shape and zoom, which change with the game, a chosen zoom and the room it has.
void frmDev::SyncZoom() {
    const WindowState& ui = editor_.ui();
    grid_->setShape(ShapeOf(ui.gridKind), 1);  // what the fit is measured for
    const int fit = gridView_->fitZoom();
    const int zoom = editor_.ZoomOf(fit);
    grid_->setShape(ShapeOf(ui.gridKind), zoom);
    statusZoom_->setText(ToQt(ZoomText(zoom, ui.zoom == 0)));
}

int frmDev::cellCount() const { return grid_->count(); }

QRect frmDev::cellGeometry(int index) const {
    return QRect(grid_->mapTo(this, grid_->cellRect(index).topLeft()), grid_->cellRect(index).size());
}

void frmDev::SyncTexts() {
    const WindowState& ui = editor_.ui();
    const LevelSet& set = editor_.set();
    lblLevel_->setText(ToQt(ui.levelCountLabel));
    ShowText(txtTitle_, ToQt(set.Title));
    ShowText(txtBallx_, ToQt(ui.ballXText));
    ShowText(txtBally_, ToQt(ui.ballYText));

    QStringList entries;
    for (const std::string& entry : ui.levelEntries) entries << ToQt(entry);
    bool same = cmbLevels_->count() == entries.size();
    for (int i = 0; same && i < cmbLevels_->count(); ++i) same = cmbLevels_->itemText(i) == entries[i];
    if (!same) {
        cmbLevels_->clear();
        cmbLevels_->addItems(entries);
    }
    ShowText(cmbLevels_, ToQt(ui.levelText));
    ShowText(cmbBonus_, ToQt(set.BonusClock));
    ShowText(cmbExLife_, ToQt(set.ExtraLifePoints));
}

void frmDev::SyncMenus() {
    const WindowState& ui = editor_.ui();
    for (const Mark& m : marks_) m.action->setChecked(ui.marks.*(m.mark));
    for (const auto& [action, tool] : tools_) action->setChecked(ui.tool == tool);
    for (QAction* action : selectionActions_) action->setEnabled(!ui.selection.empty());
    mnuCreate_->menuAction()->setVisible(ui.createMenuVisible);
    mnuUn_->menuAction()->setVisible(ui.unusedMenuVisible);
    mnuShdOp_->menuAction()->setVisible(ui.optionsMenuVisible);
}

void frmDev::SyncStatus() {
    const LevelSet& set = editor_.set();
    statusLevel_->setText(
        QStringLiteral("Level %1 of %2").arg(static_cast<int>(set.CurrentLevel)).arg(static_cast<int>(set.LevelCount())));
    statusBlocks_->setText(QStringLiteral("Blocks: %1").arg(editor_.LiveBlockCount()));
    // The line names a file, so it crosses as a path does.
    statusLine_->setText(PathText(editor_.ui().status));
}

// ---- mouse ----

// The stroke's rules are the editor's; the grid reports where the pointer
// went, in the window's client area, and which cell lies there.
void frmDev::CellPressed(int index, Qt::MouseButton button, Qt::MouseButtons held, QPoint position) {
    const auto b = ButtonOf(button);
    if (!b) return;
    editor_.PressCell(index, {position.x(), position.y()}, *b, ButtonsOf(held));
    Sync(false);
}

void frmDev::CellDragged(QPoint position, Qt::MouseButtons held) {
    editor_.DragTo({position.x(), position.y()}, ButtonsOf(held),
                   [this](Point p) { return grid_->cellAt(QPoint(p.x, p.y)); });
    Sync(false);
}

// ---- keys and closing ----

// A digit typed on the grid or the palette chooses its block as a click on
// its palette button would.
void frmDev::ChooseTypedCode(int code) {
    Run([&] { editor_.ChooseBlock(code); });
    PaletteButton* button = palette_[static_cast<std::size_t>(code)];
    button->setChecked(true);
    button->setFocus(Qt::OtherFocusReason);
}

void frmDev::BackgroundPressed(Qt::MouseButton button, QPoint globalPosition) {
    const auto b = ButtonOf(button);
    if (!b) return;
    bool popUp = false;
    Run([&] { popUp = editor_.PressBackground(*b); });
    if (popUp) mnuTrickey_->popup(globalPosition);
}

bool frmDev::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyRelease) {
        auto* key = static_cast<QKeyEvent*>(event);
        // One key-up per key, however long it was held.
        if (!key->isAutoRepeat()) {
            const Key released = KeyOf(*key);
            if (watched == txtTitle_) {
                Run([&] { editor_.CheckTitle(released); });
            } else if (watched == txtBallx_) {
                const std::string text = ToBytes(txtBallx_->text());
                Run([&] { editor_.SetBallStart(Axis::Across, text, released); });
            } else if (watched == txtBally_) {
                const std::string text = ToBytes(txtBally_->text());
                Run([&] { editor_.SetBallStart(Axis::Down, text, released); });
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmDev::closeEvent(QCloseEvent* event) {
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
