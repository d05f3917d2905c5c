#include "editor/Editor.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "editor/CellTools.h"
#include "editor/RecentFiles.h"
#include "editor/StepRecorder.h"
#include "files/FileIo.h"
#include "model/Numbers.h"
#include "rules/CustomPiece.h"

namespace shd {

namespace keys {
bool IsEditingKey(int keyCode) {
    return keyCode == Backspace || keyCode == End || keyCode == Home || keyCode == Left || keyCode == Right ||
           keyCode == Delete;
}
}  // namespace keys

namespace {
constexpr int kMaxTitleLength = 20;

bool& MarkOf(MenuMarks& marks, Toggle which) {
    switch (which) {
    case Toggle::Spotted: return marks.Spotted;
    case Toggle::CenterLine: return marks.CenterLine;
    case Toggle::ZigZag: return marks.ZigZag;
    case Toggle::Custom: return marks.Custom;
    case Toggle::CustomShardles: return marks.CustomShardles;
    case Toggle::WrapAround: return marks.WrapAround;
    case Toggle::ArrowBreakable: return marks.ArrowBreakable;
    case Toggle::MatchLocks: return marks.MatchLocks;
    case Toggle::Debugger: return marks.Debugger;
    }
    return marks.Special;
}

bool& FlagOf(LevelSet& set, Toggle which) {
    LevelRecord& record = set.CurrentRecord();
    switch (which) {
    case Toggle::Spotted: return record.SpottedUnused;
    case Toggle::CenterLine: return record.CenterLineUnused;
    case Toggle::ZigZag: return record.ZigZagUnused;
    case Toggle::Custom: return record.CustomUnused;
    case Toggle::CustomShardles: return set.UseCustomShardles;
    case Toggle::WrapAround: return set.UseWrapAround;
    case Toggle::ArrowBreakable: return set.ArrowBlocksBreakable;
    case Toggle::MatchLocks: return set.MatchLocksToBlocks;
    case Toggle::Debugger: return set.UseShardlesDebugger;
    }
    return set.UseShardlesDebugger;
}

bool IsPerLevel(Toggle which) {
    return which == Toggle::Spotted || which == Toggle::CenterLine || which == Toggle::ZigZag ||
           which == Toggle::Custom;
}

}  // namespace

Editor::Editor(Prompts& prompts) : prompts_(prompts) {
    // Before Form_Load the window already has its design-time grid cell 0.
    set_ = shd::NewSet(GameKind::Shardles);
}

// ---- start-up and shutdown ----

void Editor::FormLoad(const std::string& iniPath, const std::string& programFolder, const std::string& recentPath) {
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
    mnuNewShd_Click();
    ui_.focusedPalette = 0;
}

bool Editor::FormQueryUnload() { return MayReplaceSet(); }

void Editor::FormUnload() {
    // Failing to remember the folder or the list is not worth troubling the user with.
    // Only a regular file is a settings file: a FIFO put there would hold up closing.
    if (!iniPath_.empty()) WriteFileAtomic(iniPath_, lastFolder_ + "\r\n", nullptr, OtherTargets::Refuse);
    if (!recentPath_.empty()) WriteFileAtomic(recentPath_, RecentFilesText(recent_), nullptr, OtherTargets::Refuse);
}

// ---- new sets ----

void Editor::mnuNewShd_Click() { NewSet(GameKind::Shardles); }
void Editor::mnuNewTil_Click() { NewSet(GameKind::Tiltbash); }

void Editor::NewSet(GameKind kind) {
    if (!MayReplaceSet()) return;
    documentPath_.clear();
    lastExport_.reset();
    ResetAll();
    set_.Kind = kind;
    MakeLevels(set_, 1);
    GetFormReady();
    ui_.levelText = LevelEntry(1);
    ui_.focusedPalette = 0;
    ui_.status.clear();
    history_.Clear();
}

std::string Editor::DocumentName() const { return documentPath_.empty() ? "Untitled" : FileTitleOf(documentPath_); }

void Editor::ResetAll() {
    set_.CurrentLevel = 1;
    ui_.SelectedBlock = 0;
    ui_.levelEntries = {LevelEntry(1)};
    ui_.levelText = LevelEntry(1);
    ui_.marks.ArrowBreakable = false;
    ui_.marks.WrapAround = false;
    ui_.marks.CustomShardles = false;
    ResetSetFields(set_);
}

void Editor::GetFormReady() {
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

void Editor::mnuResetAll_Click() {
    if (!MayReplaceSet()) return;
    StepRecorder step(*this, StepKind::ResetLevel);
    auto& cells = set_.Current().Cells;
    std::fill(cells.begin(), cells.end(), 0);
    std::fill(ui_.shownPictures.begin(), ui_.shownPictures.end(), 0);
    LevelRecord& r = set_.CurrentRecord();
    r.CenterLineUnused = false, r.CenterLineCount = 0, r.CenterLineChangerCount = 0;
    r.CustomUnused = false, r.CustomCount = 0, r.CustomChangerCount = 0;
    r.SpottedUnused = false, r.SpottedCount = 0, r.SpottedChangerCount = 0;
    r.ZigZagUnused = false, r.ZigZagCount = 0, r.ZigZagChangerCount = 0;
    ui_.marks.CenterLine = ui_.marks.Custom = ui_.marks.Spotted = ui_.marks.ZigZag = false;
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

void Editor::ShardlesDebug() {
    for (const DebugCheck& check : DebugChecks()) {
        if (check.holds(set_, set_.CurrentLevel) && prompts_.AskYesNo(check.question)) Toggle(check.onYes);
    }
}

void Editor::RunDebuggerIfOn() {
    if (set_.IsShardles() && set_.UseShardlesDebugger) ShardlesDebug();
}

int Editor::LiveBlockCount() const { return ComputeBlockCounts(set_, set_.CurrentLevel).blockCount; }

// ---- undo steps ----

EditorState Editor::CaptureState() const {
    return {set_, ui_.levelEntries, ui_.levelText, ui_.levelCountLabel, ui_.ballXText,
            ui_.ballYText, ui_.shownPictures, ui_.marks};
}

void Editor::ApplyState(const EditorState& state) {
    set_ = state.set;
    ui_.levelEntries = state.levelEntries;
    ui_.levelText = state.levelText;
    ui_.levelCountLabel = state.levelCountLabel;
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

// ---- the Tricky menu ----

void Editor::Toggle(shd::Toggle which) {
    StepRecorder step(*this, StepKind::Toggle);
    bool& mark = MarkOf(ui_.marks, which);
    bool& flag = FlagOf(set_, which);
    // Per-level kinds follow the check mark, set-wide options their flag.
    const bool on = IsPerLevel(which) ? !mark : !flag;
    mark = on;
    flag = on;
}

void Editor::mnuSpecial_Click() {
    StepRecorder step(*this, StepKind::SpecialCount);
    LevelRecord& record = set_.CurrentRecord();
    const std::string answer = prompts_.InputBox(
        "How many other blocks are not used? Don't count blocks affected by the Flags.",
        DecimalText(record.SpecialUnusedCount));
    const auto value = ParseTypedNumber(answer);
    if (value && *value > 0 && *value <= 80) {
        record.SpecialUnusedCount = static_cast<std::int16_t>(RoundHalfEven(*value));
        ui_.marks.Special = true;
    } else {
        record.SpecialUnusedCount = 0;
        ui_.marks.Special = false;
    }
}

void Editor::mnuCreateNormShd_Click() { EditPicture(PictureKind::Normal); }
void Editor::mnuCreateChangeShd_Click() { EditPicture(PictureKind::Change); }

// Opening either picture switches custom shardles on, even when the dialog is cancelled.
void Editor::EditPicture(PictureKind kind) {
    StepRecorder step(*this, StepKind::Picture);
    set_.UseCustomShardles = true;
    ui_.marks.CustomShardles = true;
    CustomPieceEdit edit(set_, kind);
    if (prompts_.EditPicture(edit)) edit.StoreInto(set_);
}

// ---- palette and grid ----

void Editor::optBlocks_Click(int index) {
    if (index >= 0 && index <= 15) ui_.SelectedBlock = index;
}

void Editor::optBlocks_KeyDown(int keyCode) {
    int& block = ui_.SelectedBlock;
    if (keyCode == keys::Right) {
        if (block == 15) block = 0;
        if (block < 15) ++block;
    } else if (keyCode == keys::Left) {
        if (block == 0) block = 15;
        if (block > 0) --block;
    }
    ui_.focusedPalette = block;
}

void Editor::PaintCell(int index, MouseButton button) {
    auto& cells = set_.Current().Cells;
    if (index < 0 || static_cast<std::size_t>(index) >= cells.size()) return;
    if (button != MouseButton::Left && button != MouseButton::Right) return;
    SetCell(index, button == MouseButton::Left ? ui_.SelectedBlock : 0);
}

void Editor::SetCell(int index, int code) {
    std::uint8_t& cell = set_.Current().Cells[static_cast<std::size_t>(index)];
    LevelRecord& record = set_.CurrentRecord();
    if (auto field = CountFieldFor(cell)) --(record.*field);
    if (auto field = CountFieldFor(code)) ++(record.*field);
    ui_.shownPictures[static_cast<std::size_t>(index)] = code <= 15 ? code : kUnknownPicture;
    cell = static_cast<std::uint8_t>(code);
}

void Editor::pctBox_MouseUp(int index, MouseButton button) {
    PressCell(index, {}, button, static_cast<int>(button));
    ReleaseButton(button);
}

void Editor::PressCell(int index, Point at, MouseButton button, int held) {
    // A stroke whose release never came (the pointer was taken away) ends now;
    // another button during a stroke does nothing.
    if (stroke_ && !(held & static_cast<int>(stroke_->button))) EndStroke();
    if (stroke_) return;
    if (ui_.tool != Tool::Pencil) return PressWithTool(index, at, button);
    stroke_ = Stroke{button, index, at, CaptureState()};
    PaintCell(index, button);  // the middle button paints nothing, but its release still runs the debugger
}

void Editor::DragTo(Point at, int held, const CellLocator& cellAt) {
    if (!stroke_ || !(held & static_cast<int>(stroke_->button))) return;
    // Walk the way from the last point one unit at a time, so a quick drag
    // reported in big jumps still paints every cell it crossed.
    const Point from = stroke_->last;
    const int steps = std::max(std::abs(at.x - from.x), std::abs(at.y - from.y));
    for (int s = 1; s <= steps; ++s) {
        const double t = static_cast<double>(s) / steps;
        const Point p{from.x + static_cast<int>(std::lround((at.x - from.x) * t)),
                      from.y + static_cast<int>(std::lround((at.y - from.y) * t))};
        const int cell = cellAt(p);
        if (stroke_->tool == Tool::Pencil) {
            if (cell >= 0 && cell != stroke_->lastCell) PaintCell(cell, stroke_->button);
            stroke_->lastCell = cell;
        } else if (cell >= 0) {
            stroke_->lastCell = cell;  // off the grid, a rectangle keeps the last cell it was on
        }
    }
    stroke_->last = at;
    if (stroke_->tool != Tool::Pencil) StretchToolStroke();
}

void Editor::ReleaseButton(MouseButton button) {
    if (stroke_ && stroke_->button == button) EndStroke();
}

void Editor::EndStroke() {
    if (!stroke_) return;
    Stroke stroke = std::move(*stroke_);
    stroke_.reset();
    if (stroke.tool == Tool::Select) return;  // selecting changes nothing: no step, no debugger
    // The rectangle's cells and the debugger's answers join the stroke's step.
    ++recording_;
    if (stroke.tool == Tool::Rectangle) {
        const int code = stroke.button == MouseButton::Left ? ui_.SelectedBlock : 0;
        // Clipped, as the grid may have been replaced under an unfinished stroke.
        if (stroke.button != MouseButton::Middle)
            for (int cell : CellsIn(ClipRange(ui_.preview, RowsOf(set_.Current().Cells)))) SetCell(cell, code);
        ui_.preview = {};
    }
    RunDebuggerIfOn();
    --recording_;
    EditorState after = CaptureState();
    const StepKind kind = stroke.tool == Tool::Fill        ? StepKind::Fill
                          : stroke.tool == Tool::Rectangle ? StepKind::Rectangle
                                                           : StepKind::Paint;
    if (!(after == stroke.before)) history_.Push({kind, std::move(stroke.before), std::move(after)});
}

bool Editor::Form_MouseDown(MouseButton button) {
    const bool shardles = set_.IsShardles();
    ui_.unusedMenuVisible = shardles;
    ui_.optionsMenuVisible = shardles;
    return button == MouseButton::Right;
}

// ---- level list and settings ----

void Editor::AddLevel() {
    AddEmptyLevel(set_);
    ListLevels();
}

// The level list and its count, for the levels the set has now.
void Editor::ListLevels() {
    const auto count = static_cast<std::size_t>(set_.LevelCount());
    ui_.levelCountLabel = "Number of Levels: " + std::to_string(count);
    std::vector<std::string>& entries = ui_.levelEntries;
    if (entries.size() > count) entries.resize(count);
    while (entries.size() < count) entries.push_back(LevelEntry(static_cast<int>(entries.size()) + 1));
}

// False, once said, when the set holds as many levels as it can.
bool Editor::RoomForALevel() {
    if (set_.LevelCount() < kMaxLevels) return true;
    prompts_.Message("You can't have more than 255 levels!");
    return false;
}

void Editor::cmdAddLev_Click() {
    StepRecorder step(*this, StepKind::AddLevel);
    if (RoomForALevel()) AddLevel();
}

void Editor::cmdLoseLev_Click() {
    StepRecorder step(*this, StepKind::RemoveLevel);
    if (set_.LevelCount() == 1) {
        prompts_.Message("There has to be at least ONE Level!!!!!");
        return;
    }
    int removed = set_.LevelCount();
    if (set_.CurrentLevel != set_.LevelCount()) {
        const Answer answer = prompts_.AskYesNoCancel("Is this the level to trash? (No trashes the last Level)");
        if (answer == Answer::Cancel) return;
        if (answer == Answer::Yes) removed = set_.CurrentLevel;
    }
    // A level's record goes with its layout, so later levels keep their own flags.
    set_.Layouts.erase(set_.Layouts.begin() + (removed - 1));
    set_.Records.erase(set_.Records.begin() + (removed - 1));
    if (set_.CurrentLevel > set_.LevelCount()) set_.CurrentLevel = set_.LevelCount();
    ListLevels();
    ShowCurrentLevelInList();
    ShowLevel();
    RunDebuggerIfOn();
}

void Editor::ShowCurrentLevelInList() { ui_.levelText = LevelEntry(set_.CurrentLevel); }

void Editor::cmbLevels_Click(int entryIndex) {
    if (set_.LevelCount() == 1 && prompts_.AskYesNo("You only have 1 Level. Should I add another?")) {
        StepRecorder step(*this, StepKind::AddLevel);
        AddLevel();
    }
    if (entryIndex < 0 || entryIndex >= set_.LevelCount() || entryIndex + 1 == set_.CurrentLevel) {
        ShowCurrentLevelInList();
        return;
    }
    CountBlocks();
    KeepBallBoxes();
    set_.CurrentLevel = entryIndex + 1;
    ShowLevel();
    RunDebuggerIfOn();
    ShowCurrentLevelInList();
}

// The level left takes what its ball boxes show: a text left unchecked by
// editing keys only counts when it is a valid start.
void Editor::KeepBallBoxes() {
    auto ball = [](const std::string& text, int most) -> std::int16_t {
        const auto value = ParseTypedNumber(text);
        if (!value || *value > most || RoundHalfEven(*value) < 0) return 0;
        return static_cast<std::int16_t>(RoundHalfEven(*value));
    };
    LevelLayout& left = set_.Current();
    left.BallX = ball(ui_.ballXText, 94);
    left.BallY = ball(ui_.ballYText, 62);
}

void Editor::txtTitle_Changed(const Bytes& text) {
    StepRecorder step(*this, StepKind::Title);
    set_.Title = text;
}

void Editor::txtTitle_KeyUp(int keyCode) {
    StepRecorder step(*this, StepKind::Title);
    if (keys::IsEditingKey(keyCode)) return;
    if (set_.Title.size() > kMaxTitleLength) set_.Title.resize(kMaxTitleLength);
}

void Editor::txtBall_Changed(bool across, const std::string& text) { (across ? ui_.ballXText : ui_.ballYText) = text; }

void Editor::SetBall(bool across, int keyCode, const std::string& text) {
    std::string& shown = across ? ui_.ballXText : ui_.ballYText;
    shown = text;
    if (keys::IsEditingKey(keyCode)) return;
    const int most = across ? 94 : 62;
    const auto value = ParseTypedNumber(text);
    double stored = 0;
    if (!value || *value > most || RoundHalfEven(*value) < 0) shown = "0";
    else stored = RoundHalfEven(*value);
    (across ? set_.Current().BallX : set_.Current().BallY) = static_cast<std::int16_t>(stored);
}

void Editor::txtBallx_KeyUp(int keyCode, const std::string& text) {
    StepRecorder step(*this, StepKind::BallX);
    SetBall(true, keyCode, text);
}

void Editor::txtBally_KeyUp(int keyCode, const std::string& text) {
    StepRecorder step(*this, StepKind::BallY);
    SetBall(false, keyCode, text);
}

void Editor::cmbBonus_Changed(const Bytes& text) {
    StepRecorder step(*this, StepKind::BonusClock);
    set_.BonusClock = text;
}

void Editor::cmbExLife_Changed(const Bytes& text) {
    StepRecorder step(*this, StepKind::ExtraLifePoints);
    set_.ExtraLifePoints = text;
}

}  // namespace shd
