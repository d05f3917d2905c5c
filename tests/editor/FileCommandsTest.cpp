#include "calc/ProgramFile.h"
#include "editor/EditorFixture.h"
#include "files/EditorFiles.h"
#include "files/FileIo.h"

namespace shd::test {
namespace {

const char* kMyFileSave = "My File (*.rxs)|*.rsx";
const char* kMyFileOpen = "My Files (*.rsx)|*.rsx";
const char* kProgramSave = "TI-83 Program File|*.83p";
const char* kProgramOpen = "TI-83 Program files|*.83p";
const char* kSourceSave = "TI-83 Source Files(*.z80,*.asm)|*.z80;*.asm";
const char* kSourceOpen = "TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm";
const char* kNameRule =
    "This name has to be 8 characters long because this is the name that is shown in the Calculator!";
const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

class FileCommands : public EditorTest {
protected:
    // A Shardles set of three levels, each with a last block and level n
    // holding code n in cell 1; level 3 current, debugger off.
    void ThreeLevels() {
        TurnDebuggerOff();
        AddLevels(2);
        for (int level = 1; level <= 3; ++level) {
            SwitchTo(level);
            Paint(0, 6);
            Paint(1, level);
        }
        editor.txtTitle_Changed("Three");
    }
    void Write(const std::string& name, const std::string& bytes) {
        std::ofstream(Path(name), std::ios::binary) << bytes;
    }
    std::string Folder() const { return Path(""); }
};

TEST_F(FileCommands, SavingRefusesALevelWithoutLastBlocksBeforeTheDialogAndShowsIt) {
    ThreeLevels();
    SwitchTo(2);
    editor.mnuResetAll_Click();
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(ui().levelText, "Level 2");
    EXPECT_EQ(set().Layout(1).LastBlockCount, 1);
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.mnuSaveCode_Click();
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.SaveLevelFile(FormatId::List);
    EXPECT_TRUE(std::filesystem::is_empty(dir) || !std::filesystem::exists(Path("x")));
}

TEST_F(FileCommands, MyFileSavesCountedLevelsAndOpensBackTheSame) {
    ThreeLevels();
    prompts.ExpectSave(kMyFileSave, Path("three.rsx")).ExpectMessage("Saved Succesfully!");
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_EQ(prompts.folders().back(), dir.string());
    EXPECT_EQ(editor.lastFolder(), Folder());
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(ui().levelText, "Level 1");
    EXPECT_EQ(set().Layout(2).BlockCount, 1);  // every level was counted
    EXPECT_EQ(set().Layout(3).LastBlockCount, 1);
    const LevelSet saved = set();

    editor.mnuNewTil_Click();
    prompts.ExpectOpen(kMyFileOpen, Path("three.rsx")).ExpectMessage("Opened Succesfully");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().Title, "Three");
    EXPECT_EQ(set().Kind, GameKind::Shardles);
    EXPECT_EQ(set().Layouts, saved.Layouts);
    EXPECT_EQ(ui().levelEntries, (std::vector<std::string>{"Level 1", "Level 2", "Level 3"}));
    EXPECT_EQ(ui().levelText, "Level 1");
    EXPECT_EQ(ui().shownPictures[1], 1);
    EXPECT_EQ(ui().gridCells.size(), 80u);
}

TEST_F(FileCommands, CancelledDialogsStillEndOnLevelOne) {
    ThreeLevels();
    prompts.ExpectSave(kMyFileSave, "");
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().CurrentLevel, 1);
    SwitchTo(3);
    prompts.ExpectOpen(kMyFileOpen, "");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(set().LevelCount(), 3);
    EXPECT_EQ(editor.lastFolder(), dir.string());
}

TEST_F(FileCommands, TheDebuggerRunsOnLevelOneAfterASave) {
    Paint(0, 6);
    Select(2);
    prompts.ExpectYesNo(kSpottedQuestion, false);
    editor.pctBox_MouseUp(1, MouseButton::Left);
    prompts.ExpectSave(kMyFileSave, Path("a.rsx")).ExpectMessage("Saved Succesfully!").ExpectYesNo(kSpottedQuestion, false);
    editor.SaveLevelFile(FormatId::MyFile);
}

