// The window tests drive real widgets, so they need an application object;
// they run without a screen on Qt's offscreen platform.
#include <gtest/gtest.h>

#include <QApplication>

namespace {
QtMessageHandler qtHandler = nullptr;

// The offscreen platform says so each time a window asks for what it cannot do.
void QuietAboutThePlatform(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!message.startsWith(QLatin1String("This plugin does not support"))) qtHandler(type, context, message);
}
}  // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    qtHandler = qInstallMessageHandler(QuietAboutThePlatform);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
