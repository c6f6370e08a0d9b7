#include "render/avi/MsVideo1.h"

#include "render/avi/AviWriter.h"

#include "image/render/RowKernels.h"

#include "DecodedMovie.h"
#include "PlainMsVideo1.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

using namespace velmor;
using velmor::testing::CPlainMsVideo1;
using velmor::testing::CTempFolder;
using velmor::testing::DecodeMovie;

namespace {

struct CPicture {
    CPicture(int w, int h) : width(w), height(h), bytes(static_cast<std::size_t>(w * h * 3)) {}

    std::uint8_t* At(int x, int y) { return &bytes[static_cast<std::size_t>((y * width + x) * 3)]; }
    const std::uint8_t* At(int x, int y) const { return &bytes[static_cast<std::size_t>((y * width + x) * 3)]; }
    /// A colour of 5 bits a channel, spread to 8.
    void Set(int x, int y, int word) {
        for (int channel = 0; channel < 3; ++channel) {
            const int five = word >> 5 * channel & 31;
            At(x, y)[channel] = static_cast<std::uint8_t>(five << 3 | five >> 2);
        }
    }

    int width;
    int height;
    std::vector<std::uint8_t> bytes;
};

// The picture as FFmpeg decodes it.
CPicture RoundTrip(const CPicture& picture, int quality, ColorRef background = 0) {
    const CTempFolder folder;
    CAviWriter writer;
    EXPECT_TRUE(writer.Open(folder / "a.avi", {quality, 25, picture.width, picture.height, background}));
    EXPECT_TRUE(writer.WriteFrame(0, picture.bytes));
    EXPECT_TRUE(writer.Close());
    CPicture decoded(CodedWidthOf(picture.width), CodedHeightOf(picture.height));
    const auto movie = DecodeMovie(folder / "a.avi");
    if (!movie || movie->frames.size() != 1 || movie->frames[0].pixels.size() != decoded.bytes.size()) {
        ADD_FAILURE() << "the movie does not decode";
        return decoded;
    }
    decoded.bytes = movie->frames[0].pixels;
    return decoded;
}

double SquaredError(const CPicture& a, const CPicture& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        sum += (a.bytes[i] - b.bytes[i]) * (a.bytes[i] - b.bytes[i]);
    return sum;
}

CPicture MakeNoise(int width, int height) {
    CPicture picture(width, height);
    std::mt19937 random(5);
    for (std::uint8_t& value : picture.bytes)
        value = static_cast<std::uint8_t>(random());
    return picture;
}

// Soft gradients with smooth dark rings.
CPicture MakeDrawing(int width, int height) {
    CPicture picture(width, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const double ring = std::abs(std::hypot(x - width / 2.0, y - height / 2.0) - height / 3.0);
            const double paper = std::min(ring / 2, 1.0);
            picture.At(x, y)[0] = static_cast<std::uint8_t>(paper * (200 - x * 100.0 / width));
            picture.At(x, y)[1] = static_cast<std::uint8_t>(paper * (100 + y * 150.0 / height));
            picture.At(x, y)[2] = static_cast<std::uint8_t>(paper * (150 + x * 90.0 / width));
        }
    return picture;
}

// Error of the best two colours for the four pixels of a quarter, tried one division after the other.
double BestQuarterError(const CPicture& picture, int x, int y) {
    double best = std::numeric_limits<double>::max();
    for (int division = 0; division < 8; ++division) {
        double error = 0;
        for (const bool side : {false, true})
            for (int channel = 0; channel < 3; ++channel) {
                double sum = 0;
                double squares = 0;
                int count = 0;
                for (int pixel = 0; pixel < 4; ++pixel) {
                    if ((division >> pixel & 1) != static_cast<int>(side))
                        continue;
                    const int above = pixel / 2;
                    const double value = picture.At(x + pixel % 2, y + above)[channel];
                    sum += value;
                    squares += value * value;
                    ++count;
                }
                if (count > 0)
                    error += squares - sum * sum / count;
            }
        best = std::min(best, error);
    }
    return best;
}

double LeastError(const CPicture& picture) {
    double sum = 0;
    for (int y = 0; y < picture.height; y += 2)
        for (int x = 0; x < picture.width; x += 2)
            sum += BestQuarterError(picture, x, y);
    return sum;
}

// What rounding to 5 bits adds to a value on average: steps of 255 / 31, rounded evenly.
constexpr double roundingError = 255.0 / 31 * 255.0 / 31 / 12 + 0.5;

// Blocks of one colour each, of two, and of two a quarter: every colour of 15 bits in every place of the stream.
TEST(MsVideo1, KeepsEveryColorInEveryForm) {
    constexpr int blocksWide = 128;
    CPicture one(blocksWide * 4, 256 * 4);
    CPicture two = one;
    CPicture eight = one;
    for (int y = 0; y < one.height; ++y)
        for (int x = 0; x < one.width; ++x) {
            const int color = y / 4 * blocksWide + x / 4;
            const int corner = (x * 5 + y * 3 + color) % 7 < 3; // some pattern, other in each block
            const int quarter = (y % 4 / 2 * 2 + x % 4 / 2) * 1000;
            one.Set(x, y, color);
            two.Set(x, y, corner ? color : 0x7fff - color);
            eight.Set(x, y, (color + quarter + (corner ? 0 : 0x4210)) & 0x7fff);
        }
    for (const int quality : {0, 5000, 10000}) {
        EXPECT_EQ(RoundTrip(one, quality).bytes, one.bytes);
        EXPECT_EQ(RoundTrip(two, quality).bytes, two.bytes);
    }
    EXPECT_EQ(RoundTrip(eight, 10000).bytes, eight.bytes);
}

TEST(MsVideo1, RoundsFlatColorsToTheNearest) {
    CPicture grays(256 * 4, 4);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < grays.width; ++x)
            std::fill_n(grays.At(x, y), 3, static_cast<std::uint8_t>(x / 4));
    const CPicture decoded = RoundTrip(grays, 10000);
    for (std::size_t i = 0; i < grays.bytes.size(); ++i)
        ASSERT_LE(std::abs(grays.bytes[i] - decoded.bytes[i]), 4) << i;
}

