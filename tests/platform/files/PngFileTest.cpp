#include "platform/files/PngFile.h"
#include "TempFolder.h"
#include "platform/files/PngReader.h"

#include <array>
#include <gtest/gtest.h>
#include <png.h>
#include <random>

using namespace velmor;
using velmor::testing::CTempFolder;
using velmor::testing::ReadBytes;

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes RandomBytes(std::size_t size) {
    std::mt19937 random(3);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    return bytes;
}

// The rows of a PNG file, top row first; empty when it is not one of these dimensions.
Bytes Decode(const Path& path, int width, int height, png_uint_32 format) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.c_str()))
        return {};
    const bool fits = image.width == static_cast<png_uint_32>(width) &&
                      image.height == static_cast<png_uint_32>(height) && image.format == format;
    Bytes bytes(PNG_IMAGE_SIZE(image));
    if (!fits || !png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr))
        bytes.clear();
    png_image_free(&image);
    return bytes;
}

} // namespace

constexpr std::array<PngCompression, 3> allCompressions = {PngCompression::Fast, PngCompression::Normal,
                                                           PngCompression::Best};

/// Rows that are best told by the pixel before, by the row above, and by themselves.
Bytes DrawnBytes(int width, int height, int channels) {
    Bytes bytes;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < channels; ++channel)
                bytes.push_back(static_cast<std::uint8_t>(y % 9 < 3   ? x
                                                          : y % 9 < 6 ? x * x + channel
                                                                      : y * y * 31));
    return bytes;
}

/// Spots of flat paint over a ground whose rows differ.
Bytes PaintedBytes(int width, int height, int channels) {
    Bytes bytes;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < channels; ++channel)
                bytes.push_back(static_cast<std::uint8_t>((x / 29 + y / 17) % 3 == 0 ? 90 * channel : y * 7));
    return bytes;
}

TEST(PngFile, PixelsComeBackAsTheyWere) {
    const CTempFolder folder;
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {33, 2}, {300, 200}, {1999, 70}}) {
        for (const int channels : {3, 4}) {
            for (const Bytes& bytes : {RandomBytes(static_cast<std::size_t>(width * height * channels)),
                                       DrawnBytes(width, height, channels), PaintedBytes(width, height, channels)})
                for (const PngCompression compression : allCompressions) {
                    ASSERT_TRUE(WritePng(folder / "p.png", {width, height, channels, bytes}, compression));
                    const png_uint_32 format = channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
                    EXPECT_EQ(Decode(folder / "p.png", width, height, format), bytes)
                        << width << " " << height << " " << channels << " " << static_cast<int>(compression);
                }
        }
    }
}

TEST(PngFile, TheBestFileIsTheSmallest) {
    const CTempFolder folder;
    const Bytes bytes = DrawnBytes(300, 200, 3);
    std::vector<std::size_t> sizes;
    for (const PngCompression compression : allCompressions) {
        ASSERT_TRUE(WritePng(folder / "p.png", {300, 200, 3, bytes}, compression));
        sizes.push_back(ReadBytes(folder / "p.png").size());
    }
    EXPECT_LT(sizes[2], std::min(sizes[0], sizes[1]));
    EXPECT_LT(std::max(sizes[0], sizes[1]), bytes.size() / 20); // rows repeat
}

TEST(PngFile, WhatCannotBeWrittenLeavesTheOldFile) {
    const CTempFolder folder;
    const Bytes bytes = RandomBytes(48);
    ASSERT_TRUE(WritePng(folder / "p.png", {4, 4, 3, bytes}));
    const Bytes before = ReadBytes(folder / "p.png");
    EXPECT_FALSE(WritePng(folder / "p.png", {4, 5, 3, bytes}));
    EXPECT_FALSE(WritePng(folder / "p.png", {4, 3, 3, bytes}));
    EXPECT_FALSE(WritePng(folder / "p.png", {0, 0, 3, {}}));
    EXPECT_FALSE(WritePng(folder / "p.png", {-4, -4, 3, bytes}));
    EXPECT_FALSE(WritePng(folder / "p.png", {6, 4, 2, bytes}));
    EXPECT_FALSE(WritePng(folder / "missing" / "p.png", {4, 4, 3, bytes}));
    const Bytes tooWide(3000003); // wider than common readers take
    EXPECT_FALSE(WritePng(folder / "p.png", {1000001, 1, 3, tooWide}));
    EXPECT_EQ(ReadBytes(folder / "p.png"), before);
    EXPECT_EQ(ListFiles(folder.Path(), "").size(), 1U);
}

