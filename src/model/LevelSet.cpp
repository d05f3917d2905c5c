#include "model/LevelSet.h"

namespace shd {

std::int16_t LevelRecord::*CountFieldFor(int code) {
    switch (code) {
    case 2: return &LevelRecord::SpottedCount;
    case 3: return &LevelRecord::SpottedChangerCount;
    case 4: return &LevelRecord::CenterLineCount;
    case 5: return &LevelRecord::CenterLineChangerCount;
    case 8: return &LevelRecord::ZigZagCount;
    case 9: return &LevelRecord::ZigZagChangerCount;
    case 13: return &LevelRecord::CustomCount;
    case 14: return &LevelRecord::CustomChangerCount;
    default: return nullptr;
    }
}

void ResetSetFields(LevelSet& set) {
    LevelSet fresh;
    fresh.Layouts = std::move(set.Layouts);
    fresh.Records = std::move(set.Records);
    set = std::move(fresh);
}

void MakeLevels(LevelSet& set, int count) {
    set.Layouts.assign(static_cast<std::size_t>(count), LevelLayout{});
    set.Records.assign(static_cast<std::size_t>(count), LevelRecord{});
    for (auto& layout : set.Layouts) layout.Cells.assign(static_cast<std::size_t>(CellCount(set.Kind)), 0);
    if (set.CurrentLevel < 1 || set.CurrentLevel > count) set.CurrentLevel = 1;
}

void AddEmptyLevel(LevelSet& set) {
    LevelLayout layout;
    layout.Cells.assign(static_cast<std::size_t>(CellCount(set.Kind)), 0);
    set.Layouts.push_back(std::move(layout));
    set.Records.emplace_back();
}

LevelSet NewSet(GameKind kind) {
    LevelSet set;
    set.Kind = kind;
    MakeLevels(set, 1);
    return set;
}

void RecountCurrentLevel(LevelSet& set) {
    LevelRecord& record = set.CurrentRecord();
    for (int code : {2, 3, 4, 5, 8, 9, 13, 14}) record.*CountFieldFor(code) = 0;
    for (std::uint8_t code : set.Current().Cells) {
        if (auto field = CountFieldFor(code)) ++(record.*field);
    }
}

std::string CheckConsistent(const LevelSet& set) {
    const int count = set.LevelCount();
    if (count < 1 || count > kMaxLevels) return "level count " + std::to_string(count) + " is not 1 to 255";
    if (set.Records.size() != set.Layouts.size()) return "records and layouts differ in number";
    if (set.CurrentLevel < 1 || set.CurrentLevel > count) return "current level out of range";
    const auto cells = static_cast<std::size_t>(CellCount(set.Kind));
    for (int level = 1; level <= count; ++level) {
        const auto& grid = set.Layout(level).Cells;
        if (grid.size() != cells) return "level " + std::to_string(level) + " has a grid of the wrong size";
        for (std::uint8_t code : grid)
            if (code > 15) return "level " + std::to_string(level) + " holds a code above 15";
    }
    return {};
}

std::string PictureFile(GameKind kind, int code) {
    static const char* kHex = "0123456789ABCDEF";
    if (code == 0) return "nothing.gif";
    if (kind == GameKind::Shardles) return std::string("shdblock") + kHex[code & 15] + ".gif";
    int file = code;
    if (code == 7) file = 11;
    else if (code >= 8 && code <= 11) file = code - 1;
    return std::string("tlblock") + kHex[file & 15] + ".gif";
}

}  // namespace shd
