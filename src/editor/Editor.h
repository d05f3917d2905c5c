// The editor without a toolkit: the set being edited, what the window shows
// of it, and every operation the user can ask for, named by what the user
// does. The Qt window shows `ui()` and `set()` and calls these operations;
// every dialog goes through `Prompts`. The operations' bodies are kept by
// concept: the document (Editor.cpp, FileCommands.cpp), the levels
// (Levels.cpp), painting and tools (Painting.cpp, Tools.cpp), the level
// fields (LevelFields.cpp) and the checks and options (Options.cpp).
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "editor/CellTools.h"
#include "editor/History.h"
#include "editor/Keys.h"
#include "editor/Layout.h"
#include "editor/Prompts.h"
#include "editor/WindowState.h"
#include "formats/Formats.h"
#include "model/LevelSet.h"
#include "rules/CustomPiece.h"
#include "rules/LevelChecks.h"

namespace shd {

class CalculatorLink;
class RecoveryStore;

// What the start offers for each recovery copy, in this order.
inline const std::vector<std::string> kRecoveryChoices = {"Restore", "Discard", "Decide later"};

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

// The two ball boxes: how far right, and how far down, the ball starts.
enum class Axis { Across, Down };

// The grid cell under a point, or -1 where there is none.
using CellLocator = std::function<int(Point)>;

class Editor {
public:
    explicit Editor(Prompts& prompts);

    const LevelSet& set() const { return set_; }
    const WindowState& ui() const { return ui_; }
    const std::string& lastFolder() const { return lastFolder_; }

    // Start-up and shutdown. The settings file holds one line, the last folder;
    // the recent files' list, one path a line, is kept at `recentPath`.
    void Start(const std::string& iniPath, const std::string& programFolder, const std::string& recentPath = {});
    bool MayClose();  // true: the window may close
    void Close();

    // Recovery copies, kept in `store` from now on; set before Start, which
    // offers the copies of editors that did not end cleanly before anything else.
    void UseRecovery(RecoveryStore* store) { recovery_ = store; }
    // Writes the copy of a changed set, `now` seconds since the epoch, or
    // removes it once nothing is unsaved. The window calls it a few seconds
    // after the last change, without waiting for the disk, and before the
    // process ends by a signal, `untilWritten`.
    void KeepRecoveryCopy(std::int64_t now, bool untilWritten = false);
    std::size_t changeCount() const { return history_.changes(); }

    // The document: the My File the set was opened from or saved to, and
    // whether the set has changed since (the undo history's clean state).
    bool IsModified() const { return !history_.IsClean(); }
    std::string DocumentName() const;  // that file's name, or "Untitled"
    const std::vector<std::string>& recentFiles() const { return recent_; }
    bool CanExportAgain() const { return lastExport_.has_value(); }

    // A new set of one level for `kind`, after asking about a changed set.
    void NewSet(GameKind kind);

    // The Tricky menu: the set's options and the current level's unused
    // pieces, its special count, the custom pieces, and Reset All.
    void Toggle(shd::Toggle which);  // a menu choice, or Yes to a debugger question
    void AskSpecialCount();
    // Opening either picture switches custom shardles on, even when the dialog is cancelled.
    void EditPiece(PictureKind kind);
    void ResetAll();  // empties the current level's grid and its unused pieces

    // Palette and grid.
    void ChooseBlock(int code);
    void StepBlock(Key key);  // Left and Right step through the palette, wrapping
    void ClickCell(int index, MouseButton button);  // a click: press and release on one cell
    // Shows or hides the Shardles submenus; true when the Tricky menu should pop up.
    bool PressBackground(MouseButton button);

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

    // The levels.
    void AddLevel();     // after the last one
    void RemoveLevel();  // the current one or the last, as the user answers
    // Shows level `level` (1..N), first offering to add one to a set of one.
    void GoToLevel(int level);

    // The level fields. The title and the settings are the set's at every
    // edit; the title is cut to 20 characters when a key other than an
    // editing key is released in its box.
    void SetTitle(const Bytes& text);
    void CheckTitle(Key released);
    // The ball boxes hold what they show, however it got there (typing,
    // pasting, dropping); only a key release checks it and stores it.
    void TypeBallStart(Axis axis, const std::string& text);
    void SetBallStart(Axis axis, const std::string& text, Key released);
    void SetBonusClock(const Bytes& text);
    void SetExtraLifePoints(const Bytes& text);

    // Files. Every command that would replace or clear a changed set asks
    // first whether to save it, and goes on only when it may.
    void OpenLevelFile(FormatId format);  // MyFile, OldMyFile, List
    void SaveLevelFile(FormatId format);  // MyFile, List
    void OpenProgram();
    void OpenSource();
    void SaveProgram();
    void SaveSource();
    void Save();         // the My File again, or Save As when there is none
    void SaveAs();       // always asks for the My File's name
    void ExportAgain();  // the last export, to the same file and form, without a dialog
    void OpenPath(const std::string& path);  // a file from outside, of the form its extension names
    // Counts the blocks, asks for the name, makes the program file in memory
    // and sends it over the cable found, or the one chosen when there are several.
    void SendToCalculator(CalculatorLink& link);
    void ShowAbout();

