// Recovery copies: the store's copies and locks, and the editor keeping,
// dropping and offering them.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>

#include "editor/Editor.h"
#include "editor/Recovery.h"
#include "files/EditorFiles.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

namespace shd::test {
namespace {

using K = ScriptedPrompts::Kind;
namespace fs = std::filesystem;

LevelSet Pictured(int levels) { return RandomSet(GameKind::Shardles, levels, true, 23u + levels); }

std::string Mine(const LevelSet& set) { return WriteMyFile(set).bytes; }

TEST(RecoveryBytes, CarryTheSetItsFileAndTimeWhateverTheNameHolds) {
    const LevelSet set = Pictured(7);
    for (const std::string document : {"", "/tmp/a set.rsx", "/odd\nname 12 \xE9.rsx"}) {
        std::string why;
        const auto copy = ReadRecoveryBytes(RecoveryBytes(set, document, 1234567890), &why);
        ASSERT_TRUE(copy) << why;
        EXPECT_EQ(copy->document, document);
        EXPECT_EQ(copy->written, 1234567890);
        EXPECT_EQ(Mine(copy->set), Mine(set));
    }
}

TEST(RecoveryBytes, RefuseWhatIsCutOrNotOne) {
    const std::string whole = RecoveryBytes(Pictured(2), "/x.rsx", 5);
    for (const std::size_t length : {std::size_t{0}, std::size_t{10}, std::size_t{24}, std::size_t{29}, whole.size() - 9}) {
        std::string why;
        EXPECT_FALSE(ReadRecoveryBytes(whole.substr(0, length), &why)) << length;
        EXPECT_FALSE(why.empty());
    }
    EXPECT_FALSE(ReadRecoveryBytes(Mine(Pictured(2)), nullptr));
}

class RecoveryStoreTest : public testing::Test {
protected:
    std::string folder() const { return dir / "recovery"; }
    TempDir dir;
};

TEST_F(RecoveryStoreTest, ALiveEditorsCopyIsNeverAnotherOnes) {
    auto first = std::make_unique<RecoveryStore>(folder());
    RecoveryStore second(folder());
    ASSERT_TRUE(first->usable() && second.usable());
    ASSERT_TRUE(first->Write(Pictured(3), "/sets/a.rsx", 100));
    EXPECT_TRUE(fs::exists(first->ownCopyPath()));
    const auto found = second.FindLeftCopies();
    EXPECT_TRUE(found.copies.empty() && found.damaged.empty());
    second.Discard(fs::path(first->ownCopyPath()).stem().string());
    EXPECT_TRUE(fs::exists(first->ownCopyPath()));  // not held, so not removable

    // Once the first is gone without removing its copy, the copy is offered.
    const std::string left = first->ownCopyPath();
    first.reset();
    const auto later = second.FindLeftCopies();
    ASSERT_EQ(later.copies.size(), 1u);
    EXPECT_EQ(later.copies[0].document, "/sets/a.rsx");
    EXPECT_EQ(later.copies[0].written, 100);
    EXPECT_EQ(Mine(later.copies[0].set), Mine(Pictured(3)));
    // A third editor meanwhile does not see the copy the second is deciding on.
    RecoveryStore third(folder());
    EXPECT_TRUE(third.FindLeftCopies().copies.empty());
    second.Discard(later.copies[0].id);
    EXPECT_FALSE(fs::exists(left));
    EXPECT_EQ(FileNames(folder()).find(later.copies[0].id), std::string::npos);
}

// The disk's part runs on the store's thread: a removal after a copy posted
// is never undone by that copy, and the newest copy posted is the one kept.
TEST_F(RecoveryStoreTest, WritesOnItsThreadKeepTheOrderTheyWereAskedIn) {
    RecoveryStore store(folder());
    const LevelSet big = Pictured(255);
    for (int round = 0; round < 10; ++round) {
        store.Post(big, "/a.rsx", round);
        store.Remove();
        ASSERT_TRUE(store.Wait());
        EXPECT_FALSE(fs::exists(store.ownCopyPath())) << round;
    }
    for (int round = 0; round < 5; ++round) store.Post(big, "/a.rsx", round);
    ASSERT_TRUE(store.Wait());
    const auto copy = ReadRecoveryBytes(ReadFile(store.ownCopyPath()), nullptr);
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->written, 4);
}

TEST_F(RecoveryStoreTest, ACopyOfAProcessThatIsGoneIsOfferedOnceItsLockIsFree) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // Ends as a killed editor would: no destructor, the lock file left behind.
        auto* store = new RecoveryStore(folder());
        _exit(store->Write(Pictured(4), "", 7) ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_NE(FileNames(folder()).find(std::to_string(child) + "-"), std::string::npos);

    RecoveryStore next(folder());
    const auto found = next.FindLeftCopies();
    ASSERT_EQ(found.copies.size(), 1u);
    EXPECT_TRUE(found.copies[0].id.starts_with(std::to_string(child) + "-"));
    EXPECT_EQ(found.copies[0].document, "");
    EXPECT_EQ(Mine(found.copies[0].set), Mine(Pictured(4)));
}

TEST_F(RecoveryStoreTest, ADamagedCopyIsReportedAndKeptAside) {
    RecoveryStore store(folder());
    WriteFile(fs::path(folder()) / "1-1.copy", "SHARDLES RECOVERY 1\n12\n3 abc\nnot a set");
    WriteFile(fs::path(folder()) / "2-2.copy", "something else altogether");
    const auto found = store.FindLeftCopies();
    EXPECT_TRUE(found.copies.empty());
    ASSERT_EQ(found.damaged.size(), 2u);
    for (const DamagedCopy& damaged : found.damaged) {
        EXPECT_TRUE(damaged.keptAs.ends_with(".damaged")) << damaged.keptAs;
        EXPECT_TRUE(fs::exists(damaged.keptAs));
    }
    EXPECT_EQ(ReadFile(fs::path(folder()) / "2-2.damaged"), "something else altogether");
    // Reported once: what is kept aside is not offered again.
    EXPECT_TRUE(RecoveryStore(folder()).FindLeftCopies().damaged.empty());
}

// An editor with a recovery store, started as the program starts it.
class EditorRecoveryTest : public testing::Test {
protected:
    EditorRecoveryTest() {
        setenv("TZ", "UTC", 1);
        tzset();
    }
    ~EditorRecoveryTest() override { EXPECT_TRUE(prompts.done()) << "prompts the test expected were not shown"; }
    void Start(Editor& editor, RecoveryStore& store) {
        editor.UseRecovery(&store);
        editor.Start(dir / "info.ini", dir.path, dir / "recent.txt");
    }
    // A changed set whose recovery copy has been written.
    void Change(Editor& editor, RecoveryStore& store) {
        if (editor.set().UseShardlesDebugger) editor.Toggle(Toggle::Debugger);
        editor.ChooseBlock(6);
        editor.ClickCell(changes_++ % 40, MouseButton::Left);
        editor.KeepRecoveryCopy(60, true);
        ASSERT_TRUE(fs::exists(store.ownCopyPath()));
    }
    std::string folder() const { return dir / "recovery"; }
    TempDir dir;
    ScriptedPrompts prompts;
    int changes_ = 5;
};

TEST_F(EditorRecoveryTest, TheCopyIsKeptWhileChangedAndGoesWithSaveNoOrClose) {
    RecoveryStore store(folder());
    Editor editor(prompts);
    Start(editor, store);
    editor.KeepRecoveryCopy(1);
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));  // nothing unsaved, nothing to keep
    Change(editor, store);
    prompts.Expect(K::Save, "My File (*.rsx)|*.rsx", Answer::Yes, dir / "saved.rsx").ExpectMessage("Saved Succesfully!");
    editor.Save();
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));

    Change(editor, store);
    prompts.Expect(K::YesNoCancel, "Save before quiting?", Answer::No);
    editor.NewSet(GameKind::Tiltbash);
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));

    Change(editor, store);
    editor.Undo();
    editor.Undo();
    editor.KeepRecoveryCopy(61);  // undone back to the file: nothing left to keep
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));

    Change(editor, store);
    prompts.Expect(K::YesNoCancel, "Save before quiting?", Answer::Cancel);
    EXPECT_FALSE(editor.MayClose());
    EXPECT_TRUE(fs::exists(store.ownCopyPath()));
    prompts.Expect(K::YesNoCancel, "Save before quiting?", Answer::No);
    EXPECT_TRUE(editor.MayClose());
    editor.Close();
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));
}

