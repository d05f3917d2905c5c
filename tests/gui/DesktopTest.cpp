// What the editor needs from the desktop: where its files are, whether built
// or installed, and the Help menu.
#include <gtest/gtest.h>

#include <QAction>
#include <QDialog>
#include <QDir>
#include <QStandardPaths>
#include <QTest>
#include <QTextBrowser>

#include "gui/Places.h"
#include "gui/Text.h"
#include "gui/frmDev.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

namespace shd::gui {
namespace {

TEST(Places, BesideTheProgramWhenBuiltInTheShareFolderWhenInstalled) {
    test::TempDir dir;
    const QString root = PathText(dir.path.string());
    QDir(root).mkpath(QStringLiteral("bin"));
    QDir(root).mkpath(QStringLiteral("share/shardles-editor"));
    test::WriteFile(dir.path / "share/shardles-editor/shdblock1.gif", "");
    const Places installed = FindPlaces(root + QStringLiteral("/bin"));
    EXPECT_EQ(installed.data, root + QStringLiteral("/share/shardles-editor"));
    EXPECT_EQ(installed.settings,
              QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/info.ini"));
    EXPECT_EQ(installed.startFolder, QDir::homePath());

    test::WriteFile(dir.path / "bin/shdblock1.gif", "");
    const Places built = FindPlaces(root + QStringLiteral("/bin"));
    EXPECT_EQ(built.data + "|" + built.settings + "|" + built.startFolder,
              root + "/bin|" + root + "/bin/info.ini|" + root + "/bin");
}

TEST(HelpMenu, ContentsShowsTheShippedGuideAndAboutNamesTheProgram) {
    test::TempDir dir;
    test::WriteFile(dir.path / "user-guide.md", "## Using the editor\n\n- **File → New** starts a set.\n");
    test::ScriptedPrompts prompts;
    frmDev window(&prompts, ScreenMetrics{96, 96, QSize(1024, 768)});
    window.Start(PathText(dir / "info.ini"), PathText(dir.path.string()));
    window.findChild<QAction*>(QStringLiteral("mnuContents"))->trigger();
    auto* guide = window.findChild<QDialog*>(QStringLiteral("userGuide"));
    ASSERT_NE(guide, nullptr);
    EXPECT_TRUE(guide->isVisible());
    EXPECT_EQ(guide->findChild<QTextBrowser*>()->toPlainText(), QStringLiteral("Using the editor\nFile → New starts a set."));

    prompts.ExpectMessage(AboutText());
    window.findChild<QAction*>(QStringLiteral("mnuAbout"))->trigger();
    EXPECT_TRUE(prompts.done());
    EXPECT_TRUE(AboutText().starts_with(std::string(kWindowCaption) + "\n\nVersion 3.0\n\nDraws levels"));
}

}  // namespace
}  // namespace shd::gui
