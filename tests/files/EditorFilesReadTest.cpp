// Reading My Files, Old My Files and list files: refusals, the older layouts,
// the forms a value may take, and reads that stop.
#include <gtest/gtest.h>

#include "files/EditorFiles.h"
#include "files/FileTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

using test::JoinCrLf;
using test::SplitCrLf;

std::string Repeat(const std::string& text, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += text;
    return out;
}

std::string ZeroRow(int count) { return Repeat("0,", count - 1) + " 0 "; }

void ExpectStoppedAt(const ReadResult& result, const std::string& where) {
    EXPECT_TRUE(result.stopped());
    EXPECT_EQ(result.outcome.where, where);
    EXPECT_FALSE(result.outcome.why.empty());
    EXPECT_EQ(CheckConsistent(result.set), "");
    EXPECT_EQ(result.set.CurrentLevel, 1);
}

TEST(EditorFileRefusals, MagicWordAndListHeaderMustMatch) {
    for (auto read : {ReadMyFile, ReadOldMyFile}) {
        for (const std::string bytes : {"quartlev\r\nT\r\nFalse\r\n 1 \r\n", "QUARTLEV \r\nT\r\n", " QUARTLEV\r\n",
                                        "QUARTLEVX\r\n", "", "\r\n"}) {
            const ReadResult result = read(bytes);
            EXPECT_TRUE(result.refused()) << bytes;
            EXPECT_EQ(result.outcome.message, "Not one of my files.");
            EXPECT_EQ(CheckConsistent(result.set), "");
        }
    }
    // Any header that begins with "//L" will do (see the older layouts below), no other.
    const std::string body = "False\r\n 1 \r\n";
    for (const std::string& bytes : {"T\r\n//lQRVLE\r\n" + body, "T\r\n\r\n" + body, "T\r\n/LQRVLE\r\n" + body,
                                     std::string("//LQRVLE\r\n"), std::string()}) {
        const ReadResult result = ReadListFile(bytes);
        EXPECT_TRUE(result.refused()) << bytes.substr(0, 12);
        EXPECT_EQ(result.outcome.message, "Not a valid list file.");
        EXPECT_EQ(CheckConsistent(result.set), "");
    }
}

// The layouts from elsewhere, an Old My File and another list file: no option
// lines, and the pictures grouped by rows in the custom piece dialog's order,
// where the leading number of each value counts (0 when there is none).
TEST(OlderLayouts, ReadGroupedPicturesWithoutOptionOrRecordLines) {
    std::string oneToSixty = "1";
    for (int value = 2; value <= 60; ++value) oneToSixty += "," + std::to_string(value);
    const std::vector<std::string> setWide{
        "True", " 1 ", "True", "200", "60", "True", "True", oneToSixty, "3x,x,1.6,," + std::string(55, ',') + "0"};
    LevelSet expected = NewSet(GameKind::Shardles);
    expected.Title = "Old";
    expected.ArrowBlocksBreakable = expected.UseWrapAround = expected.UseCustomShardles = true;
    expected.ExtraLifePoints = "200";
    expected.BonusClock = "60";
    const int shown[] = {8, 7, 6, 5, 4, 3, 2, 1, 10, 9};
    for (int i = 0; i < 60; ++i)
        expected.CustomShardlePicture.at(i / 10 * 10 + shown[i % 10]) = static_cast<std::uint8_t>(i + 1);
    expected.CustomChangerPicture.at(8) = 3;
    expected.CustomChangerPicture.at(6) = 2;
    BlockGrid cells{11, 7, 0, 0, 15, 10};
    cells.resize(80);
    expected.Layout(1) = {cells, 7, 1, 40, 30};

    // The Old My File writes codes 10 to 15 as the letters A to F; any other
    // item that is not a number leaves its cell 0.
    std::vector<std::string> old{"QUARTLEV", "Old"};
    old.insert(old.end(), setWide.begin(), setWide.end());
    old.insert(old.end(), {"B,7,b,G,F,10,1A," + ZeroRow(73), "7,1,40,30"});
    const ReadResult result = ReadOldMyFile(JoinCrLf(old));
    ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
    EXPECT_EQ(result.set, expected);
    // Numbers outside the codes still stop the read.
    old[11] = "C,16," + ZeroRow(78);
    ExpectStoppedAt(ReadOldMyFile(JoinCrLf(old)), "line 12");

    std::vector<std::string> list{"Old", "//LXYZ"};
    list.insert(list.end(), setWide.begin(), setWide.end());
    for (std::uint8_t code : cells) list.push_back(" " + std::to_string(code) + " ");
    list.insert(list.end(), {"7", "1", "40", "30"});
    const ReadResult listed = ReadListFile(JoinCrLf(list));
    ASSERT_TRUE(listed.complete()) << listed.outcome.where << ": " << listed.outcome.why;
    EXPECT_EQ(listed.set, expected);
    // Without pictures the line after the custom option is the first cell.
    list.erase(list.begin() + 9, list.begin() + 11);
    list[8] = "False";
    expected.UseCustomShardles = false;
    expected.CustomShardlePicture = expected.CustomChangerPicture = {};
    const ReadResult plain = ReadListFile(JoinCrLf(list));
    ASSERT_TRUE(plain.complete()) << plain.outcome.where << ": " << plain.outcome.why;
    EXPECT_EQ(plain.set, expected);
}

