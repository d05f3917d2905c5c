// Qt's keys as the editor knows them.
#pragma once

#include <Qt>

#include "editor/Keys.h"

class QKeyEvent;

namespace shd::gui {

// The editor's key for a Qt key; Key::Other for every key its rules do not tell apart.
Key KeyOf(int qtKey);
Key KeyOf(const QKeyEvent& event);

// The palette code a typed hexadecimal digit stands for (0-9, A-F, keypad
// digits too), or -1. Keys held with Ctrl, Alt or Meta are shortcuts, not digits.
int PaletteCodeOfKey(const QKeyEvent& event);

}  // namespace shd::gui
