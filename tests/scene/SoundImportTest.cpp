#include "AssetScene.h"
#include "PcmWave.h"
#include "scene/SceneSound.h"
#include "sound/OriginalSound.h"
#include "sound/SoundFile.h"

#include <algorithm>

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

class SoundImport : public CAssetScene {
protected:
    Path MakeStereo(const std::string& name, int rate = 48000) {
        WriteBytes(folder / name, PcmWave(rate, 2, 16, rate / 10, [rate](int channel, int sample) {
                       return channel == 0 ? 0.5 * Tone(500, sample, rate) : 0;
                   }));
        return folder / name;
    }
    void ImportAsked(const Path& file, const std::string& name) {
        prompter.Answer(std::vector<Path>{file});
        prompter.Answer(name);
        sounds.AskAndImportSound();
    }
    Path Sound(const std::string& name) const { return model.Paths().SoundFile(name); }
    Path Original(const std::string& name) const { return model.Paths().OriginalFile(name); }
    /// "Boo+ Hey": the sounds of the scene, with a mark where an original is beside one.
    std::string Stored() const {
        std::string stored;
        for (const std::string& name : ListSounds(model.Paths()))
            stored += (stored.empty() ? "" : " ") + name + (FileExists(Original(name)) ? "+" : "");
        return stored;
    }
    std::optional<CMixedSound> Mixed() {
        std::optional<CMixedSound> mixed;
        EXPECT_TRUE(MixSceneSound(model.Scene(), model.Paths(), mixed));
        return mixed;
    }

    const std::string refusal = "Unsupported audio file!\n(8bit Mono PCM encoded wave files are supported)";
};

TEST_F(SoundImport, AnotherFormIsConvertedWhenTheUserSaysSo) {
    const Path wave = MakeStereo("a.wav");
    prompter.confirmations = {false};
    ImportAsked(wave, "Boo");
    const std::string question = "The sound is stereo, 48000 Hz, 16 bit.\n"
                                 "Do you want to convert it ? What it is now is kept beside it.";
    EXPECT_EQ(prompter.TakeMessages(), (Texts{question, refusal}));
    EXPECT_EQ(prompter.lastConsequence, Consequence::Undoable);
    EXPECT_EQ(Stored(), "");
    prompter.ForgetAnswers();

    ImportAsked(wave, "Boo");
    EXPECT_EQ(prompter.TakeMessages(), Texts{question});
    EXPECT_FALSE(prompter.progressTexts.empty());
    EXPECT_EQ(Stored(), "Boo+") << "and the original is not listed";
    Bytes samples;
    EXPECT_TRUE(sounds.LoadSound("Boo", samples));
    EXPECT_NEAR(static_cast<double>(samples.size()), 2205, 2);
    EXPECT_EQ(ReadBytes(Original("Boo")).size(), ReadBytes(wave).size() + COriginalHead::size);
    Undo();
    EXPECT_EQ(Stored(), "");
    EXPECT_FALSE(FileExists(Original("Boo")));
    Redo();
    EXPECT_EQ(Stored(), "Boo+");

    prompter.stopAtReport = static_cast<int>(prompter.progressTexts.size()) + 1;
    ImportAsked(wave, "Hey");
    EXPECT_EQ(prompter.TakeMessages(), Texts{question}) << "who stops it knows why it is not there";
    EXPECT_EQ(Stored(), "Boo+");
}

TEST_F(SoundImport, WithoutAQuestionItIsRefusedUnlessWanted) {
    const Path wave = MakeStereo("a.WAV");
    EXPECT_FALSE(sounds.ImportSound(wave, "Boo"));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Invalid Audio File extension"});
    EXPECT_TRUE(sounds.ImportSound(wave, "Boo", true));
    EXPECT_EQ(Stored(), "Boo+");
    EXPECT_EQ(prompter.TakeMessages(), Texts{});

    // Damage to our own form is not hidden by a converter that reads what is left.
    Bytes damaged = PcmWave(22050, 1, 16, 100, [](int, int) { return 0; });
    damaged[32] = 1;
    damaged[34] = 8;
    damaged.resize(100);
    WriteBytes(folder / "b.wav", damaged);
    EXPECT_FALSE(sounds.ImportSound(folder / "b.wav", "Hey", true));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Corrupt audio file!"});
    WriteBytes(folder / "c.flac", Bytes(500, 7));
    EXPECT_FALSE(sounds.ImportSound(folder / "c.flac", "Hey", true));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Invalid Audio File extension"});
    WriteBytes(folder / "d.wav", PcmWave(48000, 2, 16, 0, [](int, int) { return 0; }));
    EXPECT_FALSE(sounds.ImportSound(folder / "d.wav", "Hey", true));
    EXPECT_EQ(Stored(), "Boo+");
}

