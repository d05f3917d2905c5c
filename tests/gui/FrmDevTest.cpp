// The main window driven as a user drives it: clicks, keys and menu choices,
// with every prompt scripted. The rules behind each handler are tested in the
// editor; these tests check that the right widget reaches them and shows
// their result.
#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>

#include "GuiFixture.h"
#include "gui/Text.h"

namespace shd::gui::test {
namespace {

// A menu's entries as "caption=name", a separator's caption as "-".
QString Entries(const QList<QAction*>& actions) {
    QStringList entries;
    for (QAction* a : actions) entries << (a->isSeparator() ? QStringLiteral("-") : a->text()) + '=' + a->objectName();
    return entries.join(QLatin1Char('|'));
}

const char* const kShardlesOnly[] = {"lblBonus", "cmbBonus", "lblExLife", "cmbExLife",
                                     "lblBallx", "txtBallx", "lblBally",  "txtBally"};

TEST_F(WindowTest, NewSetsShowTheirGridControlsAndPaletteByKind) {
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Rovakmoor's Shardles/Tiltbash Level Editor v3.0"));
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QString());  // a new set does not draw its level
    struct Case { const char* menu; int cells; QRect cell0, palette0, palette15; QPoint lastCell; const char* file7; };
    // Tiltbash: 8 rows of 8 cells 660 twips wide from 5040, 4180; the palette 650 wide from 640; 7 and 11 swapped.
    auto shardles = [](const char* menu) {
        return Case{menu, 80, {352, 249, 40, 30}, {80, 16, 41, 30}, {695, 16, 41, 30}, {671, 545}, "shdblock7.gif"};
    };
    for (const Case& c : {shardles(nullptr), Case{"mnuNewTil", 64, {336, 279, 44, 29}, {43, 16, 43, 30},
                                                  {693, 16, 43, 30}, {687, 515}, "tlblockB.gif"}, shardles("mnuNewShd")}) {
        SCOPED_TRACE(c.menu ? c.menu : "start");
        if (c.menu) Trigger(c.menu);
        ASSERT_EQ(window->cellCount(), c.cells);
        for (int i = 0; i < c.cells; ++i) EXPECT_TRUE(CellShows(i, 0)) << i;
        EXPECT_EQ(window->cellGeometry(0), c.cell0);
        EXPECT_EQ(window->paletteButton(0)->geometry(), c.palette0);
        EXPECT_EQ(window->paletteButton(15)->geometry(), c.palette15);
        EXPECT_EQ(window->cellGeometry(c.cells - 1).bottomRight(), c.lastCell);
        const QImage file7(QDir(AssetsFolder()).filePath(QString::fromLatin1(c.file7)));
        EXPECT_EQ(window->paletteButton(7)->picture().toImage().convertToFormat(QImage::Format_ARGB32),
                  file7.convertToFormat(QImage::Format_ARGB32));
        for (const char* name : kShardlesOnly) EXPECT_EQ(Find(name)->isVisibleTo(window.get()), c.cells == 80) << name;
        EXPECT_EQ(Action("mnuCreate")->isVisible(), c.cells == 80);
        EXPECT_EQ(Focused(), window->paletteButton(0));
        EXPECT_TRUE(window->paletteButton(0)->isChecked());
        EXPECT_EQ(Text("lblLevel"), QStringLiteral("Number of Levels: 1"));
        EXPECT_EQ(Find<QLineEdit>("txtTitle")->text(), QStringLiteral("Please Add a Title"));
        EXPECT_EQ(LevelList(), QStringLiteral("Level 1 / Level 1"));
    }
    // The cells pctBox 0 to 79 are drawn by one widget on the client area.
    EXPECT_EQ(Grid()->objectName(), QStringLiteral("pctBox"));
    EXPECT_EQ(Grid()->parentWidget(), window->centralWidget());
}

TEST_F(WindowTest, ControlsHaveTheirCaptionsNamesListsAndFitThemOnLightGrey) {
    // A pixel of the background and one inside a label's free space, as the
    // client area draws itself and as the window shows it.
    const QImage shot = window->centralWidget()->grab().toImage();
    const QImage onScreen = window->grab().toImage();
    for (const QPoint at : {QPoint(5, 5), Find("lblTitle")->geometry().topRight() + QPoint(-1, 1)}) {
        EXPECT_EQ(shot.pixelColor(at), QColor(192, 192, 192));
        EXPECT_EQ(onScreen.pixelColor(window->centralWidget()->mapTo(window.get(), at)), QColor(192, 192, 192));
    }
    const std::pair<const char*, const char*> captions[] = {
        {"lblTitle", "&Level Name"},        {"lblLevels", "Current Level/Change Level"},
        {"lblBonus", "&Bonus Clock start number"}, {"lblExLife", "&Extra Life Point Number:"},
        {"lblBallx", "Ball starts to the &right:"}, {"lblBally", "Ball starts &down:"},
        {"cmdAddLev", "Add a Level"},       {"cmdLoseLev", "Lose a  Level"}};
    for (const auto& [name, caption] : captions) {
        QWidget* w = Find(name);
        auto* label = qobject_cast<QLabel*>(w);
        const QString text = label ? label->text() : qobject_cast<QPushButton*>(w)->text();
        EXPECT_EQ(text, QString::fromLatin1(caption));
        EXPECT_LE(w->fontMetrics().horizontalAdvance(QString(text).remove('&')), w->width() - (label ? 0 : 1)) << name;
    }
    // The "&" of a label moves the focus to its box.
    EXPECT_EQ(Find<QLabel>("lblBallx")->buddy(), Find("txtBallx"));
    EXPECT_EQ(Find<QLabel>("lblBonus")->buddy(), Find("cmbBonus"));
    EXPECT_EQ(Items("cmbBonus"), QStringLiteral("30,60,90,120 / 30"));
    EXPECT_EQ(Items("cmbExLife"), QStringLiteral("100,200,300,400,500,600,700,800 / 100"));
    for (const char* name : {"cmbBonus", "cmbExLife", "cmbLevels"}) EXPECT_TRUE(Find<QComboBox>(name)->isEditable());
    for (int k = 0; k < 16; ++k) EXPECT_EQ(window->paletteButton(k)->objectName(), QStringLiteral("optBlocks%1").arg(k));
}

TEST_F(WindowTest, MenusHaveTheirCaptionsNamesAndOrder) {
    EXPECT_EQ(Entries(window->menuBar()->actions()),
              QStringLiteral("&File=mnuFile|&Edit=mnuEdit|&Create=mnuCreate|&Tricky=mnuTrickey"));
    const std::pair<const char*, const char*> menus[] = {
        {"mnuEdit", "&Undo=mnuUndo|&Redo=mnuRedo"},
        {"mnuFile", "&New=mnuNew|&Open=mnuOpen|&Save=mnuSave|-=mnu|E&xit=mnuExit"},
        {"mnuNew", "&Shardles File=mnuNewShd|&Tiltbash File=mnuNewTil"},
        {"mnuOpen", "&My File=mnuOpenMyFile|&Old My File=mnuOpenOld|&TI-83 List=mnuOpenList|"
                    "&Compiled Code=mnuOpenCode|&Source Code=mnuOpenSource"},
        {"mnuSave", "&My File=mnuSaveMyFile|&TI-83 List=mnuSaveList|&Compiled Code=mnuSaveCode|"
                    "&Source Code=mnuSaveSource"},
        {"mnuCreate", "&Normal Shardle=mnuCreateNormShd|&Changer Shardle=mnuCreateChangeShd"},
        {"mnuTrickey", "&Unused Shardles=mnuUn|&Shardles Options=mnuShdOp|&Special Unused Blocks=mnuSpecial|"
                       "&Reset All=mnuResetAll"},
        {"mnuUn", "&Spotted=mnuSpot|Center-&line=mnuCenter|&Zig-Zag=mnuZig|&Custom=mnuCust"},
        {"mnuShdOp", "Use &Custom Shardles=mnuCus|&Use Wrap Around=mnuWrap|&Arrow Blocks Are Breakable=mnuArrow|"
                     "&Match # of Locks to # of Blocks=mnuMatch|Use &Shardles Debugger=mnuUse"}};
    for (const auto& [menu, entries] : menus)
        EXPECT_EQ(Entries(Find<QMenu>(menu)->actions()), QString::fromLatin1(entries)) << menu;
}

TEST_F(WindowTest, CheckMarksFollowTheEditorNotTheMenu) {
    EXPECT_TRUE(Checked("mnuMatch"));
    EXPECT_FALSE(Checked("mnuWrap"));
    Trigger("mnuSpot");
    EXPECT_TRUE(Checked("mnuSpot"));
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    // "&Reset All" takes the mark away; only the editor knows that.
    Trigger("mnuResetAll");
    EXPECT_FALSE(Checked("mnuSpot"));
    // A refused count leaves the entry unchecked, though choosing it would check it.
    prompts.ExpectInput("How many other blocks are not used? Don't count blocks affected by the Flags.", "81");
    Trigger("mnuSpecial");
    EXPECT_FALSE(Checked("mnuSpecial"));
    // "&Create" opens the picture of its kind, stores it on OK and checks "Use &Custom Shardles".
    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Change);
        edit.Click(9);
        return true;
    });
    Trigger("mnuCreateChangeShd");
    EXPECT_EQ(set().CustomChangerPicture.at(9), 1);
    EXPECT_TRUE(Checked("mnuCus"));
}

