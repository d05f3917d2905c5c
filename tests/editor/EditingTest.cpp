#include "editor/EditorFixture.h"

namespace shd::test {
namespace {

const char* kSpecialPrompt = "How many other blocks are not used? Don't count blocks affected by the Flags.";
const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";
const char* kTrashQuestion = "Is this the level to trash? (No trashes the last Level)";

using Options = EditorTest;

TEST_F(Options, SetWideOptionsFollowTheirFlag) {
    editor.Toggle(Toggle::Debugger);
    EXPECT_FALSE(set().UseShardlesDebugger);
    EXPECT_FALSE(ui().marks.Debugger);
    editor.Toggle(Toggle::ArrowBreakable);
    EXPECT_TRUE(set().ArrowBlocksBreakable);
    EXPECT_TRUE(ui().marks.ArrowBreakable);
    editor.Toggle(Toggle::ArrowBreakable);
    EXPECT_FALSE(set().ArrowBlocksBreakable);
    EXPECT_FALSE(ui().marks.ArrowBreakable);
}

TEST_F(Options, UnusedKindsFollowTheCheckMarkAcrossLevels) {
    TurnDebuggerOff();
    AddLevels(1);
    editor.Toggle(Toggle::Spotted);
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    EXPECT_TRUE(ui().marks.Spotted);
    SwitchTo(2);
    EXPECT_TRUE(ui().marks.Spotted);  // marks are not refreshed on a level change
    editor.Toggle(Toggle::Spotted);
    EXPECT_FALSE(ui().marks.Spotted);
    EXPECT_FALSE(set().Record(2).SpottedUnused);
    editor.Toggle(Toggle::Spotted);
    EXPECT_TRUE(set().Record(2).SpottedUnused);
    EXPECT_TRUE(set().Record(1).SpottedUnused);
}

TEST_F(Options, SpecialUnusedCountAcceptsMoreThanZeroUpToEighty) {
    struct Case { const char* answer; int count; bool mark; };
    for (Case c : {Case{"80", 80, true}, Case{"81", 0, false}, Case{"0", 0, false}, Case{"2.5", 2, true},
                   Case{"0.4", 0, true}, Case{"", 0, false}, Case{"-3", 0, false}, Case{"1e1", 0, false},
                   Case{" 7 ", 7, true}}) {
        prompts.ExpectInput(kSpecialPrompt, c.answer);
        editor.mnuSpecial_Click();
        EXPECT_EQ(set().Record(1).SpecialUnusedCount, c.count) << c.answer;
        EXPECT_EQ(ui().marks.Special, c.mark) << c.answer;
    }
    prompts.ExpectInput(kSpecialPrompt, "12");
    editor.mnuSpecial_Click();
    prompts.ExpectInput(kSpecialPrompt, "12");
    editor.mnuSpecial_Click();
    EXPECT_EQ(prompts.defaults().back(), "12");  // the input box offers the current count
    EXPECT_EQ(prompts.defaults().front(), "0");
}

TEST_F(Options, CreateSwitchesCustomShardlesOnEvenWhenCancelled) {
    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Normal);
        for (int n = 1; n <= 60; ++n) EXPECT_EQ(edit.caption(n), "0");
        edit.Default();
        return false;
    });
    editor.mnuCreateNormShd_Click();
    EXPECT_TRUE(set().UseCustomShardles);
    EXPECT_TRUE(ui().marks.CustomShardles);
    EXPECT_EQ(set().CustomShardlePicture, PiecePicture{});

    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Change);
        edit.Default();
        return true;
    });
    editor.mnuCreateChangeShd_Click();
    EXPECT_EQ(set().CustomChangerPicture.at(11), 1);
    EXPECT_EQ(set().CustomShardlePicture, PiecePicture{});
}

using Debugger = EditorTest;

TEST_F(Debugger, CustomShardleWithoutChangerAsksFourThenNine) {
    Select(13);
    prompts.ExpectYesNo("You have a Custom Shardle without a Changer.  Set Custom as Unused?", false)
        .ExpectYesNo("You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom Shardles?",
                     true);
    editor.pctBox_MouseUp(0, MouseButton::Left);
    EXPECT_TRUE(set().UseCustomShardles);
    EXPECT_TRUE(ui().marks.CustomShardles);
    EXPECT_FALSE(set().Record(1).CustomUnused);
}

