// The main window driven as a user drives it: clicks, keys and menu choices,
// with every prompt scripted.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include "GuiFixture.h"
#include "gui/Text.h"

namespace shd::gui::test {
namespace {

constexpr const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

// Types text as key presses and releases, also characters no key code stands for.
void Type(QWidget* widget, const QString& text) {
    for (const QChar c : text) {
        const int key = c.isLetterOrNumber() && c.unicode() < 128 ? static_cast<int>(c.toUpper().unicode())
                                                                  : static_cast<int>(Qt::Key_unknown);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(c));
        QApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(c));
        QApplication::sendEvent(widget, &release);
    }
}

std::vector<std::pair<QString, QString>> Entries(const QList<QAction*>& actions) {
    std::vector<std::pair<QString, QString>> entries;
    for (QAction* a : actions) entries.emplace_back(a->isSeparator() ? QStringLiteral("-") : a->text(), a->objectName());
    return entries;
}

using Entry = std::pair<QString, QString>;

TEST_F(WindowTest, StartsWithAnEmptyShardlesSetOf80CellsAndPaletteButtonZeroFocused) {
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Rovakmoor's Shardles/Tiltbash Level Editor v3.0"));
    ASSERT_EQ(window->cellCount(), 80);
    for (int i = 0; i < 80; ++i) EXPECT_TRUE(CellShows(i, 0)) << i;
    for (const char* name : {"lblBonus", "cmbBonus", "lblExLife", "cmbExLife", "lblBallx", "txtBallx", "lblBally",
                             "txtBally"})
        EXPECT_TRUE(Find(name)->isVisibleTo(window.get())) << name;
    EXPECT_TRUE(Action("mnuCreate")->isVisible());
    EXPECT_EQ(window->focusWidget(), window->paletteButton(0));
    EXPECT_TRUE(window->paletteButton(0)->isChecked());
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 1"));
    EXPECT_EQ(Find<QLineEdit>("txtTitle")->text(), QStringLiteral("Please Add a Title"));
    EXPECT_EQ(Find<QComboBox>("cmbLevels")->currentText(), QStringLiteral("Level 1"));
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QString());  // a new set does not draw its level
}

TEST_F(WindowTest, WindowAndLabelsAreLightGrey) {
    const QColor grey(192, 192, 192);
    EXPECT_EQ(window->centralWidget()->palette().color(QPalette::Window), grey);
    EXPECT_TRUE(window->centralWidget()->autoFillBackground());
    QLabel* label = Find<QLabel>("lblTitle");
    EXPECT_EQ(label->palette().color(label->backgroundRole()), grey);
    // The picture shows it: a pixel of the background and one inside a label's free space.
    const QImage shot = window->centralWidget()->grab().toImage();
    EXPECT_EQ(shot.pixelColor(5, 5), grey);
    const QPoint inLabel = label->geometry().topRight() + QPoint(-1, 1);
    EXPECT_EQ(shot.pixelColor(inLabel), grey);
}

