#include "gui/Actions.h"

#include <QAction>
#include <QActionGroup>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include "editor/Editor.h"
#include "gui/MainWindow.h"
#include "gui/SendToCalculator.h"

namespace shd::gui {

namespace {
using Kind = ActionRow::Kind;
using Via = ActionRow::Via;

// Cells and levels travel through the clipboard as plain text, so two
// running editors can exchange them.
void ToClipboard(const std::string& text) {
    if (!text.empty()) QGuiApplication::clipboard()->setText(QString::fromLatin1(text));
}
std::string FromClipboard() { return QGuiApplication::clipboard()->text().toLatin1().toStdString(); }

ActionRow Menu(const char* in, const char* id, const char* caption) {
    ActionRow row;
    row.kind = Kind::Menu, row.menu = in, row.id = id, row.caption = caption;
    return row;
}

ActionRow Separator(const char* in) {
    ActionRow row;
    row.kind = Kind::Separator, row.menu = in;
    return row;
}

ActionRow Do(const char* in, const char* id, const char* caption, std::function<void(Editor&)> call,
             QList<QKeySequence> keys = {}) {
    ActionRow row;
    row.menu = in, row.id = id, row.caption = caption, row.keys = std::move(keys);
    row.run = [call = std::move(call)](MainWindow& window) { call(window.editor()); };
    return row;
}

// A row the window runs itself, with what only it knows.
ActionRow DoInWindow(const char* in, const char* id, const char* caption, std::function<void(MainWindow&)> run,
                     QList<QKeySequence> keys = {}) {
    ActionRow row;
    row.menu = in, row.id = id, row.caption = caption, row.keys = std::move(keys), row.run = std::move(run);
    return row;
}

ActionRow FocusingPalette(ActionRow row) {
    row.via = Via::EditorFocusingPalette;
    return row;
}

ActionRow Checked(ActionRow row, ActionRow::Test checked) {
    row.checked = std::move(checked);
    return row;
}

ActionRow Enabled(ActionRow row, ActionRow::Test enabled) {
    row.enabled = std::move(enabled);
    return row;
}

ActionRow Visible(ActionRow row, ActionRow::Test visible) {
    row.visible = std::move(visible);
    return row;
}

ActionRow Mark(const char* in, const char* id, const char* caption, shd::Toggle which, bool MenuMarks::*mark) {
    return Checked(Do(in, id, caption, [which](Editor& e) { e.Toggle(which); }),
                   [mark](const Editor& e) { return e.ui().marks.*mark; });
}

ActionRow ToolRow(const char* id, const char* caption, Tool tool, const char* tip) {
    ActionRow row = Checked(Do("toolMenu", id, caption, [tool](Editor& e) { e.ChooseTool(tool); }),
                            [tool](const Editor& e) { return e.ui().tool == tool; });
    row.toolTip = tip;
    row.exclusive = true;
    return row;
}

bool HasSelection(const Editor& e) { return !e.ui().selection.empty(); }

QKeySequence Keys(QKeyCombination combination) { return QKeySequence(combination); }

std::vector<ActionRow> MakeTable() {
    using QK = QKeySequence;
    return {
        Menu("", "fileMenu", "&File"),
        Menu("fileMenu", "newMenu", "&New"),
        // A new set puts the focus on palette button 0.
        FocusingPalette(Do("newMenu", "newShardles", "&Shardles File", [](Editor& e) { e.NewSet(GameKind::Shardles); })),
        FocusingPalette(Do("newMenu", "newTiltbash", "&Tiltbash File", [](Editor& e) { e.NewSet(GameKind::Tiltbash); })),
        // Ctrl+N asks which game, as the menu does: it opens the New menu.
        [] {
            ActionRow row = DoInWindow(nullptr, "newSet", "", [](MainWindow& w) {
                w.actions().menu("newMenu")->popup(w.mapToGlobal(QPoint(0, 0)));
            }, QK::keyBindings(QK::New));
            row.via = Via::Window;
            return row;
        }(),
        Menu("fileMenu", "openMenu", "&Open"),
        Do("openMenu", "openMyFile", "&My File", [](Editor& e) { e.OpenLevelFile(FormatId::MyFile); },
           QK::keyBindings(QK::Open)),
        Do("openMenu", "openOldMyFile", "&Old My File", [](Editor& e) { e.OpenLevelFile(FormatId::OldMyFile); }),
        Do("openMenu", "openList", "&TI-83 List", [](Editor& e) { e.OpenLevelFile(FormatId::List); }),
        Do("openMenu", "openProgram", "&Compiled Code", [](Editor& e) { e.OpenProgram(); }),
        Do("openMenu", "openSource", "&Source Code", [](Editor& e) { e.OpenSource(); }),
        // Filled with the recent files each time it opens.
        Menu("fileMenu", "recentMenu", "Open &Recent"),
        Separator("fileMenu"),
        Do("fileMenu", "save", "Sa&ve", [](Editor& e) { e.Save(); }, QK::keyBindings(QK::Save)),
        Do("fileMenu", "saveAs", "Save &As...", [](Editor& e) { e.SaveAs(); }, {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_S)}),
        Menu("fileMenu", "saveMenu", "&Save"),
        Do("saveMenu", "saveMyFile", "&My File", [](Editor& e) { e.SaveLevelFile(FormatId::MyFile); }),
        Do("saveMenu", "saveList", "&TI-83 List", [](Editor& e) { e.SaveLevelFile(FormatId::List); }),
        Do("saveMenu", "saveProgram", "&Compiled Code", [](Editor& e) { e.SaveProgram(); }),
        Do("saveMenu", "saveSource", "&Source Code", [](Editor& e) { e.SaveSource(); }),
        Enabled(Do("fileMenu", "exportAgain", "Export A&gain", [](Editor& e) { e.ExportAgain(); },
                   {Keys(Qt::CTRL | Qt::Key_E)}),
                [](const Editor& e) { return e.CanExportAgain(); }),
        DoInWindow("fileMenu", "exportPicture", "Export &Picture...", [](MainWindow& w) { w.ExportPicture(); }),
        DoInWindow("fileMenu", "sendToCalculator", "Send to &Calculator...", [](MainWindow& w) {
            QtCalculatorLink link(&w);
            w.editor().SendToCalculator(link);
        }),
        Separator("fileMenu"),
        // Closing asks what closing asks.
        [] {
            ActionRow row = DoInWindow("fileMenu", "exit", "E&xit", [](MainWindow& w) { w.close(); },
                                       {Keys(Qt::CTRL | Qt::Key_Q)});
            row.via = Via::Window;
            return row;
        }(),

        // Alt+E belongs to "&Extra Life Point Number:", Alt+D to "Ball starts &down:".
        Menu("", "editMenu", "Ed&it"),
        // Undo and redo go through the history; each is enabled while it has a step to take.
        Enabled(Do("editMenu", "undo", "&Undo", [](Editor& e) { e.Undo(); }, QK::keyBindings(QK::Undo)),
                [](const Editor& e) { return e.CanUndo(); }),
        // Ctrl+Y as well as the platform's own: Linux key schemes have only Ctrl+Shift+Z.
        Enabled(Do("editMenu", "redo", "&Redo", [](Editor& e) { e.Redo(); },
                   {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), Keys(Qt::CTRL | Qt::Key_Y)}),
                [](const Editor& e) { return e.CanRedo(); }),
        Separator("editMenu"),
        // Cut and Copy are there while cells are selected.
        Enabled(Do("editMenu", "cut", "Cu&t", [](Editor& e) { ToClipboard(e.CutSelection()); },
                   QK::keyBindings(QK::Cut)),
                HasSelection),
        Enabled(Do("editMenu", "copy", "&Copy", [](Editor& e) { ToClipboard(e.CopySelection()); },
                   QK::keyBindings(QK::Copy)),
                HasSelection),
        Do("editMenu", "paste", "&Paste", [](Editor& e) { e.PasteCells(FromClipboard()); }, QK::keyBindings(QK::Paste)),
        Do("editMenu", "selectNone", "Select &None", [](Editor& e) { e.ClearSelection(); },
           {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_A)}),
        // The tools, in a submenu and on the tool bar.
        Menu("editMenu", "toolMenu", "T&ool"),
        ToolRow("pencil", "&Pencil", Tool::Pencil, "Paint cells one by one, or drag a stroke"),
        ToolRow("rectangle", "&Rectangle", Tool::Rectangle, "Drag to fill a rectangle with the chosen block"),
        ToolRow("fill", "&Fill", Tool::Fill, "Fill the connected cells of one block"),
        ToolRow("select", "&Select", Tool::Select, "Drag to select cells for Cut, Copy and Paste"),
        Separator("editMenu"),
        Do("editMenu", "flipLeftRight", "Flip &Left to Right", [](Editor& e) { e.FlipLeftRight(); }),
        Do("editMenu", "flipTopBottom", "Flip Top to &Bottom", [](Editor& e) { e.FlipTopBottom(); }),
        Menu("editMenu", "shiftMenu", "S&hift Cells"),
        Do("shiftMenu", "shiftLeft", "&Left", [](Editor& e) { e.ShiftCells(-1, 0); }),
        Do("shiftMenu", "shiftRight", "&Right", [](Editor& e) { e.ShiftCells(1, 0); }),
        Do("shiftMenu", "shiftUp", "&Up", [](Editor& e) { e.ShiftCells(0, -1); }),
        Do("shiftMenu", "shiftDown", "&Down", [](Editor& e) { e.ShiftCells(0, 1); }),

