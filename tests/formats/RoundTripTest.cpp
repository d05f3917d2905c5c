// Generated sets through every form that is written, and the TI file library
// and the GNU Z80 assembler as independent judges of the calculator forms.
#include <gtest/gtest.h>

// The TI headers use C's `restrict`.
#define restrict __restrict__
#include <tilp2/tifiles.h>
#undef restrict

#include <regex>
#include <sstream>

#include "calc/LevelImage.h"
#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "support/Support.h"

namespace shd::test {
namespace {

// Both games, Shardles with and without pictures, titles of 0 to 20
// characters, 1, 2 and 255 levels.
std::vector<LevelSet> GeneratedSets() {
    std::vector<LevelSet> sets;
    for (unsigned seed = 0; seed < 27; ++seed) {
        const int levels[] = {1, 2, 255};
        sets.push_back(RandomSet(seed % 3 == 2 ? GameKind::Tiltbash : GameKind::Shardles, levels[seed / 3 % 3],
                                 seed % 3 == 1, seed));
    }
    return sets;
}

TEST(RoundTrip, EveryFormGivesBackWhatItCarriesOfEveryGeneratedSet) {
    for (const Format& format : AllFormats()) {
        if (!format.write) continue;
        for (const LevelSet& set : GeneratedSets()) {
            SCOPED_TRACE(std::string(format.name) + ", " + std::to_string(set.LevelCount()) + " levels, title \"" +
                         set.Title + "\"");
            const WriteResult written = format.write(set, "ROUND.83p");
            ASSERT_TRUE(written.ok) << written.message;
            ReadResult read = format.read(written.bytes);
            ASSERT_TRUE(read.complete()) << read.outcome.Text();
            RecountCurrentLevel(read.set);
            const LevelSet want = Carried(set, format.id);
            if (!(read.set == want)) ADD_FAILURE() << JsonOf(read.set) << "\nwanted\n" << JsonOf(want);
        }
    }
}

TEST(ThirdParty, TheTiFileLibraryReadsEveryProgramFileWithItsChecksumNameAndImage) {
    tifiles_library_init();  // counts its callers; nothing to check
    TempDir dir;
    int n = 0;
    for (const LevelSet& set : GeneratedSets()) {
        const std::string name = std::string("LEVELSET").substr(0, static_cast<std::size_t>(1 + n++ % 8));
        const WriteResult file = WriteProgramFile(set, name);
        ASSERT_TRUE(file.ok) << file.message;
        WriteFile(dir.path / "set.83p", file.bytes);
        FileContent* content = tifiles_content_create_regular(CALC_TI83);
        ASSERT_EQ(tifiles_file_read_regular((dir / "set.83p").c_str(), content), 0);
        EXPECT_STREQ(content->comment, "Rovak's Shardles & Tiltbash Level Editor");
        EXPECT_EQ(content->checksum, content->stored_checksum);  // the library sums the bytes itself
        ASSERT_EQ(content->num_entries, 1u);
        const VarEntry* entry = content->entries[0];
        EXPECT_STREQ(entry->name, name.c_str());
        EXPECT_EQ(entry->type, 0x06);  // protected program
        const std::string image = BuildLevelImage(set).bytes;
        const std::string length{static_cast<char>(image.size() & 0xFF), static_cast<char>(image.size() >> 8)};
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(entry->data), entry->size), length + image);
        tifiles_content_delete_regular(content);
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

TEST(ThirdParty, TheGnuAssemblerBuildsTheImageFromEverySource) {
    TempDir dir;
    const std::vector<LevelSet> sets = GeneratedSets();
    std::string script = "cd '" + dir.path.string() + "' || exit 1\n";
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const WriteResult source = WriteSourceFile(sets[i]);
        ASSERT_TRUE(source.ok) << source.message;
        const std::string name = "set" + std::to_string(i);
        WriteFile(dir.path / (name + ".s"), ForGnuAssembler(source.bytes));
        script += "'" Z80_AS "' -o " + name + ".o " + name + ".s 2>" + name + ".err && '" Z80_OBJCOPY
                  "' -O binary " + name + ".o " + name + ".bin 2>>" + name + ".err\n";
    }
    WriteFile(dir.path / "run.sh", script);
    ASSERT_EQ(std::system(("sh '" + (dir / "run.sh") + "'").c_str()), 0);
    constexpr std::size_t kOrigin = 0x9327;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const std::string assembled = ReadFile(dir.path / ("set" + std::to_string(i) + ".bin"));
        ASSERT_GT(assembled.size(), kOrigin) << ReadFile(dir.path / ("set" + std::to_string(i) + ".err"));
        EXPECT_EQ(assembled.substr(kOrigin), BuildLevelImage(sets[i]).bytes) << i;
    }
}

}  // namespace
}  // namespace shd::test
