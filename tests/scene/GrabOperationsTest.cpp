#include "scene/GrabOperations.h"

#include "DocumentFixture.h"
#include "platform/files/Archive.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;

/// A packed bitmap of 33 x 2 pixels: one pixel, at the left of the bottom row, has the second colour of the table.
Bytes Packed(int bits, std::uint32_t color0, std::uint32_t color1, int width = 33) {
    CArchiveWriter archive;
    for (const int value : {40, width, 2, 1 | bits << 16, 0, 0, 0, 0, 0, 0})
        archive.WriteInt(value);
    if (bits <= 8) {
        archive.WriteInt(static_cast<int>(color0));
        archive.WriteInt(static_cast<int>(color1));
        for (int rest = 2; rest < 1 << bits; ++rest)
            archive.WriteInt(0);
    }
    const int rowBytes = (width * bits + 31) / 32 * 4;
    for (int i = 0; i < rowBytes * 2; ++i)
        archive.WriteByte(static_cast<std::uint8_t>(i == 0 ? (bits == 1 ? 0x80 : 1) : 0));
    return {archive.Bytes().begin(), archive.Bytes().end()};
}

class CGrabOperationsTest : public CDocumentFixture {
protected:
    void OpenScene() {
        NewScene("Grab");
        std::filesystem::create_directories(SceneFolder("Grab") / "walk");
        doc->Scenes().SetFolderName("walk");
    }
    Path CelFile(const std::string& name) const { return SceneFolder("Grab") / "walk" / (name + ".bit"); }

    static constexpr std::uint32_t black = 0;
    static constexpr std::uint32_t white = 0xffffff;
};

} // namespace

TEST_F(CGrabOperationsTest, AScanGivesTheSameCelWhicheverColorComesFirst) {
    OpenScene();
    for (const bool whiteFirst : {true, false}) {
        Bytes scan = whiteFirst ? Packed(1, white, black) : Packed(1, black, white);
        if (!whiteFirst)
            for (std::size_t i = 48; i < scan.size(); ++i)
                scan[i] = static_cast<std::uint8_t>(~scan[i]);
        prompter.Answer(std::string(whiteFirst ? "1" : "2"));
        EXPECT_TRUE(doc->Grabs().GetDataFromDIB(scan, SourceMode::Cels))
            << ::testing::PrintToString(prompter.messages);
    }
    CCelImg first, second;
    ASSERT_TRUE(first.Load(CelFile("1")));
    ASSERT_TRUE(second.Load(CelFile("2")));
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 33; ++x) {
            EXPECT_EQ(first.IsLine(x, y), x == 0 && y == 0);
            EXPECT_EQ(second.IsLine(x, y), first.IsLine(x, y));
        }
    EXPECT_EQ(doc->Model().sourceMode, SourceMode::Cels);
    EXPECT_TRUE(prompter.TakeMessages().empty());
}

TEST_F(CGrabOperationsTest, ScansOfAWrongDepthAndBrokenOnesAreRefused) {
    OpenScene();
    CGrabOperations& grabs = doc->Grabs();
    EXPECT_FALSE(grabs.GetDataFromDIB(Packed(8, black, white), SourceMode::Cels));
    EXPECT_FALSE(grabs.GetDataFromDIB(Packed(1, black, white), SourceMode::Pictures));
    EXPECT_FALSE(grabs.GetDataFromDIB(Bytes{}, SourceMode::Cels));
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Please scan black and white (1 bit) images only for cels.",
                     "Please scan truecolor (24bit) images only for pictures.", "Could Not Lock Bitmap Memory"}));
    const Bytes good = Packed(24, 0, 0);
    for (std::size_t length = 1; length < good.size(); ++length) {
        Bytes cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_FALSE(grabs.GetDataFromDIB(cut, SourceMode::Pictures)) << length;
        EXPECT_FALSE(prompter.TakeMessages().empty()) << length;
    }
    EXPECT_FALSE(grabs.GetDataFromDIB(Packed(24, 0, 0, 20000), SourceMode::Pictures));
    EXPECT_EQ(prompter.TakeMessages(), Texts{"Error in grab"});
    EXPECT_FALSE(std::filesystem::exists(SceneFolder("Grab") / "_Pictures_"));
}

TEST_F(CGrabOperationsTest, GivingUpTheNameAsksAndWritesNothing) {
    OpenScene();
    prompter.confirmations = {false, true};
    prompter.Cancel();
    prompter.Cancel();
    EXPECT_FALSE(doc->Grabs().GetDataFromDIB(Packed(24, 0, 0), SourceMode::Pictures));
    EXPECT_EQ(prompter.TakeMessages(),
              (Texts{"Do you want to cancel the grab operation ?", "Do you want to cancel the grab operation ?"}));
    EXPECT_FALSE(std::filesystem::exists(SceneFolder("Grab") / "_Pictures_"));
}

TEST_F(CGrabOperationsTest, CapturedFramesTakeTheThresholdAndNeedAScene) {
    CGrabOperations& grabs = doc->Grabs();
    EXPECT_FALSE(grabs.GetDataFromDIB(folder / "frame.bmp", SourceMode::Cels, 128));
    NewScene("Grab");
    EXPECT_FALSE(grabs.GetDataFromDIB(folder / "frame.bmp", SourceMode::Cels, 128));
    EXPECT_EQ(prompter.TakeMessages(), (Texts{"Internal Error : GetDataFromDIB called with no scene open",
                                              "Internal Error : GetDataFromDIB called with no folder open"}));
    std::filesystem::create_directories(SceneFolder("Grab") / "walk");
    doc->Scenes().SetFolderName("walk");

    // Two rows of grey 100 and 200, as a file.
    CArchiveWriter file;
    file.WriteByte('B');
    file.WriteByte('M');
    for (const int value : {54 + 16, 0, 54, 40, 2, 2, 1 | 24 << 16, 0, 0, 0, 0, 0, 0})
        file.WriteInt(value);
    for (const std::uint8_t grey : Bytes{100, 200})
        for (int i = 0; i < 8; ++i)
            file.WriteByte(grey);
    WriteBytes(folder / "frame.bmp", file.Bytes());
    prompter.Answer(std::string("007"));
    EXPECT_TRUE(grabs.GetDataFromDIB(folder / "frame.bmp", SourceMode::Cels, 150));
    CCelImg cel;
    ASSERT_TRUE(cel.Load(CelFile("7")));
    EXPECT_TRUE(cel.IsLine(0, 0));
    EXPECT_FALSE(cel.IsLine(0, 1));
    EXPECT_FALSE(grabs.GetDataFromDIB(folder / "missing.bmp", SourceMode::Pictures, 0));
    EXPECT_EQ(prompter.TakeMessages().back(), "Error in grab");
}

} // namespace velmor::testing
