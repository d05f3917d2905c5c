// The main window laid out at every size from a small laptop's to a 4K
// screen's, with the fonts of the desktop's text scaling, for both games:
// every control is whole, inside the window and clear of every other, and
// the grid fits the room that is left. Each run of this program has one
// scale factor, which Qt takes from the environment at start-up; CTest runs
// it once for each.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTest>

#include "gui/Text.h"
#include "gui/Overview.h"
#include "gui/Widgets.h"
#include "gui/MainWindow.h"
#include "support/ScriptedPrompts.h"
#include "support/Support.h"

namespace shd::gui {
namespace {

struct Case {
    QSize window;
    double fontScale;  // the desktop's text scaling
    bool tiltbash;
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.window.width() << "x" << c.window.height() << ", text at " << c.fontScale * 100 << "%, "
         << (c.tiltbash ? "Tiltbash" : "Shardles");
}

std::string Name(const testing::TestParamInfo<Case>& info) {
    const Case& c = info.param;
    return std::to_string(c.window.width()) + "x" + std::to_string(c.window.height()) + "_font" +
           std::to_string(static_cast<int>(c.fontScale * 100)) + (c.tiltbash ? "_Tiltbash" : "_Shardles");
}

// What a user sees and uses: the controls, not the containers they sit in.
bool IsControl(const QWidget* w) {
    if (qobject_cast<const QComboBox*>(w->parentWidget())) return false;  // a combo box's own parts
    if (qobject_cast<const QScrollBar*>(w)) return false;                  // the grid view's, checked with it
    return qobject_cast<const QLabel*>(w) || qobject_cast<const QAbstractButton*>(w) ||
           qobject_cast<const QLineEdit*>(w) || qobject_cast<const QComboBox*>(w) ||
           qobject_cast<const GridView*>(w) || qobject_cast<const QMenuBar*>(w) ||
           qobject_cast<const LevelOverview*>(w);
}

class LayoutTest : public testing::TestWithParam<Case> {};

TEST_P(LayoutTest, EveryControlIsWholeAndClearOfTheOthersAndTheGridFitsWhatIsLeft) {
    const Case& c = GetParam();
    const QFont normal = QApplication::font();
    QFont font = normal;
    font.setPointSizeF(normal.pointSizeF() * c.fontScale);
    QApplication::setFont(font);

    test::TempDir dir;
    test::ScriptedPrompts prompts;
    MainWindow window(&prompts);
    window.resize(c.window);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.Start(PathText(dir / "info.ini"), QStringLiteral(ASSETS_DIR), {}, PathText(dir / "recent.txt"));
    if (c.tiltbash) window.findChild<QAction*>(QStringLiteral("newTiltbash"))->trigger();
    QApplication::processEvents();
    ASSERT_EQ(window.size(), c.window) << "the window cannot be made this small";

    std::vector<std::pair<QWidget*, QRect>> controls;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisible() || !IsControl(w)) continue;
        const QRect place(w->mapTo(&window, QPoint(0, 0)), w->size());
        const QString name = w->objectName().isEmpty() ? QString::fromLatin1(w->metaObject()->className()) : w->objectName();
        EXPECT_TRUE(window.rect().contains(place)) << name.toStdString() << " lies outside the window";
        // Nothing is squeezed below what it needs to show itself whole. (The
        // dock's own title buttons Qt sizes to the title's height itself.)
        QSize needs = qobject_cast<QLabel*>(w) ? w->sizeHint() : w->minimumSizeHint();
        if (name.startsWith(QStringLiteral("qt_dockwidget_"))) needs = {};
        EXPECT_TRUE(w->width() >= needs.width() && w->height() >= needs.height())
            << name.toStdString() << " is cut off: " << w->width() << "x" << w->height() << " for " << needs.width()
            << "x" << needs.height();
        for (const auto& [other, otherPlace] : controls) {
            if (w->isAncestorOf(other) || other->isAncestorOf(w)) continue;
            EXPECT_FALSE(place.intersects(otherPlace)) << name.toStdString() << " covers " << other->objectName().toStdString();
        }
        controls.emplace_back(w, place);
    }
    EXPECT_GE(controls.size(), c.tiltbash ? 25u : 33u);

    // The grid: at the largest whole multiple that fits its room, inside it, without scrolling.
    const GridView* view = window.gridView();
    const PictureGrid* grid = window.grid();
    EXPECT_GE(grid->zoom(), 1);
    EXPECT_EQ(grid->zoom(), view->fitZoom());
    EXPECT_TRUE(view->viewport()->rect().contains(QRect(grid->pos(), grid->size())));
    const QSize room = view->viewport()->size(), one = view->minimumSizeHint();
    EXPECT_TRUE(grid->width() + one.width() > room.width() || grid->height() + one.height() > room.height())
        << "one more multiple would fit";
    QApplication::setFont(normal);
}

std::vector<Case> Cases() {
    std::vector<Case> cases;
    for (const QSize size : {QSize(1024, 768), QSize(1280, 720), QSize(1366, 768), QSize(1920, 1080),
                             QSize(2560, 1440), QSize(3840, 2160)})
        for (const double font : {1.0, 1.5, 2.0})
            for (const bool tiltbash : {false, true}) cases.push_back({size, font, tiltbash});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(Sizes, LayoutTest, testing::ValuesIn(Cases()), Name);

}  // namespace
}  // namespace shd::gui
