// The recent files' list as it is kept between runs: one name a line, any
// name at all, newlines and backslashes in it included, coming back as it
// went.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace shd {

// The list's text, newest first, behind a first line that says how it is
// written.
std::string RecentFilesText(const std::vector<std::string>& files);

// The names a list's text holds, at most `most` of them. A list written
// before names were escaped (no first line) is read line by line as it is.
std::vector<std::string> RecentFilesOf(const std::string& text, std::size_t most);

}  // namespace shd
