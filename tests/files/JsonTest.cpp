#include "files/Json.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>

#include "support/Generators.h"

namespace shd {
namespace {

using nlohmann::json;

// A set that uses every field to its limits, beyond what the editor's own
// files carry: all 256 title bytes, 16-bit extremes, odd picture values.
LevelSet ExtremeSet(GameKind kind, int levels) {
    LevelSet set = test::RandomSet({kind, levels, kind == GameKind::Shardles, 10}, 77);
    for (int b = 0; b < 256; ++b) set.Title += static_cast<char>(b);
    set.BonusClock = "\x80 odd";
    set.ExtraLifePoints = "";
    set.UseShardlesDebugger = false;
    set.MatchLocksToBlocks = false;
    set.CustomShardlePicture.at(1) = 255;
    set.CustomChangerPicture.at(60) = 7;
    const auto low = std::numeric_limits<std::int16_t>::min();
    const auto high = std::numeric_limits<std::int16_t>::max();
    for (int level = 1; level <= set.LevelCount(); ++level) {
        LevelLayout& layout = set.Layout(level);
        layout.Cells.front() = 15;
        layout.BlockCount = level % 2 ? low : high;
        layout.BallX = -1;
        layout.BallY = high;
        LevelRecord& record = set.Record(level);
        record.SpottedUnused = level % 2 == 0;
        record.ZigZagUnused = true;
        record.CustomUnused = level % 3 == 0;
        record.CustomChangerCount = low;
        record.SpecialUnusedCount = static_cast<std::int16_t>(level);
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

TEST(JsonWriter, UsesTheFieldNamesAndTypesOfTheLevelSet) {
    LevelSet set = NewSet(GameKind::Shardles);
    set.Title = "Caf\xE9 \x80";
    set.Layout(1).Cells[79] = 13;
    set.Record(1).CenterLineUnused = true;
    set.Record(1).SpecialUnusedCount = -2;
    const json doc = json::parse(WriteJsonFile(set).bytes);

    std::vector<std::string> keys;
    for (auto it = doc.begin(); it != doc.end(); ++it) keys.push_back(it.key());
    EXPECT_EQ(keys, (std::vector<std::string>{"ArrowBlocksBreakable", "BonusClock", "CustomChangerPicture",
                                              "CustomShardlePicture", "ExtraLifePoints", "Kind", "Levels",
                                              "MatchLocksToBlocks", "Title", "UseCustomShardles",
                                              "UseShardlesDebugger", "UseWrapAround"}));
    EXPECT_EQ(doc["Kind"], "Shardles");
    EXPECT_EQ(doc["Title"], "Caf\u00E9 \u20AC");
    EXPECT_EQ(doc["BonusClock"], "30");
    EXPECT_EQ(doc["UseShardlesDebugger"], true);
    EXPECT_EQ(doc["CustomShardlePicture"].size(), 60u);
    ASSERT_EQ(doc["Levels"].size(), 1u);
    const json& level = doc["Levels"][0];
    EXPECT_EQ(level.size(), 18u);  // Cells, four layout numbers, thirteen record fields
    EXPECT_EQ(level["Cells"].size(), 80u);
    EXPECT_EQ(level["Cells"][79], 13);
    EXPECT_EQ(level["CenterLineUnused"], true);
    EXPECT_TRUE(level["SpottedUnused"].is_boolean());
    EXPECT_EQ(level["SpecialUnusedCount"], -2);
    EXPECT_EQ(level["BallY"], 0);
}

TEST(JsonWriter, WritesAGridRowToALineAndTheRecordByGroups) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Layout(1).Cells[0] = 1;
    set.Layout(1).Cells[63] = 15;
    set.Layout(1).BlockCount = 3;
    set.Record(1).ZigZagUnused = true;
    const std::string text = WriteJsonFile(set).bytes;
    EXPECT_NE(text.find("      \"Cells\": [\n        1,0,0,0,0,0,0,0,\n"), std::string::npos);
    EXPECT_NE(text.find("        0,0,0,0,0,0,0,15\n      ],\n"), std::string::npos);
    EXPECT_NE(text.find("      \"BlockCount\": 3, \"LastBlockCount\": 0, \"BallX\": 0, \"BallY\": 0,\n"),
              std::string::npos);
    EXPECT_NE(text.find("      \"ZigZagUnused\": true, \"ZigZagCount\": 0, \"ZigZagChangerCount\": 0,\n"),
              std::string::npos);
    EXPECT_NE(text.find("      \"SpecialUnusedCount\": 0\n    }\n  ]\n}\n"), std::string::npos);
    EXPECT_EQ(text.substr(0, 23), "{\n  \"Kind\": \"Tiltbash\",");
}

TEST(JsonWriter, KeepsTheLevelsInOrderAndTiltbashGridsAt64Cells) {
    LevelSet set = NewSet(GameKind::Tiltbash);
    AddEmptyLevel(set);
    AddEmptyLevel(set);
    for (int level = 1; level <= 3; ++level) set.Layout(level).BlockCount = static_cast<std::int16_t>(10 * level);
    const json doc = json::parse(WriteJsonFile(set).bytes);
    EXPECT_EQ(doc["Kind"], "Tiltbash");
    ASSERT_EQ(doc["Levels"].size(), 3u);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(doc["Levels"][i]["BlockCount"], 10 * (i + 1));
        EXPECT_EQ(doc["Levels"][i]["Cells"].size(), 64u);
    }
}

TEST(JsonReader, MissingKeysTakeTheValuesOfANewSet) {
    const ReadResult empty = ReadJsonFile("{}");
    ASSERT_TRUE(empty.complete());
    EXPECT_EQ(empty.set, NewSet(GameKind::Tiltbash));

    const ReadResult shardles = ReadJsonFile(R"({"Kind": "Shardles", "Levels": [{}, {"BallX": 4}]})");
    ASSERT_TRUE(shardles.complete()) << shardles.outcome.message;
    LevelSet expected = NewSet(GameKind::Shardles);
    AddEmptyLevel(expected);
    expected.Layout(2).BallX = 4;
    EXPECT_EQ(shardles.set, expected);
}

TEST(JsonReader, TakesTheKindFromAnywhereInTheObject) {
    const ReadResult read = ReadJsonFile(R"({"Levels": [{}, {"BallX": 2}], "Title": "t", "Kind": "Shardles"})");
    ASSERT_TRUE(read.complete()) << read.outcome.message;
    EXPECT_EQ(read.set.Kind, GameKind::Shardles);
    EXPECT_EQ(read.set.Layout(1).Cells.size(), 80u);
    EXPECT_EQ(read.set.Layout(2).BallX, 2);
    EXPECT_EQ(CheckConsistent(read.set), "");
}

TEST(JsonReader, ARepeatedKeyKeepsItsLastValue) {
    const ReadResult read = ReadJsonFile(
        R"({"Title": "a", "Levels": [{}, {}, {}], "Title": "b", "Levels": [{"BallY": 1, "BallY": 5}]})");
    ASSERT_TRUE(read.complete()) << read.outcome.message;
    EXPECT_EQ(read.set.Title, "b");
    ASSERT_EQ(read.set.LevelCount(), 1);
    EXPECT_EQ(read.set.Layout(1).BallY, 5);
}

TEST(JsonReader, TakesTheLimitsOfEachRange) {
    const ReadResult read = ReadJsonFile(R"({"Kind": "Shardles",
        "CustomShardlePicture": [255,0,0,0,0,0,0,0,0,0, 0,0,0,0,0,0,0,0,0,0, 0,0,0,0,0,0,0,0,0,0,
                                 0,0,0,0,0,0,0,0,0,0, 0,0,0,0,0,0,0,0,0,0, 0,0,0,0,0,0,0,0,0,1],
        "Levels": [{"BlockCount": -32768, "LastBlockCount": 32767, "BallX": -32768, "BallY": 32767,
                    "SpecialUnusedCount": -1, "CustomCount": 3.0, "ZigZagCount": -2e2}]})");
    ASSERT_TRUE(read.complete()) << read.outcome.message;
    EXPECT_EQ(read.set.CustomShardlePicture.at(1), 255);
    EXPECT_EQ(read.set.CustomShardlePicture.at(60), 1);
    EXPECT_EQ(read.set.Layout(1).BlockCount, -32768);
    EXPECT_EQ(read.set.Layout(1).LastBlockCount, 32767);
    EXPECT_EQ(read.set.Layout(1).BallX, -32768);
    EXPECT_EQ(read.set.Record(1).SpecialUnusedCount, -1);
    // JSON does not tell 3 from 3.0, so neither does the reader.
    EXPECT_EQ(read.set.Record(1).CustomCount, 3);
    EXPECT_EQ(read.set.Record(1).ZigZagCount, -200);
}

std::string Cells(int count, const std::string& last = "0") {
    std::string cells = "[";
    for (int i = 1; i < count; ++i) cells += "0,";
    return cells + last + "]";
}

std::string Levels(int count) {
    std::string levels = "[";
    for (int i = 0; i < count; ++i) levels += i ? ",{}" : "{}";
    return levels + "]";
}

struct RefusalCase {
    std::string json;
    std::string message;
};

// Each fault is named by its path (as jq writes it) and the reason.
TEST(JsonReader, RefusesAWrongValueWithItsPathAndReason) {
    const RefusalCase cases[] = {
        {"[]", ".: must be an object"},
        {R"({"Kind": 1})", R"(.Kind: must be "Shardles" or "Tiltbash")"},
        {R"({"Kind": "shardles"})", R"(.Kind: must be "Shardles" or "Tiltbash")"},
        {R"({"Title": 5})", ".Title: must be a string"},
        {R"({"Title": "ab\u0100"})", ".Title: character 3: U+0100 is not a Windows-1252 character"},
        {R"({"Title": "\u20ac\u0080"})", ".Title: character 2: U+0080 is not a Windows-1252 character"},
        {R"({"BonusClock": 30})", ".BonusClock: must be a string"},
        {R"({"ExtraLifePoints": "\ud83d\ude00"})",
         ".ExtraLifePoints: character 1: U+1F600 is not a Windows-1252 character"},
        {R"({"UseWrapAround": 1})", ".UseWrapAround: must be true or false"},
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
        {R"({"Levels": []})", ".Levels: must hold 1 to 255 levels, not 0"},
        {R"({"Levels": )" + Levels(256) + "}", ".Levels: must hold 1 to 255 levels, not 256"},
        // Levels past the last one are only counted, whatever they hold.
        {R"({"Levels": )" + Levels(255).substr(0, Levels(255).size() - 1) + R"(, [[1]], 5, {"x": [{}]}]})",
         ".Levels: must hold 1 to 255 levels, not 258"},
        {R"({"Levels": [{}, 5]})", ".Levels[1]: must be an object"},
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
        {R"({"Levels": [{"BlockCount": 32768}]})", ".Levels[0].BlockCount: 32768 is out of range -32768 to 32767"},
        {R"({"Levels": [{"LastBlockCount": -32769}]})",
         ".Levels[0].LastBlockCount: -32769 is out of range -32768 to 32767"},
        {R"({"Levels": [{"BallX": 18446744073709551615}]})",
         ".Levels[0].BallX: 18446744073709551615 is out of range -32768 to 32767"},
        {R"({"Levels": [{"BallY": 1e30}]})", ".Levels[0].BallY: 1e30 is out of range -32768 to 32767"},
        {R"({"Levels": [{"BallY": [3]}]})", ".Levels[0].BallY: must be a whole number from -32768 to 32767"},
        {R"({"Levels": [{"Cells": [0, [1]]}]})", ".Levels[0].Cells[1]: must be a whole number from 0 to 15"},
        {R"({"Levels": [{"Cells": [0, {}]}]})", ".Levels[0].Cells[1]: must be a whole number from 0 to 15"},
        {R"({"Title": {}})", ".Title: must be a string"},
        {R"({"Levels": [[]]})", ".Levels[0]: must be an object"},
        {R"(7)", ".: must be an object"},
        {R"({"Levels": [{"SpottedUnused": 0}]})", ".Levels[0].SpottedUnused: must be true or false"},
        {R"({"Levels": [{"CustomUnused": "yes"}]})", ".Levels[0].CustomUnused: must be true or false"},
        {R"({"Levels": [{"SpecialUnusedCount": true}]})",
         ".Levels[0].SpecialUnusedCount: must be a whole number from -32768 to 32767"},
        {R"({"Levels": [{}, {}, {"ZigZagChangerCount": 40000}]})",
         ".Levels[2].ZigZagChangerCount: 40000 is out of range -32768 to 32767"},
        // A misspelt key would otherwise be dropped without a word.
        {R"({"Titel": "x"})", ".Titel: is not a key of a level set"},
        {R"({"Levels": [{"Ballx": 1}]})", ".Levels[0].Ballx: is not a key of a level set"},
    };
    for (const auto& c : cases) {
        const ReadResult read = ReadJsonFile(c.json);
        ASSERT_TRUE(read.refused()) << c.json.substr(0, 80);
        EXPECT_EQ(read.outcome.message, c.message);
        EXPECT_EQ(CheckConsistent(read.set), "");
    }
}

TEST(JsonReader, RefusesMalformedJsonWithTheByteOffsetAndLine) {
    const RefusalCase cases[] = {
        {"", "byte 0 (line 1, column 1): syntax error while parsing value - unexpected end of input; "
             "expected '[', '{', or a literal"},
        {R"({"Kind": })", "byte 9 (line 1, column 10): syntax error while parsing value - unexpected '}'; "
                          "expected '[', '{', or a literal"},
        {"{\n  \"Kind\": \"Shardles\",,\n}", "byte 23 (line 2, column 22): syntax error while parsing object key - "
                                             "unexpected ','; expected string literal"},
        {"{} x",
         "byte 3 (line 1, column 4): syntax error while parsing value - invalid literal; expected end of input"},
        // The library stops at the byte after a number too large for a double.
        {R"({"Levels": [{"BallY": 1e400}]})", "byte 26 (line 1, column 27): number overflow parsing '1e400'"},
        // The raw bytes of the bad token are not repeated in the message.
        {"{\"Title\": \"a\xFF\"}", "byte 12 (line 1, column 13): syntax error while parsing value - "
                                   "invalid string: ill-formed UTF-8 byte"},
    };
    for (const auto& c : cases) {
        const ReadResult read = ReadJsonFile(c.json);
        ASSERT_TRUE(read.refused()) << c.json;
        EXPECT_EQ(read.outcome.message, c.message);
        EXPECT_EQ(CheckConsistent(read.set), "");
    }
}

TEST(JsonReader, SurvivesDeepNestingAndHugeInput) {
    const ReadResult deep = ReadJsonFile(std::string(200000, '[') + std::string(200000, ']'));
    ASSERT_TRUE(deep.refused());
    EXPECT_EQ(deep.outcome.message, ".: must be an object");

    const ReadResult nested = ReadJsonFile(R"({"Levels": [{"Cells": )" + std::string(100000, '[') + "]}]}");
    ASSERT_TRUE(nested.refused());
    EXPECT_EQ(nested.outcome.message, ".Levels[0].Cells[0]: must be a whole number from 0 to 15");

    // Past the last level nothing is kept, however deep it goes; only the count.
    const std::string levels = Levels(255);
    const ReadResult past = ReadJsonFile(R"({"Levels": )" + levels.substr(0, levels.size() - 1) + ", " +
                                         std::string(300000, '[') + std::string(300000, ']') + "]}");
    ASSERT_TRUE(past.refused());
    EXPECT_EQ(past.outcome.message, ".Levels: must hold 1 to 255 levels, not 256");
}

}  // namespace
}  // namespace shd
