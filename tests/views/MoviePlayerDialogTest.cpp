#include "views/player/MoviePlayerDialog.h"

#include "FakeAudio.h"
#include "ScriptedPrompter.h"
#include "TempFolder.h"
#include "qt/ModalDriver.h"
#include "qt/Patience.h"
#include "render/Movie.h"
#include "render/avi/AviWriter.h"
#include "views/player/MovieScreen.h"

#include <QCheckBox>
#include <QImage>
#include <QScreen>
#include <QSlider>
#include <QTest>
#include <QToolButton>

namespace velmor::testing {
namespace {

constexpr int fast = 200; // frames a second

/// Frame by frame another grey, so that it can be seen which one is shown.
int GreyOf(int frame) {
    return 40 + 20 * frame;
}

class CMoviePlayerDialogTest : public ::testing::Test {
protected:
    void Open(int frames, QSize size, int rate = fast, std::size_t soundSamples = 0) {
        CAviWriter writer;
        const Path file = folder / "flipbook.avi";
        ASSERT_TRUE(writer.Open(file, {10000, rate, size.width(), size.height(), 0}));
        ASSERT_TRUE(writer.AddSound(std::vector<std::uint8_t>(soundSamples, 77)));
        const std::size_t bytes = static_cast<std::size_t>(size.width() * size.height()) * 3;
        for (int frame = 0; frame < frames; ++frame)
            ASSERT_TRUE(writer.WriteFrame(
                frame, std::vector<std::uint8_t>(bytes, static_cast<std::uint8_t>(GreyOf(frame % 10)))));
        ASSERT_TRUE(writer.Close());
        ASSERT_TRUE(movie.Open(file, [](const std::string& text) { ADD_FAILURE() << text; }));
    }

    void Run(const std::function<void(QDialog&)>& use) {
        CMoviePlayerDialog dialog(nullptr, movie, prompter, profile);
        WithDialog([&] { dialog.Run(); },
                   [&](QDialog&) {
                       EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
                       use(dialog);
                   });
    }

    static QToolButton& Button(QDialog& dialog, const char* name) { return Child<QToolButton>(dialog, name); }
    static QSlider& Slider(QDialog& dialog) { return Child<QSlider>(dialog, "frames"); }
    static CMovieScreen& Screen(QDialog& dialog) {
        return static_cast<CMovieScreen&>(Child<QFrame>(dialog, "screen"));
    }
    /// The frame that is to be seen; -1 for none.
    static int Shown(QDialog& dialog) {
        CMovieScreen& screen = Screen(dialog);
        const QImage image = screen.grab().toImage();
        const int grey = qGray(image.pixel(image.rect().center()));
        for (int frame = 0; frame < 10; ++frame)
            if (std::abs(grey - GreyOf(frame)) <= 9)
                return frame;
        return -1;
    }
    static bool Plays(QDialog& dialog) { return Button(dialog, "play").accessibleName() == "Stop"; }
    static bool PlaysToTheEnd(QDialog& dialog) {
        Button(dialog, "play").click();
        return WaitFor([&] { return !Plays(dialog); });
    }

