#include "render/ImageCache.h"

#include "PlainRender.h"
#include "TempFolder.h"

#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace velmor {
namespace {

using testing::CTempFolder;
using testing::MakeTestImage;
using testing::Texture;

class CImageCacheTest : public ::testing::Test {
protected:
    Path Save(const std::string& name, LoadState kind, CColor color) {
        CCelImg image = MakeTestImage(m_random, 16, 16, kind, Texture::Noise);
        for (int x = 0; x < 16; ++x)
            image.SetColorAt(x, 0, color);
        image.SetFilePath(m_folder / name);
        EXPECT_TRUE(image.Save());
        return m_folder / name;
    }
    std::shared_ptr<const CRenderSource> Get(CImageCache& cache, const Path& path,
                                             const CPlacement& placement = {}) {
        std::shared_ptr<const CRenderSource> source;
        EXPECT_TRUE(cache.Get(path, placement, source));
        return source;
    }

    CTempFolder m_folder;
    std::mt19937 m_random{3};
};

TEST_F(CImageCacheTest, KeepsAnImageForEachPreparation) {
    CImageCache cache(1 << 20);
    const Path cel = Save("cel", LoadState::Cel, {});
    const Path picture = Save("picture", LoadState::Picture, {});
    CPlacement antialiased;
    antialiased.antialias = true;
    CPlacement blurred;
    blurred.blurX = 2;

    const auto plainCel = Get(cache, cel);
    EXPECT_EQ(Get(cache, cel), plainCel);
    const auto smoothCel = Get(cache, cel, antialiased);
    EXPECT_NE(smoothCel, plainCel);
    EXPECT_NE(Get(cache, cel, blurred), plainCel);
    EXPECT_EQ(Get(cache, cel, antialiased), smoothCel);
    EXPECT_EQ(Get(cache, picture, antialiased), Get(cache, picture));
    EXPECT_EQ(cache.ByteCount(), 3 * plainCel->ByteCount() + Get(cache, picture)->ByteCount());
    cache.Clear();
    EXPECT_EQ(cache.ByteCount(), 0U);
    EXPECT_NE(Get(cache, cel), plainCel);
}

TEST_F(CImageCacheTest, NeverGivesAnOldPicture) {
    CImageCache cache(1 << 20);
    const Path path = Save("cel", LoadState::Cel, {1, 2, 3, 4});
    EXPECT_EQ(Get(cache, path)->Pixels().At(5, 0), 0x04030201U);
    const std::size_t bytes = cache.ByteCount();
    Save("cel", LoadState::Cel, {5, 6, 7, 8});
    EXPECT_EQ(Get(cache, path)->Pixels().At(5, 0), 0x08070605U);
    EXPECT_EQ(cache.ByteCount(), bytes);

    std::filesystem::remove(path);
    std::shared_ptr<const CRenderSource> source = std::make_shared<CRenderSource>(
        MakeTestImage(m_random, 4, 4, LoadState::Cel, Texture::Noise), CRenderPreparation{});
    const CStatus got = cache.Get(path, {}, source);
    EXPECT_EQ(got.Message(), "Unable to open cel file for reading");
    EXPECT_EQ(source, nullptr);
}

TEST_F(CImageCacheTest, LongestUnusedGoFirst) {
    const Path a = Save("a", LoadState::Picture, {});
    const Path b = Save("b", LoadState::Picture, {});
    const Path c = Save("c", LoadState::Picture, {});
    CImageCache none(0);
    const auto size = Get(none, a)->ByteCount();
    EXPECT_EQ(none.ByteCount(), 0U);

    CImageCache cache(2 * size + size / 2);
    const auto first = Get(cache, a);
    const auto second = Get(cache, b);
    EXPECT_EQ(Get(cache, a), first);
    Get(cache, c);
    EXPECT_EQ(cache.ByteCount(), 2 * size);
    EXPECT_EQ(Get(cache, a), first);
    EXPECT_NE(Get(cache, b), second);
}

TEST_F(CImageCacheTest, ServesSeveralThreads) {
    std::vector<Path> paths;
    for (int i = 0; i < 4; ++i)
        paths.push_back(
            Save("image" + std::to_string(i), LoadState::Picture, {static_cast<std::uint8_t>(i), 0, 0, 255}));
    CImageCache none(0);
    CImageCache cache(2 * Get(none, paths[0])->ByteCount());
    std::vector<std::jthread> threads;
    for (std::size_t thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (std::size_t turn = 0; turn < 200; ++turn) {
                const std::size_t i = (turn * (thread + 1)) % paths.size();
                EXPECT_EQ(Get(cache, paths[i])->Pixels().At(0, 0), 0xff000000U + i);
            }
        });
    threads.clear();
    EXPECT_LE(cache.ByteCount(), 2 * Get(cache, paths[0])->ByteCount());
}

} // namespace
} // namespace velmor