TEST_F(WindowTest, ControlsStandAtTheirTwipPositions) {
    // 96 DPI: 15 twips to a pixel; edges are rounded, sizes follow from them.
    const std::pair<const char*, QRect> at96[] = {
        {"lblTitle", {141, 72, 144, 17}},  {"txtTitle", {141, 104, 144, 19}}, {"cmdLoseLev", {379, 104, 74, 25}},
        {"cmbExLife", {48, 312, 121, 21}}, {"txtBally", {632, 312, 89, 21}}};
    for (const auto& [name, rect] : at96) EXPECT_EQ(Find(name)->geometry(), rect) << name;
    EXPECT_EQ(window->cellGeometry(9), QRect(392, 279, 40, 29));  // cell 9 at 5880, 4180

    // 120 DPI: 12 twips to a pixel, on a 15360 x 12288 twip screen, so the grid starts at 5280, 4119.
    Open(ScreenMetrics{120, 120, QSize(1280, 1024)}, AssetsFolder());
    EXPECT_EQ(Find("lblTitle")->geometry(), QRect(176, 90, 180, 21));
    EXPECT_EQ(window->paletteButton(1)->geometry(), QRect(151, 20, 52, 37));  // 1815..2430 twips
    EXPECT_EQ(window->cellGeometry(0).topLeft(), QPoint(440, 343));
}

