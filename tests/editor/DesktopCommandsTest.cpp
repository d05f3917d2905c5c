// A file named on the command line opens as its extension says.
#include <gtest/gtest.h>

#include "editor/Editor.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

namespace shd::test {
namespace {

TEST(OpenGivenFile, ReadsTheFormItsExtensionNamesAndSaysWhyNot) {
    TempDir dir;
    ScriptedPrompts prompts;
    Editor editor(prompts, 15360, 11520);
    editor.FormLoad(dir / "info.ini", dir.path);
    const LevelSet set = RandomSet(GameKind::Tiltbash, 4, false, 3);
    WriteFile(dir.path / "set.83L", GetFormat(FormatId::List).write(set, "set.83L").bytes);
    editor.OpenGivenFile(dir / "set.83L");
    EXPECT_EQ(JsonOf(editor.set()), JsonOf(Carried(set, FormatId::List)));
    EXPECT_EQ(editor.lastFolder(), dir.path.string() + "/");
    EXPECT_FALSE(editor.CanUndo());

    editor.OpenGivenFile(dir / "notes.txt");
    EXPECT_EQ(editor.ui().status, "notes.txt: not a kind of file the editor reads");
    WriteFile(dir.path / "cut.rsx", ReadFile(DataDir() / "myfile/cut.in"));
    editor.OpenGivenFile(dir / "cut.rsx");
    EXPECT_TRUE(editor.ui().status.starts_with("Stopped reading cut.rsx at line ")) << editor.ui().status;
    EXPECT_EQ(editor.set().CurrentLevel, 1);
    EXPECT_TRUE(prompts.done());
}

}  // namespace
}  // namespace shd::test
