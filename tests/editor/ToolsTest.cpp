// The editing tools and the cell and level commands, driven as the window
// drives them, and the cell algorithms and clipboard texts under them.
#include <functional>

#include "editor/CellTools.h"
#include "support/EditorFixture.h"

namespace shd::test {
namespace {

class ToolsTest : public EditorTest {
protected:
    // Grid cells 10 units square, found by where the pointer is.
    const CellLocator grid = [this](Point p) {
        return p.x >= 0 && p.x < 80 && p.y >= 0 && p.y < RowCount(set().Kind) * 10 ? p.y / 10 * 8 + p.x / 10 : -1;
    };
    void Drag(int press, const std::vector<Point>& points, MouseButton button = MouseButton::Left, bool up = true) {
        editor.PressCell(press, {press % 8 * 10 + 5, press / 8 * 10 + 5}, button, static_cast<int>(button));
        for (Point p : points) editor.DragTo(p, static_cast<int>(button), grid);
        if (up) editor.ReleaseButton(button);
    }
    // Paints the first rows of the current level from hex digits, with the pencil.
    void Draw(std::initializer_list<std::string> rows) {
        editor.ChooseTool(Tool::Pencil);
        int row = 0;
        for (const std::string& digits : rows) {
            for (int column = 0; column < static_cast<int>(digits.size()); ++column)
                if (digits[column] != '0') Paint(row * 8 + column, std::stoi(digits.substr(column, 1), nullptr, 16));
            ++row;
        }
    }
    // Rows `first` to `last` of the current level as hex digits, "/" between rows.
    std::string Rows(int first, int last) const {
        std::string text;
        for (int cell = first * 8; cell < (last + 1) * 8; ++cell)
            (text += cell % 8 == 0 && cell > first * 8 ? "/" : "") += "0123456789ABCDEF"[set().Current().Cells[cell]];
        return text;
    }
    // Every level's piece counts as a recount finds them, and the grid showing the current level.
    void ExpectInStep() {
        LevelSet recounted = set();
        for (recounted.CurrentLevel = 1; recounted.CurrentLevel <= recounted.LevelCount(); ++recounted.CurrentLevel)
            RecountCurrentLevel(recounted);
        EXPECT_TRUE(recounted.Records == set().Records) << JsonOf(set());
        const BlockGrid& cells = set().Current().Cells;
        EXPECT_EQ(ui().shownPictures, std::vector<int>(cells.begin(), cells.end()));
    }
    // Each level's cell 1 and special count in tens, which layout and record are where, and the current level.
    std::string Order() const {
        std::string text;
        for (int level = 1; level <= set().LevelCount(); ++level)
            text += std::to_string(set().Layout(level).Cells[1] * 10 + set().Record(level).SpecialUnusedCount / 10) +
                    " ";
        return text + "@" + std::to_string(set().CurrentLevel);
    }
};

TEST_F(ToolsTest, ARectangleSpansFromItsAnchorInAnyDirectionAndOffTheGridKeepsItsLastCell) {
    DebuggerOff();
    const LevelSet empty = set();
    editor.ChooseTool(Tool::Rectangle);
    editor.ChooseBlock(2);
    const std::pair<std::vector<Point>, CellRange> cases[] = {  // pressed on column 3, row 4
        {{{65, 75}}, {3, 4, 4, 4}}, {{{5, 15}}, {0, 1, 4, 4}}, {{{75, 5}, {70, 3}}, {3, 0, 5, 5}},
        {{}, {3, 4, 1, 1}},         {{{35, -50}}, {3, 0, 1, 5}},
        {{{65, 75}, {200, 75}}, {3, 4, 5, 4}},  // leaves the grid from row 7, column 7
        {{{300, 300}}, {3, 4, 5, 5}},           // one jump: the last cell on its way is row 8, column 7
    };
    for (const auto& [points, range] : cases) {
        Drag(35, points, MouseButton::Left, false);
        EXPECT_EQ(ui().preview, range);
        EXPECT_TRUE(set() == empty);  // nothing is filled before the release
        editor.ReleaseButton(MouseButton::Left);
        EXPECT_EQ(ui().preview, CellRange{});
        for (int cell = 0; cell < 80; ++cell) {
            const int c = cell % 8 - range.column, r = cell / 8 - range.row;
            EXPECT_EQ(set().Layout(1).Cells[cell], c >= 0 && c < range.columns && r >= 0 && r < range.rows ? 2 : 0);
        }
        ExpectInStep();
        editor.Undo();
        EXPECT_TRUE(set() == empty) << JsonOf(set());
    }
    Draw({"11111111", "11111111"});
    editor.ChooseTool(Tool::Rectangle);
    Drag(9, {{25, 5}}, MouseButton::Right);    // the right button empties
    Drag(0, {{75, 15}}, MouseButton::Middle);  // the middle button fills nothing
    EXPECT_EQ(Rows(0, 1), "10011111/10011111");
}

TEST_F(ToolsTest, FillTakesTheFourConnectedAreaOfThePressedCodeAndSameCodeIsNoStep) {
    DebuggerOff();
    Draw({"01100000", "10010000", "01100000"});
    editor.ChooseTool(Tool::Fill);
    const std::tuple<int, MouseButton, int, const char*> fills[] = {  // cell pressed, button, block chosen
        {9, MouseButton::Left, 4, "01100000/14410000/01100000"},    // the area the ring closes
        {0, MouseButton::Left, 5, "51100000/14410000/01100000"},    // corners touch only diagonally
        {1, MouseButton::Left, 3, "53300000/14410000/01100000"},    // one side of the ring
        {7, MouseButton::Left, 2, "53322222/14412222/21122222"},    // everything outside
        {10, MouseButton::Right, 9, "53322222/10012222/21122222"},  // the right button empties
        {20, MouseButton::Left, 2, "53322222/10012222/21122222"},   // an area's own code: no change, no step
    };
    for (const auto& [cell, button, code, rows] : fills) {
        editor.ChooseBlock(code);
        editor.ClickCell(cell, button);
        EXPECT_EQ(Rows(0, 2), rows) << cell;
        ExpectInStep();
    }
    editor.Undo();  // undoes the right-button fill
    EXPECT_EQ(Rows(1, 1), "14412222");
}

TEST_F(ToolsTest, EachCommandIsOneStepAndTheDebuggerAsksOnceAfterIt) {
    DebuggerOff();
    editor.AddLevel();
    Draw({"21"});  // a spotted shardle without a changer: the debugger asks after every command
    editor.ChooseTool(Tool::Select);
    editor.ClickCell(1, MouseButton::Left);
    editor.Toggle(Toggle::Debugger);
    editor.ChooseBlock(1);
    const std::string level = editor.CopyLevel();
    const std::pair<const char*, std::function<void()>> commands[] = {
        {"rectangle", [&] { editor.ChooseTool(Tool::Rectangle), editor.ClickCell(12, MouseButton::Left); }},
        {"fill", [&] { editor.ChooseTool(Tool::Fill), editor.ClickCell(12, MouseButton::Left); }},
        {"cut", [&] { EXPECT_EQ(editor.CutSelection(), "shardles-editor cells 1 1\n1\n"); }},
        {"paste", [&] { editor.PasteCells("shardles-editor cells 1 1\n7\n"); }},
        {"flip across", [&] { editor.FlipLeftRight(); }}, {"flip down", [&] { editor.FlipTopBottom(); }},
        {"shift", [&] { editor.ShiftCells(0, -1); }},      {"duplicate", [&] { editor.DuplicateLevel(); }},
        {"move", [&] { editor.MoveLevelDown(); }},         {"paste level", [&] { editor.PasteLevel(level); }},
    };
    bool yes = false;  // No shows a second question; Yes shows that the answer joins the step
    for (const auto& [name, command] : commands) {
        SCOPED_TRACE(name);
        const LevelSet before = set();
        prompts.ExpectYesNo(kSpotted, yes);
        command();
        const LevelSet after = set();
        EXPECT_FALSE(after == before);
        EXPECT_EQ(set().CurrentRecord().SpottedUnused, yes);
        ExpectInStep();
        editor.Undo();
        EXPECT_TRUE(set() == before) << JsonOf(set());
        editor.Redo();
        EXPECT_TRUE(set() == after);
        editor.Undo();
        yes = !yes;
    }
}

TEST_F(ToolsTest, SelectedCellsCopyAndPasteAcrossLevelsAndGamesAndPastesAreCutAtTheEdges) {
    DebuggerOff();
    Draw({"12", "3F"});
    editor.ChooseTool(Tool::Select);
    const LevelSet drawn = set();
    Drag(9, {{5, 5}});
    editor.ClickCell(20, MouseButton::Right);  // other buttons keep the selection
    EXPECT_EQ(ui().selection, (CellRange{0, 0, 2, 2}));
    EXPECT_TRUE(set() == drawn);
    const std::string cells = editor.CopySelection();
    EXPECT_EQ(cells, "shardles-editor cells 2 2\n12\n3F\n");
    EXPECT_EQ(editor.CutSelection(), cells);
    EXPECT_EQ(Rows(0, 1) + std::to_string(set().Record(1).SpottedCount), "00000000/000000000");
    editor.Undo();
    editor.Undo();  // selecting was no step: this undoes the last cell drawn
    EXPECT_EQ(Rows(0, 1), "12000000/30000000");

    editor.AddLevel();
    SwitchTo(2);
    // At the selection's corner, the part past the grid's edges dropped; what is pasted becomes the selection.
    const std::tuple<int, std::string, CellRange, bool> pastes[] = {
        {70, "00000012/0000003F", {6, 8, 2, 2}, true},  {79, "00000000/00000001", {7, 9, 1, 1}, true},
        {-1, "12000000/3F000000", {0, 0, 2, 2}, true},  {-1, "12000000/3F000000", {0, 0, 2, 2}, false},
        {63, "00000000/00000001", {7, 7, 1, 1}, false},
    };
    for (const auto& [corner, rows, range, shardles] : pastes) {
        if (set().IsShardles() != shardles) {
            New(GameKind::Tiltbash);
            EXPECT_EQ(ui().selection, CellRange{});  // a new grid, no selection
        }
        editor.ClearSelection();
        if (corner >= 0) editor.ClickCell(corner, MouseButton::Left);
        editor.PasteCells(cells);
        const int last = RowCount(set().Kind) - 1;
        EXPECT_EQ(Rows(corner < 0 ? 0 : last - 1, corner < 0 ? 1 : last), rows) << corner;
        EXPECT_EQ(ui().selection, range);
        ExpectInStep();
        editor.Undo();
    }
    std::string big = "shardles-editor cells 20 12\n";  // bigger than the grid: cut to it
    for (int row = 0; row < 12; ++row) big += std::string(20, 'c') + "\r\n";
    editor.ClearSelection();
    editor.PasteCells(big);
    EXPECT_EQ(ui().selection, (CellRange{0, 0, 8, 8}));
    EXPECT_EQ(Rows(7, 7), "CCCCCCCC");
}

TEST_F(ToolsTest, TextsThatAreNotCellsOrALevelChangeNothingAndSaySo) {
    DebuggerOff();
    Draw({"21"});
    const std::string level = editor.CopyLevel();
    std::string emptyRows;
    for (int row = 1; row < 10; ++row) emptyRows += "00000000\n";
    EXPECT_EQ(level, "shardles-editor level\nball 0 0\nblocks 0 0\nrecord 0 1 0 0 0 0 0 0 0 0 0 0 0\n"
                     "shardles-editor cells 8 10\n21000000\n" + emptyRows);
    auto replaced = [&](const std::string& from, const std::string& to) {
        return std::string(level).replace(level.find(from), from.size(), to);
    };
    const std::string notCells[] = {
        "", "\n", "shardles-editor cells 2 1\n1\n", "shardles-editor cells 1 2\n1\n", "shardles-editor cells 1 1\nG\n",
        "shardles-editor cells 0 1\n\n", "shardles-editor cells 256 1\n" + std::string(256, '1'),
        "shardles-editor cells 1 1\n1\nextra\n", "shardles-editor cells 1 99999999999\n1\n",
        "shardles-editor cells 1 1 1\n1\n", "shardles-editor cells  1 1\n1\n", "shardles-editor cells -1 1\n1\n",
        std::string("shardles-editor cells 1 1\n") + '\0' + "\n", "Shardles-editor cells 1 1\n1\n", level};
    const std::string notALevel[] = {
        "", "shardles-editor cells 1 1\n1\n", level.substr(0, 70), replaced("record 0", "record -1"),
        replaced("record 0 1 0 0 0 0 0 0 0 0", "record 0 1 0 0 0 0 0 0 0 2"), replaced("blocks 0 0\n", ""),
        replaced("ball 0 0", "ball 0 40000"), replaced(" 0 0 0 0\nshardles", " 0 0 0\nshardles"),
        replaced("21000000", "2100000"), replaced("level\n", "levels\n")};
    for (const std::string& text : notCells) EXPECT_FALSE(ParseCellsText(text)) << text;
    for (const std::string& text : notALevel) EXPECT_FALSE(ParseLevelText(text, GameKind::Shardles)) << text;
    // Either case, CR LF line ends, blank lines at the end or no final line end.
    for (const char* text : {"shardles-editor cells 2 1\r\naB\r\n\r\n", "shardles-editor cells 2 1\nAb"})
        EXPECT_EQ(ParseCellsText(text), (CellBlock{2, 1, {10, 11}})) << text;
    const LevelSet before = set();
    editor.PasteCells(notCells[2]);
    EXPECT_TRUE(set() == before && ui().status == "The clipboard holds no cells to paste.");
    editor.PasteLevel(notALevel[3]);
    EXPECT_TRUE(set() == before && ui().status == "The clipboard holds no level to paste.");
    editor.Undo();
    EXPECT_EQ(Rows(0, 0), "20000000");  // no step was recorded
}

// A code 2 on an empty grid moves from one cell to another; rows below 0 count from the bottom.
TEST(CellToolsTest, FlipsMirrorTheWholeGridAndShiftsWrapAroundOnBothGrids) {
    using Move = std::function<BlockGrid(const BlockGrid&)>;
    const Move across = FlippedLeftRight, down = FlippedTopBottom;
    auto shift = [](int columns, int rows) -> Move {
        return [=](const BlockGrid& g) { return Shifted(g, columns, rows); };
    };
    const std::tuple<Move, int, int, int, int> moves[] = {
        {across, 0, 0, 7, 0},      {across, 5, 1, 2, 1},      {down, 0, 0, 0, -1},      {down, 4, 1, 4, -2},
        {shift(1, 0), 7, 0, 0, 0}, {shift(-1, 0), 0, 1, 7, 1}, {shift(0, 1), 3, 0, 3, 1}, {shift(0, 1), 0, -1, 0, 0},
        {shift(0, -1), 1, 0, 1, -1}};
    for (int rows : {10, 8}) {
        auto grid = [rows](int column, int row) {
            BlockGrid cells(rows * 8, 0);
            cells[(row < 0 ? rows + row : row) * 8 + column] = 2;
            return cells;
        };
        for (const auto& [move, fromColumn, fromRow, toColumn, toRow] : moves)
            EXPECT_EQ(move(grid(fromColumn, fromRow)), grid(toColumn, toRow)) << rows << ": " << fromColumn << fromRow;
        BlockGrid pattern(rows * 8);
        for (std::size_t i = 0; i < pattern.size(); ++i) pattern[i] = static_cast<std::uint8_t>(i * 7 % 16);
        for (const auto& [move, times] : {std::pair{across, 2}, {down, 2}, {shift(1, 0), 8}, {shift(0, -1), rows}}) {
            BlockGrid moved = move(pattern);
            EXPECT_NE(moved, pattern);
            for (int i = 1; i < times; ++i) moved = move(moved);
            EXPECT_EQ(moved, pattern) << times;
        }
        EXPECT_EQ(Shifted(Shifted(pattern, 1, -1), -1, 1), pattern);
    }
}

TEST_F(ToolsTest, LevelCommandsKeepEachRecordWithItsLevelAndShowTheOneTheyMade) {
    ThreeLevels();
    for (int level = 1; level <= 3; ++level) SwitchTo(level), Special(std::to_string(10 * level));
    SwitchTo(2);
    editor.SetBallStart(Axis::Down, "7", Key::Backspace);  // left unchecked: the level left keeps it, as on a switch
    editor.DuplicateLevel();
    Special("50");
    EXPECT_EQ(Order(), "11 22 25 33 @3");
    EXPECT_EQ(set().Layout(2).BallY * 10 + set().Layout(3).BallY, 77);
    EXPECT_EQ(set().Record(3).SpottedCount, 1);
    EXPECT_EQ(ui().levelText + "|" + ui().levelCountText + "|" + ui().levelEntries.back(),
              "Level 3|Number of Levels: 4|Level 4");
    // The current level stays current; another current level follows its level.
    const std::tuple<int, int, std::string> moves[] = {
        {1, 4, "22 25 33 11 @2"}, {2, 1, "25 22 33 11 @1"}, {3, 1, "33 25 22 11 @2"},
        {1, 2, "25 33 22 11 @1"}, {2, 1, "33 25 22 11 @2"},  // onto the current level's place and back
        {4, 2, "33 11 25 22 @3"}, {0, 2, "33 11 25 22 @3"}, {4, 5, "33 11 25 22 @3"}, {2, 2, "33 11 25 22 @3"}};
    for (const auto& [from, to, order] : moves) {
        editor.MoveLevel(from, to);
        EXPECT_EQ(Order(), order) << from << " to " << to;
        EXPECT_EQ(ui().levelText, LevelEntry(set().CurrentLevel));
        EXPECT_EQ(set().Current().BallY, 7);
    }
    editor.MoveLevelDown();
    editor.MoveLevelDown();  // already the last: nothing
    EXPECT_EQ(Order(), "33 11 22 25 @4");
    editor.MoveLevelUp();
    editor.Undo();
    editor.Undo();
    EXPECT_EQ(Order(), "33 11 25 22 @3");
    editor.Undo();
    EXPECT_EQ(Order(), "33 25 22 11 @2");

    // Into the other game: the bottom rows go, or come empty; counts are recounted, the record kept.
    Paint(79, 4);
    const std::string shardles = editor.CopyLevel();
    editor.PasteLevel(shardles);
    EXPECT_TRUE(set().Layout(3) == set().Layout(2) && set().Record(3) == set().Record(2));
    EXPECT_EQ(Order(), "33 25 25 22 11 @3");
    New(GameKind::Tiltbash);
    editor.PasteLevel(shardles);
    EXPECT_EQ(Order() + std::to_string(set().Record(2).CenterLineCount), "0 25 @20");
    EXPECT_EQ(Rows(6, 7) + std::to_string(set().Layout(2).Cells[0]), "00000000/000000006");
    ExpectInStep();
    Paint(63, 1);
    const std::string tiltbash = editor.CopyLevel();
    New(GameKind::Shardles);
    DebuggerOff();
    editor.PasteLevel(tiltbash);
    EXPECT_EQ(Rows(7, 9), "00000001/00000000/00000000");
    for (int i = 2; i < 255; ++i) editor.AddLevel();
    const LevelSet full = set();
    prompts.ExpectMessage("You can't have more than 255 levels!").ExpectMessage("You can't have more than 255 levels!");
    editor.DuplicateLevel();
    editor.PasteLevel(tiltbash);
    EXPECT_TRUE(set() == full);
}

}  // namespace
}  // namespace shd::test
