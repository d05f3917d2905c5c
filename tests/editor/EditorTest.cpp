// The main window's behaviour, driven through the editor core with scripted
// dialogs: every rule of the window is tested here, once.
#include <gtest/gtest.h>

#include <algorithm>

#include "files/FileIo.h"
#include "support/EditorFixture.h"

namespace shd::test {
namespace {

const char* kTrash = "Is this the level to trash? (No trashes the last Level)";
const char* kMyFileSave = "My File (*.rsx)|*.rsx";
const char* kMyFileOpen = "My Files (*.rsx)|*.rsx";
const char* kProgramSave = "TI-83 Program File|*.83p";
const char* kProgramOpen = "TI-83 Program files|*.83p";
const char* kSourceSave = "TI-83 Source Files(*.z80,*.asm)|*.z80;*.asm";
const char* kSourceOpen = "TI-83 Source Files (*.z80, *.asm)|*.z80;*.asm";

TEST_F(EditorTest, StartsWithANewShardlesSetAndNewSetsLayOutTheirKind) {
    EXPECT_EQ(JsonOf(set()), JsonOf(NewSet(GameKind::Shardles)));
    EXPECT_EQ(ui().levelEntries, std::vector<std::string>{"Level 1"});
    EXPECT_EQ(ui().levelText + "|" + ui().levelCountText, "Level 1|Number of Levels: 1");
    EXPECT_EQ(ui().marks, (MenuMarks{.MatchLocks = true, .Debugger = true}));
    EXPECT_TRUE(ui().shardlesControlsVisible && ui().createMenuVisible);
    EXPECT_EQ(ui().focusedPalette, 0);
    EXPECT_EQ(ui().paletteFiles[10], "shdblockA.gif");

    editor.Toggle(Toggle::Debugger);  // off, the mark goes
    editor.Toggle(Toggle::WrapAround);
    editor.Toggle(Toggle::Spotted);
    editor.ChooseBlock(5);
    New(GameKind::Tiltbash);
    EXPECT_EQ(JsonOf(set()), JsonOf(NewSet(GameKind::Tiltbash)));
    EXPECT_EQ(ui().shownPictures.size(), 64u);
    EXPECT_EQ(ui().paletteFiles[7] + ui().paletteFiles[8] + ui().paletteFiles[11], "tlblockB.giftlblock7.giftlblockA.gif");
    EXPECT_FALSE(ui().shardlesControlsVisible || ui().createMenuVisible);
    EXPECT_EQ(ui().selectedBlock, 0);
    // Marks that a new set clears go; the others stay until a Shardles set checks what is on.
    EXPECT_FALSE(ui().marks.WrapAround || ui().marks.Debugger);
    EXPECT_TRUE(ui().marks.Spotted);
    New(GameKind::Shardles);
    EXPECT_TRUE(ui().marks.Debugger);
}

// The grid fits its room at whole multiples of its pictures, the largest that
// fits as the layout test finds at every size, and names what lies under the pointer.
TEST_F(EditorTest, TheGridZoomsInWholeMultiplesAndNamesItsCells) {
    const GridShape shardles = ShapeOf(GameKind::Shardles), tiltbash = ShapeOf(GameKind::Tiltbash);
    EXPECT_EQ(FitZoom(tiltbash, 100, 100), 1);  // a smaller room scrolls
    EXPECT_EQ(FitZoom(shardles, 100000, 100000), kMostZoom);
    // Hit-testing at a zoom: edges belong to the cell right and below them.
    EXPECT_EQ(CellAt(shardles, 3, {119, 89}), 0);
    EXPECT_EQ(CellAt(shardles, 3, {120, 90}), 9);
    EXPECT_EQ(CellAt(tiltbash, 2, {8 * 88 - 1, 8 * 60 - 1}), 63);
    for (Point off : {Point{-1, 0}, Point{0, -1}, Point{320, 0}, Point{0, 300}}) EXPECT_EQ(CellAt(shardles, 1, off), -1);

    const int fit = 3;
    editor.ZoomIn(fit);
    EXPECT_EQ(editor.ZoomOf(5), 4);  // a chosen zoom no longer follows the room
    for (int i = 0; i < 10; ++i) editor.ZoomOut(fit);
    EXPECT_EQ(editor.ZoomOf(fit), 1);
    for (int i = 0; i < 20; ++i) editor.ZoomIn(fit);
    EXPECT_EQ(editor.ZoomOf(fit), kMostZoom);
    editor.ZoomToFit();
    EXPECT_EQ(editor.ZoomOf(fit), fit);

    EXPECT_EQ(BlockTip(GameKind::Shardles, 2), "Code 2: spotted shardle");
    EXPECT_EQ(BlockTip(GameKind::Shardles, 7), "Code 7");
    EXPECT_EQ(BlockTip(GameKind::Tiltbash, 2) + "|" + BlockTip(GameKind::Tiltbash, 0), "Code 2|Code 0: empty cell");
    Paint(11, 15);
    EXPECT_EQ(CellText(set(), 11), "Row 2, column 4: code 15, arrow block");
    EXPECT_EQ(CellText(set(), 80), "");
}

TEST_F(EditorTest, AChangedSetIsNotLostWithoutAQuestionAndYesSavesItFirst) {
    EXPECT_TRUE(editor.MayClose());  // nothing changed: nothing asked
    Paint(0, 1);
    EXPECT_TRUE(editor.IsModified());
    editor.Undo();
    EXPECT_FALSE(editor.IsModified());  // undone back to where it began
    EXPECT_TRUE(editor.MayClose());
    Paint(0, 1);
    prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::Cancel);
    EXPECT_FALSE(editor.MayClose());
    // Yes saves first; a refused or cancelled save leaves window and set as they were.
    prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::Yes).ExpectMessage("Level #1 has no Last Blocks.");
    EXPECT_FALSE(editor.MayClose());
    Paint(7, 6);
    prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::Yes).ExpectSave(kMyFileSave, "");
    editor.NewSet(GameKind::Tiltbash);
    EXPECT_TRUE(set().IsShardles() && editor.IsModified());
    EXPECT_EQ(prompts.lastExtension(), ".rsx");
    prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::Yes)
        .ExpectSave(kMyFileSave, dir / "quit.rsx")
        .ExpectMessage("Saved Succesfully!");
    editor.ResetAll();  // saved first, then cleared
    EXPECT_EQ(set().Layout(1).Cells[7], 0);
    EXPECT_EQ(editor.DocumentName(), "quit.rsx");
    EXPECT_TRUE(editor.IsModified());
    prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::No);
    EXPECT_TRUE(editor.MayClose());
    EXPECT_EQ(ReadFile(dir / "quit.rsx").substr(0, 10), "QUARTLEV\r\n");
    editor.Close();
    EXPECT_EQ(ReadFile(dir / "info.ini"), dir.path.string() + "/\r\n");

    WriteFile(dir / "info.ini", "\r\n/not/this/line/\r\n");  // only the first line counts: empty, the program's folder
    Editor other(prompts);
    other.Start(dir / "info.ini", dir.path);
    EXPECT_EQ(other.lastFolder(), dir.path.string());
}

