// Positions are kept in twips (1/1440 inch); the window turns them into
// pixels with the screen's logical DPI.
#pragma once

#include <QRect>
#include <QSize>

class QScreen;

namespace shd::gui {

struct TwipRect {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const TwipRect&) const = default;
};

struct ScreenMetrics {
    double dpiX = 96;
    double dpiY = 96;
    QSize pixels{1600, 1000};  // the whole screen

    static ScreenMetrics Of(const QScreen* screen);  // the primary screen when null

    int X(int twips) const;
    int Y(int twips) const;
    // Edges are converted, not sizes, so cells laid side by side stay seamless.
    QRect Rect(const TwipRect& r) const;
    QRect Rect(int left, int top, int width, int height) const { return Rect(TwipRect{left, top, width, height}); }
};

}  // namespace shd::gui
