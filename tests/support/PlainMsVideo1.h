#pragma once

#include "image/Color.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <utility>
#include <vector>

// Microsoft Video 1 in its plainest form, one block after the other: what the encoder has to write to the byte.
// Sums of whole numbers are exact in any order, those of fractions are not: they stand in the order that counts.

namespace velmor::testing {

/// Blue, green, red.
using PlainPixel = std::array<int, 3>;
/// Row by row from below.
using PlainBlock = std::array<PlainPixel, 16>;
using PlainVector = std::array<float, 3>;

inline float PlainDot(const PlainVector& a, const PlainVector& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// Some of a block's pixels: how many, their sum, and bit `i` for pixel `i`.
struct CPlainGroup {
    int count = 0;
    PlainPixel sum{};
    int flags = 0;

    void Add(const PlainPixel& pixel, std::size_t i) {
        ++count;
        flags |= 1 << i;
        for (std::size_t channel = 0; channel < 3; ++channel)
            sum[channel] += pixel[channel];
    }
    CPlainGroup RestOf(const CPlainGroup& whole) const {
        CPlainGroup rest{whole.count - count, {}, whole.flags ^ flags};
        for (std::size_t channel = 0; channel < 3; ++channel)
            rest.sum[channel] = whole.sum[channel] - sum[channel];
        return rest;
    }
    PlainVector Mean() const {
        const float scale = 1.0f / static_cast<float>(count);
        return {static_cast<float>(sum[0]) * scale, static_cast<float>(sum[1]) * scale,
                static_cast<float>(sum[2]) * scale};
    }
    /// The mean in 5 bits a channel.
    int Word() const {
        const float scale = 31.0f / 255.0f / static_cast<float>(count);
        int word = 0;
        for (std::size_t channel = 0; channel < 3; ++channel)
            word |= static_cast<int>(static_cast<float>(sum[channel]) * scale + 0.5f) << 5 * channel;
        return word;
    }
};

class CPlainBlockFit {
public:
    explicit CPlainBlockFit(const PlainBlock& pixels) : m_pixels(pixels) {
        for (std::size_t i = 0; i < 16; ++i)
            m_whole.Add(pixels[i], i);
        for (std::size_t a = 0; a < 3; ++a)
            for (std::size_t b = 0; b < 3; ++b) {
                int products = 0;
                for (const PlainPixel& pixel : pixels)
                    products += pixel[a] * pixel[b];
                m_covariance[a][b] = static_cast<float>(16 * products - m_whole.sum[a] * m_whole.sum[b]);
            }
    }

    float ErrorOfOneColor() const { return m_covariance[0][0] + m_covariance[1][1] + m_covariance[2][2]; }

    float LeastErrorOfTwoColors() const {
        const auto square = [&](std::size_t a, std::size_t b) { return m_covariance[a][b] * m_covariance[a][b]; };
        return ErrorOfOneColor() - std::sqrt(square(0, 0) + square(1, 1) + square(2, 2) +
                                             2 * (square(0, 1) + square(0, 2) + square(1, 2)));
    }

    int OneColor() const { return m_whole.Word(); }

    struct CTwo {
        int first;
        int second;
        int flags;
        float error;
    };

    CTwo TwoColors() const {
        const PlainVector axis = PrincipalAxis();
        CPlainGroup group = Beyond(axis, PlainDot(VectorOf(m_whole.sum), axis) / 16);
        for (int step = 0; step < 2 && IsDivision(group); ++step)
            group = Refined(group);
        if (!IsDivision(group))
            return {OneColor(), OneColor(), 1, ErrorOfOneColor()};
        CPlainGroup rest = group.RestOf(m_whole);
        if (group.flags & 0x8000)
            std::swap(group, rest);
        return {group.Word(), rest.Word(), group.flags, ErrorOfOneColor() - GainOf(group)};
    }

    /// Flags, then the colours.
    std::array<int, 9> EightColors() const {
        std::array<int, 9> words{};
        for (int quarter = 0; quarter < 4; ++quarter) {
            const CPlainGroup all = PartOfQuarter(quarter, 15);
            CPlainGroup best;
            int bestScore = -1;
            for (int mask = 1; mask < 8; ++mask) {
                const CPlainGroup part = PartOfQuarter(quarter, mask);
                int score = 0;
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    const int gap = 4 * part.sum[channel] - part.count * all.sum[channel];
                    score += (part.count == 2 ? 3 : 4) * gap * gap;
                }
                if (score > bestScore) {
                    bestScore = score;
                    best = part;
                }
            }
            words[0] |= best.flags;
            words[static_cast<std::size_t>(1 + 2 * quarter)] = best.Word();
            words[static_cast<std::size_t>(2 + 2 * quarter)] = best.RestOf(all).Word();
        }
        return words;
    }

private:
    static PlainVector VectorOf(const PlainPixel& pixel) {
        return {static_cast<float>(pixel[0]), static_cast<float>(pixel[1]), static_cast<float>(pixel[2])};
    }

    static bool IsDivision(const CPlainGroup& group) { return group.count > 0 && group.count < 16; }

    PlainVector Multiplied(const PlainVector& v) const {
        return {PlainDot(m_covariance[0], v), PlainDot(m_covariance[1], v), PlainDot(m_covariance[2], v)};
    }

    PlainVector PrincipalAxis() const {
        const float blue = m_covariance[0][0];
        const float green = m_covariance[1][1];
        const float red = m_covariance[2][2];
        PlainVector start{0, 0, 1};
        if (green >= red && green >= blue)
            start = {0, 1, 0};
        else if (blue >= red)
            start = {1, 0, 0};
        return Multiplied(Multiplied(start));
    }

    CPlainGroup Beyond(const PlainVector& axis, float threshold) const {
        CPlainGroup group;
        for (std::size_t i = 0; i < 16; ++i)
            if (PlainDot(VectorOf(m_pixels[i]), axis) > threshold)
                group.Add(m_pixels[i], i);
        return group;
    }

    CPlainGroup Refined(const CPlainGroup& group) const {
        const PlainVector first = group.Mean();
        const PlainVector second = group.RestOf(m_whole).Mean();
        PlainVector axis;
        PlainVector middle;
        for (std::size_t channel = 0; channel < 3; ++channel) {
            axis[channel] = first[channel] - second[channel];
            middle[channel] = (first[channel] + second[channel]) * 0.5f;
        }
        return Beyond(axis, PlainDot(middle, axis));
    }

    float GainOf(const CPlainGroup& group) const {
        PlainPixel gap;
        for (std::size_t channel = 0; channel < 3; ++channel)
            gap[channel] = 16 * group.sum[channel] - group.count * m_whole.sum[channel];
        return PlainDot(VectorOf(gap), VectorOf(gap)) / static_cast<float>(group.count * (16 - group.count));
    }

    /// Bit 2 y + x of `mask` takes pixel (x, y) of the quarter.
    CPlainGroup PartOfQuarter(int quarter, int mask) const {
        CPlainGroup part;
        for (int pixel = 0; pixel < 4; ++pixel)
            if (mask >> pixel & 1) {
                const int x = quarter % 2 * 2 + pixel % 2;
                const int y = quarter / 2 * 2 + pixel / 2;
                const auto i = static_cast<std::size_t>(y * 4 + x);
                part.Add(m_pixels[i], i);
            }
        return part;
    }

    PlainBlock m_pixels;
    CPlainGroup m_whole;
    std::array<PlainVector, 3> m_covariance{};
};

class CPlainMsVideo1 {
public:
    CPlainMsVideo1(std::span<const std::uint8_t> frame, int width, int height, int quality, ColorRef background)
        : m_frame(frame), m_width(width), m_height(height), m_background(background) {
        const float loss = 1.0f - static_cast<float>(std::clamp(quality, 0, 10000)) / 10000.0f;
        const float distance = 48 * loss * loss;
        m_twoColors = 256 * distance * distance;
        m_oneColor = m_twoColors / 16;
    }

