// The editor from process start to its end: the application object, the one
// main window over the whole screen, a new Shardles set, then the user's
// events until the window is gone.
#pragma once

#include <functional>

namespace shd {
class Prompts;
}

namespace shd::gui {

class MainWindow;

// `started`, when given, runs once the window is shown and started, before
// the first event is handled. The start-up benchmark uses it to leave as soon
// as the window is on screen; the editor itself passes nothing. `prompts`,
// when given, answer every question instead of real dialogs, from the very
// first (the recovery copies' offer), as a test of the whole program needs.
int RunEditor(int& argc, char** argv, const std::function<void(MainWindow&)>& started = {},
              Prompts* prompts = nullptr);

}  // namespace shd::gui
