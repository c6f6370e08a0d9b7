#include "image/import/DibDecoder.h"
#include "image/import/ImageReaders.h"
#include "platform/files/PngFile.h"

#include "DamagedFiles.h"

#include <functional>
#include <gtest/gtest.h>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ForEachDamage;
using velmor::testing::WriteBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Reader = std::function<CStatus(CCelImg&, const Path&)>;
const CColor black{0, 0, 0, 255}, white{255, 255, 255, 255}, red{0, 0, 255, 255};

Bytes Joined(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes Little(std::initializer_list<std::uint32_t> values) {
    Bytes bytes;
    for (const std::uint32_t value : values)
        for (int shift = 0; shift < 32; shift += 8)
            bytes.push_back(static_cast<std::uint8_t>(value >> shift));
    return bytes;
}

Bytes Targa(int width, int height, int bits, int descriptor, const Bytes& pixels, int type = 2) {
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return Joined({{2,
                    0,
                    byte(type),
                    0,
                    0,
                    0,
                    0,
                    0,
                    0,
                    0,
                    0,
                    0,
                    byte(width),
                    byte(width >> 8),
                    byte(height),
                    byte(height >> 8),
                    byte(bits),
                    byte(descriptor),
                    'i',
                    'd'},
                   pixels});
}

struct CBitmapFile {
    int width = 2;
    int height = 2;
    std::uint32_t bits = 24;
    std::uint32_t compression = 0;
    Bytes table; ///< or masks
    Bytes pixels;
    std::uint32_t headerLength = 40;

    Bytes Info() const {
        Bytes info = Little({headerLength, static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height),
                             bits << 16 | 1, compression, 0, 0, 0, 0, 0});
        info.resize(std::max<std::size_t>(headerLength, 40));
        return Joined({info, table});
    }
    Bytes File() const {
        const Bytes info = Info();
        return Joined({{'B', 'M'}, Little({0, 0, static_cast<std::uint32_t>(14 + info.size())}), info, pixels});
    }
};

const Bytes fourColors = Little({0x000000, 0xff0000, 0x00ff00, 0xffffff});
const CBitmapFile runs8File{4, 3, 8, 1, fourColors, {2, 1, 0, 0, 0, 3, 3, 2, 1, 0, 0, 0, 9, 2, 0, 1}};

class ImportTest : public ::testing::Test {
protected:
    std::string Read(const Reader& reader, const Bytes& bytes) {
        WriteBytes(file, bytes);
        const CStatus status = reader(image, file);
        EXPECT_EQ(image.GetLoadState() == LoadState::Nothing, !status);
        EXPECT_EQ(image.FilePath(), status ? file : Path());
        EXPECT_FALSE(image.IsModified());
        return status.Message();
    }
    // The pixels row by row from the bottom.
    std::vector<CColor> Pixels() const {
        std::vector<CColor> pixels;
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x)
                pixels.push_back(image.ColorAt(x, y));
        return pixels;
    }
    std::vector<CColor> BitmapPixels(const CBitmapFile& bitmap) {
        EXPECT_EQ(Read(bitmapPicture, bitmap.File()), "");
        return Pixels();
    }

    const Reader targaPicture = [](CCelImg& to, const Path& path) { return ReadTargaPicture(to, path, "n"); };
    const Reader targaCel = [](CCelImg& to, const Path& path) { return ReadTargaCel(to, path, 128, "n"); };
    const Reader bitmapPicture = [](CCelImg& to, const Path& path) { return ReadBitmapPicture(to, path, "n"); };
    const Reader bitmapCel = [](CCelImg& to, const Path& path) { return ReadBitmapCel(to, path, 128, "n"); };
    CTempFolder folder;
    Path file = folder / "n";
    CCelImg image;
};

} // namespace

TEST_F(ImportTest, ReadsTargaOfEveryDepthAndRowOrder) {
    const Bytes lower{1, 2, 3, 4, 5, 6, 7, 8}, upper{9, 10, 11, 12, 13, 14, 15, 16};
    const std::vector<CColor> expected{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}};
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 32, 0, Joined({lower, upper}))), "");
    EXPECT_EQ(Pixels(), expected);
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 32, 32, Joined({upper, lower}))), "");
    EXPECT_EQ(Pixels(), expected);
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 24, 0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12})), "");
    EXPECT_EQ(Pixels(), (std::vector<CColor>{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}}));
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 8, 0, {1, 2, 3, 4})), "");
    EXPECT_EQ(Pixels(), (std::vector<CColor>{{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {4, 4, 4}}));
}

