// Every menu and tool-bar action of the main window as one row of one table:
// its caption with its access key, its shortcuts, what it asks of the editor,
// and when it is checked, enabled or shown. The menu bar, the tool bar and
// the window's shortcuts are all built from this table, so adding a command
// is adding a row (and the editor's operation it calls).
#pragma once

#include <QKeySequence>
#include <QList>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QToolBar;

namespace shd {
class Editor;
}

namespace shd::gui {

class MainWindow;

struct ActionRow {
    enum class Kind { Menu, Action, Separator };
    using Test = std::function<bool(const Editor&)>;

    Kind kind = Kind::Action;
    // The id of the menu the row stands in: "" for the menu bar, nullptr for
    // an action that is only a shortcut of the window.
    const char* menu = "";
    const char* id = "";       // the object name the window and its tests find it by
    const char* caption = "";  // with "&" before its access key
    QList<QKeySequence> keys;
    std::function<void(MainWindow&)> run;
    // How the window runs it: through the editor (an open stroke ends first,
    // the window shows the state after), with the palette's focus put back
    // where the editor wants it, or left to the window alone.
    enum class Via { Editor, EditorFocusingPalette, Window } via = Via::Editor;
    Test checked;  // checkable when set
    Test enabled;  // always enabled when not set
    Test visible;  // always shown when not set
    const char* toolTip = nullptr;  // on the tool bar too, with this tip
    bool exclusive = false;         // one of the rows of its menu of which only one is checked
    // An action Qt already keeps (the dock's own), placed and captioned as a row.
    std::function<QAction*(MainWindow&)> existing;
};

// The window's menus and actions, in the order they are shown.
const std::vector<ActionRow>& ActionTable();

// The rows of the table made into Qt menus and actions on a window.
class WindowActions {
public:
    WindowActions(MainWindow& window, QMenuBar* bar, QToolBar* tools);

    // The check marks, enabled states and visibility the editor's state asks for.
    void Show(const Editor& editor);
    QMenu* menu(const char* id) const;

private:
    struct Made {
        const ActionRow* row;
        QAction* action;
    };
    std::vector<Made> made_;
    std::vector<std::pair<const char*, QMenu*>> menus_;
};

}  // namespace shd::gui
