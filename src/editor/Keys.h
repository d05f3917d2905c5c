// The keys the editor's rules tell apart; the window maps its toolkit's keys
// to these, and every other key is Other.
#pragma once

namespace shd {

enum class Key { Other, Backspace, Escape, End, Home, Left, Right, Delete };

// The keys that move or delete in a text box: releasing one leaves the box's
// text unchecked, as the user may still be editing it.
constexpr bool IsEditingKey(Key key) {
    return key == Key::Backspace || key == Key::End || key == Key::Home || key == Key::Left || key == Key::Right ||
           key == Key::Delete;
}

}  // namespace shd
