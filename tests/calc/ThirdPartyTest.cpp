// The TI file library and the GNU Z80 assembler, as independent judges of
// what we write.
#include <gtest/gtest.h>

// The TI headers use C's `restrict`.
#define restrict __restrict__
#include <tilp2/tifiles.h>
#undef restrict

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <vector>

#include "calc/LevelImage.h"
#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "support/Generators.h"

namespace shd {
namespace {

namespace fs = std::filesystem;

class TempDir {
public:
    TempDir() {
        path_ = fs::temp_directory_path() / ("shd-calc-" + std::to_string(::getpid()) + "-" + std::to_string(counter_++));
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~TempDir() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    const fs::path& path() const { return path_; }

private:
    static inline int counter_ = 0;
    fs::path path_;
};

void WriteFile(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary);
    out << bytes;
}

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct Case {
    std::string label;
    std::string name;
    LevelSet set;
};

// Both games, with and without pictures, every title length 0 to 20, and
// 1, 2 and 255 levels among them.
std::vector<Case> GeneratedCases() {
    struct Shape {
        GameKind kind;
        bool pictures;
        const char* label;
    };
    const Shape shapes[] = {{GameKind::Shardles, false, "shd"}, {GameKind::Shardles, true, "pic"},
                            {GameKind::Tiltbash, false, "tlt"}};
    const int levelCounts[] = {1, 2, 255};
    std::vector<Case> cases;
    unsigned seed = 500;
    for (const Shape& shape : shapes)
        for (int length = 0; length <= 20; ++length) {
            const int levels = levelCounts[length % 3];
            Case c;
            c.label = std::string(shape.label) + "-t" + std::to_string(length) + "-l" + std::to_string(levels);
            c.name = (std::string(shape.label) + "T" + std::to_string(length)).substr(0, 8);
            for (char& ch : c.name) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
            c.set = test::RandomSet({shape.kind, levels, shape.pictures, length}, ++seed);
            cases.push_back(std::move(c));
        }
    return cases;
}

TEST(CalcThirdParty, TiFileLibraryReadsEveryProgramFile) {
    tifiles_library_init();  // counts its callers; nothing to check
    TempDir dir;
    for (const Case& c : GeneratedCases()) {
        SCOPED_TRACE(c.label);
        const WriteResult file = WriteProgramFile(c.set, c.name);
        ASSERT_TRUE(file.ok) << file.message;
        const std::string image = BuildLevelImage(c.set).bytes;
        const fs::path path = dir.path() / (c.label + ".83p");
        WriteFile(path, file.bytes);

        EXPECT_TRUE(tifiles_file_is_regular(path.c_str()));
        EXPECT_TRUE(tifiles_file_test(path.c_str(), TIFILE_REGULAR, CALC_TI83));
        EXPECT_EQ(tifiles_file_get_model(path.c_str()), CALC_TI83);

        FileContent* content = tifiles_content_create_regular(CALC_TI83);
        ASSERT_NE(content, nullptr);
        ASSERT_EQ(tifiles_file_read_regular(path.c_str(), content), 0);
        EXPECT_EQ(content->model, CALC_TI83);
        EXPECT_STREQ(content->comment, "Rovak's Shardles & Tiltbash Level Editor");
        // The library computes the checksum itself beside the one stored.
        EXPECT_EQ(content->checksum, content->stored_checksum);
        ASSERT_EQ(content->num_entries, 1u);
        const VarEntry* entry = content->entries[0];
        EXPECT_STREQ(entry->name, c.name.c_str());
        EXPECT_EQ(entry->type, 0x06);  // protected program
        ASSERT_EQ(entry->size, image.size() + 2);
        const std::string data(reinterpret_cast<const char*>(entry->data), entry->size);
        EXPECT_EQ(static_cast<std::uint8_t>(data[0]) | static_cast<std::uint8_t>(data[1]) << 8,
                  static_cast<int>(image.size()));
        EXPECT_EQ(data.substr(2), image);
        tifiles_content_delete_regular(content);

        // The checksum over the data section by the library's own rule.
        const auto* section = reinterpret_cast<const std::uint8_t*>(file.bytes.data()) + 55;
        const unsigned stored = static_cast<std::uint8_t>(file.bytes[file.bytes.size() - 2]) |
                                static_cast<std::uint8_t>(file.bytes.back()) << 8;
        EXPECT_EQ(tifiles_checksum(section, static_cast<unsigned>(file.bytes.size() - 55 - 2)), stored);
    }
}

// That assembler reads "NNNNNNNNb" as a label, so the picture rows alone
// are given its binary form "%NNNNNNNN".
std::string ForGnuAssembler(const std::string& source) {
    static const std::regex pictureRow(R"(^(        \.db             )([01]{8})b\r$)");
    std::istringstream in(source);
    std::string out;
    for (std::string line; std::getline(in, line);) out += std::regex_replace(line, pictureRow, "$1%$2\r") + "\n";
    return out;
}

TEST(CalcThirdParty, GnuAssemblerBuildsTheSameImage) {
    TempDir dir;
    const std::vector<Case> cases = GeneratedCases();
    // Two assembler runs at a time, from one script.
    std::string script = "cd '" + dir.path().string() + "' || exit 1\n" +
                         "run() { '" Z80_AS "' -o \"$1.o\" \"$1.s\" 2>\"$1.err\" && '" Z80_OBJCOPY
                         "' -O binary \"$1.o\" \"$1.bin\" 2>>\"$1.err\"; }\n";
    for (std::size_t i = 0; i < cases.size(); ++i) {
        const WriteResult source = WriteSourceFile(cases[i].set);
        ASSERT_TRUE(source.ok) << source.message;
        WriteFile(dir.path() / (cases[i].label + ".z80"), source.bytes);
        WriteFile(dir.path() / (cases[i].label + ".s"), ForGnuAssembler(source.bytes));
        script += "run " + cases[i].label + (i % 2 == 0 ? " &\n" : "\nwait\n");
    }
    script += "wait\n";
    WriteFile(dir.path() / "run.sh", script);
    ASSERT_EQ(std::system(("sh '" + (dir.path() / "run.sh").string() + "'").c_str()), 0);

    constexpr std::size_t kOrigin = 0x9327;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.label);
        // Only the picture rows were changed for the assembler.
        const std::string written = ReadFile(dir.path() / (c.label + ".z80"));
        const std::string given = ReadFile(dir.path() / (c.label + ".s"));
        EXPECT_EQ(std::count(given.begin(), given.end(), '%'),
                  std::count(written.begin(), written.end(), '%') + (c.set.UseCustomShardles ? 24 : 0));

        const std::string assembled = ReadFile(dir.path() / (c.label + ".bin"));
        ASSERT_GT(assembled.size(), kOrigin) << ReadFile(dir.path() / (c.label + ".err"));
        EXPECT_EQ(assembled.substr(0, kOrigin), std::string(kOrigin, '\0'));  // .org pads up to 9327h
        const std::string image = assembled.substr(kOrigin);
        EXPECT_EQ(image, BuildLevelImage(c.set).bytes);
        const std::string program = WriteProgramFile(c.set, c.name).bytes;
        EXPECT_EQ(image, program.substr(kProgramImageOffset, program.size() - kProgramImageOffset - 2));
        if (c.set.UseCustomShardles) {
            EXPECT_EQ(image.substr(8, 24), program.substr(72 + 8, 24));
        }
    }
}

}  // namespace
}  // namespace shd
