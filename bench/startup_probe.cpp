// The editor's own start-up, ended as soon as its window is on screen.
#include "QuitWhenShown.h"
#include "gui/Startup.h"
#include "gui/MainWindow.h"

int main(int argc, char* argv[]) {
    return shd::gui::RunEditor(argc, argv, [](shd::gui::MainWindow& window) { new bench::QuitWhenShown(window); });
}
