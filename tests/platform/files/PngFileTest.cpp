#include "platform/files/PngFile.h"
#include "TempFolder.h"

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

TEST(PngFile, PixelsComeBackAsTheyWere) {
    const CTempFolder folder;
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {33, 2}, {300, 200}}) {
        for (const int channels : {3, 4}) {
            const Bytes bytes = RandomBytes(static_cast<std::size_t>(width * height * channels));
            ASSERT_TRUE(WritePng(folder / "p.png", {width, height, channels, bytes}, channels == 3 ? 1 : 9));
            EXPECT_EQ(Decode(folder / "p.png", width, height, channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB),
                      bytes)
                << width << " " << height << " " << channels;
        }
    }
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
    const Bytes tooWide(3000003); // wider than the library writes: its error path
    EXPECT_FALSE(WritePng(folder / "p.png", {1000001, 1, 3, tooWide}));
    EXPECT_EQ(ReadBytes(folder / "p.png"), before);
    EXPECT_EQ(ListFiles(folder.Path(), "").size(), 1U);
}