TEST_F(Debugger, EachCheckReadsTheStateAfreshAndYesRunsTheToggle) {
    // A zig-zag changer in a level where zig-zags are unused.
    TurnDebuggerOff();
    editor.Toggle(Toggle::ZigZag);
    Paint(0, 9);
    Paint(1, 4);
    editor.Toggle(Toggle::Debugger);
    prompts.ExpectYesNo("You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?", true)
        .ExpectYesNo("You have a Zig-Zag Changer, but Zig-Zag's are Unused!  Make Zig-Zag a Used Shardle?", true);
    editor.pctBox_MouseUp(5, MouseButton::Middle);
    EXPECT_TRUE(set().Record(1).CenterLineUnused);
    EXPECT_FALSE(set().Record(1).ZigZagUnused);
    editor.ShardlesDebug();  // nothing left to ask
}

TEST_F(Debugger, YesFollowsTheMarkLeftFromAnotherLevel) {
    TurnDebuggerOff();
    AddLevels(1);
    editor.Toggle(Toggle::Spotted);  // level 1 marked, the mark stays checked
    SwitchTo(2);
    editor.Toggle(Toggle::Debugger);
    Select(2);
    prompts.ExpectYesNo(kSpottedQuestion, true);
    editor.pctBox_MouseUp(0, MouseButton::Left);
    EXPECT_FALSE(ui().marks.Spotted);
    EXPECT_FALSE(set().Record(2).SpottedUnused);
}

using Placement = EditorTest;

TEST_F(Placement, PaletteKeysWrapAsTheOriginalDid) {
    struct Case { int from, key, to; };
    for (Case c : {Case{15, keys::Right, 1}, Case{0, keys::Left, 14}, Case{0, keys::Right, 1},
                   Case{15, keys::Left, 14}, Case{14, keys::Right, 15}, Case{1, keys::Left, 0},
                   Case{6, 'A', 6}, Case{6, 40, 6}}) {
        editor.optBlocks_Click(c.from);
        editor.optBlocks_KeyDown(c.key);
        EXPECT_EQ(ui().SelectedBlock, c.to) << c.from << " " << c.key;
        EXPECT_EQ(ui().focusedPalette, c.to);
    }
}

TEST_F(Placement, PaintingKeepsThePieceCountsInStepAndAsksAtOnce) {
    Select(2);
    prompts.ExpectYesNo(kSpottedQuestion, false);
    editor.pctBox_MouseUp(10, MouseButton::Left);
    EXPECT_EQ(set().Record(1).SpottedCount, 1);
    EXPECT_EQ(ui().shownPictures[10], 2);

    TurnDebuggerOff();
    Paint(10, 3);  // a changer over the shardle
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
    EXPECT_EQ(set().Record(1).SpottedChangerCount, 1);
    Paint(10, 3);  // the same code again
    EXPECT_EQ(set().Record(1).SpottedChangerCount, 1);
    editor.pctBox_MouseUp(10, MouseButton::Right);
    EXPECT_EQ(set().Record(1).SpottedChangerCount, 0);
    EXPECT_EQ(set().Layout(1).Cells[10], 0);
    editor.pctBox_MouseUp(11, MouseButton::Right);  // erasing an empty cell
    EXPECT_EQ(ui().shownPictures[11], 0);
    EXPECT_EQ(set().Layout(1).BlockCount, 0);  // painting never counts blocks
}

TEST_F(Placement, MiddleButtonChangesNothingButTheDebuggerRuns) {
    TurnDebuggerOff();
    Paint(0, 2);
    editor.Toggle(Toggle::Debugger);
    const LevelSet before = set();
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Select(5);
    editor.pctBox_MouseUp(0, MouseButton::Middle);
    EXPECT_EQ(set(), before);
}

