// The main window's wiring: each widget's events reach the editor, and the
// editor's state reaches the widgets. The rules themselves are tested in the
// editor core.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QToolBar>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QDropEvent>
#include <QTest>
#include <QTextBrowser>
#include <QWheelEvent>
#include <algorithm>
#include <cctype>
#include <map>
#include <sstream>

#include "gui/Actions.h"
#include "gui/Text.h"
#include "gui/Overview.h"
#include "gui/Widgets.h"
#include "gui/MainWindow.h"
#include "render/Render.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

// Texts in a failure message as text.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace shd::gui {
namespace {

using test::ScriptedPrompts;
const char* kSpotted = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

class WindowTest : public testing::Test {
protected:
    WindowTest() { Open(QStringLiteral(ASSETS_DIR)); }
    ~WindowTest() override { EXPECT_TRUE(prompts.done()) << "a scripted prompt was never shown"; }

    void Open(const QString& pictures) {
        window = std::make_unique<MainWindow>(&prompts);
        window->resize(1024, 740);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->Start(PathText(dir / "info.ini"), pictures, {}, PathText(dir / "recent.txt"));
    }
    template <typename T = QWidget>
    T* Find(const char* name) const {
        T* found = window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void Trigger(const char* name) const { Find<QAction>(name)->trigger(); }
    void Discard() {
        if (window->editor().IsModified())
            prompts.Expect(ScriptedPrompts::Kind::YesNoCancel, "Save before quiting?", Answer::No);
    }
    bool Checked(const char* name) const { return Find<QAction>(name)->isChecked(); }
    QString Text(const char* name) const { return Find<QLabel>(name)->text(); }
    const LevelSet& set() const { return window->editor().set(); }
    int Code(int cell) const { return set().Current().Cells[static_cast<std::size_t>(cell)]; }
    QPoint Centre(int cell) const { return window->grid()->cellRect(cell).center(); }
    void ClickCell(int cell, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(window->grid(), button, {}, Centre(cell));
    }
    void Choose(int code) { QTest::mouseClick(window->paletteButton(code), Qt::LeftButton); }
    bool Shows(int cell, int code) const {
        return window->grid()->picture(cell).cacheKey() == window->paletteButton(code)->picture().cacheKey();
    }
    QString Entries(const QList<QAction*>& actions) const {
        QStringList entries;
        for (QAction* a : actions) entries << (a->isSeparator() ? QStringLiteral("-") : a->text()) + '=' + a->objectName();
        return entries.join('|');
    }

    test::TempDir dir;
    ScriptedPrompts prompts;
    std::unique_ptr<MainWindow> window;
};

TEST_F(WindowTest, ControlsKeepTheirCaptionsAndArrangementAndMenusTheirEntries) {
    std::istringstream lines(test::ReadFile(test::DataDir() / "gui/window.txt"));
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        SCOPED_TRACE(line);
        std::istringstream words(line);
        std::string kind, name, text;
        words >> kind >> name;
        std::getline(words >> std::ws, text);
        QWidget* widget = name == "menuBar" ? window->menuBar() : window->findChild<QWidget*>(QString::fromStdString(name));
        auto place = [this](const QWidget* w) { return QRect(w->mapTo(window.get(), QPoint()), w->size()); };
        if (kind == "keys") {
            EXPECT_TRUE(Find<QAction>(name.c_str())->shortcuts().contains(QKeySequence(QString::fromStdString(text))));
            continue;
        }
        ASSERT_NE(widget, nullptr);
        if (kind == "caption") EXPECT_EQ(widget->property("text").toString().toStdString(), text);
        else if (kind == "menu") EXPECT_EQ(Entries(widget->actions()).toStdString(), text);
        else if (kind == "above") EXPECT_LT(place(widget).bottom(), place(Find(text.c_str())).top());
        else if (kind == "left") EXPECT_LT(place(widget).right(), place(Find(text.c_str())).left());
        else if (kind == "buddy") EXPECT_EQ(qobject_cast<QLabel*>(widget)->buddy(), Find(text.c_str()));
        else ADD_FAILURE() << "unknown line";
    }
    EXPECT_EQ(window->centralWidget()->grab().toImage().pixelColor(5, 5), QColor(192, 192, 192));
    // No two access keys collide: the menu bar's and the captions' on the window.
    QString keys;
    for (QAction* menu : window->menuBar()->actions()) keys += menu->text().at(menu->text().indexOf('&') + 1).toUpper();
    for (const char* name : {"titleLabel", "bonusClockLabel", "extraLifeLabel", "ballAcrossLabel", "ballDownLabel"})
        keys += Text(name).at(Text(name).indexOf('&') + 1).toUpper();
    for (const QChar key : keys) EXPECT_EQ(keys.count(key), 1) << keys.toStdString();
    Trigger("newTiltbash");
    EXPECT_EQ(window->cellCount(), 64);
    EXPECT_EQ(window->grid()->cellRect(9).size(), QSize(44, 30) * window->grid()->zoom());
    EXPECT_FALSE(Find("ballAcross")->isVisibleTo(window.get()) || Find<QAction>("createMenu")->isVisible());
}

// Alt and a letter picks one entry of an open menu only while no other
// entry of that menu shares its letter.
TEST(Actions, NoTwoEntriesOfOneMenuShareAnAccessKey) {
    std::map<std::string, std::string> letters;  // per menu, the access keys of its entries
    for (const ActionRow& row : ActionTable()) {
        if (row.kind == ActionRow::Kind::Separator || !row.menu) continue;  // shortcuts alone have no caption
        const std::string caption = row.caption;
        const auto amp = caption.find('&');
        ASSERT_TRUE(amp != std::string::npos && amp + 1 < caption.size()) << row.id << " has no access key";
        letters[row.menu] += static_cast<char>(std::toupper(static_cast<unsigned char>(caption[amp + 1])));
    }
    EXPECT_EQ(letters.size(), 15u);  // the menu bar and the fourteen menus with fixed entries
    // The one pair the older program's Tricky menu has always had, kept as it
    // was: "&Shardles Options" and "&Special Unused Blocks", between which Alt+S moves.
    std::erase(letters["trickyMenu"], 'S');
    letters["trickyMenu"] += 'S';
    for (const auto& [menu, keys] : letters)
        for (const char key : keys) EXPECT_EQ(std::count(keys.begin(), keys.end(), key), 1) << menu << ": " << key;
}

// The dock's own action keeps its check mark and shows and hides the overview.
TEST_F(WindowTest, TheOverviewsActionShowsAndHidesItsPanel) {
    EXPECT_TRUE(Checked("showOverview") && window->overview()->isVisible());
    Trigger("showOverview");
    EXPECT_FALSE(Checked("showOverview") || window->overview()->isVisible());
    Trigger("showOverview");
    EXPECT_TRUE(Checked("showOverview") && window->overview()->isVisible());
}

TEST_F(WindowTest, TheGridZoomsByKeyAndWheelAndTheStatusBarNamesTheCellUnderThePointer) {
    PictureGrid* grid = window->grid();
    const int fit = window->gridView()->fitZoom();
    EXPECT_EQ(Text("statusZoom"), QStringLiteral("Zoom %1% (fit)").arg(fit * 100));
    QTest::keyClick(grid, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(grid->cellRect(1), QRect(40 * (fit + 1), 0, 40 * (fit + 1), 30 * (fit + 1)));
    EXPECT_EQ(Text("statusZoom"), QStringLiteral("Zoom %1%").arg(fit * 100 + 100));
    Choose(1);
    ClickCell(9);  // hit-testing at the new zoom
    EXPECT_EQ(Code(9) + Code(0) + Code(10), 1);
    QWheelEvent wheel(QPointF(5, 5), window->gridView()->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window->gridView()->viewport(), &wheel);
    EXPECT_EQ(grid->zoom(), fit);
    QTest::keyClick(grid, Qt::Key_Minus, Qt::ControlModifier);
    QTest::keyClick(grid, Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(grid->zoom(), fit);
    EXPECT_EQ(window->editor().ui().selectedBlock, 1);  // Ctrl+0 is not the digit 0
    window->resize(window->size() * 2);
    QApplication::processEvents();
    EXPECT_EQ(grid->zoom(), window->gridView()->fitZoom());
    EXPECT_GT(grid->zoom(), fit);  // it follows the window

    EXPECT_EQ(window->paletteButton(2)->toolTip(), QStringLiteral("Code 2: spotted shardle"));
    QTest::mouseMove(grid, Centre(9));
    EXPECT_EQ(Text("statusCell"), QStringLiteral("Row 2, column 2: code 1, block"));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(grid, &leave);
    EXPECT_EQ(Text("statusCell"), QString());
    Discard();
    Trigger("newTiltbash");
    EXPECT_EQ(window->paletteButton(2)->toolTip(), QStringLiteral("Code 2"));
}

TEST_F(WindowTest, TheOverviewShowsEveryLevelChoosesOnAClickAndDrawsOnlyWhatChanged) {
    Trigger("newTiltbash");  // no questions about last blocks
    for (int i = 1; i < kMaxLevels; ++i) QTest::mouseClick(Find("addLevel"), Qt::LeftButton);
    LevelOverview* overview = window->overview();
    EXPECT_EQ(overview->levelAt(overview->entryRect(255).center()), 255);
    const int drawn = overview->drawnCount();
    Choose(5);
    ClickCell(0);
    EXPECT_EQ(overview->drawnCount(), drawn + 1);
    QTest::mouseClick(overview->viewport(), Qt::LeftButton, {}, overview->entryRect(3).center());
    EXPECT_EQ(set().CurrentLevel, 3);
    EXPECT_EQ(Find<QComboBox>("levelList")->currentText(), QStringLiteral("Level 3"));
    EXPECT_EQ(overview->drawnCount(), drawn + 1);
}

TEST_F(WindowTest, ExportPictureWritesTheLevelOrTheSheetAsTheRasterizerDrawsThem) {
    Trigger("newTiltbash");
    Choose(5);
    ClickCell(9);
    const std::string level = (dir.path / "level.png").string(), sheet = (dir.path / "sheet.png").string();
    prompts.ExpectSave("PNG Pictures (*.png)|*.png", level);  // one level: nothing to choose
    Trigger("exportPicture");
    QTest::mouseClick(Find("addLevel"), Qt::LeftButton);
    prompts.Expect(ScriptedPrompts::Kind::Choose, "Export a picture of", Answer::Yes, "1");
    prompts.ExpectSave("PNG Pictures (*.png)|*.png", sheet);
    Trigger("exportPicture");
    prompts.Expect(ScriptedPrompts::Kind::Choose, "Export a picture of", Answer::Yes, "-1");  // cancelled: no dialog
    Trigger("exportPicture");

    const QImage written(QString::fromStdString(level));
    const QImage block = window->paletteButton(5)->picture().toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(written.size(), QSize(352, 240));
    EXPECT_EQ(written.convertToFormat(QImage::Format_RGB32).copy(44, 30, 44, 30), block.copy(0, 0, 44, 30));
    const QImage written2(QString::fromStdString(sheet));
    EXPECT_EQ(written2.size(), render::LayOutSheet(set(), 2, 1).size);
}

TEST_F(WindowTest, ToolsAndCellAndLevelCommandsReachTheEditorAndTheClipboardCarriesText) {
    Trigger("newTiltbash");  // no debugger questions
    PictureGrid* grid = window->grid();
    auto* tools = Find<QToolBar>("toolBar");
    QTest::mouseClick(tools->widgetForAction(Find<QAction>("rectangle")), Qt::LeftButton);
    EXPECT_TRUE(Checked("rectangle") && !Checked("pencil"));
    Choose(3);
    QTest::mousePress(grid, Qt::LeftButton, {}, Centre(9));
    QTest::mouseMove(grid, Centre(27));
    QTest::mouseRelease(grid, Qt::LeftButton, {}, Centre(27));
    EXPECT_TRUE(Code(9) == 3 && Code(27) == 3 && Shows(27, 3));
    Trigger("fill");
    Choose(5);
    ClickCell(0);
    EXPECT_TRUE(Code(63) == 5 && Shows(63, 5));

    Trigger("select");
    EXPECT_FALSE(Find<QAction>("copy")->isEnabled());
    QTest::mousePress(grid, Qt::LeftButton, {}, Centre(8));
    QTest::mouseMove(grid, Centre(9));
    QTest::mouseRelease(grid, Qt::LeftButton, {}, Centre(9));
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("shardles-editor cells 2 1\n53\n"));
    QTest::keyClick(grid, Qt::Key_Escape);
    EXPECT_FALSE(Find<QAction>("copy")->isEnabled());
    QTest::keyClick(grid, Qt::Key_V, Qt::ControlModifier);  // nothing selected: at the top-left corner
    EXPECT_EQ(Code(0) * 10 + Code(1), 53);
    Trigger("flipLeftRight");
    EXPECT_EQ(Code(7) * 10 + Code(6), 53);

    Trigger("duplicateLevel");
    EXPECT_EQ(set().LevelCount() * 10 + set().CurrentLevel, 22);
    Trigger("shiftDown");
    const BlockGrid second = set().Layout(2).Cells;
    LevelOverview* overview = window->overview();
    QTest::mousePress(overview->viewport(), Qt::LeftButton, {}, overview->entryRect(2).center());
    QTest::mouseMove(overview->viewport(), overview->entryRect(1).center());
    QTest::mouseRelease(overview->viewport(), Qt::LeftButton, {}, overview->entryRect(1).center());
    EXPECT_EQ(set().Layout(1).Cells, second);
    EXPECT_EQ(set().CurrentLevel, 1);  // the level moved stays the current one
    Trigger("copyLevel");
    Trigger("pasteLevel");
    EXPECT_EQ(set().LevelCount() * 10 + set().CurrentLevel, 32);
    EXPECT_EQ(set().Layout(2).Cells, second);
}

TEST_F(WindowTest, PaletteGridAndKeysReachTheEditorAndTheCellsShowItsPictures) {
    EXPECT_FALSE(Find<QAction>("undo")->isEnabled() || Find<QAction>("redo")->isEnabled());
    Choose(2);
    QTest::mousePress(window->grid(), Qt::LeftButton, {}, Centre(21));
    EXPECT_TRUE(Code(21) == 2 && Shows(21, 2));  // painted on the press, nothing asked yet
    QTest::mouseMove(window->grid(), Centre(23));
    prompts.ExpectYesNo(kSpotted, false);
    QTest::mouseRelease(window->grid(), Qt::LeftButton, {}, Centre(23));
    EXPECT_EQ(Code(22) * 10 + Code(23), 22);
    EXPECT_TRUE(Shows(23, 2));
    Trigger("useDebugger");
    ClickCell(22, Qt::RightButton);
    EXPECT_TRUE(Code(22) == 0 && Shows(22, 0));
    QTest::keyClick(window->grid(), Qt::Key_C);  // a code typed on the grid chooses its block
    EXPECT_EQ(window->editor().ui().selectedBlock, 12);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(12));
    QTest::keyClick(window->paletteButton(12), Qt::Key_Left);
    EXPECT_TRUE(window->paletteButton(11)->isChecked() && window->paletteButton(11)->hasFocus());
    EXPECT_EQ(Text("statusBlocks"), QStringLiteral("Blocks: 2"));
    // Undo and redo go through the editor, by menu and by key.
    EXPECT_TRUE(Find<QAction>("undo")->isEnabled());
    for (const QKeySequence& redo : {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)}) {
        QTest::keyClick(window->grid(), Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(Code(22), 2);
        QTest::keySequence(window->grid(), redo);
        EXPECT_EQ(Code(22), 0) << redo.toString().toStdString();
    }
}

TEST_F(WindowTest, BoxesListsAndButtonsReachTheEditorAndShowWhatItKeeps) {
    auto* title = Find<QLineEdit>("titleBox");
    title->setFocus();
    title->end(false);
    QTest::keyClicks(title, "2BC");
    EXPECT_EQ(set().Title, "Please Add a Title2B");  // cut at the key release
    EXPECT_EQ(title->text(), QStringLiteral("Please Add a Title2B"));
    title->selectAll();
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8("\xE2\x82\xAC" "a\xC4\x89"));
    QApplication::sendEvent(title, &typed);
    EXPECT_EQ(set().Title, "\x80" "a?");  // Windows-1252, with "?" for what it lacks
    auto* ballx = Find<QLineEdit>("ballAcross");
    ballx->selectAll();
    QTest::keyClicks(ballx, "95");
    EXPECT_EQ(ballx->text(), QStringLiteral("0"));
    ballx->selectAll();
    ballx->insert(QStringLiteral("33"));  // as a paste does: no key goes up
    ClickCell(0);
    EXPECT_EQ(ballx->text(), QStringLiteral("33"));
    auto* bonus = Find<QComboBox>("bonusClock");
    bonus->lineEdit()->selectAll();
    QTest::keyClicks(bonus->lineEdit(), "6");
    EXPECT_EQ(set().BonusClock + "|" + bonus->currentText().toStdString(), "6|6");  // not completed to 60
    Find<QComboBox>("extraLife")->setCurrentIndex(3);
    EXPECT_EQ(set().ExtraLifePoints, "400");

