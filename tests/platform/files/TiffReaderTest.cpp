#include "platform/files/TiffReader.h"
#include "TempFolder.h"

#include <gtest/gtest.h>
#include <tiffio.h>

namespace velmor {
namespace {

using Bytes = std::vector<std::uint8_t>;
using testing::CTempFolder;
using testing::ReadBytes;

/// 3 x 2 pixels as another program writes them: red green blue, and alpha that is not multiplied in where it is
/// given.
Bytes Encode(int compression, bool withAlpha, bool tiled = false) {
    const CTempFolder folder;
    const std::string path = folder / "t.tif";
    TIFF* tiff = TIFFOpen(path.c_str(), "w");
    const int channels = withAlpha ? 4 : 3;
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, 3);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, 2);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, channels);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
    const std::uint16_t extra = EXTRASAMPLE_UNASSALPHA;
    if (withAlpha)
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &extra);
    if (tiled) {
        TIFFSetField(tiff, TIFFTAG_TILEWIDTH, 16);
        TIFFSetField(tiff, TIFFTAG_TILELENGTH, 16);
        Bytes tile(static_cast<std::size_t>(16 * 16 * channels), 77);
        TIFFWriteTile(tiff, tile.data(), 0, 0, 0, 0);
    } else {
        for (std::uint32_t y = 0; y < 2; ++y) {
            Bytes row;
            for (int x = 0; x < 3; ++x) {
                row.insert(row.end(), {static_cast<std::uint8_t>(200 + x), static_cast<std::uint8_t>(100 * y), 50});
                if (withAlpha)
                    row.push_back(static_cast<std::uint8_t>(x * 127));
            }
            TIFFWriteScanline(tiff, row.data(), y, 0);
        }
    }
    TIFFClose(tiff);
    return ReadBytes(path);
}

TEST(TiffReader, ReadsTopRowFirstWhateverTheCompression) {
    for (const int compression :
         {COMPRESSION_NONE, COMPRESSION_LZW, COMPRESSION_ADOBE_DEFLATE, COMPRESSION_PACKBITS}) {
        CReadTiff read;
        ASSERT_EQ(ReadTiff(Encode(compression, false), 100, read), TiffResult::Done) << compression;
        EXPECT_EQ(read.bytes, (Bytes{200, 0,   50, 255, 201, 0,   50, 255, 202, 0,   50, 255,
                                     200, 100, 50, 255, 201, 100, 50, 255, 202, 100, 50, 255}));
    }
    CReadTiff read;
    ASSERT_EQ(ReadTiff(Encode(COMPRESSION_LZW, false, true), 100, read), TiffResult::Done);
    EXPECT_EQ(read.bytes[0], 77);
    ASSERT_EQ(ReadTiff(Encode(COMPRESSION_LZW, true), 100, read), TiffResult::Done);
    EXPECT_EQ(read.bytes[3], 0);
    EXPECT_EQ(read.bytes[7], 127);
    EXPECT_NEAR(read.bytes[4], 201, 1) << "the colour is not multiplied by its alpha";
    EXPECT_EQ(read.bytes[11], 254);
}

TEST(TiffReader, RefusesWhatIsDamagedOrTooLarge) {
    const Bytes whole = Encode(COMPRESSION_NONE, false);
    CReadTiff read;
    EXPECT_EQ(ReadTiff(whole, 2, read), TiffResult::TooLarge);
    for (std::size_t size = 0; size < whole.size(); size += 3) {
        EXPECT_EQ(ReadTiff(std::span(whole).first(size), 100, read), TiffResult::Corrupt) << size;
        EXPECT_TRUE(read.bytes.empty());
    }
}

} // namespace
} // namespace velmor
