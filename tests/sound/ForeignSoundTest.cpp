#include "sound/ForeignSound.h"

#include "PcmWave.h"
#include "TempFolder.h"
#include "sound/SoundFile.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <numeric>
#include <random>

namespace velmor {
namespace {

using testing::PcmWave;
using testing::Tone;
using Bytes = std::vector<std::uint8_t>;

class CCountedProgress final : public IProgress {
public:
    int stopAt = 0; ///< the question at which the user has stopped; 0 for never
    int reports = 0;
    void Report(int, const std::string&) override { ++reports; }
    bool TakeStopRequest() override { return ++m_asked == stopAt; }

private:
    int m_asked = 0;
};

class ForeignSound : public ::testing::Test {
protected:
    Path Write(const std::string& name, const Bytes& bytes) {
        testing::WriteBytes(folder / name, bytes);
        return folder / name;
    }
    CConvertedSound Convert(const Path& file) {
        CSoundReader reader;
        EXPECT_EQ(reader.Open(file), MovieError::None);
        return ConvertSound(reader, progress);
    }

    testing::CTempFolder folder;
    CCountedProgress progress;
};

TEST_F(ForeignSound, IsDescribedForTheQuestion) {
    EXPECT_EQ(DescriptionOf({"flac", 2, 48000, 24, 1, ".flac", false}), "stereo, 48000 Hz, FLAC");
    EXPECT_EQ(DescriptionOf({"pcm_s16le", 1, 44100, 16, 1, ".wav", false}), "mono, 44100 Hz, 16 bit");
    EXPECT_EQ(DescriptionOf({"aac", 6, 48000, 0, 1, ".m4a", true}), "6 channels, 48000 Hz, AAC, of a movie");

    CSoundReader reader;
    const auto silence = [](int, int) { return 0; };
    ASSERT_EQ(reader.Open(Write("a.wav", PcmWave(96000, 2, 24, 9600, silence))), MovieError::None);
    EXPECT_EQ(DescriptionOf(reader.Form()), "stereo, 96000 Hz, 24 bit");
    EXPECT_DOUBLE_EQ(reader.Form().seconds, 0.1);
    EXPECT_FALSE(reader.Form().isMovie);
}

TEST_F(ForeignSound, BothChannelsAreHeardAtTheOneRate) {
    constexpr int rate = 48000;
    const auto leftOnly = [](int channel, int sample) { return channel == 0 ? 0.8 * Tone(500, sample, rate) : 0; };
    const CConvertedSound sound = Convert(Write("a.wav", PcmWave(rate, 2, 16, rate, leftOnly)));
    ASSERT_TRUE(sound.status);
    ASSERT_NEAR(static_cast<double>(sound.samples.size()), samplesPerSecond, 2);
    double worst = 0;
    double sum = 0;
    for (std::size_t i = 200; i < sound.samples.size() - 200; ++i) {
        const double wanted = 128 + 127 * 0.4 * Tone(500, static_cast<double>(i), samplesPerSecond);
        worst = std::max(worst, std::abs(sound.samples[i] - wanted));
        sum += sound.samples[i] - wanted;
    }
    EXPECT_LE(worst, 2.5) << "the dither's one and a half, and the filter's";
    EXPECT_NEAR(sum / static_cast<double>(sound.samples.size()), 0, 0.05);
    EXPECT_GT(progress.reports, 0);
}

TEST_F(ForeignSound, WhatNoSoundOfOursCanShowIsFilteredAway) {
    constexpr int rate = 48000;
    const auto tooHigh = [](int, int sample) { return 0.9 * Tone(15000, sample, rate); };
    const CConvertedSound sound = Convert(Write("a.wav", PcmWave(rate, 1, 16, rate, tooHigh)));
    const auto [low, high] = std::ranges::minmax(std::span(sound.samples).subspan(500, 20000));
    EXPECT_GE(low, 126) << "without a filter it would come back as a tone of 7050 Hz";
    EXPECT_LE(high, 130);
}

TEST_F(ForeignSound, OwnFormRoundsWithoutBiasAndCutsNothingOff) {
    std::vector<float> samples(20000, 0.3F / 127);
    const Bytes faint = InOwnForm(samples);
    EXPECT_NEAR(std::accumulate(faint.begin(), faint.end(), 0.0) / 20000, 128.3, 0.01)
        << "less than a step is heard all the same";
    EXPECT_EQ(InOwnForm(samples), faint);
    EXPECT_EQ(InOwnForm(std::vector<float>(100)), Bytes(100, 128)) << "silence has no noise";

    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = 3.0F * static_cast<float>(i) / 20000;
    const Bytes loud = InOwnForm(samples);
    for (std::size_t i = 0; i < samples.size(); i += 50)
        ASSERT_NEAR(loud[i], 128 + 127.0 * static_cast<double>(i) / 20000, 1.6);
    const float notANumber = std::nanf("");
    EXPECT_EQ(InOwnForm(std::vector<float>{notANumber, INFINITY}), Bytes(2, 128));
}

TEST_F(ForeignSound, CanBeStopped) {
    const Path file = Write("a.wav", PcmWave(48000, 1, 16, 96000, [](int, int) { return 0.5; }));
    progress.stopAt = 2;
    const CConvertedSound sound = Convert(file);
    EXPECT_TRUE(sound.stopped);
    EXPECT_TRUE(sound.status);
    EXPECT_TRUE(sound.samples.empty());
}

TEST_F(ForeignSound, HostileFilesAreRefusedOrCut) {
    CSoundReader reader;
    EXPECT_EQ(reader.Open(folder / "none.wav"), MovieError::FileOpen);
    EXPECT_EQ(reader.Open(folder.Path()), MovieError::FileOpen);
    // A play list would have other files read, from anywhere.
    const Path tone = Write("tone.wav", PcmWave(48000, 1, 16, 4800, [](int, int) { return 0.5; }));
    const std::string list =
        "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + tone.string() + "\n#EXT-X-ENDLIST\n";
    EXPECT_EQ(reader.Open(Write("list.m3u8", {list.begin(), list.end()})), MovieError::BadFormat);
    EXPECT_EQ(reader.Open(Write("zeros.mp3", Bytes(100000, 0))), MovieError::BadFormat);

    const Bytes whole = PcmWave(48000, 2, 16, 4800, [](int, int sample) { return Tone(440, sample, 48000); });
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        Bytes damaged(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(random() % whole.size()));
        for (int k = 0; k < 8 && !damaged.empty(); ++k)
            damaged[random() % std::min<std::size_t>(damaged.size(), 60)] = static_cast<std::uint8_t>(random());
        CSoundReader other;
        if (other.Open(Write("damaged.wav", damaged)) != MovieError::None)
            continue;
        const CConvertedSound sound = ConvertSound(other, progress);
        EXPECT_EQ(static_cast<bool>(sound.status), !sound.samples.empty()) << i;
        EXPECT_LE(sound.samples.size(), 22050U * 60) << i;
    }
}

} // namespace
} // namespace velmor
