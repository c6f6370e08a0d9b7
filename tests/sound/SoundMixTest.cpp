#include "sound/SoundMix.h"

#include "PcmWave.h"
#include "sound/SoundFile.h"
#include "sound/SoundPeaks.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace velmor {
namespace {

using testing::Tone;

TEST(SoundMix, AddsUpWhatOverlapsAtExactFrames) {
    EXPECT_EQ(MixedBefore(1, 24), 2000U);
    EXPECT_EQ(MixedBefore(7, 30), 11200U);
    EXPECT_EQ(MixedBefore(1000, 7), 6857142U) << "no rounding adds up";

    std::map<std::string, std::size_t> loads;
    const auto load = [&](const std::string& name, std::size_t most, std::vector<float>& stereo) {
        EXPECT_TRUE(loads.emplace(name, most).second) << "loaded once";
        stereo = name == "a" ? std::vector<float>(2 * 5000, 0.25F) : std::vector<float>(2 * 100, -0.5F);
        return CStatus();
    };
    CMixedSound mixed;
    ASSERT_TRUE(MixSounds({{2, "a"}, {3, "b"}, {0, "a"}, {99, "a"}, {-1, "b"}, {4, "a"}}, 5, 24, load, mixed));
    EXPECT_EQ(loads, (std::map<std::string, std::size_t>{{"a", 10000}, {"b", 4000}}));
    ASSERT_EQ(mixed.stereo.size(), 2U * 10000);
    EXPECT_EQ(mixed.scale, 1);
    // From 0 to 5000, from 4000 to 9000 and from 8000 to the end; b from 6000 to 6100.
    std::vector<float> plain(20000);
    const auto add = [&](std::size_t from, std::size_t to, float value) {
        for (std::size_t i = 2 * from; i < 2 * to; ++i)
            plain[i] += value;
    };
    add(0, 5000, 0.25F);
    add(4000, 9000, 0.25F);
    add(8000, 10000, 0.25F);
    add(6000, 6100, -0.5F);
    EXPECT_EQ(mixed.stereo, plain);
}

TEST(SoundMix, TrimsAndLevelsAreThoseOfThePlacement) {
    // At 48000 samples a second, 147 of our samples are 320.
    const auto load = [](const std::string&, std::size_t most, std::vector<float>& stereo) {
        EXPECT_EQ(most, 4000U - 2000 + 320 + 640);
        stereo.resize(2 * 1600);
        for (std::size_t i = 0; i < stereo.size(); ++i)
            stereo[i] = static_cast<float>(i) / 3200;
        return CStatus();
    };
    CMixedSound mixed;
    ASSERT_TRUE(MixSounds({{1, "a", 147, 294, -200}}, 2, 24, load, mixed));
    std::vector<float> plain(2 * 4000);
    for (std::size_t i = 0; i < 2 * 640; ++i)
        plain[2 * 2000 + i] = static_cast<float>(2 * 320 + i) / 3200 * 0.1F;
    for (std::size_t i = 0; i < plain.size(); ++i)
        ASSERT_NEAR(mixed.stereo[i], plain[i], 1e-6) << i;
}

TEST(SoundMix, TooLoudIsMadeQuieterAsAWhole) {
    std::vector<float> ramp(2 * 2000);
    for (std::size_t i = 0; i < ramp.size(); ++i)
        ramp[i] = static_cast<float>(i) / 4000;
    ramp[100] = std::nanf("");
    const auto load = [&](const std::string&, std::size_t, std::vector<float>& stereo) {
        stereo = ramp;
        return CStatus();
    };
    CMixedSound mixed;
    ASSERT_TRUE(MixSounds({{0, "a"}, {0, "b"}, {0, "c"}}, 1, 24, load, mixed));
    EXPECT_NEAR(mixed.scale, 1 / (3 * 3999.0 / 4000), 1e-6);
    for (std::size_t i = 0; i < ramp.size(); ++i)
        ASSERT_NEAR(mixed.stereo[i], i == 100 ? 0 : static_cast<double>(i) / 3999, 1e-5) << i;
}

TEST(SoundMix, ASoundThatCannotBeLoadedLeavesNothing) {
    const auto load = [](const std::string& name, std::size_t, std::vector<float>& stereo) {
        stereo = {1, 1};
        return name == "b" ? CStatus::Failure("gone") : CStatus();
    };
    CMixedSound mixed;
    EXPECT_EQ(MixSounds({{0, "a"}, {1, "b"}}, 10, 24, load, mixed).Message(), "gone");
    EXPECT_TRUE(mixed.stereo.empty());
}

TEST(SoundMix, SoundsOfOurFormFollowTheirCurve) {
    std::vector<std::uint8_t> samples(22050);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<std::uint8_t>(
            128 + std::lround(100 * Tone(3000, static_cast<double>(i), samplesPerSecond)));
    const std::vector<float> stereo = StereoOf(samples, 1 << 20);
    ASSERT_EQ(stereo.size(), 2U * 48000);
    double worst = 0;
    for (std::size_t i = 200; i < 47800; ++i) {
        ASSERT_EQ(stereo[2 * i], stereo[2 * i + 1]);
        worst = std::max(worst, std::abs(stereo[2 * i] - 100.0 / 128 * Tone(3000, static_cast<double>(i), 48000)));
    }
    EXPECT_LT(worst, 1.0 / 128) << "a step of our samples";

    EXPECT_EQ(StereoOf(samples, 1000), std::vector<float>(stereo.begin(), stereo.begin() + 2000));
    const std::vector<float> still = StereoOf(std::vector<std::uint8_t>(1000, 192), 1 << 20);
    EXPECT_NEAR(still[2 * 1000], 0.5, 1e-6);
    EXPECT_TRUE(StereoOf({}, 100).empty());
}

TEST(SoundPeaks, AreTheExtremesOfAnyStretch) {
    std::mt19937 random(5);
    std::vector<std::uint8_t> samples(5003);
    std::ranges::generate(samples, [&] { return static_cast<std::uint8_t>(random()); });
    const CSoundPeaks peaks{samples};
    EXPECT_EQ(peaks.Length(), 5003U);
    for (int i = 0; i < 300; ++i) {
        const std::size_t first = random() % 320 * CSoundPeaks::stretch;
        const std::size_t end = std::min<std::size_t>(first + random() % 20 * CSoundPeaks::stretch, 5003);
        CPeak plain;
        if (first < end) {
            const auto [low, high] = std::minmax_element(samples.begin() + static_cast<std::ptrdiff_t>(first),
                                                         samples.begin() + static_cast<std::ptrdiff_t>(end));
            plain = {*low, *high};
        }
        ASSERT_EQ(peaks.Between(first, end), plain) << first << " " << end;
    }
    EXPECT_EQ(peaks.Between(5003, 9000), CPeak());
    EXPECT_EQ(CSoundPeaks().Between(0, 10), CPeak());
}

} // namespace
} // namespace velmor
