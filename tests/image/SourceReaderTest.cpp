#include "image/render/SourceReader.h"

#include "DamagedFiles.h"
#include "PlainRender.h"
#include "image/render/RowKernels.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::ForEachDamage;
using testing::MakeTestImage;
using testing::Texture;
using testing::WriteBytes;

constexpr int tileSide = CUniformMap::tileSide;

std::uint32_t PixelOf(const CCelImg& image, int x, int y) {
    const CColor color = image.ColorAt(x, y);
    return static_cast<std::uint32_t>(color.blue) | static_cast<std::uint32_t>(color.green) << 8 |
           static_cast<std::uint32_t>(color.red) << 16 | static_cast<std::uint32_t>(color.alpha) << 24;
}

/// The image as it is after its preparation, by the operations on planes.
CCelImg Prepared(CCelImg image, const CRenderPreparation& preparation) {
    if (preparation.blurX > 0 || preparation.blurY > 0)
        static_cast<void>(Blur(image, preparation.blurX, preparation.blurY));
    if (preparation.smooth)
        static_cast<void>(Smooth(image));
    return image;
}

CRect VisibleArea(const CCelImg& image) {
    CRect area;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x)
            if (image.ColorAt(x, y).alpha != 0)
                area = Union(area, {x, y, x + 1, y + 1});
    return area;
}

TileColor ColorOfTile(const CCelImg& image, int left, int bottom) {
    const std::uint32_t first = PixelOf(image, left, bottom);
    bool isTransparent = true;
    bool isUniform = true;
    bool isOpaque = true;
    for (int y = bottom; y < std::min(bottom + tileSide, image.Height()); ++y)
        for (int x = left; x < std::min(left + tileSide, image.Width()); ++x) {
            isTransparent &= PixelOf(image, x, y) >> 24 == 0;
            isUniform &= PixelOf(image, x, y) == first;
            isOpaque &= PixelOf(image, x, y) >> 24 == 255;
        }
    return isTransparent ? 0 : isUniform ? first : isOpaque ? mixedOpaqueColors : mixedColors;
}

std::vector<TileColor> TileColorsOf(const CCelImg& image) {
    std::vector<TileColor> colors;
    for (int y = 0; y < image.Height(); y += tileSide)
        for (int x = 0; x < image.Width(); x += tileSide)
            colors.push_back(ColorOfTile(image, x, y));
    return colors;
}

void ExpectPixels(const CStripedPixels& pixels, const CCelImg& image, const CRect& visible) {
    const CRect area = pixels.Area();
    ASSERT_EQ(Union(area, visible), area);
    for (int y = area.y; y < area.endY; ++y)
        for (int x = area.x; x < area.endX; ++x) {
            ASSERT_EQ(pixels.At(x, y), PixelOf(image, x, y)) << x << ", " << y;
            // Groups of pixels are read from any on.
            for (int behind = x; behind < std::min(x + CPixelRow::slack, area.endX); ++behind)
                ASSERT_EQ(pixels.Origin()[pixels.OffsetOf(x, y) + behind - x], PixelOf(image, behind, y));
        }
}

/// `image` is prepared.
void ExpectHolds(const CRenderSource& source, const CCelImg& image) {
    const CRect visible = VisibleArea(image);
    ASSERT_EQ(source.Width(), image.Width());
    ASSERT_EQ(source.Height(), image.Height());
    ASSERT_EQ(source.Kind(), image.GetLoadState());
    ASSERT_EQ(source.IsOpaque(),
              std::ranges::all_of(image.PlaneOf(Channel::Alpha), [](std::uint8_t alpha) { return alpha == 255; }));
    const CRect painted{std::max(visible.x - 1, 0), std::max(visible.y - 1, 0), visible.endX, visible.endY};
    ASSERT_EQ(source.PaintedArea(), painted);
    ASSERT_NO_FATAL_FAILURE(ExpectPixels(source.Pixels(), image, visible));
    const std::vector<TileColor> colors = TileColorsOf(image);
    const CUniformMap areas(colors, image.Width(), image.Height());
    const COpaqueMap opaque(colors, image.Width(), image.Height());
    ASSERT_EQ(source.OpaqueAreas().IsEmpty(), opaque.IsEmpty());
    for (int y = 0; y < image.Height(); y += tileSide)
        for (int x = 0; x < image.Width(); x += tileSide) {
            ASSERT_EQ(source.UniformAreas().DistanceAt(x, y), areas.DistanceAt(x, y)) << x << ", " << y;
            if (areas.DistanceAt(x, y) > 0) {
                ASSERT_EQ(source.UniformAreas().ColorAt(x, y), areas.ColorAt(x, y)) << x << ", " << y;
            }
            if (!opaque.IsEmpty()) {
                ASSERT_EQ(source.OpaqueAreas().ReachAt(x, y), opaque.ReachAt(x, y)) << x << ", " << y;
            }
        }
}

