// The clipboard's texts under the fuzzer: anything another program puts on
// the clipboard is read or refused whole, what is read writes back to the
// same cells and level, and pasting it leaves a consistent set whose steps
// undo and redo.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "editor/CellTools.h"
#include "editor/Editor.h"
#include "editor/Prompts.h"

using namespace shd;

namespace {
void Fail(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::abort();
}

// Pasting asks nothing; any question is answered as cancelled.
class NoPrompts : public Prompts {
public:
    void Message(const std::string&) override {}
    bool AskYesNo(const std::string&) override { return false; }
    Answer AskYesNoCancel(const std::string&) override { return Answer::Cancel; }
    std::string InputBox(const std::string&, const std::string&) override { return {}; }
    FileChoice OpenFileDialog(const std::string&, const std::string&) override { return {}; }
    FileChoice SaveFileDialog(const std::string&, const std::string&, const std::string&) override { return {}; }
    int ChooseFromList(const std::string&, const std::vector<std::string>&) override { return -1; }
    bool EditPicture(CustomPieceEdit&) override { return false; }
};

void CheckCells(const std::string& text) {
    const auto cells = ParseCellsText(text);
    if (!cells) return;
    if (cells->columns < 1 || cells->rows < 1 || cells->columns > kMaxClipSide || cells->rows > kMaxClipSide ||
        cells->codes.size() != static_cast<std::size_t>(cells->columns) * static_cast<std::size_t>(cells->rows))
        Fail("cells of a size they cannot have");
    for (const auto code : cells->codes)
        if (code > 15) Fail("a cell code above 15");
    if (ParseCellsText(CellsText(*cells)) != cells) Fail("cells written do not read back the same");
}

void CheckLevel(const std::string& text, GameKind kind) {
    const auto level = ParseLevelText(text, kind);
    if (!level) return;
    if (level->layout.Cells.size() != static_cast<std::size_t>(CellCount(kind))) Fail("a level of the wrong size");
    const auto again = ParseLevelText(LevelText(level->layout, level->record), kind);
    if (!again || !(again->layout == level->layout) || !(again->record == level->record))
        Fail("a level written does not read back the same");
}

void CheckPaste(const std::string& text, bool tiltbash) {
    NoPrompts prompts;
    Editor editor(prompts);
    if (tiltbash) editor.NewSet(GameKind::Tiltbash);
    else editor.NewSet(GameKind::Shardles);
    editor.PasteCells(text);
    editor.PasteLevel(text);
    if (!CheckConsistent(editor.set()).empty()) Fail("inconsistent set after pasting");
    while (editor.CanUndo()) editor.Undo();
    if (editor.set().LevelCount() != 1) Fail("undo did not take the pasted level out");
    while (editor.CanRedo()) editor.Redo();
    if (!CheckConsistent(editor.set()).empty()) Fail("inconsistent set after redoing the pastes");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckCells(text);
    CheckLevel(text, GameKind::Shardles);
    CheckLevel(text, GameKind::Tiltbash);
    CheckPaste(text, size % 2 == 1);
    return 0;
}
