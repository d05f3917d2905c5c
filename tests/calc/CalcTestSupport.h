// Helpers shared by the calculator form tests.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>

#include "model/LevelSet.h"
#include "model/ReadResult.h"

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

// Everything the level image carries must come back; what it does not carry
// comes back as a reset set has it.
inline void ExpectSameAsImageCarries(const LevelSet& original, const LevelSet& read) {
    ASSERT_EQ(CheckConsistent(read), "");
    EXPECT_EQ(read.Kind, original.Kind);
    EXPECT_EQ(read.Title, original.Title);
    ASSERT_EQ(read.LevelCount(), original.LevelCount());
    EXPECT_EQ(read.CurrentLevel, 1);
    EXPECT_TRUE(read.UseShardlesDebugger);
    EXPECT_TRUE(read.MatchLocksToBlocks);
    const bool shardles = original.IsShardles();
    EXPECT_EQ(read.BonusClock, shardles ? original.BonusClock : "30");
    EXPECT_EQ(read.ExtraLifePoints, shardles ? original.ExtraLifePoints : "100");
    EXPECT_EQ(read.UseWrapAround, shardles && original.UseWrapAround);
    EXPECT_EQ(read.ArrowBlocksBreakable, shardles && original.ArrowBlocksBreakable);
    const bool pictures = shardles && original.UseCustomShardles;
    EXPECT_EQ(read.UseCustomShardles, pictures);
    EXPECT_EQ(read.CustomShardlePicture, pictures ? original.CustomShardlePicture : PiecePicture{});
    EXPECT_EQ(read.CustomChangerPicture, pictures ? original.CustomChangerPicture : PiecePicture{});
    for (int level = 1; level <= original.LevelCount(); ++level) {
        SCOPED_TRACE("level " + std::to_string(level));
        const LevelLayout& want = original.Layout(level);
        const LevelLayout& got = read.Layout(level);
        EXPECT_EQ(got.Cells, want.Cells);
        EXPECT_EQ(got.BlockCount, want.BlockCount);
        EXPECT_EQ(got.BallX, shardles ? want.BallX : 0);
        EXPECT_EQ(got.BallY, shardles ? want.BallY : 0);
        EXPECT_EQ(got.LastBlockCount, shardles ? want.LastBlockCount : 0);
        EXPECT_EQ(read.Record(level), LevelRecord{});
    }
}

}  // namespace shd::test
