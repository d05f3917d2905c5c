#include "gui/Startup.h"

#include <QApplication>
#include <QScreen>

#include "gui/EditorStyle.h"
#include "files/FileIo.h"
#include "gui/frmDev.h"

namespace shd::gui {

int RunEditor(int& argc, char** argv, const std::function<void(frmDev&)>& started) {
    QApplication app(argc, argv);
    RemoveUnfinishedSavesOnSignals();
    QCoreApplication::setApplicationName(QStringLiteral("shardles-editor"));
    QApplication::setStyle(new EditorStyle(QApplication::style()));

    // The block pictures and "info.ini" live beside the program.
    const QString folder = QCoreApplication::applicationDirPath();
    frmDev window;
    window.showMaximized();
    // Without a window manager "maximized" is only a wish; take the screen outright.
    if (const QScreen* screen = window.screen()) window.setGeometry(screen->availableGeometry());
    window.Start(SettingsPath(folder), folder, RecentFilesPath());
    // The first file named on the command line opens, as if chosen in Open.
    if (const QStringList files = QCoreApplication::arguments().mid(1); !files.isEmpty()) window.OpenPath(files.first());
    if (started) started(window);
    return app.exec();
}

}  // namespace shd::gui
