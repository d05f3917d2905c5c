// Written files read back as what they carry, and damaged files still give
// consistent sets.
#include <gtest/gtest.h>

#include <random>

#include "files/EditorFiles.h"
#include "files/FileTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

using test::Carried;
using test::SetShape;
using test::SplitCrLf;

// Fills what the generator leaves at defaults, so that fields a file does not
// carry are seen to come back as a fresh set has them.
void FillTheRest(LevelSet& set, unsigned seed) {
    std::mt19937 rng(seed);
    auto roll = [&](int lo, int hi) { return static_cast<std::int16_t>(std::uniform_int_distribution<int>(lo, hi)(rng)); };
    for (LevelRecord& record : set.Records) {
        record = {roll(0, 1) == 1, roll(-5, 80), roll(-5, 80), roll(0, 1) == 1, roll(-5, 80), roll(-5, 80),
                  roll(0, 1) == 1, roll(-5, 80), roll(-5, 80), roll(0, 1) == 1, roll(-5, 80), roll(-5, 80),
                  roll(-32768, 32767)};
    }
    for (LevelLayout& layout : set.Layouts) layout.BlockCount = roll(-32768, 32767);
    if (set.IsShardles()) {
        set.Layout(1).BallX = -32768;
        set.Layout(1).BallY = 32767;
        return;
    }
    set.ArrowBlocksBreakable = set.UseWrapAround = true;
    set.UseShardlesDebugger = set.MatchLocksToBlocks = false;
    set.BonusClock = "120";
    for (LevelLayout& layout : set.Layouts) layout.LastBlockCount = layout.BallX = layout.BallY = roll(1, 60);
}

struct Trip {
    WriteResult (*write)(const LevelSet&);
    ReadResult (*read)(std::string_view);
    bool records;
    bool optionLines;  // UseShardlesDebugger and MatchLocksToBlocks
};

const Trip kTrips[] = {{WriteMyFile, ReadMyFile, true, true},
                       {WriteListFile, ReadListFile, false, true},
                       {test::WriteOldMyFileForTest, ReadOldMyFile, false, false}};

LevelSet Expected(const LevelSet& set, const Trip& trip) {
    LevelSet expected = Carried(set, trip.records);
    if (!trip.optionLines) expected.UseShardlesDebugger = expected.MatchLocksToBlocks = true;
    return expected;
}

TEST(EditorFileRoundTrip, GeneratedSetsComeBackAsTheFileCarriesThem) {
    unsigned seed = 1;
    for (const Trip& trip : kTrips) {
        for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
            for (int levels : {1, 2, 37, 255}) {
                for (bool pictures : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "levels " << levels << " pictures " << pictures << " records "
                                                    << trip.records << " shardles " << (kind == GameKind::Shardles));
                    LevelSet set = test::RandomSet(SetShape{kind, levels, pictures, 1 + levels % 40}, ++seed);
                    FillTheRest(set, seed);
                    if (pictures) {
                        // Pictures keep any byte, not just 0 and 1.
                        set.CustomShardlePicture.at(60) = 255;
                        set.CustomChangerPicture.at(1) = 2;
                    }
                    const WriteResult written = trip.write(set);
                    ASSERT_TRUE(written.ok) << written.message;
                    const ReadResult read = trip.read(written.bytes);
                    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
                    EXPECT_EQ(read.set, Expected(set, trip));
                    // What the file carries is all of it: writing again gives the same bytes.
                    EXPECT_EQ(trip.write(read.set).bytes, written.bytes);
                }
            }
        }
    }
}

// Every file cut after each of its lines stops at the line that is missing.
TEST(EditorFileDamage, FilesCutAfterAnyLineStopOnTheNextOne) {
    const LevelSet shardles = test::RandomSet(SetShape{GameKind::Shardles, 2, true}, 11);
    const LevelSet tiltbash = test::RandomSet(SetShape{GameKind::Tiltbash, 2, false}, 12);
    struct File {
        std::string bytes;
        ReadResult (*read)(std::string_view);
        std::size_t refusedBelow;  // lines needed before the file is recognised
    };
    const std::vector<File> files{
        {WriteMyFile(shardles).bytes, ReadMyFile, 1},
        {WriteMyFile(tiltbash).bytes, ReadMyFile, 1},
        {test::WriteOldMyFileForTest(shardles).bytes, ReadOldMyFile, 1},
        {WriteListFile(shardles).bytes, ReadListFile, 2},
        {WriteListFile(tiltbash).bytes, ReadListFile, 2},
    };
    for (const File& file : files) {
        const auto lines = SplitCrLf(file.bytes);
        for (std::size_t kept = 0; kept < lines.size(); ++kept) {
            SCOPED_TRACE(testing::Message() << "lines kept " << kept << " of " << lines.size());
            const ReadResult result =
                file.read(test::JoinCrLf(std::vector<std::string>(lines.begin(), lines.begin() + kept)));
            EXPECT_EQ(CheckConsistent(result.set), "");
            if (kept < file.refusedBelow) {
                EXPECT_TRUE(result.refused());
                continue;
            }
            EXPECT_TRUE(result.stopped());
            EXPECT_EQ(result.outcome.where, "line " + std::to_string(kept + 1));
        }
        EXPECT_TRUE(file.read(file.bytes).complete());
    }
}

// Cut anywhere or with bytes changed at random, a file never gives an
// inconsistent set, and no read runs past the end (the sanitizer build checks).
TEST(EditorFileDamage, DamagedBytesStillGiveConsistentSets) {
    const LevelSet shardles = test::RandomSet(SetShape{GameKind::Shardles, 3, true}, 21);
    const LevelSet tiltbash = test::RandomSet(SetShape{GameKind::Tiltbash, 3, false}, 22);
    const std::vector<std::string> files{WriteMyFile(shardles).bytes, WriteMyFile(tiltbash).bytes,
                                         WriteListFile(shardles).bytes, WriteListFile(tiltbash).bytes};
    std::mt19937 rng(5);
    const std::string alphabet = "0123456789,- \r\n#TRUEFALSEtrue.ABCxyz\t\x80";
    for (const std::string& file : files) {
        for (auto read : {ReadMyFile, ReadOldMyFile, ReadListFile}) {
            for (std::size_t size = 0; size < file.size(); size += 7) {
                const ReadResult cut = read(std::string_view(file).substr(0, size));
                ASSERT_EQ(CheckConsistent(cut.set), "") << "cut at " << size;
                if (cut.stopped()) {
                    EXPECT_EQ(cut.outcome.where.rfind("line ", 0), 0u);
                }
            }
            for (int round = 0; round < 300; ++round) {
                std::string damaged = file;
                const int changes = std::uniform_int_distribution<int>(1, 6)(rng);
                for (int i = 0; i < changes; ++i) {
                    const auto at = std::uniform_int_distribution<std::size_t>(0, damaged.size() - 1)(rng);
                    damaged[at] = alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(rng)];
                }
                const ReadResult result = read(damaged);
                ASSERT_EQ(CheckConsistent(result.set), "") << damaged.substr(0, 200);
                EXPECT_EQ(result.set.CurrentLevel, 1);
            }
        }
    }
}

}  // namespace
}  // namespace shd
