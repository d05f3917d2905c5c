// shardles-editor: the level editor's window.
#include <QApplication>
#include <QScreen>

#include "gui/frmDev.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("shardles-editor"));

    const QString folder = QCoreApplication::applicationDirPath();
    shd::gui::frmDev window;
    window.showMaximized();
    // Without a window manager "maximized" is only a wish; take the screen outright.
    if (const QScreen* screen = window.screen()) window.setGeometry(screen->availableGeometry());
    window.Start(shd::gui::SettingsPath(folder), folder);
    return app.exec();
}
