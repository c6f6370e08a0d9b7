#include "sound/OriginalSound.h"

#include "PcmWave.h"
#include "TempFolder.h"
#include "platform/movie/MovieWriter.h"

#include <cmath>
#include <gtest/gtest.h>

namespace velmor {
namespace {

using testing::PcmWave;
using testing::ReadBytes;
using testing::Tone;
using Bytes = std::vector<std::uint8_t>;

class OriginalSound : public ::testing::Test {
protected:
    std::vector<float> Decode(CSoundReader& reader) {
        std::vector<float> stereo;
        while (reader.Read({48000, 2}, stereo))
            continue;
        EXPECT_TRUE(reader.IsWhole());
        return stereo;
    }
    COriginalSource SourceOf(const Path& file) {
        CSoundReader reader;
        EXPECT_EQ(reader.Open(file), MovieError::None);
        return {file, reader.Form()};
    }

    testing::CTempFolder folder;
    const Bytes samples = {1, 2, 3};
    const Path kept = folder / "a.original";
};

TEST_F(OriginalSound, HeadComesBackAndOthersAreRefused) {
    const COriginalHead head{0x0123456789abcdefULL, ".flac"};
    const auto bytes = WriteOriginalHead(head);
    EXPECT_EQ(ReadOriginalHead(bytes), head);
    EXPECT_EQ((COriginalHead{0, ".eightch"}), ReadOriginalHead(WriteOriginalHead({0, ".eightchars"})));
    EXPECT_FALSE(ReadOriginalHead(std::span(bytes).first(31)));
    for (std::size_t i = 0; i < 16; ++i) {
        auto other = bytes;
        other[i] ^= 1;
        EXPECT_FALSE(ReadOriginalHead(other)) << "the version is part of the signature";
    }
}

TEST_F(OriginalSound, KeepsTheFileAsItCameForItsOwnSamplesAlone) {
    const Path wave = folder / "a.wav";
    testing::WriteBytes(wave, PcmWave(48000, 2, 16, 4800, [](int channel, int sample) {
                            return channel == 0 ? Tone(440, sample, 48000) : -0.5;
                        }));
    ASSERT_TRUE(WriteOriginal(kept, SourceOf(wave), samples));
    const Bytes bytes = ReadBytes(kept);
    EXPECT_EQ(Bytes(bytes.begin() + COriginalHead::size, bytes.end()), ReadBytes(wave));

    CSoundReader reader;
    EXPECT_FALSE(OpenOriginal(kept, Bytes{1, 2, 4}, reader)) << "recorded anew by an older program";
    EXPECT_FALSE(OpenOriginal(wave, samples, reader));
    ASSERT_TRUE(OpenOriginal(kept, samples, reader));
    const std::vector<float> stereo = Decode(reader);
    ASSERT_EQ(stereo.size(), 9600U);
    for (std::size_t i = 0; i < 4800; i += 7) {
        ASSERT_NEAR(stereo[2 * i], Tone(440, static_cast<double>(i), 48000), 1e-4);
        ASSERT_NEAR(stereo[2 * i + 1], -0.5, 1e-4);
    }
    std::filesystem::create_directory(folder / "b.original");
    EXPECT_FALSE(WriteOriginal(folder / "b.original", SourceOf(wave), samples));
    EXPECT_FALSE(WriteOriginal(folder / "none" / "b.original", SourceOf(wave), samples));
}

TEST_F(OriginalSound, OfAMovieKeepsTheSoundAlone) {
    std::vector<float> tone;
    Bytes track;
    for (int i = 0; i < 48000; ++i) {
        tone.push_back(static_cast<float>(0.5 * Tone(440, i, 48000)));
        tone.push_back(0);
        track.push_back(static_cast<std::uint8_t>(128 + std::lround(64 * Tone(440, i, 48000))));
    }
    const auto check = [&](const CMovieFormat& format, const CMovieSoundTrack& sound, const char* extension) {
        const Path movie = folder / std::string("m").append(extension);
        CMovieWriter writer;
        ASSERT_EQ(writer.Open(movie, format, sound), MovieWriteError::None);
        const Bytes picture(64 * 48 * 3, 90);
        for (int i = 0; i < 10; ++i)
            ASSERT_EQ(writer.WriteFrame(i, picture), MovieWriteError::None);
        ASSERT_EQ(writer.Close(10), MovieWriteError::None);

        const COriginalSource source = SourceOf(movie);
        EXPECT_TRUE(source.form.isMovie);
        ASSERT_TRUE(WriteOriginal(kept, source, samples));
        EXPECT_EQ(ReadOriginalHead(ReadBytes(kept)).value().extension, extension);
        CSoundReader reader;
        ASSERT_TRUE(OpenOriginal(kept, samples, reader));
        EXPECT_FALSE(reader.Form().isMovie);
        EXPECT_EQ(reader.Form().coding, source.form.coding);
        const std::vector<float> stereo = Decode(reader);
        ASSERT_NEAR(static_cast<double>(stereo.size()) / 2, 48000, 2048);
        double worst = 0;
        for (std::size_t i = 2000; i < 46000; ++i)
            worst = std::max(worst, std::abs(stereo[2 * i] - 0.5 * Tone(440, static_cast<double>(i), 48000)));
        EXPECT_LT(worst, 0.05) << extension << ": neither shifted nor damped";
    };
    check({MovieContainer::Mp4, "", 64, 48, 10}, {{}, 48000, tone}, ".mov");
    check({MovieContainer::Avi, "mjpeg", 64, 48, 10}, {track, 48000}, ".mka");
}

} // namespace
} // namespace velmor