    QTest::mouseClick(Find("addLevel"), Qt::LeftButton);
    EXPECT_EQ(Text("levelCount"), QStringLiteral("Number of Levels: 2"));
    auto* levels = Find<QComboBox>("levelList");
    EXPECT_EQ(levels->count(), 2);
    prompts.ExpectMessage("Level #1 has no Last Blocks.");
    emit levels->activated(1);
    EXPECT_EQ(levels->currentText() + ballx->text() + Text("statusLevel"), QStringLiteral("Level 20Level 2 of 2"));
    EXPECT_EQ(set().Layout(1).BallX, 33);  // the pasted value, stored on leaving the level
    QTest::mouseClick(Find("removeLevel"), Qt::LeftButton);
    EXPECT_EQ(levels->currentText(), QStringLiteral("Level 1"));
    Discard();
    Trigger("newShardles");
    EXPECT_EQ(bonus->currentText() + title->text(), QStringLiteral("30Please Add a Title"));
}

TEST_F(WindowTest, MenusRunTheirOperationsAndShowTheEditorsMarks) {
    EXPECT_TRUE(Checked("matchLocks") && !Checked("useWrapAround"));
    Trigger("unusedSpotted");
    EXPECT_TRUE(Checked("unusedSpotted") && set().Record(1).SpottedUnused);
    prompts.Expect(ScriptedPrompts::Kind::Input, "How many other blocks are not used? Don't count blocks affected by the Flags.",
                   Answer::Yes, "81");
    Trigger("specialUnused");
    EXPECT_FALSE(Checked("specialUnused"));  // only the editor knows the answer takes the mark away
    prompts.ExpectPicture([](CustomPieceEdit& edit) { return edit.Click(9), true; });
    Trigger("editChangerPiece");
    EXPECT_TRUE(set().CustomChangerPicture.at(9) == 1 && Checked("useCustomShardles"));
    // A right press on a Tiltbash background pops up Tricky without the Shardles submenus.
    Discard();
    Trigger("newTiltbash");
    QWidget* background = window->centralWidget();
    const QPoint empty = background->rect().bottomRight() - QPoint(10, 10);
    QTest::mousePress(background, Qt::RightButton, {}, empty);
    EXPECT_TRUE(window->trickyMenu()->isVisible());
    EXPECT_FALSE(Find<QAction>("unusedMenu")->isVisible() || Find<QAction>("optionsMenu")->isVisible());
    window->trickyMenu()->hide();
    // The grey around the grid, in its room, is background too.
    ASSERT_GT(window->grid()->x(), 0);
    QTest::mousePress(window->gridView()->viewport(), Qt::RightButton, {}, window->grid()->pos() - QPoint(1, 1));
    EXPECT_TRUE(window->trickyMenu()->isVisible());
    window->trickyMenu()->hide();
}