TEST_F(EditorTest, PaintingKeepsThePieceCountsInStepAndTheDebuggerAsksRightAfter) {
    editor.ChooseBlock(2);
    prompts.ExpectYesNo(kSpotted, false);
    editor.ClickCell(10, MouseButton::Left);
    EXPECT_EQ(set().Record(1).SpottedCount, 1);
    EXPECT_EQ(ui().shownPictures[10], 2);
    prompts.ExpectYesNo(kSpotted, false);  // the middle button changes nothing, but the debugger runs
    editor.ClickCell(10, MouseButton::Middle);
    DebuggerOff();
    Paint(10, 3);  // a changer over the shardle
    Paint(10, 3);  // the same code again
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
    EXPECT_EQ(set().Record(1).SpottedChangerCount, 1);
    editor.ClickCell(10, MouseButton::Right);
    editor.ClickCell(11, MouseButton::Right);  // erasing an empty cell
    EXPECT_EQ(set().Record(1).SpottedChangerCount, 0);
    EXPECT_EQ(set().Layout(1).Cells[10] + ui().shownPictures[10] + ui().shownPictures[11], 0);
    EXPECT_EQ(set().Layout(1).BlockCount, 0);  // painting never counts blocks
    New(GameKind::Tiltbash);
    Paint(63, 8);
    EXPECT_EQ(set().Record(1).ZigZagCount, 1);  // Tiltbash counts follow too
}

