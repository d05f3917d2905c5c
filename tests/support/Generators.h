// Generated level sets for round trips and third-party checks.
#pragma once

#include <random>
#include <string>

#include "model/LevelSet.h"

namespace shd::test {

struct SetShape {
    GameKind kind = GameKind::Shardles;
    int levels = 1;
    bool pictures = false;  // Shardles only: UseCustomShardles on with random pictures
    int titleLength = 6;
};

// A set of the given shape with random cells, ball starts, counts, records,
// settings from the editor's lists and a printable title without commas,
// semicolons or double quotes. Every level has at least one last block.
LevelSet RandomSet(const SetShape& shape, unsigned seed);

// Printable title characters that every form carries unchanged.
std::string RandomTitle(std::mt19937& rng, int length);

}  // namespace shd::test
