#include "files/Json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "support/Generators.h"

namespace shd {
namespace {

using nlohmann::json;

std::string Repeat(const std::string& text, int times) {
    std::string out;
    for (int i = 0; i < times; ++i) out += text;
    return out;
}

// A set that uses every field to its limits, beyond what the editor's own
// files carry: all 256 title bytes, 16-bit extremes, odd picture values and
// a different value in every record field.
LevelSet ExtremeSet(GameKind kind, int levels) {
    LevelSet set = test::RandomSet({kind, levels, kind == GameKind::Shardles, 10}, 77);
    for (int b = 0; b < 256; ++b) set.Title += static_cast<char>(b);
    set.BonusClock = "\x80 odd";
    set.ExtraLifePoints = "";
    set.UseShardlesDebugger = set.MatchLocksToBlocks = false;
    set.CustomShardlePicture.at(1) = 255;
    set.CustomChangerPicture.at(60) = 7;
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const auto n = static_cast<std::int16_t>(level);
        set.Layout(level).BlockCount = level % 2 ? INT16_MIN : INT16_MAX;
        set.Layout(level).BallX = -1;
        set.Layout(level).BallY = INT16_MAX;
        set.Record(level) = {level % 2 == 0, n, static_cast<std::int16_t>(n + 1), true, static_cast<std::int16_t>(-n),
                             2, level % 3 == 0, 3, 4, level % 5 == 0, 5, INT16_MIN, static_cast<std::int16_t>(n * 7)};
    }
    return set;
}

TEST(JsonRoundTrip, GivesBackTheSameSetForBothKindsAndAnyLevelCount) {
    for (GameKind kind : {GameKind::Shardles, GameKind::Tiltbash}) {
        for (int levels : {1, 2, 255}) {
            const LevelSet set = ExtremeSet(kind, levels);
            const WriteResult written = WriteJsonFile(set);
            ASSERT_TRUE(written.ok);
            const ReadResult read = ReadJsonFile(written.bytes);
            ASSERT_TRUE(read.complete()) << read.outcome.message;
            EXPECT_EQ(read.set, set) << "levels " << levels;
            EXPECT_EQ(WriteJsonFile(read.set).bytes, written.bytes);
        }
    }
}

std::string Cells(int count, const std::string& last = "0") { return "[" + Repeat("0,", count - 1) + last + "]"; }

// `count` empty levels, and the closing bracket unless `close` is false.
std::string Levels(int count, bool close = true) { return "[{}" + Repeat(",{}", count - 1) + (close ? "]" : ""); }

// Every key by its name, the title as Unicode, a grid row to a line and the
// record's fields by groups.
TEST(JsonWriter, WritesEveryFieldByNameInItsPlace) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Title = "Caf\xE9 \x80";
    set.CustomChangerPicture.at(60) = 7;
    set.Layout(1) = {BlockGrid(64, 0), 3, 0, -1, 0};
    set.Layout(1).Cells[0] = 1;
    set.Record(1) = {true, 1, 2, false, 3, 4, true, 5, 6, false, 7, 8, -9};
    std::vector<int> cells(64), changer(60);
    cells[0] = 1;
    changer[59] = 7;
    const json level = {{"Cells", cells}, {"BlockCount", 3}, {"LastBlockCount", 0}, {"BallX", -1}, {"BallY", 0},
                        {"SpottedUnused", true}, {"SpottedCount", 1}, {"SpottedChangerCount", 2},
                        {"ZigZagUnused", false}, {"ZigZagCount", 3}, {"ZigZagChangerCount", 4},
                        {"CenterLineUnused", true}, {"CenterLineCount", 5}, {"CenterLineChangerCount", 6},
                        {"CustomUnused", false}, {"CustomCount", 7}, {"CustomChangerCount", 8},
                        {"SpecialUnusedCount", -9}};
    const json expected = {{"Kind", "Tiltbash"}, {"Title", "Caf\u00E9 \u20AC"}, {"BonusClock", "30"},
                           {"ExtraLifePoints", "100"}, {"ArrowBlocksBreakable", false}, {"UseWrapAround", false},
                           {"UseCustomShardles", false}, {"UseShardlesDebugger", true}, {"MatchLocksToBlocks", true},
                           {"CustomShardlePicture", std::vector<int>(60)}, {"CustomChangerPicture", changer},
                           {"Levels", json::array({level})}};
    const std::string text = WriteJsonFile(set).bytes;
    EXPECT_EQ(json::parse(text), expected);
    const std::string start = "{\n  \"Kind\": \"Tiltbash\",\n  \"Title\": \"Caf\u00E9 \u20AC\",\n";
    EXPECT_EQ(text.substr(0, start.size()), start);
    EXPECT_NE(text.find("\n        1,0,0,0,0,0,0,0,\n        0,0,"), std::string::npos);
    EXPECT_NE(text.find("\n      \"ZigZagUnused\": false, \"ZigZagCount\": 3, \"ZigZagChangerCount\": 4,\n"),
              std::string::npos);
}

