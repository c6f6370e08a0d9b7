#include "sound/SoundTrack.h"

#include "sound/SoundFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

using namespace velmor;

namespace {

using Samples = std::vector<std::uint8_t>;
using Track = std::optional<Samples>;

// Sound "a" is one second of 1, "b" of 2 and so on; nothing else exists.
CStatus LoadLetter(const std::string& name, Samples& samples) {
    if (name.size() != 1)
        return CStatus::Failure("no " + name);
    samples.assign(samplesPerSecond, static_cast<std::uint8_t>(name[0] - 'a' + 1));
    return {};
}

TEST(SoundTrack, HasWholeSamplesForEveryFrame) {
    EXPECT_EQ(SamplesPerFrame(25), 882);
    EXPECT_EQ(SamplesPerFrame(24), 918);
    EXPECT_EQ(SamplesPerFrame(30), 735);
    Track track;
    ASSERT_TRUE(PrepareTrack({}, 100, 25, LoadLetter, track));
    EXPECT_EQ(*track, Samples(88200, 128));
}

TEST(SoundTrack, CutsASoundBeforeTheLastByte) {
    Track track;
    ASSERT_TRUE(PrepareTrack({{99, "a"}}, 100, 25, LoadLetter, track));
    Samples expected(88200, 128);
    std::fill_n(expected.begin() + 882 * 99, 881, 1);
    EXPECT_EQ(*track, expected);
}

TEST(SoundTrack, LaterStartCoversEarlierInWhateverOrderTheyWerePlaced) {
    const std::vector<CSoundPlacement> placements{{10, "b"}, {0, "a"}};
    Track track;
    ASSERT_TRUE(PrepareTrack(placements, 100, 25, LoadLetter, track));
    Samples expected(88200, 128);
    std::fill_n(expected.begin(), 8820, 1);
    std::fill_n(expected.begin() + 8820, 22050, 2);
    EXPECT_EQ(*track, expected);
}

TEST(SoundTrack, IsHeardFromWhereAndAsLoudAsItIsPlaced) {
    const auto load = [](const std::string&, Samples& samples) {
        samples.resize(1000);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::uint8_t>(128 + (i % 2 == 0 ? 40 : -40) + static_cast<int>(i / 100));
        return CStatus();
    };
    Track plain;
    Track shaped;
    ASSERT_TRUE(PrepareTrack({{0, "a"}}, 3, 25, load, plain));
    ASSERT_TRUE(PrepareTrack({{1, "a", 300, 500, 0}}, 3, 25, load, shaped));
    Samples expected(plain->size(), 128);
    for (std::size_t i = 0; i < 200; ++i)
        expected.at(882 + i) = plain->at(300 + i);
    EXPECT_EQ(*shaped, expected);
    ASSERT_TRUE(PrepareTrack({{1, "a", 600, 400, 0}, {2, "a", INT_MAX, INT_MAX, 0}}, 3, 25, load, shaped));
    EXPECT_EQ(*shaped, Samples(plain->size(), 128)) << "nothing is left of it";

    ASSERT_TRUE(PrepareTrack({{0, "a", 0, 0, -60}}, 3, 25, load, shaped));
    EXPECT_EQ((*shaped)[0], 148);
    EXPECT_EQ((*shaped)[1], 108);
    ASSERT_TRUE(PrepareTrack({{0, "a", 0, 0, CSoundPlacement::leastLevel}}, 3, 25, load, shaped));
    EXPECT_EQ(*shaped, Samples(plain->size(), 128));
    // Four times as loud it would not fit; its loudest sample, 49 from silence, becomes the loudest that there is.
    ASSERT_TRUE(PrepareTrack({{0, "a", 0, 0, CSoundPlacement::mostLevel}}, 3, 25, load, shaped));
    EXPECT_EQ(*std::max_element(shaped->begin(), shaped->end()), 255);
    EXPECT_EQ((*shaped)[0], 128 + std::lround(40 * 127 / 49.0));
}

TEST(SoundTrack, SurvivesWildFrames) {
    Track track;
    const std::vector<CSoundPlacement> wild{{-1, "a"}, {INT_MIN, "a"}, {INT_MAX, "a"}, {4, "a"}, {5, "a"}};
    ASSERT_TRUE(PrepareTrack(wild, 4, 25, LoadLetter, track));
    EXPECT_EQ(*track, Samples(3528, 128));
    ASSERT_TRUE(PrepareTrack(wild, 0, 0, LoadLetter, track));
    EXPECT_TRUE(track->empty());
}

TEST(SoundTrack, IsAbsentWhenASoundCannotBeLoaded) {
    Track track = Samples{1};
    const CStatus status = PrepareTrack({{0, "a"}, {7, "later"}, {5, "earlier"}}, 100, 25, LoadLetter, track);
    EXPECT_EQ(status.Message(), "no earlier");
    EXPECT_FALSE(track);
}

TEST(SoundPlacements, KeepTheOrderOfPlacing) {
    CSoundPlacements sounds;
    EXPECT_TRUE(sounds.Place(5, "a"));
    EXPECT_TRUE(sounds.Place(2, "b"));
    EXPECT_TRUE(sounds.Place(9, "a"));
    EXPECT_FALSE(sounds.Place(2, "c"));
    EXPECT_EQ(sounds.All(), (std::vector<CSoundPlacement>{{5, "a"}, {2, "b"}, {9, "a"}}));
    EXPECT_EQ(*sounds.NameAt(2), "b");
    EXPECT_EQ(sounds.NameAt(3), nullptr);
    EXPECT_EQ(sounds.Rename("a", "d"), 2);
    EXPECT_FALSE(sounds.RemoveAt(3));
    EXPECT_TRUE(sounds.RemoveAt(5));
    EXPECT_EQ(sounds.RemoveNamed("d"), 1);
    EXPECT_EQ(sounds.All(), (std::vector<CSoundPlacement>{{2, "b"}}));
}

TEST(SoundPlacements, AreFullAt1999) {
    CSoundPlacements sounds;
    for (int frame = 0; frame < 1999; ++frame)
        ASSERT_TRUE(sounds.Place(frame, "a"));
    EXPECT_TRUE(sounds.IsFull());
    EXPECT_FALSE(sounds.Place(1999, "a"));
}

} // namespace
