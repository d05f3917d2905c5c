#include "support/Support.h"

#include <stdlib.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "files/Json.h"

namespace shd::test {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "shd-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data())) throw std::runtime_error("cannot make a temporary folder");
    path = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string FileNames(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    std::string listed;
    for (const auto& name : names) listed += (listed.empty() ? "" : " ") + name;
    return listed;
}

std::string Unescaped(const std::string& text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        if (c == 'x') {
            out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            out += c == 'r' ? '\r' : c == 'n' ? '\n' : c == 't' ? '\t' : c == '0' ? '\0' : c;
        }
    }
    return out;
}

std::filesystem::path DataDir() { return TEST_DATA_DIR; }

LevelSet RandomSet(GameKind kind, int levels, bool pictures, unsigned seed) {
    std::mt19937 rng(seed);
    auto roll = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    LevelSet set = NewSet(kind);
    MakeLevels(set, levels);
    // No comma, semicolon or quote, which the assembly source cannot carry;
    // letters from the upper half of Windows-1252 too.
    static const std::string alphabet = "ABCxyz019 !#%&'()*+-./:<=>?@[]^_{|}~\x80\xE9\xDF";
    set.Title.clear();
    for (int i = roll(0, 20); i > 0; --i) set.Title += alphabet[static_cast<std::size_t>(roll(0, static_cast<int>(alphabet.size()) - 1))];
    if (kind == GameKind::Shardles) {
        set.BonusClock = std::to_string(30 * roll(1, 4));
        set.ExtraLifePoints = std::to_string(100 * roll(1, 8));
        set.ArrowBlocksBreakable = roll(0, 1) == 1;
        set.UseWrapAround = roll(0, 1) == 1;
        set.UseShardlesDebugger = roll(0, 1) == 1;
        set.MatchLocksToBlocks = roll(0, 1) == 1;
        set.UseCustomShardles = pictures;
        for (auto* picture : {&set.CustomShardlePicture, &set.CustomChangerPicture})
            for (auto& cell : picture->cells) cell = pictures ? static_cast<std::uint8_t>(roll(0, 1)) : 0;
    }
    for (int level = 1; level <= levels; ++level) {
        LevelLayout& layout = set.Layout(level);
        for (auto& cell : layout.Cells) cell = static_cast<std::uint8_t>(roll(0, 2) == 0 ? roll(0, 15) : 0);
        layout.Cells[static_cast<std::size_t>(roll(0, 63))] = 6;
        layout.BlockCount = static_cast<std::int16_t>(roll(0, 120));
        if (kind == GameKind::Shardles) {
            layout.LastBlockCount = static_cast<std::int16_t>(roll(1, 20));
            layout.BallX = static_cast<std::int16_t>(roll(0, 94));
            layout.BallY = static_cast<std::int16_t>(roll(0, 62));
        }
        LevelRecord& record = set.Record(level);
        record.SpottedUnused = roll(0, 1) == 1;
        record.CenterLineUnused = roll(0, 1) == 1;
        record.ZigZagChangerCount = static_cast<std::int16_t>(roll(0, 5));
        record.SpecialUnusedCount = static_cast<std::int16_t>(roll(0, 5));
    }
    return set;
}

LevelSet Carried(const LevelSet& set, FormatId form) {
    LevelSet kept = set;
    kept.CurrentLevel = 1;
    if (form != FormatId::Json) {
        const LevelSet fresh = NewSet(set.Kind);
        for (int level = 1; level <= set.LevelCount(); ++level) {
            LevelRecord& record = kept.Record(level);
            record = LevelRecord{};
            // Of the records, only the My File carries its five fields of a Shardles level.
            if (form != FormatId::MyFile || !set.IsShardles()) continue;
            const LevelRecord& given = set.Record(level);
            record.CenterLineUnused = given.CenterLineUnused;
            record.CustomChangerCount = given.CustomChangerCount;
            record.SpottedChangerCount = given.SpottedChangerCount;
            record.ZigZagChangerCount = given.ZigZagChangerCount;
            record.SpecialUnusedCount = given.SpecialUnusedCount;
        }
        if (!set.UseCustomShardles) kept.CustomShardlePicture = kept.CustomChangerPicture = PiecePicture{};
        if (form == FormatId::Source || form == FormatId::Program)
            kept.UseShardlesDebugger = kept.MatchLocksToBlocks = true;
        if (!set.IsShardles()) {
            // A Tiltbash file holds its title, its cells and block counts.
            LevelSet tiltbash = fresh;
            tiltbash.Title = set.Title;
            tiltbash.Layouts = kept.Layouts;
            tiltbash.Records = kept.Records;
            for (LevelLayout& layout : tiltbash.Layouts) layout.BallX = layout.BallY = layout.LastBlockCount = 0;
            kept = tiltbash;
        }
    }
    RecountCurrentLevel(kept);  // opening shows level 1, which recounts it
    return kept;
}

bool UseADecimalCommaLocale() {
    // Built into a folder of our own, so the test needs no locale installed system-wide.
    static const std::string folder = [] {
        const auto path = std::filesystem::temp_directory_path() / "shd-locales";
        std::filesystem::create_directories(path);
        const std::string command = "localedef -i de_DE -f UTF-8 '" + (path / "de_DE.UTF-8").string() + "' 2>/dev/null";
        return std::system(command.c_str()) == 0 ? path.string() : std::string();
    }();
    ::setenv("LOCPATH", folder.c_str(), 1);
    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    return std::setlocale(LC_ALL, "") && std::localeconv()->decimal_point == std::string(",");
}

void UseTheCLocale() {
    ::unsetenv("LC_ALL");
    ::unsetenv("LOCPATH");
    std::setlocale(LC_ALL, "C");
}

std::string JsonOf(const LevelSet& set) { return WriteJsonFile(set).bytes; }

}  // namespace shd::test
