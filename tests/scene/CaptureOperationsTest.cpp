#include "scene/CaptureOperations.h"

#include "DocumentFixture.h"
#include "FakeCapture.h"
#include "scene/GrabOperations.h"
#include "scene/Settings.h"

#include <cstdlib>

namespace velmor::testing {
namespace {

using Texts = std::vector<std::string>;

/// Operations on a scene with an empty cel folder, with a camera that is none and a temporary folder of their own.
class CCaptureOperationsTest : public CDocumentFixture {
protected:
    CCaptureOperationsTest() {
        setenv("TMPDIR", folder.Path().c_str(), 1);
        NewScene("S");
        std::filesystem::create_directories(SceneFolder("S") / "walk");
        doc->Scenes().SetFolderName("walk");
        auto fake = std::make_unique<CFakeCapture>();
        camera = fake.get();
        operations.UseDrivers(std::move(fake));
        operations.SaveChoice({"Stand camera", {}});
    }
    ~CCaptureOperationsTest() override { unsetenv("TMPDIR"); }

    bool Capture(SourceMode kind, int threshold) {
        CCaptureSession session = operations.Session();
        return session.OpenCapture(operations.SavedChoice()) &&
               session.Grab([&](const Path& file) { return operations.TakeFrame(file, kind, threshold); });
    }

    CCaptureOperations operations{doc->Model(), doc->Grabs(), prompter, profile};
    CFakeCapture* camera = nullptr;
};

} // namespace

TEST_F(CCaptureOperationsTest, AFrameBecomesACelOfTheFolderOrAPicture) {
    EXPECT_FALSE(operations.LastCel());
    camera->frame = PlainFrame(8, 6, 10, 20, 30);
    prompter.Answer(std::string("2"));
    EXPECT_TRUE(Capture(SourceMode::Cels, 255));
    prompter.Answer(std::string("10"));
    EXPECT_TRUE(Capture(SourceMode::Cels, 0));
    prompter.Answer(std::string("sky"));
    EXPECT_TRUE(Capture(SourceMode::Pictures, 0));
    EXPECT_TRUE(prompter.AllAnswersTaken());

    CCelImg cel;
    ASSERT_TRUE(cel.Load(SceneFolder("S") / "walk" / "2.bit"));
    EXPECT_TRUE(cel.IsLine(3, 3));
    const std::optional<CCelImg> last = operations.LastCel();
    ASSERT_TRUE(last);
    EXPECT_EQ(last->FilePath(), SceneFolder("S") / "walk" / "10.bit");
    EXPECT_FALSE(last->IsLine(3, 3)) << "nothing is darker than 0";
    CCelImg picture;
    ASSERT_TRUE(picture.Load(SceneFolder("S") / "_Pictures_" / "sky.rgba"));
    EXPECT_EQ(picture.ColorAt(3, 3), (CColor{10, 20, 30, 255}));
    WriteBytes(SceneFolder("S") / "walk" / "11.bit", std::vector<std::uint8_t>{1, 2, 3});
    EXPECT_FALSE(operations.LastCel()) << "it cannot be read";
}

TEST_F(CCaptureOperationsTest, WhatGoesWrongIsToldAndAMissingOverlayOnceInARun) {
    prompter.TakeMessages();
    camera->frame = nullptr;
    const Texts noOverlay{"Notice : This source does not have a video overlay capability!"};
    for (const Texts& told : {noOverlay, Texts()}) {
        EXPECT_FALSE(Capture(SourceMode::Pictures, 0));
        Texts messages = prompter.TakeMessages();
        ASSERT_FALSE(messages.empty());
        EXPECT_EQ(messages.back(), "Could not grab a frame!");
        messages.pop_back();
        EXPECT_EQ(messages, told);
    }
    operations.SaveChoice({noCaptureDriver, {}});
    EXPECT_FALSE(Capture(SourceMode::Pictures, 0));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Please select a capture device from capture setup before capturing"});
}

TEST_F(CCaptureOperationsTest, ChoicesOutlastTheProgram) {
    const auto reopened = [this] { return CCaptureOperations(doc->Model(), doc->Grabs(), prompter, profile); };
    for (const CCaptureFormat& format :
         {CCaptureFormat{1280, 720, 29.97, "mjpeg"}, CCaptureFormat{640, 480, 25, {}}, CCaptureFormat{}}) {
        operations.SaveChoice({"Table camera", format});
        const CCaptureChoice choice = reopened().SavedChoice();
        EXPECT_EQ(choice.driver, "Table camera");
        EXPECT_EQ(choice.format, format);
    }
    Set(profile, CStringSetting{"Window", "Capture Format", ""}, "1280 wide");
    EXPECT_EQ(reopened().SavedChoice().format, CCaptureFormat{}) << "by another hand";
    operations.SaveThreshold(77);
    EXPECT_EQ(reopened().SavedThreshold(), 77);
    Set(profile, setting::captureThreshold, 1000);
    EXPECT_EQ(reopened().SavedThreshold(), 255);
}

} // namespace velmor::testing