namespace {

/// A PNG of any kind, as another program writes it. Rows hold `rowBytes` made-up bytes.
struct COtherPng {
    int depth;
    int type;
    int interlace;
    bool transparent;
};

void AppendTo(png_structp png, png_bytep data, png_size_t count) {
    auto& bytes = *static_cast<Bytes*>(png_get_io_ptr(png));
    bytes.insert(bytes.end(), data, data + count);
}

Bytes Encode(const COtherPng& kind, png_uint_32 width, png_uint_32 height) {
    Bytes bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &bytes, AppendTo, nullptr);
    png_set_IHDR(png, info, width, height, kind.depth, kind.type, kind.interlace, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    std::vector<png_color> palette(std::size_t{1} << std::min(kind.depth, 8));
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = {static_cast<png_byte>(i * 3), static_cast<png_byte>(i * 7), static_cast<png_byte>(i)};
    if (kind.type == PNG_COLOR_TYPE_PALETTE)
        png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    png_byte alpha[] = {0, 128};
    png_color_16 color{};
    if (kind.transparent)
        png_set_tRNS(png, info, alpha, 2, &color);
    png_write_info(png, info);
    const int passes = png_set_interlace_handling(png);
    const std::size_t rowBytes = png_get_rowbytes(png, info);
    Bytes rows = RandomBytes(rowBytes * height);
    for (int pass = 0; pass < passes; ++pass)
        for (std::size_t row = 0; row < height; ++row)
            png_write_row(png, rows.data() + row * rowBytes);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

constexpr int gray = PNG_COLOR_TYPE_GRAY, rgb = PNG_COLOR_TYPE_RGB, indexed = PNG_COLOR_TYPE_PALETTE,
              grayAlpha = PNG_COLOR_TYPE_GRAY_ALPHA, rgba = PNG_COLOR_TYPE_RGB_ALPHA;

} // namespace

TEST(PngReader, ReadsEveryKindAsTheLibraryShowsIt) {
    const CTempFolder folder;
    for (const COtherPng& kind : {COtherPng{1, gray, 0, false},
                                  {2, gray, 1, true},
                                  {8, gray, 0, false},
                                  {8, grayAlpha, 1, false},
                                  {1, indexed, 0, false},
                                  {4, indexed, 1, true},
                                  {8, indexed, 0, false},
                                  {8, rgb, 1, false},
                                  {8, rgb, 0, true},
                                  {8, rgba, 0, false}}) {
        const Bytes file = Encode(kind, 37, 19);
        CReadPng read;
        ASSERT_EQ(ReadPng(file, 100, read), PngResult::Done) << kind.depth << ' ' << kind.type;
        EXPECT_EQ(read.channels == 4, kind.transparent || (kind.type & PNG_COLOR_MASK_ALPHA) != 0);
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        ASSERT_TRUE(png_image_begin_read_from_memory(&image, file.data(), file.size()));
        image.format = read.channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
        Bytes expected(PNG_IMAGE_SIZE(image));
        ASSERT_TRUE(png_image_finish_read(&image, nullptr, expected.data(), 0, nullptr));
        EXPECT_EQ(read.bytes, expected) << kind.depth << ' ' << kind.type;
    }
    CReadPng read;
    EXPECT_EQ(ReadPng(Encode({16, rgba, 0, false}, 5, 4), 100, read), PngResult::Done);
    EXPECT_EQ(read.bytes.size(), 80U);
}

TEST(PngReader, RefusesWhatIsDamagedOrTooLarge) {
    const Bytes whole = Encode({8, rgb, 0, false}, 40, 30);
    CReadPng read;
    EXPECT_EQ(ReadPng(whole, 39, read), PngResult::TooLarge);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(ReadPng(std::span(whole).first(size), 100, read), PngResult::Corrupt) << size;
        EXPECT_TRUE(read.bytes.empty());
    }
    Bytes changed = whole;
    changed[changed.size() / 2] ^= 1; // the checksum does not fit
    EXPECT_EQ(ReadPng(changed, 100, read), PngResult::Corrupt);
    // The size of a small file's picture is changed, its checksum too: no memory may be taken for it.
    Bytes large = Encode({8, rgb, 0, false}, 1, 1);
    const Bytes header = Encode({8, rgb, 0, false}, 30000, 1);
    std::copy_n(header.begin(), 33, large.begin());
    EXPECT_EQ(ReadPng(large, 40000, read), PngResult::Corrupt);
}
