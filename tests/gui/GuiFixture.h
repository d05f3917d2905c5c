// A real main window on the offscreen platform, with scripted prompts and a
// screen of known size and DPI.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "gui/frmDev.h"
#include "gui/Widgets.h"
#include "support/ScriptedPrompts.h"

namespace shd::gui::test {

using shd::test::ScriptedPrompts;

constexpr const char* kSpottedQuestion = "You have a Spotted Shardle without a Changer.  Set Spotted as Unused?";

// The block pictures this project draws, beside the sources.
inline QString AssetsFolder() {
    return QFileInfo(QStringLiteral(__FILE__)).absoluteDir().absoluteFilePath(QStringLiteral("../../assets"));
}

// 1024 x 768 pixels at 96 DPI: 15360 x 11520 twips, 15 twips to a pixel.
inline ScreenMetrics Screen96() { return ScreenMetrics{96, 96, QSize(1024, 768)}; }

class WindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(temp.isValid());
        Open(Screen96(), AssetsFolder());
    }

    void TearDown() override {
        window.reset();
        EXPECT_TRUE(prompts.done()) << "a scripted prompt was never shown";
    }

    void Open(ScreenMetrics metrics, const QString& pictures) {
        window.reset();
        window = std::make_unique<frmDev>(&prompts, metrics);
        window->resize(1024, 740);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->Start(IniPath(), pictures);
    }

    QString IniPath() const { return temp.filePath(QStringLiteral("info.ini")); }

    template <typename T = QWidget>
    T* Find(const char* name) const {
        T* found = window->findChild<T*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    QAction* Action(const char* name) const { return Find<QAction>(name); }
    void Trigger(const char* name) const { Action(name)->trigger(); }
    bool Checked(const char* name) const { return Action(name)->isChecked(); }
    QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
    const LevelSet& set() const { return window->editor().set(); }
    const WindowState& ui() const { return window->editor().ui(); }
    int CellCode(int index) const { return set().Current().Cells[static_cast<std::size_t>(index)]; }
    // The codes of cells `first` to `last` as hexadecimal digits.
    std::string Codes(int first, int last) const {
        std::string codes;
        for (int i = first; i <= last; ++i) codes += "0123456789ABCDEF"[CellCode(i) & 15];
        return codes;
    }
    QWidget* Focused() const { return window->focusWidget(); }

    // The cell's picture is the very pixmap of a palette button.
    bool CellShows(int cell, int code) const {
        return Grid()->picture(cell).cacheKey() == window->paletteButton(code)->picture().cacheKey();
    }

    void Click(QWidget* widget, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(widget, button);
        QTest::mouseRelease(widget, button);
    }
    void Choose(int code) { Click(window->paletteButton(code)); }

    // The grid's cells are drawn by one widget, which takes the mouse and the
    // keys for all of them; a cell is addressed by a point inside it.
    PictureGrid* Grid() const { return window->grid(); }
    QPoint Centre(int cell) const { return Grid()->cellRect(cell).center(); }
    void PressCell(int cell, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(Grid(), button, {}, Centre(cell));
    }
    void ReleaseCell(int cell, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(Grid(), button, {}, Centre(cell));
    }
    void ClickCell(int cell, Qt::MouseButton button = Qt::LeftButton) {
        PressCell(cell, button);
        ReleaseCell(cell, button);
    }

    // A drag as Qt reports it: once pressed, every move and the release go to
    // the grid, wherever the pointer is.
    void Drag(const std::vector<int>& cells, Qt::MouseButton button = Qt::LeftButton) {
        PressCell(cells.front(), button);
        for (std::size_t k = 1; k < cells.size(); ++k) QTest::mouseMove(Grid(), Centre(cells[k]));
        ReleaseCell(cells.back(), button);
    }

    // A list's entries and its shown text, as "Level 1,Level 2 / Level 2".
    QString Items(const char* name) const {
        auto* combo = Find<QComboBox>(name);
        QStringList items;
        for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
        return items.join(QLatin1Char(',')) + QStringLiteral(" / ") + combo->currentText();
    }
    QString LevelList() const { return Items("cmbLevels"); }

    QTemporaryDir temp;
    ScriptedPrompts prompts;
    std::unique_ptr<frmDev> window;
};

}  // namespace shd::gui::test
