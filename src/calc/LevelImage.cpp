// Placeholder until the image lands.
#include "calc/LevelImage.h"
namespace shd {
std::optional<std::uint8_t> EncodeSettingsByte(const Bytes&, const Bytes&, bool, bool) { return std::nullopt; }
std::array<std::uint8_t, 12> EncodePictureBytes(const PiecePicture&) { return {}; }
std::array<std::uint8_t, 4> PackGridRow(const std::uint8_t*) { return {}; }
WriteResult BuildLevelImage(const LevelSet&) { return Refused("not built yet"); }
}  // namespace shd
