// Helpers shared by the calculator form tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "model/LevelSet.h"
#include "model/ReadResult.h"
#include "support/Generators.h"

namespace shd::test {

inline std::string ByteString(std::initializer_list<int> bytes) {
    std::string out;
    for (int b : bytes) out.push_back(static_cast<char>(static_cast<std::uint8_t>(b)));
    return out;
}

inline int ByteAt(const std::string& bytes, std::size_t offset) {
    return static_cast<std::uint8_t>(bytes.at(offset));
}

// A program file as the reader sees it: 72 bytes it never looks at, then the image.
inline std::string InContainer(const std::string& image) { return std::string(72, '\x55') + image; }

struct GeneratedSet {
    std::string label;  // also a file name
    LevelSet set;
};

// Both games, Shardles with and without pictures, every title length 0 to
// 20, and 1, 2 and 255 levels in turn, so each shape meets each level count.
inline std::vector<GeneratedSet> GeneratedSets() {
    struct Shape {
        GameKind kind;
        bool pictures;
        const char* label;
    };
    const int levelCounts[] = {1, 2, 255};
    std::vector<GeneratedSet> sets;
    unsigned seed = 500;
    for (const Shape& s : {Shape{GameKind::Shardles, false, "shd"}, Shape{GameKind::Shardles, true, "pic"},
                           Shape{GameKind::Tiltbash, false, "tlt"}})
        for (int length = 0; length <= 20; ++length) {
            const int levels = levelCounts[length % 3];
            sets.push_back({std::string(s.label) + "-t" + std::to_string(length) + "-l" + std::to_string(levels),
                            RandomSet({s.kind, levels, s.pictures, length}, ++seed)});
        }
    return sets;
}

// What a set read back from its image must equal: what the image does not
// carry is as a reset set has it.
inline LevelSet WhatTheImageCarries(LevelSet set) {
    const bool shardles = set.IsShardles();
    if (!shardles || !set.UseCustomShardles) {
        set.UseCustomShardles = false;
        set.CustomShardlePicture = set.CustomChangerPicture = PiecePicture{};
    }
    if (!shardles) {
        set.BonusClock = "30";
        set.ExtraLifePoints = "100";
        set.UseWrapAround = set.ArrowBlocksBreakable = false;
        for (auto& layout : set.Layouts) layout.BallX = layout.BallY = layout.LastBlockCount = 0;
    }
    set.UseShardlesDebugger = set.MatchLocksToBlocks = true;
    set.CurrentLevel = 1;
    for (auto& record : set.Records) record = LevelRecord{};
    return set;
}

inline void ExpectSameAsImageCarries(const LevelSet& original, const LevelSet& read) {
    ASSERT_EQ(CheckConsistent(read), "");
    const LevelSet want = WhatTheImageCarries(original);
    EXPECT_EQ(read.Title, want.Title);
    EXPECT_EQ(read.LevelCount(), want.LevelCount());
    EXPECT_EQ(read, want);
}

}  // namespace shd::test