/// Takes paint and lines away but in a part, and sometimes the paint there too.
void ClearAround(std::mt19937& random, CCelImg& image) {
    const auto pick = [&random](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    const CRect kept{pick(image.Width()), pick(image.Height()), image.Width() - pick(image.Width()),
                     image.Height() - pick(image.Height())};
    const bool keepsPaint = random() % 2 == 0;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const bool isKept = x >= kept.x && x < kept.endX && y >= kept.y && y < kept.endY;
            if (!isKept || !keepsPaint)
                image.PlaneOf(Channel::Alpha)[image.IndexOf(x, y)] = 0;
            if (!isKept && image.GetLoadState() == LoadState::Cel)
                image.SetLine(x, y, false);
        }
}

class CSourceReaderTest : public ::testing::TestWithParam<std::string_view> {
protected:
    void SetUp() override { UseKernelTarget(GetParam()); }
    void TearDown() override { UseKernelTarget(""); }

    CCelImg AnyImage(int width, int height) {
        const Texture textures[] = {Texture::Noise, Texture::OpaqueNoise, Texture::Gradient, Texture::Painted,
                                    Texture::Speck};
        const LoadState kind = m_random() % 2 == 0 ? LoadState::Cel : LoadState::Picture;
        CCelImg image = MakeTestImage(m_random, width, height, kind, textures[m_random() % std::size(textures)]);
        if (m_random() % 2 == 0)
            ClearAround(m_random, image);
        return image;
    }
    int AnySide() {
        const int sides[] = {2, 3, 7, 8, 9, 16, 40, 64, 111, 112, 127, 128, 129, 143, 144, 145, 260};
        return sides[m_random() % std::size(sides)];
    }

    CTempFolder m_folder;
    std::mt19937 m_random{11};
};

INSTANTIATE_TEST_SUITE_P(Targets, CSourceReaderTest, ::testing::ValuesIn(KernelTargets()),
                         [](const auto& target) { return std::string(target.param); });

TEST_P(CSourceReaderTest, PreparesAsThePlanesAre) {
    for (int round = 0; round < 120; ++round) {
        CCelImg image = AnyImage(AnySide(), AnySide());
        image.SetFilePath(m_folder / "image");
        ASSERT_TRUE(image.Save());
        ASSERT_TRUE(image.Load(m_folder / "image")); // without the alpha of an opaque picture
        CPlacement placement;
        placement.antialias = m_random() % 4 != 0;
        placement.blurX = placement.blurY = m_random() % 8 == 0 ? 2 : 1;
        const CRenderPreparation expected = PreparationFor(placement, image.GetLoadState());
        const CCelImg prepared = Prepared(image, expected);

        CRenderPreparation preparation;
        std::shared_ptr<const CRenderSource> source;
        ASSERT_TRUE(ReadRenderSource(m_folder / "image", placement, preparation, source));
        ASSERT_EQ(preparation, expected);
        ASSERT_NO_FATAL_FAILURE(ExpectHolds(*source, prepared)) << round;
        ASSERT_NO_FATAL_FAILURE(ExpectHolds(CRenderSource(image, expected), prepared)) << round;
        ASSERT_NO_FATAL_FAILURE(ExpectHolds(CRenderSource(std::move(image), expected), prepared)) << round;
    }
}

TEST(SourceReaderTest, SaysAndShowsOfAnyFileWhatLoadingDoes) {
    const CTempFolder folder;
    const Path file = folder / "image";
    std::mt19937 random(5);
    CPlacement placement;
    placement.antialias = true;
    const auto check = [&](const std::vector<std::uint8_t>& bytes) {
        WriteBytes(file, bytes);
        CCelImg image;
        const CStatus loaded = image.Load(file);
        CRenderPreparation preparation;
        std::shared_ptr<const CRenderSource> source;
        const CStatus read = ReadRenderSource(file, placement, preparation, source);
        ASSERT_EQ(read.Message(), loaded.Message());
        ASSERT_EQ(source != nullptr, static_cast<bool>(loaded));
        if (loaded) {
            ExpectHolds(*source, Prepared(std::move(image), preparation));
        }
    };
    for (const LoadState kind : {LoadState::Cel, LoadState::Picture})
        for (const Texture texture : {Texture::OpaqueNoise, Texture::Painted})
            ForEachDamage(MakeTestImage(random, 12, 9, kind, texture).FileBytes(), check);

    std::filesystem::remove(file);
    CRenderPreparation preparation;
    std::shared_ptr<const CRenderSource> source;
    EXPECT_EQ(ReadRenderSource(file, placement, preparation, source).Message(), CCelImg().Load(file).Message());
    EXPECT_EQ(ReadRenderSource(folder / ".", placement, preparation, source).Message(),
              CCelImg().Load(folder / ".").Message());
}

TEST(SourceReaderTest, TakesNoMemoryForWhatAFileOnlyPromises) {
    const CTempFolder folder;
    const Path file = folder / "image";
    for (const char* signature : {"VELMORBITFILE1.0", "VELMORPICFILE1.0"}) {
        std::vector<std::uint8_t> bytes(signature, signature + 16);
        bytes.insert(bytes.end(), {0xff, 0xff, 0xff, 0xff, 4});
        bytes.resize(4000);
        WriteBytes(file, bytes);
        CRenderPreparation preparation;
        std::shared_ptr<const CRenderSource> source;
        EXPECT_EQ(ReadRenderSource(file, {}, preparation, source).Message(), CCelImg().Load(file).Message());
    }
}

} // namespace
} // namespace velmor
