#include "scene/SoundOperations.h"

#include "SceneFixture.h"
#include "platform/files/Archive.h"

using namespace velmor;
using Bytes = std::vector<std::uint8_t>;
using Hints = std::vector<int>;
using Texts = std::vector<std::string>;

namespace {

class CSoundOperationsTest : public velmor::testing::CSceneFixture {
protected:
    CSoundOperationsTest() {
        static_cast<void>(sounds.StoreSound("Boo", 22050, Bytes(1000, 1)));
        static_cast<void>(sounds.StoreSound("Hey", 22050, Bytes(1000, 2)));
        model.sourceMode = SourceMode::Sounds;
        TakeHints();
    }

    void Drop(const std::string& name, int frame) {
        model.sourceSelection = {name};
        sounds.DropSound(frame);
    }
    Path MakeWave(const std::string& name, int rate, const Bytes& samples) {
        const int size = static_cast<int>(samples.size());
        CArchiveWriter file;
        constexpr int pcmMono = 0x10001, eightBits = 0x80001;
        for (const int value :
             {0x46464952, 36 + size, 0x45564157, 0x20746d66, 16, pcmMono, rate, rate, eightBits, 0x61746164, size})
            file.WriteInt(value);
        for (const std::uint8_t sample : samples)
            file.WriteByte(sample);
        velmor::testing::WriteBytes(folder / name, file.Bytes());
        return folder / name;
    }

    CSoundOperations sounds{Context()};
};

} // namespace

TEST_F(CSoundOperationsTest, DroppedSoundsStandInTheTrackUntilRemoved) {
    Drop("Hey", 10);
    Drop("Boo", 9);
    ASSERT_EQ(100U * 882U, model.soundBuffer.value().size());
    const auto sampleAt = [this](std::size_t index) { return int{(*model.soundBuffer)[index]}; };
    EXPECT_EQ(1, sampleAt(9 * 882));
    EXPECT_EQ(2, sampleAt(10 * 882)); // the later one replaces the rest of the earlier one
    EXPECT_EQ("Boo", sounds.GetSoundName(9));

    Drop("Boo", 20);
    model.selection.firstFrame = 9;
    model.selection.lastFrame = 19;
    sounds.RemoveSelectedSounds();
    EXPECT_EQ((std::vector<CSoundPlacement>{{20, "Boo"}}), scene.sounds.All());
    EXPECT_EQ(128, sampleAt(10 * 882));
    sounds.RemoveSelectedSounds();
    EXPECT_EQ(Texts{"There are no sound starting at the selected frames for deleting."}, prompter.velmorMessages);
    EXPECT_EQ((Hints{8, 8, 8, 8}), TakeHints());
    Undo();
    EXPECT_EQ(3, scene.sounds.Count()) << "one step for all that were removed";
}

TEST_F(CSoundOperationsTest, DropChecksInOrder) {
    scene.sounds.Set(std::vector<CSoundPlacement>(1999, {5, "Boo"}));
    model.sceneOpen = false;
    sounds.DropSound(100);
    model.sceneOpen = true;
    sounds.DropSound(100);
    model.sourceSelection = {"Boo", "Hey"};
    sounds.DropSound(100);
    sounds.DropSound(5);
    EXPECT_TRUE(prompter.velmorMessages.empty());
    EXPECT_EQ((Texts{"Internal Error : DropSound called with no scene open",
                     "Internal Error : DropSound called with cels selected",
                     "Internal Error : Invalid frame no in DropSound", "Too many sounds on xsheet!"}),
              prompter.messages);
    scene.sounds.Set({{5, "Boo"}});
    sounds.DropSound(5);
    Drop("Hey", 5);
    EXPECT_EQ((Texts{"Only one sound can be put on xsheet at one time.",
                     "A sound already exists at that frame. \nPlease delete it from xsheet first"}),
              prompter.velmorMessages);
    EXPECT_EQ(1, scene.sounds.Count());
    EXPECT_TRUE(hints.empty());
}

TEST_F(CSoundOperationsTest, ASoundThatCannotBeLoadedLeavesNoTrack) {
    Drop("Gone", 1);
    EXPECT_EQ(Texts{"Internal Error : Could not find sound Gone at CVelmorltDoc::LoadSound"}, prompter.messages);
    EXPECT_FALSE(sounds.GetSoundBuffer());
    // An import that brings the sound repairs the track.
    EXPECT_TRUE(sounds.ImportSound(MakeWave("a.wav", 22050, {7, 8, 9}), "Gone"));
    ASSERT_TRUE(sounds.GetSoundBuffer());
    EXPECT_EQ(9, (*sounds.GetSoundBuffer())[882 + 2]);

    sounds.ResetSoundBuffer();
    EXPECT_EQ(Bytes(100 * 22050, 128), model.soundBuffer);
    model.sceneOpen = false;
    sounds.PrepareSoundBuffer();
    EXPECT_EQ("Internal Error : Scene not open at PrepareSoundBuffer", prompter.messages.back());
}