TEST_F(EditorTest, PaletteKeysStepAndWrapAsTheyAlwaysDid) {
    const struct {
        int from;
        Key key;
        int to;
    } cases[] = {{15, Key::Right, 1}, {0, Key::Left, 14}, {0, Key::Right, 1}, {15, Key::Left, 14},
                 {14, Key::Right, 15}, {1, Key::Left, 0}, {6, Key::Other, 6}, {6, Key::Home, 6}};
    for (const auto& [from, key, to] : cases) {
        editor.ChooseBlock(from);
        editor.StepBlock(key);
        EXPECT_EQ(ui().selectedBlock, to) << from << " " << static_cast<int>(key);
        EXPECT_EQ(ui().focusedPalette, to);
    }
    New(GameKind::Tiltbash);
    EXPECT_FALSE(editor.PressBackground(MouseButton::Left));
    EXPECT_FALSE(ui().unusedMenuVisible || ui().optionsMenuVisible);
    EXPECT_TRUE(editor.PressBackground(MouseButton::Right));
    New(GameKind::Shardles);
    EXPECT_FALSE(ui().unusedMenuVisible);  // only a press on the background changes them
    editor.PressBackground(MouseButton::Middle);
    EXPECT_TRUE(ui().unusedMenuVisible && ui().optionsMenuVisible);
}

TEST_F(EditorTest, OptionsFollowTheirFlagUnusedKindsTheirMarkAcrossLevels) {
    editor.Toggle(Toggle::ArrowBreakable);
    EXPECT_TRUE(set().ArrowBlocksBreakable && ui().marks.ArrowBreakable);
    editor.Toggle(Toggle::ArrowBreakable);
    EXPECT_FALSE(set().ArrowBlocksBreakable || ui().marks.ArrowBreakable);
    DebuggerOff();
    editor.AddLevel();
    editor.Toggle(Toggle::Spotted);
    SwitchTo(2);
    EXPECT_TRUE(ui().marks.Spotted);  // marks are not refreshed on a level change
    editor.Toggle(Toggle::Spotted);
    EXPECT_FALSE(ui().marks.Spotted || set().Record(2).SpottedUnused);
    editor.Toggle(Toggle::Spotted);
    EXPECT_TRUE(set().Record(2).SpottedUnused && set().Record(1).SpottedUnused);

    const std::tuple<const char*, int, bool> answers[] = {
        {"80", 80, true}, {"81", 0, false}, {"0", 0, false}, {"2.5", 2, true}, {"0.4", 0, true},
        {"", 0, false},   {"-3", 0, false}, {"1e1", 0, false}, {" 7 ", 7, true}};
    for (const auto& [answer, count, mark] : answers) {
        Special(answer);
        EXPECT_EQ(set().Record(2).SpecialUnusedCount, count) << answer;
        EXPECT_EQ(ui().marks.Special, mark) << answer;
    }
    EXPECT_EQ(prompts.lastDefault(), "0");  // the box offers the level's count
}

TEST_F(EditorTest, CreateSwitchesCustomShardlesOnAndStoresOnlyOnOk) {
    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Normal);
        edit.Default();
        return false;
    });
    editor.EditPiece(PictureKind::Normal);
    EXPECT_TRUE(set().UseCustomShardles && ui().marks.CustomShardles);
    EXPECT_EQ(set().CustomShardlePicture, PiecePicture{});
    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Change);
        edit.Click(11);
        return true;
    });
    editor.EditPiece(PictureKind::Change);
    EXPECT_EQ(set().CustomChangerPicture.at(11), 1);
}

TEST_F(EditorTest, TheDebuggerAsksInOrderAndEachYesRunsTheToggleWithItsMarkRule) {
    editor.ChooseBlock(13);
    prompts.ExpectYesNo("You have a Custom Shardle without a Changer.  Set Custom as Unused?", false)
        .ExpectYesNo("You used a Custom Block or Custom Changer without using Custom Shardles.  Use Custom Shardles?", true);
    editor.ClickCell(0, MouseButton::Left);
    EXPECT_TRUE(set().UseCustomShardles && ui().marks.CustomShardles);
    // An answer counts for the questions after it.
    DebuggerOff();
    Discard();
    editor.ResetAll();
    editor.Toggle(Toggle::ZigZag);
    Paint(0, 9);
    Paint(1, 4);
    editor.AddLevel();
    editor.Toggle(Toggle::Debugger);
    prompts.ExpectYesNo("You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?", true)
        .ExpectYesNo("You have a Zig-Zag Changer, but Zig-Zag's are Unused!  Make Zig-Zag a Used Shardle?", true);
    editor.ShardlesDebug();
    EXPECT_TRUE(set().Record(1).CenterLineUnused);
    EXPECT_FALSE(set().Record(1).ZigZagUnused);
    // Yes follows the mark, which another level may have left checked.
    editor.Toggle(Toggle::Spotted);
    prompts.ExpectMessage("Level #1 has no Last Blocks.");
    editor.GoToLevel(2);
    editor.ChooseBlock(2);
    prompts.ExpectYesNo(kSpotted, true);
    editor.ClickCell(0, MouseButton::Left);
    EXPECT_FALSE(ui().marks.Spotted || set().Record(2).SpottedUnused);
}

