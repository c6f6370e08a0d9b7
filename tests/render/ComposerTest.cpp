#include "render/FrameComposer.h"

#include "PlainRender.h"
#include "TempFolder.h"
#include "image/render/RowKernels.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::MakeTestImage;
using testing::PlainRender;
using testing::Texture;

class CComposerTest : public ::testing::Test {
protected:
    Path SaveImage(const std::string& name, int width, int height, LoadState kind, Texture texture) {
        CCelImg image = MakeTestImage(m_random, width, height, kind, texture);
        image.SetFilePath(m_folder / name);
        EXPECT_TRUE(image.Save());
        return m_folder / name;
    }

    /// Fills and draws by the plain formula the first `layerCount` layers.
    static std::vector<std::uint8_t> PlainFrame(const CFrameRequest& request, std::size_t layerCount) {
        std::vector<std::uint8_t> pixels;
        for (int row = 0; row < request.height; ++row)
            for (int column = 0; column < request.bufferWidth; ++column) {
                const bool filled = column < request.backgroundWidth;
                for (const std::uint8_t byte :
                     {BlueOf(request.background), GreenOf(request.background), RedOf(request.background)})
                    pixels.push_back(filled ? byte : 0);
            }
        for (std::size_t layer = 0; layer < layerCount; ++layer) {
            CCelImg image;
            EXPECT_TRUE(image.Load(request.layers[layer].path));
            PlainRender(image, request.layers[layer].placement, {pixels, request.bufferWidth, request.height});
        }
        return pixels;
    }

    CFrameRequest SomeFrame(int layerCount) {
        CFrameRequest request{PaddedWidthOf(90), 90, 70, MakeColorRef(1, 2, 3), {}};
        for (int layer = 0; layer < layerCount; ++layer) {
            const bool isPicture = layer % 3 == 0;
            const std::string name = "layer" + std::to_string(layer);
            CPlacement at{40.0 + layer, 35.5 - layer, 0.3 * layer, 1.2, 0.8};
            at.antialias = layer % 2 == 1;
            at.transparency = layer == 2 ? 30 : 0;
            at.blurX = layer == 3 ? 3 : 1;
            request.layers.push_back({SaveImage(name, 60, 50, isPicture ? LoadState::Picture : LoadState::Cel,
                                                isPicture ? Texture::Noise : Texture::Painted),
                                      at});
        }
        return request;
    }

    CTempFolder m_folder;
    std::mt19937 m_random{7};
    CFrameBuffer m_frame;
};

TEST_F(CComposerTest, DrawsAllLayersBottomFirstOverTheBackground) {
    const CFrameRequest request = SomeFrame(6);
    const std::vector<std::uint8_t> plain = PlainFrame(request, 6);
    for (const std::size_t cacheBytes : {std::size_t{0}, std::size_t{1} << 20}) {
        CImageCache cache(cacheBytes);
        for (const bool parallel : {false, true, true}) {
            ASSERT_TRUE(ComposeFrame(request, cache, m_frame, parallel));
            EXPECT_EQ(m_frame.width, 92);
            EXPECT_EQ(m_frame.height, 70);
            EXPECT_EQ(m_frame.pixels, plain);
        }
    }
}

// What is hidden is not drawn: every edge of what hides must be where it is.
TEST_F(CComposerTest, LayersThatHideOthersLeaveThePlainFrame) {
    constexpr int layerCount = 6;
    std::vector<Path> paths;
    for (const Texture texture : {Texture::OpaqueNoise, Texture::Painted, Texture::Gradient, Texture::Speck})
        for (const LoadState kind : {LoadState::Cel, LoadState::Picture})
            for (const int side : {60, 130, 300})
                paths.push_back(SaveImage(std::to_string(paths.size()), side, side * 3 / 4, kind, texture));
    CImageCache cache(std::size_t{1} << 28);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    };
    const std::vector<std::string_view> targets = KernelTargets();
    for (int round = 0; round < 60; ++round) {
        CFrameRequest request{PaddedWidthOf(210), 210, 75, MakeColorRef(1, 2, 3), {}};
        for (int layer = 0; layer < layerCount; ++layer) {
            CPlacement at{between(20, 190), between(10, 65), between(-4, 4), between(0.3, 3), between(0.3, 3)};
            at.angle = m_random() % 3 == 0 ? 0 : at.angle;
            at.transparency = m_random() % 5 == 0 ? 40 : 0;
            at.antialias = m_random() % 2 == 0;
            request.layers.push_back({paths[m_random() % paths.size()], at});
        }
        UseKernelTarget(targets[static_cast<std::size_t>(round) % targets.size()]);
        ASSERT_TRUE(ComposeFrame(request, cache, m_frame, round % 2 == 0));
        const std::vector<std::uint8_t> plain = PlainFrame(request, layerCount);
        const auto different = std::ranges::mismatch(m_frame.pixels, plain).in1 - m_frame.pixels.begin();
        ASSERT_EQ(different, std::ssize(plain)) << "round " << round << " column " << different / 3 % m_frame.width
                                                << " row " << different / 3 / m_frame.width;
    }
    UseKernelTarget("");
}

