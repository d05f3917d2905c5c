// Reading My Files, Old My Files and list files: refusals, the older layouts,
// the forms a value may take, and reads that stop.
#include <gtest/gtest.h>

#include "files/EditorFiles.h"
#include "files/FileTestSupport.h"

namespace shd {
namespace {

using test::JoinCrLf;
using test::SplitCrLf;

std::string Items(int first, int last, const std::string& separator = ",") {
    std::string out;
    for (int value = first; value <= last; ++value) out += std::to_string(value) + (value < last ? separator : "");
    return out;
}

std::string ZeroRow(int count) {
    std::string row;
    for (int i = 1; i < count; ++i) row += "0,";
    return row + " 0 ";
}

void ExpectStoppedAt(const ReadResult& result, const std::string& where) {
    EXPECT_TRUE(result.stopped());
    EXPECT_EQ(result.outcome.where, where);
    EXPECT_FALSE(result.outcome.why.empty());
    EXPECT_EQ(CheckConsistent(result.set), "");
    EXPECT_EQ(result.set.CurrentLevel, 1);
}

TEST(EditorFileRefusals, MagicWordMustMatchExactly) {
    for (auto read : {ReadMyFile, ReadOldMyFile}) {
        for (const std::string bytes : {"quartlev\r\nT\r\nFalse\r\n 1 \r\n", "QUARTLEV \r\nT\r\n", " QUARTLEV\r\n",
                                        "QUARTLEVX\r\n", "", "\r\n"}) {
            const ReadResult result = read(bytes);
            EXPECT_TRUE(result.refused()) << bytes;
            EXPECT_EQ(result.outcome.message, "Not one of my files.");
            EXPECT_EQ(CheckConsistent(result.set), "");
        }
    }
}

TEST(EditorFileRefusals, ListHeaderMustBeginWithSlashSlashL) {
    const std::string body = "False\r\n 1 \r\n";
    std::string cells;
    for (int i = 0; i < 64; ++i) cells += " 0 \r\n";
    const ReadResult accepted = ReadListFile("T\r\n//LABC\r\nFalse\r\n 1 \r\n" + cells + "5\r\n");
    EXPECT_TRUE(accepted.complete()) << accepted.outcome.why;
    EXPECT_EQ(accepted.set.Layout(1).BlockCount, 5);
    for (const std::string& bytes : {"T\r\n//lQRVLE\r\n" + body, "T\r\n\r\n" + body, "T\r\n/LQRVLE\r\n" + body,
                                    std::string("//LQRVLE\r\n"), std::string()}) {
        const ReadResult result = ReadListFile(bytes);
        EXPECT_TRUE(result.refused()) << bytes.substr(0, 12);
        EXPECT_EQ(result.outcome.message, "Not a valid list file.");
        EXPECT_EQ(CheckConsistent(result.set), "");
    }
}

TEST(OldMyFileReader, PicturesAreGroupedInTheDialogsOrder) {
    const std::vector<std::string> lines{
        "QUARTLEV", "Old", "True", " 1 ", "False", "100", "30", "False", "True",
        Items(1, 60),
        // The leading numeric part of each value counts, 0 when there is none.
        "3x,x,1.6,," + std::string(55, ',') + "0",
        "B,7,b,G,F,10,1A," + ZeroRow(73),
        "7,1,40,30",
    };
    const ReadResult result = ReadOldMyFile(JoinCrLf(lines));
    ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
    const PiecePicture& shardle = result.set.CustomShardlePicture;
    const std::vector<int> firstRow{8, 7, 6, 5, 4, 3, 2, 1, 10, 9};
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(shardle.at(firstRow[static_cast<std::size_t>(i)]), i + 1);
        EXPECT_EQ(shardle.at(firstRow[static_cast<std::size_t>(i)] + 10), i + 11);
        EXPECT_EQ(shardle.at(firstRow[static_cast<std::size_t>(i)] + 50), i + 51);
    }
    const PiecePicture& changer = result.set.CustomChangerPicture;
    EXPECT_EQ(changer.at(8), 3);
    EXPECT_EQ(changer.at(7), 0);
    EXPECT_EQ(changer.at(6), 2);
    EXPECT_EQ(changer.at(5), 0);
    const auto& cells = result.set.Layout(1).Cells;
    EXPECT_EQ(std::vector<int>(cells.begin(), cells.begin() + 7), (std::vector<int>{11, 7, 0, 0, 15, 10, 0}));
    // No option lines and no record line in the older layout.
    EXPECT_TRUE(result.set.UseShardlesDebugger);
    EXPECT_TRUE(result.set.MatchLocksToBlocks);
    EXPECT_EQ(result.set.Layout(1).BallY, 30);
    EXPECT_EQ(result.set.Record(1), LevelRecord{});
}

TEST(OldMyFileReader, NumbersOutsideTheCodesStillStop) {
    const std::string head = "QUARTLEV\r\nOld\r\nFalse\r\n 1 \r\n";
    ExpectStoppedAt(ReadOldMyFile(head + "C,16," + ZeroRow(62) + "\r\n 1 \r\n"), "line 5");
    ExpectStoppedAt(ReadOldMyFile(head + "C,-1," + ZeroRow(62) + "\r\n 1 \r\n"), "line 5");
    const ReadResult letters = ReadOldMyFile(head + "C,D,E," + ZeroRow(61) + "\r\n 1 \r\n");
    ASSERT_TRUE(letters.complete());
    EXPECT_EQ(letters.set.Layout(1).Cells[2], 14);
}

TEST(ListFileReader, ReadsTheLayoutWithoutOptionLinesAndGroupedPictures) {
    std::vector<std::string> lines{"Other", "//LXYZ", "True", " 1 ", "True", "200", "60", "True", "True"};
    for (int value = 1; value <= 60; ++value) lines.push_back(" " + std::to_string(value) + " ");
    lines.push_back(Items(1, 60, " "));
    for (int cell = 0; cell < 80; ++cell) lines.push_back(cell == 1 ? " 6 " : " 0 ");
    for (const char* value : {"12", "1", "40", "3"}) lines.push_back(value);
    const ReadResult result = ReadListFile(JoinCrLf(lines));
    ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
    EXPECT_TRUE(result.set.UseShardlesDebugger);
    EXPECT_TRUE(result.set.MatchLocksToBlocks);
    EXPECT_TRUE(result.set.ArrowBlocksBreakable);
    EXPECT_EQ(result.set.CustomShardlePicture.at(8), 1);
    EXPECT_EQ(result.set.CustomShardlePicture.at(9), 10);
    EXPECT_EQ(result.set.CustomChangerPicture.at(59), 60);
    EXPECT_EQ(result.set.Layout(1).Cells[1], 6);
    EXPECT_EQ(result.set.Layout(1).BallY, 3);

    // Without pictures the line after the custom option is the first cell.
    lines.erase(lines.begin() + 9, lines.begin() + 70);
    lines[8] = "False";
    const ReadResult plain = ReadListFile(JoinCrLf(lines));
    ASSERT_TRUE(plain.complete()) << plain.outcome.where << ": " << plain.outcome.why;
    EXPECT_EQ(plain.set.Layout(1).Cells[1], 6);
    EXPECT_EQ(plain.set.Layout(1).BlockCount, 12);
}

// A Shardles My File with pictures and two levels, to be varied below.
LevelSet Sample() {
    LevelSet set = NewSet(GameKind::Shardles);
    MakeLevels(set, 2);
    set.Title = "Sample";
    set.UseCustomShardles = true;
    set.UseWrapAround = true;
    set.CustomShardlePicture.at(3) = 1;
    set.CustomChangerPicture.at(60) = 1;
    for (int level = 1; level <= 2; ++level) {
        set.Layout(level).Cells[static_cast<std::size_t>(level * 7)] = 6;
        set.Layout(level).Cells[79] = 13;
        set.Layout(level).BlockCount = static_cast<std::int16_t>(20 + level);
        set.Layout(level).LastBlockCount = 1;
        set.Layout(level).BallX = 40;
        set.Layout(level).BallY = static_cast<std::int16_t>(level);
        set.Record(level).CenterLineUnused = true;
        set.Record(level).SpecialUnusedCount = 2;
    }
    return set;
}

std::vector<std::string> SampleLines() { return SplitCrLf(WriteMyFile(Sample()).bytes); }

TEST(MyFileReader, LineEndsMayBeCrLfLfOrCr) {
    const std::string crlf = WriteMyFile(Sample()).bytes;
    const LevelSet expected = test::Carried(Sample(), true);
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        std::string bytes;
        for (const auto& line : SplitCrLf(crlf)) bytes += line + end;
        const ReadResult result = ReadMyFile(bytes);
        ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
        EXPECT_EQ(result.set, expected);
    }
}

