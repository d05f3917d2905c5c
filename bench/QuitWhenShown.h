// Ends the event loop once a window is on screen: the platform has exposed it
// and the window has handled that exposure, which paints it for the first
// time. Both start-up probes stop this way, so they are timed alike.
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace bench {

class QuitWhenShown : public QObject {
public:
    explicit QuitWhenShown(QWidget& window) : QObject(&window) {
        QWindow* handle = window.windowHandle();
        if (!handle) {
            Leave(2);  // show() made no window
            return;
        }
        if (handle->isExposed()) Leave();
        else handle->installEventFilter(this);
        // A window that never comes up must not hold the benchmark forever.
        QTimer::singleShot(10000, this, [] { QCoreApplication::exit(3); });
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Expose && static_cast<QWindow*>(watched)->isExposed()) {
            watched->removeEventFilter(this);
            Leave();
        }
        return false;  // the window still handles the exposure: it paints before the loop ends
    }

private:
    // Queued, so it runs after the event being handled, the first paint
    // included, and also when the loop has not started yet.
    static void Leave(int code = 0) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [code] { QCoreApplication::exit(code); }, Qt::QueuedConnection);
    }
};

}  // namespace bench
