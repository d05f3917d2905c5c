// The window tests drive real widgets, so they need an application object;
// they run without a screen on Qt's offscreen platform.
#include <gtest/gtest.h>

#include <QApplication>

namespace {
QtMessageHandler previousHandler = nullptr;

// The offscreen platform says so each time a window asks for what it cannot do.
void QuietAboutThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (type == QtWarningMsg && message.startsWith(QLatin1String("This plugin does not support"))) return;
    if (previousHandler) previousHandler(type, context, message);
}
}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    previousHandler = qInstallMessageHandler(QuietAboutThePlatform);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