TEST_F(EditorTest, LevelsAreAddedUpTo255AndRemovedWithTheirRecords) {
    for (int i = 0; i < 254; ++i) editor.AddLevel();
    EXPECT_EQ(ui().levelEntries.back() + "|" + ui().levelCountText, "Level 255|Number of Levels: 255");
    EXPECT_EQ(set().CurrentLevel, 1);
    prompts.ExpectMessage("You can't have more than 255 levels!");
    editor.AddLevel();
    EXPECT_EQ(set().LevelCount(), 255);

    New(GameKind::Shardles);
    DebuggerOff();
    for (int i = 0; i < 4; ++i) editor.AddLevel();
    for (int level = 5; level >= 1; --level) {  // level n: code n in cell 0, ball n, special count 10n
        SwitchTo(level);
        Paint(0, level);
        editor.SetBallStart(Axis::Across, std::to_string(level), Key::Other);
        Special(std::to_string(10 * level));
    }
    SwitchTo(2);
    auto firstCells = [&] {
        std::string cells;
        for (const auto& layout : set().Layouts) cells += std::to_string(layout.Cells[0]);
        return cells;
    };
    prompts.Expect(K::YesNoCancel, kTrash, Answer::Cancel);
    editor.RemoveLevel();
    prompts.Expect(K::YesNoCancel, kTrash, Answer::Yes);
    editor.RemoveLevel();
    EXPECT_EQ(firstCells(), "1345");
    EXPECT_EQ(set().Record(2).SpecialUnusedCount, 30);  // the record moves with its level
    EXPECT_EQ(ui().shownPictures[0] * 10 + std::stoi(ui().ballXText), 33);
    EXPECT_EQ(ui().levelText + "|" + ui().levelCountText, "Level 2|Number of Levels: 4");
    prompts.Expect(K::YesNoCancel, kTrash, Answer::No);
    editor.RemoveLevel();
    EXPECT_EQ(firstCells(), "134");
    EXPECT_EQ(set().CurrentLevel, 2);
    SwitchTo(3);
    editor.RemoveLevel();  // the last level goes without a question
    EXPECT_EQ(ui().levelText, "Level 2");
    editor.RemoveLevel();
    prompts.ExpectMessage("There has to be at least ONE Level!!!!!");
    editor.RemoveLevel();
    EXPECT_EQ(ui().levelEntries.size(), 1u);
}

TEST_F(EditorTest, SwitchingCountsTheLevelLeftStoresItsBallAndShowsTheNext) {
    Paint(3, 1);
    prompts.ExpectYesNo("You only have 1 Level. Should I add another?", true);
    SwitchTo(1);
    EXPECT_EQ(ui().levelEntries.back(), "Level 2");
    EXPECT_EQ(set().CurrentLevel, 1);
    editor.Undo();  // adding the level was a step of its own
    EXPECT_EQ(set().LevelCount() * 10 + set().Layout(1).Cells[3], 11);
    editor.Redo();
    DebuggerOff();
    Paint(0, 1);
    Paint(1, 1);
    editor.TypeBallStart(Axis::Across, "12");  // pasted: no key went up
    editor.SetBallStart(Axis::Down, "7.5", Key::Backspace);  // left unchecked by an editing key, stored on leaving
    SwitchTo(2);
    EXPECT_EQ(set().Layout(1).BlockCount, 3);
    EXPECT_EQ(set().Layout(1).BallX * 100 + set().Layout(1).BallY, 1208);
    EXPECT_EQ(ui().levelText + "|" + ui().ballXText, "Level 2|0");
    SwitchTo(1);
    EXPECT_EQ(ui().ballXText + "|" + ui().ballYText, "12|8");
    editor.SetBallStart(Axis::Across, "9", Key::Other);
    SwitchTo(2);
    editor.SetBallStart(Axis::Across, "9", Key::Other);  // typing again, but a level switch came between: two steps
    editor.Undo();
    EXPECT_EQ(set().Layout(1).BallX * 10 + set().Layout(2).BallX, 90);
}