TEST(MyFileReader, ItemsMaySitOnAnyLineWithAnySeparator) {
    const auto lines = SampleLines();
    const std::string head = JoinCrLf(std::vector<std::string>(lines.begin(), lines.begin() + 11));
    std::string items = JoinCrLf(std::vector<std::string>(lines.begin() + 11, lines.end()));
    for (const std::string separator : {" ", " , ", "\r\n", "\t\n  ", "  \r", "\t,"}) {
        std::string spread;
        for (char c : items) spread += c == ',' ? separator : std::string(1, c);
        const ReadResult result = ReadMyFile(head + spread);
        ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
        EXPECT_EQ(result.set, test::Carried(Sample(), true));
    }
}

TEST(MyFileReader, BooleanAndCountLinesTakeTheirLooserForms) {
    auto lines = SampleLines();
    lines[2] = " -1 ";   // kind: a number not 0 is true
    lines[3] = "2 levels";  // count: its leading number
    lines[4] = "true";
    lines[7] = "0";
    lines[9] = " False ";
    lines[11] = "1.6," + ZeroRow(59);   // a picture value is rounded
    lines[15] = "#false#,0,0,0,2";     // record flags in any case
    lines[18] = "0,0,0,0,2";           // or as numbers
    const ReadResult result = ReadMyFile(JoinCrLf(lines));
    ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
    EXPECT_TRUE(result.set.IsShardles());
    EXPECT_EQ(result.set.LevelCount(), 2);
    EXPECT_TRUE(result.set.ArrowBlocksBreakable);
    EXPECT_FALSE(result.set.UseWrapAround);
    EXPECT_FALSE(result.set.UseShardlesDebugger);
    EXPECT_EQ(result.set.CustomShardlePicture.at(1), 2);
    EXPECT_FALSE(result.set.Record(1).CenterLineUnused);
    EXPECT_FALSE(result.set.Record(2).CenterLineUnused);
    EXPECT_EQ(result.set.Record(2).SpecialUnusedCount, 2);
}

