// Z80 assembly source (origin 9327h) that assembles to the level image.
#pragma once

#include <string_view>

#include "model/ReadResult.h"

namespace shd {

WriteResult WriteSourceFile(const LevelSet& set);

// "Not compilable code." is the one refusal; it leaves the editor's set alone.
ReadResult ReadSourceFile(const std::string& bytes);

}  // namespace shd
