// The bytes the two calculator games read as a level set.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "model/ReadResult.h"

namespace shd {

// Only the values the editor offers: "30".."120" by 30, "100".."800" by 100.
std::optional<std::uint8_t> EncodeSettingsByte(const Bytes& bonusClock, const Bytes& extraLifePoints,
                                               bool useWrapAround, bool arrowBlocksBreakable);

// The other way: bits 6-5 and 4-2 index the two lists, bit 1 turns wrap
// around on, bit 0 breakable arrow blocks; bit 7 is not looked at.
void DecodeSettingsByte(std::uint8_t byte, LevelSet& set);

// The same settings spelt out in eight binary digits (bit 7 first), as the
// assembly source has them. A group whose characters are not binary digits
// leaves its setting as it was.
void DecodeSettingsDigits(std::string_view digits, LevelSet& set);

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
