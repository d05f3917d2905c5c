#include "gui/KeyCodes.h"

#include <QKeyEvent>

namespace shd::gui {

int VirtualKey(int key, Qt::KeyboardModifiers modifiers) {
    // Letters and the digit row share their codes with ASCII.
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return key;
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return modifiers.testFlag(Qt::KeypadModifier) ? 0x60 + (key - Qt::Key_0) : key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 0x70 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: case Qt::Key_Backtab: return 9;
    case Qt::Key_Clear: return 12;
    case Qt::Key_Return: case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Print: return 44;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Meta: return 91;
    case Qt::Key_Menu: return 93;
    case Qt::Key_NumLock: return 144;
    case Qt::Key_ScrollLock: return 145;
    // Punctuation as on a US keyboard; the handlers only need "not an editing key".
    case Qt::Key_Asterisk: return modifiers.testFlag(Qt::KeypadModifier) ? 106 : 56;
    case Qt::Key_Plus: return modifiers.testFlag(Qt::KeypadModifier) ? 107 : 187;
    case Qt::Key_Minus: return modifiers.testFlag(Qt::KeypadModifier) ? 109 : 189;
    case Qt::Key_Period: return modifiers.testFlag(Qt::KeypadModifier) ? 110 : 190;
    case Qt::Key_Slash: return modifiers.testFlag(Qt::KeypadModifier) ? 111 : 191;
    case Qt::Key_Semicolon: case Qt::Key_Colon: return 186;
    case Qt::Key_Equal: return 187;
    case Qt::Key_Comma: case Qt::Key_Less: return 188;
    case Qt::Key_Underscore: return 189;
    case Qt::Key_Greater: return 190;
    case Qt::Key_Question: return 191;
    case Qt::Key_QuoteLeft: case Qt::Key_AsciiTilde: return 192;
    case Qt::Key_BracketLeft: case Qt::Key_BraceLeft: return 219;
    case Qt::Key_Backslash: case Qt::Key_Bar: return 220;
    case Qt::Key_BracketRight: case Qt::Key_BraceRight: return 221;
    case Qt::Key_Apostrophe: case Qt::Key_QuoteDbl: return 222;
    default: return 0;
    }
}

int VirtualKey(const QKeyEvent& event) {
    return VirtualKey(event.key(), event.modifiers());
}

int PaletteCodeOfKey(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return -1;
    const int key = event.key();
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return key - Qt::Key_0;
    if (key >= Qt::Key_A && key <= Qt::Key_F) return 10 + (key - Qt::Key_A);
    return -1;
}

}  // namespace shd::gui
