#include "gui/StatusLine.h"

#include <QLabel>
#include <QStatusBar>

#include "gui/Text.h"

namespace shd::gui {

StatusLine::StatusLine(QStatusBar* bar) {
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
    line_ = label("statusLine");
    bar->addWidget(line_, 1);
    cell_ = label("statusCell");
    bar->addPermanentWidget(cell_);
    zoom_ = label("statusZoom");
    bar->addPermanentWidget(zoom_);
    level_ = label("statusLevel");
    bar->addPermanentWidget(level_);
    blocks_ = label("statusBlocks");
    bar->addPermanentWidget(blocks_);
}

void StatusLine::Show(const Editor& editor) {
    const LevelSet& set = editor.set();
    level_->setText(
        QStringLiteral("Level %1 of %2").arg(static_cast<int>(set.CurrentLevel)).arg(static_cast<int>(set.LevelCount())));
    blocks_->setText(QStringLiteral("Blocks: %1").arg(editor.LiveBlockCount()));
    // The line names a file, so it crosses as a path does.
    line_->setText(PathText(editor.ui().status));
}

void StatusLine::ShowCell(const Editor& editor, int index) { cell_->setText(ToQt(CellText(editor.set(), index))); }

void StatusLine::ShowZoom(const QString& zoom) { zoom_->setText(zoom); }

}  // namespace shd::gui