        Menu("", "levelsMenu", "Level&s"),
        Do("levelsMenu", "duplicateLevel", "&Duplicate Level", [](Editor& e) { e.DuplicateLevel(); },
           {Keys(Qt::CTRL | Qt::Key_D)}),
        Do("levelsMenu", "moveLevelUp", "Move Level &Up", [](Editor& e) { e.MoveLevelUp(); },
           {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_Up)}),
        Do("levelsMenu", "moveLevelDown", "Move Level Do&wn", [](Editor& e) { e.MoveLevelDown(); },
           {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_Down)}),
        Separator("levelsMenu"),
        Do("levelsMenu", "copyLevel", "&Copy Level", [](Editor& e) { ToClipboard(e.CopyLevel()); },
           {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_C)}),
        Do("levelsMenu", "pasteLevel", "&Paste Level", [](Editor& e) { e.PasteLevel(FromClipboard()); },
           {Keys(Qt::CTRL | Qt::SHIFT | Qt::Key_V)}),

        // Zooming needs the room the grid has now, which only the window knows.
        Menu("", "viewMenu", "&View"),
        DoInWindow("viewMenu", "zoomIn", "Zoom &In", [](MainWindow& w) { w.editor().ZoomIn(w.fitZoom()); },
                   {Keys(Qt::CTRL | Qt::Key_Plus), Keys(Qt::CTRL | Qt::Key_Equal)}),
        DoInWindow("viewMenu", "zoomOut", "Zoom &Out", [](MainWindow& w) { w.editor().ZoomOut(w.fitZoom()); },
                   {Keys(Qt::CTRL | Qt::Key_Minus)}),
        Do("viewMenu", "zoomToFit", "&Fit to Window", [](Editor& e) { e.ZoomToFit(); }, {Keys(Qt::CTRL | Qt::Key_0)}),
        Separator("viewMenu"),
        // "O&verview": Alt+O is Zoom Out's.
        [] {
            ActionRow row;
            row.menu = "viewMenu", row.id = "showOverview", row.caption = "O&verview", row.via = Via::Window;
            row.existing = [](MainWindow& w) { return w.overviewAction(); };
            return row;
        }(),

        Visible(Menu("", "createMenu", "&Create"), [](const Editor& e) { return e.ui().createMenuVisible; }),
        Do("createMenu", "editNormalPiece", "&Normal Shardle", [](Editor& e) { e.EditPiece(PictureKind::Normal); }),
        Do("createMenu", "editChangerPiece", "&Changer Shardle", [](Editor& e) { e.EditPiece(PictureKind::Change); }),

        // Also the window's context menu.
        Menu("", "trickyMenu", "&Tricky"),
        Visible(Menu("trickyMenu", "unusedMenu", "&Unused Shardles"),
                [](const Editor& e) { return e.ui().unusedMenuVisible; }),
        Mark("unusedMenu", "unusedSpotted", "&Spotted", Toggle::Spotted, &MenuMarks::Spotted),
        Mark("unusedMenu", "unusedCenterLine", "Center-&line", Toggle::CenterLine, &MenuMarks::CenterLine),
        Mark("unusedMenu", "unusedZigZag", "&Zig-Zag", Toggle::ZigZag, &MenuMarks::ZigZag),
        Mark("unusedMenu", "unusedCustom", "&Custom", Toggle::Custom, &MenuMarks::Custom),
        Visible(Menu("trickyMenu", "optionsMenu", "&Shardles Options"),
                [](const Editor& e) { return e.ui().optionsMenuVisible; }),
        Mark("optionsMenu", "useCustomShardles", "Use &Custom Shardles", Toggle::CustomShardles,
             &MenuMarks::CustomShardles),
        Mark("optionsMenu", "useWrapAround", "&Use Wrap Around", Toggle::WrapAround, &MenuMarks::WrapAround),
        Mark("optionsMenu", "arrowsBreakable", "&Arrow Blocks Are Breakable", Toggle::ArrowBreakable,
             &MenuMarks::ArrowBreakable),
        Mark("optionsMenu", "matchLocks", "&Match # of Locks to # of Blocks", Toggle::MatchLocks,
             &MenuMarks::MatchLocks),
        Mark("optionsMenu", "useDebugger", "Use &Shardles Debugger", Toggle::Debugger, &MenuMarks::Debugger),
        Checked(Do("trickyMenu", "specialUnused", "&Special Unused Blocks", [](Editor& e) { e.AskSpecialCount(); }),
                [](const Editor& e) { return e.ui().marks.Special; }),
        Do("trickyMenu", "resetAll", "&Reset All", [](Editor& e) { e.ResetAll(); }),

        Menu("", "helpMenu", "&Help"),
        DoInWindow("helpMenu", "contents", "&Contents", [](MainWindow& w) { w.ShowGuide(); },
                   QK::keyBindings(QK::HelpContents)),
        Do("helpMenu", "about", "&About", [](Editor& e) { e.ShowAbout(); }),
    };
}
}  // namespace

