// The levels: adding, removing, choosing, duplicating, moving, and the
// clipboard's levels. A level's record always goes with its layout.
#include <algorithm>

#include "editor/CellTools.h"
#include "editor/Editor.h"
#include "editor/StepRecorder.h"
#include "model/Numbers.h"

namespace shd {

namespace {
constexpr const char* kNoLevel = "The clipboard holds no level to paste.";
}  // namespace

void Editor::AppendLevel() {
    AddEmptyLevel(set_);
    ListLevels();
}

// The level list and its count, for the levels the set has now.
void Editor::ListLevels() {
    const auto count = static_cast<std::size_t>(set_.LevelCount());
    ui_.levelCountText = "Number of Levels: " + std::to_string(count);
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

void Editor::AddLevel() {
    StepRecorder step(*this, StepKind::AddLevel);
    if (RoomForALevel()) AppendLevel();
}

void Editor::RemoveLevel() {
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

void Editor::GoToLevel(int level) {
    if (set_.LevelCount() == 1 && prompts_.AskYesNo("You only have 1 Level. Should I add another?")) {
        StepRecorder step(*this, StepKind::AddLevel);
        AppendLevel();
    }
    if (level < 1 || level > set_.LevelCount() || level == set_.CurrentLevel) {
        ShowCurrentLevelInList();
        return;
    }
    CountBlocks();
    KeepBallBoxes();
    set_.CurrentLevel = level;
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

// `level` inserted after the current one and shown as the current one, as
// one step; without one, a copy of the current level with what its ball
// boxes hold. Its piece counts are recounted from its cells, as showing a
// level always does.
void Editor::InsertAfterCurrent(StepKind kind, std::optional<LevelClip> level) {
    StepRecorder step(*this, kind);
    if (!RoomForALevel()) return;
    KeepBallBoxes();
    if (!level) level = LevelClip{set_.Current(), set_.CurrentRecord()};
    const auto at = static_cast<std::ptrdiff_t>(set_.CurrentLevel);
    set_.Layouts.insert(set_.Layouts.begin() + at, std::move(level->layout));
    set_.Records.insert(set_.Records.begin() + at, level->record);
    ++set_.CurrentLevel;
    ListLevels();
    ShowCurrentLevelInList();
    ShowLevel();
    RunDebuggerIfOn();
}

void Editor::DuplicateLevel() {
    EndStroke();
    InsertAfterCurrent(StepKind::DuplicateLevel, std::nullopt);
}

void Editor::MoveLevel(int from, int to) {
    EndStroke();
    const int count = set_.LevelCount();
    if (from < 1 || from > count || to < 1 || to > count || from == to) return;
    StepRecorder step(*this, StepKind::MoveLevel);
    auto move = [&](auto& levels) {
        const auto begin = levels.begin();
        if (from < to) std::rotate(begin + (from - 1), begin + from, begin + to);
        else std::rotate(begin + (to - 1), begin + (from - 1), begin + from);
    };
    move(set_.Layouts);
    move(set_.Records);
    // The current level is the same level after the move: no switch happens.
    int& current = set_.CurrentLevel;
    if (current == from) current = to;
    else if (from < current && current <= to) --current;
    else if (to <= current && current < from) ++current;
    ShowCurrentLevelInList();
    RunDebuggerIfOn();
}

void Editor::MoveLevelUp() { MoveLevel(set_.CurrentLevel, set_.CurrentLevel - 1); }
void Editor::MoveLevelDown() { MoveLevel(set_.CurrentLevel, set_.CurrentLevel + 1); }

std::string Editor::CopyLevel() const { return LevelText(set_.Current(), set_.CurrentRecord()); }

void Editor::PasteLevel(const std::string& text) {
    EndStroke();
    std::optional<LevelClip> clip = ParseLevelText(text, set_.Kind);
    if (!clip) {
        ui_.status = kNoLevel;
        return;
    }
    InsertAfterCurrent(StepKind::PasteLevel, std::move(clip));
}

}  // namespace shd
