#include "DocumentFixture.h"

#include "render/Movie.h"
#include "scene/RenderOperations.h"
#include "scene/Settings.h"

namespace velmor {
namespace {

using testing::CDocumentFixture;
using testing::ReadBytes;
using testing::WriteBytes;
using Texts = std::vector<std::string>;

class RenderOperations : public CDocumentFixture {
protected:
    RenderOperations() { NewScene("S", 10); }

    CRenderSetup Setup(RenderFormat format = RenderFormat::Bitmap) {
        CRenderSetup setup;
        setup.levels = {0};
        setup.firstFrame = 2;
        setup.lastFrame = 8;
        setup.step = 3;
        setup.scaling = 50;
        setup.antialias = false;
        setup.format = format;
        setup.quality = 70;
        setup.directory = (folder / "a" / "b").string();
        setup.name = "shot";
        return setup;
    }

    const CRenderSetup& Initial() {
        return std::any_cast<const CRenderSetupRequest&>(prompter.lastRequest).initial;
    }

    /// What the dialog says to a setup that it does not take.
    std::string RefusalOf(const CRenderSetup& setup) {
        prompter.TakeMessages();
        prompter.Answer(setup);
        doc->Renders().AskAndRender();
        EXPECT_TRUE(prompter.progressTexts.empty());
        const Texts messages = prompter.TakeMessages();
        return messages.size() == 1 ? messages.front() : "not one message";
    }
};

TEST_F(RenderOperations, RendersWhatWasSetUpAndRemembersIt) {
    prompter.Cancel();
    doc->Renders().AskAndRender();
    EXPECT_EQ(Initial().levels, std::vector<int>{0});
    EXPECT_EQ(Initial().lastFrame, 10);
    EXPECT_EQ(Initial().scaling, 100);
    EXPECT_EQ(Initial().directory, (Database() / "Renders").string());
    EXPECT_EQ(Initial().name, "S");
    EXPECT_EQ(Initial().quality, 100);
    EXPECT_FALSE(Initial().transparentBackground);
    EXPECT_EQ(Initial().compressor, defaultCompressor);
    EXPECT_EQ(Get(profile, setting::lastRenderName), "");

    CRenderSetup setup = Setup();
    setup.transparentBackground = true;
    setup.compressor = "FFV1";
    prompter.Answer(setup);
    doc->Renders().AskAndRender();
    EXPECT_EQ(ListFiles(folder / "a" / "b", ""), (Texts{"shot0002.bmp", "shot0005.bmp", "shot0008.bmp"}));
    EXPECT_EQ(prompter.progressTexts, (Texts{"Preparing Frame : 2", "Preparing Frame : 5", "Preparing Frame : 8"}));
    EXPECT_TRUE(prompter.TakeMessages().empty());
    ASSERT_EQ(prompter.rendered.size(), 1u);
    EXPECT_EQ(prompter.rendered.back().file, folder / "a" / "b" / "shot0002.bmp");
    EXPECT_EQ(prompter.rendered.back().frameCount, 3);
    EXPECT_FALSE(prompter.rendered.back().isMovie);

    StartDocument(); // and the scene is open again
    prompter.Cancel();
    doc->Renders().AskAndRender();
    EXPECT_EQ(Initial().step, 3);
    EXPECT_EQ(Initial().scaling, 50);
    EXPECT_FALSE(Initial().antialias);
    EXPECT_EQ(Initial().format, RenderFormat::Bitmap);
    EXPECT_EQ(Initial().quality, 70);
    EXPECT_TRUE(Initial().transparentBackground);
    EXPECT_EQ(Initial().compressor, "FFV1");
    EXPECT_EQ(Initial().directory, (folder / "a" / "b").string());
    EXPECT_EQ(Initial().name, "shot");

    Set(profile, setting::lastRenderCompressor, "of another machine");
    Set(profile, setting::lastRenderQuality, 1000);
    prompter.Cancel();
    doc->Renders().AskAndRender();
    EXPECT_EQ(Initial().compressor, defaultCompressor);
    EXPECT_EQ(Initial().quality, 100);
}

TEST_F(RenderOperations, RefusesInItsOwnDialogWhatCannotBeRendered) {
    const auto refusal = [this](const std::function<void(CRenderSetup&)>& spoil) {
        CRenderSetup setup = Setup();
        spoil(setup);
        return RefusalOf(setup);
    };
    EXPECT_EQ(refusal([](auto& s) { s.levels.clear(); }), "You should select at least one level to render!");
    EXPECT_EQ(refusal([](auto& s) { s.firstFrame = 0; }), "Invalid start or end frame!");
    EXPECT_EQ(refusal([](auto& s) { s.firstFrame = 9; }), "Invalid start or end frame!");
    EXPECT_EQ(refusal([](auto& s) { s.lastFrame = 11; }), "Invalid start or end frame!");
    EXPECT_EQ(refusal([](auto& s) { s.step = 0; }), "Invalid step value!");
    EXPECT_EQ(refusal([](auto& s) { s.scaling = 0; }), "Invalid scaling value!");
    EXPECT_EQ(refusal([](auto& s) { s.scaling = 401; }), "Invalid scaling value!");
    EXPECT_EQ(refusal([](auto& s) { s.quality = 101; }), "Invalid quality value!");
    EXPECT_EQ(refusal([](auto& s) { s.directory.clear(); }), "Choose a directory for the rendered files!");
    EXPECT_EQ(refusal([](auto& s) { s.directory = "renders"; }),
              "The directory of the rendered files should be given in full!");
    EXPECT_EQ(refusal([](auto& s) { s.name.clear(); }), "Enter a name for the rendered files!");
    for (const char* name : {"a/b", "a\\b", ".."})
        EXPECT_EQ(refusal([&](auto& s) { s.name = name; }),
                  "The name of the rendered files may not hold a directory!");
    EXPECT_FALSE(FolderExists(folder / "a"));
    EXPECT_EQ(Get(profile, setting::lastRenderStep), 1);
    EXPECT_EQ(prompter.velmorMessages.size(), 14U);

    WriteBytes(folder / "a", std::vector<std::uint8_t>{1}); // in the way of the directory
    EXPECT_EQ(RefusalOf(Setup()), "Could not create the directory " + (folder / "a" / "b").string());
    static_cast<void>(RemoveFile(folder / "a"));
    static_cast<void>(CreateFolder(folder / "a" / "b" / "shot.avi")); // in the way of the movie
    EXPECT_EQ(RefusalOf(Setup(RenderFormat::Avi)),
              "Could not write to " + (folder / "a" / "b" / "shot.avi").string());
}

TEST_F(RenderOperations, FramesTooLargeForTheFormatAreRefused) {
    NewScene("Wide", 3, 2048, 10);
    CRenderSetup setup = Setup(RenderFormat::Mp4);
    setup.firstFrame = setup.lastFrame = setup.step = 1;
    setup.scaling = 400;
    EXPECT_TRUE(CheckRenderSetup(setup, 3, {2048, 10}));
    EXPECT_EQ(CheckRenderSetup(setup, 3, {8000, 10}).Message(),
              "Frames of 32000 x 40 pixels are too large for this file format, which has 16384 at most!");
    setup.format = RenderFormat::Png;
    EXPECT_TRUE(CheckRenderSetup(setup, 3, {8000, 10}));
    prompter.Answer(setup);
    doc->Renders().AskAndRender();
    EXPECT_TRUE(FileExists(folder / "a" / "b" / "shot0001.png"));
}

TEST_F(RenderOperations, AsksBeforeOverwritingUnlessItResumes) {
    prompter.Answer(Setup());
    doc->Renders().AskAndRender();
    const Path first = folder / "a" / "b" / "shot0002.bmp";
    WriteBytes(first, std::vector<std::uint8_t>{7});
    prompter.confirmations = {false};
    prompter.Answer(Setup());
    doc->Renders().AskAndRender();
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Rendered Frames Exist, Do you want to overwrite them ?"});
    EXPECT_EQ(ReadBytes(first).size(), 1U);

    CRenderSetup resumed = Setup();
    resumed.resume = true;
    prompter.Answer(resumed);
    doc->Renders().AskAndRender();
    EXPECT_TRUE(prompter.TakeMessages().empty());
    EXPECT_EQ(ReadBytes(first).size(), 1U);

    prompter.Answer(Setup());
    doc->Renders().AskAndRender();
    EXPECT_GT(ReadBytes(first).size(), 1U);
}

TEST_F(RenderOperations, StopAsksAndKeepsTheMovieSoFar) {
    prompter.stopAtReport = 2;
    prompter.confirmations = {true};
    prompter.Answer(Setup(RenderFormat::Mp4));
    doc->Renders().AskAndRender();
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Do you want to stop rendering?", "Stopped after Frame : 5"}));
    EXPECT_EQ(ListFiles(folder / "a" / "b", ""), Texts{"shot.mp4"});
    EXPECT_TRUE(prompter.rendered.empty()) << "whoever stopped it is not asked to look at it";
}

TEST_F(RenderOperations, OffersToPlayAMovieInTheProgramsOwnPlayerIfThatCan) {
    int frames = 0;
    prompter.usePlayer = [&](CMovie& movie) { frames = movie.Stream().frameCount; };
    prompter.Answer(Setup(RenderFormat::Avi));
    doc->Renders().AskAndRender();
    ASSERT_EQ(prompter.rendered.size(), 1u);
    EXPECT_TRUE(prompter.rendered.back().isMovie);
    ASSERT_TRUE(prompter.rendered.back().play);
    prompter.rendered.back().play();
    EXPECT_EQ(frames, 7) << "the empty ones between the three included";
    prompter.Answer(Setup(RenderFormat::Mp4));
    doc->Renders().AskAndRender();
    ASSERT_EQ(prompter.rendered.size(), 2u);
    EXPECT_FALSE(prompter.rendered.back().play);
}

TEST_F(RenderOperations, CompressorIsChosenInADialogOfItsOwn) {
    prompter.Cancel();
    doc->Renders().AskAndRender();
    const auto request = std::any_cast<CRenderSetupRequest>(prompter.lastRequest);
    prompter.Answer(std::string("FFV1"));
    EXPECT_EQ(request.chooseCompressor("MJPEG"), "FFV1");
    const auto& choice = std::any_cast<const CCompressorRequest&>(prompter.lastRequest);
    EXPECT_EQ(choice.initial, "MJPEG");
    EXPECT_EQ(choice.compressors.size(), AvailableCompressors().size());
}

} // namespace
} // namespace velmor
