// Qt's keys and mouse buttons as the editor knows them.
#pragma once

#include <Qt>
#include <optional>

#include "editor/Editor.h"
#include "editor/Keys.h"

class QKeyEvent;

namespace shd::gui {

// The editor's key for a Qt key; Key::Other for every key its rules do not tell apart.
Key KeyOf(int qtKey);
Key KeyOf(const QKeyEvent& event);

// The palette code a typed hexadecimal digit stands for (0-9, A-F, keypad
// digits too), or -1. Keys held with Ctrl, Alt or Meta are shortcuts, not digits.
int PaletteCodeOfKey(const QKeyEvent& event);

// The editor's mouse button for a Qt one; none for the buttons it does not know.
std::optional<MouseButton> MouseButtonOf(Qt::MouseButton button);
// The buttons held, as MouseButton bits.
int HeldButtons(Qt::MouseButtons held);

}  // namespace shd::gui
