// Writes seed inputs for the fuzz targets from our own writers:
// make_seeds FORM DIR
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>

#include "RoundTrip.h"

using namespace shd;

namespace {
LevelSet Sample(GameKind kind, int levels, bool pictures, int titleLength, unsigned seed) {
    std::mt19937 rng(seed);
    LevelSet set = NewSet(kind);
    MakeLevels(set, levels);
    set.Title = std::string(static_cast<std::size_t>(titleLength), 'A' + static_cast<char>(seed % 26));
    if (kind == GameKind::Shardles) {
        set.BonusClock = std::to_string(30 * (1 + rng() % 4));
        set.ExtraLifePoints = std::to_string(100 * (1 + rng() % 8));
        set.UseWrapAround = rng() % 2;
        set.ArrowBlocksBreakable = rng() % 2;
        set.UseCustomShardles = pictures;
        for (auto& c : set.CustomShardlePicture.cells) c = pictures ? rng() % 2 : 0;
        for (auto& c : set.CustomChangerPicture.cells) c = pictures ? rng() % 2 : 0;
    }
    for (auto& layout : set.Layouts) {
        for (auto& c : layout.Cells) c = static_cast<std::uint8_t>(rng() % 3 == 0 ? rng() % 16 : 0);
        layout.Cells[0] = 6;
        layout.BlockCount = static_cast<std::int16_t>(rng() % 100);
        layout.LastBlockCount = 1;
        if (kind == GameKind::Shardles) {
            layout.BallX = static_cast<std::int16_t>(rng() % 95);
            layout.BallY = static_cast<std::int16_t>(rng() % 63);
        }
    }
    for (auto& record : set.Records) {
        record.CenterLineUnused = rng() % 2;
        record.SpecialUnusedCount = static_cast<std::int16_t>(rng() % 5);
    }
    return set;
}
}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_seeds FORM DIR\n";
        return 2;
    }
    const FormatId form = fuzz::FormByName(argv[1]);
    const std::filesystem::path dir = argv[2];
    std::filesystem::create_directories(dir);
    int n = 0;
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash})
        for (int levels : {1, 2, 3})
            for (bool pictures : {false, true})
                for (int title : {0, 2, 7, 20}) {
                    if (pictures && kind == GameKind::Tiltbash) continue;
                    const LevelSet set = Sample(kind, levels, pictures, title, static_cast<unsigned>(n));
                    const WriteResult written = GetFormat(fuzz::WrittenAs(form)).write(set, "SEED.83p");
                    if (!written.ok) continue;
                    std::ofstream(dir / ("seed" + std::to_string(n++)), std::ios::binary) << written.bytes;
                }
    std::cout << argv[1] << ": " << n << " seeds\n";
    return 0;
}
