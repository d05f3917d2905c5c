// The File menu's commands: every open and save, and the steps they share.
#include <algorithm>

#include "editor/Editor.h"
#include "editor/Recovery.h"
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

// What the save dialog adds to a name typed without an extension.
std::string ExtensionOf(const Format& format) { return std::string(format.extensions[0]); }
}  // namespace

// Nothing a command would replace or clear is lost without the user's say.
bool Editor::MayReplaceSet() {
    if (!IsModified()) return true;
    switch (prompts_.AskYesNoCancel("Save before quiting?")) {
    case Answer::Yes:
        Save();
        return !IsModified();  // a refused or cancelled save keeps everything as it was
    case Answer::No:
        DropRecoveryCopy();
        return true;
    case Answer::Cancel: return false;
    }
    return false;
}

// Every file command ends here, also after a cancel or a failure.
void Editor::ClosingSteps() {
    set_.CurrentLevel = 1;
    ui_.levelText = LevelEntry(1);
    ShowLevel();
    RunDebuggerIfOn();
}

// A read replaces the set wholesale: the window goes through ClearForNewSet and
// PrepareForGame for the new kind and level count, keeping marks as they do.
void Editor::AdoptSet(LevelSet&& set) {
    ClearForNewSet();
    set_ = std::move(set);
    set_.CurrentLevel = 1;
    PrepareForGame();
    history_.Clear();
    lastExport_.reset();
}

void Editor::Remember(const std::string& path) {
    std::erase(recent_, path);
    recent_.insert(recent_.begin(), path);
    if (recent_.size() > kRecentFiles) recent_.resize(kRecentFiles);
}

// Reads `path` as `id` into the editor; a refused or unreadable file leaves
// the set, its levels and its history as they were.
void Editor::Open(FormatId id, const std::string& path, bool confirm) {
    ReadResult result = OpenFile(GetFormat(id), path);
    ui_.status = result.complete() || !result.outcome.message.empty() ? "" : StatusOf(path, result.outcome);
    if (result.refused()) {
        if (!result.outcome.message.empty()) prompts_.Message(result.outcome.message);
        if (result.outcome.why.starts_with("cannot be read")) std::erase(recent_, path);
        return;
    }
    const bool complete = result.complete();
    AdoptSet(std::move(result.set));
    // Only a whole My File is the set's own file; anything else is saved anew.
    documentPath_ = complete && id == FormatId::MyFile ? path : std::string();
    if (!complete) return;
    if (confirm) prompts_.Message("Opened Succesfully");
    lastFolder_ = FolderOf(path);
    Remember(path);
}

void Editor::OpenLevelFile(FormatId id) {
    if (!MayReplaceSet()) return;
    const Format& format = GetFormat(id);
    const FileChoice choice = prompts_.OpenFileDialog(format.openFilter, lastFolder_);
    // Reading source confirms nothing.
    if (!choice.path.empty()) Open(id, choice.path, id != FormatId::Source);
    ClosingSteps();
}

void Editor::OpenProgram() { OpenLevelFile(FormatId::Program); }
void Editor::OpenSource() { OpenLevelFile(FormatId::Source); }

void Editor::OpenPath(const std::string& path) {
    const auto id = FormOfFileName(FileTitleOf(path));
    if (!id) {
        ui_.status = FileTitleOf(path) + ": the editor does not know the form of a file by this extension";
        return;
    }
    if (!MayReplaceSet()) return;
    Open(*id, path, *id != FormatId::Source);
    ClosingSteps();
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
    // One save at a time: the unfinished save a signal removes is one per process.
    if (recovery_) recovery_->Wait();
    std::string error;
    // A FIFO without a reader would hold up the window for ever.
    if (!WriteFileAtomic(path, written.bytes, &error, OtherTargets::WriteWithoutWaiting)) {
        ui_.status = "Could not save " + FileTitleOf(path) + ": " + error;
        return false;
    }
    ui_.status.clear();
    return true;
}

// What a written file becomes: the set's own file, or its last export.
void Editor::Saved(FormatId id, const std::string& path, const std::string& title) {
    lastFolder_ = FolderOf(path);
    Remember(path);
    if (id != FormatId::MyFile) {
        lastExport_ = Export{id, path, title};
        return;
    }
    documentPath_ = path;
    history_.MarkClean();
    DropRecoveryCopy();
}

void Editor::SaveLevelFile(FormatId id) {
    const Format& format = GetFormat(id);
    if (!CountAllLevelsOrShow()) return;
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_, ExtensionOf(format));
    if (!choice.path.empty() && WriteSet(format, choice.path, choice.title)) {
        prompts_.Message("Saved Succesfully!");
        Saved(id, choice.path, choice.title);
    }
    ClosingSteps();
}

void Editor::SaveAs() { SaveLevelFile(FormatId::MyFile); }

void Editor::Save() {
    if (documentPath_.empty()) return SaveAs();
    if (!CountAllLevelsOrShow()) return;
    if (WriteSet(GetFormat(FormatId::MyFile), documentPath_, FileTitleOf(documentPath_))) {
        Saved(FormatId::MyFile, documentPath_, FileTitleOf(documentPath_));
        ui_.status = "Saved " + FileTitleOf(documentPath_);
    }
    ClosingSteps();
}

void Editor::ExportAgain() {
    if (!lastExport_) return;
    const Export again = *lastExport_;
    const Format& format = GetFormat(again.format);
    if (format.countsBlocksFirst && !CountAllLevelsOrShow()) return;
    if (WriteSet(format, again.path, again.title)) {
        Saved(again.format, again.path, again.title);
        ui_.status = "Exported " + FileTitleOf(again.path);
    }
    ClosingSteps();
}

void Editor::SaveProgram() {
    if (!CountAllLevelsOrShow()) return;
    const Format& format = GetFormat(FormatId::Program);
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_, ExtensionOf(format));
    if (const auto fault = ProgramTitleFault(choice.title)) {
        prompts_.Message(*fault);
    } else if (!choice.path.empty()) {
        const std::string path = WithProgramExtension(choice.path);
        if (!CalculatorName(choice.title)) {
            ui_.status = "Could not compile: the file name " + choice.title + " is too short";
        } else if (WriteSet(format, path, choice.title)) {
            prompts_.Message("Succesfully compiled!");
            Saved(FormatId::Program, path, choice.title);
        }
    }
    ClosingSteps();
}

void Editor::SaveSource() {
    const Format& format = GetFormat(FormatId::Source);
    const FileChoice choice = prompts_.SaveFileDialog(format.saveFilter, lastFolder_, ExtensionOf(format));
    if (!choice.path.empty() && WriteSet(format, choice.path, choice.title)) {
        // The writer walks the levels with the current level, leaving the last one current.
        set_.CurrentLevel = set_.LevelCount();
        ShowCurrentLevelInList();
        prompts_.Message("Saved Succesfully");
        Saved(FormatId::Source, choice.path, choice.title);
        RunDebuggerIfOn();
    }
    ClosingSteps();
}

}  // namespace shd