TEST_F(WindowTest, ControlsHaveTheirCaptionsNamesAndLists) {
    const std::vector<std::pair<const char*, const char*>> labels{
        {"lblTitle", "&Level Name"},
        {"lblLevels", "Current Level/Change Level"},
        {"lblBonus", "&Bonus Clock start number"},
        {"lblExLife", "&Extra Life Point Number:"},
        {"lblBallx", "Ball starts to the &right:"},
        {"lblBally", "Ball starts &down:"},
    };
    for (const auto& [name, caption] : labels) EXPECT_EQ(Find<QLabel>(name)->text(), QString::fromLatin1(caption));
    EXPECT_EQ(Find<QPushButton>("cmdAddLev")->text(), QStringLiteral("Add a Level"));
    EXPECT_EQ(Find<QPushButton>("cmdLoseLev")->text(), QStringLiteral("Lose a  Level"));
    // The "&" of a label moves the focus to its box.
    EXPECT_EQ(Find<QLabel>("lblBallx")->buddy(), Find("txtBallx"));
    EXPECT_EQ(Find<QLabel>("lblBonus")->buddy(), Find("cmbBonus"));

    auto items = [&](const char* name) {
        QStringList list;
        auto* combo = Find<QComboBox>(name);
        EXPECT_TRUE(combo->isEditable()) << name;
        for (int i = 0; i < combo->count(); ++i) list << combo->itemText(i);
        return list;
    };
    EXPECT_EQ(items("cmbBonus"), (QStringList{"30", "60", "90", "120"}));
    EXPECT_EQ(items("cmbExLife"), (QStringList{"100", "200", "300", "400", "500", "600", "700", "800"}));
    EXPECT_EQ(items("cmbLevels"), (QStringList{"Level 1"}));
    EXPECT_EQ(Find<QComboBox>("cmbBonus")->currentText(), QStringLiteral("30"));
    EXPECT_EQ(Find<QComboBox>("cmbExLife")->currentText(), QStringLiteral("100"));
    for (int k = 0; k < 16; ++k) EXPECT_EQ(window->paletteButton(k)->objectName(), QStringLiteral("optBlocks%1").arg(k));
    EXPECT_EQ(window->cell(79)->objectName(), QStringLiteral("pctBox79"));
}

TEST_F(WindowTest, EveryCaptionFitsItsControl) {
    for (QLabel* label : window->centralWidget()->findChildren<QLabel*>()) {
        const QString text = QString(label->text()).remove(QLatin1Char('&'));
        EXPECT_LE(label->fontMetrics().horizontalAdvance(text), label->width()) << text.toStdString();
    }
    for (const char* name : {"cmdAddLev", "cmdLoseLev"}) {
        auto* button = Find<QPushButton>(name);
        EXPECT_LT(button->fontMetrics().horizontalAdvance(button->text()), button->width()) << name;
    }
}

