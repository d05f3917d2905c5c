// The handlers speak Windows virtual-key codes; Qt speaks Qt::Key.
#pragma once

#include <Qt>

class QKeyEvent;

namespace shd::gui {

// The virtual-key code of a Qt key, 0 for keys without one.
int VirtualKey(int qtKey, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
int VirtualKey(const QKeyEvent& event);

// The palette code a typed hexadecimal digit stands for (0-9, A-F, keypad
// digits too), or -1. Keys held with Ctrl, Alt or Meta are shortcuts, not digits.
int PaletteCodeOfKey(const QKeyEvent& event);

}  // namespace shd::gui
