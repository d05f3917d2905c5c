#include "rules/LevelChecks.h"

namespace shd {

BlockCounts ComputeBlockCounts(const LevelSet& set, int level) {
    const LevelLayout& layout = set.Layout(level);
    const LevelRecord& record = set.Record(level);
    int blocks = 0;
    int last = 0;
    int elevens = 0;
    int twelves = 0;
    for (std::uint8_t code : layout.Cells) {
        if (!set.IsShardles()) {
            if (code >= 1 && code <= 7) blocks += 1;
            else if (code >= 8 && code <= 14) blocks += 2;
            continue;
        }
        switch (code) {
        case 1: case 11: case 12: ++blocks; break;
        case 2: blocks += record.SpottedUnused ? 0 : 1; break;
        case 4: blocks += record.CenterLineUnused ? 0 : 1; break;
        case 8: blocks += record.ZigZagUnused ? 0 : 1; break;
        case 13: blocks += record.CustomUnused ? 0 : 1; break;
        case 15: blocks += set.ArrowBlocksBreakable ? 1 : 0; break;
        case 6: ++last; break;
        default: break;
        }
        if (code == 11) ++elevens;
        if (code == 12) ++twelves;
    }
    blocks -= record.SpecialUnusedCount;
    BlockCounts counts;
    if (set.IsShardles()) {
        counts.missingLastBlocks = last == 0;
        if (set.MatchLocksToBlocks) blocks = blocks - elevens + twelves;
    }
    counts.blockCount = static_cast<std::int16_t>(blocks);
    counts.lastBlockCount = static_cast<std::int16_t>(last);
    return counts;
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
