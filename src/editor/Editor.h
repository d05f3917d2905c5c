// The main window's behaviour without a toolkit: its state and every handler.
// The Qt window shows `ui()` and `set()` and forwards events here; every
// dialog goes through `Prompts`.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "editor/History.h"
#include "editor/Layout.h"
#include "editor/Prompts.h"
#include "editor/WindowState.h"
#include "formats/Formats.h"
#include "model/LevelSet.h"
#include "rules/CustomPiece.h"
#include "rules/LevelChecks.h"

namespace shd {

class CalculatorLink;

// The program's title, shown on every message box and the input box.
inline constexpr const char* kProgramTitle = "Shardles/Tiltbash Level Editor";
inline constexpr const char* kWindowCaption = "Rovakmoor's Shardles/Tiltbash Level Editor v3.0";
inline constexpr const char* kSendNamePrompt = "Name of the program on the calculator (1 to 8 letters and digits):";
inline constexpr const char* kCablePrompt = "Send over which link cable?";

// The About box's text: caption, version and what the program is.
std::string AboutText();

// Mouse buttons as the grid and the window background report them; a set
// of buttons held down is their bits or'ed together.
enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

// Virtual-key codes the handlers look at.
namespace keys {
inline constexpr int Backspace = 8, End = 35, Home = 36, Left = 37, Right = 39, Delete = 46;
bool IsEditingKey(int keyCode);  // the six keys that leave a text box unchecked
}  // namespace keys

// The grid cell under a point, or -1 where there is none.
using CellLocator = std::function<int(Point)>;

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
    void Toggle(shd::Toggle which);  // a menu choice, or Yes to a debugger question
    void mnuSpecial_Click();
    void mnuCreateNormShd_Click();
    void mnuCreateChangeShd_Click();

    // Palette and grid.
    void optBlocks_Click(int index);
    void optBlocks_KeyDown(int keyCode);
    void pctBox_MouseUp(int index, MouseButton button);  // a click: press and release on one cell
    // Shows or hides the Shardles submenus; true when the Tricky menu should pop up.
    bool Form_MouseDown(MouseButton button);

    // Drag painting. A press on a cell paints it and opens a stroke; each cell
    // the pointer then enters is painted the same way, those it crosses
    // between two reported points included; the release of the pressing
    // button runs the debugger once, and the stroke is one undo step.
    // `held` are the buttons down, as MouseButton bits.
    void PressCell(int index, Point at, MouseButton button, int held);
    void DragTo(Point at, int held, const CellLocator& cellAt);
    void ReleaseButton(MouseButton button);
    // Any other event ends an open stroke first, as its release would.
    void EndStroke();

    // Level list and settings.
    void cmdAddLev_Click();
    void cmdLoseLev_Click();
    void cmbLevels_Click(int entryIndex);
    void txtTitle_Changed(const Bytes& text);  // every edit of the title box
    void txtTitle_KeyUp(int keyCode);          // cuts the title to 20 characters
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
    // Counts the blocks, asks for the name, makes the program file in memory
    // and sends it over the cable found, or the one chosen when there are several.
    void mnuSendCalc_Click(CalculatorLink& link);
    // A file named on the command line, read as the form its extension names.
    void OpenGivenFile(const std::string& path);
    void mnuAbout_Click();

    // Undo and redo: every change to the set is one step.
    bool CanUndo() const { return history_.CanUndo(); }
    bool CanRedo() const { return history_.CanRedo(); }
    void Undo();
    void Redo();

    // The routines the handlers share.
    void ResetAll();
    void GetFormReady();
    void ShowLevel();
    void CountBlocks();
    void ShardlesDebug();

    // The live block count of the current level for the status bar.
    int LiveBlockCount() const;

private:
    friend class StepRecorder;

    void NewSet(GameKind kind);
    void EditPicture(PictureKind kind);
    void SetBall(bool across, int keyCode, const std::string& text);
    void AddLevel();
    void PaintCell(int index, MouseButton button);
    void ShowCurrentLevelInList();
    void RunDebuggerIfOn();
    EditorState CaptureState() const;
    void ApplyState(const EditorState& state);

    // The file commands' shared steps.
    void ClosingSteps();
    void ReadFromDialog(FormatId format, bool confirm);
    bool CountAllLevelsOrShow();
    bool WriteSet(const Format& format, const std::string& path, const std::string& title);
    void AdoptSet(LevelSet&& set);

    Prompts& prompts_;
    int screenWidth_;
    int screenHeight_;
    LevelSet set_;
    WindowState ui_;
    std::string lastFolder_;
    std::string iniPath_;
    std::string sendName_;  // the name the set was last sent as

    History history_;
    int recording_ = 0;  // handlers running; only the outermost records its step

    struct Stroke {
        MouseButton button;
        int lastCell;  // the cell the pointer was last over, -1 off the grid
        Point last;
        EditorState before;
    };
    std::optional<Stroke> stroke_;
};

}  // namespace shd
