#include "platform/sound/Audio.h"

#include "TempFolder.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

namespace velmor::testing {
namespace {

constexpr int rate = 22050;

using Samples = std::vector<std::uint8_t>;

/// A sound in which every stretch differs from every other.
Samples Sweep(std::size_t count) {
    Samples samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<std::uint8_t>(1 + (i * i / 97 + i / 251) % 250);
    return samples;
}

Samples ReadAll(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Polls until `done` holds; false when it has not within a time that no working device needs.
template<class Done>
bool WaitFor(Done done) {
    for (int i = 0; i < 2000; ++i) {
        if (done())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

/// SDL's driver that writes to a file what it plays and records what is in another.
class CAudioTest : public ::testing::Test {
protected:
    void UseDiskDriver() {
        ::setenv("SDL_AUDIODRIVER", "disk", 1);
        ::setenv("SDL_DISKAUDIOFILE", played.c_str(), 1);
        ::setenv("SDL_DISKAUDIOFILEIN", source.c_str(), 1);
    }
    void TearDown() override {
        for (const char* name : {"SDL_AUDIODRIVER", "SDL_DISKAUDIOFILE", "SDL_DISKAUDIOFILEIN"})
            ::unsetenv(name);
    }

    CTempFolder folder;
    std::filesystem::path played = folder / "played.raw";
    std::filesystem::path source = folder / "source.raw";
};

} // namespace

TEST_F(CAudioTest, WhatIsPlayedReachesTheDeviceWholeAndInOrder) {
    UseDiskDriver();
    const std::unique_ptr<IAudioDevices> devices = MakeAudioDevices(rate);
    IAudioOutput& output = devices->Output();
    const Samples sound = Sweep(6000);
    EXPECT_FALSE(output.Play(sound)) << "before it is open";
    ASSERT_TRUE(output.CanPlay());
    ASSERT_TRUE(output.Open());
    ASSERT_TRUE(output.Play(sound));
    std::size_t last = 0;
    EXPECT_TRUE(WaitFor([&] {
        const std::size_t position = output.Position();
        EXPECT_GE(position, last);
        EXPECT_LE(position, sound.size());
        last = position;
        return position == sound.size();
    }));
    output.Reset();
    EXPECT_EQ(output.Position(), 0u);
    EXPECT_TRUE(output.Close());
    EXPECT_TRUE(output.Close());

    const Samples heard = ReadAll(played);
    const auto found = std::search(heard.begin(), heard.end(), sound.begin(), sound.end());
    ASSERT_NE(found, heard.end());
    const auto isSilence = [](std::uint8_t sample) { return sample == 128; };
    EXPECT_TRUE(std::all_of(heard.begin(), found, isSilence));
    EXPECT_TRUE(std::all_of(found + static_cast<std::ptrdiff_t>(sound.size()), heard.end(), isSilence));
}

TEST_F(CAudioTest, WhatIsInFullQualityReachesTheDeviceAsItIs) {
    UseDiskDriver();
    const std::unique_ptr<IAudioDevices> devices = MakeAudioDevices(rate);
    IAudioOutput& output = devices->Output();
    std::vector<float> sound(2 * 5000);
    for (std::size_t i = 0; i < sound.size(); ++i)
        sound[i] = (static_cast<float>(i % 997) - 498) / 499;
    EXPECT_FALSE(output.PlayStereo(sound)) << "before it is open";
    ASSERT_TRUE(output.OpenStereo(48000));
    EXPECT_FALSE(output.Play(Sweep(10))) << "opened for another form";
    ASSERT_TRUE(output.PlayStereo(sound));
    EXPECT_TRUE(WaitFor([&] { return output.Position() == 5000; })) << "in samples of a channel";
    EXPECT_TRUE(output.Close());

    const Samples heard = ReadAll(played);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(sound.data());
    const auto found = std::search(heard.begin(), heard.end(), bytes, bytes + sound.size() * sizeof(float));
    ASSERT_NE(found, heard.end());
    const auto isSilence = [](std::uint8_t byte) { return byte == 0; };
    EXPECT_TRUE(std::all_of(heard.begin(), found, isSilence));
    EXPECT_TRUE(std::all_of(found + 40000, heard.end(), isSilence));
    ASSERT_TRUE(output.Open());
    EXPECT_TRUE(output.Play(Sweep(10))) << "and back to the form of sounds";
}

TEST_F(CAudioTest, PlayingAgainStartsOver) {
    UseDiskDriver();
    const std::unique_ptr<IAudioDevices> devices = MakeAudioDevices(rate);
    IAudioOutput& output = devices->Output();
    ASSERT_TRUE(output.Open());
    const Samples first(40000, 10);
    const Samples second(2000, 200);
    ASSERT_TRUE(output.Play(first));
    EXPECT_TRUE(WaitFor([&] { return output.Position() > 0; }));
    ASSERT_TRUE(output.Play(second));
    EXPECT_TRUE(WaitFor([&] { return output.Position() == second.size(); }));
    output.Close();
    const Samples heard = ReadAll(played);
    EXPECT_LT(std::count(heard.begin(), heard.end(), 10), 40000) << "the first sound was cut off";
    EXPECT_EQ(std::count(heard.begin(), heard.end(), 200), 2000);
}

TEST_F(CAudioTest, RecordsUpToItsCapacity) {
    UseDiskDriver();
    const Samples sound = Sweep(20000);
    std::ofstream(source, std::ios::binary).write(reinterpret_cast<const char*>(sound.data()), 20000);
    const std::unique_ptr<IAudioDevices> devices = MakeAudioDevices(rate);
    IAudioInput& input = devices->Input();
    EXPECT_FALSE(input.Start(100)) << "before it is open";
    ASSERT_TRUE(input.CanRecord());
    ASSERT_TRUE(input.Open());
    ASSERT_TRUE(input.Start(3000));
    EXPECT_TRUE(WaitFor([&] { return input.Position() == 3000; }));
    EXPECT_GT(input.Level(), 0);
    const Samples recorded = input.Stop();
    EXPECT_EQ(recorded, Samples(sound.begin(), sound.begin() + 3000));
    ASSERT_TRUE(input.Start(1000));
    EXPECT_TRUE(WaitFor([&] { return input.Position() == 1000; }));
    EXPECT_EQ(input.Stop().size(), 1000u);
    input.Close();
    EXPECT_FALSE(input.Start(100)) << "after it is closed";
}

TEST_F(CAudioTest, WithoutSoundEveryCallSaysSo) {
    ::setenv("SDL_AUDIODRIVER", "there is no such driver", 1);
    const std::unique_ptr<IAudioDevices> devices = MakeAudioDevices(rate);
    EXPECT_FALSE(devices->Output().CanPlay());
    EXPECT_FALSE(devices->Output().Open());
    EXPECT_EQ(devices->Output().Position(), 0u);
    EXPECT_TRUE(devices->Output().Close());
    EXPECT_FALSE(devices->Input().CanRecord());
    EXPECT_FALSE(devices->Input().Open());
    EXPECT_TRUE(devices->Input().Stop().empty());
}

} // namespace velmor::testing