TEST_F(EditorTest, TitleAndNumberBoxesAreCheckedOnKeysOtherThanTheSixEditingKeysWhateverTheLocale) {
    editor.SetTitle(std::string(21, 'x'));  // one past the most
    editor.CheckTitle(Key::Delete);
    EXPECT_EQ(set().Title.size(), 21u);
    editor.CheckTitle(Key::Other);
    EXPECT_EQ(set().Title, std::string(20, 'x'));
    editor.SetBallStart(Axis::Down, "63", Key::Other);
    EXPECT_EQ(ui().ballYText, "0");
    editor.SetBallStart(Axis::Down, "62", Key::Other);
    editor.SetBallStart(Axis::Down, "", Key::Backspace);
    EXPECT_EQ(ui().ballYText, "");
    EXPECT_EQ(set().Layout(1).BallY, 62);
    editor.SetBallStart(Axis::Down, "", Key::Other);  // any key but the editing ones checks, Up arrow too
    EXPECT_EQ(ui().ballYText + std::to_string(set().Layout(1).BallY), "00");
    editor.SetBonusClock("90");
    editor.SetExtraLifePoints("7");
    EXPECT_EQ(set().BonusClock + set().ExtraLifePoints, "907");

    // Numbers follow the program's own rule, in the C locale and in one whose decimal point is a comma.
    const std::tuple<const char*, const char*, int> texts[] = {
        {"95", "0", 0},     {"94", "94", 94},   {"-", "0", 0},       {"12a", "0", 0},   {"5.5", "5.5", 6},
        {"6.5", "6.5", 6}, {"-0.4", "-0.4", 0}, {"-0.6", "0", 0}, {"94.4", "0", 0}, {"93.5", "93.5", 94}};
    for (const bool comma : {false, true}) {
        ASSERT_TRUE(!comma || UseADecimalCommaLocale());
        for (const auto& [text, shown, stored] : texts) {
            editor.SetBallStart(Axis::Across, text, Key::Other);
            EXPECT_EQ(ui().ballXText, shown) << text << comma;
            EXPECT_EQ(set().Layout(1).BallX, stored) << text << comma;
        }
    }
    Special("0.4");
    EXPECT_TRUE(ui().marks.Special);
    WriteFile(dir / "set.rsx", ReadFile(DataDir() / "myfile/loose-lines.in"));
    Discard();
    prompts.ExpectOpen(kMyFileOpen, dir / "set.rsx").ExpectMessage("Opened Succesfully");
    editor.OpenLevelFile(FormatId::MyFile);
    UseTheCLocale();
    EXPECT_EQ(set().Layout(1).BallX * 1000 + set().Layout(1).BallY, -3996);  // "-3.5,  4" read and rounded
}

TEST_F(EditorTest, ResetAllClearsOnlyTheCurrentLevelsGridAndShardles) {
    ThreeLevels();
    SwitchTo(2);
    Special("4");
    editor.SetBallStart(Axis::Across, "12", Key::Other);
    Paint(4, 9);
    editor.Toggle(Toggle::Spotted);
    editor.Toggle(Toggle::ZigZag);
    Discard();
    editor.ResetAll();
    const LevelRecord& record = set().Record(2);
    EXPECT_EQ(set().Layout(2).Cells, BlockGrid(80, 0));
    EXPECT_EQ(record, (LevelRecord{.SpecialUnusedCount = 4}));
    EXPECT_FALSE(ui().marks.Spotted);
    EXPECT_EQ(set().Layout(2).BallX, 12);
    EXPECT_EQ(set().Layout(1).Cells[1] + ui().shownPictures[1], 1);
}

TEST_F(EditorTest, ADragPaintsEveryCellItCrossesAndAsksOnceAtTheRelease) {
    // Cells 40 units wide in a row, found by x alone.
    const CellLocator row = [](Point p) { return p.x >= 0 && p.x < 320 ? p.x / 40 : -1; };
    editor.ChooseBlock(2);
    editor.PressCell(0, {5, 5}, MouseButton::Left, 1);
    editor.PressCell(7, {300, 5}, MouseButton::Right, 3);  // another button during a stroke does nothing
    editor.DragTo({200, 5}, 1, row);                       // one jump crosses cells 1 to 5
    editor.DragTo({210, 5}, 1, row);
    EXPECT_EQ(set().Record(1).SpottedCount, 6);
    editor.ReleaseButton(MouseButton::Right);
    prompts.ExpectYesNo(kSpotted, true);
    editor.ReleaseButton(MouseButton::Left);
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    editor.DragTo({300, 5}, 1, row);  // no stroke: nothing
    editor.Undo();                    // the stroke and the debugger's answer are one step
    EXPECT_EQ(JsonOf(set()), JsonOf(NewSet(GameKind::Shardles)));
    EXPECT_FALSE(ui().marks.Spotted);
    // The right button erases along its stroke; a stroke whose release never came ends at the next press.
    editor.Redo();
    editor.PressCell(1, {45, 5}, MouseButton::Right, 2);
    editor.DragTo({125, 5}, 2, row);
    editor.PressCell(6, {245, 5}, MouseButton::Middle, 4);
    EXPECT_EQ(set().Layout(1).Cells[0] * 1000 + set().Layout(1).Cells[3] * 10 + set().Layout(1).Cells[4], 2002);
    editor.EndStroke();
    EXPECT_FALSE(editor.CanRedo());
}

