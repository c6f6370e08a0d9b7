#include "render/preview/PreviewPlayer.h"
#include "render/preview/PreviewClock.h"
#include "render/preview/PreviewStretch.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numeric>

namespace velmor {
namespace {

bool Always(int) {
    return true;
}
bool Never(int) {
    return false;
}

TEST(PreviewPlayer, AFrameIsShownOnceAndOnlyWhileItIsDue) {
    CPreviewPlayer player({10, 14}, 11, false);
    EXPECT_EQ(player.Pass(0.0, Always).show, 11);
    EXPECT_EQ(player.Pass(0.9, Always).show, std::nullopt);
    EXPECT_EQ(player.Pass(1.1, Never).show, std::nullopt);
    EXPECT_EQ(player.Pass(1.9, Always).show, 12) << "late, and still in its time";
    EXPECT_EQ(player.Pass(2.5, Never).show, std::nullopt);
    EXPECT_EQ(player.Dropped(), 0);
    EXPECT_EQ(player.Pass(3.0, Always).show, 14);
    EXPECT_EQ(player.Dropped(), 1);
    EXPECT_FALSE(player.Pass(3.99, Always).hasEnded);
    EXPECT_TRUE(player.Pass(4.0, Always).hasEnded);
    EXPECT_EQ(player.Frame(), 14);
    EXPECT_EQ(player.Dropped(), 1);
}

TEST(PreviewPlayer, WhatAStandstillPassedOverIsDropped) {
    CPreviewPlayer player({0, 9}, 0, true);
    player.Pass(0, Always);
    EXPECT_EQ(player.Pass(24.5, Always).show, 4);
    EXPECT_EQ(player.Dropped(), 23);
    CPreviewPlayer ending({0, 9}, 0, false);
    EXPECT_TRUE(ending.Pass(1000, Never).hasEnded);
    EXPECT_EQ(ending.Dropped(), 10);
}

TEST(PreviewPlayer, WhatComesIsToldInTheOrderInWhichItIsDue) {
    CPreviewPlayer once({2, 6}, 4, false);
    EXPECT_EQ(once.ToCome(0, 10), (std::vector{4, 5, 6}));
    EXPECT_EQ(once.ToCome(1, 1), (std::vector{5}));
    EXPECT_TRUE(once.ToCome(3, 10).empty());
    CPreviewPlayer again({2, 6}, 4, true);
    again.Pass(3, Always);
    EXPECT_EQ(again.ToCome(0, 10), (std::vector{2, 3, 4, 5, 6}));
    EXPECT_EQ(again.ToCome(2, 4), (std::vector{4, 5, 6, 2}))
        << "what comes too late now is there in the next round";
}

// A device that counts in portions, and whose clock is not the wall's.
TEST(PreviewClock, PictureAndSoundAreWithinHalfAFrameAfterTenMinutes) {
    for (const double drift : {0.998, 1.0, 1.002})
        for (const int rate : {12, 24, 25, 30}) {
            const double framesPerSample = 1.0 / (22050 / rate);
            CPreviewClock clock(rate, 5000, true);
            double worst = 0;
            for (Milliseconds now = 0; now <= 600000; now += 5) {
                const double heard = static_cast<double>(now) * 22.05 * drift;
                const double told = std::floor(heard / 512) * 512;
                clock.Follow(now + 5000, told * framesPerSample);
                worst = std::max(worst, std::abs(clock.Played(now + 5000) - heard * framesPerSample));
            }
            EXPECT_LT(worst, 0.5 * rate / 12) << rate << " frames a second, drift " << drift;
            EXPECT_LT(worst * 1000 / rate, 36) << "milliseconds, portion and tolerance";
        }
}

TEST(PreviewClock, WithoutSoundTheWallClockCounts) {
    CPreviewClock clock(25, 70, false);
    clock.Follow(1070, 3); // nobody plays
    EXPECT_NEAR(clock.Played(70), 0, 1e-9);
    EXPECT_NEAR(clock.Played(1070), 25, 0.03);
    EXPECT_NEAR(clock.Played(3600070), 90000, 0.03);
}

class PreviewStretch : public ::testing::Test {
protected:
    PreviewStretch() { std::iota(track.begin(), track.end(), std::uint8_t{0}); }

