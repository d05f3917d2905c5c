// The counts the calculator games need, and the Shardles debugger's checks.
#pragma once

#include <array>
#include <string>

#include "model/LevelSet.h"

namespace shd {

struct BlockCounts {
    std::int16_t blockCount = 0;
    std::int16_t lastBlockCount = 0;
    bool missingLastBlocks = false;  // a Shardles level without a last block
};

// What CountBlocks computes for one level, without changing anything.
BlockCounts ComputeBlockCounts(const LevelSet& set, int level);

// CountBlocks on every level from the first, as saving runs it: each level's
// fresh counts are stored. Stops at the first Shardles level without a last
// block and returns its number; 0 when every level was counted.
int CountAllLevels(LevelSet& set);

// "Level #N has no Last Blocks."
std::string NoLastBlocksMessage(int level);

// The set-wide options and per-level unused kinds, as the Tricky menu names them.
enum class Toggle {
    Spotted, CenterLine, ZigZag, Custom,                            // per level, check mark decides
    CustomShardles, WrapAround, ArrowBreakable, MatchLocks, Debugger,  // set-wide, flag decides
};

struct DebugCheck {
    bool (*holds)(const LevelSet&, int level);
    const char* question;
    Toggle onYes;
};

// The nine checks of the debugger, in the order they are asked.
const std::array<DebugCheck, 9>& DebugChecks();

}  // namespace shd
