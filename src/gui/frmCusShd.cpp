#include "gui/frmCusShd.h"

#include <QPushButton>
#include <algorithm>

#include "gui/Widgets.h"

namespace shd::gui {

namespace {
// Room around the cells, and below them for the buttons, in twips.
constexpr int kMargin = 240;
constexpr int kButtonGap = 120;
constexpr int kButtonHeight = 375;
}  // namespace

frmCusShd::frmCusShd(CustomPieceEdit& edit, const ScreenMetrics& metrics, QWidget* parent)
    : QDialog(parent), edit_(edit), metrics_(metrics) {
    setObjectName(QStringLiteral("frmCusShd"));
    setWindowTitle(QStringLiteral("Create a Shardle"));
    QPalette grey = palette();
    grey.setColor(QPalette::Window, QColor(192, 192, 192));
    setPalette(grey);
    setAutoFillBackground(true);

    int cellsRight = 0, cellsBottom = 0;
    for (int n = 1; n <= kPictureCells; ++n) {
        auto* label = new ClickLabel(this);
        label->setObjectName(QStringLiteral("lblCusShd%1").arg(n));
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
        const TwipRect place{CustomPieceEdit::LabelLeft(n), CustomPieceEdit::LabelTop(n), CustomPieceEdit::kLabelWidth,
                             CustomPieceEdit::kLabelHeight};
        label->setGeometry(metrics_.Rect(place));
        cellsRight = std::max(cellsRight, place.left + place.width);
        cellsBottom = std::max(cellsBottom, place.top + place.height);
        connect(label, &ClickLabel::clicked, this, [this, n] {
            edit_.Click(n);
            Refresh();
        });
        cells_[static_cast<std::size_t>(n - 1)] = label;
    }

    cmdOK_ = new QPushButton(QStringLiteral("OK"), this);
    cmdOK_->setObjectName(QStringLiteral("cmdOK"));
    cmdDefault_ = new QPushButton(QStringLiteral("Default"), this);
    cmdDefault_->setObjectName(QStringLiteral("cmdDefault"));
    cmdReset_ = new QPushButton(QStringLiteral("Reset"), this);
    cmdReset_->setObjectName(QStringLiteral("cmdReset"));
    cmdCancel_ = new QPushButton(QStringLiteral("Cancel"), this);
    cmdCancel_->setObjectName(QStringLiteral("cmdCancel"));
    cmdOK_->setDefault(true);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel_, &QPushButton::clicked, this, &QDialog::reject);  // Esc rejects as well
    connect(cmdDefault_, &QPushButton::clicked, this, [this] {
        edit_.Default();
        Refresh();
    });
    connect(cmdReset_, &QPushButton::clicked, this, [this] {
        edit_.Reset();
        Refresh();
    });

    // One row below the cells, OK to Cancel from the left, as wide as the widest caption needs.
    const std::array<QPushButton*, 4> buttons{cmdOK_, cmdDefault_, cmdReset_, cmdCancel_};
    int buttonWidth = metrics_.X(855);
    for (QPushButton* button : buttons) buttonWidth = std::max(buttonWidth, button->sizeHint().width());
    const int gap = metrics_.X(kButtonGap);
    const int rowWidth = 4 * buttonWidth + 3 * gap;
    // The cells stand where they must; the dialog is as wide on their right as on their left, or the row's width.
    const int width = std::max(metrics_.X(cellsRight + CustomPieceEdit::LabelLeft(8)), rowWidth + 2 * metrics_.X(kMargin));
    const int top = metrics_.Y(cellsBottom + kMargin);
    int left = (width - rowWidth) / 2;
    for (QPushButton* button : buttons) {
        button->setGeometry(left, top, buttonWidth, metrics_.Y(kButtonHeight));
        left += buttonWidth + gap;
    }
    setFixedSize(width, top + metrics_.Y(kButtonHeight + kMargin));
    Refresh();
}

void frmCusShd::Refresh() {
    for (int n = 1; n <= kPictureCells; ++n) cell(n)->setText(QString::fromStdString(edit_.caption(n)));
}

bool frmCusShd::LoadUp() {
    move((metrics_.pixels.width() - width()) / 2, (metrics_.pixels.height() - height()) / 2);
    return exec() == QDialog::Accepted;
}

}  // namespace shd::gui
