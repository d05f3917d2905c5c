#include "cli/CliSupport.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "files/Json.h"
#include "rules/LevelChecks.h"
#include "support/Generators.h"

namespace shd::cli_test {

namespace fs = std::filesystem;

namespace {
std::string Quoted(const std::string& arg) {
    std::string quoted = "'";
    for (char c : arg) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}
}  // namespace

Outcome Convert(const std::vector<std::string>& args) {
    Folder streams;
    std::string command = Quoted(CONVERT_EXE);
    for (const auto& arg : args) command += " " + Quoted(arg);
    command += " >" + Quoted(streams / "out") + " 2>" + Quoted(streams / "err") + " </dev/null";
    Outcome run;
    const int raw = std::system(command.c_str());
    if (raw != -1 && WIFEXITED(raw)) run.status = WEXITSTATUS(raw);
    run.out = ReadBytes(streams / "out");
    run.err = ReadBytes(streams / "err");
    return run;
}

Folder::Folder() {
    std::string pattern = (fs::temp_directory_path() / "shardles-cli-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path_ = pattern;
}

Folder::~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::vector<std::string> Folder::Files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void WriteJson(const std::string& path, const LevelSet& set) { WriteBytes(path, WriteJsonFile(set).bytes); }

LevelSet ReadJson(const std::string& path) {
    const ReadResult read = ReadJsonFile(ReadBytes(path));
    EXPECT_TRUE(read.complete()) << path << ": " << read.outcome.message;
    return read.set;
}

LevelSet ConvertBack(const std::string& path) {
    Folder folder;
    const Outcome run = Convert({path, folder / "back.json"});
    EXPECT_EQ(run.status, 0) << path << ": " << run.err;
    return ReadJson(folder / "back.json");
}

LevelSet PortableSet(GameKind kind, int levels, unsigned seed) {
    LevelSet set = test::RandomSet({kind, levels, kind == GameKind::Shardles, 0}, seed);
    set.Title = "Caf\xE9 \x80 \xDF" + set.Title + "!";
    set.UseShardlesDebugger = true;
    set.MatchLocksToBlocks = true;
    for (int level = 1; level <= set.LevelCount(); ++level) {
        set.Record(level) = LevelRecord{};
        const BlockCounts counts = ComputeBlockCounts(set, level);
        set.Layout(level).BlockCount = counts.blockCount;
        set.Layout(level).LastBlockCount = counts.lastBlockCount;
    }
    return set;
}

}  // namespace shd::cli_test
