// The converter end to end: every form to every form, the editor's rules on
// saving, the refusals and the command line.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "cli/CliSupport.h"
#include "files/Json.h"
#include "formats/Formats.h"

namespace shd::cli_test {
namespace {

// The forms that can be written: an extension the converter knows them by, in
// mixed case, and bytes each file of that form holds near its start.
struct Form {
    std::string name, extension, mark;
};
const Form kWritable[] = {{"myfile", "RSX", "QUARTLEV\r\n"},
                          {"list", "83l", "\r\n//LQRVLE\r\n"},
                          {"source", "Asm", "        .org             9327h"},
                          {"program", "83P", "**TI83**"},
                          {"json", "json", "\"Kind\""}};

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
    for (const Form& from : kWritable) {
        // Program titles name the calculator program, so keep them short.
        const std::string input = folder / ("in." + from.extension);
        const Outcome made = Convert({folder / "original.json", input});
        ASSERT_EQ(made.status, 0) << from.name << ": " << made.err;
        EXPECT_NE(ReadBytes(input).substr(0, 100).find(from.mark), std::string::npos) << from.name;
        for (const Form& to : kWritable) {
            SCOPED_TRACE(from.name + " to " + to.name);
            const std::string output = folder / ("out." + to.extension);
            const Outcome converted = Convert({input, output});
            ASSERT_EQ(converted.status, 0) << converted.err;
            EXPECT_EQ(converted.out + converted.err, "");
            EXPECT_EQ(ConvertBack(output), AsOpened(original));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothGames, EveryPair, testing::Values(GameKind::Shardles, GameKind::Tiltbash),
                         [](const auto& info) { return info.param == GameKind::Shardles ? "Shardles" : "Tiltbash"; });

TEST(JsonThroughTheConverter, ReadsBackIdenticalAndWritesTheSameBytesOnASecondRoundOntoItself) {
    Folder folder;
    LevelSet set = PortableSet(GameKind::Shardles, 255, 9);
    // What only JSON carries: records, odd settings, counts the game never sees;
    // level 1's stale records are recounted on opening, level 2's left as read.
    set.BonusClock = "45";
    set.UseShardlesDebugger = false;
    set.Record(1) = {.SpottedUnused = true, .SpottedCount = 99};
    set.Record(2).SpottedCount = 9;
    set.Record(3).ZigZagUnused = true;
    set.Record(4).SpecialUnusedCount = -7;
    set.Layout(5).BlockCount = -300;
    set.CustomChangerPicture.at(7) = 200;
    WriteJson(folder / "a.json", set);

    ASSERT_EQ(Convert({folder / "a.json", folder / "b.json"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "b.json"), AsOpened(set));
    // A second round, onto its own input, writes the same bytes.
    const std::string first = ReadBytes(folder / "b.json");
    ASSERT_EQ(Convert({folder / "b.json", folder / "b.json"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "b.json"), first);
    EXPECT_EQ(folder.Files(), (std::vector<std::string>{"a.json", "b.json"}));
}

TEST(CountingBeforeSaving, MyFileListAndProgramCountAndRefuseALevelWithoutLastBlocks) {
    Folder folder;
    LevelSet stale = NewSet(GameKind::Shardles);  // ten blocks, one last, three unused
    std::fill_n(stale.Layout(1).Cells.begin(), 10, 1);
    stale.Layout(1).Cells[50] = 6;
    stale.Record(1).SpecialUnusedCount = 3;
    stale.Layout(1).BlockCount = 99;  // stale, as a hand-written file may have it
    stale.Layout(1).LastBlockCount = 42;
    WriteJson(folder / "stale.json", stale);
    LevelSet noLast = PortableSet(GameKind::Shardles, 5, 3);
    for (int level : {3, 5}) std::ranges::replace(noLast.Layout(level).Cells, 6, 0);
    WriteJson(folder / "nolast.json", noLast);
    LevelSet tiltbash = NewSet(GameKind::Tiltbash);  // never refused
    tiltbash.Layout(1).Cells = BlockGrid(64, 8);
    WriteJson(folder / "tiltbash.json", tiltbash);

    const struct { const char* extension; bool counts; } forms[] = {{"rsx", true}, {"83l", true}, {"83p", true}, {"z80", false}, {"json", false}};
    for (const auto& form : forms) {
        SCOPED_TRACE(form.extension);
        const std::string out = folder / (std::string("out.") + form.extension);
        ASSERT_EQ(Convert({folder / "stale.json", out}).status, 0);
        const LevelLayout written = ConvertBack(out).Layout(1);
        EXPECT_EQ(written.BlockCount, form.counts ? 7 : 99);
        EXPECT_EQ(written.LastBlockCount, form.counts ? 1 : 42);
        ASSERT_EQ(Convert({folder / "tiltbash.json", out}).status, 0);
        EXPECT_EQ(ConvertBack(out).Layout(1).BlockCount, form.counts ? 128 : 0);

        const std::string refused = folder / (std::string("refused.") + form.extension);
        const Outcome run = Convert({folder / "nolast.json", refused});
        EXPECT_EQ(run.status, form.counts ? 1 : 0);
        EXPECT_EQ(run.err, form.counts ? "Level #3 has no Last Blocks.\n" : "");
        EXPECT_EQ(std::filesystem::exists(refused), !form.counts);
    }
}

TEST(Refusals, PrintTheFileThePlaceAndTheReasonAndWriteNothing) {
    Folder folder;
    WriteJson(folder / "good.json", PortableSet(GameKind::Shardles, 3, 2));
    ASSERT_EQ(Convert({folder / "good.json", folder / "whole.83p"}).status, 0);
    const std::pair<const char*, std::string> inputs[] = {
        {"field.json", R"({"Levels": [{"BallX": "7"}]})"},
        {"syntax.json", "{\n\"Kind\": Shardles}"},
        {"bad.rsx", "quartlev\r\n"},
        {"bad.83l", "Title\r\n//lQRVLE\r\n"},
        {"bad.z80", "        .org             9327H\r\n"},
        {"empty.z80", ""},
        {"old.txt", "QUARTLEV\r\nT\r\nFalse\r\n"},
        {"cut.rsx", "QUARTLEV\r\nCut\r\nFalse\r\n 2 \r\n0,0,0\r\n"},
        {"cut.83p", ReadBytes(folder / "whole.83p").substr(0, 120)},
        {"out.json", "keep me"},  // every refusal leaves it alone
    };
    for (const auto& [name, bytes] : inputs) WriteBytes(folder / name, bytes);
    std::filesystem::create_directory(folder / "folder.json");
    const std::vector<std::string> files = folder.Files();

    // The arguments, file names in the folder, and all standard error says with
    // @ for the folder, or how it starts when that ends in ": ".
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"field.json", "out.json"}, "@field.json: .Levels[0].BallX: must be a whole number from -32768 to 32767"},
        {{"syntax.json", "out.json"},
         "@syntax.json: byte 10 (line 2, column 9): not a JSON value"},
        {{"bad.rsx", "out.json"}, "@bad.rsx: Not one of my files."},
        {{"--check", "--from=myfile", "bad.rsx"}, "@bad.rsx: Not one of my files."},
        {{"bad.83l", "out.json"}, "@bad.83l: Not a valid list file."},
        {{"bad.z80", "out.json"}, "@bad.z80: Not compilable code."},
        {{"empty.z80", "out.json"}, "@empty.z80: line 1: the file ends before the origin line"},
        {{"--from=oldmyfile", "old.txt", "out.json"}, "@old.txt: line 4: the file ends before the level count"},
        {{"cut.rsx", "out.json"}, "@cut.rsx: line 6: the file ends inside level 1"},
        {{"cut.83p", "out.json"}, "@cut.83p: byte 120: the file ends inside level 1"},
        {{"none.json", "out.json"}, "@none.json: cannot be read: No such file or directory"},
        {{"folder.json", "out.json"}, "@folder.json: cannot be read: Is a directory"},
        {{"good.json", "levels123.83p"},
         "This name has to be 8 characters long because this is the name that is shown in the Calculator!"},
        {{"--to=program", "good.json", "abc"}, "@abc: The file name is too short to give the program a name."},
        {{"good.json", "missing/out.json"}, "@missing/out.json: "},
    };
    for (const auto& [names, said] : cases) {
        std::vector<std::string> args;
        for (const auto& arg : names) args.push_back(arg.starts_with("-") ? arg : folder / arg);
        SCOPED_TRACE(args.back());
        const Outcome run = Convert(args);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, "");
        std::string expected = said;
        if (expected.starts_with("@")) expected.replace(0, 1, folder / "");
        if (expected.ends_with(": ")) {
            EXPECT_EQ(run.err.substr(0, expected.size()), expected) << run.err;
        } else {
            EXPECT_EQ(run.err, expected + "\n");
        }
        EXPECT_EQ(folder.Files(), files);
        EXPECT_EQ(ReadBytes(folder / "out.json"), "keep me");
    }
}

TEST(Output, AProgramFileReplacesAnExistingFileWholeAndIsNamedAfterIt) {
    Folder folder;
    WriteJson(folder / "set.json", PortableSet(GameKind::Shardles, 4, 8));
    for (const auto& [file, name] : {std::pair{"levels12.83p", "LEVELS12"}, {"tilt.83p", "TILT\0\0\0\0"}}) {
        WriteBytes(folder / file, std::string(5000, 'x'));
        ASSERT_EQ(Convert({folder / "set.json", folder / file}).status, 0);
        const std::string bytes = ReadBytes(folder / file);
        EXPECT_EQ(bytes.substr(0, 8), "**TI83**");
        EXPECT_EQ(bytes.substr(60, 8), std::string(name, 8));
        EXPECT_LT(bytes.size(), 5000u);
    }
    EXPECT_EQ(folder.Files(), (std::vector<std::string>{"levels12.83p", "set.json", "tilt.83p"}));
}

TEST(Forms, FromAndToOverrideTheExtensionsAndOnlyFromReadsAnOldMyFile) {
    Folder folder;
    const LevelSet set = PortableSet(GameKind::Shardles, 2, 4);
    WriteJson(folder / "set.data", set);
    ASSERT_EQ(Convert({"--from", "json", "--to=source", folder / "set.data", folder / "set.json"}).status, 0);
    EXPECT_EQ(ReadBytes(folder / "set.json").substr(0, 30), "        .org             9327h");
    ASSERT_EQ(Convert({"--from=source", folder / "set.json", folder / "back.JSON"}).status, 0);
    EXPECT_EQ(ReadJson(folder / "back.JSON").Layout(2), set.Layout(2));

    // Older files have no debugger and match-locks lines, letters for codes
    // 10 to 15 and no record line after a level's four numbers.
    std::string cells;
    for (int i = 0; i < 80; ++i) cells += i == 0 ? "B," : i == 5 ? "6," : i == 79 ? " 0 " : "0,";
    WriteBytes(folder / "old.rsx", "QUARTLEV\r\nOld one\r\nTrue\r\n 1 \r\nFalse\r\n200\r\n60\r\nTrue\r\nFalse\r\n" +
                                       cells + "\r\n3,1,40,30\r\n");
    ASSERT_EQ(Convert({"--from", "oldmyfile", folder / "old.rsx", folder / "new.json"}).status, 0);
    const LevelSet old = ReadJson(folder / "new.json");
    EXPECT_EQ(old.Title, "Old one");
    EXPECT_EQ(old.Layout(1).Cells[0], 11);
    // By its extension the same file is a current My File, which it is not.
    EXPECT_EQ(Convert({folder / "old.rsx", folder / "wrong.json"}).status, 1);
}

TEST(CommandLine, UsageErrorsExitWithTwoAndWriteNothing) {
    Folder folder;
    WriteJson(folder / "in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    const std::string in = folder / "in.json";
    const std::string out = folder / "out.json";
    const std::vector<std::vector<std::string>> cases{
        {}, {in}, {"--to"}, {"--check"}, {in, folder / "a.json", folder / "b.json"},
        {in, folder / "out.txt"}, {folder / "in", out}, {"--to", "oldmyfile", in, folder / "out.rsx"},
        {"--from", "yaml", in, out}, {"--from", "json", "--from", "json", in, out}, {"--tox=json", in, out},
        {"--verbose", in, out}, {"--check", in, out}, {"--check", "--to", "json", in},
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

TEST(CommandLine, VersionHelpAndADoubleDashBeforeNamesThatStartWithOne) {
    const Outcome version = Convert({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out.substr(0, 17), "shardles-convert ");
    EXPECT_EQ(version.err, "");
    const Outcome help = Convert({"--help"});
    EXPECT_EQ(help.status, 0);
    for (const char* form : {"myfile", "oldmyfile", "list", "source", "program", "json", "--check"})
        EXPECT_NE(help.out.find(form), std::string::npos) << form;
    Folder folder;
    WriteJson(folder / "-in.json", PortableSet(GameKind::Tiltbash, 1, 1));
    const std::string command = "cd '" + (folder / "") + "' && " + CONVERT_EXE + " -- -in.json -out.json";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "-out.json"));
}

}  // namespace
}  // namespace shd::cli_test
