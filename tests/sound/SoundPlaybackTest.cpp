#include "FakeAudio.h"
#include "sound/SoundRecorder.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using State = CSoundRecorder::State;

class CSoundPlaybackTest : public ::testing::Test {
protected:
    TellUser tell = [this](const std::string& text) { told.push_back(text); };
    std::vector<std::string> told;
    CFakeAudio audio;
};

} // namespace

TEST_F(CSoundPlaybackTest, PlaysAStretchToItsLastSamplesAndClosesTheDevice) {
    CSoundPlayback playback(audio.output);
    const std::vector<std::uint8_t> sound(3500, 9);
    ASSERT_TRUE(playback.Start(sound, tell));
    EXPECT_EQ(audio.output.played, std::vector<std::vector<std::uint8_t>>{sound});
    int polls = 0;
    while (playback.IsPlaying())
        ++polls;
    EXPECT_EQ(polls, 4) << "at 0, 1000, 2000 and 3000 samples";
    EXPECT_TRUE(playback.End());
    EXPECT_FALSE(audio.output.isOpen);
    EXPECT_FALSE(playback.IsPlaying());
    EXPECT_TRUE(told.empty());
}

TEST_F(CSoundPlaybackTest, SaysWhyThereIsNoSound) {
    CSoundPlayback playback(audio.output);
    const std::vector<std::uint8_t> sound(100, 9);
    audio.output.exists = false;
    EXPECT_EQ(playback.Start(sound, tell).Message(), "There are no audio devices to play the sound!");
    audio.output.exists = true;
    audio.output.opens = false;
    EXPECT_EQ(playback.Start(sound, tell).Message(), "Could not open the audio device!");
    audio.output.opens = true;
    audio.output.plays = false;
    EXPECT_TRUE(playback.Start(sound, tell));
    EXPECT_EQ(told, std::vector<std::string>{"Could not write wave header"});
    EXPECT_FALSE(playback.IsPlaying());
    audio.output.closes = false;
    EXPECT_EQ(playback.End().Message(), "Error : could not close the wave out device!");
}

TEST_F(CSoundPlaybackTest, RecorderGoesThroughItsStates) {
    CSoundRecorder recorder(audio);
    EXPECT_EQ(recorder.StatusText(), "Idle");
    EXPECT_FALSE(recorder.CanUseRecording());
    ASSERT_TRUE(recorder.Record());
    EXPECT_TRUE(recorder.CanStop());
    EXPECT_FALSE(recorder.CanRecord());
    recorder.Poll();
    EXPECT_EQ(recorder.LevelPercent(), 50);
    for (int i = 0; i < 9; ++i)
        recorder.Poll();
    EXPECT_EQ(recorder.StatusText(), "Recording... at 2.27 seconds");
    EXPECT_EQ(recorder.ProgressSeconds(), 2);
    recorder.Stop();
    EXPECT_EQ(recorder.StatusText(), "Recorded... at 2.27 seconds, idle");
    EXPECT_EQ(recorder.Samples().size(), 50000u);
    EXPECT_FALSE(audio.input.isOpen);

    audio.output.step = 22050;
    ASSERT_TRUE(recorder.Play(tell));
    EXPECT_EQ(recorder.StatusText(), "Playing... at 0.00 seconds");
    EXPECT_FALSE(recorder.CanRecord());
    while (recorder.CurrentState() == State::Playing)
        recorder.Poll();
    EXPECT_EQ(audio.output.played.back(), recorder.Samples());
    EXPECT_EQ(recorder.StatusText(), "Recorded... at 2.27 seconds, idle");
    EXPECT_FALSE(audio.output.isOpen);
}

TEST_F(CSoundPlaybackTest, ARecordingEndsWhenItIsFull) {
    CSoundRecorder recorder(audio);
    audio.input.step = 400000;
    ASSERT_TRUE(recorder.Record());
    for (int i = 0; i < 4; ++i)
        recorder.Poll();
    EXPECT_EQ(recorder.CurrentState(), State::Recorded);
    EXPECT_EQ(recorder.Samples().size(), CSoundRecorder::capacity);
    EXPECT_EQ(recorder.ProgressSeconds(), CSoundRecorder::mostSeconds);
}

TEST_F(CSoundPlaybackTest, ARecorderWithoutDeviceKeepsWhatItHas) {
    const std::string message = "Sorry there are no sound devices capable of recording in the desired format";
    CSoundRecorder recorder(audio);
    audio.input.exists = false;
    EXPECT_EQ(recorder.CheckDevice().Message(), message);
    audio.input.exists = true;
    ASSERT_TRUE(recorder.CheckDevice());
    ASSERT_TRUE(recorder.Record());
    recorder.Poll();
    recorder.Stop();
    audio.input.opens = false;
    EXPECT_EQ(recorder.Record().Message(), message);
    EXPECT_TRUE(recorder.CanUseRecording());
    EXPECT_EQ(recorder.Samples().size(), 5000u);
}

} // namespace velmor::testing