    std::vector<std::uint8_t> track = std::vector<std::uint8_t>(95);
};

TEST_F(PreviewStretch, HoldsExactlyTheFrames) {
    EXPECT_EQ(FrameSound(track, 10, 3), std::vector<std::uint8_t>(track.begin() + 30, track.begin() + 40));
    const std::vector<std::uint8_t> last = FrameSound(track, 10, 9);
    ASSERT_EQ(last.size(), 10u);
    EXPECT_EQ(last[4], 94);
    EXPECT_EQ(last[5], 128) << "behind the track there is silence";
    EXPECT_EQ(FrameSound(track, 10, 50), std::vector<std::uint8_t>(10, 128));

    const CPreviewStretch once = StretchOf(track, 10, {{2, 5}, 3, false, 1});
    EXPECT_EQ(once.samples, std::vector<std::uint8_t>(track.begin() + 30, track.begin() + 60));
    EXPECT_DOUBLE_EQ(once.framesPerSample, 0.1);
}

TEST_F(PreviewStretch, RoundsFollowWithoutAGapForMinutes) {
    const CPreviewStretch rounds = StretchOf(track, 10, {{2, 5}, 3, true, 1});
    ASSERT_GT(rounds.samples.size(), 22050u * 60);
    EXPECT_EQ((rounds.samples.size() - 30) % 40, 0u) << "it ends with a round";
    for (std::size_t i = 0; i < rounds.samples.size(); ++i)
        ASSERT_EQ(rounds.samples[i], i < 30 ? 30 + i : 20 + (i - 30) % 40) << i;
}

TEST(PreviewMixStretch, RoundsKeepTheTimeOfTheirFrames) {
    CMixedSound mixed;
    mixed.stereo.resize(48000 * 2 * 2);
    for (std::size_t i = 0; i < mixed.stereo.size(); ++i)
        mixed.stereo[i] = static_cast<float>(i);
    // At 23 frames a second the second frame begins at sample 2086.96 and the third at 4173.9.
    const std::vector<float> second = FrameSound(mixed, 23, 1);
    ASSERT_EQ(second.size(), 2u * (4173 - 2086));
    EXPECT_EQ(second.front(), 2 * 2086);
    const CMixStretch once = StretchOf(mixed, 23, {{1, 22}, 1, false, 1});
    EXPECT_EQ(once.stereo.size(), 2u * (48000 - 2086));
    EXPECT_DOUBLE_EQ(once.framesPerSample, 23 / 48000.0);

    const CMixStretch rounds = StretchOf(mixed, 23, {{1, 1}, 1, true, 1});
    const std::size_t round = 2 * (4173 - 2086);
    ASSERT_GT(rounds.stereo.size(), 48000u * 2 * 60);
    EXPECT_EQ(rounds.stereo.size() % round, 0u);
    EXPECT_EQ(rounds.stereo[1000 * round + 7], second[7]);
    EXPECT_NEAR(static_cast<double>(1000 * round / 2) * rounds.framesPerSample, 1000, 1e-6)
        << "a thousand rounds are a thousand frames, whatever part of a sample each has lost";

    const CMixStretch slow = StretchOf(mixed, 24, {{0, 1}, 0, false, 0.5});
    ASSERT_EQ(slow.stereo.size(), 2u * 8000);
    EXPECT_EQ(slow.stereo[2], 1) << "between the samples of the left channel";
    EXPECT_EQ(slow.stereo[3], 2) << "and of the right";
}

TEST_F(PreviewStretch, AtHalfTheSpeedItIsTwiceAsLong) {
    const CPreviewStretch slow = StretchOf(track, 10, {{2, 5}, 2, false, 0.5});
    ASSERT_EQ(slow.samples.size(), 80u);
    EXPECT_EQ(slow.samples[0], 20);
    EXPECT_EQ(slow.samples[20], 30);
    EXPECT_DOUBLE_EQ(slow.framesPerSample, 0.05);
    EXPECT_EQ(StretchOf(track, 10, {{2, 5}, 2, false, 2}).samples.size(), 20u);
}

} // namespace
} // namespace velmor