TEST_F(WindowTest, EachCellTakesTheClicksOnItsOwnPixelsAndShowsItsPictureThere) {
    Trigger("mnuNewTil");  // no debugger, so cells can be clicked freely
    // Tiltbash cells are 44 x 29 or 30 pixels; the grid widget covers them all, seamlessly.
    const QRect cell9 = window->cellGeometry(9);
    ASSERT_EQ(cell9, QRect(380, 308, 44, 30));
    EXPECT_EQ(Grid()->geometry(), window->cellGeometry(0) | window->cellGeometry(63));
    for (int i = 0; i < 64; ++i) {
        if (i % 8) {
            EXPECT_EQ(window->cellGeometry(i).left(), window->cellGeometry(i - 1).right() + 1) << i;
        }
        if (i >= 8) {
            EXPECT_EQ(window->cellGeometry(i).top(), window->cellGeometry(i - 8).bottom() + 1) << i;
        }
    }
    // The corner pixels of cell 9 are cell 9's; the next pixel over is the next cell's.
    const QPoint origin = Grid()->pos();
    auto clickAt = [&](QPoint onClientArea) {
        QTest::mouseClick(Grid(), Qt::LeftButton, {}, onClientArea - origin);
    };
    Choose(3);
    clickAt(cell9.topLeft());
    Choose(4);
    clickAt(cell9.bottomRight());
    EXPECT_EQ(Codes(8, 10), "040");
    clickAt(cell9.topRight() + QPoint(1, 0));
    clickAt(cell9.bottomLeft() + QPoint(0, 1));
    EXPECT_EQ(CellCode(10), 4);
    EXPECT_EQ(CellCode(17), 4);
    EXPECT_EQ(Codes(0, 8) + Codes(11, 16), std::string(15, '0'));

    // On screen each cell shows its picture scaled to the cell, and only there;
    // the background shows through where a picture is clear.
    const QImage shot = window->centralWidget()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    auto drawn = [&](int code, QSize size) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(QColor(192, 192, 192));
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(image.rect(), window->paletteButton(code)->picture());
        painter.end();
        return image.convertToFormat(QImage::Format_ARGB32);
    };
    for (const auto& [cell, code] : {std::pair{9, 4}, {10, 4}, {17, 4}, {8, 0}, {18, 0}, {63, 0}}) {
        const QRect at = window->cellGeometry(cell);
        EXPECT_EQ(shot.copy(at), drawn(code, at.size())) << cell;
    }
}