TEST_F(EditorTest, EveryChangeIsOneStepAndTypingInOneFieldMerges) {
    std::vector<std::string> states{JsonOf(set())};
    auto step = [&](auto change) {
        change();
        states.push_back(JsonOf(set()));
    };
    step([&] { DebuggerOff(); });
    step([&] { Paint(12, 8); });
    step([&] { editor.AddLevel(); });
    step([&] { editor.Toggle(Toggle::ZigZag); });
    step([&] { Special("9"); });
    step([&] {
        editor.SetBallStart(Axis::Across, "4", Key::Other);
        editor.SetBallStart(Axis::Across, "40", Key::Other);
    });
    step([&] { editor.SetTitle("Caves"); });
    step([&] { editor.SetBonusClock("90"); });
    step([&] {
        prompts.ExpectPicture([](CustomPieceEdit& edit) { return edit.Click(1), true; });
        editor.EditPiece(PictureKind::Normal);
    });
    step([&] { Discard(), editor.ResetAll(); });
    step([&] { prompts.Expect(K::YesNoCancel, kTrash, Answer::Yes), editor.RemoveLevel(); });
    for (std::size_t i = states.size() - 1; i > 0; --i) {
        ASSERT_TRUE(editor.CanUndo()) << i;
        editor.Undo();
        EXPECT_EQ(JsonOf(set()), states[i - 1]) << i;
    }
    EXPECT_FALSE(editor.CanUndo());
    for (std::size_t i = 1; i <= 3; ++i) {
        editor.Redo();
        EXPECT_EQ(JsonOf(set()), states[i]) << i;
    }
    editor.SetTitle("C");  // a new step drops the redo branch
    EXPECT_FALSE(editor.CanRedo());
    editor.SetTitle("Please Add a Title");  // typing back to where it began leaves no step
    editor.Undo();
    EXPECT_EQ(JsonOf(set()), states[2]);
    New(GameKind::Tiltbash);  // a new set starts an empty history
    EXPECT_FALSE(editor.CanUndo() || editor.CanRedo());
}

TEST_F(EditorTest, SavingCountsEveryLevelAndRefusesALevelWithoutLastBlocksFirst) {
    ThreeLevels();
    SwitchTo(2);
    Discard();
    editor.ResetAll();
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.SaveProgram();
    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    editor.SaveLevelFile(FormatId::List);
    EXPECT_EQ(set().CurrentLevel * 10 + ui().shownPictures[0], 20);  // the level to fix is shown
    EXPECT_EQ(ui().levelText, "Level 2");
    Paint(0, 6);
    prompts.ExpectSave(kMyFileSave, dir / "three.rsx").ExpectMessage("Saved Succesfully!");
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_EQ(prompts.lastFolder() + "|" + editor.lastFolder(), dir.path.string() + "|" + dir / "");
    EXPECT_EQ(set().CurrentLevel, 1);
    EXPECT_EQ(set().Layout(1).BlockCount * 10 + set().Layout(1).LastBlockCount, 11);
    const LevelSet saved = set();
    New(GameKind::Tiltbash);
    Paint(0, 1);
    Discard();
    prompts.ExpectOpen(kMyFileOpen, dir / "three.rsx").ExpectMessage("Opened Succesfully");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().Layouts, saved.Layouts);
    EXPECT_EQ(set().Title, "Three");
    EXPECT_FALSE(editor.CanUndo());  // an opened set starts an empty history
    EXPECT_EQ(ui().levelEntries.size() * 100 + ui().shownPictures.size(), 380u);
    EXPECT_EQ(ui().shownPictures[1], 1);
    // Cancelled dialogs still end on level 1, and the debugger runs there after a save.
    DebuggerOff();
    Paint(5, 2);
    SwitchTo(3);
    editor.Toggle(Toggle::Debugger);
    prompts.ExpectSave(kMyFileSave, "").ExpectYesNo(kSpotted, false);
    editor.SaveLevelFile(FormatId::MyFile);
    EXPECT_EQ(set().CurrentLevel, 1);
}

