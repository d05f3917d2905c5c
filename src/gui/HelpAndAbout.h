// Help → Contents and what `shardles-editor --help` prints.
#pragma once

class QString;
class QWidget;

namespace shd::gui {

// Shows the user guide at `path` (Markdown) in a window of its own, one for
// the whole program, raised when it is already open.
void ShowUserGuide(QWidget* parent, const QString& path);

// Handles --help and --version before any window or display is needed:
// true, with `status` set, when the program should end there.
bool AnswerInfoOption(int argc, char** argv, int& status);

}  // namespace shd::gui