    std::vector<std::uint8_t> Encode() {
        m_bytes.clear();
        for (int y = m_height - (m_height + 3) / 4 * 4; y < m_height; y += 4)
            for (int x = 0; x < m_width; x += 4)
                EncodeBlock(BlockAt(x, y));
        return m_bytes;
    }

private:
    PlainBlock BlockAt(int left, int bottom) const {
        PlainBlock block;
        for (int i = 0; i < 16; ++i) {
            const int x = left + i % 4;
            const int y = bottom + i / 4;
            PlainPixel& pixel = block[static_cast<std::size_t>(i)];
            pixel = {BlueOf(m_background), GreenOf(m_background), RedOf(m_background)};
            if (x < m_width && y >= 0)
                std::copy_n(&m_frame[static_cast<std::size_t>(y * m_width + x) * 3], 3, pixel.begin());
        }
        return block;
    }

    static int ReducedWord(const PlainPixel& pixel) {
        int word = 0;
        for (std::size_t channel = 0; channel < 3; ++channel)
            word |= (pixel[channel] * 31 * 2 + 255) / 510 << 5 * channel;
        return word;
    }

    void EncodeBlock(const PlainBlock& block) {
        std::array<int, 16> words;
        std::ranges::transform(block, words.begin(), ReducedWord);
        const int second = words.back();
        const auto different = std::ranges::find_if(words, [&](int word) { return word != second; });
        if (different == words.end())
            return PutOneColor(second);
        const int first = *different;
        if (std::ranges::all_of(words, [&](int word) { return word == first || word == second; })) {
            int flags = 0;
            for (std::size_t i = 0; i < 16; ++i)
                flags |= words[i] == first ? 1 << i : 0;
            return Put({flags, first, second});
        }
        EncodeManyColors(CPlainBlockFit(block));
    }

    void EncodeManyColors(const CPlainBlockFit& fit) {
        if (m_twoColors > 0) {
            if (fit.ErrorOfOneColor() <= m_oneColor)
                return PutOneColor(fit.OneColor());
            if (fit.LeastErrorOfTwoColors() <= m_twoColors) {
                const CPlainBlockFit::CTwo two = fit.TwoColors();
                if (two.error <= m_twoColors)
                    return Put({two.flags, two.first, two.second});
            }
        }
        std::array<int, 9> words = fit.EightColors();
        words[1] |= 0x8000;
        for (const int word : words)
            Put({word});
    }

    void PutOneColor(int color) {
        if ((color & 0x7c00) == 0x0400) // would skip blocks
            Put({1, color, color});
        else
            Put({color | 0x8000});
    }

    void Put(std::initializer_list<int> words) {
        for (const int word : words) {
            m_bytes.push_back(static_cast<std::uint8_t>(word));
            m_bytes.push_back(static_cast<std::uint8_t>(word >> 8));
        }
    }

    std::span<const std::uint8_t> m_frame;
    int m_width;
    int m_height;
    ColorRef m_background;
    float m_oneColor = 0;
    float m_twoColors = 0;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace velmor::testing
