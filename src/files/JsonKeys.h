// The keys of the JSON form, in the order they are written, and what each
// holds: one table that the writer walks and the reader looks keys up in.
#pragma once

#include <cstdint>
#include <string_view>

#include "model/LevelSet.h"

namespace shd::json {

// What a key holds, and so how it is written and checked.
enum class Shape { Kind, Text, SetFlag, Picture, Levels, Cells, LayoutNumber, RecordFlag, RecordNumber };

struct Slot {
    std::string_view key;
    Shape shape;
    Bytes LevelSet::*text = nullptr;
    bool LevelSet::*setFlag = nullptr;
    PiecePicture LevelSet::*picture = nullptr;
    std::int16_t LevelLayout::*layoutNumber = nullptr;
    bool LevelRecord::*recordFlag = nullptr;
    std::int16_t LevelRecord::*recordNumber = nullptr;
    bool sharesLine = false;  // written on one line with the key after it
};

// The set's keys in the order they are written.
inline constexpr Slot kSetSlots[] = {
    {.key = "Kind", .shape = Shape::Kind},
    {.key = "Title", .shape = Shape::Text, .text = &LevelSet::Title},
    {.key = "BonusClock", .shape = Shape::Text, .text = &LevelSet::BonusClock},
    {.key = "ExtraLifePoints", .shape = Shape::Text, .text = &LevelSet::ExtraLifePoints},
    {.key = "ArrowBlocksBreakable", .shape = Shape::SetFlag, .setFlag = &LevelSet::ArrowBlocksBreakable},
    {.key = "UseWrapAround", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseWrapAround},
    {.key = "UseCustomShardles", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseCustomShardles},
    {.key = "UseShardlesDebugger", .shape = Shape::SetFlag, .setFlag = &LevelSet::UseShardlesDebugger},
    {.key = "MatchLocksToBlocks", .shape = Shape::SetFlag, .setFlag = &LevelSet::MatchLocksToBlocks},
    {.key = "CustomShardlePicture", .shape = Shape::Picture, .picture = &LevelSet::CustomShardlePicture},
    {.key = "CustomChangerPicture", .shape = Shape::Picture, .picture = &LevelSet::CustomChangerPicture},
    {.key = "Levels", .shape = Shape::Levels},
};

// A level's numbers are written a few to a line, one line per group of the
// record; `last` ends the line.
constexpr Slot LayoutNumber(std::string_view key, std::int16_t LevelLayout::*field, bool last = false) {
    return {.key = key, .shape = Shape::LayoutNumber, .layoutNumber = field, .sharesLine = !last};
}
constexpr Slot RecordFlag(std::string_view key, bool LevelRecord::*field) {
    return {.key = key, .shape = Shape::RecordFlag, .recordFlag = field, .sharesLine = true};
}
constexpr Slot RecordNumber(std::string_view key, std::int16_t LevelRecord::*field, bool last = false) {
    return {.key = key, .shape = Shape::RecordNumber, .recordNumber = field, .sharesLine = !last};
}
constexpr bool kLast = true;

// A level's keys: its layout, then the thirteen record fields in the record's order.
inline constexpr Slot kLevelSlots[] = {
    {.key = "Cells", .shape = Shape::Cells},
    LayoutNumber("BlockCount", &LevelLayout::BlockCount),
    LayoutNumber("LastBlockCount", &LevelLayout::LastBlockCount),
    LayoutNumber("BallX", &LevelLayout::BallX),
    LayoutNumber("BallY", &LevelLayout::BallY, kLast),
    RecordFlag("SpottedUnused", &LevelRecord::SpottedUnused),
    RecordNumber("SpottedCount", &LevelRecord::SpottedCount),
    RecordNumber("SpottedChangerCount", &LevelRecord::SpottedChangerCount, kLast),
    RecordFlag("ZigZagUnused", &LevelRecord::ZigZagUnused),
    RecordNumber("ZigZagCount", &LevelRecord::ZigZagCount),
    RecordNumber("ZigZagChangerCount", &LevelRecord::ZigZagChangerCount, kLast),
    RecordFlag("CenterLineUnused", &LevelRecord::CenterLineUnused),
    RecordNumber("CenterLineCount", &LevelRecord::CenterLineCount),
    RecordNumber("CenterLineChangerCount", &LevelRecord::CenterLineChangerCount, kLast),
    RecordFlag("CustomUnused", &LevelRecord::CustomUnused),
    RecordNumber("CustomCount", &LevelRecord::CustomCount),
    RecordNumber("CustomChangerCount", &LevelRecord::CustomChangerCount, kLast),
    RecordNumber("SpecialUnusedCount", &LevelRecord::SpecialUnusedCount, kLast),
};

inline const char* KindName(GameKind kind) { return kind == GameKind::Shardles ? "Shardles" : "Tiltbash"; }

}  // namespace shd::json
