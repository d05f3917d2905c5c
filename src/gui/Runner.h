// How a part of the main window has the editor do something.
#pragma once

#include <functional>

namespace shd::gui {

// An open stroke ends first, `call` runs, then the window shows the state it
// left, putting the focus on the palette button the editor names when
// `focusPalette` is set.
using Runner = std::function<void(const std::function<void()>& call, bool focusPalette)>;

}  // namespace shd::gui
