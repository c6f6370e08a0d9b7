#include "platform/movie/AviReader.h"

#include "DecodedMovie.h"
#include "TempFolder.h"
#include "render/avi/AviWriter.h"

#include <gtest/gtest.h>
#include <random>

namespace velmor::testing {
namespace {

constexpr int width = 12;
constexpr int height = 10; // not a multiple of the codec's blocks

using Bytes = std::vector<std::uint8_t>;

/// A frame whose rows and columns all differ: 24-bit, bottom row first.
Bytes Frame(int number) {
    Bytes frame;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (const int value : {y * 24, x * 16, number * 32})
                frame.push_back(static_cast<std::uint8_t>(value));
    return frame;
}

/// What a decoder that is not ours makes of a frame, as the reader hands it over.
Bytes TopFirst(const CDecodedFrame& frame, int codedWidth, int codedHeight) {
    Bytes picture;
    for (int y = codedHeight - 1; y >= codedHeight - height; --y)
        for (int x = 0; x < width; ++x) {
            const std::size_t at = static_cast<std::size_t>(y * codedWidth + x) * 3;
            picture.insert(picture.end(), {frame.pixels[at], frame.pixels[at + 1], frame.pixels[at + 2]});
        }
    return picture;
}

Bytes WithoutFourth(const CMoviePicture& picture) {
    Bytes bytes;
    for (std::size_t i = 0; i < picture.bytes.size(); i += 4)
        bytes.insert(bytes.end(), {picture.bytes[i], picture.bytes[i + 1], picture.bytes[i + 2]});
    return bytes;
}

class CAviReaderTest : public ::testing::Test {
protected:
    /// A movie with frames at the given positions.
    void Write(std::initializer_list<int> positions, std::span<const std::uint8_t> sound = {}) {
        CAviWriter writer;
        ASSERT_TRUE(writer.Open(file, {10000, 25, width, height, 0}));
        ASSERT_TRUE(writer.AddSound(sound));
        for (const int position : positions)
            ASSERT_TRUE(writer.WriteFrame(position, Frame(position)));
        ASSERT_TRUE(writer.Close());
    }

    CTempFolder folder;
    Path file = folder / "movie.avi";
};

} // namespace

TEST_F(CAviReaderTest, EmptySamplesRepeatThePictureBeforeThem) {
    Write({0, 3, 6});
    CAviReader reader;
    ASSERT_EQ(reader.Open(file), MovieError::None);
    EXPECT_EQ(reader.Stream().width, width);
    EXPECT_EQ(reader.Stream().height, height);
    EXPECT_EQ(reader.Stream().rate, 25);
    EXPECT_EQ(reader.Stream().scale, 1);
    EXPECT_EQ(reader.Stream().frameCount, 7);
    EXPECT_FALSE(reader.HasSound());

    const std::optional<CDecodedMovie> expected = DecodeMovie(file);
    ASSERT_TRUE(expected && expected->frames.size() == 3);
    // Onwards, backwards, far and near.
    for (const int position : {0, 1, 2, 3, 4, 5, 6, 5, 2, 0, 6, 3, 1, 1}) {
        CMoviePicture picture;
        ASSERT_TRUE(reader.ReadFrame(position, picture)) << position;
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, height);
        EXPECT_EQ(WithoutFourth(picture), TopFirst(expected->frames[static_cast<std::size_t>(position / 3)],
                                                   expected->width, expected->height))
            << position;
    }
    CMoviePicture picture;
    EXPECT_FALSE(reader.ReadFrame(7, picture));
    EXPECT_FALSE(reader.ReadFrame(-1, picture));
    EXPECT_EQ(picture.width, 0);
}

TEST_F(CAviReaderTest, OurSoundComesBackSampleForSample) {
    Bytes sound(22050);
    std::mt19937 random(7);
    for (std::uint8_t& sample : sound)
        sample = static_cast<std::uint8_t>(random());
    Write({0, 1, 2, 3}, sound);
    CAviReader reader;
    ASSERT_EQ(reader.Open(file), MovieError::None);
    EXPECT_TRUE(reader.HasSound());
    Bytes read;
    EXPECT_EQ(reader.ReadSound(22050, read), MovieError::None);
    EXPECT_EQ(read, sound);
    EXPECT_EQ(reader.ReadSound(11025, read), MovieError::None);
    EXPECT_NEAR(static_cast<double>(read.size()), 11025, 32);
}

TEST_F(CAviReaderTest, WhatIsNoMovieIsToldApart) {
    CAviReader reader;
    EXPECT_EQ(reader.Open(folder / "missing.avi"), MovieError::FileOpen);
    EXPECT_EQ(reader.Open(folder.Path()), MovieError::FileOpen);
    WriteBytes(file, Bytes{});
    EXPECT_NE(reader.Open(file), MovieError::None);
    WriteBytes(file, Bytes(5000, 'x'));
    EXPECT_NE(reader.Open(file), MovieError::None);
    CMoviePicture picture;
    EXPECT_FALSE(reader.ReadFrame(0, picture));
    EXPECT_EQ(reader.Stream().frameCount, 0);
}

TEST_F(CAviReaderTest, SurvivesDamagedMovies) {
    Write({0, 1, 4}, Bytes(5000, 99));
    const Bytes whole = ReadBytes(file);
    std::mt19937 random(11);
    for (int round = 0; round < 150; ++round) {
        Bytes damaged = whole;
        if (round % 3 == 0)
            damaged.resize(random() % whole.size());
        for (int i = 0; i < 12 && !damaged.empty(); ++i)
            damaged[random() % std::min<std::size_t>(damaged.size(), random() % 2 == 0 ? 400 : whole.size())] =
                static_cast<std::uint8_t>(random());
        WriteBytes(file, damaged);
        CAviReader reader;
        if (reader.Open(file) != MovieError::None)
            continue;
        CMoviePicture picture;
        Bytes sound;
        for (int position = 0; position < std::min(reader.Stream().frameCount, 8); ++position)
            if (reader.ReadFrame(position, picture)) {
                EXPECT_EQ(picture.bytes.size(),
                          static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4);
            }
        reader.ReadSound(22050, sound);
    }
}

} // namespace velmor::testing