TEST_F(EditorRecoveryTest, ACopyThatCannotBeWrittenSaysSo) {
    WriteFile(dir.path / "file", "not a folder");
    RecoveryStore store(dir / "file/recovery");
    EXPECT_FALSE(store.usable());
    Editor editor(prompts);
    Start(editor, store);
    if (editor.set().UseShardlesDebugger) editor.Toggle(Toggle::Debugger);
    editor.ChooseBlock(6);
    editor.ClickCell(3, MouseButton::Left);
    for (const bool untilWritten : {false, true}) {
        editor.KeepRecoveryCopy(1, untilWritten);
        EXPECT_TRUE(editor.ui().status.starts_with("Could not write the recovery copy: ")) << editor.ui().status;
    }
}

// What the next start offers, and what each answer does, for a copy of a set
// opened from a file and of an untitled one.
TEST_F(EditorRecoveryTest, TheNextStartOffersTheCopyOfAnEditorThatDied) {
    const std::string offer =
        "The editor did not end cleanly. A recovery copy was written 1970-01-01 00:01:00:\n";
    struct Case {
        std::string answer;
        bool restored, kept;
    };
    for (const Case& c : {Case{"0", true, false}, Case{"1", false, false}, Case{"2", false, true},
                          Case{"", false, true}}) {
        SCOPED_TRACE(c.answer);
        fs::remove_all(folder());
        LevelSet before;
        {
            auto dying = std::make_unique<RecoveryStore>(folder());
            Editor editor(prompts);
            Start(editor, *dying);
            Change(editor, *dying);
            before = editor.set();
            dying.reset();  // as the kernel lets go of a killed editor's lock
        }
        {
            RecoveryStore store(folder());
            Editor next(prompts);
            prompts.Expect(K::Choose, offer + "Untitled, Shardles, 1 level.", Answer::Yes, c.answer);
            Start(next, store);
            EXPECT_EQ(next.IsModified(), c.restored);
            EXPECT_EQ(next.set().Layout(1).Cells[5] == 6, c.restored);
            if (c.restored) {
                EXPECT_EQ(Mine(next.set()), Mine(before));
                EXPECT_EQ(next.DocumentName(), "Untitled");
                EXPECT_TRUE(fs::exists(store.ownCopyPath()));  // the work is this editor's to keep now
                store.Remove();
            }
        }
        RecoveryStore later(folder());
        EXPECT_EQ(later.FindLeftCopies().copies.size(), c.kept ? 1u : 0u);
    }
}

