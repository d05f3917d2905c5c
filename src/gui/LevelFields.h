// The set's and the level's fields around the grid: the title, the level
// count with its Add and Lose buttons, the level list, and the Shardles
// settings (bonus clock, extra-life points, the ball's start). Every edit
// goes to the editor; a key released in the title or a ball box has the
// editor check what the box holds.
#pragma once

#include <QObject>

#include "editor/Editor.h"
#include "gui/Runner.h"

class QBoxLayout;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace shd::gui {

class LevelFields : public QObject {
    Q_OBJECT
public:
    LevelFields(QWidget* parent, Editor& editor, Runner run);

    // The title, the level count and the level list, in one row above the grid.
    QBoxLayout* setRow() const { return setRow_; }
    // The bonus clock and extra-life lists, left of the grid.
    QBoxLayout* settingsColumn() const { return settingsColumn_; }
    // The ball boxes, right of the grid.
    QBoxLayout* ballColumn() const { return ballColumn_; }

    // The texts the state holds, and the Shardles settings shown only for Shardles.
    void Show();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Editor& editor_;
    Runner run_;
    bool showing_ = false;  // the boxes' change signals are the window's own, not the user's

    QLabel* titleLabel_;
    QLineEdit* titleBox_;
    QLabel* levelCount_;
    QPushButton* addLevel_;
    QPushButton* removeLevel_;
    QLabel* levelListLabel_;
    QComboBox* levelList_;
    QLabel* bonusClockLabel_;
    QComboBox* bonusClock_;
    QLabel* extraLifeLabel_;
    QComboBox* extraLife_;
    QLabel* ballAcrossLabel_;
    QLineEdit* ballAcross_;
    QLabel* ballDownLabel_;
    QLineEdit* ballDown_;
    QBoxLayout* setRow_;
    QBoxLayout* settingsColumn_;
    QBoxLayout* ballColumn_;
};

}  // namespace shd::gui
