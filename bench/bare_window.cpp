// The yardstick for the editor's start-up: a Qt program that shows an empty
// main window and ends as soon as it is on screen. With --full-screen the
// empty window takes the whole screen, as the editor's window does.
#include <QApplication>
#include <QMainWindow>
#include <QScreen>
#include <cstring>

#include "QuitWhenShown.h"

int main(int argc, char* argv[]) {
    const bool fullScreen = argc > 1 && std::strcmp(argv[1], "--full-screen") == 0;
    QApplication app(argc, argv);
    QMainWindow window;
    if (fullScreen) {
        window.showMaximized();
        if (const QScreen* screen = window.screen()) window.setGeometry(screen->availableGeometry());
    } else {
        window.show();
    }
    new bench::QuitWhenShown(window);
    return app.exec();
}
