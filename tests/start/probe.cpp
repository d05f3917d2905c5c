// The editor as it starts for a user, which says so once it reaches its
// event loop, and ends there: whatever its settings hold, it must get that far.
#include <QCoreApplication>
#include <QTimer>
#include <cstdio>

#include "gui/Startup.h"

int main(int argc, char* argv[]) {
    return shd::gui::RunEditor(argc, argv, [](auto&) {
        QTimer::singleShot(0, [] {
            std::puts("reached the event loop");
            std::fflush(stdout);
            QCoreApplication::exit(0);
        });
    });
}