const std::vector<ActionRow>& ActionTable() {
    static const std::vector<ActionRow> table = MakeTable();
    return table;
}

WindowActions::WindowActions(MainWindow& window, QMenuBar* bar, QToolBar* tools) {
    QActionGroup* group = nullptr;
    for (const ActionRow& row : ActionTable()) {
        QMenu* in = row.menu && *row.menu ? menu(row.menu) : nullptr;
        const QString caption = QString::fromLatin1(row.caption);
        if (row.kind == Kind::Separator) {
            in->addSeparator();
            continue;
        }
        if (row.kind == Kind::Menu) {
            auto* made = new QMenu(caption, in ? static_cast<QWidget*>(in) : bar);
            made->setObjectName(QString::fromLatin1(row.id));
            made->menuAction()->setObjectName(QString::fromLatin1(row.id));
            in ? in->addMenu(made) : bar->addMenu(made);
            menus_.emplace_back(row.id, made);
            made_.push_back({&row, made->menuAction()});
            continue;
        }
        QAction* action = row.existing ? row.existing(window) : new QAction(caption, &window);
        action->setText(caption);
        action->setObjectName(QString::fromLatin1(row.id));
        if (!row.keys.isEmpty()) action->setShortcuts(row.keys);
        if (!row.existing) action->setCheckable(static_cast<bool>(row.checked));
        if (row.exclusive) {
            if (!group) group = new QActionGroup(&window);
            group->addAction(action);
        }
        if (row.toolTip) {
            action->setToolTip(QString::fromLatin1(row.toolTip));
            tools->addAction(action);
        }
        if (in) in->addAction(action);
        else if (!row.menu) window.addAction(action);  // a shortcut of the window alone
        if (row.run) {
            QObject::connect(action, &QAction::triggered, &window, [&window, &row] {
                if (row.via == Via::Window) return row.run(window);
                window.Run([&] { row.run(window); }, row.via == Via::EditorFocusingPalette);
            });
        }
        made_.push_back({&row, action});
    }
}

QMenu* WindowActions::menu(const char* id) const {
    for (const auto& [name, made] : menus_)
        if (std::string_view(name) == id) return made;
    return nullptr;
}

void WindowActions::Show(const Editor& editor) {
    for (const Made& m : made_) {
        if (m.row->checked) m.action->setChecked(m.row->checked(editor));
        if (m.row->enabled) m.action->setEnabled(m.row->enabled(editor));
        if (m.row->visible) m.action->setVisible(m.row->visible(editor));
    }
}

}  // namespace shd::gui
