#include "gui/Startup.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <cstdio>

#include "gui/BlockPictures.h"
#include "gui/EditorStyle.h"
#include "files/FileIo.h"
#include "model/Quoted.h"
#include "gui/HelpAndAbout.h"
#include "gui/Places.h"
#include "gui/Text.h"
#include "gui/MainWindow.h"

namespace shd::gui {

namespace {
int UsageError(const QString& reason) {
    std::fprintf(stderr, "shardles-editor: %s\nTry 'shardles-editor --help'.\n", reason.toLocal8Bit().constData());
    return 2;
}

// The icon the desktop shows too, at every size it is drawn at.
QIcon EditorIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(QPixmap::fromImage(ReadImage(QStringLiteral(":/icons/%1x%1/shardles-editor.png").arg(size), "png")));
    return icon;
}
}  // namespace

int RunEditor(int& argc, char** argv, const std::function<void(MainWindow&)>& started) {
    // Answered before there is an application, which would need a display.
    if (int status = 0; AnswerInfoOption(argc, argv, status)) return status;
    QApplication app(argc, argv);
    RemoveUnfinishedSavesOnSignals();
    QCoreApplication::setApplicationName(QStringLiteral("shardles-editor"));
    QApplication::setStyle(new EditorStyle(QApplication::style()));
    QApplication::setWindowIcon(EditorIcon());

    // What is left once Qt has taken its own options.
    QStringList files = QCoreApplication::arguments().mid(1);
    if (!files.isEmpty() && files.front() == QStringLiteral("--")) files.removeFirst();
    else if (!files.isEmpty() && files.front().startsWith(QLatin1Char('-')))
        return UsageError(QStringLiteral("unknown option ") + QString::fromStdString(ShownName(files.front().toStdString())));
    if (files.size() > 1) return UsageError(QStringLiteral("give at most one FILE"));

    const Places places = FindPlaces(QCoreApplication::applicationDirPath());
    MainWindow window;
    window.showMaximized();
    // Without a window manager "maximized" is only a wish; take the screen outright.
    if (const QScreen* screen = window.screen()) window.setGeometry(screen->availableGeometry());
    window.Start(places.settings, places.startFolder, places.data, RecentFilesPath());
    // The file named on the command line opens, as if chosen in Open.
    if (!files.isEmpty()) window.OpenPath(files.front());
    if (started) started(window);
    return app.exec();
}

}  // namespace shd::gui
