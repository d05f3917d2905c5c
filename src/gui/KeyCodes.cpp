#include "gui/KeyCodes.h"

#include <QKeyEvent>

namespace shd::gui {

Key KeyOf(int qtKey) {
    switch (qtKey) {
    case Qt::Key_Backspace: return Key::Backspace;
    case Qt::Key_Escape: return Key::Escape;
    case Qt::Key_End: return Key::End;
    case Qt::Key_Home: return Key::Home;
    case Qt::Key_Left: return Key::Left;
    case Qt::Key_Right: return Key::Right;
    case Qt::Key_Delete: return Key::Delete;
    default: return Key::Other;
    }
}

Key KeyOf(const QKeyEvent& event) { return KeyOf(event.key()); }

int PaletteCodeOfKey(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return -1;
    const int key = event.key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return key - Qt::Key_0;
    if (key >= Qt::Key_A && key <= Qt::Key_F) return 10 + (key - Qt::Key_A);
    return -1;
}

std::optional<MouseButton> MouseButtonOf(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton: return MouseButton::Left;
    case Qt::RightButton: return MouseButton::Right;
    case Qt::MiddleButton: return MouseButton::Middle;
    default: return std::nullopt;
    }
}

int HeldButtons(Qt::MouseButtons held) {
    int bits = 0;
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        if (held.testFlag(button)) bits |= static_cast<int>(*MouseButtonOf(button));
    return bits;
}

}  // namespace shd::gui
