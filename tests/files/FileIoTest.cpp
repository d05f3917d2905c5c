// The one place that touches the disk: whole reads, and saves that replace a
// file whole or leave it as it was.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "files/FileIo.h"
#include "support/Support.h"

namespace shd::test {
namespace {

namespace fs = std::filesystem;

TEST(FileIo, ReadsAndSavesFilesOfAnySizeWholeAndLeavesNothingBeside) {
    TempDir dir;
    std::string big(300000, 'x');
    big[123456] = '\0';
    for (const std::string& bytes : {std::string("first"), big, std::string()}) {
        std::string error;
        ASSERT_TRUE(WriteFileAtomic(dir / "set.rsx", bytes, &error)) << error;
        EXPECT_EQ(ReadWholeFile(dir / "set.rsx"), bytes);
        EXPECT_EQ(FileNames(dir.path), "set.rsx");
    }
    std::string error;
    EXPECT_FALSE(ReadWholeFile(dir / "absent", &error));
    EXPECT_EQ(error, "cannot be read: No such file or directory");
    EXPECT_FALSE(ReadWholeFile(dir.path, &error));
    EXPECT_EQ(error, "cannot be read: Is a directory");
}

TEST(FileIo, AFailedSaveLeavesWhatWasThereAndSaysWhy) {
    TempDir dir;
    std::string error;
    EXPECT_FALSE(WriteFileAtomic(dir / "missing/set.rsx", "new", &error));
    EXPECT_NE(error.find("No such file or directory"), std::string::npos) << error;
    EXPECT_EQ(FileNames(dir.path), "");
    // A folder cannot be replaced by a file; what was written beside it goes again.
    fs::create_directory(dir.path / "taken");
    WriteFile(dir.path / "taken" / "inside", "kept");
    EXPECT_FALSE(WriteFileAtomic(dir / "taken", "new", &error));
    EXPECT_NE(error.find("cannot replace"), std::string::npos) << error;
    EXPECT_EQ(FileNames(dir.path), "taken");
    EXPECT_EQ(ReadFile(dir.path / "taken" / "inside"), "kept");
    EXPECT_EQ(FolderOf("/a/b.rsx") + "|" + FileTitleOf("/a/b.rsx") + "|" + FolderOf("b.rsx"), "/a/|b.rsx|");
}

// A FIFO or a device is never waited on where waiting would hold up the
// window: it is not read, and is written only as the caller says.
TEST(FileIo, OnlyARegularFileIsReadAndAFifoIsWrittenAsTheCallerSays) {
    TempDir dir;
    ASSERT_EQ(::mkfifo((dir / "fifo").c_str(), 0600), 0);
    std::string error;
    for (const std::string& path : {dir / "fifo", std::string("/dev/null")}) {
        EXPECT_FALSE(ReadWholeFile(path, &error)) << path;
        EXPECT_EQ(error, "cannot be read: it is not a regular file");
    }
    EXPECT_FALSE(WriteFileAtomic(dir / "fifo", "set", &error, OtherTargets::Refuse));
    EXPECT_EQ(error, "cannot write: it is not a regular file");
    EXPECT_FALSE(WriteFileAtomic(dir / "fifo", "set", &error, OtherTargets::WriteWithoutWaiting));
    EXPECT_EQ(error, "cannot write: No such device or address");
    EXPECT_TRUE(WriteFileAtomic("/dev/null", "set", &error, OtherTargets::WriteWithoutWaiting)) << error;
    EXPECT_EQ(FileNames(dir.path), "fifo");
}

}  // namespace
}  // namespace shd::test
