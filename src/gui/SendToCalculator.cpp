#include "gui/SendToCalculator.h"

#include <QApplication>
#include <QProgressDialog>

namespace shd::gui {

std::vector<std::string> QtCalculatorLink::FindCables() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    cables_ = link::FindCables();
    QApplication::restoreOverrideCursor();
    std::vector<std::string> names;
    for (const link::Cable& cable : cables_) names.push_back(link::CableName(cable));
    return names;
}

std::string QtCalculatorLink::Send(std::size_t index, const std::string& programFile) {
    QProgressDialog progress(QStringLiteral("Sending to the calculator..."), QStringLiteral("Cancel"), 0, 100, parent_);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(0);
    progress.setValue(0);
    // The transfer runs on this thread; each step of it lets the window breathe.
    return link::SendProgramFile(cables_.at(index), programFile, [&progress](int done, int total) {
        progress.setMaximum(std::max(total, 1));
        progress.setValue(done);
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    });
}

}  // namespace shd::gui
