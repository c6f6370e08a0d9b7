#include "TempFolder.h"
#include "render/FrameComposer.h"
#include "render/preview/PreviewComposer.h"

#include <gtest/gtest.h>
#include <thread>

namespace velmor {
namespace {

using testing::CTempFolder;

constexpr std::size_t frameBytes = 8 * 4 * 3;

/// Contents that differ by `number`; equal numbers are equal contents.
PreviewContent Content(int number) {
    CFrameRequest request{8, 8, 4, static_cast<ColorRef>(number), {}};
    return std::make_shared<const CPreviewContent>(std::move(request), std::vector<std::optional<CFileIdentity>>{});
}

std::vector<PreviewContent> Contents(std::initializer_list<int> numbers) {
    std::vector<PreviewContent> contents;
    for (const int number : numbers)
        contents.push_back(Content(number));
    return contents;
}

class PreviewPictures : public ::testing::Test {
protected:
    /// Composes what is to be composed, and tells how many pictures that were.
    int ComposeAll() {
        int composed = 0;
        while (const auto order = pictures.Begin()) {
            pictures.Take(order->content, std::make_shared<CFrameBuffer>());
            ++composed;
        }
        return composed;
    }

    CPreviewPictures pictures{4 * frameBytes};
};

TEST_F(PreviewPictures, HoldsAndRepeatedFramesShareOnePicture) {
    pictures.Want(Contents({1, 1, 2, 1, 2}));
    EXPECT_EQ(ComposeAll(), 2);
    EXPECT_EQ(pictures.Find(Content(1)), pictures.Find(Content(1)));
    EXPECT_NE(pictures.Find(Content(1)), pictures.Find(Content(2)));
    EXPECT_EQ(pictures.ByteCount(), 2 * frameBytes);
}

TEST_F(PreviewPictures, AChangeOfOneFrameComposesThatOne) {
    pictures.Want(Contents({1, 2, 3, 4}));
    EXPECT_EQ(ComposeAll(), 4);
    pictures.Want(Contents({1, 20, 3, 4}));
    EXPECT_EQ(ComposeAll(), 1);
}

TEST_F(PreviewPictures, WhatIsNeededLastMakesRoomAndNothingThatIsNeededBefore) {
    pictures.Want(Contents({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(ComposeAll(), 4) << "a fifth would cost one that is needed before it";
    pictures.Want(Contents({3, 4, 5, 6, 1, 2}));
    EXPECT_EQ(ComposeAll(), 2);
    EXPECT_EQ(pictures.ByteCount(), 4 * frameBytes);
    EXPECT_TRUE(pictures.Has(Content(6)));
    EXPECT_FALSE(pictures.Has(Content(1)));
    pictures.Want(Contents({7, 8, 9, 10}));
    ASSERT_NE(pictures.Find(Content(5)), nullptr);
    static_cast<void>(pictures.Begin());
    EXPECT_FALSE(pictures.Has(Content(3)))
        << "of those that nobody needs the one that was unused longest goes first";
    EXPECT_TRUE(pictures.Has(Content(5)));
    EXPECT_LE(pictures.ByteCount(), 4 * frameBytes) << "what is being composed counts";
}

TEST_F(PreviewPictures, OnePictureIsAllowedHoweverSmallTheBound) {
    CPreviewPictures small(1);
    small.Want(Contents({1, 2}));
    const auto order = small.Begin();
    ASSERT_TRUE(order);
    EXPECT_TRUE(order->isUrgent);
    EXPECT_FALSE(small.Begin());
    small.Take(order->content, std::make_shared<CFrameBuffer>());
    EXPECT_FALSE(small.Begin()) << "the first is needed before the second";
    small.Want(Contents({2, 1}));
    EXPECT_TRUE(small.Begin());
    EXPECT_FALSE(small.Has(Content(1)));
}

TEST_F(PreviewPictures, WhatIsForgottenWhileItIsComposedIsNotKept) {
    pictures.Want(Contents({1}));
    const auto order = pictures.Begin();
    pictures.Clear();
    pictures.Take(order->content, std::make_shared<CFrameBuffer>());
    EXPECT_FALSE(pictures.Has(Content(1)));
    EXPECT_EQ(pictures.ByteCount(), 0u);
}

TEST(PreviewContent, TellsPlacementsAndStatesOfFilesApart) {
    const CTempFolder folder;
    CFrameRequest request{8, 8, 4, 0, {{folder / "1.bit", {}}}};
    const CPreviewContent content(request, {CFileIdentity{1, 2, 3, 4}});
    EXPECT_EQ(content, CPreviewContent(request, {CFileIdentity{1, 2, 3, 4}}));
    EXPECT_FALSE(content == CPreviewContent(request, {CFileIdentity{1, 2, 4, 4}})) << "repainted";
    EXPECT_FALSE(content == CPreviewContent(request, {std::nullopt}));
    request.layers[0].placement.blurX = 2;
    EXPECT_FALSE(content == CPreviewContent(request, {CFileIdentity{1, 2, 3, 4}}));
}

TEST(PreviewComposer, GivesTheBytesOfTheOneComposingFunctionAndStaysInItsBound) {
    CImageCache cache(0);
    CPreviewComposer composer(cache, 3 * frameBytes, 3);
    std::vector<PreviewContent> contents;
    for (int number = 0; number < 40; ++number)
        contents.push_back(Content(number * 1000 + 7));
    for (std::size_t first = 0; first + 3 <= contents.size(); ++first) {
        ASSERT_TRUE(composer.Want({contents.begin() + static_cast<std::ptrdiff_t>(first), contents.end()}));
        while (!composer.Has(contents[first])) {
            EXPECT_LE(composer.ByteCount(), 3 * frameBytes);
            std::this_thread::yield();
        }
        CFrameBuffer plain;
        ASSERT_TRUE(ComposeFrame(contents[first]->Request(), cache, plain, false));
        EXPECT_EQ(composer.Find(contents[first])->pixels, plain.pixels);
    }
    EXPECT_LE(composer.Made(), 40);
    composer.Clear();
    EXPECT_TRUE(composer.IsEmpty());
}

} // namespace
} // namespace velmor
