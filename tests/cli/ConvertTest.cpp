// The converter end to end: every form to every form, the editor's rules on
// saving, the refusals and the command line.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "cli/CliSupport.h"
#include "files/Json.h"
#include "formats/Formats.h"

namespace shd::cli_test {
namespace {

// The forms that can be written, with the extension the converter knows them by.
const std::map<std::string, std::string> kWritable{
    {"myfile", "rsx"}, {"list", "83l"}, {"source", "z80"}, {"program", "83p"}, {"json", "json"}};

// What the editor holds right after opening: level 1 current and recounted.
LevelSet AsOpened(LevelSet set) {
    set.CurrentLevel = 1;
    RecountCurrentLevel(set);
    return set;
}

class EveryPair : public testing::TestWithParam<GameKind> {};

TEST_P(EveryPair, ConvertsEveryFormIntoEveryOtherAndBackToTheSameSet) {
    const LevelSet original = PortableSet(GetParam(), 12, 5);
    Folder folder;
    WriteJson(folder / "original.json", original);
    for (const auto& [from, fromExtension] : kWritable) {
        // Program titles name the calculator program, so keep them short.
        const std::string input = folder / ("in." + fromExtension);
        const Outcome made = Convert({folder / "original.json", input});
        ASSERT_EQ(made.status, 0) << from << ": " << made.err;
        for (const auto& [to, toExtension] : kWritable) {
            SCOPED_TRACE(from + " to " + to);
            const std::string output = folder / ("out." + toExtension);
            const Outcome converted = Convert({input, output});
            ASSERT_EQ(converted.status, 0) << converted.err;
            EXPECT_EQ(converted.out, "");
            EXPECT_EQ(converted.err, "");
            const Outcome back = Convert({output, folder / "back.json"});
            ASSERT_EQ(back.status, 0) << back.err;
            EXPECT_EQ(ReadJson(folder / "back.json"), AsOpened(original));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothGames, EveryPair, testing::Values(GameKind::Shardles, GameKind::Tiltbash),
                         [](const auto& info) { return info.param == GameKind::Shardles ? "Shardles" : "Tiltbash"; });

TEST(JsonThroughTheConverter, ReadsBackIdenticalAndWritesTheSameBytesOnASecondRound) {
    Folder folder;
    LevelSet set = PortableSet(GameKind::Shardles, 255, 9);
    // What only JSON carries: records, odd settings, counts the game never sees.
    set.BonusClock = "45";
    set.UseShardlesDebugger = false;
    set.Record(3).ZigZagUnused = true;
    set.Record(4).SpecialUnusedCount = -7;
    set.Layout(5).BlockCount = -300;
    set.CustomChangerPicture.at(7) = 200;
    WriteJson(folder / "a.json", set);

    ASSERT_EQ(Convert({folder / "a.json", folder / "b.json"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "b.json"), AsOpened(set));
    ASSERT_EQ(Convert({folder / "b.json", folder / "c.json"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "c.json"), ReadBytes(folder / "b.json"));
}

TEST(JsonThroughTheConverter, LeavesLevelOneRecountedAndTheOtherLevelsAsRead) {
    Folder folder;
    LevelSet set = NewSet(GameKind::Shardles);
    AddEmptyLevel(set);
    for (int level : {1, 2}) {
        set.Layout(level).Cells[0] = 2;
        set.Layout(level).Cells[1] = 2;
        set.Record(level).SpottedCount = 9;  // stale
        set.Record(level).SpottedUnused = true;
    }
    WriteJson(folder / "in.json", set);
    ASSERT_EQ(Convert({folder / "in.json", folder / "out.json"}).status, 0);
    const LevelSet out = ReadJson(folder / "out.json");
    EXPECT_EQ(out.Record(1).SpottedCount, 2);
    EXPECT_TRUE(out.Record(1).SpottedUnused);
    EXPECT_EQ(out.Record(2).SpottedCount, 9);
}

// ---- counting blocks before saving ----------------------------------------------

LevelSet TenBlocksOneLastThreeUnused() {
    LevelSet set = NewSet(GameKind::Shardles);
    for (int i = 0; i < 10; ++i) set.Layout(1).Cells[static_cast<std::size_t>(i)] = 1;
    set.Layout(1).Cells[50] = 6;
    set.Record(1).SpecialUnusedCount = 3;
    set.Layout(1).BlockCount = 99;  // stale, as a hand-written file may have it
    set.Layout(1).LastBlockCount = 42;
    return set;
}

TEST(CountingBeforeSaving, MyFileListAndProgramStoreFreshCounts) {
    Folder folder;
    WriteJson(folder / "in.json", TenBlocksOneLastThreeUnused());
    // My File carries SpecialUnusedCount, so its count can be checked exactly.
    ASSERT_EQ(Convert({folder / "in.json", folder / "set.rsx"}).status, 0);
    ASSERT_EQ(Convert({folder / "set.rsx", folder / "back.json"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).BlockCount, 7);
    EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).LastBlockCount, 1);
    for (const char* name : {"set.83l", "set.83p"}) {
        ASSERT_EQ(Convert({folder / "in.json", folder / name}).status, 0) << name;
        ASSERT_EQ(Convert({folder / name, folder / "back.json"}).status, 0) << name;
        EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).BlockCount, 7) << name;
        EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).LastBlockCount, 1) << name;
    }
}

TEST(CountingBeforeSaving, SourceAndJsonWriteTheCountsAsTheyStand) {
    Folder folder;
    WriteJson(folder / "in.json", TenBlocksOneLastThreeUnused());
    for (const char* name : {"set.z80", "set.json"}) {
        ASSERT_EQ(Convert({folder / "in.json", folder / name}).status, 0) << name;
        ASSERT_EQ(Convert({folder / name, folder / "back.json"}).status, 0) << name;
        EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).BlockCount, 99) << name;
        EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).LastBlockCount, 42) << name;
    }
}

