// The status bar: how the last read or write ended on the left; the cell
// under the pointer, the zoom, the level and its block count on the right.
#pragma once

#include <QString>

#include "editor/Editor.h"

class QLabel;
class QStatusBar;

namespace shd::gui {

class StatusLine {
public:
    explicit StatusLine(QStatusBar* bar);

    void Show(const Editor& editor);
    void ShowCell(const Editor& editor, int index);  // -1: the pointer is off the grid
    void ShowZoom(const QString& zoom);

private:
    QLabel* line_;
    QLabel* cell_;
    QLabel* zoom_;
    QLabel* level_;
    QLabel* blocks_;
};

}  // namespace shd::gui
