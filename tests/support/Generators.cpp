#include "support/Generators.h"

namespace shd::test {

std::string RandomTitle(std::mt19937& rng, int length) {
    static const std::string alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 !#%&'()*+-./:<=>?@[]^_{|}~";
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    std::string title;
    for (int i = 0; i < length; ++i) title += alphabet[pick(rng)];
    return title;
}

LevelSet RandomSet(const SetShape& shape, unsigned seed) {
    std::mt19937 rng(seed);
    auto roll = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    LevelSet set = NewSet(shape.kind);
    MakeLevels(set, shape.levels);
    set.Title = RandomTitle(rng, shape.titleLength);
    if (shape.kind == GameKind::Shardles) {
        set.BonusClock = std::to_string(30 * roll(1, 4));
        set.ExtraLifePoints = std::to_string(100 * roll(1, 8));
        set.ArrowBlocksBreakable = roll(0, 1) == 1;
        set.UseWrapAround = roll(0, 1) == 1;
        set.UseShardlesDebugger = roll(0, 1) == 1;
        set.MatchLocksToBlocks = roll(0, 1) == 1;
        set.UseCustomShardles = shape.pictures;
        if (shape.pictures) {
            for (auto& c : set.CustomShardlePicture.cells) c = static_cast<std::uint8_t>(roll(0, 1));
            for (auto& c : set.CustomChangerPicture.cells) c = static_cast<std::uint8_t>(roll(0, 1));
        }
    }
    for (int level = 1; level <= set.LevelCount(); ++level) {
        LevelLayout& layout = set.Layout(level);
        for (auto& c : layout.Cells) c = static_cast<std::uint8_t>(roll(0, 3) == 0 ? roll(0, 15) : 0);
        if (shape.kind == GameKind::Shardles) {
            layout.Cells[static_cast<std::size_t>(roll(0, 79))] = 6;
            layout.BallX = static_cast<std::int16_t>(roll(0, 94));
            layout.BallY = static_cast<std::int16_t>(roll(0, 62));
            layout.LastBlockCount = static_cast<std::int16_t>(roll(1, 20));
        }
        layout.BlockCount = static_cast<std::int16_t>(roll(0, 120));
    }
    return set;
}

}  // namespace shd::test