TEST_F(ImportTest, DarkPixelsBecomeLines) {
    EXPECT_EQ(Read(targaCel, Targa(2, 2, 24, 0, {127, 128, 128, 128, 128, 128, 0, 0, 255, 255, 255, 129})), "");
    EXPECT_EQ(Pixels(), (std::vector<CColor>{black, white, black, white}));
    EXPECT_EQ(image.GetLoadState(), LoadState::Cel);
    EXPECT_TRUE(image.IsLine(0, 0) && !image.IsLine(1, 0) && image.IsLine(0, 1) && !image.IsLine(1, 1));
    const Bytes greys = Targa(2, 2, 8, 0, {0, 254, 255, 255});
    EXPECT_EQ(Read([](CCelImg& to, const Path& path) { return ReadTargaCel(to, path, 0, "n"); }, greys), "");
    EXPECT_EQ(Pixels(), std::vector<CColor>(4, white));
    EXPECT_EQ(Read([](CCelImg& to, const Path& path) { return ReadTargaCel(to, path, 255, "n"); }, greys), "");
    EXPECT_EQ(Pixels(), (std::vector<CColor>{black, black, white, white}));
}

TEST_F(ImportTest, NamesWhatIsWrongWithATarga) {
    const std::string compressed = "Error : n is compressed targa, can not read compressed targa, sorry!";
    const std::string sizes = "Invalid image dimensions in: n";
    EXPECT_EQ(ReadTargaCel(image, folder / "none", 128, "n").Message(), "Unable to open filen");
    EXPECT_EQ(Read(targaPicture, Bytes(17)), "Unexpected end of file: n");
    EXPECT_EQ(Read(targaPicture, Bytes(18, 1)), "Error : n is corrupted!");
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 24, 0, Bytes(11))), "Error : n is corrupted!");
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 24, 0, Bytes(12), 10)), compressed);
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 8, 0, Bytes(4), 3)), compressed);
    EXPECT_EQ(Read(targaPicture, Targa(2, 2, 16, 0, Bytes(8))),
              "Unsupported Targa Error : n is not 24 bit or 8 bit or 32 bit!");
    Bytes paletted = Targa(2, 2, 8, 0, Bytes(4));
    paletted[1] = 1;
    EXPECT_EQ(Read(targaPicture, paletted), "Error : n has palettes in it, paletted targa is not supported!");
    EXPECT_EQ(Read(targaPicture, Targa(15001, 2, 8, 0, Bytes(40000))), sizes);
    EXPECT_EQ(Read(targaPicture, Targa(1, 10, 8, 0, Bytes(40))), sizes);
    EXPECT_EQ(Read(targaPicture, Targa(15000, 2, 8, 0, Bytes(30000))), "");
}

TEST_F(ImportTest, ReadsBitmapsOfEveryDepth) {
    const std::vector<CColor> expected{red, black, white, white, white, red};
    EXPECT_EQ(BitmapPixels({3, 2, 4, 0, fourColors, {0x10, 0x30, 0, 0, 0x33, 0x10, 0, 0}}), expected);
    EXPECT_EQ(BitmapPixels({3, 2, 8, 0, fourColors, {1, 0, 3, 9, 3, 3, 1, 9}, 124}), expected);
    EXPECT_EQ(BitmapPixels({3, 2, 24, 0, {}, {0, 0,   255, 0,   0,   0,   255, 255, 255, 9,  9,
                                              9, 255, 255, 255, 255, 255, 255, 0,   0,   255}}),
              expected);
    EXPECT_EQ(
        BitmapPixels({3, 2, 32, 0, {}, Little({0xff0000, 0x9000000, 0xffffff, 0xffffff, 0xffffff, 0xff0000})}),
        expected);
    EXPECT_EQ(BitmapPixels({3, 2, 1, 0, Little({0xffffff, 0xff0000}), {0xa0, 0, 0, 0, 0x40, 0, 0, 0}}),
              (std::vector<CColor>{red, white, red, white, red, white}));
    EXPECT_EQ(BitmapPixels({2, 2, 16, 0, {}, {0x00, 0x7c, 0xff, 0x7f, 0xe0, 0x03, 0x01, 0x00}}),
              (std::vector<CColor>{red, white, {0, 255, 0}, {8, 0, 0}}));
}