// A Shardles My File with pictures and two levels, to be varied below.
LevelSet Sample() {
    LevelSet set = test::RandomSet({GameKind::Shardles, 2, true}, 3);
    for (LevelRecord& record : set.Records) {
        record.CenterLineUnused = true;
        record.SpecialUnusedCount = 2;
    }
    return set;
}

std::vector<std::string> SampleLines() { return SplitCrLf(WriteMyFile(Sample()).bytes); }

TEST(MyFileReader, LinesMayEndInCrLfLfOrCrAndItemsSitAnywhere) {
    const auto lines = SampleLines();
    std::vector<std::string> variants;
    for (const std::string end : {"\n", "\r"}) {
        variants.emplace_back();
        for (const auto& line : lines) variants.back() += line + end;
    }
    // Past the set-wide lines any separator will do, and a line end is one.
    const std::string head = JoinCrLf(std::vector<std::string>(lines.begin(), lines.begin() + 11));
    const std::string items = JoinCrLf(std::vector<std::string>(lines.begin() + 11, lines.end()));
    for (const std::string separator : {" ", " , ", "\r\n", "\t\n  ", "  \r", "\t,"}) {
        variants.push_back(head);
        for (char c : items) variants.back() += c == ',' ? separator : std::string(1, c);
    }
    for (const std::string& bytes : variants) {
        const ReadResult result = ReadMyFile(bytes);
        ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
        EXPECT_EQ(result.set, test::Carried(Sample(), true));
    }
}

TEST(MyFileReader, BooleanAndCountLinesTakeTheirLooserForms) {
    auto lines = SampleLines();
    lines[2] = " -1 ";      // kind: a number not 0 is true
    lines[3] = "2 levels";  // count: its leading number
    lines[4] = "true";
    lines[7] = "0";
    lines[9] = " False ";
    lines[11] = "1.6," + ZeroRow(59);  // a picture value is rounded
    lines[15] = "#false#,0,0,0,2";    // record flags in any case
    lines[18] = "0,0,0,0,2";          // or as numbers
    LevelSet expected = test::Carried(Sample(), true);
    expected.ArrowBlocksBreakable = true;
    expected.UseWrapAround = expected.UseShardlesDebugger = false;
    expected.CustomShardlePicture = {};
    expected.CustomShardlePicture.at(1) = 2;
    expected.Record(1).CenterLineUnused = expected.Record(2).CenterLineUnused = false;
    const ReadResult result = ReadMyFile(JoinCrLf(lines));
    ASSERT_TRUE(result.complete()) << result.outcome.where << ": " << result.outcome.why;
    EXPECT_EQ(result.set, expected);
}

// A stopped read keeps what was read before the fault: a level count out of
// range leaves one level of the kind read.
TEST(MyFileReader, ValuesOutOfRangeOrNotNumbersStopWhereTheyStand) {
    const struct {
        int line;  // 0-based line of the sample to change
        std::string text;
        std::string where;
    } cases[] = {
        {2, "Maybe", "line 3"},
        {3, " 0 ", "line 4"},
        {3, " 256 ", "line 4"},
        {3, "many", "line 4"},
        {11, "0,1,256" + std::string(57, ',') + "0", "line 12"},
        {13, "0,16," + ZeroRow(78), "line 14"},
        {16, "0,-1," + ZeroRow(78), "line 17"},
        {16, "0,x," + ZeroRow(78), "line 17"},
        {14, "21,1,32768,1", "line 15"},
        {14, "21,1,-32769,1", "line 15"},
        {15, "#TRUE#,0,0,0,2,", "line 16"},  // the trailing comma leaves an empty item for a cell
        {18, "#MAYBE#,0,0,0,2", "line 19"},
    };
    const std::string title = Sample().Title;
    for (const auto& c : cases) {
        auto lines = SampleLines();
        lines[static_cast<std::size_t>(c.line)] = c.text;
        SCOPED_TRACE(c.text);
        const ReadResult result = ReadMyFile(JoinCrLf(lines));
        ExpectStoppedAt(result, c.where);
        EXPECT_EQ(result.set.Title, title);
        EXPECT_EQ(result.set.IsShardles(), c.line > 2);
        EXPECT_EQ(result.set.LevelCount(), c.line > 12 ? 2 : 1);
    }

    auto lines = SampleLines();
    lines[16] = "0,0,0,0,9,16," + ZeroRow(74);
    const ReadResult result = ReadMyFile(JoinCrLf(lines));
    ExpectStoppedAt(result, "line 17");
    LevelSet expected = test::Carried(Sample(), true);
    expected.Layout(2) = {BlockGrid(80, 0), 0, 0, 0, 0};
    expected.Layout(2).Cells[4] = 9;
    expected.Record(2) = {};
    EXPECT_EQ(result.set, expected);
}

}  // namespace
}  // namespace shd
