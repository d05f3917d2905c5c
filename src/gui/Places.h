// Where the editor finds what it ships with (block pictures, user guide) and
// keeps its settings. Run from its build folder, everything is beside the
// program; installed, the data is in the prefix's share folder and the
// settings in the user's configuration folder.
#pragma once

#include <QString>

namespace shd::gui {

struct Places {
    QString data;         // the block pictures and the user guide
    QString settings;     // "info.ini"
    QString startFolder;  // where the file dialogs first open
};

Places FindPlaces(const QString& programFolder);

// Where "info.ini" lives: beside the program, or in the user's configuration
// folder when the program's folder cannot be written.
QString SettingsPath(const QString& programFolder);
// The list of recent files, always in the user's configuration folder.
QString RecentFilesPath();
// The recovery copies of sets with unsaved changes, in the user's data folder.
QString RecoveryFolder();

}  // namespace shd::gui
