#include "gui/Startup.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>
#include <QSocketNotifier>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#if QT_CONFIG(sessionmanager)
#include <QSessionManager>
#endif

#include "gui/BlockPictures.h"
#include "gui/EditorStyle.h"
#include "editor/Recovery.h"
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

// A signal that ends the editor is only noted here, where almost nothing is
// safe to do; the event loop then writes the recovery copy and ends the
// process by the same signal. A save under way finishes first, so none is
// left unfinished.
int endingPipe[2] = {-1, -1};
constexpr int kEndingSignals[] = {SIGTERM, SIGHUP, SIGINT};

void NoteEnding(int signal) {
    const unsigned char which = static_cast<unsigned char>(signal);
    [[maybe_unused]] const auto written = ::write(endingPipe[1], &which, 1);
}

void WriteCopyOnEndingSignals(MainWindow& window) {
    if (::pipe2(endingPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;  // the unfinished-save handlers stay
    for (const int signal : kEndingSignals) {
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) != 0 || now.sa_handler == SIG_IGN) continue;
        struct sigaction noted {};
        noted.sa_handler = NoteEnding;
        sigemptyset(&noted.sa_mask);
        noted.sa_flags = SA_RESTART;
        ::sigaction(signal, &noted, nullptr);
    }
    auto* notifier = new QSocketNotifier(endingPipe[0], QSocketNotifier::Read, &window);
    QObject::connect(notifier, &QSocketNotifier::activated, &window, [&window] {
        unsigned char which = 0;
        if (::read(endingPipe[0], &which, 1) != 1) return;
        window.KeepRecoveryCopy(true);
        std::signal(which, SIG_DFL);
        ::raise(which);
    });
}
}  // namespace

int RunEditor(int& argc, char** argv, const std::function<void(MainWindow&)>& started, Prompts* prompts) {
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
    RecoveryStore recovery(PathBytes(RecoveryFolder()));
    MainWindow window(prompts);
    window.editor().UseRecovery(&recovery);
    WriteCopyOnEndingSignals(window);
#if QT_CONFIG(sessionmanager)
    // The desktop session is ending: whatever happens next, the work is on the disk.
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &window,
                     [&window](QSessionManager&) { window.KeepRecoveryCopy(true); });
#endif
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
