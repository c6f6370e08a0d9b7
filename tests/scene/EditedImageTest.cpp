#include "scene/EditedImage.h"

#include "AssetScene.h"
#include "render/ImageCache.h"
#include "scene/CameraOperations.h"
#include "scene/DialogRequests.h"
#include "scene/FlipbookOperations.h"
#include "scene/RenderOperations.h"

#include <array>
#include <functional>

namespace velmor::testing {

namespace {

class EditedImage : public CAssetScene {
protected:
    void MakeFlipbook() {
        prompter.Answer(CFlipbookAnswer{true, {{0}, 1, 1, 1, 50, 50, false}});
        static_cast<void>(flipbooks.MakeFlipbook());
    }
    void Render() {
        CRenderSetup setup;
        setup.levels = {0};
        setup.firstFrame = setup.lastFrame = 1;
        setup.format = RenderFormat::Bitmap;
        setup.directory = Utf8Of(folder / "out");
        setup.name = "shot";
        prompter.Answer(setup);
        renders.AskAndRender();
    }
    bool AnythingMade() const { return flipbooks.HasLastFlipbook() || FileExists(folder / "out" / "shot0001.bmp"); }

    CImageCache cache{1 << 20};
    CCameraOperations camera{Context(), cursor};
    CFlipbookOperations flipbooks{Context(), cache};
    CRenderOperations renders{Context(), cache, [](const Path&) {}};
    /// Those that show drawings from their files.
    const std::array<std::function<void()>, 3> commands{[this] { camera.CheckLines(); }, [this] { MakeFlipbook(); },
                                                        [this] { Render(); }};
};

} // namespace

TEST_F(EditedImage, IsWrittenOnceAndStaysOpen) {
    EXPECT_TRUE(CEditedImage(Context()).Save()) << "nothing is open, so nothing is left unsaved";
    MakeCel(CelFile("1"), white);
    Edit(CelFile("1"), red);
    EXPECT_TRUE(CEditedImage(Context()).Save());
    EXPECT_EQ(TakeHints(), std::vector<int>{260});
    EXPECT_EQ(Load(CelFile("1")).ColorAt(1, 0), red);
    EXPECT_EQ(model.celImg.GetLoadState(), LoadState::Cel);

    EXPECT_TRUE(CEditedImage(Context()).Save());
    EXPECT_TRUE(TakeHints().empty()) << "the picture shows it already";
}

TEST_F(EditedImage, ThatCannotBeWrittenNamesItsFile) {
    MakeCel(CelFile("1"), white);
    Edit(CelFile("1"), red);
    PutInTheWay(CelFile("1"));
    EXPECT_FALSE(CEditedImage(Context()).Save());
    EXPECT_EQ(
        prompter.TakeMessages(),
        std::vector<std::string>{"Problem opening file for writing:: Writing file ->" + Utf8Of(CelFile("1"))});
    EXPECT_TRUE(TakeHints().empty());
    EXPECT_TRUE(model.celImg.IsModified());
    model.celImg.SetModified(false);
}

TEST_F(EditedImage, IsWrittenBeforeItsFileIsShown) {
    MakeCel(CelFile("1"), white);
    CColor painted = blue;
    for (const auto& command : commands) {
        painted = painted == red ? blue : red;
        Edit(CelFile("1"), painted);
        command();
        EXPECT_EQ(Load(CelFile("1")).ColorAt(1, 0), painted);
        EXPECT_FALSE(model.celImg.IsModified());
    }
    EXPECT_TRUE(AnythingMade());
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(EditedImage, ThatCannotBeWrittenIsShownAsItWasIfTheUserWants) {
    MakeCel(CelFile("1"), white);
    Edit(CelFile("1"), red);
    PutInTheWay(CelFile("1"));
    const std::string question =
        "The image could not be saved.\nDo you want to go on without saving it ?\n\n" + Utf8Of(CelFile("1"));
    for (const auto& command : commands) {
        prompter.confirmations = {false};
        command();
        EXPECT_EQ(prompter.TakeMessages().back(), question);
        EXPECT_FALSE(std::any_cast<CLineCheckRequest>(&prompter.lastRequest));
    }
    EXPECT_FALSE(AnythingMade());
    MakeFlipbook();
    EXPECT_TRUE(flipbooks.HasLastFlipbook());
    EXPECT_TRUE(model.celImg.IsModified());
    model.celImg.SetModified(false);
}

} // namespace velmor::testing
