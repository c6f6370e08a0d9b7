#include "scene/preview/ScenePreview.h"
#include "DocumentFixture.h"
#include "PcmWave.h"
#include "RecordedOutput.h"
#include "TestScene.h"
#include "render/FrameRequests.h"
#include "render/ImageCache.h"
#include "scene/MediaOperations.h"
#include "scene/Settings.h"
#include "scene/SoundOperations.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/preview/Scrubbing.h"

#include <chrono>
#include <cmath>
#include <fstream>
#include <set>
#include <thread>

namespace velmor::testing {
namespace {

constexpr int samplesOfFrame = 918; // at 24 frames a second

class CScenePreviewTest : public CDocumentFixture {
protected:
    CScenePreviewTest() { Open(); }

    void Open() {
        doc = std::make_unique<CVelmorltDoc>(prompter, profile, CDocumentFolders{folder.Path(), folder / "data"},
                                             std::make_unique<CRecordedAudio>(sound));
        doc->Views().Add(*this);
        EXPECT_TRUE(doc->Scenes().OpenScene("Test"));
    }
    CScenePreview& Preview() { return doc->Preview(); }
    const CSceneModel& Model() { return doc->Model(); }

    /// Plays, and waits without letting time pass until the first frame is seen.
    void PlayFirst() {
        Preview().Play();
        ASSERT_TRUE(Preview().IsPlaying());
        while (!Preview().Frame()) {
            Preview().Pass(now);
            std::this_thread::yield();
        }
    }
    /// Lets no time pass until frames are ready.
    void WaitForReady(std::initializer_list<int> frames) {
        for (const int frame : frames)
            while (!Preview().IsReady(frame)) {
                Preview().Pass(now);
                std::this_thread::yield();
            }
    }
    void Advance(Milliseconds time) {
        now += time;
        sound->heard += static_cast<std::size_t>(static_cast<double>(time) * 22.05);
        Preview().Pass(now);
    }