TEST(MsVideo1, FindsTheBestColorsOfQuarters) {
    const CPicture noise = MakeNoise(64, 64);
    EXPECT_LE(SquaredError(noise, RoundTrip(noise, 10000)),
              LeastError(noise) + roundingError * static_cast<double>(noise.bytes.size()));
}

// Blocks that mix two colours with some grain must come out as these two, not as something between.
TEST(MsVideo1, FindsTheTwoColorsOfABlock) {
    std::mt19937 random(9);
    CPicture plain(256, 256);
    CPicture grainy = plain;
    for (int y = 0; y < 256; ++y)
        for (int x = 0; x < 256; ++x) {
            const unsigned block = static_cast<unsigned>(y / 4 * 64 + x / 4) * 2654435761u;
            const bool first = (block >> (y % 4 * 4 + x % 4) & 1) != 0;
            // Two colours as bright as each other, apart in any two channels.
            const int kept = static_cast<int>(block % 3);
            for (int channel = 0; channel < 3; ++channel) {
                const bool up = first == (channel == (kept + 1) % 3);
                const int apart = channel == kept ? 0 : up ? 50 : -50;
                const int color = 60 + static_cast<int>(block >> (8 + channel) & 127) + apart;
                plain.At(x, y)[channel] = static_cast<std::uint8_t>(color);
                grainy.At(x, y)[channel] = static_cast<std::uint8_t>(color + static_cast<int>(random() % 7) - 3);
            }
        }
    std::vector<std::uint8_t> encoded;
    EncodeMsVideo1(grainy.bytes, 256, 256, 5000, 0, encoded);
    EXPECT_LE(encoded.size(), 64u * 64 * 6);
    EXPECT_LE(SquaredError(plain, RoundTrip(grainy, 5000)) / static_cast<double>(plain.bytes.size()), 8);
}

TEST(MsVideo1, QualityTradesSizeForCloseness) {
    const CPicture drawing = MakeDrawing(256, 192);
    std::size_t lastSize = 0;
    double lastError = std::numeric_limits<double>::max();
    for (const int quality : {-5, 1000, 5000, 8000, 10000, 20000}) {
        std::vector<std::uint8_t> encoded;
        EncodeMsVideo1(drawing.bytes, drawing.width, drawing.height, quality, 0, encoded);
        const double error = SquaredError(drawing, RoundTrip(drawing, quality));
        EXPECT_GE(encoded.size(), lastSize) << quality;
        EXPECT_LE(error, lastError) << quality;
        if (quality == 10000) {
            EXPECT_GT(encoded.size(), lastSize);
            EXPECT_LT(error, lastError);
        }
        lastSize = encoded.size();
        lastError = error;
    }
    EXPECT_LE(lastError, LeastError(drawing) + roundingError * static_cast<double>(drawing.bytes.size()));
}

