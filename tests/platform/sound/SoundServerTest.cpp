#include "SoundServer.h"
#include "platform/sound/Audio.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace velmor::testing {
namespace {

constexpr int rate = 22050;
constexpr std::size_t blockSamples = 256;

using Samples = std::vector<std::uint8_t>;

/// A sound in which every block differs from every other, and none is silent.
Samples Sweep(std::size_t count) {
    Samples samples(count);
    for (std::size_t i = 0; i < count; ++i)
        samples[i] = static_cast<std::uint8_t>(1 + (i * i / 97 + i / 251) % 250);
    return samples;
}

/// How many of the blocks of `sound` are in `heard`, sample for sample and in order.
std::size_t BlocksHeard(const Samples& sound, const Samples& heard) {
    std::size_t found = 0;
    auto from = heard.begin();
    for (auto block = sound.begin(); sound.end() - block >= static_cast<std::ptrdiff_t>(blockSamples);
         block += blockSamples) {
        const auto at = std::search(from, heard.end(), block, block + blockSamples);
        if (at == heard.end())
            continue;
        ++found;
        from = at + blockSamples;
    }
    return found;
}

/// Polls until `done` holds; false when it has not within a time that no working server needs.
template<class Done>
bool WaitFor(Done done) {
    for (int i = 0; i < 6000; ++i) {
        if (done())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

class CSoundServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!CSoundServer::IsInstalled())
            GTEST_SKIP() << "there is no sound server to start";
        server = std::make_unique<CSoundServer>(rate);
        devices = MakeAudioDevices(rate);
        ASSERT_TRUE(WaitFor([&] { return server->IsUp() && devices->Input().CanRecord(); }));
    }
    void TearDown() override {
        devices.reset();
        server.reset();
    }

    std::unique_ptr<CSoundServer> server;
    std::unique_ptr<IAudioDevices> devices;
};

} // namespace

TEST_F(CSoundServerTest, WhatIsPlayedIsWhatTheMicrophoneHears) {
    IAudioOutput& output = devices->Output();
    IAudioInput& input = devices->Input();
    const Samples sound = Sweep(rate / 2);
    ASSERT_TRUE(input.Open());
    ASSERT_TRUE(input.Start(rate * 60));
    EXPECT_TRUE(WaitFor([&] { return input.Position() > 0; }));
    ASSERT_TRUE(output.CanPlay());
    ASSERT_TRUE(output.Open());
    ASSERT_TRUE(output.Play(sound));
    EXPECT_TRUE(WaitFor([&] { return output.Position() == sound.size(); }));
    // What is under way in the server arrives too.
    const std::size_t end = input.Position() + rate;
    EXPECT_TRUE(WaitFor([&] { return input.Position() > end; }));
    EXPECT_TRUE(output.Close());
    const Samples heard = input.Stop();
    input.Close();
    // A busy machine may tear the sound now and then; nothing may change in it.
    EXPECT_GE(BlocksHeard(sound, heard), sound.size() / blockSamples * 3 / 4);
}

TEST_F(CSoundServerTest, AServerThatDiesWhileItPlaysHoldsNothingUp) {
    IAudioOutput& output = devices->Output();
    IAudioInput& input = devices->Input();
    ASSERT_TRUE(output.Open());
    ASSERT_TRUE(output.Play(Sweep(rate)));
    ASSERT_TRUE(input.Open());
    ASSERT_TRUE(input.Start(rate));
    EXPECT_TRUE(WaitFor([&] { return output.Position() > 0 && input.Position() > 0; }));
    server->Kill();
    EXPECT_TRUE(WaitFor([&] { return output.Position() == rate; })) << "whoever waits for the end gets it";
    EXPECT_TRUE(WaitFor([&] { return input.Position() == rate; }));
    output.Reset();
    EXPECT_TRUE(output.Close());
    EXPECT_EQ(input.Stop().size(), static_cast<std::size_t>(rate));
    input.Close();
    EXPECT_FALSE(output.CanPlay());
    EXPECT_FALSE(output.Open());
    EXPECT_FALSE(input.CanRecord());
    EXPECT_FALSE(input.Open());
}

} // namespace velmor::testing