TEST_F(ImportTest, ReadsBitmapsWithColorMasks) {
    EXPECT_EQ(BitmapPixels({2, 2, 16, 3, Little({0xf800, 0x7e0, 0x1f}), Little({0x07e0f800, 0x0020ffff})}),
              (std::vector<CColor>{red, {0, 255, 0}, white, {0, 4, 0}}));
    EXPECT_EQ(BitmapPixels({2, 2, 32, 3, Little({0x3ff, 0, 0x80000000}), Little({0x3ff, 0x80000000, 0x200, 4})}),
              (std::vector<CColor>{red, {255, 0, 0}, {0, 0, 128}, {0, 0, 1}}));
    const CBitmapFile torn{2, 2, 32, 3, Little({0xff00ff, 0, 0}), Bytes(16)};
    EXPECT_EQ(Read(bitmapPicture, torn.File()), "Could not create a bitmap from file");
}

TEST_F(ImportTest, ReadsRunLengthCodedBitmaps) {
    const CColor green{0, 255, 0, 255};
    EXPECT_EQ(BitmapPixels(runs8File), (std::vector<CColor>{red, red, black, black, white, green, red, black, //
                                                            green, green, green, green}));
    // A jump of one column and two rows, then an odd number of pixels one by one; the marks at the end are missing.
    EXPECT_EQ(BitmapPixels({4, 3, 4, 2, fourColors, {1, 0x30, 0, 2, 0, 2, 0, 3, 0x12, 0x30}}),
              (std::vector<CColor>{white, black, black, black, black, black, black, black, //
                                   black, red, green, white}));
    CBitmapFile cut = runs8File;
    cut.pixels.resize(6);
    EXPECT_EQ(Read(bitmapPicture, cut.File()), "Unexpected end of file: n");
    const CBitmapFile large{15000, 15000, 8, 1, fourColors, {0, 1}};
    EXPECT_EQ(Read(bitmapPicture, large.File()), "Unexpected end of file: n");
}

TEST_F(ImportTest, NamesWhatIsWrongWithABitmap) {
    const std::string sizes = "Invalid image dimensions in: n", unknown = "Could not create a bitmap from file";
    EXPECT_EQ(ReadBitmapCel(image, folder / "none", 128, "n").Message(), "Unable to open filen");
    EXPECT_EQ(Read(bitmapCel, Bytes(10)), "Unexpected end of file: n");
    for (const auto& [width, height] : {CSize{15001, 2}, CSize{2, -2}, CSize{-2, 2}, CSize{1, 2}, CSize{2, 0}})
        EXPECT_EQ(Read(bitmapCel, CBitmapFile{width, height, 24, 0, {}, Bytes(64)}.File()), sizes);
    EXPECT_EQ(Read(bitmapCel, CBitmapFile{2, 2, 24, 0, {}, Bytes(13)}.File()), "Unexpected end of file: n");
    EXPECT_EQ(Read(bitmapCel, CBitmapFile{2, 2, 24, 0, {}, Bytes(14)}.File()), ""); // without the last padding
    EXPECT_EQ(Read(bitmapCel, CBitmapFile{2, 2, 2, 0, fourColors, Bytes(64)}.File()), unknown);
    EXPECT_EQ(Read(bitmapCel, CBitmapFile{2, 2, 24, 5, {}, Bytes(64)}.File()), unknown);
    EXPECT_EQ(Read(bitmapCel, Joined({{'X', 'Y'}, Bytes(100)})), unknown);
}

TEST_F(ImportTest, ReadsPackedBitmapsInMemory) {
    for (const CBitmapFile& bitmap :
         {CBitmapFile{2, 2, 16, 3, Little({0xf800, 0x7e0, 0x1f}), Little({0x07e0f800, 0x0020ffff})},
          CBitmapFile{9, 2, 1, 0, Little({0, 0xffffff}), {0xa5, 0x80, 0, 0, 0x5a, 0, 0, 0}}}) {
        const std::vector<CColor> expected = BitmapPixels(bitmap);
        const Bytes packed = Joined({bitmap.Info(), bitmap.pixels});
        CDibDecoder decoder;
        ASSERT_EQ(CDibDecoder::OpenPacked(packed, decoder), DibResult::Done);
        std::vector<CColor> pixels, row(static_cast<std::size_t>(bitmap.width));
        for (int y = 0; y < bitmap.height; ++y) {
            ASSERT_TRUE(decoder.ReadRow(row));
            pixels.insert(pixels.end(), row.begin(), row.end());
        }
        EXPECT_EQ(pixels, expected);

        // The same with the top row first, as the height says.
        CBitmapFile topFirst = bitmap;
        topFirst.height = -bitmap.height;
        const std::size_t rowBytes = bitmap.pixels.size() / 2;
        std::rotate(topFirst.pixels.begin(), topFirst.pixels.begin() + static_cast<std::ptrdiff_t>(rowBytes),
                    topFirst.pixels.end());
        const Bytes packedTopFirst = Joined({topFirst.Info(), topFirst.pixels});
        ASSERT_EQ(CDibDecoder::OpenPacked(packedTopFirst, decoder), DibResult::Done);
        EXPECT_EQ(decoder.Size(), (CSize{bitmap.width, bitmap.height}));
        for (auto at = expected.begin(); at != expected.end(); at += bitmap.width) {
            ASSERT_TRUE(decoder.ReadRow(row));
            EXPECT_TRUE(std::equal(row.begin(), row.end(), at));
        }
        EXPECT_FALSE(decoder.ReadRow(row));
    }
    CBitmapFile runsTopFirst = runs8File;
    runsTopFirst.height = -runsTopFirst.height;
    CDibDecoder decoder;
    EXPECT_EQ(CDibDecoder::OpenPacked(Joined({runsTopFirst.Info(), runsTopFirst.pixels}), decoder),
              DibResult::Unsupported);
}

