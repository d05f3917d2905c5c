#include "files/FileIo.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "support/TempDir.h"

namespace shd {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

// Nothing but the target is left behind, whether the write worked or not.
std::vector<std::string> Names(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(WriteFileAtomic, CreatesOrReplacesTheWholeFile) {
    TempDir dir;
    const std::string path = (dir / "set.rsx").string();
    std::string big(300000, 'x');
    big[123456] = '\0';
    for (const std::string& bytes : {std::string("first"), big, std::string()}) {
        std::string error;
        ASSERT_TRUE(WriteFileAtomic(path, bytes, &error)) << error;
        EXPECT_EQ(ReadFile(path), bytes);
        EXPECT_EQ(Names(dir.path), std::vector<std::string>{"set.rsx"});
    }
}

TEST(WriteFileAtomic, AFailureLeavesWhatWasThereAndSaysWhy) {
    TempDir dir;
    // No folder to write into: nothing is created.
    std::string error;
    EXPECT_FALSE(WriteFileAtomic((dir / "missing" / "set.rsx").string(), "new", &error));
    EXPECT_NE(error.find("cannot create"), std::string::npos) << error;
    EXPECT_TRUE(Names(dir.path).empty());

    // The target is a folder: the new bytes cannot replace it, and the
    // file written beside it goes again.
    fs::create_directory(dir / "taken");
    WriteFile(dir / "taken" / "inside", "kept");
    error.clear();
    EXPECT_FALSE(WriteFileAtomic((dir / "taken").string(), "new", &error));
    EXPECT_NE(error.find("cannot replace"), std::string::npos) << error;
    EXPECT_EQ(Names(dir.path), std::vector<std::string>{"taken"});
    EXPECT_EQ(ReadFile(dir / "taken" / "inside"), "kept");
}

TEST(ReadWholeFile, ReadsFilesOfAnySizeAndRefusesWhatIsNoFile) {
    TempDir dir;
    for (const std::string& bytes : {std::string(), std::string("a\0b", 3), std::string(4096, 'p'),
                                     std::string(70000, 'q')}) {
        WriteFile(dir / "in", bytes);
        EXPECT_EQ(ReadWholeFile((dir / "in").string()), bytes);
    }
    EXPECT_FALSE(ReadWholeFile((dir / "absent").string()));
    EXPECT_FALSE(ReadWholeFile(dir.path.string()));
}

}  // namespace
}  // namespace shd
