#include "image/render/Render.h"

#include "PlainRender.h"
#include "image/render/RenderSource.h"
#include "image/render/RowKernels.h"

#include <gtest/gtest.h>
#include <limits>
#include <numbers>

namespace velmor {
namespace {

using testing::MakeTestImage;
using testing::PlainRender;
using testing::Texture;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

struct CTestFrame {
    int width;
    int height;
    std::vector<std::uint8_t> pixels;

    CTestFrame(std::mt19937& random, int w, int h)
        : width(w), height(h), pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 3) {
        for (std::uint8_t& pixel : pixels)
            pixel = static_cast<std::uint8_t>(random());
    }
    CFrameView View() { return {pixels, width, height}; }
};

std::string Describe(const CPlacement& at) {
    std::ostringstream text;
    text.precision(17);
    text << "centre " << at.centreX << ", " << at.centreY << " angle " << at.angle << " scale " << at.scaleX << ", "
         << at.scaleY << " transparency " << at.transparency << " blur " << at.blurX << ", " << at.blurY
         << (at.antialias ? " antialias" : "");
    return text.str();
}

/// Draws by the real way and by the plain one, onto the same pixels.
void ExpectAsPlain(const CCelImg& image, const CPlacement& at, const CTestFrame& before) {
    CTestFrame drawn = before;
    CTestFrame plain = before;
    ASSERT_TRUE(Render(image, at, drawn.View()));
    PlainRender(image, at, plain.View());
    if (drawn.pixels == plain.pixels)
        return;
    const auto different = std::ranges::mismatch(drawn.pixels, plain.pixels).in1 - drawn.pixels.begin();
    const auto column = different / 3 % before.width;
    const auto row = different / 3 / before.width;
    FAIL() << Describe(at) << " image " << image.Width() << " x " << image.Height() << " frame " << before.width
           << " x " << before.height << " first at column " << column << " row " << row;
}

template<class Value, std::size_t count>
Value Pick(std::mt19937& random, const Value (&values)[count]) {
    return values[random() % count];
}

double Between(std::mt19937& random, double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
}

double AnyAngle(std::mt19937& random) {
    constexpr double pi = std::numbers::pi;
    const double special[] = {0, 0, 0, pi / 2, -pi / 2, pi, 2 * pi, pi / 4, 1e-9, -1e-17, 0.5, 3.14};
    return random() % 2 == 0 ? Pick(random, special) : Between(random, -7, 7);
}

double AnyScale(std::mt19937& random) {
    const double special[] = {1, 1, 1, -1, 2, 0.5, 4, -0.25, 3, 0.1, 100, 1e-3, 1e5, 0.99999999};
    return random() % 2 == 0 ? Pick(random, special) : Between(random, -3, 3);
}

double AnyCentre(std::mt19937& random, int size) {
    const double special[] = {0, 0.5, 0.25, 1.3, -1, -40, size / 2.0, size - 1.0, size + 30.0, 1e6};
    switch (random() % 3) {
    case 0:
        return Pick(random, special);
    case 1:
        return std::floor(Between(random, -size / 4.0, size * 1.25));
    default:
        return Between(random, -size / 4.0, size * 1.25);
    }
}

CPlacement AnyPlacement(std::mt19937& random, int width, int height) {
    CPlacement at;
    at.centreX = AnyCentre(random, width);
    at.centreY = AnyCentre(random, height);
    at.angle = AnyAngle(random);
    at.scaleX = AnyScale(random);
    at.scaleY = random() % 2 == 0 ? at.scaleX : AnyScale(random);
    const double transparencies[] = {0, 0, 0, 50, 33.3, 99.7, 100, 0.001};
    at.transparency = Pick(random, transparencies);
    at.antialias = random() % 2 == 0;
    if (random() % 16 == 0) {
        const double blurs[] = {1, 1.9, 2, 3.5, 50};
        at.blurX = Pick(random, blurs);
        at.blurY = Pick(random, blurs);
    }
    return at;
}

class CRenderOnTarget : public ::testing::TestWithParam<std::string_view> {
protected:
    void SetUp() override { UseKernelTarget(GetParam()); }
    void TearDown() override { UseKernelTarget(""); }
};

INSTANTIATE_TEST_SUITE_P(Targets, CRenderOnTarget, ::testing::ValuesIn(KernelTargets()),
                         [](const auto& target) { return std::string(target.param); });

TEST_P(CRenderOnTarget, EqualsTheFormulaOnSmallImages) {
    std::mt19937 random(17);
    const int sides[] = {2, 3, 5, 8, 16, 17, 31, 64, 90, 127};
    const Texture textures[] = {Texture::Noise,   Texture::OpaqueNoise, Texture::Gradient,
                                Texture::Painted, Texture::Painted,     Texture::Speck};
    for (int round = 0; round < 250; ++round) {
        const LoadState kind = random() % 2 == 0 ? LoadState::Cel : LoadState::Picture;
        const CCelImg image =
            MakeTestImage(random, Pick(random, sides), Pick(random, sides), kind, Pick(random, textures));
        const CTestFrame before(random, 1 + static_cast<int>(random() % 70), 1 + static_cast<int>(random() % 40));
        for (int placed = 0; placed < 12; ++placed)
            ASSERT_NO_FATAL_FAILURE(
                ExpectAsPlain(image, AnyPlacement(random, before.width, before.height), before));
    }
}

TEST_P(CRenderOnTarget, EqualsTheFormulaOnLargeImages) {
    std::mt19937 random(4);
    const CTestFrame before(random, 772, 200);
    for (const Texture texture : {Texture::Painted, Texture::Speck, Texture::OpaqueNoise, Texture::Gradient}) {
        const CCelImg image = MakeTestImage(random, 700, 300, LoadState::Cel, texture);
        for (const bool antialias : {false, true})
            for (const CPlacement& at :
                 {CPlacement{386, 100, 0.3, 1.1, 0.9}, CPlacement{400.3, 90.5, -2.5, -0.4, 0.7},
                  CPlacement{386, 100, 0, 2.37, 2.37}, CPlacement{380.3, 100, 0, 1, 1},
                  CPlacement{380.5, 100.25, 0, 1, 1}, CPlacement{380, 100, 0, 1, 1, 40}}) {
                CPlacement placed = at;
                placed.antialias = antialias;
                ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(image, placed, before));
            }
    }
}

