#include "acquire/Bitmap.h"

#include "TempFolder.h"
#include "image/import/DibDecoder.h"
#include "image/import/ImageReaders.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr CColor black{0, 0, 0, 255};
constexpr CColor white{255, 255, 255, 255};

} // namespace

TEST(BitmapTest, LineArtKeepsItsPixelsAtOddWidths) {
    // 11 pixels wide: a diagonal from the top left corner.
    const Bytes rows = {0x80, 0x00, 0x40, 0x00, 0x00, 0x20};
    const PackedBitmap packed = PackLineArt(11, 3, rows);
    CDibDecoder decoder;
    ASSERT_EQ(CDibDecoder::OpenPacked(packed, decoder), DibResult::Done);
    EXPECT_EQ(decoder.BitsPerPixel(), 1);
    EXPECT_EQ(decoder.Size(), (CSize{11, 3}));
    const int blackAt[3] = {10, 1, 0}; // the bottom row comes first
    for (const int column : blackAt) {
        std::vector<CColor> row(11);
        ASSERT_TRUE(decoder.ReadRow(row));
        for (int x = 0; x < 11; ++x)
            EXPECT_EQ(row[static_cast<std::size_t>(x)], x == column ? black : white) << x;
    }
}

TEST(BitmapTest, TrueColorComesBackFromAFile) {
    Bytes rows;
    for (int i = 0; i < 5 * 4 * 3; ++i)
        rows.push_back(static_cast<std::uint8_t>(i * 4));
    const CTempFolder folder;
    WriteBytes(folder / "frame.bmp", BitmapFileOf(PackTrueColor(5, 4, rows)));
    CCelImg image;
    ASSERT_TRUE(ReadBitmapPicture(image, folder / "frame.bmp", "frame"));
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) {
            const std::size_t at = static_cast<std::size_t>((3 - y) * 5 + x) * 3;
            EXPECT_EQ(image.ColorAt(x, y), (CColor{rows[at], rows[at + 1], rows[at + 2], 255}));
        }
}

TEST(BitmapTest, RefusesSizesThatTheBytesDoNotHave) {
    EXPECT_TRUE(PackTrueColor(5, 4, Bytes(59)).empty());
    EXPECT_TRUE(PackTrueColor(-5, 4, Bytes(60)).empty());
    EXPECT_TRUE(PackTrueColor(0, 0, Bytes()).empty());
    EXPECT_TRUE(PackLineArt(9, 2, Bytes(2)).empty());
    EXPECT_TRUE(PackLineArt(2000000000, 1, Bytes(250000000 / 100)).empty());
    EXPECT_TRUE(BitmapFileOf(Bytes(39)).empty());
}

} // namespace velmor::testing
