// An editor started the way the program starts it, with a scripted Prompts.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "editor/Editor.h"
#include "support/ScriptedPrompts.h"

namespace shd::test {

class EditorTest : public ::testing::Test {
protected:
    static constexpr int kScreenWidth = 15360;
    static constexpr int kScreenHeight = 11520;

    EditorTest() : editor(prompts, kScreenWidth, kScreenHeight) {
        dir = std::filesystem::temp_directory_path() /
              ("shd-editor-" + std::to_string(::getpid()) + "-" +
               ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(dir);
        std::filesystem::create_directories(dir);
        editor.FormLoad(Path("info.ini"), dir.string());
    }
    ~EditorTest() override {
        EXPECT_TRUE(prompts.done()) << "prompts the test expected were not shown";
        std::filesystem::remove_all(dir);
    }

    std::string Path(const std::string& name) const { return (dir / name).string(); }
    const LevelSet& set() const { return editor.set(); }
    const WindowState& ui() const { return editor.ui(); }

    void Select(int code) { editor.optBlocks_Click(code); }
    void Paint(int cell, int code) {
        Select(code);
        editor.pctBox_MouseUp(cell, MouseButton::Left);
    }
    void AddLevels(int n) {
        for (int i = 0; i < n; ++i) editor.cmdAddLev_Click();
    }
    // Chooses a level in the list, expecting the message the level left gives
    // when it is a Shardles level without last blocks.
    void SwitchTo(int level) {
        if (set().IsShardles() && level != set().CurrentLevel &&
            std::count(set().Current().Cells.begin(), set().Current().Cells.end(), 6) == 0)
            prompts.ExpectMessage("Level #" + std::to_string(set().CurrentLevel) + " has no Last Blocks.");
        editor.cmbLevels_Click(level - 1);
    }
    void TurnDebuggerOff() {
        if (set().UseShardlesDebugger) editor.Toggle(Toggle::Debugger);
    }

    ScriptedPrompts prompts;
    Editor editor;
    std::filesystem::path dir;
};

}  // namespace shd::test
