// A real main window on the offscreen platform, with scripted prompts and a
// screen of known size and DPI.
#pragma once

#include <gtest/gtest.h>

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
    const LevelSet& set() const { return window->editor().set(); }
    const WindowState& ui() const { return window->editor().ui(); }

    // The cell's picture is the very pixmap of a palette button.
    bool CellShows(int cell, int code) const {
        return window->cell(cell)->picture().cacheKey() == window->paletteButton(code)->picture().cacheKey();
    }

    void Click(QWidget* widget, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(widget, button);
        QTest::mouseRelease(widget, button);
    }

    QTemporaryDir temp;
    ScriptedPrompts prompts;
    std::unique_ptr<frmDev> window;
};

}  // namespace shd::gui::test
