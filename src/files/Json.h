// A full, lossless dump of a LevelSet as JSON, and back.
#pragma once

#include <string_view>

#include "model/ReadResult.h"

namespace shd {

WriteResult WriteJsonFile(const LevelSet& set);
ReadResult ReadJsonFile(const std::string& bytes);

}  // namespace shd