TEST_F(WindowTest, MenusHaveTheirCaptionsNamesAndOrder) {
    EXPECT_EQ(Entries(window->menuBar()->actions()),
              (std::vector<Entry>{{"&File", "mnuFile"},
                                  {"&Edit", "mnuEdit"},
                                  {"&Create", "mnuCreate"},
                                  {"&Tricky", "mnuTrickey"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuEdit")->actions()),
              (std::vector<Entry>{{"&Undo", "mnuUndo"}, {"&Redo", "mnuRedo"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuFile")->actions()),
              (std::vector<Entry>{{"&New", "mnuNew"}, {"&Open", "mnuOpen"}, {"&Save", "mnuSave"}, {"-", "mnu"},
                                  {"E&xit", "mnuExit"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuNew")->actions()),
              (std::vector<Entry>{{"&Shardles File", "mnuNewShd"}, {"&Tiltbash File", "mnuNewTil"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuOpen")->actions()),
              (std::vector<Entry>{{"&My File", "mnuOpenMyFile"},
                                  {"&Old My File", "mnuOpenOld"},
                                  {"&TI-83 List", "mnuOpenList"},
                                  {"&Compiled Code", "mnuOpenCode"},
                                  {"&Source Code", "mnuOpenSource"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuSave")->actions()),
              (std::vector<Entry>{{"&My File", "mnuSaveMyFile"},
                                  {"&TI-83 List", "mnuSaveList"},
                                  {"&Compiled Code", "mnuSaveCode"},
                                  {"&Source Code", "mnuSaveSource"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuCreate")->actions()),
              (std::vector<Entry>{{"&Normal Shardle", "mnuCreateNormShd"}, {"&Changer Shardle", "mnuCreateChangeShd"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuTrickey")->actions()),
              (std::vector<Entry>{{"&Unused Shardles", "mnuUn"},
                                  {"&Shardles Options", "mnuShdOp"},
                                  {"&Special Unused Blocks", "mnuSpecial"},
                                  {"&Reset All", "mnuResetAll"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuUn")->actions()),
              (std::vector<Entry>{
                  {"&Spotted", "mnuSpot"}, {"Center-&line", "mnuCenter"}, {"&Zig-Zag", "mnuZig"}, {"&Custom", "mnuCust"}}));
    EXPECT_EQ(Entries(Find<QMenu>("mnuShdOp")->actions()),
              (std::vector<Entry>{{"Use &Custom Shardles", "mnuCus"},
                                  {"&Use Wrap Around", "mnuWrap"},
                                  {"&Arrow Blocks Are Breakable", "mnuArrow"},
                                  {"&Match # of Locks to # of Blocks", "mnuMatch"},
                                  {"Use &Shardles Debugger", "mnuUse"}}));
}

TEST_F(WindowTest, CheckMarksFollowTheEditor) {
    for (const char* name : {"mnuSpot", "mnuCenter", "mnuZig", "mnuCust", "mnuCus", "mnuWrap", "mnuArrow", "mnuSpecial"})
        EXPECT_FALSE(Action(name)->isChecked()) << name;
    EXPECT_TRUE(Action("mnuUse")->isChecked());
    EXPECT_TRUE(Action("mnuMatch")->isChecked());

    Trigger("mnuSpot");
    EXPECT_TRUE(Action("mnuSpot")->isChecked());
    EXPECT_TRUE(set().Record(1).SpottedUnused);
    // "&Reset All" takes the mark away; only the editor knows that.
    Trigger("mnuResetAll");
    EXPECT_FALSE(Action("mnuSpot")->isChecked());

    // A refused count leaves the entry unchecked, though choosing it would check it.
    prompts.ExpectInput("How many other blocks are not used? Don't count blocks affected by the Flags.", "81");
    Trigger("mnuSpecial");
    EXPECT_FALSE(Action("mnuSpecial")->isChecked());
    prompts.ExpectInput(ScriptedPrompts::kAnyText, "80");
    Trigger("mnuSpecial");
    EXPECT_TRUE(Action("mnuSpecial")->isChecked());
    EXPECT_EQ(set().Record(1).SpecialUnusedCount, 80);

    Trigger("mnuUse");
    EXPECT_FALSE(Action("mnuUse")->isChecked());
    EXPECT_FALSE(set().UseShardlesDebugger);
}

TEST_F(WindowTest, ControlsStandAtTheirTwipPositionsOnA96DpiScreen) {
    // 15 twips to a pixel; edges are rounded, sizes follow from them.
    EXPECT_EQ(Find("lblTitle")->geometry(), QRect(141, 72, 144, 17));
    EXPECT_EQ(Find("txtTitle")->geometry(), QRect(141, 104, 144, 19));
    EXPECT_EQ(Find("cmdLoseLev")->geometry(), QRect(379, 104, 74, 25));
    EXPECT_EQ(Find("cmbExLife")->geometry(), QRect(48, 312, 121, 21));
    EXPECT_EQ(Find("txtBally")->geometry(), QRect(632, 312, 89, 21));
    EXPECT_EQ(window->paletteButton(0)->geometry(), QRect(80, 16, 41, 30));
    EXPECT_EQ(window->paletteButton(15)->geometry(), QRect(695, 16, 41, 30));
    // The grid of a 15360 x 11520 twip screen starts at 5280, 3735; cell 9 at 5880, 4180.
    EXPECT_EQ(window->cell(0)->geometry(), QRect(352, 249, 40, 30));
    EXPECT_EQ(window->cell(9)->geometry(), QRect(392, 279, 40, 29));
    EXPECT_EQ(window->cell(79)->geometry().bottomRight(), QPoint(671, 545));
}

TEST_F(WindowTest, ControlsStandAtTheirTwipPositionsOnA120DpiScreen) {
    Open(ScreenMetrics{120, 120, QSize(1280, 1024)}, AssetsFolder());
    // 12 twips to a pixel.
    EXPECT_EQ(Find("lblTitle")->geometry(), QRect(176, 90, 180, 21));
    EXPECT_EQ(window->paletteButton(1)->geometry(), QRect(151, 20, 52, 37));  // 1815..2430 twips
    // A 15360 x 12288 twip screen: the grid starts at 5280, 6144 - 2225 + 200 = 4119.
    EXPECT_EQ(window->cell(0)->geometry().topLeft(), QPoint(440, 343));
}

TEST_F(WindowTest, TiltbashFileShows64CellsAndHidesTheShardlesControls) {
    Trigger("mnuNewTil");
    ASSERT_EQ(window->cellCount(), 64);
    for (const char* name : {"lblBonus", "cmbBonus", "lblExLife", "cmbExLife", "lblBallx", "txtBallx", "lblBally",
                             "txtBally"})
        EXPECT_FALSE(Find(name)->isVisibleTo(window.get())) << name;
    EXPECT_FALSE(Action("mnuCreate")->isVisible());
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 1"));
    EXPECT_EQ(window->focusWidget(), window->paletteButton(0));
    // 8 rows of 8 cells 660 twips wide from 5040, 4180; the palette 650 wide from 640.
    EXPECT_EQ(window->cell(0)->geometry(), QRect(336, 279, 44, 29));
    EXPECT_EQ(window->cell(63)->geometry().right(), 687);
    EXPECT_EQ(window->paletteButton(0)->geometry(), QRect(43, 16, 43, 30));
    EXPECT_EQ(window->paletteButton(15)->geometry(), QRect(693, 16, 43, 30));

    Trigger("mnuNewShd");
    EXPECT_EQ(window->cellCount(), 80);
    EXPECT_TRUE(Find("txtBallx")->isVisibleTo(window.get()));
    EXPECT_TRUE(Action("mnuCreate")->isVisible());
}

TEST_F(WindowTest, TiltbashCellsShowTheCodesPicturesWithSevenAndEightToElevenSwapped) {
    Trigger("mnuNewTil");
    const QDir assets(AssetsFolder());
    auto same = [](const QPixmap& shown, const QString& file) {
        const QImage expected(file);
        return !expected.isNull() &&
               shown.toImage().convertToFormat(QImage::Format_ARGB32) == expected.convertToFormat(QImage::Format_ARGB32);
    };
    for (int code : {7, 8, 11, 12}) {
        Click(window->paletteButton(code));
        Click(window->cell(code));
        EXPECT_TRUE(CellShows(code, code));
    }
    EXPECT_TRUE(same(window->cell(7)->picture(), assets.filePath("tlblockB.gif")));
    EXPECT_TRUE(same(window->cell(8)->picture(), assets.filePath("tlblock7.gif")));
    EXPECT_TRUE(same(window->cell(11)->picture(), assets.filePath("tlblockA.gif")));
    EXPECT_TRUE(same(window->cell(12)->picture(), assets.filePath("tlblockC.gif")));
    EXPECT_FALSE(same(window->cell(7)->picture(), assets.filePath("tlblock7.gif")));
}

TEST_F(WindowTest, PaintingASpottedShardleAsksAtOnceWithTheCellAlreadyShown) {
    Click(window->paletteButton(2));
    EXPECT_EQ(ui().SelectedBlock, 2);
    EXPECT_TRUE(window->paletteButton(2)->isChecked());
    EXPECT_FALSE(window->paletteButton(0)->isChecked());

    prompts.ExpectYesNo(kSpottedQuestion, false).Then([&] { EXPECT_TRUE(CellShows(21, 2)); });
    Click(window->cell(21));
    EXPECT_EQ(set().Layout(1).Cells[21], 2);
    EXPECT_EQ(set().Record(1).SpottedCount, 1);

    // The right button erases; with no spotted shardle left the debugger has nothing to ask.
    Click(window->cell(21), Qt::RightButton);
    EXPECT_EQ(set().Layout(1).Cells[21], 0);
    EXPECT_TRUE(CellShows(21, 0));
    EXPECT_EQ(set().Record(1).SpottedCount, 0);
}

TEST_F(WindowTest, AYesToTheDebuggerChecksTheEntry) {
    Click(window->paletteButton(2));
    prompts.ExpectYesNo(kSpottedQuestion, true);
    Click(window->cell(0));
    EXPECT_TRUE(Action("mnuSpot")->isChecked());
    EXPECT_TRUE(set().Record(1).SpottedUnused);
}

TEST_F(WindowTest, TheMiddleButtonPaintsNothingButRunsTheDebugger) {
    Click(window->paletteButton(2));
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Click(window->cell(0));
    prompts.ExpectYesNo(kSpottedQuestion, false);
    Click(window->cell(1), Qt::MiddleButton);
    EXPECT_EQ(set().Layout(1).Cells[1], 0);
    EXPECT_TRUE(CellShows(1, 0));
}

TEST_F(WindowTest, APressPaintsItsCellAndOnlyTheReleaseOfThatButtonRunsTheDebugger) {
    Click(window->paletteButton(2));
    // Pressed: the cell is painted at once, and nothing is asked yet.
    QTest::mousePress(window->cell(3), Qt::LeftButton);
    EXPECT_EQ(set().Layout(1).Cells[3], 2);
    EXPECT_TRUE(CellShows(3, 2));
    // A release reported elsewhere without a move in between paints nothing more.
    QTest::mouseRelease(window->cell(3), Qt::RightButton);  // another button: the stroke goes on
    prompts.ExpectYesNo(kSpottedQuestion, false);
    QTest::mouseRelease(window->cell(5), Qt::LeftButton);
    EXPECT_TRUE(prompts.done());
    EXPECT_EQ(set().Layout(1).Cells[5], 0);
    EXPECT_TRUE(CellShows(5, 0));
    EXPECT_EQ(set().Record(1).SpottedCount, 1);
}

TEST_F(WindowTest, RightPressOnATiltbashBackgroundPopsUpTrickyWithoutTheShardlesSubmenus) {
    Trigger("mnuNewTil");
    QWidget* background = window->centralWidget();
    const QPoint empty = background->rect().bottomRight() - QPoint(10, 10);
    ASSERT_EQ(background->childAt(empty), nullptr);
    QTest::mousePress(background, Qt::RightButton, {}, empty);
    QMenu* tricky = window->trickyMenu();
    EXPECT_TRUE(tricky->isVisible());
    EXPECT_FALSE(Action("mnuUn")->isVisible());
    EXPECT_FALSE(Action("mnuShdOp")->isVisible());
    EXPECT_TRUE(Action("mnuSpecial")->isVisible());
    EXPECT_TRUE(Action("mnuResetAll")->isVisible());
    tricky->hide();

    // Only a press on the background changes them: a new Shardles set keeps them hidden ...
    Trigger("mnuNewShd");
    EXPECT_FALSE(Action("mnuUn")->isVisible());
    // ... until the next press, of any button, which pops nothing up unless it is the right one.
    QTest::mousePress(background, Qt::LeftButton, {}, empty);
    QTest::mouseRelease(background, Qt::LeftButton, {}, empty);
    EXPECT_TRUE(Action("mnuUn")->isVisible());
    EXPECT_TRUE(Action("mnuShdOp")->isVisible());
    EXPECT_FALSE(tricky->isVisible());
}

TEST_F(WindowTest, APressOnALabelIsNotAPressOnTheBackground) {
    Trigger("mnuNewTil");
    QLabel* label = Find<QLabel>("lblLevels");
    QTest::mousePress(label, Qt::RightButton);
    EXPECT_FALSE(window->trickyMenu()->isVisible());
    EXPECT_TRUE(Action("mnuUn")->isVisible());  // Form_MouseDown never ran
    QTest::mouseRelease(label, Qt::RightButton);
}

TEST_F(WindowTest, LeftAndRightStepThroughThePaletteWithItsWrapAndNothingElseMovesTheFocus) {
    auto press = [&](Qt::Key key) { QTest::keyClick(window->focusWidget(), key); };
    ASSERT_EQ(window->focusWidget(), window->paletteButton(0));
    press(Qt::Key_Left);
    EXPECT_EQ(ui().SelectedBlock, 14);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(14));
    EXPECT_TRUE(window->paletteButton(14)->isChecked());
    press(Qt::Key_Right);
    EXPECT_EQ(ui().SelectedBlock, 15);
    press(Qt::Key_Right);
    EXPECT_EQ(ui().SelectedBlock, 1);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(1));
    press(Qt::Key_Left);
    EXPECT_EQ(ui().SelectedBlock, 0);
    // Up and Down are no steps here, and Qt does not move among the buttons either.
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    EXPECT_EQ(ui().SelectedBlock, 0);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(0));
    EXPECT_TRUE(window->paletteButton(0)->isChecked());
}

TEST_F(WindowTest, AnyKeyOnAnotherPaletteButtonSendsTheFocusBackToTheChosenOne) {
    Click(window->paletteButton(6));
    window->paletteButton(9)->setFocus();
    QTest::keyClick(window->paletteButton(9), Qt::Key_G);  // not a hexadecimal digit
    EXPECT_EQ(ui().SelectedBlock, 6);
    EXPECT_EQ(window->focusWidget(), window->paletteButton(6));
}

TEST_F(WindowTest, TheTitleIsCutTo20CharactersWithTheCaretAtTheEnd) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->setFocus();
    title->end(false);
    QTest::keyClicks(title, "XYZ");
    EXPECT_EQ(title->text(), QStringLiteral("Please Add a TitleXY"));
    EXPECT_EQ(set().Title, "Please Add a TitleXY");
    EXPECT_EQ(title->cursorPosition(), 20);
    // Typed in the middle, the cut still leaves the caret at the end.
    title->setCursorPosition(6);
    QTest::keyClicks(title, "_");
    EXPECT_EQ(title->text(), QStringLiteral("Please_ Add a TitleX"));
    EXPECT_EQ(title->cursorPosition(), 20);
}

TEST_F(WindowTest, TheTitleIsKeptAsWindows1252WithAQuestionMarkForWhatItLacks) {
    auto* title = Find<QLineEdit>("txtTitle");
    title->selectAll();
    Type(title, QString::fromUtf8("\xE2\x82\xAC" "a\xC4\x89"));  // euro sign, a, c with circumflex
    EXPECT_EQ(set().Title, "\x80" "a?");
    EXPECT_EQ(title->text(), QString::fromUtf8("\xE2\x82\xAC" "a?"));
}

TEST_F(WindowTest, BallBoxesAreCheckedOnKeyUpExceptForTheSixEditingKeys) {
    auto* ballx = Find<QLineEdit>("txtBallx");
    ballx->selectAll();
    QTest::keyClicks(ballx, "95");
    EXPECT_EQ(ballx->text(), QStringLiteral("0"));
    EXPECT_EQ(set().Layout(1).BallX, 0);
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
    EXPECT_EQ(bally->text(), QStringLiteral("62"));
    EXPECT_EQ(set().Layout(1).BallY, 62);
    QTest::keyClicks(bally, "0");
    EXPECT_EQ(bally->text(), QStringLiteral("0"));
}

TEST_F(WindowTest, SettingsListsWriteTheirTextIntoTheSet) {
    auto* bonus = Find<QComboBox>("cmbBonus");
    bonus->lineEdit()->selectAll();
    QTest::keyClicks(bonus->lineEdit(), "45");
    EXPECT_EQ(set().BonusClock, "45");
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
        const QRect item = view->visualRect(view->model()->index(entry, 0));
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, item.center());
    };

    prompts.ExpectYesNo("You only have 1 Level. Should I add another?", true);
    choose(0);
    EXPECT_EQ(levels->count(), 2);
    EXPECT_EQ(set().CurrentLevel, 1);

    Click(Find("cmdAddLev"));
    EXPECT_EQ(levels->count(), 3);
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 3"));

    Find<QLineEdit>("txtBallx")->setText(QStringLiteral("12"));
    QTest::keyClick(Find("txtBallx"), Qt::Key_Up);
    prompts.ExpectMessage("Level #1 has no Last Blocks.");
    choose(2);
    EXPECT_EQ(set().CurrentLevel, 3);
    EXPECT_EQ(levels->currentText(), QStringLiteral("Level 3"));
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QStringLiteral("0"));
    EXPECT_EQ(set().Layout(1).BallX, 12);

    // The last level goes without a question.
    Click(Find("cmdLoseLev"));
    EXPECT_EQ(levels->count(), 2);
    EXPECT_EQ(levels->currentText(), QStringLiteral("Level 2"));
    EXPECT_EQ(Find<QLabel>("lblLevel")->text(), QStringLiteral("Number of Levels: 2"));

    prompts.ExpectMessage("Level #2 has no Last Blocks.");
    choose(0);
    EXPECT_EQ(Find<QLineEdit>("txtBallx")->text(), QStringLiteral("12"));
    prompts.ExpectYesNoCancel("Is this the level to trash? (No trashes the last Level)", Answer::Cancel);
    Click(Find("cmdLoseLev"));
    EXPECT_EQ(levels->count(), 2);
}

TEST_F(WindowTest, CreateOpensThePictureAndStoresItOnOk) {
    prompts.ExpectPicture([](CustomPieceEdit& edit) {
        EXPECT_EQ(edit.kind(), PictureKind::Change);
        edit.Click(9);
        return true;
    });
    Trigger("mnuCreateChangeShd");
    EXPECT_EQ(set().CustomChangerPicture.at(9), 1);
    EXPECT_TRUE(Action("mnuCus")->isChecked());
}

TEST_F(WindowTest, StartReadsTheLastFolderAndClosingWritesItAfterAsking) {
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

TEST_F(WindowTest, AnEmptySettingsFileLeavesTheProgramFolder) {
    EXPECT_EQ(window->editor().lastFolder(), PathBytes(AssetsFolder()));
}

TEST_F(WindowTest, MissingPicturesAreDrawnWithoutAWord) {
    QTemporaryDir empty;
    Open(Screen96(), empty.path());  // the scripted prompts fail on any message
    ASSERT_EQ(window->cellCount(), 80);
    for (int code = 0; code < 16; ++code) {
        EXPECT_TRUE(window->pictures().IsDrawnTile(code)) << code;
        EXPECT_FALSE(window->paletteButton(code)->picture().isNull()) << code;
    }
    EXPECT_NE(window->paletteButton(10)->picture().toImage(), window->paletteButton(11)->picture().toImage());
    EXPECT_TRUE(CellShows(0, 0));
}

TEST_F(WindowTest, ThePicturesAreReadOncePerLayout) {
    for (int code = 0; code < 16; ++code) EXPECT_FALSE(window->pictures().IsDrawnTile(code)) << code;
    const qint64 before = window->paletteButton(3)->picture().cacheKey();
    Click(window->paletteButton(1));
    Click(window->cell(0));
    EXPECT_EQ(window->paletteButton(3)->picture().cacheKey(), before);
    Trigger("mnuNewShd");
    EXPECT_NE(window->paletteButton(3)->picture().cacheKey(), before);
}

}  // namespace
}  // namespace shd::gui::test
