#include "editor/EditorFixture.h"
#include "files/FileIo.h"

namespace shd::test {
namespace {

using Lifecycle = EditorTest;

TEST_F(Lifecycle, StartsWithANewShardlesSet) {
    EXPECT_EQ(set().Kind, GameKind::Shardles);
    EXPECT_EQ(set().LevelCount(), 1);
    EXPECT_EQ(set().Layout(1).Cells.size(), 80u);
    EXPECT_EQ(ui().gridCells.size(), 80u);
    EXPECT_EQ(ui().levelEntries, std::vector<std::string>{"Level 1"});
    EXPECT_EQ(ui().levelText, "Level 1");
    EXPECT_EQ(ui().levelCountLabel, "Number of Levels: 1");
    EXPECT_EQ(set().Title, "Please Add a Title");
    EXPECT_EQ(set().BonusClock, "30");
    EXPECT_EQ(set().ExtraLifePoints, "100");
    MenuMarks marks;
    marks.Debugger = marks.MatchLocks = true;
    EXPECT_EQ(ui().marks, marks);
    EXPECT_TRUE(ui().shardlesControlsVisible);
    EXPECT_TRUE(ui().createMenuVisible);
    EXPECT_EQ(ui().focusedPalette, 0);
    EXPECT_EQ(ui().SelectedBlock, 0);
}

TEST_F(Lifecycle, TiltbashFileLaysOutItsOwnGridAndHidesShardlesControls) {
    editor.mnuNewTil_Click();
    EXPECT_EQ(set().Kind, GameKind::Tiltbash);
    EXPECT_EQ(set().Layout(1).Cells.size(), 64u);
    ASSERT_EQ(ui().gridCells.size(), 64u);
    EXPECT_EQ(ui().gridCells[63].top - ui().gridCells[0].top, 7 * 445);
    EXPECT_EQ(ui().palette[0].left, 640);
    EXPECT_EQ(ui().palette[0].width, 650);
    EXPECT_EQ(ui().palette[15].left, 10390);
    EXPECT_FALSE(ui().shardlesControlsVisible);
    EXPECT_FALSE(ui().createMenuVisible);
    EXPECT_EQ(ui().levelCountLabel, "Number of Levels: 1");
    EXPECT_EQ(ui().paletteFiles[7], "tlblockB.gif");
    EXPECT_EQ(ui().paletteFiles[8], "tlblock7.gif");
}

TEST_F(Lifecycle, NewSetChecksTheOptionsThatAreOnAndKeepsOtherMarks) {
    editor.Toggle(Toggle::Debugger);  // off: mark removed
    EXPECT_FALSE(set().UseShardlesDebugger);
    EXPECT_FALSE(ui().marks.Debugger);
    editor.Toggle(Toggle::WrapAround);
    editor.mnuNewShd_Click();
    EXPECT_TRUE(set().UseShardlesDebugger);
    EXPECT_TRUE(ui().marks.Debugger);
    EXPECT_FALSE(set().UseWrapAround);
    EXPECT_FALSE(ui().marks.WrapAround);  // ResetAll removes this one
    EXPECT_EQ(ui().SelectedBlock, 0);
}

TEST_F(Lifecycle, ResetAllClearsOnlyTheCurrentLevelsGridAndShardles) {
    TurnDebuggerOff();
    AddLevels(2);
    SwitchTo(2);
    prompts.ExpectInput("How many other blocks are not used? Don't count blocks affected by the Flags.", "4");
    editor.mnuSpecial_Click();
    editor.txtBallx_KeyUp('5', "12");
    Paint(3, 2);
    Paint(4, 9);
    editor.Toggle(Toggle::Spotted);
    editor.Toggle(Toggle::ZigZag);
    SwitchTo(1);
    Paint(0, 1);
    SwitchTo(2);
    editor.mnuResetAll_Click();
    const LevelRecord& r = set().Record(2);
    EXPECT_EQ(std::count(set().Layout(2).Cells.begin(), set().Layout(2).Cells.end(), 0), 80);
    EXPECT_EQ(r.SpottedCount + r.ZigZagChangerCount, 0);
    EXPECT_FALSE(r.SpottedUnused || r.ZigZagUnused);
    EXPECT_FALSE(ui().marks.Spotted || ui().marks.ZigZag);
    EXPECT_EQ(r.SpecialUnusedCount, 4);
    EXPECT_EQ(set().Layout(2).BallX, 12);
    EXPECT_EQ(set().Layout(1).Cells[0], 1);
    EXPECT_EQ(ui().shownPictures[3], 0);
}

TEST_F(Lifecycle, QuittingAsksAndCancelKeepsTheWindow) {
    Paint(5, 1);
    prompts.ExpectYesNoCancel("Save before quiting?", Answer::Cancel);
    EXPECT_FALSE(editor.FormQueryUnload());
    EXPECT_EQ(set().Layout(1).Cells[5], 1);
    prompts.ExpectYesNoCancel("Save before quiting?", Answer::No);
    EXPECT_TRUE(editor.FormQueryUnload());
}

TEST_F(Lifecycle, QuittingWithYesSavesAMyFileAndClosesEvenWhenTheSaveStops) {
    prompts.ExpectYesNoCancel("Save before quiting?", Answer::Yes).ExpectMessage("Level #1 has no Last Blocks.");
    EXPECT_TRUE(editor.FormQueryUnload());
    Paint(7, 6);
    prompts.ExpectYesNoCancel("Save before quiting?", Answer::Yes)
        .ExpectSave("My File (*.rxs)|*.rsx", Path("quit.rsx"))
        .ExpectMessage("Saved Succesfully!");
    EXPECT_TRUE(editor.FormQueryUnload());
    EXPECT_TRUE(std::filesystem::exists(Path("quit.rsx")));
}

TEST_F(Lifecycle, SettingsFileRemembersTheLastFolder) {
    EXPECT_EQ(editor.lastFolder(), dir.string());  // no info.ini yet
    editor.FormUnload();
    EXPECT_EQ(ReadWholeFile(Path("info.ini")), dir.string() + "\r\n");

    { std::ofstream(Path("info.ini"), std::ios::binary) << "/some/where/\r\nignored\r\n"; }
    Editor other(prompts, kScreenWidth, kScreenHeight);
    other.FormLoad(Path("info.ini"), dir.string());
    EXPECT_EQ(other.lastFolder(), "/some/where/");

    { std::ofstream(Path("info.ini"), std::ios::binary) << "\r\n"; }
    Editor empty(prompts, kScreenWidth, kScreenHeight);
    empty.FormLoad(Path("info.ini"), dir.string());
    EXPECT_EQ(empty.lastFolder(), dir.string());
}

TEST(Layout, GridIsCentredOnTheScreenTwoHundredTwipsLow) {
    const auto shardles = LocateBoxes(10, 8, 600, 80, 15360, 11520);
    EXPECT_EQ(shardles[0], (TwipRect{5280, 3735, 600, 445}));
    EXPECT_EQ(shardles[9].left, 5880);
    EXPECT_EQ(shardles[9].top, 4180);
    EXPECT_EQ(shardles[79].left, 5280 + 7 * 600);
    EXPECT_EQ(shardles[79].top, 3735 + 9 * 445);
    const auto tiltbash = LocateBoxes(8, 8, 660, 64, 15360, 11520);
    EXPECT_EQ(tiltbash[0].left, 5040);
    EXPECT_EQ(tiltbash[0].top, 4180);
    // Halves of odd screen sizes round to the even neighbour.
    EXPECT_EQ(LocateBoxes(10, 8, 600, 80, 15361, 11521)[0].left, 5280);  // 5280.5 -> 5280
    EXPECT_EQ(LocateBoxes(10, 8, 600, 80, 15363, 11521)[0].left, 5282);  // 5281.5 -> 5282
}

TEST(Layout, PaletteAndPictureFiles) {
    EXPECT_EQ(PaletteLayout(GameKind::Shardles)[15].left, 10425);
    EXPECT_EQ(PaletteLayout(GameKind::Shardles)[15].width, 615);
    EXPECT_EQ(PaletteLayout(GameKind::Tiltbash)[15].left, 10390);
    EXPECT_EQ(PaletteLayout(GameKind::Tiltbash)[1].top, 240);
    EXPECT_EQ(PictureFile(GameKind::Shardles, 0), "nothing.gif");
    EXPECT_EQ(PictureFile(GameKind::Shardles, 7), "shdblock7.gif");
    EXPECT_EQ(PictureFile(GameKind::Shardles, 10), "shdblockA.gif");
    EXPECT_EQ(PictureFile(GameKind::Tiltbash, 0), "nothing.gif");
    const char* tiltbash[16] = {"nothing.gif",  "tlblock1.gif", "tlblock2.gif", "tlblock3.gif",
                                "tlblock4.gif", "tlblock5.gif", "tlblock6.gif", "tlblockB.gif",
                                "tlblock7.gif", "tlblock8.gif", "tlblock9.gif", "tlblockA.gif",
                                "tlblockC.gif", "tlblockD.gif", "tlblockE.gif", "tlblockF.gif"};
    for (int code = 0; code < 16; ++code) EXPECT_EQ(PictureFile(GameKind::Tiltbash, code), tiltbash[code]);
}

}  // namespace
}  // namespace shd::test
