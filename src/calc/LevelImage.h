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

// The pieces both calculator writers share.
namespace image {

constexpr int kPictureBytes = 24;

// Only a Shardles set carries the custom pictures.
bool CarriesPictures(const LevelSet& set);

// L + 5, plus 24 when the pictures are carried.
int CountOffset(const LevelSet& set);

// Why the set cannot be laid out as an image, or nothing when it can.
std::optional<std::string> Unexportable(const LevelSet& set);

// A picture cell as a bit: anything but 0 counts as set.
inline int PictureBit(std::uint8_t cell) { return cell != 0 ? 1 : 0; }

}  // namespace image

}  // namespace shd
