// The custom piece dialog: sixty cells to click, and OK, Default, Reset, Cancel.
#pragma once

#include <QDialog>
#include <array>

#include "gui/Twips.h"
#include "rules/CustomPiece.h"

class QPushButton;

namespace shd::gui {

class ClickLabel;

class frmCusShd : public QDialog {
    Q_OBJECT
public:
    frmCusShd(CustomPieceEdit& edit, const ScreenMetrics& metrics, QWidget* parent = nullptr);

    // Centres the dialog on the screen and shows it modally; true when closed with OK.
    bool LoadUp();

    ClickLabel* cell(int n) const { return cells_[static_cast<std::size_t>(n - 1)]; }

private:
    void Refresh();

    CustomPieceEdit& edit_;
    ScreenMetrics metrics_;
    std::array<ClickLabel*, kPictureCells> cells_{};
    QPushButton* cmdOK_;
    QPushButton* cmdDefault_;
    QPushButton* cmdReset_;
    QPushButton* cmdCancel_;
};

}  // namespace shd::gui
