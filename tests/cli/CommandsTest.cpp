// The converter run as a script runs it, from the command cases in
// tests/data/cli (and shardles-render from those of tests/data/render, with
// `$ ` running it and the program in $RENDER as well).
// Each NAME.case runs in a folder of its own, line by line:
//   copy: SOURCE [NAME]   a file of tests/data into the folder (as NAME)
//   file: NAME TEXT       a file of that text; \r \n \t \0 \xHH are escapes
//   $ ARGUMENTS           runs shardles-convert ARGUMENTS in the folder, by sh
//   sh: COMMANDS          runs the commands there, with the program in $CONVERT
//                         and a TI-83 on a virtual link in $CALCULATOR
//   exit: N               the status of the last run
//   out: TEXT, err: TEXT  one line of its standard output or error, in order;
//                         "@" stands for the folder; no such line: nothing said
//   same: NAME OTHER      two files of the folder are the same
//   has: NAME TEXT        the folder's file holds the text (escapes as above)
//   files: NAMES          the folder holds exactly these files
// Lines starting with "#" say what the case is about.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <sys/wait.h>

#include "support/Support.h"

namespace shd::test {
namespace {

namespace fs = std::filesystem;

#ifndef CASES
#define CASES "cli"
#define PROGRAM "CONVERT"
#define RENDER_EXE ""
#endif

// The text after the first blank, and the first word.
std::pair<std::string, std::string> Split(const std::string& text) {
    const auto blank = text.find(' ');
    if (blank == std::string::npos) return {text, {}};
    return {text.substr(0, blank), text.substr(blank + 1)};
}

class Commands : public testing::TestWithParam<fs::path> {};

TEST_P(Commands, RunAsTheCaseSays) {
    TempDir work;
    const std::string folder = work.path.string();
    std::istringstream lines(ReadFile(GetParam()));
    std::string out, err;
    auto expectLine = [&](std::string& stream, std::string want, const char* which) {
        for (std::size_t at; (at = want.find('@')) != std::string::npos;) want.replace(at, 1, folder);
        const auto end = stream.find('\n');
        EXPECT_EQ(stream.substr(0, end), want) << which;
        stream.erase(0, end == std::string::npos ? std::string::npos : end + 1);
    };
    auto ranDry = [&] {
        EXPECT_EQ(out, "") << "more standard output";
        EXPECT_EQ(err, "") << "more standard error";
    };
    int line = 0, last = 0;
    for (std::string text; std::getline(lines, text);) {
        SCOPED_TRACE(GetParam().filename().string() + ":" + std::to_string(++line) + ": " + text);
        const auto [word, rest] = Split(text);
        if (word.empty() || word[0] == '#') continue;
        if (word == "copy:") {
            const auto [source, name] = Split(rest);
            fs::copy_file(DataDir() / source, work.path / (name.empty() ? fs::path(source).filename() : fs::path(name)));
        } else if (word == "file:") {
            const auto [name, bytes] = Split(rest);
            WriteFile(work.path / name, Unescaped(bytes));
        } else if (word == "$" || word == "sh:") {
            ranDry();
            const std::string command = "cd '" + folder + "' && CONVERT='" CONVERT_EXE "' CALCULATOR='" FAKE_CALCULATOR
                                        "' RENDER='" RENDER_EXE "' && export CONVERT CALCULATOR RENDER && { " +
                                        (word == "$" ? "\"$" PROGRAM "\" " : "") + rest + "\n} >'" + folder +
                                        "/.out' 2>'" + folder + "/.err'";
            last = std::system(command.c_str());
            out = ReadFile(work.path / ".out");
            err = ReadFile(work.path / ".err");
            fs::remove(work.path / ".out");
            fs::remove(work.path / ".err");
        } else if (word == "exit:") {
            EXPECT_TRUE(WIFEXITED(last));
            EXPECT_EQ(WEXITSTATUS(last), std::stoi(rest));
        } else if (word == "out:") {
            expectLine(out, rest, "standard output");
        } else if (word == "err:") {
            expectLine(err, rest, "standard error");
        } else if (word == "same:") {
            const auto [name, other] = Split(rest);
            EXPECT_TRUE(ReadFile(work.path / name) == ReadFile(work.path / other)) << name << " and " << other;
        } else if (word == "has:") {
            const auto [name, bytes] = Split(rest);
            EXPECT_NE(ReadFile(work.path / name).find(Unescaped(bytes)), std::string::npos) << name;
        } else if (word == "files:") {
            EXPECT_EQ(FileNames(work.path), rest);
        } else {
            ADD_FAILURE() << "unknown line";
        }
    }
    ranDry();
}

std::vector<fs::path> CaseFiles() {
    std::vector<fs::path> cases;
    for (const auto& entry : fs::directory_iterator(DataDir() / CASES))
        if (entry.path().extension() == ".case") cases.push_back(entry.path());
    std::sort(cases.begin(), cases.end());
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Data, Commands, testing::ValuesIn(CaseFiles()), [](const auto& info) {
    std::string name = info.param.stem().string();
    std::replace_if(name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
});

}  // namespace
}  // namespace shd::test