TEST(MyFileReader, TextLinesKeepEveryCharacter) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Layout(1).Cells[0] = 6;
    set.Title = "  \x80uro, \"quoted\"; \xFF  ";
    set.ExtraLifePoints = "";
    set.BonusClock = " 45,5 ";
    for (auto write : {WriteMyFile, WriteListFile}) {
        const std::string bytes = write(set).bytes;
        const ReadResult result = write == WriteMyFile ? ReadMyFile(bytes) : ReadListFile(bytes);
        ASSERT_TRUE(result.complete()) << result.outcome.why;
        EXPECT_EQ(result.set.Title, set.Title);
        EXPECT_EQ(result.set.ExtraLifePoints, "");
        EXPECT_EQ(result.set.BonusClock, " 45,5 ");
    }
}

TEST(MyFileReader, ValuesOutOfRangeOrNotNumbersStopWhereTheyStand) {
    struct Case {
        int line;               // 0-based line of the sample to change
        std::string text;
        std::string where;
    };
    const std::vector<Case> cases{
        {2, "Maybe", "line 3"},
        {3, " 0 ", "line 4"},
        {3, " 256 ", "line 4"},
        {3, "many", "line 4"},
        {4, "", "line 5"},
        {11, "0,1,256" + std::string(57, ',') + "0", "line 12"},
        {13, "0,16," + ZeroRow(78), "line 14"},
        {16, "0,-1," + ZeroRow(78), "line 17"},
        {16, "0,x," + ZeroRow(78), "line 17"},
        {14, "21,1,32768,1", "line 15"},
        {14, "21,1,-32769,1", "line 15"},
        {15, "#TRUE#,0,0,0,2,", "line 16"},  // the trailing comma leaves an empty item for a cell
        {18, "#MAYBE#,0,0,0,2", "line 19"},
    };
    for (const Case& c : cases) {
        auto lines = SampleLines();
        lines[static_cast<std::size_t>(c.line)] = c.text;
        SCOPED_TRACE(c.text);
        ExpectStoppedAt(ReadMyFile(JoinCrLf(lines)), c.where);
    }
}

TEST(MyFileReader, AStoppedReadKeepsWhatWasRead) {
    auto lines = SampleLines();
    lines[16] = "0,0,0,0,9,16," + ZeroRow(74);
    const ReadResult result = ReadMyFile(JoinCrLf(lines));
    ExpectStoppedAt(result, "line 17");
    const LevelSet full = test::Carried(Sample(), true);
    EXPECT_EQ(result.set.Layout(1), full.Layout(1));
    EXPECT_EQ(result.set.Record(1), full.Record(1));
    EXPECT_EQ(result.set.CustomChangerPicture, full.CustomChangerPicture);
    BlockGrid partial(80, 0);
    partial[4] = 9;
    EXPECT_EQ(result.set.Layout(2).Cells, partial);

    // A level count out of range leaves one level of the kind read.
    lines = SampleLines();
    lines[3] = " 256 ";
    const ReadResult counted = ReadMyFile(JoinCrLf(lines));
    ExpectStoppedAt(counted, "line 4");
    EXPECT_EQ(counted.set.Title, "Sample");
    EXPECT_TRUE(counted.set.IsShardles());
    EXPECT_EQ(counted.set.LevelCount(), 1);
}

}  // namespace
}  // namespace shd
