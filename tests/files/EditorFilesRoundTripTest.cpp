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

// A generated set with the records filled, which the generator leaves at 0,
// so that the fields a file does not carry are seen to come back as a fresh
// set has them; the numbers at their 16-bit limits, picture values beyond 0
// and 1 and, with two levels, text lines with blanks, commas and quotes.
LevelSet Generated(GameKind kind, int levels, bool pictures, unsigned seed) {
    LevelSet set = test::RandomSet(SetShape{kind, levels, pictures, 1 + levels % 40}, seed);
    std::mt19937 rng(seed);
    auto roll = [&](int lo, int hi) {
        return static_cast<std::int16_t>(std::uniform_int_distribution<int>(lo, hi)(rng));
    };
    for (LevelRecord& record : set.Records) {
        record = {roll(0, 1) == 1, roll(-5, 80), roll(-5, 80), roll(0, 1) == 1, roll(-5, 80), roll(-5, 80),
                  roll(0, 1) == 1, roll(-5, 80), roll(-5, 80), roll(0, 1) == 1, roll(-5, 80), roll(-5, 80),
                  roll(-32768, 32767)};
    }
    for (LevelLayout& layout : set.Layouts) layout.BlockCount = roll(-32768, 32767);
    set.Layout(1).BallX = -32768;
    set.Layout(1).BallY = 32767;
    set.CustomShardlePicture.at(60) = 255;
    set.CustomChangerPicture.at(1) = 2;
    if (levels == 2) {
        set.Title = "  \x80uro, \"quoted\"; \xFF  ";
        set.ExtraLifePoints = "";
        set.BonusClock = " 45,5 ";
    }
    return set;
}

struct Trip {
    WriteResult (*write)(const LevelSet&);
    ReadResult (*read)(const std::string&);
    bool records;
};

TEST(EditorFileRoundTrip, GeneratedSetsComeBackAsTheFileCarriesThem) {
    unsigned seed = 1;
    for (const Trip& trip : {Trip{WriteMyFile, ReadMyFile, true}, Trip{WriteListFile, ReadListFile, false}}) {
        for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
            for (int levels : {1, 2, 37, 255}) {
                for (bool pictures : {false, true}) {
                    SCOPED_TRACE(testing::Message() << "levels " << levels << " pictures " << pictures << " records "
                                                    << trip.records << " shardles " << (kind == GameKind::Shardles));
                    const LevelSet set = Generated(kind, levels, pictures, ++seed);
                    const WriteResult written = trip.write(set);
                    ASSERT_TRUE(written.ok) << written.message;
                    const ReadResult read = trip.read(written.bytes);
                    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
                    EXPECT_EQ(read.set, Carried(set, trip.records));
                    // What the file carries is all of it: writing again gives the same bytes.
                    EXPECT_EQ(trip.write(read.set).bytes, written.bytes);
                }
            }
        }
    }
}

// A file cut after any of its lines stops at the line that is missing; with
// bytes changed at random it still gives a consistent set, and no read runs
// past the end (the sanitizer build checks).
TEST(EditorFileDamage, CutOrDamagedFilesStillGiveConsistentSets) {
    const LevelSet shardles = test::RandomSet(SetShape{GameKind::Shardles, 2, true}, 11);
    const LevelSet tiltbash = test::RandomSet(SetShape{GameKind::Tiltbash, 2, false}, 12);
    const struct {
        std::string bytes;
        ReadResult (*read)(const std::string&);
        std::size_t refusedBelow;  // lines needed before the file is recognised
    } files[] = {
        {WriteMyFile(shardles).bytes, ReadMyFile, 1},
        {WriteMyFile(tiltbash).bytes, ReadMyFile, 1},
        {WriteListFile(shardles).bytes, ReadListFile, 2},
        {WriteListFile(tiltbash).bytes, ReadListFile, 2},
    };
    std::mt19937 rng(5);
    const std::string alphabet = "0123456789,- \r\n#TRUEFALSEtrue.ABCxyz\t\x80";
    for (const auto& file : files) {
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
        for (auto read : {ReadMyFile, ReadOldMyFile, ReadListFile}) {
            for (int round = 0; round < 300; ++round) {
                std::string damaged = file.bytes;
                for (int i = std::uniform_int_distribution<int>(1, 6)(rng); i > 0; --i) {
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
