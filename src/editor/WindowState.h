// What the main window shows, apart from the set itself.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "editor/Layout.h"

namespace shd {

// A level's entry in the level list: "Level 3".
inline std::string LevelEntry(int level) { return "Level " + std::to_string(level); }

// Check marks of the Tricky menu entries.
struct MenuMarks {
    bool Spotted = false, CenterLine = false, ZigZag = false, Custom = false;
    bool CustomShardles = false, WrapAround = false, ArrowBreakable = false, MatchLocks = false, Debugger = false;
    bool Special = false;
    bool operator==(const MenuMarks&) const = default;
};

// What a press on the grid does: paint cells one by one, fill a dragged
// rectangle, fill a connected area, or select cells for the clipboard.
enum class Tool { Pencil, Rectangle, Fill, Select };

// A rectangle of grid cells: its top-left cell and its size in cells.
struct CellRange {
    int column = 0, row = 0, columns = 0, rows = 0;
    bool empty() const { return columns <= 0 || rows <= 0; }
    bool operator==(const CellRange&) const = default;
};

// The picture a grid cell shows: a palette code 0..15, or kUnknownPicture for a code a damaged file brought.
inline constexpr int kUnknownPicture = -1;

struct WindowState {
    int selectedBlock = 0;
    int focusedPalette = -1;  // the palette button that should have the focus, -1 none

    std::vector<std::string> levelEntries;  // "Level 1" ... "Level N"
    std::string levelText;                  // the level list's text
    std::string levelCountText = "Number of Levels: 255";
    std::string ballXText, ballYText;

    MenuMarks marks;
    bool shardlesControlsVisible = true;  // ball boxes, bonus and extra-life lists and their labels
    bool createMenuVisible = true;
    bool unusedMenuVisible = true;      // "&Unused Shardles" in the Tricky menu
    bool optionsMenuVisible = true;     // "&Shardles Options" in the Tricky menu

    GameKind gridKind = GameKind::Shardles;  // the kind the grid and palette were made for
    std::vector<int> shownPictures;          // per grid cell: the code whose picture it shows
    int zoom = 0;                            // the grid's multiple of its pictures; 0 follows the window
    std::array<std::string, 16> paletteFiles;
    int paletteGeneration = 0;               // grows each time the palette pictures are (re)loaded

    Tool tool = Tool::Pencil;
    CellRange selection;  // the selected cells, shown outlined; empty: none
    CellRange preview;    // the rectangle a Rectangle drag would fill, while it is dragged; empty otherwise

    std::string status;  // one line on how the last read or write ended, when it says nothing itself

    bool operator==(const WindowState&) const = default;
};

}  // namespace shd