TEST_F(FileCommands, ForeignFilesAreRefusedAndTheSetStays) {
    ThreeLevels();
    const LevelSet before = set();
    Write("other.rsx", "quartlev\r\nx\r\n");
    prompts.ExpectOpen(kMyFileOpen, Path("other.rsx")).ExpectMessage("Not one of my files.");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().Layouts, before.Layouts);
    EXPECT_EQ(set().Title, "Three");
    EXPECT_EQ(set().CurrentLevel, 1);

    Write("other.83l", "title\r\n//lQRVLE\r\n");
    prompts.ExpectOpen("TI-83 List File|*.83l", Path("other.83l")).ExpectMessage("Not a valid list file.");
    editor.OpenLevelFile(FormatId::List);
    EXPECT_EQ(set().Layouts, before.Layouts);

    Write("empty.z80", "; only a comment\r\n\r\n");
    prompts.ExpectOpen(kSourceOpen, Path("empty.z80"));  // fails before anything is replaced: no message
    editor.mnuOpenSource_Click();
    EXPECT_EQ(set().Layouts, before.Layouts);
    EXPECT_NE(ui().status.find("origin"), std::string::npos) << ui().status;

    Write("other.z80", "        .org             9327H\r\n");
    prompts.ExpectOpen(kSourceOpen, Path("other.z80")).ExpectMessage("Not compilable code.");
    editor.mnuOpenSource_Click();
    EXPECT_EQ(set().Layouts, before.Layouts);
    EXPECT_EQ(editor.lastFolder(), dir.string());
}

TEST_F(FileCommands, AReadThatStopsLeavesAConsistentSetAndSaysWhereInTheStatusLine) {
    ThreeLevels();
    prompts.ExpectSave(kMyFileSave, Path("cut.rsx")).ExpectMessage("Saved Succesfully!");
    editor.SaveLevelFile(FormatId::MyFile);
    const std::string whole = *ReadWholeFile(Path("cut.rsx"));
    Write("cut.rsx", whole.substr(0, whole.size() * 2 / 3));
    const std::string folder = editor.lastFolder();
    editor.mnuNewTil_Click();
    Editor fresh(prompts, kScreenWidth, kScreenHeight);
    prompts.ExpectOpen(kMyFileOpen, Path("cut.rsx"));  // no message
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(CheckConsistent(set()), "");
    EXPECT_EQ(set().Kind, GameKind::Shardles);
    EXPECT_EQ(ui().gridCells.size(), 80u);
    EXPECT_NE(ui().status.find("cut.rsx"), std::string::npos);
    EXPECT_NE(ui().status.find("line"), std::string::npos);
    EXPECT_EQ(set().CurrentLevel, 1);
}

TEST_F(FileCommands, ProgramFileNameRules) {
    ThreeLevels();
    prompts.ExpectSave(kProgramSave, Path("thirteenchars")).ExpectMessage(kNameRule);
    editor.mnuSaveCode_Click();
    EXPECT_FALSE(std::filesystem::exists(Path("thirteenchars")));
    EXPECT_FALSE(std::filesystem::exists(Path("thirteenchars.83p")));
    EXPECT_EQ(set().CurrentLevel, 1);  // the closing steps ran

    prompts.ExpectSave(kProgramSave, Path("levels12.83p")).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    const std::string file = *ReadWholeFile(Path("levels12.83p"));
    EXPECT_EQ(file.substr(60, 8), "LEVELS12");

    prompts.ExpectSave(kProgramSave, Path("abcdef")).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    EXPECT_EQ(ReadWholeFile(Path("abcdef.83p"))->substr(60, 8), std::string("AB\0\0\0\0\0\0", 8));

    prompts.ExpectSave(kProgramSave, Path("caps.83P")).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    EXPECT_TRUE(std::filesystem::exists(Path("caps.83p")));
    prompts.ExpectSave(kProgramSave, Path("set.txt")).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    EXPECT_TRUE(std::filesystem::exists(Path("set.83p")));
    EXPECT_EQ(editor.lastFolder(), Folder());

    // A dotted folder does not swallow the extension of a plain name.
    std::filesystem::create_directories(dir / "v1.0");
    prompts.ExpectSave(kProgramSave, (dir / "v1.0" / "plainname").string()).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    EXPECT_TRUE(std::filesystem::exists(dir / "v1.0" / "plainname.83p"));
}

