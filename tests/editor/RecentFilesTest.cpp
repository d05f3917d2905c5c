// The recent files' list and the settings, whatever the disk holds: any name
// comes back as it went, and nothing found there stops the editor starting.
#include <sys/stat.h>

#include "editor/RecentFiles.h"
#include "support/EditorFixture.h"

namespace shd::test {
namespace {

namespace fs = std::filesystem;

TEST(RecentFiles, AnyNameComesBackAsItWentAndAnOlderListAsItsLines) {
    const std::vector<std::string> names{"/a/two\nlines.rsx", "/b/back\\slash\\n.rsx", "/c/cr\r.rsx", "/d/Bäll.83p",
                                         "/e/\\"};
    EXPECT_EQ(RecentFilesOf(RecentFilesText(names), 8), names);
    EXPECT_EQ(RecentFilesOf(RecentFilesText(names), 2), (std::vector<std::string>{names[0], names[1]}));
    EXPECT_EQ(RecentFilesText({"/x\ny"}).find("/x\ny"), std::string::npos);
    // A line the list does not write is left out; the others stay.
    const std::string header = RecentFilesText({});
    EXPECT_EQ(RecentFilesOf(header + "/ok\n/bad\\q\n/end\\\n\n/fine", 8), (std::vector<std::string>{"/ok", "/fine"}));
    // Written before names were escaped: one name a line, as it stands.
    EXPECT_EQ(RecentFilesOf("/old/a\\n.rsx\n\n/old/b.rsx\n", 8), (std::vector<std::string>{"/old/a\\n.rsx", "/old/b.rsx"}));
}

TEST_F(EditorTest, HostileSettingsAndRecentEntriesNeitherStopNorHoldUpTheStart) {
    WriteFile(dir / "good.rsx", ReadFile(DataDir() / "myfile/shardles.out"));
    fs::create_symlink("loop", dir.path / "loop");
    ASSERT_EQ(::mkfifo((dir / "fifo.rsx").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo((dir / "fifo.ini").c_str(), 0600), 0);
    const std::string entries[] = {dir / std::string(300, 'n'), dir / "loop/set.rsx", dir / "loop",
                                   "\x01\xff\xfe garbage", dir.path.string(), dir / "fifo.rsx", dir / "good.rsx",
                                   dir / "gone.rsx"};
    std::string list;
    for (const std::string& entry : entries) list += entry + "\n";
    WriteFile(dir / "recent.txt", list);
    Editor next(prompts);
    next.Start(dir / "fifo.ini", dir.path, dir / "recent.txt");
    EXPECT_EQ(next.lastFolder(), dir.path.string());
    EXPECT_EQ(next.recentFiles(), std::vector<std::string>{dir / "good.rsx"});
    // A FIFO chosen anyway is refused at once, and the set stays as it was.
    next.OpenPath(dir / "fifo.rsx");
    EXPECT_EQ(next.ui().status, "fifo.rsx: cannot be read: it is not a regular file");
    EXPECT_EQ(next.set().LevelCount(), 1);
    // The list is kept when a recent file goes, and holds any name.
    WriteFile(dir / "two\nlines.rsx", ReadFile(DataDir() / "myfile/shardles.out"));
    prompts.ExpectMessage("Opened Succesfully");
    next.OpenPath(dir / "two\nlines.rsx");
    next.Close();
    Editor after(prompts);
    after.Start(dir / "info.ini", dir.path, dir / "recent.txt");
    EXPECT_EQ(after.recentFiles(), (std::vector<std::string>{dir / "two\nlines.rsx", dir / "good.rsx"}));
}

}  // namespace
}  // namespace shd::test
