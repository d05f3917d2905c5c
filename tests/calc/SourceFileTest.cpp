#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <vector>

#include "calc/CalcTestSupport.h"
#include "calc/SourceFile.h"

namespace shd {
namespace {

using Lines = std::vector<std::string>;

const std::string kDb = "        .db             ";

std::string Join(const Lines& lines) {
    std::string text;
    for (const auto& line : lines) text += line + "\r\n";
    return text;
}

Lines Write(const LevelSet& set) {
    const WriteResult source = WriteSourceFile(set);
    EXPECT_TRUE(source.ok) << source.message;
    Lines lines;
    for (std::size_t start = 0, end; (end = source.bytes.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(source.bytes.substr(start, end - start));
    EXPECT_EQ(Join(lines), source.bytes);  // CR LF ends every line
    return lines;
}

// A Tiltbash set with one empty level, as written: 21 lines.
Lines TiltbashLines(const std::string& title = "AB") {
    Lines lines = {"        .org             9327h", kDb + "\"TL1KZ\"", kDb + std::to_string(title.size() + 5),
                   kDb + "\"" + title + "\",$00", kDb + std::to_string(title.size() + 1), kDb + "$00,$00",
                   kDb + "1", "", "level1:"};
    lines.insert(lines.end(), 8, kDb + "$00,$00,$00,$00");
    lines.insert(lines.end(), {kDb + "0", "", ".end", "END"});
    return lines;
}

// A written Shardles set titled "Title", up to its numbers on line 21.
Lines ShardlesLines() {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "Title";
    Lines lines = Write(set);
    lines.resize(21);
    return lines;
}

ReadResult Read(Lines lines, std::initializer_list<std::pair<std::size_t, std::string>> edits = {}) {
    for (const auto& [index, text] : edits) lines[index] = text;
    return ReadSourceFile(Join(lines));
}

Lines PictureLines(const std::string& label, const std::string& firstRow = "00000000b") {
    Lines lines(26, kDb + "00000000b");
    lines[0] = label;
    lines[1] = kDb + firstRow;
    lines[13] = "blockE:";
    return lines;
}

// The picture lines go in before the title.
ReadResult ReadWithPictures(const Lines& pictures, Lines lines = ShardlesLines()) {
    const auto title = std::find_if(lines.begin() + 2, lines.end(), [](auto& l) { return l.starts_with(kDb + '"'); });
    lines.insert(title, pictures.begin(), pictures.end());
    return Read(lines);
}

void ExpectStoppedConsistent(const ReadResult& read, const std::string& where) {
    EXPECT_TRUE(read.stopped()) << read.outcome.message;
    EXPECT_EQ(read.outcome.where, where) << read.outcome.why;
    EXPECT_FALSE(read.outcome.why.empty());
    EXPECT_EQ(CheckConsistent(read.set), "");
}

TEST(CalcSource, TwentyOneLineTiltbashSourceBothWays) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "AB";
    set.UseCustomShardles = true;  // a Tiltbash set never carries pictures
    ASSERT_EQ(TiltbashLines().size(), 21u);
    EXPECT_EQ(WriteSourceFile(set).bytes, Join(TiltbashLines()));
    const ReadResult read = Read(TiltbashLines());
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    EXPECT_EQ(read.set, test::WhatTheImageCarries(set));
}

// ---------------------------------------------------------------- writer

TEST(CalcSourceWriter, ShardlesWithPictures) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "S;x,\"\xE9";  // written unchanged
    set.BonusClock = "60";
    set.ExtraLifePoints = "300";
    set.ArrowBlocksBreakable = set.UseCustomShardles = true;
    // Row 1 is cells 11 to 20: 18 down to 11, then 20 and 19.
    for (int cell : {1, 18, 12, 20}) set.CustomShardlePicture.at(cell) = 1;
    set.CustomChangerPicture.at(59) = set.CustomChangerPicture.at(51) = 1;
    LevelLayout& level = set.Layout(1);
    const std::uint8_t row[8] = {10, 11, 12, 13, 14, 15, 0, 1};
    std::copy(row, row + 8, level.Cells.begin() + 72);  // row 9, the last
    std::tie(level.BallX, level.BallY, level.BlockCount, level.LastBlockCount) = std::tuple(-1, 5, 300, 1);

    Lines rows(24, kDb + "00000000b");
    rows[0] = kDb + "00000001b";
    rows[1] = kDb + "10000010b";
    rows[7] = kDb + "10000000b";
    rows[12 + 5] = kDb + "00000001b";
    rows[12 + 11] = kDb + "01000000b";
    Lines want = {"        .org             9327h", kDb + "\"Shd1KZ\"", kDb + "%00101001", kDb + "35", "blockD:"};
    want.insert(want.end(), rows.begin(), rows.begin() + 12);
    want.push_back("blockE:");
    want.insert(want.end(), rows.begin() + 12, rows.end());
    want.insert(want.end(), {kDb + "\"S;x,\"\xE9\",$00", kDb + "7", kDb + "$00,$00", kDb + "1", "", "level1:"});
    want.insert(want.end(), 9, kDb + "$00,$00,$00,$00");
    want.insert(want.end(), {kDb + "$AB,$CD,$EF,$01", kDb + "255,5,44,1", "", ".end", "END"});  // low bytes
    EXPECT_EQ(Write(set), want);
}

TEST(CalcSourceWriter, LevelLabelsCountUp) {
    const Lines lines = Write(test::RandomSet({GameKind::Tiltbash, 255, false, 4}, 8u));
    ASSERT_EQ(lines.size(), 8u + 255 * (1 + 8 + 1 + 1) + 2);
    for (std::size_t level = 1; level <= 255; ++level)
        EXPECT_EQ(lines[8 + 11 * (level - 1)], "level" + std::to_string(level) + ":");
}

// ---------------------------------------------------------------- reader

TEST(CalcSourceReader, OriginNeedsLowerCaseH) {
    const ReadResult read = Read(TiltbashLines(), {{0, "        .org             9327H"}});
    ASSERT_TRUE(read.refused());
    EXPECT_EQ(read.outcome.message, "Not compilable code.");
    EXPECT_EQ(CheckConsistent(read.set), "");
    // Comments and blank lines may come first; the column does not matter.
    EXPECT_TRUE(Read(TiltbashLines(), {{0, "; levels\r\n\r\n.org 9327h"}}).complete());
    // A file that ends before its origin line has replaced nothing: it is
    // turned away without a message, saying where.
    for (auto [text, where] : {std::pair{"", "line 1"}, {"\r\n;nothing\r\n", "line 3"}}) {
        const ReadResult empty = ReadSourceFile(text);
        EXPECT_EQ(std::tuple(empty.refused(), empty.outcome.message, empty.outcome.where), std::tuple(true, "", where));
    }
}

TEST(CalcSourceReader, IdPatternAndSettingsDigits) {
    for (auto [id, kind] : {std::pair{"\"Shd1KZ\"", GameKind::Shardles}, {"xSyZ", GameKind::Shardles},
                            {"SZ", GameKind::Shardles}, {"ZS", GameKind::Tiltbash}, {"sz", GameKind::Tiltbash}})
        EXPECT_EQ(Read(ShardlesLines(), {{1, kDb + id}}).set.Kind, kind) << id;
    // The first digit is not looked at.
    for (auto [digits, bonus, life, flags] : {std::tuple{"%11111111", "120", "800", true}, {"%00000000", "30", "100", false}}) {
        const LevelSet read = Read(ShardlesLines(), {{2, kDb + digits}}).set;
        EXPECT_EQ(std::tuple(read.BonusClock, read.ExtraLifePoints, read.UseWrapAround, read.ArrowBlocksBreakable),
                  std::tuple(bonus, life, flags, flags))
            << digits;
    }
}

TEST(CalcSourceReader, PictureLabel) {
    // Shardles compares the label in upper case.
    for (const char* label : {"blockD:", "blockd:", "BLOCKD:", "BlockD: ; the shardle"}) {
        const ReadResult read = ReadWithPictures(PictureLines(label, "00000001b"));
        ASSERT_TRUE(read.complete()) << label << ": " << read.outcome.why;
        EXPECT_TRUE(read.set.UseCustomShardles);
        EXPECT_EQ(read.set.CustomShardlePicture.at(1), 1);
        EXPECT_EQ(read.set.Title, "Title");
    }
    // Tiltbash takes only an upper-case label; anything else is the title token.
    ReadResult read = ReadWithPictures(PictureLines("BLOCKD:", "10000000b"), TiltbashLines());
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    EXPECT_EQ(read.set.CustomShardlePicture.at(8), 1);
    EXPECT_EQ(read.set.Title, "AB");
    read = ReadWithPictures(PictureLines("blockD:", "10000000b"), TiltbashLines());
    ExpectStoppedConsistent(read, "line 6");  // the second picture row taken as TitleBackOffset 0
    EXPECT_FALSE(read.set.UseCustomShardles);
}

TEST(CalcSourceReader, PictureRows) {
    Lines lines = PictureLines("blockD:        .db             23456789b");  // row 0 on the label line
    lines.erase(lines.begin() + 1);
    lines[1] = kDb + "10000001b";     // row 1: cells 18 and 11
    lines[6] = kDb + "11000000b";     // row 0, in-row numbers 10 and 9
    lines[11] = kDb + "01111111b";    // row 5: only cell 59
    lines[12] = "blockE: ; changer";  // passed over by the first changer row
    lines[18] = kDb + "00000000b ;";  // comment after a row
    lines[19] = kDb + "10000000b";    // changer row 0: cell 10
    const ReadResult read = ReadWithPictures(lines);
    ASSERT_TRUE(read.complete()) << read.outcome.why;
    PiecePicture shardle, changer;
    for (int k = 1; k <= 8; ++k) shardle.at(k) = static_cast<std::uint8_t>(10 - k);  // digits kept as read
    shardle.at(18) = shardle.at(11) = shardle.at(10) = shardle.at(9) = shardle.at(59) = 1;
    changer.at(10) = 1;
    EXPECT_EQ(read.set.CustomShardlePicture, shardle);
    EXPECT_EQ(read.set.CustomChangerPicture, changer);

    // One row token without eight digits is passed over; a second is taken as the row.
    lines = PictureLines("blockD:");
    lines[3] = kDb + "0000x000b";
    lines[4] = kDb + "x";
    ExpectStoppedConsistent(ReadWithPictures(lines), "line 9");
}

TEST(CalcSourceReader, ValuesAndNumbers) {
    const ReadResult read = Read(TiltbashLines(), {{9, kDb + "$F0,$0F,$ab,F0h"},
                                                   {10, kDb + "240,$12;note"},
                                                   {11, kDb + "007,level12:,$3C"},       // a level label anywhere
                                                   {12, kDb + "$00,$00,$00,$00,$00"},    // only the order counts
                                                   {16, kDb + "$00,$00,$00,$00,$00,$00,$FF"},  // 32 values in all
                                                   {17, kDb + "128 ; blocks"}});  // the whole line, decimal rule
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    const auto& cells = read.set.Layout(1).Cells;
    EXPECT_EQ(std::vector<int>(cells.begin(), cells.begin() + 16),
              (std::vector<int>{15, 0, 0, 15, 0, 0, 15, 0, 15, 0, 1, 2, 0, 7, 3, 12}));
    EXPECT_EQ(cells[62], 15);
    EXPECT_EQ(cells[63], 15);
    EXPECT_EQ(read.set.Layout(1).BlockCount, 128);

    // Shardles: four fields straight from the file; the last three as numbers.
    const LevelLayout got = Read(ShardlesLines(), {{20, kDb + "94, 62 ,x,200"}}).set.Layout(1);
    EXPECT_EQ(std::vector<int>({got.BallX, got.BallY, got.BlockCount, got.LastBlockCount}),
              (std::vector<int>{94, 62, 0, 200}));
}

TEST(CalcSourceReader, StopsOnTheLineThatFails) {
    struct Case {
        bool shardles;
        std::size_t line;
        std::string text;
        int where;
    };
    const Case cases[] = {
        {false, 4, kDb + "000", 5},  // TitleBackOffset below 1
        {false, 6, kDb + "$00", 7}, {false, 6, kDb + "000", 7}, {false, 6, kDb + "256", 7}, {false, 6, kDb + "-01", 7},
        // A blank before the comment, a lone two-character decimal, values outside 0 to 255.
        {false, 11, kDb + "$12 ;note,$00,$00,$00", 12}, {false, 11, kDb + "$00,12,$00,$00", 12},
        {false, 11, kDb + "$00,999,$00,$00", 12}, {false, 11, kDb + "$00,-12,$00,$00", 12},
        // No comment or blank line may stand in front of a level's numbers.
        {false, 17, "; count\r\n" + kDb + "128", 18}, {true, 20, "\r\n" + kDb + "1,2,3,4", 21},
        {true, 20, kDb + "1,2,3", 22}, {true, 20, kDb + "1,2,3,40000", 21},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        ExpectStoppedConsistent(Read(c.shardles ? ShardlesLines() : TiltbashLines(), {{c.line, c.text}}),
                                "line " + std::to_string(c.where));
    }
}

TEST(CalcSourceReader, TitleCutByTitleBackOffset) {
    auto title = [](const std::string& title, const std::string& backOffset) {
        return Read(TiltbashLines(title), {{4, kDb + backOffset}});
    };
    EXPECT_EQ(title("Fives", "6").set.Title, "Fives");
    EXPECT_EQ(title("Fives", "4").set.Title, "ves");
    EXPECT_EQ(title("Fives", "100").set.Title, kDb.substr(8) + "\"Fives");  // the whole shortened token
    EXPECT_EQ(title("", "1").set.Title, "");
    EXPECT_EQ(title("Say \"hi\"", "9").set.Title, "Say \"hi\"");  // quotes are ordinary
    EXPECT_TRUE(title("A,B", "4").stopped());                      // a comma splits the title line
    const ReadResult cut = title("A;B", "4");                      // a semicolon cuts it
    ASSERT_TRUE(cut.complete());
    EXPECT_NE(cut.set.Title, "A;B");
}

TEST(CalcSourceReader, CommentsAndBlankLinesBetweenTokens) {
    const LevelSet set = test::RandomSet({GameKind::Shardles, 3, true, 11}, 9u);
    std::string text;
    for (const std::string& line : Write(set)) {
        // Not in front of a level's numbers, which are read straight from the file.
        if (line.find(',') == std::string::npos || line.find_first_of("$\"") != std::string::npos) text += "; note\r\n\r\n";
        text += line + "\r\n";
    }
    const ReadResult read = ReadSourceFile(text);
    ASSERT_TRUE(read.complete()) << read.outcome.where << ": " << read.outcome.why;
    test::ExpectSameAsImageCarries(set, read.set);
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
            ASSERT_TRUE(length >= 6 || !read.complete()) << length;
            ASSERT_EQ(CheckConsistent(read.set), "") << length;
            ASSERT_TRUE(!read.stopped() || read.outcome.where.starts_with("line ")) << length;
        }
    }
}

}  // namespace
}  // namespace shd
