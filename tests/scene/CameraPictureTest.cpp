#include "DocumentFixture.h"

#include "image/CelImg.h"
#include "render/FrameWorker.h"
#include "scene/AssetOperations.h"
#include "scene/CameraPictures.h"
#include "scene/SceneLifecycle.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"

#include <chrono>
#include <thread>

namespace velmor {
namespace {

using testing::CDocumentFixture;

class CameraPicture : public CDocumentFixture {
protected:
    // A full-frame cel of one colour, exposed on a frame of the only level.
    void ExposeColor(const std::string& name, CColor color, int frame) {
        CCelImg image;
        ASSERT_TRUE(image.CreateCel(64, 48, SceneFolder("S") / "A" / (name + ".bit")));
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 64; ++x)
                image.SetColorAt(x, y, color);
        ASSERT_TRUE(image.SaveCel());
        doc->Scenes().SetSourceSelection({name});
        doc->XSheet().DropCels(0, frame, 1, false);
    }

    std::shared_ptr<const CCameraPicture> WaitForPicture() {
        for (int i = 0; i < 1000; ++i) {
            if (auto picture = doc->CameraPictures().GetCameraBitmap())
                return picture;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return nullptr;
    }

    static CColor PixelOf(const CCameraPicture& picture, int x, int y) {
        const auto at = static_cast<std::size_t>(y * picture.frame.width + x) * 3;
        return {picture.frame.pixels[at], picture.frame.pixels[at + 1], picture.frame.pixels[at + 2], 255};
    }
};

TEST_F(CameraPicture, ShowsTheCursorFrameAndDropsWhatIsNoLongerWanted) {
    EXPECT_EQ(doc->CameraPictures().CreateBitmap().Message(),
              "Internal error : CreateBitmap called with scene open!");
    NewScene("S");
    prompter.Answer(std::string("A"));
    doc->Assets().NewFolder();
    for (int frame = 0; frame < 10; ++frame)
        ExposeColor(std::to_string(frame + 1), {0, 0, static_cast<std::uint8_t>(frame * 20), 255}, frame);
    for (int frame = 0; frame < 10; ++frame) {
        doc->Cursor().SetCursorY(frame);
        ASSERT_TRUE(doc->CameraPictures().CreateBitmap());
    }
    const auto picture = WaitForPicture();
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->frame.width, 68);
    EXPECT_EQ(PixelOf(*picture, 30, 20), (CColor{0, 0, 180, 255}));
    EXPECT_TRUE(prompter.messages.empty());
}

TEST_F(CameraPicture, MissingFileIsReportedOnceAndTheLevelsBelowShow) {
    NewScene("S");
    prompter.Answer(std::string("A"));
    doc->Assets().NewFolder();
    ExposeColor("1", {10, 20, 30, 255}, 0);
    prompter.Answer(std::string("Front"));
    doc->XSheet().AddLevel();
    ExposeColor("2", {200, 200, 200, 255}, 0);
    const Path gone = SceneFolder("S") / "A" / "2.bit";
    std::filesystem::remove(gone);
    doc->Cursor().SetCursorY(0);
    ASSERT_TRUE(doc->CameraPictures().CreateBitmap());
    const auto picture = WaitForPicture();
    ASSERT_TRUE(picture);
    EXPECT_EQ(PixelOf(*picture, 5, 5), (CColor{10, 20, 30, 255}));
    doc->CameraPictures().GetCameraBitmap();
    EXPECT_EQ(prompter.TakeMessages(),
              std::vector<std::string>{"Unable to open cel file for reading :: Reading file ->" + Utf8Of(gone)});

    // The next frames that meet the same file are quiet; the scene opened anew says it again.
    ASSERT_TRUE(doc->CameraPictures().CreateBitmap());
    ASSERT_TRUE(WaitForPicture());
    EXPECT_TRUE(prompter.TakeMessages().empty());
    ASSERT_TRUE(doc->Scenes().OpenScene("S"));
    ASSERT_TRUE(doc->CameraPictures().CreateBitmap());
    ASSERT_TRUE(WaitForPicture());
    EXPECT_EQ(prompter.TakeMessages().size(), 1u);
}

} // namespace
} // namespace velmor