// The program's folder holds the block pictures and the user's guide that Help shows.
TEST_F(WindowTest, StartReadsTheLastFolderPicturesAndHelpComeFromTheFolderAndClosingAsks) {
    for (int code = 0; code < 16; ++code) EXPECT_FALSE(window->pictures().IsDrawnTile(code)) << code;
    EXPECT_EQ(window->editor().lastFolder(), ASSETS_DIR);
    test::WriteFile(dir.path / "info.ini", "/some/where/\r\n");
    test::WriteFile(dir.path / "user-guide.md", "## Using the editor\n\n- **File → New** starts a set.\n");
    Open(PathText(dir.path.string()));  // no pictures there: drawn tiles, without a word
    EXPECT_EQ(window->editor().lastFolder(), "/some/where/");
    EXPECT_TRUE(window->pictures().IsDrawnTile(11));
    EXPECT_EQ(window->paletteButton(11)->picture().toImage(), BlockPictures::Tile(QStringLiteral("B")).toImage());
    Trigger("contents");
    auto* guide = Find<QDialog>("userGuide");
    ASSERT_TRUE(guide && guide->isVisible());
    EXPECT_EQ(guide->findChild<QTextBrowser*>()->toPlainText(), QStringLiteral("Using the editor\nFile → New starts a set."));
    prompts.ExpectMessage(AboutText());
    Trigger("about");
    EXPECT_TRUE(AboutText().starts_with(std::string(kWindowCaption) + "\n\nVersion 3.0\n\nDraws levels"));
    Trigger("exit");  // nothing changed: nothing asked
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(test::ReadFile(dir.path / "info.ini"), "/some/where/\r\n");
}

