// The handlers speak Windows virtual-key codes; Qt speaks Qt::Key.
#pragma once

#include <Qt>

class QKeyEvent;

namespace shd::gui {

// The virtual-key code of a Qt key, 0 for keys without one.
int VirtualKey(int qtKey, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
int VirtualKey(const QKeyEvent& event);

}  // namespace shd::gui