TEST(MsVideo1, CompletesOddSizesWithTheBackground) {
    for (const auto& [width, height] : {std::pair{52, 39}, {53, 41}, {1, 1}, {4, 6}, {7, 4}}) {
        CPicture picture(width, height);
        const int rowsBelow = CodedHeightOf(height) - height;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                picture.Set(x, y, (x / 4 + (y + rowsBelow) / 4) % 2 == 0 ? 0x7c00 : 0x03e0);
        const CPicture decoded = RoundTrip(picture, 10000, MakeColorRef(0, 0, 255));
        CPicture expected(decoded.width, decoded.height);
        for (int y = 0; y < decoded.height; ++y)
            for (int x = 0; x < decoded.width; ++x) {
                const int row = y - rowsBelow;
                expected.Set(x, y, 0x001f);
                if (row >= 0 && x < width)
                    std::copy_n(picture.At(x, row), 3, expected.At(x, y));
            }
        EXPECT_EQ(decoded.bytes, expected.bytes) << width << " x " << height;
    }
}

// Fills a block with colours of one of the kinds that the encoder tells apart.
void PaintBlock(CPicture& picture, int left, int bottom, std::mt19937& random) {
    const auto upTo = [&](int last) { return static_cast<int>(random() % static_cast<unsigned>(last + 1)); };
    const int kind = upTo(6);
    const int grain = kind == 0 ? 0 : upTo(3) == 0 ? upTo(255) : upTo(20);
    const int pattern = upTo(0xffff);
    for (int channel = 0; channel < 3; ++channel) {
        const int first = upTo(5) == 0 ? upTo(1) * 255 : upTo(255);
        const int second = kind < 2 ? first : upTo(255);
        const int slopeX = kind == 3 ? upTo(16) - 8 : 0;
        const int slopeY = kind == 3 ? upTo(16) - 8 : 0;
        for (int y = bottom; y < std::min(bottom + 4, picture.height); ++y)
            for (int x = left; x < std::min(left + 4, picture.width); ++x) {
                const bool isFirst = kind == 3 || (pattern >> (y - bottom) * 4 >> (x - left) & 1) != 0;
                int value = (isFirst ? first : second) + slopeX * (x - left) + slopeY * (y - bottom);
                if (kind != 2)
                    value += upTo(grain) - grain / 2;
                picture.At(x, y)[channel] = static_cast<std::uint8_t>(std::clamp(value, 0, 255));
            }
    }
}

class CEncoderOnTarget : public ::testing::TestWithParam<std::string_view> {
protected:
    void SetUp() override { UseKernelTarget(GetParam()); }
    void TearDown() override { UseKernelTarget(""); }

    static void ExpectPlainBytes(const CPicture& picture, int quality, ColorRef background = 0) {
        std::vector<std::uint8_t> encoded{1, 2, 3};
        EncodeMsVideo1(picture.bytes, picture.width, picture.height, quality, background, encoded);
        CPlainMsVideo1 plain(picture.bytes, picture.width, picture.height, quality, background);
        EXPECT_EQ(encoded, plain.Encode()) << picture.width << " x " << picture.height << ", quality " << quality;
    }
};

INSTANTIATE_TEST_SUITE_P(Targets, CEncoderOnTarget, ::testing::ValuesIn(KernelTargets()),
                         [](const auto& target) { return std::string(target.param); });

constexpr int qualities[] = {0, 500, 2000, 4000, 5000, 6500, 7500, 8500, 9300, 9700, 9900, 9999, 10000};

TEST_P(CEncoderOnTarget, WritesTheBytesOfThePlainEncoder) {
    std::mt19937 random(23);
    for (const int quality : qualities) {
        ExpectPlainBytes(MakeNoise(388, 20), quality);
        ExpectPlainBytes(MakeDrawing(260, 140), quality);
        CPicture blocks(640, 128);
        for (int y = 0; y < blocks.height; y += 4)
            for (int x = 0; x < blocks.width; x += 4)
                PaintBlock(blocks, x, y, random);
        ExpectPlainBytes(blocks, quality);
    }
}

// Few blocks of a kind, and rows that no vector fits into.
TEST_P(CEncoderOnTarget, WritesTheBytesOfThePlainEncoderInEverySize) {
    std::mt19937 random(29);
    for (int width = 1; width <= 140; width += width < 70 ? 1 : 7)
        for (const int height : {1, 4, 6, 11}) {
            CPicture blocks(width, height);
            for (int y = 0; y < height; y += 4)
                for (int x = 0; x < width; x += 4)
                    PaintBlock(blocks, x, y, random);
            ExpectPlainBytes(blocks, qualities[random() % std::size(qualities)], random() & 0xffffff);
        }
}

} // namespace
