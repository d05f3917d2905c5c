#include <gtest/gtest.h>

#include <vector>

#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "calc/CalcTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

struct Shape {
    GameKind kind;
    bool pictures;
};

const Shape kShapes[] = {{GameKind::Shardles, false}, {GameKind::Shardles, true}, {GameKind::Tiltbash, false}};

// Every title length from 0 to 20 with 1, 2 and 255 levels, for each shape.
template <typename Check>
void ForEachGeneratedSet(Check check) {
    unsigned seed = 100;
    for (const Shape& shape : kShapes)
        for (int length = 0; length <= 20; ++length)
            for (int levels : {1, 2, 255}) {
                const LevelSet set = test::RandomSet({shape.kind, levels, shape.pictures, length}, ++seed);
                SCOPED_TRACE((shape.kind == GameKind::Shardles ? "Shardles" : "Tiltbash") +
                             std::string(shape.pictures ? " with pictures" : "") + ", title " +
                             std::to_string(length) + ", levels " + std::to_string(levels));
                check(set);
            }
}

TEST(CalcRoundTrip, ProgramFileReadsBackWhatItWrote) {
    ForEachGeneratedSet([](const LevelSet& set) {
        const WriteResult file = WriteProgramFile(set, "ROUND");
        ASSERT_TRUE(file.ok) << file.message;
        const ReadResult read = ReadProgramFile(file.bytes);
        ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
        test::ExpectSameAsImageCarries(set, read.set);
    });
}

TEST(CalcRoundTrip, SourceReadsBackWhatItWrote) {
    ForEachGeneratedSet([](const LevelSet& set) {
        const WriteResult source = WriteSourceFile(set);
        ASSERT_TRUE(source.ok) << source.message;
        const ReadResult read = ReadSourceFile(source.bytes);
        ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
        test::ExpectSameAsImageCarries(set, read.set);
    });
}

TEST(CalcRoundTrip, EdgeValuesSurviveBothForms) {
    LevelSet set = test::RandomSet({GameKind::Shardles, 3, true, 0}, 77u);
    set.Title = "\x80\xE9\xFF \"quoted\" $00 9327h level1:";  // 8-bit text and look-alike tokens
    set.BonusClock = "120";
    set.ExtraLifePoints = "800";
    set.UseWrapAround = set.ArrowBlocksBreakable = true;
    set.CustomShardlePicture.cells.fill(1);
    set.CustomChangerPicture.cells.fill(0);
    for (auto& layout : set.Layouts) {
        std::fill(layout.Cells.begin(), layout.Cells.end(), std::uint8_t{15});
        layout.BallX = 255;
        layout.BallY = 0;
        layout.BlockCount = 255;
        layout.LastBlockCount = 0;
    }
    set.Layout(2).Cells.assign(80, 0);
    const ReadResult program = ReadProgramFile(WriteProgramFile(set, "EDGE").bytes);
    ASSERT_TRUE(program.complete()) << program.outcome.why;
    test::ExpectSameAsImageCarries(set, program.set);
    const ReadResult source = ReadSourceFile(WriteSourceFile(set).bytes);
    ASSERT_TRUE(source.complete()) << source.outcome.why;
    test::ExpectSameAsImageCarries(set, source.set);
}

TEST(CalcRoundTrip, WhatTheImageDoesNotCarryComesBackReset) {
    LevelSet set = test::RandomSet({GameKind::Shardles, 2, false, 5}, 3u);
    set.UseShardlesDebugger = false;
    set.MatchLocksToBlocks = false;
    set.CurrentLevel = 2;
    set.Record(1).SpottedUnused = true;
    set.Record(2).SpecialUnusedCount = 4;
    for (const ReadResult& read :
         {ReadProgramFile(WriteProgramFile(set, "R").bytes), ReadSourceFile(WriteSourceFile(set).bytes)}) {
        ASSERT_TRUE(read.complete());
        test::ExpectSameAsImageCarries(set, read.set);  // debugger, locks, records, level 1 current
    }
}

}  // namespace
}  // namespace shd
