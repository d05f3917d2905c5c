#include "gui/Twips.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>

namespace shd::gui {

ScreenMetrics ScreenMetrics::Of(const QScreen* screen) {
    if (!screen) screen = QGuiApplication::primaryScreen();
    ScreenMetrics metrics;
    if (!screen) return metrics;
    metrics.dpiX = screen->logicalDotsPerInchX();
    metrics.dpiY = screen->logicalDotsPerInchY();
    metrics.pixels = screen->geometry().size();
    return metrics;
}

int ScreenMetrics::X(int twips) const { return static_cast<int>(std::lround(twips * dpiX / 1440.0)); }
int ScreenMetrics::Y(int twips) const { return static_cast<int>(std::lround(twips * dpiY / 1440.0)); }

QRect ScreenMetrics::Rect(const TwipRect& r) const {
    const int left = X(r.left), top = Y(r.top);
    return QRect(left, top, X(r.left + r.width) - left, Y(r.top + r.height) - top);
}

}  // namespace shd::gui
