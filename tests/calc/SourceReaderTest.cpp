#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "calc/SourceFile.h"
#include "calc/CalcTestSupport.h"
#include "support/Generators.h"

namespace shd {
namespace {

const std::string kDb = "        .db             ";

std::string Join(const std::vector<std::string>& lines, const std::string& end = "\r\n") {
    std::string text;
    for (const auto& line : lines) text += line + end;
    return text;
}

// A one-level Tiltbash source whose grid lines are given (8 lines of values).
std::string TiltbashSource(const std::vector<std::string>& grid, const std::string& numbers = kDb + "0",
                           const std::string& title = "AB") {
    std::vector<std::string> lines = {"        .org             9327h", kDb + "\"TL1KZ\"",
                                      kDb + std::to_string(title.size() + 5), kDb + "\"" + title + "\",$00",
                                      kDb + std::to_string(title.size() + 1), kDb + "$00,$00", kDb + "1", "",
                                      "level1:"};
    lines.insert(lines.end(), grid.begin(), grid.end());
    lines.push_back(numbers);
    for (const char* tail : {"", ".end", "END"}) lines.push_back(tail);
    return Join(lines);
}

std::vector<std::string> EmptyRows(int rows) { return std::vector<std::string>(static_cast<std::size_t>(rows), kDb + "$00,$00,$00,$00"); }

// A one-level Shardles source from its settings operand, optional picture
// lines (label included) and numbers line.
std::string ShardlesSource(const std::string& settings, const std::vector<std::string>& pictures = {},
                           const std::string& numbers = kDb + "1,2,3,4", const std::string& title = "Title") {
    std::vector<std::string> lines = {"        .org             9327h", kDb + "\"Shd1KZ\"", kDb + settings,
                                      kDb + std::to_string(title.size() + 5)};
    lines.insert(lines.end(), pictures.begin(), pictures.end());
    for (const std::string& line : {kDb + "\"" + title + "\",$00", kDb + std::to_string(title.size() + 1),
                                    kDb + "$00,$00", kDb + "1", std::string(), std::string("level1:")})
        lines.push_back(line);
    for (const auto& row : EmptyRows(10)) lines.push_back(row);
    lines.push_back(numbers);
    return Join(lines);
}

std::vector<std::string> PictureLines(const std::string& label, const std::string& firstRow = "00000000b") {
    std::vector<std::string> lines = {label, kDb + firstRow};
    for (int i = 1; i < 12; ++i) lines.push_back(kDb + "00000000b");
    lines.push_back("blockE:");
    for (int i = 0; i < 12; ++i) lines.push_back(kDb + "00000000b");
    return lines;
}

void ExpectStoppedConsistent(const ReadResult& read, const std::string& where) {
    EXPECT_TRUE(read.stopped()) << read.outcome.message;
    EXPECT_EQ(read.outcome.where, where) << read.outcome.why;
    EXPECT_FALSE(read.outcome.why.empty());
    EXPECT_EQ(CheckConsistent(read.set), "");
}

TEST(CalcSourceReader, TwentyOneLineTiltbashSource) {
    const ReadResult read = ReadSourceFile(TiltbashSource(EmptyRows(8)));
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    LevelSet want = NewSet(GameKind::Tiltbash);
    want.Title = "AB";
    EXPECT_EQ(read.set, want);
}

TEST(CalcSourceReader, OriginNeedsLowerCaseH) {
    std::string source = TiltbashSource(EmptyRows(8));
    source.replace(source.find("9327h"), 5, "9327H");
    const ReadResult read = ReadSourceFile(source);
    ASSERT_TRUE(read.refused());
    EXPECT_EQ(read.outcome.message, "Not compilable code.");
    EXPECT_EQ(CheckConsistent(read.set), "");
    // Comments and blank lines may come first; the column does not matter.
    EXPECT_TRUE(ReadSourceFile("; levels\r\n\r\n.org 9327h\r\n" + source.substr(source.find('\n') + 1)).complete());
    // A file that ends before its origin line has replaced nothing: it is
    // turned away without a message, saying where.
    for (auto [text, where] : {std::pair<const char*, const char*>{"", "line 1"}, {"\r\n;nothing\r\n", "line 3"}}) {
        const ReadResult empty = ReadSourceFile(text);
        EXPECT_TRUE(empty.refused());
        EXPECT_EQ(empty.outcome.message, "");
        EXPECT_EQ(empty.outcome.where, where);
        EXPECT_EQ(CheckConsistent(empty.set), "");
    }
}

TEST(CalcSourceReader, IdPattern) {
    auto kindOf = [](const std::string& id) {
        std::string source = ShardlesSource("%00000000");
        source.replace(source.find("\"Shd1KZ\""), 8, id);
        return ReadSourceFile(source).set.Kind;
    };
    EXPECT_EQ(kindOf("\"Shd1KZ\""), GameKind::Shardles);
    EXPECT_EQ(kindOf("xSyZ"), GameKind::Shardles);
    EXPECT_EQ(kindOf("SZ"), GameKind::Shardles);
    EXPECT_EQ(kindOf("ZS"), GameKind::Tiltbash);
    EXPECT_EQ(kindOf("sz"), GameKind::Tiltbash);
    EXPECT_EQ(ReadSourceFile(TiltbashSource(EmptyRows(8))).set.Kind, GameKind::Tiltbash);
}

TEST(CalcSourceReader, SettingsDigits) {
    struct Case {
        const char* operand;
        const char* bonus;
        const char* life;
        bool wrap;
        bool arrow;
    };
    for (const Case& c : {Case{"%01111111", "120", "800", true, true}, Case{"%00000000", "30", "100", false, false},
                          Case{"%11111111", "120", "800", true, true}, Case{"%00101001", "60", "300", false, true},
                          Case{"%00011010", "30", "700", true, false}, Case{"%01010000", "90", "500", false, false},
                          Case{"0000000101", "30", "200", false, true}}) {
        SCOPED_TRACE(c.operand);
        const ReadResult read = ReadSourceFile(ShardlesSource(c.operand));
        ASSERT_TRUE(read.complete()) << read.outcome.why;
        EXPECT_EQ(read.set.Kind, GameKind::Shardles);
        EXPECT_EQ(read.set.BonusClock, c.bonus);
        EXPECT_EQ(read.set.ExtraLifePoints, c.life);
        EXPECT_EQ(read.set.UseWrapAround, c.wrap);
        EXPECT_EQ(read.set.ArrowBlocksBreakable, c.arrow);
        EXPECT_EQ(read.set.Title, "Title");
        EXPECT_EQ(read.set.Layout(1).LastBlockCount, 4);
    }
}

TEST(CalcSourceReader, PictureLabel) {
    // Shardles compares the label in upper case.
    for (const char* label : {"blockD:", "blockd:", "BLOCKD:", "BlockD: ; the shardle"}) {
        SCOPED_TRACE(label);
        const ReadResult read = ReadSourceFile(ShardlesSource("%00000000", PictureLines(label, "00000001b")));
        ASSERT_TRUE(read.complete()) << read.outcome.why;
        EXPECT_TRUE(read.set.UseCustomShardles);
        EXPECT_EQ(read.set.CustomShardlePicture.at(1), 1);
        EXPECT_EQ(read.set.Title, "Title");
    }
    // Tiltbash takes only an upper-case label; anything else is the title token.
    std::vector<std::string> upper = {"BLOCKD:", kDb + "10000000b"};
    for (int i = 1; i < 12; ++i) upper.push_back(kDb + "00000000b");
    upper.push_back("blockE:");
    for (int i = 0; i < 12; ++i) upper.push_back(kDb + "00000001b");
    std::string source = TiltbashSource(EmptyRows(8));
    const std::size_t title = source.find(kDb + "\"AB\"");
    ReadResult read = ReadSourceFile(std::string(source).insert(title, Join(upper)));
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    EXPECT_TRUE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.CustomShardlePicture.at(8), 1);
    EXPECT_EQ(read.set.CustomChangerPicture.at(1), 1);

