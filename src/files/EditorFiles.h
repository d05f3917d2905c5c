// The editor's own level file (current and older layout) and the TI-83 list
// file: pure conversions between bytes and a LevelSet.
#pragma once

#include <string_view>

#include "model/ReadResult.h"

namespace shd {

WriteResult WriteMyFile(const LevelSet& set);
WriteResult WriteListFile(const LevelSet& set);

// Readers never throw and never read past the end. "Not one of my files." and
// "Not a valid list file." are refusals; any other fault stops the read with
// the line number and the reason, leaving a consistent set as far as read.
ReadResult ReadMyFile(const std::string& bytes);
ReadResult ReadOldMyFile(const std::string& bytes);
ReadResult ReadListFile(const std::string& bytes);

}  // namespace shd