    CTempFolder folder;
    CFakeOutput output;
    CMovie movie{output};
    CScriptedPrompter prompter;
    CProfile profile;
};

TEST_F(CMoviePlayerDialogTest, StepsStayInsideTheMovie) {
    Open(4, {64, 48});
    Run([&](QDialog& dialog) {
        const auto isAt = [&](int frame) {
            return dialog.windowTitle() == QString("Velmor Movie Player - FRM : %1").arg(frame + 1) &&
                   Slider(dialog).value() == frame && Shown(dialog) == frame;
        };
        EXPECT_TRUE(isAt(0));
        Button(dialog, "back").click();
        EXPECT_TRUE(isAt(0));
        for (const int frame : {1, 2, 3, 3}) {
            Button(dialog, "forward").click();
            EXPECT_TRUE(isAt(frame)) << frame;
        }
        Slider(dialog).setValue(2);
        EXPECT_TRUE(isAt(2));
        QTest::keyClick(&dialog, Qt::Key_Left);
        EXPECT_TRUE(isAt(1));
        QTest::keyClick(&dialog, Qt::Key_End);
        EXPECT_TRUE(isAt(3));
        QTest::keyClick(&dialog, Qt::Key_Right);
        EXPECT_TRUE(isAt(3));
        QTest::keyClick(&dialog, Qt::Key_Home);
        EXPECT_TRUE(isAt(0));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_FALSE(dialog.isVisible());
    });
}

TEST_F(CMoviePlayerDialogTest, PlaysEveryFrameInOrderAndReturnsToTheFirst) {
    Open(5, {64, 48});
    Run([&](QDialog& dialog) {
        std::vector<QString> titles;
        QObject::connect(&dialog, &QWidget::windowTitleChanged, &dialog,
                         [&](const QString& title) { titles.push_back(title); });
        ASSERT_TRUE(PlaysToTheEnd(dialog));
        EXPECT_TRUE(WaitFor([&] { return dialog.windowTitle() == "Velmor Movie Player - FRM : 1"; }));
        EXPECT_EQ(Slider(dialog).value(), 0);
        int next = 1;
        for (const QString& title : titles)
            if (next <= 5 && title.startsWith(QString("Velmor Movie Player - FRM : %1  FPS : ").arg(next)))
                ++next;
        EXPECT_EQ(next, 6) << "every frame with its rate, in order";
        EXPECT_TRUE(output.played.empty());
    });
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CMoviePlayerDialogTest, LoopsUntilStoppedAndThenStaysWhereItIs) {
    Open(3, {64, 48});
    Run([&](QDialog& dialog) {
        Button(dialog, "loop").click();
        int wraps = 0;
        int last = 0;
        QObject::connect(&dialog, &QWidget::windowTitleChanged, &dialog, [&] {
            wraps += Slider(dialog).value() < last;
            last = Slider(dialog).value();
        });
        QTest::keyClick(&dialog, Qt::Key_Space);
        EXPECT_TRUE(WaitFor([&] { return wraps >= 2; }));
        EXPECT_TRUE(Plays(dialog));
        QTest::keyClick(&dialog, Qt::Key_Space);
        EXPECT_FALSE(Plays(dialog));
        const int stoppedAt = Slider(dialog).value();
        EXPECT_EQ(Shown(dialog), stoppedAt);
        EXPECT_EQ(dialog.windowTitle(), QString("Velmor Movie Player - FRM : %1").arg(stoppedAt + 1));
        EXPECT_FALSE(QTest::qWaitFor([&] { return Slider(dialog).value() != stoppedAt; }, 50));
    });
}

TEST_F(CMoviePlayerDialogTest, TheSoundStartsAtFrameOneOnlyAndEndsWithStop) {
    Open(5, {64, 48}, fast, 400000);
    output.step = 40;
    Run([&](QDialog& dialog) {
        Slider(dialog).setValue(2);
        ASSERT_TRUE(PlaysToTheEnd(dialog));
        EXPECT_TRUE(output.played.empty()) << "from the middle it is silent";
        ASSERT_TRUE(PlaysToTheEnd(dialog));
        EXPECT_EQ(output.played.size(), 1u);
        EXPECT_TRUE(movie.IsSoundPlaying()) << "what lies below the last frame is heard";
        Button(dialog, "loop").click();
        Button(dialog, "play").click();
        EXPECT_TRUE(WaitFor([&] { return output.played.size() >= 4; }));
        Button(dialog, "play").click();
        EXPECT_FALSE(movie.IsSoundPlaying());
        EXPECT_EQ(output.played.front().size(), 400000u);
    });
}

TEST_F(CMoviePlayerDialogTest, ASoundThatFailsOrEndsEarlyDoesNotHoldThePicture) {
    Open(5, {64, 48}, fast, 100);
    Run([&](QDialog& dialog) {
        EXPECT_TRUE(PlaysToTheEnd(dialog));
        EXPECT_EQ(output.played.size(), 1u);
        output.plays = false;
        EXPECT_TRUE(PlaysToTheEnd(dialog));
    });
    EXPECT_EQ(prompter.messages, std::vector<std::string>{"Could not write wave header"});
}

TEST_F(CMoviePlayerDialogTest, SaysOnceThatItCannotKeepUp) {
    Open(60, {64, 48});
    Run([&](QDialog& dialog) {
        QObject::connect(&dialog, &QWidget::windowTitleChanged, &dialog, [] { QTest::qSleep(10); });
        EXPECT_TRUE(PlaysToTheEnd(dialog));
    });
    ASSERT_EQ(prompter.messages.size(), 1u);
    EXPECT_TRUE(prompter.messages.front().starts_with("Player can not play at the correct frame rate!\n"));
    EXPECT_TRUE(
        prompter.messages.front().ends_with("   5) Lower your screen resolution.\nfor a better frame rate."));
}

TEST_F(CMoviePlayerDialogTest, ClosingWhilePlayingSilencesAndStops) {
    Open(4, {64, 48}, 2, 400000);
    Run([&](QDialog& dialog) {
        Button(dialog, "play").click();
        EXPECT_TRUE(WaitFor([&] { return output.played.size() == 1; }));
        dialog.close();
        EXPECT_FALSE(movie.IsSoundPlaying());
        EXPECT_FALSE(Plays(dialog));
    });
}

TEST_F(CMoviePlayerDialogTest, TheWindowFitsTheMovieAndItsDouble) {
    Open(2, {320, 200});
    Run([&](QDialog& dialog) {
        const auto drawingArea = [&] { return Screen(dialog).contentsRect().size(); };
        const auto isCentred = [&] {
            const QPoint off = dialog.screen()->geometry().center() - dialog.frameGeometry().center();
            const int tolerance = 4; // the window's frame is unknown before it is shown
            return off.manhattanLength() <= tolerance;
        };
        EXPECT_EQ(drawingArea(), QSize(322, 202));
        EXPECT_TRUE(isCentred());
        auto& doubled = Child<QCheckBox>(dialog, "double");
        doubled.click();
        EXPECT_EQ(drawingArea(), QSize(644, 404));
        EXPECT_TRUE(isCentred());
        EXPECT_EQ(Shown(dialog), 0);
        doubled.click();
        EXPECT_EQ(drawingArea(), QSize(322, 202));
    });
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CMoviePlayerDialogTest, LoopAndDoubleSizeComeBackWhereTheyFit) {
    const auto isDoubled = [](QDialog& dialog) { return Child<QCheckBox>(dialog, "double").isChecked(); };
    Open(2, {64, 48});
    Run([&](QDialog& dialog) {
        EXPECT_FALSE(Button(dialog, "loop").isChecked());
        EXPECT_FALSE(isDoubled(dialog));
        Button(dialog, "loop").click();
        Child<QCheckBox>(dialog, "double").click();
    });
    Run([&](QDialog& dialog) {
        EXPECT_TRUE(Button(dialog, "loop").isChecked());
        EXPECT_TRUE(isDoubled(dialog));
        EXPECT_EQ(Screen(dialog).Geometry().FrameArea(), QSize(132, 100));
    });
    Open(2, {QApplication::primaryScreen()->size().width() / 2, 40});
    Run([&](QDialog& dialog) {
        EXPECT_TRUE(Button(dialog, "loop").isChecked());
        EXPECT_FALSE(isDoubled(dialog));
        Button(dialog, "loop").click();
    });
    Open(2, {64, 48});
    Run([&](QDialog& dialog) {
        EXPECT_FALSE(Button(dialog, "loop").isChecked());
        EXPECT_TRUE(isDoubled(dialog)) << "a movie without room for it has not changed the choice";
    });
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CMoviePlayerDialogTest, PageKeysGoTheWayOfTheSlider) {
    Open(30, {64, 48});
    Run([&](QDialog& dialog) {
        for (const auto& [key, frame] : {std::pair(Qt::Key_PageDown, 10), std::pair(Qt::Key_Down, 11),
                                         std::pair(Qt::Key_PageUp, 1), std::pair(Qt::Key_Up, 0)}) {
            QTest::keyClick(&Slider(dialog), key);
            EXPECT_EQ(Slider(dialog).value(), frame);
        }
    });
}

TEST_F(CMoviePlayerDialogTest, RefusesWhatDoesNotFitTheScreen) {
    const QSize screen = QApplication::primaryScreen()->size();
    Open(1, {screen.width() / 2, 40});
    Run([&](QDialog& dialog) {
        const QSize before = dialog.size();
        auto& doubled = Child<QCheckBox>(dialog, "double");
        doubled.click();
        EXPECT_FALSE(doubled.isChecked());
        EXPECT_EQ(dialog.size(), before);
    });
    EXPECT_EQ(prompter.TakeMessages(), std::vector<std::string>{"Zoomed window does not fit to screen!"});

    Open(1, {screen.width(), 40});
    CMoviePlayerDialog(nullptr, movie, prompter, profile).Run();
    EXPECT_EQ(prompter.messages, std::vector<std::string>{
                                     "The movie does not fit in the window! \nPlease prepare at a smaller size or "
                                     "increase your screen resolution."});
}

TEST(PlayerGeometryTest, CentresThePictureInTheAreaButNeverBeyondItsCorner) {
    CPlayerGeometry geometry{{100, 50}};
    EXPECT_EQ(geometry.FrameArea(), QSize(102, 52));
    EXPECT_EQ(geometry.Picture({302, 152}), QRect(101, 51, 100, 50));
    EXPECT_EQ(geometry.Picture({60, 52}), QRect(1, 1, 100, 50));
    EXPECT_EQ(geometry.Window({340, 260}, {320, 180}), QSize(300, 200));
    geometry.doubled = true;
    EXPECT_EQ(geometry.Picture({304, 104}), QRect(52, 2, 200, 100));
    EXPECT_EQ(geometry.Window({400, 300}, {102, 52}), QSize(502, 352));
    EXPECT_TRUE(CanDouble({399, 299}, {800, 600}));
    EXPECT_FALSE(CanDouble({400, 299}, {800, 600}));
    EXPECT_EQ(CentredOn(QRect(100, 0, 800, 600), QSize(400, 700)), QPoint(300, 0));
}

} // namespace
} // namespace velmor::testing
