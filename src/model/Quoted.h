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

}  // namespace shd