    CTestScene scene{Database()};
    std::shared_ptr<CRecordedSound> sound = std::make_shared<CRecordedSound>();
    Milliseconds now = 1000;
};

TEST_F(CScenePreviewTest, PlaysWithoutTouchingTheSceneAndStopsWhereItIs) {
    const CScene before = Model().Scene();
    doc->Cursor().GoTo({1, 3});
    PlayFirst();
    EXPECT_EQ(Preview().Frame(), 3);
    ASSERT_EQ(sound->played.size(), 1u);
    WaitForReady({4, 5});
    Advance(62); // a frame and a half
    EXPECT_EQ(Preview().Frame(), 4);
    EXPECT_EQ(Model().cursorFrame, 3) << "what is edited meanwhile stays where it was";
    Advance(42);
    Preview().Stop();
    EXPECT_EQ(Model().CursorCell(), (CSheetCell{1, 5}));
    EXPECT_EQ(Model().selection, (CXSheetSelection{1, 1, 5, 5}));
    EXPECT_FALSE(sound->isOpen);
    EXPECT_EQ(Model().history.NextUndo(), nullptr);
    EXPECT_EQ(Model().Scene(), before);

    PlayFirst();
    WaitForReady({6});
    Advance(62);
    Preview().GoBack();
    EXPECT_EQ(Model().cursorFrame, 5);
}

TEST_F(CScenePreviewTest, ShowsTheBytesOfComposing) {
    CPreviewChoices choices = Preview().Choices();
    choices.fullSize = true;
    Preview().SetChoices(choices);
    Preview().SetViewFactor(0.5);
    doc->Cursor().GoTo({0, 4});
    PlayFirst();
    const CSize size{CTestScene::width, CTestScene::height};
    CImageCache cache(0);
    CFrameBuffer frame;
    const CShot shot{Model().Scene(), scene.folder, false};
    ASSERT_TRUE(ComposeFrame(
        RequestFrame(shot, AllLevels(Model().Scene().xsheet), 4, Model().Scene().camera.At(4), {size, size, 1}),
        cache, frame, false));
    EXPECT_EQ(Preview().Picture()->pixels, frame.pixels);

    choices.fullSize = false;
    Preview().SetChoices(choices);
    WaitForReady({4});
    Preview().GoBack();
    PlayFirst();
    EXPECT_EQ(Preview().Picture()->width, CTestScene::width / 2);
}

TEST_F(CScenePreviewTest, AnEditComposesTheFramesThatItTouches) {
    PlayFirst();
    WaitForReady({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    const std::int64_t composed = Preview().Composed();
    doc->Cursor().GoTo({0, 6});
    doc->XSheet().Cut();
    EXPECT_TRUE(Preview().IsPlaying());
    std::set<int> stale;
    for (int frame = 0; frame < CTestScene::frames; ++frame)
        if (!Preview().IsReady(frame))
            stale.insert(frame);
    EXPECT_EQ(stale, std::set<int>{6});
    WaitForReady({6});
    EXPECT_EQ(Preview().Composed(), composed + 1);
    doc->History().Undo();
    WaitForReady({6});
    EXPECT_EQ(Preview().Composed(), composed + 1) << "what undo brings back is kept still";

    CCelImg repainted;
    ASSERT_TRUE(repainted.CreateCel(20, 21, scene.folder / "A" / "1.bit"));
    ASSERT_TRUE(repainted.SaveCel());
    doc->Views().UpdateAllViews(pictureHint);
    EXPECT_FALSE(Preview().IsReady(2));
    EXPECT_TRUE(Preview().IsReady(7));
}

TEST_F(CScenePreviewTest, TenMinutesOfRoundsStayInSync) {
    PlayFirst();
    WaitForReady({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    const Milliseconds begun = now;
    double worst = 0;
    std::size_t stretches = 1;
    Milliseconds stretchBegun = begun;
    while (now < begun + 600000) {
        now += 5;
        const auto taken = static_cast<double>(now - stretchBegun) * 22.05 * 1.001; // the device's own clock
        sound->heard = static_cast<std::size_t>(taken / 512) * 512;
        Preview().Pass(now);
        if (sound->played.size() != stretches) { // some minutes have been heard; it goes on with the next round
            stretches = sound->played.size();
            stretchBegun = now;
            continue;
        }
        const double heard = std::fmod(taken / samplesOfFrame, CTestScene::frames);
        const double off = heard - (*Preview().Frame() + 0.5); // of the middle of the frame's time
        worst = std::max(worst, std::abs(std::remainder(off, CTestScene::frames)));
    }
    EXPECT_LE(worst, 1.0) << "half a frame beside the frame's own time";
    EXPECT_GE(stretches, 2u);
    EXPECT_EQ(Preview().Dropped(), 0);
}

TEST_F(CScenePreviewTest, WithAnOriginalTheMixIsPlayedAndIsTheClock) {
    const int rate = 44100;
    const auto tone = PcmWave(rate, 2, 16, rate / 4, [](int channel, int sample) {
        return channel == 0 ? 0.9 * Tone(400, sample, 44100) : 0;
    });
    std::ofstream(folder / "tone.wav", std::ios::binary)
        .write(reinterpret_cast<const char*>(tone.data()), static_cast<std::streamsize>(tone.size()));
    ASSERT_TRUE(doc->Sounds().ImportSound(folder / "tone.wav", "tick", true)) << "which starts at frame 2";
    PlayFirst();
    ASSERT_EQ(sound->playedStereo.size(), 1u);
    EXPECT_TRUE(sound->played.empty());
    EXPECT_EQ(sound->stereoRate, 48000);
    const std::vector<float> heard = sound->playedStereo.back();
    const auto at = [&](int frame) { return heard.begin() + 2 * 2000 * frame; };
    EXPECT_TRUE(std::all_of(at(0), at(2), [](float sample) { return sample == 0; }));
    EXPECT_NEAR(*std::max_element(at(3), at(4)), 0.9, 0.01) << "as loud as it came, on the left alone";
    EXPECT_NEAR(*(at(3) + 1), 0, 1e-4);

    WaitForReady({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    double worst = 0;
    for (const Milliseconds begun = now; now < begun + 60000;) {
        now += 5;
        const double taken = static_cast<double>(now - begun) * 48 * 0.999; // the device's own clock
        sound->heard = static_cast<std::size_t>(taken / 1024) * 1024;
        Preview().Pass(now);
        const double off = std::fmod(taken / 2000, CTestScene::frames) - (*Preview().Frame() + 0.5);
        worst = std::max(worst, std::abs(std::remainder(off, CTestScene::frames)));
    }
    EXPECT_LE(worst, 1.0) << "half a frame beside the frame's own time";

    doc->Scrubbing().To(3);
    EXPECT_EQ(sound->playedStereo.back(), std::vector<float>(at(3), at(4)));
    doc->Scrubbing().End();
    // Without its original it is what it was converted to.
    ASSERT_TRUE(RemoveFile(Model().Paths().OriginalFile("tick")));
    PlayFirst();
    EXPECT_EQ(sound->stereoRate, 0);
    EXPECT_EQ(sound->played.size(), 1u);
}

TEST_F(CScenePreviewTest, WhatIsNotReadyIsDroppedAndCounted) {
    CPreviewChoices choices = Preview().Choices();
    choices.loops = false;
    Preview().SetChoices(choices);
    PlayFirst();
    WaitForReady({5, 9});
    Advance(42 * 5);
    EXPECT_EQ(Preview().Dropped(), 4);
    Advance(42 * 5);
    EXPECT_FALSE(Preview().IsPlaying());
    EXPECT_EQ(prompter.statusTexts.back().find("Stopped."), 0u) << prompter.statusTexts.back();
    EXPECT_NE(prompter.statusTexts.back().find("Dropped frames: 8"), std::string::npos)
        << prompter.statusTexts.back();
}

TEST_F(CScenePreviewTest, ASelectionOrASetRangeIsPlayed) {
    Preview().SetIn();
    EXPECT_EQ(Preview().Range(), (CPreviewRange{0, 9}));
    doc->Cursor().GoTo({0, 6});
    Preview().SetOut();
    doc->Cursor().GoTo({0, 2});
    Preview().SetIn();
    EXPECT_EQ(Preview().Range(), (CPreviewRange{2, 6}));
    doc->Cursor().SetSelEndY(3);
    EXPECT_EQ(Preview().Range(), (CPreviewRange{2, 3}));
    PlayFirst();
    ASSERT_FALSE(sound->played.empty());
    const auto track = *doc->Sounds().GetSoundBuffer();
    EXPECT_TRUE(std::equal(track.begin() + 2 * samplesOfFrame, track.begin() + 4 * samplesOfFrame,
                           sound->played.back().begin()));
    WaitForReady({3});
    Advance(42);
    EXPECT_EQ(Preview().Frame(), 3);
    Preview().Stop();
    EXPECT_EQ(Model().selection, (CXSheetSelection{0, 0, 2, 3})) << "to be played again";

    Preview().ClearRange();
    doc->Cursor().GoTo({0, 0});
    EXPECT_EQ(Preview().Range(), (CPreviewRange{0, 9}));
    Preview().SetOut();
    EXPECT_EQ(Preview().Range(), (CPreviewRange{0, 0}));
}

TEST_F(CScenePreviewTest, FullOfPicturesItStaysInItsBytes) {
    Set(profile, setting::previewMegabytes, 0);
    doc.reset();
    Open();
    const std::size_t one = CTestScene::width * CTestScene::height * 3;
    PlayFirst();
    for (int i = 0; i < 200; ++i) {
        Advance(21);
        EXPECT_LE(Preview().ByteCount(), one);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    Preview().Free();
    EXPECT_FALSE(Preview().HoldsFrames());
}

TEST_F(CScenePreviewTest, OtherSoundsAndOtherScenesEndIt) {
    PlayFirst();
    doc->Media().PlayXSheetSound();
    EXPECT_FALSE(Preview().IsPlaying());
    PlayFirst();
    const CTestScene other(Database(), "Other");
    ASSERT_TRUE(doc->Scenes().OpenScene("Other"));
    EXPECT_FALSE(Preview().IsPlaying());
    EXPECT_FALSE(Preview().HoldsFrames());
    sound->exists = false;
    PlayFirst();
    EXPECT_NE(prompter.statusTexts.back().find("There are no audio devices"), std::string::npos)
        << prompter.statusTexts.back();
    WaitForReady({1});
    now += 42;
    Preview().Pass(now);
    EXPECT_EQ(Preview().Frame(), 1) << "by the wall clock";
}

TEST_F(CScenePreviewTest, ScrubbingPlaysExactlyTheFramesSound) {
    PlayFirst();
    doc->Scrubbing().To(3);
    EXPECT_FALSE(Preview().IsPlaying());
    EXPECT_EQ(Model().cursorFrame, 3);
    const auto track = *doc->Sounds().GetSoundBuffer();
    const std::size_t begun = sound->played.size();
    EXPECT_EQ(sound->played.back(),
              std::vector<std::uint8_t>(track.begin() + 3 * samplesOfFrame, track.begin() + 4 * samplesOfFrame));
    doc->Scrubbing().To(3);
    EXPECT_EQ(sound->played.size(), begun) << "a hand that trembles repeats nothing";
    doc->Scrubbing().To(2);
    doc->Scrubbing().To(99);
    EXPECT_EQ(Model().cursorFrame, 2);
    EXPECT_EQ(sound->played.size(), begun + 1);
    doc->Scrubbing().End();
    EXPECT_FALSE(sound->isOpen);
}

} // namespace
} // namespace velmor::testing