TEST_F(CComposerTest, FrameWithoutLayersIsBackground) {
    CFrameRequest request{4, 2, 1, MakeColorRef(1, 2, 3), {}};
    CImageCache cache(0);
    m_frame.pixels.assign(100, 9);
    ASSERT_TRUE(ComposeFrame(request, cache, m_frame, true));
    EXPECT_EQ(m_frame.pixels, (std::vector<std::uint8_t>{3, 2, 1, 3, 2, 1, 0, 0, 0, 0, 0, 0}));
}

TEST_F(CComposerTest, ManyLayersNeedSeveralPasses) {
    CFrameRequest request{52, 50, 40, 0, {}};
    const Path large = SaveImage("large", 2000, 1500, LoadState::Picture, Texture::Noise);
    for (int layer = 0; layer < 7; ++layer) {
        CPlacement at{20.0 + layer, 20, 0.1 * layer, 0.02, 0.02};
        at.transparency = 50;
        request.layers.push_back({large, at});
    }
    CImageCache cache(std::size_t{1} << 30);
    for (const bool parallel : {false, true}) {
        ASSERT_TRUE(ComposeFrame(request, cache, m_frame, parallel));
        EXPECT_EQ(m_frame.pixels, PlainFrame(request, 7));
    }
}

TEST_F(CComposerTest, StopsAtALayerThatCannotBeRead) {
    CFrameRequest request = SomeFrame(4);
    const Path missing = m_folder / "missing.bit";
    request.layers[1].path = missing;
    request.layers[3].path = m_folder / "also missing.bit";
    CImageCache cache(1 << 20);
    for (const bool parallel : {false, true}) {
        const CStatus composed = ComposeFrame(request, cache, m_frame, parallel);
        EXPECT_EQ(composed.Message(), "Unable to open cel file for reading :: Reading file ->" + missing.string());
        EXPECT_EQ(m_frame.pixels, PlainFrame(request, 1));
    }
}

TEST_F(CComposerTest, WithoutMemoryForTheFrameThereIsNone) {
    constexpr int most = std::numeric_limits<int>::max();
    CImageCache cache(0);
    ASSERT_TRUE(ComposeFrame({8, 7, 2, 0, {}}, cache, m_frame, false));
    EXPECT_EQ(ComposeFrame({most, most, most, 0, {}}, cache, m_frame, false).Message(),
              "Not enough memory to compose the frame");
    EXPECT_EQ(m_frame.width, 0);
    EXPECT_EQ(m_frame.height, 0);
    EXPECT_TRUE(m_frame.pixels.empty());
}

// As frames of a shot follow each other: levels are held, change, come and go, drawings are painted on.
TEST_F(CComposerTest, FramesInARowAreWhatEachIsByItself) {
    constexpr std::size_t mostLayers = 5;
    std::vector<Path> paths;
    for (const Texture texture : {Texture::Painted, Texture::OpaqueNoise, Texture::Speck, Texture::Gradient})
        paths.push_back(SaveImage(std::to_string(paths.size()), 60, 50, LoadState::Cel, texture));
    const auto anyLayer = [&] {
        const auto upTo = [&](unsigned most) { return static_cast<double>(m_random() % most); };
        CPlacement at{20 + upTo(50), 20 + upTo(30), 0.2 * upTo(4), 1.3, 0.9};
        at.antialias = m_random() % 2 == 0;
        return CFrameLayer{paths[m_random() % paths.size()], at};
    };
    CImageCache cache(1 << 20);
    CFrameComposer composer(cache);
    CFrameRequest request{PaddedWidthOf(90), 90, 70, MakeColorRef(1, 2, 3), {}};
    for (int frame = 0; frame < 400; ++frame) {
        const std::size_t count = request.layers.size();
        if (count < mostLayers && m_random() % 4 == 0)
            request.layers.push_back(anyLayer());
        else if (count > 0 && m_random() % 2 == 0)
            request.layers[count - 1 - m_random() % std::min<std::size_t>(count, 2)] = anyLayer();
        else if (m_random() % 20 == 0)
            request.layers.resize(count / 2);
        else if (m_random() % 20 == 0)
            request.background = MakeColorRef(static_cast<std::uint8_t>(frame), 2, 3);
        else if (m_random() % 20 == 0)
            SaveImage(std::to_string(m_random() % paths.size()), 60, 50, LoadState::Cel, Texture::Noise);
        ASSERT_TRUE(composer.Compose(request, m_frame, frame % 2 == 0));
        ASSERT_EQ(m_frame.pixels, PlainFrame(request, request.layers.size())) << "frame " << frame;
    }
}

