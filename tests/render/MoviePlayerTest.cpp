#include "render/MoviePlayer.h"

#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace velmor::testing {
namespace {

/// Runs the player a millisecond at a time and notes when it drew which frame.
struct CRun {
    std::vector<Milliseconds> times;
    std::vector<int> frames;
    int soundStarts = 0;
    int warnings = 0;

    CRun(CMoviePlayer& player, Milliseconds from, Milliseconds to, Milliseconds step = 1) {
        for (Milliseconds now = from; now <= to && player.IsPlaying(); now += step) {
            const CMoviePlayer::CPass pass = player.Pass(now);
            soundStarts += pass.startSound;
            warnings += pass.warn;
            if (pass.draw) {
                times.push_back(now);
                frames.push_back(*pass.draw);
            }
        }
    }
};

} // namespace

TEST(MoviePlayerTest, PeriodsAreWholeMilliseconds) {
    EXPECT_EQ(CPlaybackTiming(12).Period(), 83);
    EXPECT_EQ(CPlaybackTiming(25).Period(), 40);
    EXPECT_EQ(CPlaybackTiming(30).Period(), 33);
}

TEST(MoviePlayerTest, DrawsAFrameAPeriodAndStopsAtTheFirstAfterTheLast) {
    CMoviePlayer player(5, 25, true);
    player.Play(1000);
    const CRun run(player, 1000, 3000);
    EXPECT_EQ(run.frames, (std::vector{0, 1, 2, 3, 4}));
    EXPECT_EQ(run.times, (std::vector<Milliseconds>{1001, 1041, 1081, 1121, 1161}));
    EXPECT_EQ(run.soundStarts, 1);
    EXPECT_FALSE(player.IsPlaying());
    EXPECT_EQ(player.CurrentFrame(), 0);
}

TEST(MoviePlayerTest, ALoopStartsTheSoundAtEachFirstFrameAndAMiddleStartWaitsForIt) {
    CMoviePlayer player(4, 25, true);
    player.SetLoop(true);
    player.GoTo(2);
    player.Play(0);
    const CRun middle(player, 0, 60);
    EXPECT_EQ(middle.frames, (std::vector{2, 3}));
    const CRun wrapped(player, 61, 400);
    EXPECT_EQ(middle.soundStarts + wrapped.soundStarts, 3) << "at 80, 240 and 400 ms";
    EXPECT_TRUE(player.IsPlaying());
    EXPECT_EQ(player.Timing().NextDue(), 401);
    player.GoTo(0);
    EXPECT_TRUE(player.Pass(400).startSound) << "whoever goes there while it plays hears it too";
    player.Stop();
    EXPECT_FALSE(player.Pass(401).draw.has_value());
}

TEST(MoviePlayerTest, SingleStepsStayInside) {
    CMoviePlayer player(3, 25, false);
    player.Previous();
    EXPECT_EQ(player.CurrentFrame(), 0);
    for (int i = 0; i < 5; ++i)
        player.Next();
    EXPECT_EQ(player.CurrentFrame(), 2);
    player.GoTo(-7);
    EXPECT_EQ(player.CurrentFrame(), 0);
}

TEST(MoviePlayerTest, LateFramesAreNeitherSkippedNorMadeUpForInOnePass) {
    CMoviePlayer player(100, 25, false);
    player.Play(0);
    CRun(player, 0, 1);
    // Two seconds of nothing: the frames that are due come one a pass.
    const CRun late(player, 2000, 2004);
    EXPECT_EQ(late.frames, (std::vector{1, 2, 3, 4, 5}));
}