TEST_F(WindowTest, PaintingASpottedShardleAsksAtOnceAtTheReleaseOfThePressingButton) {
    Choose(2);
    PressCell(21, Qt::LeftButton);
    EXPECT_EQ(CellCode(21), 2);  // painted on the press, and nothing asked yet
    EXPECT_TRUE(CellShows(21, 2));
    ReleaseCell(21, Qt::RightButton);  // another button: the stroke goes on
    prompts.ExpectYesNo(kSpottedQuestion, false).Then([&] { EXPECT_TRUE(CellShows(21, 2)); });
    // A release reported elsewhere without a move in between paints nothing more.
    ReleaseCell(5, Qt::LeftButton);
    EXPECT_TRUE(prompts.done());
    EXPECT_EQ(CellCode(5), 0);
    EXPECT_EQ(set().Record(1).SpottedCount, 1);
    // The right button erases; with no spotted shardle left the debugger has nothing to ask.
    ClickCell(21, Qt::RightButton);
    EXPECT_EQ(CellCode(21), 0);
    EXPECT_TRUE(CellShows(21, 0));
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
}

TEST_F(WindowTest, RightPressOnATiltbashBackgroundPopsUpTrickyWithoutTheShardlesSubmenus) {
    Trigger("mnuNewTil");
    // A press on a label is not a press on the background.
    QTest::mousePress(Find("lblLevels"), Qt::RightButton);
    QTest::mouseRelease(Find("lblLevels"), Qt::RightButton);
    EXPECT_TRUE(Action("mnuUn")->isVisible());
    QMenu* tricky = window->trickyMenu();
    EXPECT_FALSE(tricky->isVisible());

    QWidget* background = window->centralWidget();
    const QPoint empty = background->rect().bottomRight() - QPoint(10, 10);
    ASSERT_EQ(background->childAt(empty), nullptr);
    QTest::mousePress(background, Qt::RightButton, {}, empty);
    EXPECT_TRUE(tricky->isVisible());
    const std::pair<const char*, bool> entries[] = {
        {"mnuUn", false}, {"mnuShdOp", false}, {"mnuSpecial", true}, {"mnuResetAll", true}};
    for (const auto& [name, shown] : entries) EXPECT_EQ(Action(name)->isVisible(), shown) << name;
    tricky->hide();
    // On a Shardles set any press shows them again, but only the right one pops the menu up.
    Trigger("mnuNewShd");
    QTest::mousePress(background, Qt::LeftButton, {}, empty);
    QTest::mouseRelease(background, Qt::LeftButton, {}, empty);
    EXPECT_TRUE(Action("mnuShdOp")->isVisible());
    EXPECT_FALSE(tricky->isVisible());
}

