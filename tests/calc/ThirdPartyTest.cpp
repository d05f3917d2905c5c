// The TI file library and the GNU Z80 assembler, as independent judges of
// what we write.
#include <gtest/gtest.h>

// The TI headers use C's `restrict`.
#define restrict __restrict__
#include <tilp2/tifiles.h>
#undef restrict

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

#include "calc/CalcTestSupport.h"
#include "calc/LevelImage.h"
#include "calc/ProgramFile.h"
#include "calc/SourceFile.h"
#include "support/TempDir.h"

namespace shd {
namespace {

namespace fs = std::filesystem;

using test::ReadFile;
using test::TempDir;
using test::WriteFile;

TEST(CalcThirdParty, TiFileLibraryReadsEveryProgramFile) {
    tifiles_library_init();  // counts its callers; nothing to check
    TempDir dir;
    const std::vector<test::GeneratedSet> sets = test::GeneratedSets();
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const auto& [label, set] = sets[i];
        SCOPED_TRACE(label);
        const std::string name = std::string("LEVELSET").substr(0, 1 + i % 8);  // names of 1 to 8 characters
        const WriteResult file = WriteProgramFile(set, name);
        ASSERT_TRUE(file.ok) << file.message;
        const std::string image = BuildLevelImage(set).bytes;
        const fs::path path = dir / (label + ".83p");
        WriteFile(path, file.bytes);

        FileContent* content = tifiles_content_create_regular(CALC_TI83);
        ASSERT_NE(content, nullptr);
        ASSERT_EQ(tifiles_file_read_regular(path.c_str(), content), 0);
        EXPECT_EQ(content->model, CALC_TI83);
        EXPECT_STREQ(content->comment, "Rovak's Shardles & Tiltbash Level Editor");
        // The library computes the checksum itself beside the one stored.
        EXPECT_EQ(content->checksum, content->stored_checksum);
        ASSERT_EQ(content->num_entries, 1u);
        const VarEntry* entry = content->entries[0];
        EXPECT_STREQ(entry->name, name.c_str());
        EXPECT_EQ(entry->type, 0x06);  // protected program
        ASSERT_EQ(entry->size, image.size() + 2);
        const std::string data(reinterpret_cast<const char*>(entry->data), entry->size);
        EXPECT_EQ(data, test::ByteString({static_cast<int>(image.size() & 0xFF), static_cast<int>(image.size() >> 8)}) + image);
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

TEST(CalcThirdParty, GnuAssemblerBuildsTheSameImage) {
    TempDir dir;
    const std::vector<test::GeneratedSet> sets = test::GeneratedSets();
    // Two assembler runs at a time, from one script.
    std::string script = "cd '" + dir.path.string() + "' || exit 1\n" +
                         "run() { '" Z80_AS "' -o \"$1.o\" \"$1.s\" 2>\"$1.err\" && '" Z80_OBJCOPY
                         "' -O binary \"$1.o\" \"$1.bin\" 2>>\"$1.err\"; }\n";
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const WriteResult source = WriteSourceFile(sets[i].set);
        ASSERT_TRUE(source.ok) << source.message;
        WriteFile(dir / (sets[i].label + ".s"), ForGnuAssembler(source.bytes));
        script += "run " + sets[i].label + (i % 2 == 0 ? " &\n" : "\nwait\n");
    }
    WriteFile(dir / "run.sh", script + "wait\n");
    ASSERT_EQ(std::system(("sh '" + (dir / "run.sh").string() + "'").c_str()), 0);

    constexpr std::size_t kOrigin = 0x9327;
    for (const auto& [label, set] : sets) {
        SCOPED_TRACE(label);
        const std::string assembled = ReadFile(dir / (label + ".bin"));
        ASSERT_GT(assembled.size(), kOrigin) << ReadFile(dir / (label + ".err"));
        EXPECT_EQ(assembled.substr(kOrigin), BuildLevelImage(set).bytes);
    }
}

}  // namespace
}  // namespace shd