TEST_F(Placement, TiltbashCountsFollowToo) {
    editor.mnuNewTil_Click();
    Paint(63, 8);
    Paint(62, 14);
    EXPECT_EQ(set().Record(1).ZigZagCount, 1);
    EXPECT_EQ(set().Record(1).CustomChangerCount, 1);
}

TEST_F(Placement, BackgroundPressShowsTheShardlesSubmenusByKind) {
    editor.mnuNewTil_Click();
    EXPECT_FALSE(editor.Form_MouseDown(MouseButton::Left));
    EXPECT_FALSE(ui().unusedMenuVisible);
    EXPECT_FALSE(ui().optionsMenuVisible);
    EXPECT_TRUE(editor.Form_MouseDown(MouseButton::Right));
    editor.mnuNewShd_Click();
    EXPECT_FALSE(ui().unusedMenuVisible);  // only a press changes them
    editor.Form_MouseDown(MouseButton::Middle);
    EXPECT_TRUE(ui().unusedMenuVisible && ui().optionsMenuVisible);
}

using Levels = EditorTest;

TEST_F(Levels, AddingStopsAtTwoHundredFiftyFive) {
    AddLevels(253);
    EXPECT_EQ(set().LevelCount(), 254);
    editor.cmdAddLev_Click();
    EXPECT_EQ(set().LevelCount(), 255);
    EXPECT_EQ(ui().levelEntries.back(), "Level 255");
    EXPECT_EQ(ui().levelCountLabel, "Number of Levels: 255");
    EXPECT_EQ(set().CurrentLevel, 1);
    prompts.ExpectMessage("You can't have more than 255 levels!");
    editor.cmdAddLev_Click();
    EXPECT_EQ(set().LevelCount(), 255);
    EXPECT_EQ(CheckConsistent(set()), "");
}

class Removal : public EditorTest {
protected:
    // Five levels, level n holding code n in cell 0 and ball start n, level 2 current.
    Removal() {
        TurnDebuggerOff();
        AddLevels(4);
        for (int level = 5; level >= 1; --level) {
            SwitchTo(level);
            Paint(0, level);
            editor.txtBallx_KeyUp('1', std::to_string(level));
            prompts.ExpectInput(kSpecialPrompt, std::to_string(level * 10));
            editor.mnuSpecial_Click();
        }
        SwitchTo(2);
    }
    std::vector<int> FirstCells() const {
        std::vector<int> cells;
        for (const auto& layout : set().Layouts) cells.push_back(layout.Cells[0]);
        return cells;
    }
};

TEST_F(Removal, YesTrashesTheCurrentLevelAndLaterLevelsMoveUpWithTheirRecords) {
    prompts.ExpectYesNoCancel(kTrashQuestion, Answer::Yes);
    editor.cmdLoseLev_Click();
    EXPECT_EQ(FirstCells(), (std::vector<int>{1, 3, 4, 5}));
    EXPECT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(ui().shownPictures[0], 3);
    EXPECT_EQ(ui().ballXText, "3");
    EXPECT_EQ(set().Record(2).SpecialUnusedCount, 30);
    EXPECT_EQ(ui().levelCountLabel, "Number of Levels: 4");
    EXPECT_EQ(ui().levelEntries.size(), 4u);
    EXPECT_EQ(ui().levelText, "Level 2");
}