TEST_P(CRenderOnTarget, EqualsTheFormulaAtTheEdgeOfArithmetic) {
    std::mt19937 random(5);
    const CCelImg image = MakeTestImage(random, 40, 30, LoadState::Picture, Texture::Noise);
    const CTestFrame before(random, 37, 21);
    const double values[] = {0,    1,     -1,      0.5,      20,        1e-300, -1e-300,    1e300,
                             1e18, -1e18, 1048577, infinity, -infinity, 1e-10,  notANumber, 1e-320};
    for (int round = 0; round < 1500; ++round) {
        CPlacement at{18, 10, 0, 1, 1};
        for (double* value : {&at.centreX, &at.centreY, &at.angle, &at.scaleX, &at.scaleY})
            if (random() % 3 == 0)
                *value = Pick(random, values);
        at.antialias = random() % 2 == 0;
        ASSERT_NO_FATAL_FAILURE(ExpectAsPlain(image, at, before));
    }
}

TEST(RenderTest, DrawsNothingOfWhatIsNotLoaded) {
    std::mt19937 random(1);
    CTestFrame frame(random, 4, 4);
    const auto before = frame.pixels;
    EXPECT_EQ(Render(CCelImg(), CPlacement{}, frame.View()).Message(),
              "Internal Error : cel/picture is not loaded in Render");
    EXPECT_EQ(frame.pixels, before);
}

TEST(RenderTest, LeavesTheImageAlone) {
    std::mt19937 random(1);
    const CCelImg image = MakeTestImage(random, 20, 20, LoadState::Cel, Texture::Noise);
    const CCelImg before = image;
    CTestFrame frame(random, 20, 20);
    CPlacement at{10, 10};
    at.blurX = 3;
    at.antialias = true;
    ASSERT_TRUE(Render(image, at, frame.View()));
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        EXPECT_TRUE(std::ranges::equal(image.PlaneOf(channel), before.PlaneOf(channel)));
    EXPECT_FALSE(image.IsModified());
}

TEST(RenderTest, BlursFromARadiusOfTwo) {
    CPlacement at;
    at.blurX = 1.9;
    EXPECT_EQ(PreparationFor(at, LoadState::Cel), CRenderPreparation{});
    at.blurX = 2.0;
    EXPECT_EQ(PreparationFor(at, LoadState::Picture), (CRenderPreparation{2, 1, false}));
    at.blurY = notANumber;
    EXPECT_EQ(PreparationFor(at, LoadState::Picture), (CRenderPreparation{2, 0, false}));
    at.antialias = true;
    EXPECT_FALSE(PreparationFor(at, LoadState::Picture).smooth);
    EXPECT_TRUE(PreparationFor(at, LoadState::Cel).smooth);
}

TEST(RenderTest, BadPercentagesCountAsTheNearestGoodOnes) {
    std::mt19937 random(2);
    const CCelImg image = MakeTestImage(random, 20, 20, LoadState::Picture, Texture::Noise);
    const CTestFrame before(random, 20, 20);
    const auto drawn = [&](double transparency) {
        CTestFrame frame = before;
        CPlacement at{10, 10};
        at.transparency = transparency;
        EXPECT_TRUE(Render(image, at, frame.View()));
        return frame.pixels;
    };
    EXPECT_EQ(drawn(-5), drawn(0));
    EXPECT_EQ(drawn(1e9), before.pixels);
    EXPECT_EQ(drawn(notANumber), before.pixels);
}

} // namespace
} // namespace velmor
