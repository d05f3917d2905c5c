// Page faults are the dearest part of showing the window on a virtual
// machine, ten microseconds or so each, and a full-screen window touches
// thousands of pages: its backing store alone takes four bytes a pixel.
#pragma once

#include <cstddef>

namespace shd::gui {

// Grows the heap once by `bytes`, rounded up to whole 2 MB huge pages, marks
// that room for huge pages, and keeps blocks of up to 32 MB on the heap: the
// window's backing store and controls then come in a few faults instead of
// one a page. Nothing changes where glibc or huge pages are missing, or for
// more than 32 MB.
void ReserveHeap(std::size_t bytes);

// What the window needs besides its backing store: controls, fonts, pictures.
inline constexpr std::size_t kHeapForControls = std::size_t{4} << 20;

}  // namespace shd::gui