TEST_F(ImportTest, SurvivesDamagedFiles) {
    for (const int depth : {8, 24, 32})
        ForEachDamage(Targa(3, 2, depth, 0, Bytes(static_cast<std::size_t>(6 * depth / 8), 100)),
                      [&](const Bytes& bad) {
                          Read(targaPicture, bad);
                          Read(targaCel, bad);
                      });
    for (const CBitmapFile& bitmap :
         {runs8File, CBitmapFile{4, 3, 4, 2, fourColors, {1, 0x30, 0, 2, 0, 2, 0, 3, 0x12, 0x30}},
          CBitmapFile{9, 2, 1, 0, Little({0, 0xffffff}), {0xa5, 0x80, 0, 0, 0x5a, 0, 0, 0}},
          CBitmapFile{2, 2, 16, 3, Little({0xf800, 0x7e0, 0x1f}), Bytes(8, 7)},
          CBitmapFile{3, 2, 24, 0, {}, Bytes(24, 7)}, CBitmapFile{3, -2, 24, 0, {}, Bytes(24, 7)}}) {
        ForEachDamage(bitmap.File(), [&](const Bytes& bad) { Read(bitmapPicture, bad); });
        ForEachDamage(Joined({bitmap.Info(), bitmap.pixels}), [](const Bytes& bad) {
            CDibDecoder decoder;
            if (CDibDecoder::OpenPacked(bad, decoder) != DibResult::Done)
                return;
            std::vector<CColor> row(static_cast<std::size_t>(decoder.Size().width));
            for (int y = 0; y < decoder.Size().height && decoder.ReadRow(row); ++y) {
            }
        });
    }
}

TEST(Import, PngKeepsAlphaInPicturesAndIsSeenOnPaperInCels) {
    const CTempFolder folder;
    const Bytes rows = {10, 20, 30, 0, 10, 20, 30, 255, /* below */ 0, 0, 0, 200, 250, 250, 250, 255};
    ASSERT_TRUE(WritePng(folder / "p.png", {2, 2, 4, rows}));
    CCelImg image;
    ASSERT_TRUE(ReadPngPicture(image, folder / "p.png", "p.png"));
    EXPECT_EQ(image.ColorAt(0, 1), (CColor{30, 20, 10, 0}));
    EXPECT_EQ(image.ColorAt(0, 0), (CColor{0, 0, 0, 200}));
    ASSERT_TRUE(ReadPngCel(image, folder / "p.png", 128, "p.png"));
    EXPECT_FALSE(image.IsLine(0, 1)) << "what nobody sees is no line";
    EXPECT_TRUE(image.IsLine(1, 1));
    EXPECT_TRUE(image.IsLine(0, 0));
    EXPECT_FALSE(image.IsLine(1, 0));
    WriteBytes(folder / "p.png", Bytes{1, 2, 3});
    EXPECT_EQ(ReadPngPicture(image, folder / "p.png", "p.png").Message(), "Error : p.png is corrupted!");
    EXPECT_EQ(ReadTiffCel(image, folder / "p.png", 128, "p.png").Message(), "Error : p.png is corrupted!");
    ASSERT_TRUE(WritePng(folder / "p.png", {1, 4, 4, rows}));
    EXPECT_EQ(ReadPngPicture(image, folder / "p.png", "p.png").Message(), "Invalid image dimensions in: p.png");
    EXPECT_EQ(ReadPngPicture(image, folder / "none.png", "none.png").Message(), "Unable to open filenone.png");
}