TEST_F(EditorTest, OpeningRefusesForeignFilesKeepingTheSetAndSaysWhereAReadStopped) {
    ThreeLevels();
    const std::string before = JsonOf(set());
    WriteFile(dir / "other.83l", "title\r\n//lQRVLE\r\n");
    Discard();
    prompts.ExpectOpen("TI-83 List File|*.83l", dir / "other.83l").ExpectMessage("Not a valid list file.");
    editor.OpenLevelFile(FormatId::List);
    WriteFile(dir / "empty.z80", "; only a comment\r\n");
    Discard();
    prompts.ExpectOpen(kSourceOpen, dir / "empty.z80");  // nothing replaced yet, and no message
    editor.OpenSource();
    EXPECT_EQ(ui().status, "Stopped reading empty.z80 at line 2: the file ends before the origin line");
    EXPECT_EQ(JsonOf(set()), before);
    EXPECT_EQ(editor.lastFolder(), dir.path.string());

    prompts.ExpectSave(kMyFileSave, dir / "cut.rsx").ExpectMessage("Saved Succesfully!");
    editor.SaveLevelFile(FormatId::MyFile);
    WriteFile(dir / "cut.rsx", ReadFile(dir / "cut.rsx").substr(0, 300));
    New(GameKind::Tiltbash);
    prompts.ExpectOpen(kMyFileOpen, dir / "cut.rsx");  // no message
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_EQ(CheckConsistent(set()), "");
    EXPECT_EQ(ui().shownPictures.size(), 80u);
    EXPECT_EQ(ui().status, "Stopped reading cut.rsx at line 15: the file ends inside level 2");
    // A set whose debugger is off: the option's mark, on before, stays on.
    WriteFile(dir / "off.rsx", ReadFile(DataDir() / "myfile/shardles.out"));
    editor.NewSet(GameKind::Shardles);
    editor.ChooseBlock(5);  // an opened set starts with the palette's first block, as a new one does
    prompts.ExpectOpen(kMyFileOpen, dir / "off.rsx").ExpectMessage("Opened Succesfully");
    editor.OpenLevelFile(FormatId::MyFile);
    EXPECT_TRUE(ui().marks.Debugger && !set().UseShardlesDebugger);
    EXPECT_EQ(ui().selectedBlock, 0);
}

TEST_F(EditorTest, SaveWritesTheSetsFileAgainExportAgainRepeatsAndRecentFilesAreKept) {
    ThreeLevels();
    EXPECT_EQ(editor.DocumentName(), "Untitled");
    prompts.ExpectSave(kMyFileSave, dir / "doc.rsx").ExpectMessage("Saved Succesfully!");
    editor.Save();  // no file yet: as Save As
    EXPECT_EQ(editor.DocumentName() + "|" + std::to_string(editor.IsModified()), "doc.rsx|0");
    Paint(5, 1);
    editor.Save();  // again, without a dialog
    EXPECT_EQ(ui().status, "Saved doc.rsx");
    EXPECT_FALSE(editor.IsModified());
    prompts.ExpectSave(kMyFileSave, dir / "copy.rsx").ExpectMessage("Saved Succesfully!");
    editor.SaveAs();
    EXPECT_EQ(editor.DocumentName(), "copy.rsx");
    // Exports leave the set's own file alone; Export Again repeats the last one.
    EXPECT_FALSE(editor.CanExportAgain());
    prompts.ExpectSave(kProgramSave, dir / "LEVELS.83p").ExpectMessage("Succesfully compiled!");
    editor.SaveProgram();
    EXPECT_EQ(prompts.lastExtension() + editor.DocumentName(), ".83pcopy.rsx");
    Paint(6, 1);
    std::filesystem::remove(dir.path / "LEVELS.83p");
    editor.ExportAgain();
    EXPECT_EQ(ui().status, "Exported LEVELS.83p");
    EXPECT_TRUE(std::filesystem::exists(dir.path / "LEVELS.83p") && editor.IsModified());
    // The last files opened or saved, newest first, kept for the next start but for those gone.
    EXPECT_EQ(editor.recentFiles(), (std::vector<std::string>{dir / "LEVELS.83p", dir / "copy.rsx", dir / "doc.rsx"}));
    editor.Close();
    std::filesystem::remove(dir.path / "doc.rsx");
    Editor next(prompts);
    next.Start(dir / "info.ini", dir.path, dir / "recent.txt");
    EXPECT_EQ(next.recentFiles(), (std::vector<std::string>{dir / "LEVELS.83p", dir / "copy.rsx"}));
    // A file from outside opens as its extension says, JSON too.
    WriteFile(dir / "set.json", ReadFile(DataDir() / "json/full.set.json"));
    Discard();
    prompts.ExpectMessage("Opened Succesfully");
    editor.OpenPath(dir / "set.json");
    EXPECT_EQ(set().Title + editor.DocumentName(), "\xC9t\xE9 \x80Untitled");
    EXPECT_FALSE(editor.CanExportAgain());
    editor.OpenPath(dir / "notes.txt");
    EXPECT_EQ(ui().status, "notes.txt: the editor does not know the form of a file by this extension");
    editor.OpenPath(dir / "doc.rsx");
    EXPECT_EQ(ui().status, "doc.rsx: cannot be read: No such file or directory");
}

