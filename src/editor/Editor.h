// The main window's behaviour without a toolkit: its state and every handler.
// The Qt window shows `ui()` and `set()` and forwards events here; every
// dialog goes through `Prompts`.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "editor/History.h"
#include "editor/Layout.h"
#include "editor/WindowState.h"
#include "editor/Prompts.h"
#include "formats/Formats.h"
#include "model/LevelSet.h"
#include "rules/CustomPiece.h"
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

    // Undo and redo: every recorded action goes to the sink as one step.
    void SetStepSink(StepSink* sink) { sink_ = sink; }
    EditorState CaptureState() const;
    void ApplyState(const EditorState& state);
    // A drag's first cell opens its step; EndStroke closes it.
    void BeginStroke();

private:
    void NewSet(GameKind kind);
    void EditPicture(PictureKind kind);
    void SetBall(bool across, int keyCode, const std::string& text);
    void AddLevel();
    void ClosingSteps();
    void ReadFromDialog(FormatId format, bool confirm);
    bool WriteSet(const Format& format, const std::string& path, const std::string& title);
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

    // Recording of undo steps: only the outermost action of a handler records.
    friend class StepRecorder;
    StepSink* sink_ = nullptr;
    int recording_ = 0;
    bool strokeOpen_ = false;
    EditorState strokeBefore_;
};

}  // namespace shd