TEST_F(Removal, NoTrashesTheLastAndCancelNothing) {
    prompts.ExpectYesNoCancel(kTrashQuestion, Answer::Cancel);
    editor.cmdLoseLev_Click();
    EXPECT_EQ(set().LevelCount(), 5);
    prompts.ExpectYesNoCancel(kTrashQuestion, Answer::No);
    editor.cmdLoseLev_Click();
    EXPECT_EQ(FirstCells(), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(set().Record(4).SpecialUnusedCount, 40);
}

TEST_F(Removal, TheLastLevelGoesWithoutAQuestionAndOneLevelAlwaysStays) {
    SwitchTo(5);
    editor.cmdLoseLev_Click();
    EXPECT_EQ(set().CurrentLevel, 4);
    EXPECT_EQ(ui().levelText, "Level 4");
    for (int i = 0; i < 3; ++i) editor.cmdLoseLev_Click();
    EXPECT_EQ(set().LevelCount(), 1);
    prompts.ExpectMessage("There has to be at least ONE Level!!!!!");
    editor.cmdLoseLev_Click();
    EXPECT_EQ(set().LevelCount(), 1);
}

TEST_F(Levels, OneLevelAsksToAddAnotherAndStaysOnLevelOne) {
    prompts.ExpectYesNo("You only have 1 Level. Should I add another?", true);
    SwitchTo(1);
    EXPECT_EQ(set().LevelCount(), 2);
    EXPECT_EQ(ui().levelEntries.back(), "Level 2");
    EXPECT_EQ(set().CurrentLevel, 1);
    SwitchTo(1);  // the current level: nothing more
    EXPECT_EQ(set().CurrentLevel, 1);
}

TEST_F(Levels, SwitchingCountsTheLevelLeftStoresTheBallAndShowsTheNext) {
    AddLevels(1);
    TurnDebuggerOff();
    Paint(0, 1);
    Paint(1, 1);
    editor.txtBallx_KeyUp('5', "12");
    editor.txtBally_KeyUp(keys::Backspace, "7.5");  // left unchecked by an editing key
    prompts.ExpectMessage("Level #1 has no Last Blocks.");
    editor.cmbLevels_Click(1);
    EXPECT_EQ(set().Layout(1).BlockCount, 2);
    EXPECT_EQ(set().Layout(1).BallX, 12);
    EXPECT_EQ(set().Layout(1).BallY, 8);
    EXPECT_EQ(set().CurrentLevel, 2);
    EXPECT_EQ(ui().levelText, "Level 2");
    EXPECT_EQ(ui().ballXText, "0");
    EXPECT_EQ(ui().shownPictures[0], 0);
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.cmbLevels_Click(0);
    EXPECT_EQ(ui().ballXText, "12");
    EXPECT_EQ(ui().ballYText, "8");
}

using Settings = EditorTest;

TEST_F(Settings, TitleIsCutToTwentyCharactersOnTheNextOtherKey) {
    const std::string pasted(30, 'x');
    editor.txtTitle_Changed(pasted);
    editor.txtTitle_KeyUp(keys::Delete);
    EXPECT_EQ(set().Title, pasted);
    editor.txtTitle_KeyUp('V');
    EXPECT_EQ(set().Title, std::string(20, 'x'));
}

TEST_F(Settings, BallFieldsAreCheckedAndRoundedHalvesToEven) {
    struct Case { const char* text; const char* shown; int stored; };
    for (Case c : {Case{"95", "0", 0}, Case{"94", "94", 94}, Case{"-", "0", 0}, Case{"12a", "0", 0},
                   Case{"5.5", "5.5", 6}, Case{"6.5", "6.5", 6}, Case{"-0.4", "-0.4", 0}, Case{"-0.6", "0", 0},
                   Case{"94.4", "0", 0}, Case{"93.5", "93.5", 94}}) {
        editor.txtBallx_KeyUp('1', c.text);
        EXPECT_EQ(ui().ballXText, c.shown) << c.text;
        EXPECT_EQ(set().Layout(1).BallX, c.stored) << c.text;
    }
    editor.txtBally_KeyUp('1', "63");
    EXPECT_EQ(ui().ballYText, "0");
    editor.txtBally_KeyUp('1', "62");
    EXPECT_EQ(set().Layout(1).BallY, 62);
}

TEST_F(Settings, EditingKeysLeaveTheModelAloneUntilAnotherKey) {
    editor.txtBallx_KeyUp('1', "40");
    editor.txtBallx_KeyUp(keys::Backspace, "");
    EXPECT_EQ(ui().ballXText, "");
    EXPECT_EQ(set().Layout(1).BallX, 40);
    editor.txtBallx_KeyUp(38, "");  // Up arrow is checked too
    EXPECT_EQ(ui().ballXText, "0");
    EXPECT_EQ(set().Layout(1).BallX, 0);
}

}  // namespace
}  // namespace shd::test
