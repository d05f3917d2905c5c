// The custom piece dialog: sixty cells to click, and OK, Default, Reset, Cancel.
#pragma once

#include <QDialog>
#include <array>

#include "rules/CustomPiece.h"

class QPushButton;

namespace shd::gui {

class ClickLabel;

class CustomPieceDialog : public QDialog {
    Q_OBJECT
public:
    explicit CustomPieceDialog(CustomPieceEdit& edit, QWidget* parent = nullptr);

    // Centres the dialog on its screen and shows it modally; true when closed with OK.
    bool Edit();

    ClickLabel* cell(int n) const { return cells_[static_cast<std::size_t>(n - 1)]; }

private:
    void Refresh();

    CustomPieceEdit& edit_;
    std::array<ClickLabel*, kPictureCells> cells_{};
};

}  // namespace shd::gui
