// The File menu's commands: every open and save, and the steps they share.
#include "editor/Editor.h"
#include "files/FileIo.h"

namespace shd {

namespace {
// The extension rule of the program file, applied to the file name only so a
// dotted folder never swallows it.
std::string WithProgramExtension(const std::string& path) {
    if (path.size() >= 4 && path.compare(path.size() - 4, 4, ".83p") == 0) return path;
    const std::string name = FileTitleOf(path);
    if (name.find('.') != std::string::npos && name.size() >= 4) return path.substr(0, path.size() - 4) + ".83p";
    return path + ".83p";
}

// How a read that did not complete ended, for the status bar.
std::string StatusOf(const std::string& path, const ReadOutcome& outcome) {
    if (outcome.where.empty()) return FileTitleOf(path) + ": " + outcome.why;
    return "Stopped reading " + FileTitleOf(path) + " at " + outcome.where + ": " + outcome.why;
}
}  // namespace

// Every file command ends here, also after a cancel or a failure.
void Editor::ClosingSteps() {
    set_.CurrentLevel = 1;
    ui_.levelText = LevelEntry(1);
    ShowLevel();
    RunDebuggerIfOn();
}

// A read replaces the set wholesale: the window goes through ResetAll and
// GetFormReady for the new kind and level count, keeping marks as they do.
void Editor::AdoptSet(LevelSet&& set) {
    ResetAll();
    set_ = std::move(set);
    set_.CurrentLevel = 1;
    GetFormReady();
}

void Editor::ReadFromDialog(FormatId id, bool confirm) {
    const Format& format = GetFormat(id);
    const FileChoice choice = prompts_.OpenFileDialog(format.openFilter, lastFolder_);
    if (choice.path.empty()) return;
    ReadResult result = OpenFile(format, choice.path);
    ui_.status = result.complete() || !result.outcome.message.empty() ? "" : StatusOf(choice.path, result.outcome);
    if (result.refused()) {
        if (!result.outcome.message.empty()) prompts_.Message(result.outcome.message);
        return;
    }
    const bool complete = result.complete();
    AdoptSet(std::move(result.set));
    if (!complete) return;
    if (confirm) prompts_.Message("Opened Succesfully");
    lastFolder_ = FolderOf(choice.path);
}

void Editor::OpenLevelFile(FormatId id) {
    ReadFromDialog(id, true);
    ClosingSteps();
    history_.Clear();
}

void Editor::mnuOpenCode_Click() {
    // The set is dropped before the file is even chosen. Level 1 stays as it
    // was drawn, and with it the kind its grid was made for.
    const GameKind kind = set_.Kind;
    LevelLayout first = set_.Layout(1);
    LevelRecord firstRecord = set_.Record(1);
    ResetAll();
    set_.Kind = kind;
    set_.Layouts.assign(1, std::move(first));
    set_.Records.assign(1, firstRecord);
    ui_.levelCountLabel = "Number of Levels: 1";
    OpenLevelFile(FormatId::Program);
}

void Editor::mnuOpenSource_Click() {
    ReadFromDialog(FormatId::Source, false);  // reading source confirms nothing
    ClosingSteps();
    history_.Clear();
}

// CountBlocks on every level before a save; false, with the level without
// last blocks shown and its message given, when the save must stop.
bool Editor::CountAllLevelsOrShow() {
    const int level = CountAllLevels(set_);
    if (level == 0) return true;
    set_.CurrentLevel = level;
    prompts_.Message(NoLastBlocksMessage(level));
    ShowCurrentLevelInList();
    ShowLevel();
    return false;
}

// Writes the set in `format` to `path`; a refusal is shown, a disk failure
// goes to the status line. True when the file was written.
bool Editor::WriteSet(const Format& format, const std::string& path, const std::string& title) {
    const WriteResult written = format.write(set_, title);
    if (!written.ok) {
        prompts_.Message(written.message);
        return false;
    }
    std::string error;
    if (!WriteFileAtomic(path, written.bytes, &error)) {
        ui_.status = "Could not save " + FileTitleOf(path) + ": " + error;
        return false;
    }
    ui_.status.clear();
    return true;
}

void Editor::SaveLevelFile(FormatId id) {
    const Format& format = GetFormat(id);
    if (!CountAllLevelsOrShow()) return;
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_);
    if (!choice.path.empty() && WriteSet(format, choice.path, choice.title)) {
        prompts_.Message("Saved Succesfully!");
        lastFolder_ = FolderOf(choice.path);
    }
    ClosingSteps();
}

void Editor::mnuSaveCode_Click() {
    if (!CountAllLevelsOrShow()) return;
    const Format& format = GetFormat(FormatId::Program);
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_);
    if (const auto fault = ProgramTitleFault(choice.title)) {
        prompts_.Message(*fault);
    } else if (!choice.path.empty()) {
        if (!CalculatorName(choice.title)) {
            ui_.status = "Could not compile: the file name " + choice.title + " is too short";
        } else if (WriteSet(format, WithProgramExtension(choice.path), choice.title)) {
            prompts_.Message("Succesfully compiled!");
            lastFolder_ = FolderOf(choice.path);
        }
    }
    ClosingSteps();
}

void Editor::mnuSaveSource_Click() {
    const Format& format = GetFormat(FormatId::Source);
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_);
    if (!choice.path.empty() && WriteSet(format, choice.path, choice.title)) {
        // The writer walks the levels with the current level, leaving the last one current.
        set_.CurrentLevel = set_.LevelCount();
        ShowCurrentLevelInList();
        prompts_.Message("Saved Succesfully");
        lastFolder_ = FolderOf(choice.path);
        RunDebuggerIfOn();
    }
    ClosingSteps();
}

}  // namespace shd
