// The document: start-up and shutdown, new sets, the routines every
// operation shares, undo and redo, and zoom.
#include "editor/Editor.h"

#include <algorithm>

#include "editor/RecentFiles.h"
#include "files/FileIo.h"
#include "model/Numbers.h"

namespace shd {

Editor::Editor(Prompts& prompts) : prompts_(prompts) {
    // Until Start there is already a set, so the window has one to show.
    set_ = shd::NewSet(GameKind::Shardles);
}

// ---- start-up and shutdown ----

void Editor::Start(const std::string& iniPath, const std::string& programFolder, const std::string& recentPath) {
    iniPath_ = iniPath;
    lastFolder_.clear();
    if (auto text = ReadWholeFile(iniPath)) {
        const auto end = text->find_first_of("\r\n");
        lastFolder_ = text->substr(0, end);
    }
    if (lastFolder_.empty()) lastFolder_ = programFolder;
    recentPath_ = recentPath;
    recent_.clear();
    if (auto list = recentPath.empty() ? std::nullopt : ReadWholeFile(recentPath))
        for (std::string& path : RecentFilesOf(*list, kRecentFiles))
            if (IsRegularFile(path)) recent_.push_back(std::move(path));
    NewSet(GameKind::Shardles);
    ui_.focusedPalette = 0;
    OfferRecoveryCopies();
}

bool Editor::MayClose() { return MayReplaceSet(); }

void Editor::Close() {
    DropRecoveryCopy();  // closing was the user's say on the changes
    // Failing to remember the folder or the list is not worth troubling the user with.
    // Only a regular file is a settings file: a FIFO put there would hold up closing.
    if (!iniPath_.empty()) WriteFileAtomic(iniPath_, lastFolder_ + "\r\n", nullptr, OtherTargets::Refuse);
    if (!recentPath_.empty()) WriteFileAtomic(recentPath_, RecentFilesText(recent_), nullptr, OtherTargets::Refuse);
}

// ---- new sets ----

void Editor::NewSet(GameKind kind) {
    if (!MayReplaceSet()) return;
    documentPath_.clear();
    lastExport_.reset();
    ClearForNewSet();
    set_.Kind = kind;
    MakeLevels(set_, 1);
    PrepareForGame();
    ui_.levelText = LevelEntry(1);
    ui_.focusedPalette = 0;
    ui_.status.clear();
    history_.Clear();
}

std::string Editor::DocumentName() const { return documentPath_.empty() ? "Untitled" : FileTitleOf(documentPath_); }

void Editor::ClearForNewSet() {
    set_.CurrentLevel = 1;
    ui_.selectedBlock = 0;
    ui_.levelEntries = {LevelEntry(1)};
    ui_.levelText = LevelEntry(1);
    ui_.marks.ArrowBreakable = false;
    ui_.marks.WrapAround = false;
    ui_.marks.CustomShardles = false;
    ResetSetFields(set_);
}

void Editor::PrepareForGame() {
    const GameKind kind = set_.Kind;
    const bool shardles = kind == GameKind::Shardles;
    ui_.shardlesControlsVisible = shardles;
    ui_.createMenuVisible = shardles;
    ui_.gridKind = kind;
    // The recreated cells copy cell 0, which shows the empty block.
    ui_.shownPictures.assign(static_cast<std::size_t>(CellCount(kind)), 0);
    if (shardles) {
        MenuMarks& m = ui_.marks;
        m.ArrowBreakable = m.ArrowBreakable || set_.ArrowBlocksBreakable;
        m.WrapAround = m.WrapAround || set_.UseWrapAround;
        m.CustomShardles = m.CustomShardles || set_.UseCustomShardles;
        m.Debugger = m.Debugger || set_.UseShardlesDebugger;
        m.MatchLocks = m.MatchLocks || set_.MatchLocksToBlocks;
    }
    for (int code = 0; code < 16; ++code) ui_.paletteFiles[static_cast<std::size_t>(code)] = PictureFile(kind, code);
    ++ui_.paletteGeneration;
    ListLevels();
    ui_.levelText = LevelEntry(1);
    // A selection belongs to the grid it was made on.
    ui_.selection = {};
    ui_.preview = {};
}

// ---- shared routines ----

void Editor::ShowLevel() {
    RecountCurrentLevel(set_);
    const LevelLayout& layout = set_.Current();
    ui_.shownPictures.resize(layout.Cells.size());
    for (std::size_t i = 0; i < layout.Cells.size(); ++i)
        ui_.shownPictures[i] = layout.Cells[i] <= 15 ? layout.Cells[i] : kUnknownPicture;
    ui_.ballXText = DecimalText(layout.BallX);
    ui_.ballYText = DecimalText(layout.BallY);
}

void Editor::CountBlocks() {
    const BlockCounts counts = ComputeBlockCounts(set_, set_.CurrentLevel);
    LevelLayout& layout = set_.Current();
    layout.BlockCount = counts.blockCount;
    layout.LastBlockCount = counts.lastBlockCount;
    if (counts.missingLastBlocks) prompts_.Message(NoLastBlocksMessage(set_.CurrentLevel));
}

int Editor::LiveBlockCount() const { return ComputeBlockCounts(set_, set_.CurrentLevel).blockCount; }

// ---- undo steps ----

EditorState Editor::CaptureState() const {
    return {set_, ui_.levelEntries, ui_.levelText, ui_.levelCountText, ui_.ballXText,
            ui_.ballYText, ui_.shownPictures, ui_.marks};
}

void Editor::ApplyState(const EditorState& state) {
    set_ = state.set;
    ui_.levelEntries = state.levelEntries;
    ui_.levelText = state.levelText;
    ui_.levelCountText = state.levelCountText;
    ui_.ballXText = state.ballXText;
    ui_.ballYText = state.ballYText;
    ui_.shownPictures = state.shownPictures;
    ui_.marks = state.marks;
}

void Editor::Undo() {
    EndStroke();
    if (const EditorState* state = history_.Undo()) ApplyState(*state);
}

void Editor::Redo() {
    EndStroke();
    if (const EditorState* state = history_.Redo()) ApplyState(*state);
}

// ---- zoom ----

void Editor::ZoomIn(int fitZoom) { ui_.zoom = std::min(ZoomOf(fitZoom) + 1, kMostZoom); }
void Editor::ZoomOut(int fitZoom) { ui_.zoom = std::max(ZoomOf(fitZoom) - 1, 1); }
void Editor::ZoomToFit() { ui_.zoom = 0; }

}  // namespace shd
