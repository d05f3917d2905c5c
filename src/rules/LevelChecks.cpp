#include "rules/LevelChecks.h"

#include <array>

namespace shd {

BlockCounts ComputeBlockCounts(const LevelSet& set, int level) {
    const LevelLayout& layout = set.Layout(level);
    const LevelRecord& record = set.Record(level);
    // How often each code occurs, then the rules per code: a branch per cell
    // on random codes would cost more than all the counting.
    std::array<int, 256> n{};
    for (std::uint8_t code : layout.Cells) ++n[code];
    int blocks = 0;
    int last = 0;
    BlockCounts counts;
    if (set.IsShardles()) {
        blocks = n[1] + n[11] + n[12];
        if (!record.SpottedUnused) blocks += n[2];
        if (!record.CenterLineUnused) blocks += n[4];
        if (!record.ZigZagUnused) blocks += n[8];
        if (!record.CustomUnused) blocks += n[13];
        if (set.ArrowBlocksBreakable) blocks += n[15];
        last = n[6];
        blocks -= record.SpecialUnusedCount;
        counts.missingLastBlocks = last == 0;
        if (set.MatchLocksToBlocks) blocks = blocks - n[11] + n[12];
    } else {
        for (int code = 1; code <= 7; ++code) blocks += n[code];
        for (int code = 8; code <= 14; ++code) blocks += 2 * n[code];
        blocks -= record.SpecialUnusedCount;
    }
    counts.blockCount = static_cast<std::int16_t>(blocks);
    counts.lastBlockCount = static_cast<std::int16_t>(last);
    return counts;
}

int CountAllLevels(LevelSet& set) {
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const BlockCounts counts = ComputeBlockCounts(set, level);
        set.Layout(level).BlockCount = counts.blockCount;
        set.Layout(level).LastBlockCount = counts.lastBlockCount;
        if (counts.missingLastBlocks) return level;
    }
    return 0;
}

std::string NoLastBlocksMessage(int level) { return "Level #" + std::to_string(level) + " has no Last Blocks."; }

const std::array<DebugCheck, 9>& DebugChecks() {
    static const std::array<DebugCheck, 9> checks{{
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.SpottedCount >= 1 && r.SpottedChangerCount == 0 && !r.SpottedUnused;
         },
         "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?", Toggle::Spotted},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.CenterLineCount >= 1 && r.CenterLineChangerCount == 0 && !r.CenterLineUnused;
         },
         "You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?", Toggle::CenterLine},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.ZigZagCount >= 1 && r.ZigZagChangerCount == 0 && !r.ZigZagUnused;
         },
         "You have a Zig-Zag Shardle without a Changer.  Set Zig-Zag as Unused?", Toggle::ZigZag},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.CustomCount >= 1 && r.CustomChangerCount == 0 && !r.CustomUnused;
         },
         "You have a Custom Shardle without a Changer.  Set Custom as Unused?", Toggle::Custom},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.CenterLineChangerCount >= 1 && r.CenterLineUnused;
         },
         "You have a Center-Line Changer, but Center-Line's are Unused!  Make Center-Line a Used Shardle?",
         Toggle::CenterLine},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.ZigZagChangerCount >= 1 && r.ZigZagUnused;
         },
         "You have a Zig-Zag Changer, but Zig-Zag's are Unused!  Make Zig-Zag a Used Shardle?", Toggle::ZigZag},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.CustomChangerCount >= 1 && r.CustomUnused;
         },
         "You have a Custom Changer, but Custom's are Unused!  Make Custom a Used Shardle?", Toggle::Custom},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return r.SpottedChangerCount >= 1 && r.SpottedUnused;
         },
         "You have a Spotted Changer, but Spotted's are Unused!  Make Spotted a Used Shardle?", Toggle::Spotted},
        {[](const LevelSet& s, int l) {
             const auto& r = s.Record(l);
             return (r.CustomCount >= 1 || r.CustomChangerCount >= 1) && !s.UseCustomShardles;
         },
         "You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom Shardles?",
         Toggle::CustomShardles},
    }};
    return checks;
}

}  // namespace shd