    // Zoom. The grid follows the window at the largest multiple of its
    // pictures that fits (`fitZoom`, which the window measures) until a
    // zoom is chosen; fitting again follows the window again.
    void ZoomIn(int fitZoom);
    void ZoomOut(int fitZoom);
    void ZoomToFit();
    int ZoomOf(int fitZoom) const { return ui_.zoom > 0 ? ui_.zoom : fitZoom; }

    // Undo and redo: every change to the set is one step.
    bool CanUndo() const { return history_.CanUndo(); }
    bool CanRedo() const { return history_.CanRedo(); }
    void Undo();
    void Redo();

    // Editing tools and commands. ui().tool decides what PressCell, DragTo
    // and ReleaseButton do: Pencil paints as above; Rectangle anchors at the
    // cell pressed, shows ui().preview while dragged and fills it at the
    // release (left button: the chosen block, right: empty); Fill fills the
    // 4-connected area of the pressed cell's code at the press; Select (left
    // button only) sets ui().selection, and is no step. Every command that
    // changes cells or levels ends an open stroke first, is one undo step,
    // and is followed by the debugger once, as a click is. Clipboard texts
    // are plain text (CellTools.h), so two running editors can exchange them.
    void ChooseTool(Tool tool);
    void ClearSelection();
    std::string CopySelection() const;  // "" when nothing is selected
    std::string CutSelection();
    // At the selection's top-left cell, or the grid's when nothing is
    // selected; what falls past the right or bottom edge is dropped, and the
    // cells pasted become the selection.
    void PasteCells(const std::string& text);
    void FlipLeftRight();
    void FlipTopBottom();
    void ShiftCells(int columns, int rows);  // wraps around: nothing is lost
    // Level commands keep each level's record with its layout. The new or
    // moved level is shown; the level left keeps what its ball boxes hold, as
    // on a switch, but its blocks are not counted (every save counts them).
    void DuplicateLevel();  // after the current one, and becomes current
    void MoveLevel(int from, int to);  // level numbers 1..N; the current level's cells stay shown
    void MoveLevelUp();
    void MoveLevelDown();
    std::string CopyLevel() const;
    void PasteLevel(const std::string& text);  // after the current level, and becomes current

    // The routines the operations share.
    void ClearForNewSet();   // level 1, block 0, the set's fields and some marks back to a new set's
    void PrepareForGame();   // the window's controls, grid, palette and level list for the set's game
    void ShowLevel();
    void CountBlocks();
    void ShardlesDebug();

    // The live block count of the current level for the status bar.
    int LiveBlockCount() const;

private:
    friend class StepRecorder;

    void AppendLevel();
    void ListLevels();
    bool RoomForALevel();
    void PaintCell(int index, MouseButton button);
    void SetCell(int index, int code);  // one cell of the current level, its piece counts and picture in step
    void PutCells(const BlockGrid& cells);
    void PressWithTool(int index, Point at, MouseButton button);
    void StretchToolStroke();
    void ChangeCells(StepKind kind, const BlockGrid& cells);
    void KeepBallBoxes();
    void InsertAfterCurrent(StepKind kind, std::optional<LevelClip> level);
    void ShowCurrentLevelInList();
    void RunDebuggerIfOn();
    EditorState CaptureState() const;
    void ApplyState(const EditorState& state);

    // The file commands' shared steps.
    bool MayReplaceSet();  // asks to save a changed set; false: leave it
    void ClosingSteps();
    void Open(FormatId format, const std::string& path, bool confirm);
    bool CountAllLevelsOrShow();
    bool WriteSet(const Format& format, const std::string& path, const std::string& title);
    bool SaveMyFile(const std::string& path);
    void Saved(FormatId format, const std::string& path, const std::string& title);
    void Remember(const std::string& path);
    void AdoptSet(LevelSet&& set);
    void OfferRecoveryCopies();
    void DropRecoveryCopy();

    Prompts& prompts_;
    LevelSet set_;
    WindowState ui_;
    std::string lastFolder_;
    std::string iniPath_;
    std::string documentPath_;  // the My File, "" when the set has none
    struct Export {
        FormatId format;
        std::string path, title;
    };
    std::optional<Export> lastExport_;
    static constexpr std::size_t kRecentFiles = 8;
    std::vector<std::string> recent_;  // the last files opened or saved, newest first
    std::string recentPath_;
    std::string sendName_;  // the name the set was last sent as
    RecoveryStore* recovery_ = nullptr;

    History history_;
    int recording_ = 0;  // operations running; only the outermost records its step

    struct Stroke {
        MouseButton button;
        int lastCell;  // the cell the pointer was last over, -1 off the grid
        Point last;
        EditorState before;
        Tool tool = Tool::Pencil;
        int anchor = -1;  // the cell pressed, a corner of a rectangle or selection
    };
    std::optional<Stroke> stroke_;
};

}  // namespace shd