    upper[0] = "blockD:";
    read = ReadSourceFile(std::string(source).insert(title, Join(upper)));
    ExpectStoppedConsistent(read, "line 6");  // the second picture row taken as TitleBackOffset 0
    EXPECT_FALSE(read.set.UseCustomShardles);
}

TEST(CalcSourceReader, PictureRows) {
    std::vector<std::string> lines = PictureLines("blockD:");
    lines[1] = kDb + "23456789b";         // row 0, in-row numbers 8 down to 1
    lines[2] = kDb + "10000001b";         // row 1: cells 18 and 11
    lines[7] = kDb + "11000000b";         // row 0, in-row numbers 10 and 9
    lines[12] = kDb + "01111111b";        // row 5: only cell 59
    lines[13] = "blockE: ; changer";      // passed over by the first changer row
    lines[19] = kDb + "00000000b ;";      // comment after a row
    lines[20] = kDb + "10000000b";        // changer row 0: cell 10
    const ReadResult read = ReadSourceFile(ShardlesSource("%00000000", lines));
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    PiecePicture shardle, changer;
    for (int k = 1; k <= 8; ++k) shardle.at(k) = static_cast<std::uint8_t>(10 - k);
    shardle.at(18) = shardle.at(11) = 1;
    shardle.at(10) = shardle.at(9) = 1;
    shardle.at(59) = 1;
    changer.at(10) = 1;
    EXPECT_EQ(read.set.CustomShardlePicture, shardle);
    EXPECT_EQ(read.set.CustomChangerPicture, changer);
}

TEST(CalcSourceReader, LabelLineMayCarryTheFirstRow) {
    std::vector<std::string> lines = PictureLines("blockD:");
    lines.erase(lines.begin() + 1);
    lines[0] = "blockD:        .db             00000011b";
    const ReadResult read = ReadSourceFile(ShardlesSource("%00000000", lines));
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    EXPECT_EQ(read.set.CustomShardlePicture.at(1), 1);
    EXPECT_EQ(read.set.CustomShardlePicture.at(2), 1);
    EXPECT_EQ(read.set.CustomShardlePicture.at(11), 0);
}

TEST(CalcSourceReader, BadPictureRowStops) {
    std::vector<std::string> lines = PictureLines("blockD:");
    // One token without eight digits is passed over; the second is taken as the row.
    lines[3] = kDb + "0000x000b";
    lines[4] = kDb + "x";
    const ReadResult read = ReadSourceFile(ShardlesSource("%00000000", lines));
    ExpectStoppedConsistent(read, "line 9");
    EXPECT_TRUE(read.set.UseCustomShardles);
    EXPECT_EQ(read.set.Title, "Please Add a Title");
}

TEST(CalcSourceReader, GridValues) {
    std::vector<std::string> grid = EmptyRows(8);
    grid[0] = kDb + "$F0,$0F,$ab,F0h";
    grid[1] = kDb + "240,$12;note";
    grid[2] = kDb + "007,level1:,$3C";  // a label may stand before any value
    grid[3] = kDb + "$00,$00,$00,$00,$00";  // a fifth value on a line is fine: only the order counts
    grid[7] = kDb + "$00,$00,$00,$00,$00,$00,$FF";  // 32 values in all
    const ReadResult read = ReadSourceFile(TiltbashSource(grid, kDb + "128"));
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    const auto& cells = read.set.Layout(1).Cells;
    const std::vector<int> want = {15, 0, 0, 15, 0, 0, 15, 0, 15, 0, 1, 2, 0, 7, 3, 12};
    for (std::size_t i = 0; i < want.size(); ++i) EXPECT_EQ(cells[i], want[i]) << "cell " << i;
    EXPECT_EQ(cells[62], 15);
    EXPECT_EQ(cells[63], 15);
    EXPECT_EQ(read.set.Layout(1).BlockCount, 128);
}

TEST(CalcSourceReader, GridValuesThatFail) {
    struct Case {
        const char* row;
        const char* why;
    };
    for (const Case& c : {Case{"$12 ;note,$00,$00,$00", "blank before the comment"},
                          Case{"$00,12,$00,$00", "lone decimal of two characters"},
                          Case{"$00,$0,$00,$00", "hex of two characters"}, Case{"$00,999,$00,$00", "above 255"},
                          Case{"$00,-12,$00,$00", "below 0"}, Case{"$00,12x,$00,$00", "no digit at the end"}}) {
        SCOPED_TRACE(c.why);
        std::vector<std::string> grid = EmptyRows(8);
        grid[2] = kDb + c.row;
        ExpectStoppedConsistent(ReadSourceFile(TiltbashSource(grid)), "line 12");
    }
}

TEST(CalcSourceReader, LevelLabelsArePassedOver) {
    LevelSet set = test::RandomSet({GameKind::Tiltbash, 12, false, 3}, 12u);
    std::string source = WriteSourceFile(set).bytes;
    ASSERT_NE(source.find("level12:\r\n"), std::string::npos);
    const ReadResult read = ReadSourceFile(source);
    ASSERT_TRUE(read.complete());
    EXPECT_EQ(read.set.Layout(12).Cells, set.Layout(12).Cells);
    EXPECT_EQ(read.set.Layout(12).BlockCount, set.Layout(12).BlockCount);
}

TEST(CalcSourceReader, TitleCutByTitleBackOffset) {
    auto titleOf = [](const std::string& title, const std::string& backOffset) {
        std::string source = TiltbashSource(EmptyRows(8), kDb + "0", title);
        const std::string line = "\r\n" + kDb + std::to_string(title.size() + 1) + "\r\n";
        source.replace(source.find(line), line.size(), "\r\n" + kDb + backOffset + "\r\n");
        return ReadSourceFile(source);
    };
    EXPECT_EQ(titleOf("Fives", "6").set.Title, "Fives");
    EXPECT_EQ(titleOf("Fives", "4").set.Title, "ves");
    EXPECT_EQ(titleOf("Fives", "100").set.Title, kDb.substr(8) + "\"Fives");  // the whole shortened token
    EXPECT_EQ(titleOf("", "1").set.Title, "");
    EXPECT_EQ(titleOf("Q", "2").set.Title, "Q");
    EXPECT_EQ(titleOf("Say \"hi\"", "9").set.Title, "Say \"hi\"");  // quotes are ordinary
    ExpectStoppedConsistent(titleOf("Fives", "000"), "line 5");
    // A comma splits the title line; the shift makes the read fail.
    EXPECT_TRUE(titleOf("A,B", "4").stopped());
    // A semicolon cuts the title.
    const ReadResult cut = titleOf("A;B", "4");
    ASSERT_TRUE(cut.complete());
    EXPECT_NE(cut.set.Title, "A;B");
}

TEST(CalcSourceReader, LevelCountMustBeOneTo255) {
    for (const char* count : {"$00", "000", "256", "-01"}) {
        SCOPED_TRACE(count);
        std::string source = TiltbashSource(EmptyRows(8));
        const std::string line = "\r\n" + kDb + "1\r\n";
        source.replace(source.find(line), line.size(), "\r\n" + kDb + count + "\r\n");
        ExpectStoppedConsistent(ReadSourceFile(source), "line 7");
    }
}

TEST(CalcSourceReader, NumbersLines) {
    // Shardles: four fields straight from the file; the last three as numbers.
    ReadResult read = ReadSourceFile(ShardlesSource("%00000000", {}, kDb + "94, 62 ,x,200"));
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    EXPECT_EQ(read.set.Layout(1).BallX, 94);
    EXPECT_EQ(read.set.Layout(1).BallY, 62);
    EXPECT_EQ(read.set.Layout(1).BlockCount, 0);
    EXPECT_EQ(read.set.Layout(1).LastBlockCount, 200);
    // No comment or blank line may stand in front of them.
    ExpectStoppedConsistent(ReadSourceFile(ShardlesSource("%00000000", {}, "\r\n" + kDb + "1,2,3,4")), "line 21");
    ExpectStoppedConsistent(ReadSourceFile(ShardlesSource("%00000000", {}, kDb + "1,2,3")), "line 22");
    ExpectStoppedConsistent(ReadSourceFile(ShardlesSource("%00000000", {}, kDb + "1,2,3,40000")), "line 21");
    // Tiltbash: the next whole line by the decimal rule.
    read = ReadSourceFile(TiltbashSource(EmptyRows(8), kDb + "128 ; blocks"));
    ASSERT_TRUE(read.complete());
    EXPECT_EQ(read.set.Layout(1).BlockCount, 128);
    ExpectStoppedConsistent(ReadSourceFile(TiltbashSource(EmptyRows(8), "; count\r\n" + kDb + "128")), "line 18");
}

TEST(CalcSourceReader, CommentsAndBlankLinesBetweenTokens) {
    const LevelSet set = test::RandomSet({GameKind::Shardles, 2, true, 8}, 4u);
    std::string source = WriteSourceFile(set).bytes;
    std::string commented;
    std::size_t start = 0;
    for (std::size_t end; (end = source.find("\r\n", start)) != std::string::npos; start = end + 2) {
        const std::string line = source.substr(start, end - start);
        const bool numbers = line.find(',') != std::string::npos && line.find('$') == std::string::npos &&
                             line.find('"') == std::string::npos;
        if (!numbers) commented += "; note\r\n\r\n";
        commented += line + "\r\n";
    }
    const ReadResult read = ReadSourceFile(commented);
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    test::ExpectSameAsImageCarries(set, read.set);
}

TEST(CalcSourceReader, LineEndsAndTabs) {
    const LevelSet set = test::RandomSet({GameKind::Shardles, 3, true, 11}, 9u);
    const std::string source = WriteSourceFile(set).bytes;
    auto replaced = [&](const std::string& from, const std::string& to) {
        std::string text = source;
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
            text.replace(at, from.size(), to);
        return text;
    };
    for (const std::string& text : {replaced("\r\n", "\n"), replaced("\r\n", "\r"),
                                    replaced("        .db             ", "\t.db             ")}) {
        const ReadResult read = ReadSourceFile(text);
        ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
        test::ExpectSameAsImageCarries(set, read.set);
    }
}

TEST(CalcSourceReader, EveryTruncationStopsWithAConsistentSet) {
    for (const test::SetShape& shape : {test::SetShape{GameKind::Shardles, 2, true, 4},
                                        test::SetShape{GameKind::Tiltbash, 2, false, 4}}) {
        const std::string source = WriteSourceFile(test::RandomSet(shape, 31u)).bytes;
        // Everything after the last level's numbers is never read.
        const std::size_t last = source.rfind("\r\n\r\n.end");
        ASSERT_TRUE(ReadSourceFile(source.substr(0, last)).complete());
        for (std::size_t length = 0; length < last; ++length) {
            const ReadResult read = ReadSourceFile(source.substr(0, length));
            SCOPED_TRACE(length);
            if (length < 6) {
                ASSERT_FALSE(read.complete());
            }
            ASSERT_EQ(CheckConsistent(read.set), "");
            if (read.stopped()) {
                ASSERT_EQ(read.outcome.where.rfind("line ", 0), 0u);
            }
        }
    }
}

TEST(CalcSourceReader, RandomTextNeverBreaksTheSet) {
    std::mt19937 rng(99);
    const std::vector<std::string> pieces = {
        "        .db             ", "$", "F", "0", "1", "9", "h", ",", ";", "\r\n", "\n", "\r", " ", "\t",
        "level1:", "blockD:", "\"", "S", "Z", "%", "00000000b", "255", "-", "a"};
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> length(0, 400);
    for (int i = 0; i < 2000; ++i) {
        std::string text = i % 2 ? ".org 9327h\r\n\"Shd1KZ\"\r\n" : ".org 9327h\r\nTL1KZ\r\n";
        for (int j = length(rng); j > 0; --j) text += pieces[pick(rng)];
        const ReadResult read = ReadSourceFile(text);
        ASSERT_EQ(CheckConsistent(read.set), "") << text;
    }
}

}  // namespace
}  // namespace shd