TEST_F(CComposerTest, LevelsThatAreHeldAreKeptFromTheThirdFrameOn) {
    CFrameRequest request = SomeFrame(4);
    CHeldLayers held;
    // How many layers are kept, and how many are worth it, when the one with that number moves.
    const auto move = [&](std::size_t layer) {
        request.layers[layer].placement.centreX += 1;
        const std::size_t kept = held.Begin(request);
        const std::size_t worth = held.WorthKeeping();
        if (worth > kept)
            held.Keep(m_frame, worth);
        return std::pair(kept, worth);
    };
    using Pair = std::pair<std::size_t, std::size_t>;
    EXPECT_EQ(move(3), Pair(0, 0));
    EXPECT_EQ(move(3), Pair(0, 0));
    EXPECT_EQ(move(3), Pair(0, 3));
    EXPECT_EQ(move(3), Pair(3, 3));
    EXPECT_EQ(move(2), Pair(0, 2)); // two that change in turns
    EXPECT_EQ(move(3), Pair(2, 2));
    EXPECT_EQ(move(2), Pair(2, 2));
    EXPECT_EQ(move(0), Pair(0, 0));
    EXPECT_EQ(move(3), Pair(0, 0));
    EXPECT_EQ(move(3), Pair(0, 3));
    SaveImage("layer1", 60, 50, LoadState::Cel, Texture::Noise); // painted on
    EXPECT_EQ(move(3), Pair(0, 1));
    request.background = MakeColorRef(9, 9, 9);
    EXPECT_EQ(move(3), Pair(0, 0));
}

CXSheetCell Cell(double x, double y, double rotation) {
    return CXSheetCell::FromFile("A", "1", {x, y, 2, 0.5, rotation}, 25, 3, 1, {10, 10});
}

TEST(PlaceCelTest, TurnsThePointBackAndTheImageOn) {
    const double quarter = std::acos(0.0);
    const CPlacement at = PlaceCell(Cell(320, 250, 0.5), {10, -10, quarter, 2}, {{640, 480}, {640, 480}, 1}, true);
    // (10, 0) from the centre, turned by minus a quarter and doubled.
    EXPECT_NEAR(at.centreX, 320, 1e-9);
    EXPECT_NEAR(at.centreY, 240 - 20, 1e-9);
    EXPECT_DOUBLE_EQ(at.angle, 0.5 + quarter);
    EXPECT_EQ(at.scaleX, 4);
    EXPECT_EQ(at.scaleY, 1);
    EXPECT_EQ(at.transparency, 25);
    EXPECT_EQ(at.blurX, 3);
    EXPECT_TRUE(at.antialias);
}

TEST(PlaceCelTest, ZoomOfNothingLeavesEverythingInTheCentre) {
    const CPlacement at = PlaceCell(Cell(100, 50, 0), {0, 0, 1, 0}, {{641, 481}, {641, 481}, 1}, false);
    EXPECT_EQ(at.centreX, 320);
    EXPECT_EQ(at.centreY, 240);
    EXPECT_EQ(at.scaleX, 0);
}

TEST(PlaceCelTest, SmallerOutputKeepsTheCentreOfTheScene) {
    const COutputGeometry geometry{{640, 480}, {324, 243}, 0.50625};
    const CPlacement at = PlaceCell(Cell(320, 240, 0), {}, geometry, false);
    EXPECT_EQ(at.centreX, 162);
    // Half of 480 - 243 is 118.5, the centre of 243 rows is row 121.
    EXPECT_EQ(at.centreY, 121 + 0.5 * 0.50625);
    EXPECT_EQ(at.scaleX, 2 * 0.50625);
}

} // namespace
} // namespace velmor