TEST_F(FileCommands, ProgramFilesOpenBackAndCancelLosesTheSet) {
    ThreeLevels();
    prompts.ExpectSave(kProgramSave, Path("three.83p")).ExpectMessage("Succesfully compiled!");
    editor.mnuSaveCode_Click();
    const LevelSet saved = set();
    editor.txtTitle_Changed("Changed");
    prompts.ExpectOpen(kProgramOpen, "");
    editor.mnuOpenCode_Click();
    EXPECT_EQ(set().Title, "Please Add a Title");
    EXPECT_EQ(set().LevelCount(), 1);
    EXPECT_EQ(set().Layout(1).Cells, saved.Layout(1).Cells);  // level 1 stays as drawn
    EXPECT_EQ(ui().levelEntries.size(), 1u);
    EXPECT_EQ(CheckConsistent(set()), "");

    prompts.ExpectOpen(kProgramOpen, Path("three.83p")).ExpectMessage("Opened Succesfully");
    editor.mnuOpenCode_Click();
    EXPECT_EQ(set().Title, "Three");
    EXPECT_EQ(set().LevelCount(), 3);
    EXPECT_EQ(set().Layout(2).Cells, saved.Layout(2).Cells);

    Write("bad.83p", std::string(72, '\0') + "XZ" + std::string(60, '\0'));
    prompts.ExpectOpen(kProgramOpen, Path("bad.83p")).ExpectMessage("This is not a Shardles or Tiltbash file.");
    editor.mnuOpenCode_Click();
    EXPECT_EQ(set().Title, "Please Add a Title");
}

TEST_F(FileCommands, SourceSaveShowsItsMessageOnTheLastLevelThenEndsOnTheFirst) {
    ThreeLevels();
    prompts.ExpectSave(kSourceSave, Path("three.z80"))
        .ExpectMessage("Saved Succesfully")
        .Then([this] {
            EXPECT_EQ(set().CurrentLevel, 3);
            EXPECT_EQ(ui().levelText, "Level 3");
        });
    editor.mnuSaveSource_Click();
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(editor.lastFolder(), Folder());

    editor.mnuNewTil_Click();
    prompts.ExpectOpen(kSourceOpen, Path("three.z80"));  // reading source confirms nothing
    editor.mnuOpenSource_Click();
    EXPECT_EQ(set().Title, "Three");
    EXPECT_EQ(set().LevelCount(), 3);
}

TEST_F(FileCommands, ExportsRefuseSettingsTheGamesCannotHoldAndWriteNothing) {
    ThreeLevels();
    editor.cmbBonus_Changed("45");
    prompts.ExpectSave(kSourceSave, Path("bad.z80")).ExpectMessage(ScriptedPrompts::kAnyText);
    editor.mnuSaveSource_Click();
    ASSERT_EQ(prompts.shown().size(), 2u);
    EXPECT_NE(prompts.shown()[1].find("45"), std::string::npos) << prompts.shown()[1];
    EXPECT_FALSE(std::filesystem::exists(Path("bad.z80")));
}

TEST_F(FileCommands, AFailedSaveLeavesTheOldFileWhole) {
    ThreeLevels();
    Write("keep.rsx", "old contents");
    std::filesystem::permissions(dir, std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const bool canStillWrite = ::access(dir.c_str(), W_OK) == 0;  // root ignores permissions
    if (!canStillWrite) {
        prompts.ExpectSave(kMyFileSave, Path("keep.rsx"));
        editor.SaveLevelFile(FormatId::MyFile);
        EXPECT_NE(ui().status.find("keep.rsx"), std::string::npos);
    }
    std::filesystem::permissions(dir, std::filesystem::perms::owner_all);
    EXPECT_EQ(ReadWholeFile(Path("keep.rsx")), "old contents");
    // A folder that does not exist fails the same way.
    prompts.ExpectSave(kMyFileSave, Path("missing/keep.rsx"));
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_NE(ui().status.find("Could not save"), std::string::npos);
    EXPECT_EQ(editor.lastFolder(), dir.string());
}

}  // namespace
}  // namespace shd::test
