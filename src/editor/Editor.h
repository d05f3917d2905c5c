// The main window's behaviour without a toolkit: its state and every handler.
// The Qt window shows `ui()` and `set()` and forwards events here; every
// dialog goes through `Prompts`.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "editor/Layout.h"
#include "editor/Prompts.h"
#include "formats/Formats.h"
#include "model/LevelSet.h"
#include "rules/LevelChecks.h"

namespace shd {

// The program's title, shown on every message box and the input box.
inline constexpr const char* kProgramTitle = "Shardles/Tiltbash Level Editor";
inline constexpr const char* kWindowCaption = "Rovakmoor's Shardles/Tiltbash Level Editor v3.0";

// Mouse buttons as the grid and the window background report them.
enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

// Virtual-key codes the handlers look at.
namespace keys {
inline constexpr int Backspace = 8, End = 35, Home = 36, Left = 37, Right = 39, Delete = 46;
bool IsEditingKey(int keyCode);  // the six keys that leave a text box unchecked
}  // namespace keys

// Check marks of the Tricky menu entries.
struct MenuMarks {
    bool Spotted = false, CenterLine = false, ZigZag = false, Custom = false;
    bool CustomShardles = false, WrapAround = false, ArrowBreakable = false, MatchLocks = false, Debugger = false;
    bool Special = false;
    bool operator==(const MenuMarks&) const = default;
};

// The picture a grid cell shows: a palette code 0..15, or kUnknownPicture for a code a damaged file brought.
inline constexpr int kUnknownPicture = -1;

struct WindowState {
    int SelectedBlock = 0;
    int focusedPalette = -1;  // the palette button that should have the focus, -1 none

    std::vector<std::string> levelEntries;  // "Level 1" ... "Level N"
    std::string levelText;                  // the level list's text
    std::string levelCountLabel = "Number of Levels: 255";
    std::string ballXText, ballYText;

    MenuMarks marks;
    bool shardlesControlsVisible = true;  // ball boxes, bonus and extra-life lists and their labels
    bool createMenuVisible = true;
    bool unusedMenuVisible = true;      // "&Unused Shardles" in the Tricky menu
    bool optionsMenuVisible = true;     // "&Shardles Options" in the Tricky menu

    GameKind gridKind = GameKind::Shardles;  // the kind the grid and palette were laid out for
    std::vector<TwipRect> gridCells;
    std::vector<int> shownPictures;          // per grid cell: the code whose picture it shows
    std::array<TwipRect, 16> palette{};
    std::array<std::string, 16> paletteFiles;
    int paletteGeneration = 0;               // grows each time the palette pictures are (re)loaded

    std::string status;  // one line on how the last read or write ended, when it says nothing itself

    bool operator==(const WindowState&) const = default;
};

class Editor {
public:
    // `screenWidth`/`screenHeight` in twips, for centring the grid.
    Editor(Prompts& prompts, int screenWidth, int screenHeight);

    const LevelSet& set() const { return set_; }
    const WindowState& ui() const { return ui_; }
    const std::string& lastFolder() const { return lastFolder_; }

    // Start-up and shutdown. The settings file holds one line, the last folder.
    void FormLoad(const std::string& iniPath, const std::string& programFolder);
    bool FormQueryUnload();  // true: the window may close
    void FormUnload();

    // New sets and "&Reset All".
    void mnuNewShd_Click();
    void mnuNewTil_Click();
    void mnuResetAll_Click();

    // The Tricky menu.
    void Toggle(shd::Toggle which);
    void mnuSpecial_Click();
    void mnuCreateNormShd_Click();
    void mnuCreateChangeShd_Click();

    // Palette and grid.
    void optBlocks_Click(int index);
    void optBlocks_KeyDown(int keyCode);
    void pctBox_MouseUp(int index, MouseButton button);
    // A drag paints cell by cell and ends in one release: the same painting
    // without the debugger, then EndStroke runs it once.
    void PaintCell(int index, MouseButton button);
    void EndStroke();
    // Shows or hides the Shardles submenus; true when the Tricky menu should pop up.
    bool Form_MouseDown(MouseButton button);

    // Level list and settings.
    void cmdAddLev_Click();
    void cmdLoseLev_Click();
    void cmbLevels_Click(int entryIndex);
    void txtTitle_Changed(const Bytes& text);  // every edit of the title box
    void txtTitle_KeyUp(int keyCode);  // cuts the title to 20 characters
    void txtBallx_KeyUp(int keyCode, const std::string& text);
    void txtBally_KeyUp(int keyCode, const std::string& text);
    void cmbBonus_Changed(const Bytes& text);
    void cmbExLife_Changed(const Bytes& text);

    // Files.
    void OpenLevelFile(FormatId format);  // MyFile, OldMyFile, List
    void SaveLevelFile(FormatId format);  // MyFile, List
    void mnuOpenCode_Click();
    void mnuOpenSource_Click();
    void mnuSaveCode_Click();
    void mnuSaveSource_Click();

    // The routines the handlers share.
    void ResetAll();
    void GetFormReady();
    void ShowLevel();
    void CountBlocks();
    void ShardlesDebug();

    // The live block count of the current level for the status bar.
    int LiveBlockCount() const;

    // The whole editable state, for undo and redo.
    struct Snapshot {
        LevelSet set;
        WindowState ui;
        bool operator==(const Snapshot&) const = default;
    };
    Snapshot TakeSnapshot() const { return {set_, ui_}; }
    void Restore(const Snapshot& snapshot);

private:
    void NewSet(GameKind kind);
    void SetBall(bool across, int keyCode, const std::string& text);
    void AddLevel();
    void ClosingSteps();
    void ReadFromDialog(FormatId format, bool confirm);
    void RunDebuggerIfOn();
    void AdoptSet(LevelSet&& set);
    bool CountAllLevels();  // false: a Shardles level has no last blocks (it is then shown)
    void ShowCurrentLevelInList();
    void RememberFolder(const std::string& path);
    void ReportRead(const std::string& path, const ReadResult& result);
    static std::string LevelEntry(int level);

    Prompts& prompts_;
    int screenWidth_;
    int screenHeight_;
    LevelSet set_;
    WindowState ui_;
    std::string lastFolder_;
    std::string iniPath_;
};

}  // namespace shd