// The kind decides the levels' size wherever it stands, a repeated key keeps
// its last value, and JSON does not tell 3 from 3.0, so neither does the reader.
TEST(JsonReader, TakesMissingKeysFromANewSetAndKeysInAnyOrder) {
    const ReadResult empty = ReadJsonFile("{}");
    EXPECT_TRUE(empty.complete());
    EXPECT_EQ(empty.set, NewSet(GameKind::Tiltbash));
    const ReadResult read = ReadJsonFile(R"({"Title": "a", "Levels": [{}, {}, {}], "Title": "t",
        "Levels": [{}, {"Cells": )" + Cells(80, "15") + R"(, "BallX": 2, "BallX": 4, "CustomCount": 3.0,
        "ZigZagCount": -2e2}], "Kind": "Shardles"})");
    ASSERT_TRUE(read.complete()) << read.outcome.message;
    LevelSet expected = NewSet(GameKind::Shardles);
    AddEmptyLevel(expected);
    expected.Title = "t";
    expected.Layout(2).BallX = 4;
    expected.Layout(2).Cells[79] = 15;
    expected.Record(2).CustomCount = 3;
    expected.Record(2).ZigZagCount = -200;
    EXPECT_EQ(read.set, expected);
}

// Each fault is named by its path (as jq writes it) and the reason; malformed
// JSON by its byte offset, line and column.
TEST(JsonReader, RefusesAWrongValueWithItsPlaceAndReason) {
    const std::string whole16 = "must be a whole number from -32768 to 32767";
    const std::string range16 = " is out of range -32768 to 32767";
    const std::string notLevels = ".Levels: must hold 1 to 255 levels, not ";
    const struct {
        std::string json;
        std::string message;
    } cases[] = {
        {"7", ".: must be an object"},
        {std::string(200000, '[') + std::string(200000, ']'), ".: must be an object"},
        {R"({"Kind": "shardles"})", R"(.Kind: must be "Shardles" or "Tiltbash")"},
        {R"({"Title": 5})", ".Title: must be a string"},
        {R"({"Title": {}})", ".Title: must be a string"},
        {R"({"Title": "\u20ac\u0080"})", ".Title: character 2: U+0080 is not a Windows-1252 character"},
        {R"({"ExtraLifePoints": "a\ud83d\ude00"})",
         ".ExtraLifePoints: character 2: U+1F600 is not a Windows-1252 character"},
        {R"({"MatchLocksToBlocks": null})", ".MatchLocksToBlocks: must be true or false"},
        {R"({"CustomShardlePicture": 0})", ".CustomShardlePicture: must be an array of 60 numbers"},
        {R"({"CustomChangerPicture": )" + Cells(59) + "}", ".CustomChangerPicture: must hold 60 numbers, not 59"},
        {R"({"CustomChangerPicture": )" + Cells(60, "256") + "}",
         ".CustomChangerPicture[59]: 256 is out of range 0 to 255"},
        {R"({"CustomShardlePicture": )" + Cells(60, "-1") + "}",
         ".CustomShardlePicture[59]: -1 is out of range 0 to 255"},
        {R"({"CustomShardlePicture": )" + Cells(60, "1.5") + "}",
         ".CustomShardlePicture[59]: must be a whole number from 0 to 255"},
        {R"({"Levels": {}})", ".Levels: must be an array of levels"},
        {R"({"Levels": []})", notLevels + "0"},
        {R"({"Levels": )" + Levels(256) + "}", notLevels + "256"},
        // Levels past the last one are only counted, whatever they hold...
        {R"({"Levels": )" + Levels(255, false) + R"(, [[1]], 5, {"x": [{}]}, )" + std::string(250, '[') +
             std::string(250, ']') + "]}",
         notLevels + "259"},
        // ...up to a depth no set needs, which keeps the reader's stack safe.
        {R"({"Levels": )" + Levels(255, false) + R"(, 5, )" + std::string(300000, '[') + std::string(300000, ']') +
             "]}",
         ".Levels[256]: is nested deeper than 256 levels"},
        {R"({"Levels": [{}, 5]})", ".Levels[1]: must be an object"},
        {R"({"Levels": [[]]})", ".Levels[0]: must be an object"},
        {R"({"Levels": [{"Cells": 0}]})", ".Levels[0].Cells: must be an array of numbers"},
        {R"({"Kind": "Shardles", "Levels": [{"Cells": )" + Cells(64) + "}]}",
         ".Levels[0].Cells: must hold 80 numbers, not 64"},
        {R"({"Kind": "Tiltbash", "Levels": [{}, {"Cells": )" + Cells(80) + "}]}",
         ".Levels[1].Cells: must hold 64 numbers, not 80"},
        // The kind decides the grid size wherever it stands in the object.
        {R"({"Levels": [{"Cells": )" + Cells(64) + R"(}], "Kind": "Shardles"})",
         ".Levels[0].Cells: must hold 80 numbers, not 64"},
        {R"({"Levels": [{"Cells": )" + Cells(64, "16") + "}]}", ".Levels[0].Cells[63]: 16 is out of range 0 to 15"},
        {R"({"Levels": [{"Cells": )" + Cells(64, "\"1\"") + "}]}",
         ".Levels[0].Cells[63]: must be a whole number from 0 to 15"},
        {R"({"Levels": [{"Cells": [0, {}]}]})", ".Levels[0].Cells[1]: must be a whole number from 0 to 15"},
        {R"({"Levels": [{"Cells": )" + std::string(100000, '[') + "]}]}",
         ".Levels[0].Cells[0]: must be a whole number from 0 to 15"},
        {R"({"Levels": [{"BlockCount": 32768}]})", ".Levels[0].BlockCount: 32768" + range16},
        {R"({"Levels": [{"LastBlockCount": -32769}]})", ".Levels[0].LastBlockCount: -32769" + range16},
        {R"({"Levels": [{"BallX": 18446744073709551615}]})", ".Levels[0].BallX: 18446744073709551615" + range16},
        {R"({"Levels": [{"BallX": -99999999999999999999}]})", ".Levels[0].BallX: -99999999999999999999" + range16},
        {R"({"Levels": [{"Cells": [1.5E+1, 16.0]}]})", ".Levels[0].Cells[1]: 16.0 is out of range 0 to 15"},
        {R"({"Levels": [{"BallY": 1e30}]})", ".Levels[0].BallY: 1e30" + range16},
        {R"({"Levels": [{"BallY": [3]}]})", ".Levels[0].BallY: " + whole16},
        {R"({"Levels": [{"SpottedUnused": 0}]})", ".Levels[0].SpottedUnused: must be true or false"},
        {R"({"Levels": [{}, {}, {"ZigZagChangerCount": 40000}]})", ".Levels[2].ZigZagChangerCount: 40000" + range16},
        // A misspelt key would otherwise be dropped without a word.
        {R"({"Titel": "x"})", ".Titel: is not a key of a level set"},
        {R"({"Levels": [{"Ballx": 1}]})", ".Levels[0].Ballx: is not a key of a level set"},
        {"", "byte 0 (line 1, column 1): there is no JSON value"},
        {"{\n  \"Kind\": \"Shardles\",,\n}", "byte 23 (line 2, column 22): a key in double quotes is missing"},
        {"{\"Title\": \"a\"\n  \"Kind\": 1}", "byte 16 (line 2, column 3): a comma or '}' is missing"},
        {"{\"Levels\": [{} {}]}", "byte 15 (line 1, column 16): a comma or ']' is missing"},
        {"{\"Title\": tru}", "byte 13 (line 1, column 14): not a JSON value"},
        {"{\"Title\": \"a}", "byte 13 (line 1, column 14): a string is not closed"},
        {R"({"Levels": [{"BallY": 1.}]})",
         "byte 24 (line 1, column 25): a number has no digits after its decimal point"},
        // Beyond a double's range: named at the number's first byte.
        {R"({"Levels": [{"BallY": 1e400}]})", "byte 22 (line 1, column 23): a number is too large"},
        // The raw bytes of the bad token are not repeated in the message.
        {"{\"Title\": \"a\xFF\"}", ".Title: character 2: is not valid UTF-8"},
        {"{\"Title\": \"a\tb\"}",
         "byte 12 (line 1, column 13): a string holds a control character or an unknown escape"},
        {"{\"Title\": \"\\x\"}",
         "byte 11 (line 1, column 12): a string holds a control character or an unknown escape"},
        // A zero byte is not the end of the text.
        {std::string("{}\0{}", 5), "byte 2 (line 1, column 3): something follows the end of the JSON value"},
        {"{} {}", "byte 3 (line 1, column 4): something follows the end of the JSON value"},
    };
    for (const auto& c : cases) {
        const ReadResult read = ReadJsonFile(c.json);
        ASSERT_TRUE(read.refused()) << c.json.substr(0, 80);
        EXPECT_EQ(read.outcome.message, c.message);
        EXPECT_EQ(CheckConsistent(read.set), "");
    }
}

}  // namespace
}  // namespace shd
