// Bytes of a file shown in a message: a terminal or a message box gets text
// it shows as text, of a length one reads at a glance.
#pragma once

#include <string>
#include <string_view>

namespace shd {

// Control bytes, DEL and bytes above 0x7F as \xHH, a backslash as \\, cut
// after 40 bytes with "...".
std::string Escaped(std::string_view text);

// The same between double quotes.
inline std::string Quoted(std::string_view text) { return "\"" + Escaped(text) + "\""; }

// A file name, or any word a user gave, as a message shows it: as it is when
// every character of it prints as itself, else quoted as above, however long,
// so that no name can drive the terminal that shows it.
std::string ShownName(std::string_view name);

}  // namespace shd
