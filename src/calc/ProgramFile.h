// The TI-83 program file (.83p) that carries the level image.
#pragma once

#include <string>
#include <string_view>

#include "model/ReadResult.h"

namespace shd {

// `calculatorName` is used as given (upper case, at most 8 characters).
WriteResult WriteProgramFile(const LevelSet& set, std::string_view calculatorName);

// "This is not a Shardles or Tiltbash file." is the one refusal; the set it
// starts from is a reset one, as the open command resets before reading.
ReadResult ReadProgramFile(const std::string& bytes);

// Where the container puts the image.
constexpr std::size_t kProgramImageOffset = 72;

}  // namespace shd
