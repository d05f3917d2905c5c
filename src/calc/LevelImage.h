// The bytes the two calculator games read as a level set.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "model/ReadResult.h"

namespace shd {

// Only the values the editor offers: "30".."120" by 30, "100".."800" by 100.
std::optional<std::uint8_t> EncodeSettingsByte(const Bytes& bonusClock, const Bytes& extraLifePoints,
                                               bool useWrapAround, bool arrowBlocksBreakable);

std::array<std::uint8_t, 12> EncodePictureBytes(const PiecePicture& picture);

// Eight cells (one grid row) into four bytes, the left cell of a pair high.
std::array<std::uint8_t, 4> PackGridRow(const std::uint8_t* cells);

// The whole image, or a refusal naming the value that cannot be encoded
// (a settings text outside the lists, a title too long for CountOffset).
WriteResult BuildLevelImage(const LevelSet& set);

}  // namespace shd