TEST(CountingBeforeSaving, RefusesAShardlesLevelWithoutLastBlocksNamingTheFirst) {
    Folder folder;
    LevelSet set = PortableSet(GameKind::Shardles, 5, 3);
    for (int level : {3, 5})
        for (auto& cell : set.Layout(level).Cells)
            if (cell == 6) cell = 0;
    WriteJson(folder / "in.json", set);
    for (const char* name : {"out.rsx", "out.83l", "out.83p"}) {
        const Outcome run = Convert({folder / "in.json", folder / name});
        EXPECT_EQ(run.status, 1) << name;
        EXPECT_EQ(run.err, "Level #3 has no Last Blocks.\n");
        EXPECT_FALSE(Exists(folder / name));
    }
    // The other two forms do not count, so they write the set as it is.
    for (const char* name : {"out.z80", "out.json"}) EXPECT_EQ(Convert({folder / "in.json", folder / name}).status, 0);
}

TEST(CountingBeforeSaving, NeverRefusesATiltbashSet) {
    Folder folder;
    LevelSet set = NewSet(GameKind::Tiltbash);
    set.Layout(1).Cells = BlockGrid(64, 8);  // two each
    WriteJson(folder / "in.json", set);
    ASSERT_EQ(Convert({folder / "in.json", folder / "out.rsx"}).status, 0);
    ASSERT_EQ(Convert({folder / "out.rsx", folder / "back.json"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "back.json").Layout(1).BlockCount, 128);
}

// ---- the program file's name ------------------------------------------------------

TEST(ProgramName, ComesFromTheOutputFileNameInUpperCase) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    ASSERT_EQ(Convert({folder / "in.json", folder / "levels12.83p"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "levels12.83p").substr(60, 8), "LEVELS12");
    ASSERT_EQ(Convert({folder / "in.json", folder / "tilt.83p"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "tilt.83p").substr(60, 8), std::string("TILT\0\0\0\0", 8));
}

TEST(ProgramName, RefusesAFileNameOverTwelveCharacters) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Shardles, 2, 1));
    const Outcome run = Convert({folder / "in.json", folder / "levels123.83p"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err,
              "This name has to be 8 characters long because this is the name that is shown in the Calculator!\n");
    EXPECT_EQ(folder.Files(), std::vector<std::string>{"in.json"});
}

TEST(ProgramName, RefusesAFileNameTooShortToGiveAName) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    const Outcome run = Convert({"--to", "program", folder / "in.json", folder / "abc"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find(folder / "abc: "), std::string::npos) << run.err;
    EXPECT_FALSE(Exists(folder / "abc"));
}

// ---- refused and broken input ------------------------------------------------------

struct BadInput {
    const char* name;
    std::string bytes;
    const char* from;  // nullptr: from the extension
    std::string said;  // what follows "FILE: " on standard error; ending in ": ", how it starts
};

