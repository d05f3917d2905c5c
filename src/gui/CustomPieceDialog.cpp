#include "gui/CustomPieceDialog.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "gui/Widgets.h"

namespace shd::gui {

CustomPieceDialog::CustomPieceDialog(CustomPieceEdit& edit, QWidget* parent) : QDialog(parent), edit_(edit) {
    setObjectName(QStringLiteral("customPieceDialog"));
    setWindowTitle(QStringLiteral("Create a Shardle"));
    QPalette grey = palette();
    grey.setColor(QPalette::Window, QColor(192, 192, 192));
    setPalette(grey);
    setAutoFillBackground(true);

    // Ten columns in the piece's own order, six rows, well apart so a click finds its cell.
    auto* cells = new QGridLayout;
    cells->setHorizontalSpacing(7);
    cells->setVerticalSpacing(7);
    for (int n = 1; n <= kPictureCells; ++n) {
        auto* label = new ClickLabel(this);
        label->setObjectName(QStringLiteral("pieceCell%1").arg(n));
        label->setAlignment(Qt::AlignCenter);
        label->setTextFormat(Qt::PlainText);
        cells->addWidget(label, (n - 1) / 10, CustomPieceEdit::DisplayedPosition(n));
        connect(label, &ClickLabel::clicked, this, [this, n] {
            edit_.Click(n);
            Refresh();
        });
        cells_[static_cast<std::size_t>(n - 1)] = label;
    }
    auto* centred = new QHBoxLayout;
    centred->addStretch();
    centred->addLayout(cells);
    centred->addStretch();

    auto makeButton = [this](const char* name, const char* caption) {
        auto* button = new QPushButton(QString::fromLatin1(caption), this);
        button->setObjectName(QString::fromLatin1(name));
        return button;
    };
    QPushButton* ok = makeButton("okButton", "OK");
    QPushButton* byDefault = makeButton("defaultButton", "Default");
    QPushButton* reset = makeButton("resetButton", "Reset");
    QPushButton* cancel = makeButton("cancelButton", "Cancel");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);  // Esc rejects as well
    connect(byDefault, &QPushButton::clicked, this, [this] {
        edit_.Default();
        Refresh();
    });
    connect(reset, &QPushButton::clicked, this, [this] {
        edit_.Reset();
        Refresh();
    });

    // One row below the cells, OK to Cancel from the left, each as wide as the widest caption needs.
    const std::array<QPushButton*, 4> buttons{ok, byDefault, reset, cancel};
    int buttonWidth = 0;
    for (QPushButton* button : buttons) buttonWidth = std::max(buttonWidth, button->sizeHint().width());
    auto* row = new QHBoxLayout;
    row->addStretch();
    for (QPushButton* button : buttons) {
        button->setMinimumWidth(buttonWidth);
        row->addWidget(button);
    }
    row->addStretch();

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(16, 16, 16, 16);
    outer->setSpacing(16);
    outer->addLayout(centred);
    outer->addLayout(row);
    // As big as its contents, as the older dialog was: nothing to gain by resizing it.
    outer->setSizeConstraint(QLayout::SetFixedSize);
    Refresh();
}

void CustomPieceDialog::Refresh() {
    for (int n = 1; n <= kPictureCells; ++n) cell(n)->setText(QString::fromStdString(edit_.caption(n)));
}

bool CustomPieceDialog::Edit() {
    adjustSize();
    if (const QScreen* shown = parentWidget() ? parentWidget()->screen() : screen()) {
        const QRect room = shown->geometry();
        move(room.x() + (room.width() - width()) / 2, room.y() + (room.height() - height()) / 2);
    }
    return exec() == QDialog::Accepted;
}

}  // namespace shd::gui
