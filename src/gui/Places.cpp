#include "gui/Places.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace shd::gui {

namespace {
const QString kFolderName = QStringLiteral("shardles-editor");
bool HoldsData(const QString& folder) { return QFileInfo::exists(QDir(folder).filePath(QStringLiteral("shdblock1.gif"))); }
}  // namespace

Places FindPlaces(const QString& programFolder) {
    // Beside the program first, so a build folder works as it is.
    if (HoldsData(programFolder)) return {programFolder, SettingsPath(programFolder), programFolder};
    // The prefix the program is installed in, wherever it was moved with it.
    QString data = QDir::cleanPath(QDir(programFolder).filePath(QStringLiteral(SHD_DATA_FROM_BIN)));
    if (!HoldsData(data)) {
        const QString found = QStandardPaths::locate(QStandardPaths::GenericDataLocation, kFolderName,
                                                     QStandardPaths::LocateDirectory);
        if (!found.isEmpty()) data = found;
    }
    // An installed program keeps its settings with the user even where it
    // could write beside itself, as root can in /usr/bin.
    return {data, SettingsPath(QString()), QDir::homePath()};
}

QString SettingsPath(const QString& programFolder) {
    const QFileInfo folder(programFolder);
    if (folder.isDir() && folder.isWritable()) return QDir(programFolder).filePath(QStringLiteral("info.ini"));
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    return QDir(config).filePath(QStringLiteral("info.ini"));
}

QString RecentFilesPath() {
    const QString config = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(config);
    return QDir(config).filePath(QStringLiteral("recent.txt"));
}

QString RecoveryFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation))
        .filePath(QStringLiteral("recovery"));
}

}  // namespace shd::gui