TEST_F(EditorTest, ProgramFilesTakeTheirNameFromTheFileAndOpenBack) {
    ThreeLevels();
    const char* nameRule = "This name has to be 8 characters long because this is the name that is shown in the Calculator!";
    prompts.ExpectSave(kProgramSave, dir / "thirteenchars").ExpectMessage(nameRule);
    editor.SaveProgram();
    // The name as the file holds it, padding shown as dots.
    const std::pair<const char*, std::string> saves[] = {
        {"levels12.83p", "levels12.83p|LEVELS12"}, {"abcdef", "abcdef.83p|AB......"},
        {"caps.83P", "caps.83p|CAPS...."}, {"set.txt", "set.83p|SET....."}, {"abcd", "abcd.83p|........"}};
    for (const auto& [name, saved] : saves) {
        prompts.ExpectSave(kProgramSave, dir / name).ExpectMessage("Succesfully compiled!");
        editor.SaveProgram();
        const std::string file = saved.substr(0, saved.find('|'));
        std::string programName = ReadFile(dir.path / file).substr(60, 8);
        std::replace(programName.begin(), programName.end(), '\0', '.');
        EXPECT_EQ(file + "|" + programName, saved);
    }
    // A dotted folder does not swallow the extension of a plain name.
    std::filesystem::create_directory(dir.path / "v1.0");
    prompts.ExpectSave(kProgramSave, dir / "v1.0/plainname").ExpectMessage("Succesfully compiled!");
    editor.SaveProgram();
    EXPECT_TRUE(std::filesystem::exists(dir.path / "v1.0/plainname.83p"));
    EXPECT_EQ(editor.lastFolder(), dir / "v1.0/");
    prompts.ExpectSave(kProgramSave, dir / "abc");
    editor.SaveProgram();
    EXPECT_EQ(ui().status, "Could not compile: the file name abc is too short");

    const LevelSet saved = set();
    editor.SetTitle("Changed");
    Discard();
    prompts.ExpectOpen(kProgramOpen, "");
    editor.OpenProgram();  // cancelled: the set, its levels and its history stay
    EXPECT_EQ(set().Title + std::to_string(set().LevelCount()), "Changed3");
    EXPECT_TRUE(editor.CanUndo());
    Discard();
    prompts.ExpectOpen(kProgramOpen, dir / "levels12.83p").ExpectMessage("Opened Succesfully");
    editor.OpenProgram();
    EXPECT_EQ(set().Layouts, saved.Layouts);
    EXPECT_EQ(set().Title, "Three");
}

TEST_F(EditorTest, SourceExportsShowTheirMessageOnTheLastLevelAndRefuseWhatTheGamesCannotHold) {
    ThreeLevels();
    Paint(7, 4);  // on level 3: the debugger asks there when the message has been shown, then not on level 1
    editor.Toggle(Toggle::Debugger);
    prompts.ExpectSave(kSourceSave, dir / "three.z80")
        .ExpectMessage("Saved Succesfully")
        .ExpectYesNo("You have a Center-Line Shardle without a Changer.  Set Center-Line as Unused?", false);
    editor.SaveSource();
    EXPECT_EQ(set().CurrentLevel, 1);
    New(GameKind::Tiltbash);
    prompts.ExpectOpen(kSourceOpen, dir / "three.z80");  // reading source confirms nothing
    editor.OpenSource();
    EXPECT_EQ(set().Title + std::to_string(set().LevelCount()), "Three3");
    New(GameKind::Shardles);
    editor.SetBonusClock("45");
    prompts.ExpectSave(kSourceSave, dir / "bad.z80")
        .ExpectMessage("The bonus clock \"45\" cannot be written for the calculator: it must be 30, 60, 90 or 120.");
    editor.SaveSource();
    EXPECT_FALSE(std::filesystem::exists(dir.path / "bad.z80"));
    prompts.ExpectSave(kSourceSave, dir / "missing/bad.z80");
    editor.SetBonusClock("30");
    editor.SaveSource();
    EXPECT_EQ(ui().status.substr(0, 24), "Could not save bad.z80: ");
    EXPECT_NE(ui().status.find("No such file or directory"), std::string::npos) << ui().status;
}

}  // namespace
}  // namespace shd::test
