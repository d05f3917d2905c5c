// The block pictures are small still GIFs. Reading the plain ones here keeps
// Qt's image plugins, and the work of finding and loading them, out of the
// window's start-up; anything else is left to Qt.
#pragma once

#include <QByteArray>
#include <QImage>

namespace shd::gui {

// A GIF of one opaque image that fills its screen, with the global colour
// table, as QImageReader would read it (Format_RGB32). A null image for
// anything else: another kind of file, extensions, a local colour table,
// more than one image, a code or colour index out of range, data that ends
// early or too late. What is refused here may still be a picture Qt reads.
QImage ReadPlainGif(const QByteArray& bytes);

}  // namespace shd::gui