TEST(MoviePlayerTest, FortySlowFramesWarnOnceAndGoodOnesForgive) {
    CPlaybackTiming timing(25);
    timing.Start(0);
    Milliseconds now = 0;
    int warnings = 0;
    const auto draw = [&](int frames, Milliseconds interval) {
        for (int i = 0; i < frames; ++i) {
            now += interval;
            EXPECT_TRUE(timing.Step(now));
            warnings += timing.IsTimeToWarn();
        }
    };
    draw(6, 41);
    EXPECT_TRUE(timing.IsOnRate());
    draw(39, 60);
    EXPECT_FALSE(timing.IsOnRate());
    EXPECT_EQ(warnings, 0);
    draw(1, 60);
    EXPECT_EQ(warnings, 1);
    draw(100, 60);
    EXPECT_EQ(warnings, 1);
    draw(20, 40);
    EXPECT_TRUE(timing.IsOnRate());
    draw(60, 60);
    EXPECT_EQ(warnings, 2);
}

TEST(MoviePlayerTest, CatchingUpAfterTheWarningDoesNotWarnAgain) {
    CPlaybackTiming timing(25);
    timing.Start(0);
    Milliseconds now = 0;
    int warnings = 0;
    const auto draw = [&](int frames, Milliseconds interval) {
        for (int i = 0; i < frames; ++i) {
            now += interval;
            EXPECT_TRUE(timing.Step(now));
            warnings += timing.IsTimeToWarn();
        }
    };
    draw(40, 70);
    EXPECT_EQ(warnings, 1);
    draw(25, 1); // what is due all the same comes one a pass, far too fast
    EXPECT_GT(timing.MeasuredRate(), 26);
    EXPECT_EQ(warnings, 1);
    draw(5, 200);
    EXPECT_EQ(warnings, 1);
}

TEST(MoviePlayerTest, AnchorsAnewWithoutAJumpInTheMeasuredRate) {
    CPlaybackTiming timing(25);
    timing.Start(0);
    for (Milliseconds now = 0; now < 60000; ++now) {
        timing.Step(now);
        ASSERT_TRUE(timing.IsOnRate()) << now << ": " << timing.MeasuredRate();
    }
}

TEST(MoviePlayerTest, PictureStaysWithTheSoundForAMinuteAtEveryRate) {
    for (const double rate : {12.0, 15.0, 24.0, 25.0, 29.97, 30.0, 60.0}) {
        CMoviePlayer player(static_cast<int>(rate * 60), rate, true);
        CSoundClock clock(rate, player.Timing().Period());
        constexpr double deviceSpeed = 1.0005; // a device whose second is shorter than ours
        constexpr Milliseconds deviceDelay = 120;
        constexpr Milliseconds portion = 23; // the device counts in these
        player.Play(clock.Now(0));
        double furthest = 0;
        for (Milliseconds wall = 0; wall < 59000; wall += 2) {
            const double heard = static_cast<double>(std::max<Milliseconds>(wall - deviceDelay, 0)) * deviceSpeed;
            const double reported = std::floor(heard / portion) * portion;
            clock.Follow(wall, reported / 1000);
            const CMoviePlayer::CPass pass = player.Pass(clock.Now(wall));
            if (pass.startSound)
                clock.StartSound(wall);
            if (pass.draw && *pass.draw > 0)
                furthest = std::max(furthest, std::abs(*pass.draw * 1000 / rate - heard));
        }
        EXPECT_GT(player.CurrentFrame(), rate * 58) << rate;
        EXPECT_LT(furthest, 40) << "milliseconds at " << rate << " frames a second";
    }
}

TEST(MoviePlayerTest, TheSoundClockNeverGoesBackAndGoesOnAfterTheSound) {
    CSoundClock clock(25, 40);
    clock.StartSound(0);
    Milliseconds last = 0;
    for (Milliseconds wall = 0; wall < 500; wall += 7) {
        clock.Follow(wall, 0); // a device that does not start
        EXPECT_GE(clock.Now(wall), last);
        last = clock.Now(wall);
    }
    EXPECT_LE(last, CSoundClock::tolerance + 7);
    clock.EndSound();
    const Milliseconds before = clock.Now(500);
    EXPECT_NEAR(static_cast<double>(clock.Now(1500) - before), 1000, 2);
}

} // namespace velmor::testing