TEST_F(WindowTest, TheTitleIsCutTo20CharactersWithTheCaretAtTheEndAndKeptAsWindows1252) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->setFocus();
    title->end(false);
    QTest::keyClicks(title, "2BC");  // palette codes, but typed into a text box
    EXPECT_EQ(set().Title, "Please Add a Title2B");
    EXPECT_EQ(title->text(), QStringLiteral("Please Add a Title2B"));
    EXPECT_EQ(title->cursorPosition(), 20);
    EXPECT_EQ(ui().SelectedBlock, 0);
    EXPECT_EQ(Focused(), title);
    // Typed in the middle, the cut still leaves the caret at the end.
    title->setCursorPosition(6);
    QTest::keyClicks(title, "_");
    EXPECT_EQ(title->text(), QStringLiteral("Please_ Add a Title2"));
    EXPECT_EQ(title->cursorPosition(), 20);

    // A euro sign, a and c with circumflex, which Windows-1252 lacks.
    title->selectAll();
    QKeyEvent typed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString::fromUtf8("\xE2\x82\xAC" "a\xC4\x89"));
    QApplication::sendEvent(title, &typed);
    EXPECT_EQ(set().Title, "\x80" "a?");
    EXPECT_EQ(title->text(), QString::fromUtf8("\xE2\x82\xAC" "a?"));
}

TEST_F(WindowTest, BallBoxesAreCheckedOnKeyUpExceptForTheSixEditingKeys) {
    auto* ballx = Find<QLineEdit>("txtBallx");
    ballx->selectAll();
    QTest::keyClicks(ballx, "5.5");
    EXPECT_EQ(ballx->text(), QStringLiteral("5.5"));
    EXPECT_EQ(set().Layout(1).BallX, 6);
    // Backspace, End, Home, Left, Right and Delete leave the box unchecked and the model as it was.
    ballx->setText(QStringLiteral("abc"));
    for (Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Left, Qt::Key_Right, Qt::Key_Delete, Qt::Key_Backspace})
        QTest::keyClick(ballx, key);
    EXPECT_EQ(ballx->text(), QStringLiteral("ab"));
    EXPECT_EQ(set().Layout(1).BallX, 6);
    QTest::keyClick(ballx, Qt::Key_Up);
    EXPECT_EQ(ballx->text(), QStringLiteral("0"));
    EXPECT_EQ(ballx->cursorPosition(), 1);
    EXPECT_EQ(set().Layout(1).BallX, 0);
    auto* bally = Find<QLineEdit>("txtBally");
    bally->selectAll();
    QTest::keyClicks(bally, "62");
    EXPECT_EQ(set().Layout(1).BallY, 62);
}

TEST_F(WindowTest, SettingsListsWriteTheirTextIntoTheSet) {
    auto* bonus = Find<QComboBox>("cmbBonus");
    bonus->lineEdit()->selectAll();
    QTest::keyClicks(bonus->lineEdit(), "45");
    EXPECT_EQ(set().BonusClock, "45");
    // What is typed stays as typed, even when an entry starts with it.
    window->activateWindow();
    bonus->lineEdit()->setFocus();
    bonus->lineEdit()->selectAll();
    QTest::keyClicks(bonus->lineEdit(), "6");
    EXPECT_EQ(set().BonusClock, "6");
    EXPECT_EQ(bonus->currentText(), QStringLiteral("6"));
    auto* life = Find<QComboBox>("cmbExLife");
    life->setCurrentIndex(3);
    EXPECT_EQ(set().ExtraLifePoints, "400");
    // A new set brings the defaults back into the boxes.
    Trigger("mnuNewShd");
    EXPECT_EQ(bonus->currentText(), QStringLiteral("30"));
    EXPECT_EQ(life->currentText(), QStringLiteral("100"));
}