TEST_F(WindowTest, UserStoryOpenChangeCloseSaveReopenFromRecentOrByDropping) {
    test::WriteFile(dir.path / "story.rsx", test::ReadFile(test::DataDir() / "myfile/shardles.out"));
    prompts.ExpectMessage("Opened Succesfully");
    window->OpenPath(PathText(dir / "story.rsx"));  // as the command line gives it
    EXPECT_EQ(window->windowTitle(), QStringLiteral("story.rsx[*] - Rovakmoor's Shardles/Tiltbash Level Editor v3.0"));
    EXPECT_FALSE(window->isWindowModified());
    Choose(1);
    ClickCell(3);
    EXPECT_TRUE(window->isWindowModified());
    prompts.Expect(ScriptedPrompts::Kind::YesNoCancel, "Save before quiting?", Answer::Yes);
    EXPECT_TRUE(window->close());  // saved to its file, without a dialog
    EXPECT_NE(test::ReadFile(dir.path / "story.rsx").find("\r\n1,0,0,1,0,0,0,0,0,6,"), std::string::npos);

    Open(QStringLiteral(ASSETS_DIR));
    auto* recent = Find<QMenu>("recentMenu");
    emit recent->aboutToShow();
    ASSERT_EQ(recent->actions().size(), 1);
    EXPECT_EQ(recent->actions().constFirst()->text(), QStringLiteral("&1 story.rsx"));
    prompts.ExpectMessage("Opened Succesfully");
    recent->actions().constFirst()->trigger();

    Open(QStringLiteral(ASSETS_DIR));  // a file dropped on the window opens too
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(PathText(dir / "story.rsx"))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    prompts.ExpectMessage("Opened Succesfully");
    QApplication::sendEvent(window.get(), &drop);
    EXPECT_TRUE(window->windowTitle().startsWith(QStringLiteral("story.rsx")));
}

}  // namespace
}  // namespace shd::gui