TEST_F(EditorRecoveryTest, ARestoredSetRemembersItsFileAndSaveWritesThere) {
    const std::string file = dir / "mine.rsx";
    WriteFile(file, Mine(Pictured(3)));
    const LevelSet changed = Pictured(5);
    {
        RecoveryStore dying(folder());
        ASSERT_TRUE(dying.Write(changed, file, 60));
    }
    WriteFile(fs::path(folder()) / "9-9.copy", "damaged");
    RecoveryStore store(folder());
    Editor editor(prompts);
    prompts.ExpectMessage("A recovery copy could not be read (not a recovery copy). It is kept as " + folder() +
                          "/9-9.damaged.")
        .Expect(K::Choose,
                "The editor did not end cleanly. A recovery copy was written 1970-01-01 00:01:00:\n" + file +
                    ", Shardles, 5 levels.",
                Answer::Yes, "0");
    Start(editor, store);
    EXPECT_TRUE(editor.IsModified());
    EXPECT_EQ(editor.DocumentName(), "mine.rsx");
    for (int level = 1; level <= changed.LevelCount(); ++level)
        EXPECT_EQ(editor.set().Layout(level).Cells, changed.Layout(level).Cells) << level;
    editor.Save();  // to the file it belongs to, without a dialog
    EXPECT_FALSE(editor.IsModified());
    const ReadResult saved = ReadMyFile(ReadFile(file));
    ASSERT_TRUE(saved.complete());
    for (int level = 1; level <= changed.LevelCount(); ++level)
        EXPECT_EQ(saved.set.Layout(level).Cells, changed.Layout(level).Cells) << level;
    EXPECT_EQ(saved.set.CustomShardlePicture.cells, changed.CustomShardlePicture.cells);
    EXPECT_FALSE(fs::exists(store.ownCopyPath()));
}

}  // namespace
}  // namespace shd::test
