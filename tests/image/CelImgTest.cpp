#include "image/CelImg.h"

#include "TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace velmor;

namespace {

bool IsAll(std::span<const std::uint8_t> bytes, std::uint8_t value) {
    return std::ranges::all_of(bytes, [value](std::uint8_t byte) { return byte == value; });
}

} // namespace

TEST(CelImgTest, RowsOfTheLineMaskHaveAnExtraWord) {
    EXPECT_EQ(StrideBitsOf(31), 32);
    EXPECT_EQ(StrideBitsOf(32), 64);
    EXPECT_EQ(StrideBitsOf(33), 64);
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(64, 3, "a.bit"));
    EXPECT_EQ(cel.LineMask().size(), 3u * 12u);
}

TEST(CelImgTest, ABlankCelIsWhitePaper) {
    CCelImg cel;
    ASSERT_TRUE(cel.CreateCel(40, 9, "a.bit"));
    EXPECT_EQ(cel.GetLoadState(), LoadState::Cel);
    EXPECT_TRUE(IsAll(cel.LineMask(), 0));
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        EXPECT_TRUE(IsAll(cel.PlaneOf(channel), 255));
    EXPECT_FALSE(cel.IsModified());
}

TEST(CelImgTest, RefusesSizesThatCouldNotBeReadAgain) {
    for (const CSize size : {CSize{0, 5}, CSize{5, 1}, CSize{1, 5}, CSize{-3, 5}}) {
        CCelImg image;
        EXPECT_EQ(image.CreateCel(size.width, size.height, "a.bit").Message(), "Invalid cel dimensions");
        EXPECT_EQ(image.GetLoadState(), LoadState::Nothing);
        int value = 0;
        EXPECT_EQ(image.GetWidth(value).Message(), "Internal error : GetWidth called with no cel image loaded");
        EXPECT_EQ(value, 10);
        EXPECT_EQ(image.GetHeight(value).Message(), "Internal error : GetHeight called with no cel image loaded");
    }
}

TEST(CelImgTest, DarkBitsBecomeLinesWhicheverValueTheyHave) {
    const CColor black{0, 0, 0, 255}, white{255, 255, 255, 255};
    const std::array<std::uint8_t, 8> bits{0x80, 0, 0, 0, 0x40, 0, 0, 0};
    std::array<std::uint8_t, 8> inverted = bits;
    for (std::uint8_t& byte : inverted)
        byte = static_cast<std::uint8_t>(~byte);
    CCelImg a, b;
    ASSERT_TRUE(a.CreateCelFromBits(3, 2, bits, {white, black}, "a.bit"));
    ASSERT_TRUE(b.CreateCelFromBits(3, 2, inverted, {black, white}, "b.bit"));
    for (const CCelImg* cel : {&a, &b}) {
        EXPECT_TRUE(std::ranges::equal(cel->LineMask(), bits));
        EXPECT_EQ(cel->ColorAt(0, 0), black);
        EXPECT_EQ(cel->ColorAt(1, 1), black);
        EXPECT_EQ(cel->ColorAt(1, 0), white);
    }
}

TEST(CelImgTest, LineOperationsNeedACel) {
    CCelImg picture;
    ASSERT_TRUE(picture.CreatePicture(4, 4, "a.rgba"));
    EXPECT_EQ(picture.InvertCel().Message(), "Internal Error : InvertCel called without a cel data");
    EXPECT_EQ(picture.ResetLineColors().Message(), "Internal Error : cel image not loaded on ResetLineColors");
    EXPECT_FALSE(picture.IsLine(1, 1));
}

TEST(CelImgTest, ReplacingAModifiedImageSavesItToItsOwnPath) {
    const velmor::testing::CTempFolder folder;
    CCelImg image;
    ASSERT_TRUE(image.CreateCel(4, 4, folder / "a.bit"));
    image.SetModified(true);
    ASSERT_TRUE(image.CreatePicture(6, 6, folder / "b.rgba"));
    CSize size;
    EXPECT_TRUE(CCelImg::GetDimensions(folder / "a.bit", size));
    EXPECT_EQ(size, (CSize{4, 4}));
    EXPECT_FALSE(FileExists(folder / "b.rgba"));
}
