// The core keeps texts as Windows-1252 bytes and paths as the file system's
// own bytes; Qt wants QString. These convert at the border.
#pragma once

#include <QString>
#include <string>

namespace shd::gui {

// Windows-1252 bytes as Unicode; every byte has a character.
QString ToQt(const std::string& bytes);

// Unicode as Windows-1252 bytes; a character Windows-1252 has no byte for becomes "?".
std::string ToBytes(const QString& text);

// Paths cross as the file system's encoding, not as Windows-1252.
std::string PathBytes(const QString& path);
QString PathText(const std::string& bytes);

}  // namespace shd::gui