TEST(BrokenInput, PrintsTheFileThePlaceAndTheReasonAndWritesNothing) {
    const BadInput cases[] = {
        {"bad.json", R"({"Levels": [{"BallX": "7"}]})", nullptr,
         ".Levels[0].BallX: must be a whole number from -32768 to 32767"},
        {"bad.json", "{\n\"Kind\": Shardles}", nullptr,
         "byte 10 (line 2, column 9): syntax error while parsing value - invalid literal"},
        {"bad.rsx", "quartlev\r\n", nullptr, "Not one of my files."},
        {"bad.83l", "Title\r\n//lQRVLE\r\n", nullptr, "Not a valid list file."},
        {"bad.z80", "        .org             9327H\r\n", nullptr, "Not compilable code."},
        // Stopped reads: the line is ours to check, the reason the reader's.
        {"bad.txt", "QUARTLEV\r\nT\r\nFalse\r\n", "oldmyfile", "line 4: "},
        // A refusal that carries a place rather than a message.
        {"empty.z80", "", nullptr, "line 1: "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Folder folder;
        WriteBytes(folder / c.name, c.bytes);
        std::vector<std::string> args;
        if (c.from) args = {"--from", c.from};
        args.push_back(folder / c.name);
        args.push_back(folder / "out.json");
        const Outcome run = Convert(args);
        EXPECT_EQ(run.status, 1);
        const std::string prefix = folder / c.name + ": ";
        ASSERT_EQ(run.err.substr(0, prefix.size()), prefix) << run.err;
        if (c.said.ends_with(": ")) {
            EXPECT_EQ(run.err.substr(0, prefix.size() + c.said.size()), prefix + c.said) << run.err;
        } else {
            EXPECT_EQ(run.err, prefix + c.said + "\n");
        }
        EXPECT_EQ(folder.Files(), std::vector<std::string>{c.name});
    }
}

TEST(BrokenInput, AReadThatStopsPartwayNamesTheLine) {
    Folder folder;
    // A My File cut off in the middle of its first level.
    WriteBytes(folder / "cut.rsx", "QUARTLEV\r\nCut\r\nFalse\r\n 2 \r\n0,0,0\r\n");
    const Outcome run = Convert({folder / "cut.rsx", folder / "out.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find(folder / "cut.rsx: line "), std::string::npos) << run.err;
    EXPECT_FALSE(Exists(folder / "out.json"));
}

TEST(BrokenInput, AProgramFileCutShortNamesTheByte) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Shardles, 3, 2));
    ASSERT_EQ(Convert({folder / "in.json", folder / "whole.83p"}).status, 0);
    WriteBytes(folder / "cut.83p", ReadBytes(folder / "whole.83p").substr(0, 120));
    const Outcome run = Convert({folder / "cut.83p", folder / "out.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find(folder / "cut.83p: byte "), std::string::npos) << run.err;
    EXPECT_FALSE(Exists(folder / "out.json"));
}

TEST(BrokenInput, AMissingInputIsRefusedNotAUsageError) {
    Folder folder;
    const Outcome run = Convert({folder / "none.json", folder / "out.rsx"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, folder / "none.json: cannot be read: No such file or directory\n");
}

TEST(BrokenInput, AFolderIsNoInput) {
    Folder folder;
    std::filesystem::create_directory(folder / "set.json");
    const Outcome run = Convert({folder / "set.json", folder / "out.rsx"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, folder / "set.json: cannot be read: Is a directory\n");
    EXPECT_FALSE(Exists(folder / "out.rsx"));
}

TEST(BrokenInput, AFailedReadLeavesAnExistingOutputAlone) {
    Folder folder;
    WriteBytes(folder / "out.json", "keep me");
    WriteBytes(folder / "bad.json", "[]");
    EXPECT_EQ(Convert({folder / "bad.json", folder / "out.json"}).status, 1);
    EXPECT_EQ(ReadBytes(folder / "out.json"), "keep me");
}

TEST(Output, AnUnwritablePlaceIsRefusedAndLeavesNoTemporaryFile) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    const Outcome run = Convert({folder / "in.json", folder / "missing/out.json"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err.substr(0, (folder / "missing/out.json: ").size()), folder / "missing/out.json: ");
    EXPECT_EQ(folder.Files(), std::vector<std::string>{"in.json"});
}

TEST(Output, ReplacesAnExistingFileWhole) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    WriteBytes(folder / "out.83p", std::string(5000, 'x'));
    ASSERT_EQ(Convert({folder / "in.json", folder / "out.83p"}).status, 0);
    const std::string bytes = ReadBytes(folder / "out.83p");
    EXPECT_EQ(bytes.substr(0, 8), "**TI83**");
    EXPECT_LT(bytes.size(), 5000u);
    EXPECT_EQ(folder.Files(), (std::vector<std::string>{"in.json", "out.83p"}));
}

TEST(Output, MayBeTheInputItself) {
    Folder folder;
    const LevelSet set = PortableSet(GameKind::Shardles, 4, 8);
    WriteJson(folder / "set.json", set);
    ASSERT_EQ(Convert({folder / "set.json", folder / "set.json"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "set.json"), AsOpened(set));
}

// ---- choosing forms -------------------------------------------------------------------

TEST(Forms, FromAndToOverrideTheExtensions) {
    Folder folder;
    const LevelSet set = PortableSet(GameKind::Shardles, 2, 4);
    WriteJson(folder / "set.data", set);
    ASSERT_EQ(Convert({"--from", "json", "--to=source", folder / "set.data", folder / "set.json"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "set.json").substr(0, 30), "        .org             9327h");
    ASSERT_EQ(Convert({"--from=source", folder / "set.json", folder / "back.JSON"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "back.JSON").Layout(2), set.Layout(2));
}

TEST(Forms, ExtensionsInAnyCaseAndBothSourceExtensions) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    for (const char* name : {"a.RSX", "b.83L", "c.asm", "d.Z80", "e.83P"}) {
        ASSERT_EQ(Convert({folder / "in.json", folder / name}).status, 0) << name;
        EXPECT_EQ(Convert({folder / name, folder / "back.json"}).status, 0) << name;
    }
    EXPECT_EQ(ReadBytes(folder / "a.RSX").substr(0, 8), "QUARTLEV");
}

TEST(Forms, AnOldMyFileIsReadWhenAskedFor) {
    Folder folder;
    // Older files have no debugger and match-locks lines, letters for codes
    // 10 to 15 and no record line after a level's four numbers.
    std::string cells;
    for (int i = 0; i < 80; ++i) cells += i == 0 ? "B," : i == 5 ? "6," : i == 79 ? " 0 " : "0,";
    WriteBytes(folder / "old.rsx", "QUARTLEV\r\nOld one\r\nTrue\r\n 1 \r\nFalse\r\n200\r\n60\r\nTrue\r\nFalse\r\n" +
                                       cells + "\r\n3,1,40,30\r\n");
    ASSERT_EQ(Convert({"--from", "oldmyfile", folder / "old.rsx", folder / "new.json"}).status, 0);
    const LevelSet set = ReadJson(folder / "new.json");
    EXPECT_EQ(set.Title, "Old one");
    EXPECT_EQ(set.ExtraLifePoints, "200");
    EXPECT_TRUE(set.UseWrapAround);
    EXPECT_EQ(set.Layout(1).Cells[0], 11);
    EXPECT_EQ(set.Layout(1).BallY, 30);
    // By its extension the same file is a current My File, which it is not.
    EXPECT_EQ(Convert({folder / "old.rsx", folder / "wrong.json"}).status, 1);
}

// ---- the command line ---------------------------------------------------------------

TEST(CommandLine, UsageErrorsExitWithTwoAndWriteNothing) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    const std::string in = folder / "in.json";
    const std::vector<std::vector<std::string>> cases{
        {},
        {in},
        {in, folder / "a.json", folder / "b.json"},
        {in, folder / "out.txt"},
        {folder / "in", folder / "out.json"},
        {"--to", "oldmyfile", in, folder / "out.rsx"},
        {"--from", "yaml", in, folder / "out.json"},
        {"--from", "json", "--from", "json", in, folder / "out.json"},
        {"--to"},
        {"--tox=json", in, folder / "out.json"},
        {"--verbose", in, folder / "out.json"},
        {"--check"},
        {"--check", in, folder / "out.json"},
        {"--check", "--to", "json", in},
    };
    for (const auto& args : cases) {
        std::string shown;
        for (const auto& a : args) shown += a + " ";
        const Outcome run = Convert(args);
        EXPECT_EQ(run.status, 2) << shown;
        EXPECT_EQ(run.err.substr(0, 18), "shardles-convert: ") << shown;
        EXPECT_NE(run.err.find("--help"), std::string::npos) << shown;
        EXPECT_EQ(run.out, "") << shown;
    }
    EXPECT_EQ(folder.Files(), std::vector<std::string>{"in.json"});
}

TEST(CommandLine, VersionAndHelpGoToStandardOutput) {
    const Outcome version = Convert({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.substr(0, 17), "shardles-convert ");
    EXPECT_EQ(version.err, "");
    const Outcome help = Convert({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* form : {"myfile", "oldmyfile", "list", "source", "program", "json", "--check"})
        EXPECT_NE(help.out.find(form), std::string::npos) << form;
}

TEST(CommandLine, ADoubleDashEndsTheOptions) {
    Folder folder;
    WriteJson(folder / "-in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    // Relative names that start with a dash need the double dash.
    const std::string command = "cd '" + (folder / "") + "' && " + CONVERT_EXE + " -- -in.json -out.json";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(Exists(folder / "-out.json"));
}

}  // namespace
}  // namespace shd::cli_test
