// The fixture of the editor's tests: an editor driven as the window drives
// it, with scripted dialogs and helpers for the steps many tests take.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "editor/Editor.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

namespace shd::test {

using K = ScriptedPrompts::Kind;
inline constexpr const char* kSaveFirst = "Save before quiting?";
inline constexpr const char* kSpecial =
    "How many other blocks are not used? Don't count blocks affected by the Flags.";
inline constexpr const char* kSpotted = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

// An editor started as the program starts it.
class EditorTest : public testing::Test {
protected:
    EditorTest() : editor(prompts) { editor.Start(dir / "info.ini", dir.path, dir / "recent.txt"); }
    ~EditorTest() override { EXPECT_TRUE(prompts.done()) << "prompts the test expected were not shown"; }

    const LevelSet& set() const { return editor.set(); }
    const WindowState& ui() const { return editor.ui(); }
    void Paint(int cell, int code) {
        editor.ChooseBlock(code);
        editor.ClickCell(cell, MouseButton::Left);
    }
    // The question a command that replaces or clears a changed set asks first, answered No.
    void Discard() {
        if (editor.IsModified()) prompts.Expect(K::YesNoCancel, kSaveFirst, Answer::No);
    }
    // A new set of `kind`, the changes before it discarded.
    void New(GameKind kind) {
        Discard();
        kind == GameKind::Shardles ? editor.NewSet(GameKind::Shardles) : editor.NewSet(GameKind::Tiltbash);
    }
    // Special Unused Blocks, answered with `answer`.
    void Special(const std::string& answer) {
        prompts.Expect(K::Input, kSpecial, Answer::Yes, answer);
        editor.AskSpecialCount();
    }
    void DebuggerOff() {
        if (set().UseShardlesDebugger) editor.Toggle(Toggle::Debugger);
    }
    // Chooses a level in the list, expecting the message of a Shardles level left without last blocks.
    void SwitchTo(int level) {
        const auto& cells = set().Current().Cells;
        if (set().IsShardles() && level != set().CurrentLevel && std::count(cells.begin(), cells.end(), 6) == 0)
            prompts.ExpectMessage("Level #" + std::to_string(set().CurrentLevel) + " has no Last Blocks.");
        editor.GoToLevel(level);
    }
    // Three Shardles levels, each with a last block and level n holding code n in cell 1.
    void ThreeLevels() {
        DebuggerOff();
        editor.AddLevel();
        editor.AddLevel();
        for (int level = 1; level <= 3; ++level) {
            SwitchTo(level);
            Paint(0, 6);
            Paint(1, level);
        }
        editor.SetTitle("Three");
    }

    TempDir dir;
    ScriptedPrompts prompts;
    Editor editor;
};

}  // namespace shd::test
