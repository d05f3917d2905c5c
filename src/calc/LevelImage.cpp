#include "calc/LevelImage.h"

#include <iterator>

#include "model/Quoted.h"

namespace shd {

namespace {

constexpr const char* kBonusClocks[] = {"30", "60", "90", "120"};
constexpr const char* kExtraLifePoints[] = {"100", "200", "300", "400", "500", "600", "700", "800"};

template <std::size_t N>
std::optional<int> IndexIn(const char* const (&list)[N], const Bytes& value) {
    for (std::size_t i = 0; i < N; ++i)
        if (value == list[i]) return static_cast<int>(i);
    return std::nullopt;
}

std::uint8_t LowByte(std::int16_t value) { return static_cast<std::uint8_t>(value & 0xFF); }

}  // namespace

std::optional<std::uint8_t> EncodeSettingsByte(const Bytes& bonusClock, const Bytes& extraLifePoints,
                                               bool useWrapAround, bool arrowBlocksBreakable) {
    const auto bonus = IndexIn(kBonusClocks, bonusClock);
    const auto life = IndexIn(kExtraLifePoints, extraLifePoints);
    if (!bonus || !life) return std::nullopt;
    return static_cast<std::uint8_t>(*bonus << 5 | *life << 2 | (useWrapAround ? 2 : 0) |
                                     (arrowBlocksBreakable ? 1 : 0));
}

namespace {
// The setting at `index` of a list, when the index is one.
void TakeSetting(Bytes& setting, std::optional<int> index, const char* const* list, int size) {
    if (index && *index >= 0 && *index < size) setting = list[*index];
}

void TakeSettings(LevelSet& set, std::optional<int> bonus, std::optional<int> life, bool wrap, bool arrow) {
    TakeSetting(set.BonusClock, bonus, kBonusClocks, static_cast<int>(std::size(kBonusClocks)));
    TakeSetting(set.ExtraLifePoints, life, kExtraLifePoints, static_cast<int>(std::size(kExtraLifePoints)));
    if (wrap) set.UseWrapAround = true;
    if (arrow) set.ArrowBlocksBreakable = true;
}

// The value of a run of binary digits, or nothing when one is something else.
std::optional<int> BinaryValue(std::string_view digits, std::size_t first, std::size_t count) {
    if (first + count > digits.size()) return std::nullopt;
    int value = 0;
    for (const char c : digits.substr(first, count)) {
        if (c != '0' && c != '1') return std::nullopt;
        value = 2 * value + (c - '0');
    }
    return value;
}
}  // namespace

void DecodeSettingsByte(std::uint8_t byte, LevelSet& set) {
    TakeSettings(set, byte >> 5 & 0x03, byte >> 2 & 0x07, (byte & 0x02) != 0, (byte & 0x01) != 0);
}

void DecodeSettingsDigits(std::string_view digits, LevelSet& set) {
    TakeSettings(set, BinaryValue(digits, 1, 2), BinaryValue(digits, 3, 3), BinaryValue(digits, 6, 1) == 1,
                 BinaryValue(digits, 7, 1) == 1);
}

std::array<std::uint8_t, 12> EncodePictureBytes(const PiecePicture& picture) {
    std::array<std::uint8_t, 12> bytes{};
    for (int row = 0; row < 6; ++row) {
        int low = 0;
        for (int k = 1; k <= 8; ++k) low |= image::PictureBit(picture.at(10 * row + k)) << (k - 1);
        bytes[static_cast<std::size_t>(row)] = static_cast<std::uint8_t>(low);
        const int high = image::PictureBit(picture.at(10 * row + 10)) << 7 |
                         image::PictureBit(picture.at(10 * row + 9)) << 6;
        bytes[static_cast<std::size_t>(6 + row)] = static_cast<std::uint8_t>(high);
    }
    return bytes;
}

std::array<std::uint8_t, 4> PackGridRow(const std::uint8_t* cells) {
    std::array<std::uint8_t, 4> bytes{};
    for (std::size_t k = 0; k < 4; ++k)
        bytes[k] = static_cast<std::uint8_t>((cells[2 * k] & 0x0F) << 4 | (cells[2 * k + 1] & 0x0F));
    return bytes;
}

namespace image {

bool CarriesPictures(const LevelSet& set) { return set.IsShardles() && set.UseCustomShardles; }

int CountOffset(const LevelSet& set) {
    return static_cast<int>(set.Title.size()) + 5 + (CarriesPictures(set) ? kPictureBytes : 0);
}

std::optional<std::string> Unexportable(const LevelSet& set) {
    const int count = set.LevelCount();
    if (count < 1 || count > kMaxLevels || set.Records.size() != set.Layouts.size())
        return "The level set has " + std::to_string(count) + " levels; the calculator takes 1 to 255.";
    for (int level = 1; level <= count; ++level)
        if (set.Layout(level).Cells.size() != static_cast<std::size_t>(CellCount(set.Kind)))
            return "Level " + std::to_string(level) + " has a grid of the wrong size.";
    if (set.IsShardles()) {
        if (!IndexIn(kBonusClocks, set.BonusClock))
            return "The bonus clock " + Quoted(set.BonusClock) +
                   " cannot be written for the calculator: it must be 30, 60, 90 or 120.";
        if (!IndexIn(kExtraLifePoints, set.ExtraLifePoints))
            return "The extra life points " + Quoted(set.ExtraLifePoints) +
                   " cannot be written for the calculator: they must be 100, 200, 300, 400, 500, 600, "
                   "700 or 800.";
    }
    // CountOffset is one byte.
    if (CountOffset(set) > 255) {
        const int most = 255 - 5 - (CarriesPictures(set) ? kPictureBytes : 0);
        return "The title is " + std::to_string(set.Title.size()) +
               " characters long; the calculator takes at most " + std::to_string(most) +
               (CarriesPictures(set) ? " with custom shardles." : ".");
    }
    return std::nullopt;
}

}  // namespace image

WriteResult BuildLevelImage(const LevelSet& set) {
    if (auto problem = image::Unexportable(set)) return RefusedWrite(*problem);

    const bool shardles = set.IsShardles();
    std::string out;
    out.reserve(64 + static_cast<std::size_t>(set.LevelCount()) * 44);
    auto put = [&out](int byte) { out.push_back(static_cast<char>(static_cast<std::uint8_t>(byte))); };

    out += shardles ? "Shd1KZ" : "TL1KZ";
    if (shardles)
        put(*EncodeSettingsByte(set.BonusClock, set.ExtraLifePoints, set.UseWrapAround,
                                set.ArrowBlocksBreakable));
    put(image::CountOffset(set));
    if (image::CarriesPictures(set)) {
        for (std::uint8_t b : EncodePictureBytes(set.CustomShardlePicture)) put(b);
        for (std::uint8_t b : EncodePictureBytes(set.CustomChangerPicture)) put(b);
    }
    out += set.Title;
    put(0x00);
    put(static_cast<int>(set.Title.size()) + 1);  // TitleBackOffset
    put(0x00);
    put(0x00);
    put(set.LevelCount());

    for (const LevelLayout& layout : set.Layouts) {
        for (int row = 0; row < RowCount(set.Kind); ++row)
            for (std::uint8_t b : PackGridRow(&layout.Cells[static_cast<std::size_t>(row * kColumns)])) put(b);
        if (shardles) {
            put(LowByte(layout.BallX));
            put(LowByte(layout.BallY));
            put(LowByte(layout.BlockCount));
            put(LowByte(layout.LastBlockCount));
        } else {
            put(LowByte(layout.BlockCount));
        }
    }
    return Written(std::move(out));
}

}  // namespace shd
