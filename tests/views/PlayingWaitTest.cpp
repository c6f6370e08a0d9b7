#include "views/prompter/PlayingWait.h"

#include "qt/Patience.h"
#include "views/prompter/QtPrompter.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>
#include <utility>

namespace velmor::testing {
namespace {

/// A window that counts what reaches it.
class CWindow : public QMainWindow {
public:
    int presses = 0;
    int releases = 0;
    int closes = 0;

protected:
    void keyPressEvent(QKeyEvent*) override { ++presses; }
    void keyReleaseEvent(QKeyEvent*) override { ++releases; }
    void closeEvent(QCloseEvent*) override { ++closes; }
};

class CPlayingWaitTest : public ::testing::Test {
protected:
    CPlayingWaitTest() {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        prompter.SetParent(window);
    }
    /// Waits while `meanwhile` happens; a wait that does not end is ended, and fails.
    void Wait(const std::function<void()>& meanwhile) {
        QTimer::singleShot(0, &window, meanwhile);
        QTimer::singleShot(20000, &window, [this] { gaveUp = true; });
        prompter.WaitWhilePlaying("Playing Sound...     Press any key to stop",
                                  [this] { return !isOver && !gaveUp; });
        EXPECT_FALSE(gaveUp);
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    }

    CWindow window;
    CQtPrompter prompter;
    bool isOver = false;
    bool gaveUp = false;
};

TEST_F(CPlayingWaitTest, EndsWithTheSoundAndKeepsTheMouseOutMeanwhile) {
    auto* button = new QPushButton(&window);
    button->show();
    int clicks = 0;
    QObject::connect(button, &QPushButton::clicked, &window, [&] { ++clicks; });
    Wait([&] {
        EXPECT_EQ(window.statusBar()->currentMessage(), "Playing Sound...     Press any key to stop");
        EXPECT_NE(QApplication::overrideCursor(), nullptr);
        QTest::mouseClick(button, Qt::LeftButton);
        isOver = true;
    });
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    prompter.ShowStatus("Stopped.");
    EXPECT_EQ(window.statusBar()->currentMessage(), "Stopped.");
}

TEST_F(CPlayingWaitTest, TheKeyThatEndsItDoesNothingElse) {
    QAction action;
    action.setShortcut(Qt::Key_F5);
    window.addAction(&action);
    int triggered = 0;
    QObject::connect(&action, &QAction::triggered, &window, [&] { ++triggered; });
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_F5}) {
        Wait([&] { QTest::keyPress(&window, key); });
        QKeyEvent repetition(QEvent::KeyPress, key, Qt::NoModifier, {}, true);
        QApplication::sendEvent(&window, &repetition);
        QTest::keyRelease(&window, key);
    }
    EXPECT_EQ(window.presses + window.releases + triggered, 0);
    QTest::keyClick(&window, Qt::Key_Space);
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(window.presses, 1);
    EXPECT_GE(window.releases, 1);
    EXPECT_EQ(triggered, 1);
}

TEST_F(CPlayingWaitTest, AReleaseThatNeverComesCostsNoFurtherKey) {
    Wait([&] { QTest::keyPress(&window, Qt::Key_Space); });
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(window.presses, 1);
    EXPECT_EQ(window.releases, 1);
}

TEST_F(CPlayingWaitTest, ClosingTheWindowEndsItFirst) {
    int closesAtEnd = -1;
    Wait([&] { window.close(); });
    closesAtEnd = window.closes;
    EXPECT_EQ(closesAtEnd, 0);
    EXPECT_TRUE(WaitFor([&] { return !window.isVisible(); }));
    EXPECT_EQ(window.closes, 1);
}

TEST_F(CPlayingWaitTest, OneInsideAnotherEndsAlone) {
    bool innerPlays = true;
    Wait([&] {
        QTimer::singleShot(0, &window, [&] { QTest::keyClick(&window, Qt::Key_Space); });
        prompter.WaitWhilePlaying("inner", [&] { return !gaveUp; });
        innerPlays = false;
        EXPECT_NE(QApplication::overrideCursor(), nullptr) << "the outer one still waits";
        isOver = true;
    });
    EXPECT_FALSE(innerPlays);
    EXPECT_EQ(window.presses, 0);
}

TEST(PrompterStatusTest, WithoutAMainWindowThereIsNoStatus) {
    QWidget plain;
    CQtPrompter prompter(plain);
    prompter.ShowStatus("Stopped.");
    EXPECT_TRUE(plain.findChildren<QStatusBar*>().isEmpty());
}

} // namespace
} // namespace velmor::testing
