#include "scene/MediaOperations.h"

#include "FakeAudio.h"
#include "SceneFixture.h"
#include "render/ImageCache.h"
#include "render/Movie.h"
#include "scene/FlipbookOperations.h"
#include "scene/SoundOperations.h"
#include "sound/SoundRecorder.h"

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;

class CMediaOperationsTest : public CSceneFixture {
protected:
    CMediaOperationsTest() {
        static_cast<void>(sounds.StoreSound("Hey", 22050, Bytes(1000, 2)));
        model.sourceMode = SourceMode::Sounds;
        model.sourceSelection = {"Hey"};
        sounds.DropSound(10);
    }

    CFakeAudio audio;
    CImageCache cache{1 << 20};
    CSoundOperations sounds{Context()};
    CFlipbookOperations flipbooks{Context(), cache};
    CMediaOperations media{Context(), sounds, flipbooks, audio};
};

} // namespace

TEST_F(CMediaOperationsTest, PlaysTheTrackTheSelectionAndAnAsset) {
    media.PlayXSheetSound();
    ASSERT_EQ(audio.output.played.size(), 1u);
    EXPECT_EQ(audio.output.played[0], *model.soundBuffer);
    EXPECT_FALSE(audio.output.isOpen);
    EXPECT_EQ(prompter.statusTexts, (Texts{"Playing Sound...     Press any key to stop", "Stopped."}));

    model.selection = {0, 0, 10, 11};
    media.PlaySelectedSound();
    Bytes expected(2 * 882, 128);
    std::fill_n(expected.begin(), 1000, std::uint8_t{2});
    EXPECT_EQ(audio.output.played.at(1), expected);

    media.PlaySoundAssets();
    EXPECT_EQ(audio.output.played.at(2), Bytes(1000, 2));
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CMediaOperationsTest, SaysWhyNothingIsHeard) {
    audio.output.closes = false;
    media.PlaySoundAssets();
    audio.output.opens = false;
    media.PlayXSheetSound();
    audio.output.exists = false;
    media.PlayXSheetSound();
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Error : could not close the wave out device!", "Could not open the audio device!",
                     "There are no audio devices to play the sound!"}));
    model.sourceMode = SourceMode::Pictures;
    media.PlaySoundAssets();
    model.sceneOpen = false;
    media.PlaySoundAssets();
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Internal Error: Not showing sound sources at CVelmorltDoc::OnAssetsPlaysound",
                     "Internal Error: Scene not open at CVelmorltDoc::OnAssetsPlaysound"}));
}

TEST_F(CMediaOperationsTest, AMissingSoundIsNamedAndHeardOnceItIsBack) {
    const Path file = model.Paths().SoundFile("Hey");
    std::filesystem::rename(file, folder / "kept");
    sounds.PrepareSoundBuffer();
    prompter.TakeMessages();
    const std::string missing =
        "Internal Error : Could not find sound Hey at CVelmorltDoc::LoadSound\n" + Utf8Of(file);
    media.PlayXSheetSound();
    media.PlaySelectedSound();
    EXPECT_EQ(prompter.TakeMessages(), Texts(2, missing));
    prompter.Answer(CFlipbookAnswer{true, {{0}, 1, 3, 1, 50, 50, false}});
    EXPECT_TRUE(flipbooks.MakeFlipbook()) << "a preview without sound is better than none";
    EXPECT_EQ(prompter.TakeMessages(), Texts{missing});
    EXPECT_TRUE(audio.output.played.empty());

    std::filesystem::rename(folder / "kept", file);
    media.PlayXSheetSound();
    EXPECT_EQ(audio.output.played.size(), 1u);
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CMediaOperationsTest, ARecordingIsSavedUnderItsNameOrDiscarded) {
    prompter.useRecorder = [](CSoundRecorder& recorder) {
        EXPECT_TRUE(recorder.Record());
        recorder.Poll();
        return true; // with the recording still running
    };
    const std::string question = "Do you want to discard the recording ?";
    media.RecordSound();
    EXPECT_EQ(prompter.TakeMessages(), Texts{question});
    EXPECT_FALSE(FileExists(model.Paths().SoundFile("Clap"))) << "no name was given";
    // Cancelled by mistake, and under a name that cannot be written: the recording is still there.
    static_cast<void>(CreateFolder(model.Paths().SoundFile("Full")));
    prompter.confirmations = {false, false};
    prompter.Cancel();
    prompter.Answer(std::string("Full"));
    prompter.Answer(std::string("Clap"));
    media.RecordSound();
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{question, "Unable to open audio file for writing ! Disk Full ??", question}));
    Bytes stored;
    ASSERT_TRUE(sounds.LoadSound("Clap", stored));
    EXPECT_EQ(stored, Bytes(5000, 77));
    EXPECT_FALSE(audio.input.isOpen);

    prompter.useRecorder = [](CSoundRecorder&) { return false; };
    media.RecordSound();
    audio.input.exists = false;
    media.RecordSound();
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"Sorry there are no sound devices capable of recording in the desired format"});
}

TEST_F(CMediaOperationsTest, AFlipbookIsPlayedWhenItIsMade) {
    int played = 0;
    prompter.usePlayer = [&](CMovie& movie) {
        ++played;
        EXPECT_EQ(movie.Stream().frameCount, 3);
        EXPECT_TRUE(movie.HasSound());
    };
    media.PlayLastFlipbook();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"There is no last flipbook!"});
    media.MakeFlipbook();
    EXPECT_EQ(played, 0) << "the dialog was cancelled";
    prompter.Answer(CFlipbookAnswer{true, {{0}, 1, 3, 1, 50, 50, false}});
    media.MakeFlipbook();
    EXPECT_EQ(played, 1);
    media.PlayLastFlipbook();
    EXPECT_EQ(played, 2);
}

} // namespace velmor::testing