TEST_F(CSoundOperationsTest, TheImportCommandRefusesWhatNothingCanPlay) {
    const Path wave = MakeWave("clap.wav", 11025, Bytes(100, 5));
    bool hasDevice = false;
    sounds.SetCanPlay([&] { return hasDevice; });
    prompter.Answer(std::vector<Path>{wave});
    sounds.AskAndImportSound();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"There are no audio devices to play this sound!"});
    hasDevice = true;
    prompter.Answer(std::vector<Path>{wave});
    prompter.Answer(std::string("Clap"));
    sounds.AskAndImportSound();
    EXPECT_TRUE(FileExists(model.Paths().SoundFile("Clap")));
}

TEST_F(CSoundOperationsTest, WhatIsHeardOfAPlacedSoundIsAskedAndIsAStep) {
    ASSERT_TRUE(sounds.StoreSound("Long", 22050, Bytes(882 * 10, 228))); // ten frames at 25 a second
    ASSERT_TRUE(scene.sounds.Place(3, "Long"));
    ASSERT_TRUE(scene.sounds.Place(20, "Long"));
    model.cursorFrame = 5;
    const Bytes file = velmor::testing::ReadBytes(model.Paths().SoundFile("Long"));
    prompter.Answer(CSoundShape{6, 4, 0}); // nothing would be left
    prompter.Answer(CSoundShape{-1, 0, 0});
    prompter.Answer(CSoundShape{0, 0, 12.1});
    prompter.Answer(CSoundShape{2, 0.5, -6});
    sounds.AskSoundShape();
    EXPECT_EQ(prompter.TakeMessages().size(), 3U);
    EXPECT_EQ(std::any_cast<CSoundShapeRequest>(prompter.lastRequest).frames, 10);
    EXPECT_EQ(*scene.sounds.At(3), (CSoundPlacement{3, "Long", 2 * 882, 441, -60}));
    EXPECT_EQ(*scene.sounds.At(20), (CSoundPlacement{20, "Long"}));
    EXPECT_EQ(velmor::testing::ReadBytes(model.Paths().SoundFile("Long")), file);
    const auto track = *sounds.GetSoundBuffer();
    EXPECT_EQ(track[3 * 882], 178) << "half as loud";
    EXPECT_EQ(track[3 * 882 + 882 * 15 / 2 - 1], 178);
    EXPECT_EQ(track[3 * 882 + 882 * 15 / 2], 128) << "seven and a half frames long";
    EXPECT_EQ(track[20 * 882], 228);
    Undo();
    EXPECT_TRUE(scene.sounds.At(3)->IsPlain());
    Redo();
    EXPECT_EQ(scene.sounds.At(3)->level, -60);

    EXPECT_FALSE(sounds.ShapeSound(3, {20, "Long", 0, 0, 0})) << "where another one starts";
    EXPECT_EQ(prompter.TakeMessages().size(), 1U);
    EXPECT_FALSE(sounds.ShapeSound(3, *scene.sounds.At(3)));
    EXPECT_FALSE(sounds.ShapeSound(4, {4, "Long"}));
    EXPECT_FALSE(sounds.ShapeSound(3, {3, "Long", -1, 0, 0}));
    EXPECT_TRUE(sounds.MoveSound(3, 4));
    EXPECT_EQ(scene.sounds.At(4)->level, -60) << "it goes along";
}

TEST_F(CSoundOperationsTest, ImportsAWaveUnderTheNameAsked) {
    std::filesystem::remove_all(model.Paths().SoundsFolder());
    const Path wave = MakeWave("a.wav", 11025, Bytes(1000, 5));
    ASSERT_TRUE(sounds.ImportSound(wave, "Old"));
    prompter.Answer(std::vector<Path>{wave});
    for (const char* name : {"not a name", "Old", "New1"})
        prompter.Answer(std::string(name));
    prompter.confirmations = {false};
    sounds.AskAndImportSound();
    const std::string broken = "The picture name should only consist of letters and numbers";
    EXPECT_EQ((Texts{broken, "Sound Exists, Do you want to overwrite it ?"}), prompter.TakeMessages());
    Bytes samples;
    EXPECT_TRUE(sounds.LoadSound("New1", samples));
    EXPECT_EQ(Bytes(2000, 5), samples);
    EXPECT_EQ((Hints{2, 2}), TakeHints());

    EXPECT_FALSE(sounds.ImportSound(MakeWave("a.WAV", 22050, {1}), "New2"));
    EXPECT_FALSE(sounds.ImportSound(wave, "../New2"));
    EXPECT_EQ((Texts{"Invalid Audio File extension", broken}), prompter.messages);
    EXPECT_TRUE(hints.empty());
}