TEST_F(WindowTest, TheLevelListAddsSwitchesAndLosesLevels) {
    auto* levels = Find<QComboBox>("cmbLevels");
    auto choose = [&](int entry) {
        levels->showPopup();
        QAbstractItemView* view = levels->view();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(entry, 0)).center());
    };
    prompts.ExpectYesNo("You only have 1 Level. Should I add another?", true);
    choose(0);
    EXPECT_EQ(levels->view()->verticalScrollBarPolicy(), Qt::ScrollBarAsNeeded);  // 255 levels scroll
    EXPECT_EQ(LevelList(), QStringLiteral("Level 1,Level 2 / Level 1"));
    Click(Find("cmdAddLev"));
    EXPECT_EQ(Text("lblLevel"), QStringLiteral("Number of Levels: 3"));

    prompts.ExpectMessage("Level #1 has no Last Blocks.");
    choose(2);
    EXPECT_EQ(set().CurrentLevel, 3);
    EXPECT_EQ(LevelList(), QStringLiteral("Level 1,Level 2,Level 3 / Level 3"));

    // The last level goes without a question.
    Click(Find("cmdLoseLev"));
    EXPECT_EQ(LevelList(), QStringLiteral("Level 1,Level 2 / Level 2"));
    EXPECT_EQ(Text("lblLevel"), QStringLiteral("Number of Levels: 2"));
}

TEST_F(WindowTest, StartReadsTheLastFolderAndClosingWritesItAfterAsking) {
    EXPECT_EQ(window->editor().lastFolder(), PathBytes(AssetsFolder()));  // no settings yet: the program's folder
    {
        QFile ini(IniPath());
        ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("/some/where/\r\n");
    }
    Open(Screen96(), AssetsFolder());
    EXPECT_EQ(window->editor().lastFolder(), "/some/where/");
    QFile::remove(IniPath());

    prompts.ExpectYesNoCancel("Save before quiting?", Answer::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(QFile::exists(IniPath()));

    prompts.ExpectYesNoCancel("Save before quiting?", Answer::No);
    Trigger("mnuExit");
    EXPECT_FALSE(window->isVisible());
    QFile ini(IniPath());
    ASSERT_TRUE(ini.open(QIODevice::ReadOnly));
    EXPECT_EQ(ini.readAll(), QByteArray("/some/where/\r\n"));
}

TEST_F(WindowTest, PicturesAreReadOncePerLayoutAndMissingOnesAreDrawnWithoutAWord) {
    for (int code = 0; code < 16; ++code) EXPECT_FALSE(window->pictures().IsDrawnTile(code)) << code;
    const qint64 before = window->paletteButton(3)->picture().cacheKey();
    Choose(1);
    ClickCell(0);
    EXPECT_EQ(window->paletteButton(3)->picture().cacheKey(), before);
    Trigger("mnuNewShd");
    EXPECT_NE(window->paletteButton(3)->picture().cacheKey(), before);

    QTemporaryDir empty;
    Open(Screen96(), empty.path());  // the scripted prompts fail on any message
    for (int code = 0; code < 16; ++code) EXPECT_TRUE(window->pictures().IsDrawnTile(code)) << code;
    EXPECT_EQ(window->paletteButton(11)->picture().toImage(), BlockPictures::Tile(QStringLiteral("B")).toImage());
    EXPECT_TRUE(CellShows(0, 0));
}

}  // namespace
}  // namespace shd::gui::test