TEST_F(SoundImport, TheOriginalGoesWhereItsSoundGoes) {
    ASSERT_TRUE(sounds.ImportSound(MakeStereo("a.wav"), "Boo", true));
    ASSERT_TRUE(sounds.ImportSound(MakeStereo("b.wav", 44100), "Hey", true));
    ASSERT_TRUE(sounds.StoreSound("Plain", 22050, Bytes(50, 1)));
    const Bytes ofBoo = ReadBytes(Original("Boo"));

    Select(SourceMode::Sounds, {"Boo"});
    prompter.Answer(std::string("Wow"));
    assets.DuplicateSelected();
    EXPECT_EQ(Stored(), "Boo+ Hey+ Plain Wow+");
    EXPECT_EQ(ReadBytes(Original("Wow")), ofBoo);
    Undo();
    EXPECT_EQ(Stored(), "Boo+ Hey+ Plain");

    Select(SourceMode::Sounds, {"Boo"});
    prompter.Answer(std::string("Hey"));
    assets.RenameSelected();
    EXPECT_EQ(Stored(), "Hey+ Plain");
    EXPECT_EQ(ReadBytes(Original("Hey")), ofBoo);
    EXPECT_FALSE(FileExists(Original("Boo")));
    Undo();
    EXPECT_EQ(Stored(), "Boo+ Hey+ Plain");
    EXPECT_EQ(ReadBytes(Original("Boo")), ofBoo);
    EXPECT_NE(ReadBytes(Original("Hey")), ofBoo);

    Select(SourceMode::Sounds, {"Plain"});
    prompter.Answer(std::string("Boo"));
    assets.RenameSelected();
    EXPECT_EQ(Stored(), "Boo Hey+") << "what is replaced takes its original along";
    Undo();
    EXPECT_EQ(Stored(), "Boo+ Hey+ Plain");

    ASSERT_TRUE(sounds.StoreSound("Hey", 22050, Bytes(50, 1)));
    EXPECT_EQ(Stored(), "Boo+ Hey Plain") << "recorded anew";
    Undo();
    EXPECT_EQ(Stored(), "Boo+ Hey+ Plain");

    Select(SourceMode::Sounds, {"Boo", "Plain"});
    assets.DeleteSelected();
    EXPECT_EQ(Stored(), "Hey+");
    EXPECT_FALSE(FileExists(Original("Boo")));
}

TEST_F(SoundImport, TheMixHasTheOriginalAsLongAsItIsTheSounds) {
    ASSERT_TRUE(sounds.StoreSound("Plain", 22050, Bytes(2205, 192)));
    ASSERT_TRUE(scene.sounds.Place(50, "Plain"));
    EXPECT_FALSE(Mixed()) << "the track is all there is";
    ASSERT_TRUE(sounds.ImportSound(MakeStereo("a.wav"), "Boo", true));
    EXPECT_FALSE(Mixed()) << "it is placed nowhere";
    ASSERT_TRUE(scene.sounds.Place(10, "Boo"));
    const std::optional<CMixedSound> mixed = Mixed();
    ASSERT_TRUE(mixed);
    ASSERT_EQ(mixed->stereo.size(), 2U * 4 * 48000);
    const std::size_t start = 2 * MixedBefore(10, 25);
    for (std::size_t i = 0; i < 4800; i += 11) {
        ASSERT_NEAR(mixed->stereo[start + 2 * i], 0.5 * Tone(500, static_cast<double>(i), 48000), 1e-4);
        ASSERT_NEAR(mixed->stereo[start + 2 * i + 1], 0, 1e-4) << "left and right stay apart";
    }
    EXPECT_NEAR(mixed->stereo[2 * MixedBefore(51, 25)], 0.5, 1e-4) << "sounds without an original are there too";

    static_cast<void>(WriteSound(Sound("Boo"), 22050, Bytes(2205, 3))); // an older program knows no originals
    EXPECT_FALSE(Mixed());
    ASSERT_TRUE(RemoveFile(Sound("Boo")));
    std::optional<CMixedSound> none;
    EXPECT_FALSE(MixSceneSound(model.Scene(), model.Paths(), none));
    EXPECT_FALSE(none);
}

TEST_F(SoundImport, SoundsMoveToOtherFrames) {
    ASSERT_TRUE(sounds.StoreSound("Boo", 22050, Bytes(2205, 192)));
    scene.sounds.Set({{20, "Boo"}, {5, "Boo"}});
    EXPECT_FALSE(sounds.MoveSound(6, 7));
    EXPECT_FALSE(sounds.MoveSound(5, 5));
    EXPECT_FALSE(sounds.MoveSound(5, 100));
    EXPECT_EQ(prompter.TakeMessages(), Texts{});
    EXPECT_FALSE(sounds.MoveSound(5, 20));
    EXPECT_EQ(prompter.TakeMessages(),
              Texts{"A sound already exists at that frame. \nPlease delete it from xsheet first"});
    TakeHints();
    EXPECT_TRUE(sounds.MoveSound(5, 30));
    EXPECT_EQ(scene.sounds.All(), (std::vector<CSoundPlacement>{{20, "Boo"}, {30, "Boo"}}));
    EXPECT_EQ(TakeHints(), Hints{8});
    EXPECT_EQ((*model.soundBuffer)[5 * 882], 128) << "and it is heard there";
    EXPECT_EQ((*model.soundBuffer)[30 * 882], 192);
    model.cursorFrame = 25;
    EXPECT_EQ(sounds.SoundAtCursor(), 20);
    model.cursorFrame = 19;
    EXPECT_EQ(sounds.SoundAtCursor(), std::nullopt);
    Undo();
    EXPECT_EQ(scene.sounds.All(), (std::vector<CSoundPlacement>{{20, "Boo"}, {5, "Boo"}}));
}

} // namespace
} // namespace velmor::testing
