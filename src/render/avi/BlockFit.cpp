#include "render/avi/BlockFit.h"

#include "render/avi/WideRegisters.h"

#include <cmath>
#include <utility>

namespace velmor {

namespace {

constexpr int pixelCount = 16;
constexpr float fiveBits = 31.0f / 255.0f;

Word WordOfMean(float blueSum, float greenSum, float redSum, float count) {
    constexpr float half = 0.5f; // no sum is negative
    const float scale = fiveBits / count;
    const int blue = static_cast<int>(blueSum * scale + half);
    const int green = static_cast<int>(greenSum * scale + half);
    const int red = static_cast<int>(redSum * scale + half);
    return static_cast<Word>(red << 10 | green << 5 | blue);
}

struct CVector {
    float blue = 0;
    float green = 0;
    float red = 0;
};

constexpr float Dot(const CVector& a, const CVector& b) {
    return a.blue * b.blue + a.green * b.green + a.red * b.red;
}

CVector Multiply(const CBlockStatistics& s, const CVector& v) {
    const auto real = [](int value) { return static_cast<float>(value); };
    return {Dot({real(s.blueBlue), real(s.blueGreen), real(s.blueRed)}, v),
            Dot({real(s.blueGreen), real(s.greenGreen), real(s.greenRed)}, v),
            Dot({real(s.blueRed), real(s.greenRed), real(s.redRed)}, v)};
}

// Direction in which the pixels differ most: two steps of the power method on their covariance, starting from the
// channel that varies most.
CVector PrincipalAxis(const CBlockStatistics& s) {
    CVector start{0, 0, 1};
    if (s.greenGreen >= s.redRed && s.greenGreen >= s.blueBlue)
        start = {0, 1, 0};
    else if (s.blueBlue >= s.redRed)
        start = {1, 0, 0};
    return Multiply(s, Multiply(s, start));
}

// The pixels on the far side of a plane.
struct CGroup {
    int count = 0;
    int blueSum = 0;
    int greenSum = 0;
    int redSum = 0;
    int flags = 0;
};

// Bit y x 4 + x of each pixel in the order of CBlockPixels.
constexpr std::array<int, pixelCount> flagBits = [] {
    std::array<int, pixelCount> bits{};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x)
            bits[static_cast<std::size_t>(BlockIndexOf(x, y))] = 1 << (y * 4 + x);
    return bits;
}();

inline CGroup Beyond(const CBlockPixels& pixels, const CVector& axis, float threshold) {
    CGroup group;
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const float place = static_cast<float>(pixels.blue[i]) * axis.blue +
                            static_cast<float>(pixels.green[i]) * axis.green +
                            static_cast<float>(pixels.red[i]) * axis.red;
        const int mask = place > threshold ? -1 : 0;
        group.count -= mask;
        group.blueSum += pixels.blue[i] & mask;
        group.greenSum += pixels.green[i] & mask;
        group.redSum += pixels.red[i] & mask;
        group.flags |= flagBits[i] & mask;
    }
    return group;
}

CVector MeanOf(const CGroup& group) {
    const float scale = 1.0f / static_cast<float>(group.count);
    return {static_cast<float>(group.blueSum) * scale, static_cast<float>(group.greenSum) * scale,
            static_cast<float>(group.redSum) * scale};
}

CGroup Complement(const CGroup& group, const CBlockStatistics& s) {
    return {pixelCount - group.count, s.blueSum - group.blueSum, s.greenSum - group.greenSum,
            s.redSum - group.redSum, group.flags ^ 0xffff};
}

bool IsDivision(const CGroup& group) {
    return group.count > 0 && group.count < pixelCount;
}

// Every pixel to the nearer of the two mean colours.
inline CGroup Refine(const CBlockPixels& pixels, const CBlockStatistics& statistics, const CGroup& group) {
    const CVector first = MeanOf(group);
    const CVector second = MeanOf(Complement(group, statistics));
    const CVector axis{first.blue - second.blue, first.green - second.green, first.red - second.red};
    const CVector middle{(first.blue + second.blue) * 0.5f, (first.green + second.green) * 0.5f,
                         (first.red + second.red) * 0.5f};
    return Beyond(pixels, axis, Dot(middle, axis));
}

// What dividing the block takes off the error of one colour.
float GainOf(const CGroup& group, const CBlockStatistics& s) {
    const auto difference = [&](int part, int whole) {
        return static_cast<float>(pixelCount * part - group.count * whole);
    };
    const CVector d{difference(group.blueSum, s.blueSum), difference(group.greenSum, s.greenSum),
                    difference(group.redSum, s.redSum)};
    return Dot(d, d) / static_cast<float>(group.count * (pixelCount - group.count));
}

Word WordOf(const CGroup& group) {
    return WordOfMean(static_cast<float>(group.blueSum), static_cast<float>(group.greenSum),
                      static_cast<float>(group.redSum), static_cast<float>(group.count));
}

using Quarters = std::array<int, 4>;

// The best division found so far, of each quarter.
struct CDivisions {
    Quarters score{-1, -1, -1, -1};
    Quarters mask{};
    Quarters count{};
    Quarters blueSum{};
    Quarters greenSum{};
    Quarters redSum{};
};

template<int mask>
inline int PartOf(const std::array<int, pixelCount>& channel, std::size_t q) {
    return (mask & 1 ? channel[q] : 0) + (mask & 2 ? channel[4 + q] : 0) + (mask & 4 ? channel[8 + q] : 0);
}

// Pixels in `mask` (of the first three) against the rest. The score is the error that the division takes off, to a
// common scale.
template<int mask>
inline void TryDivision(const CBlockPixels& pixels, const CBlockPixels& totals, CDivisions& best) {
    constexpr int count = (mask & 1) + (mask >> 1 & 1) + (mask >> 2);
    constexpr int weight = count == 2 ? 3 : 4;
    for (std::size_t q = 0; q < 4; ++q) {
        const int blue = PartOf<mask>(pixels.blue, q);
        const int green = PartOf<mask>(pixels.green, q);
        const int red = PartOf<mask>(pixels.red, q);
        const int blueGap = 4 * blue - count * totals.blue[q];
        const int greenGap = 4 * green - count * totals.green[q];
        const int redGap = 4 * red - count * totals.red[q];
        const int score = weight * (blueGap * blueGap + greenGap * greenGap + redGap * redGap);
        const bool better = score > best.score[q];
        best.score[q] = better ? score : best.score[q];
        best.mask[q] = better ? mask : best.mask[q];
        best.count[q] = better ? count : best.count[q];
        best.blueSum[q] = better ? blue : best.blueSum[q];
        best.greenSum[q] = better ? green : best.greenSum[q];
        best.redSum[q] = better ? red : best.redSum[q];
    }
}

// The sums of the quarters, in the first four places.
inline CBlockPixels TotalsOf(const CBlockPixels& pixels) {
    CBlockPixels totals;
    for (std::size_t q = 0; q < 4; ++q) {
        totals.blue[q] = PartOf<7>(pixels.blue, q) + pixels.blue[12 + q];
        totals.green[q] = PartOf<7>(pixels.green, q) + pixels.green[12 + q];
        totals.red[q] = PartOf<7>(pixels.red, q) + pixels.red[12 + q];
    }
    return totals;
}

inline CEightColors ColorsOf(const CDivisions& divisions, const CBlockPixels& totals) {
    Quarters first;
    Quarters second;
    for (std::size_t q = 0; q < 4; ++q) {
        const int count = divisions.count[q];
        first[q] = WordOfMean(static_cast<float>(divisions.blueSum[q]), static_cast<float>(divisions.greenSum[q]),
                              static_cast<float>(divisions.redSum[q]), static_cast<float>(count));
        second[q] =
            WordOfMean(static_cast<float>(totals.blue[q] - divisions.blueSum[q]),
                       static_cast<float>(totals.green[q] - divisions.greenSum[q]),
                       static_cast<float>(totals.red[q] - divisions.redSum[q]), static_cast<float>(4 - count));
    }
    CEightColors fit;
    int flags = 0;
    for (std::size_t q = 0; q < 4; ++q) {
        fit.colors[2 * q] = static_cast<Word>(first[q]);
        fit.colors[2 * q + 1] = static_cast<Word>(second[q]);
        const int rows = (divisions.mask[q] & 3) | (divisions.mask[q] & 4) << 2;
        flags |= rows << ((q >> 1) * 8 + (q & 1) * 2);
    }
    fit.flags = static_cast<std::uint16_t>(flags);
    return fit;
}

} // namespace

float CBlockStatistics::LeastErrorOfTwoColors() const {
    const auto square = [](int value) { return static_cast<float>(value) * static_cast<float>(value); };
    const float norm = std::sqrt(square(blueBlue) + square(greenGreen) + square(redRed) +
                                 2 * (square(blueGreen) + square(blueRed) + square(greenRed)));
    return static_cast<float>(ErrorOfOneColor()) - norm;
}

VELMOR_FOR_WIDE_REGISTERS CBlockStatistics MeasureBlock(const CBlockPixels& pixels) {
    CBlockStatistics s;
    for (std::size_t i = 0; i < pixelCount; ++i) {
        const int blue = pixels.blue[i];
        const int green = pixels.green[i];
        const int red = pixels.red[i];
        s.blueSum += blue;
        s.greenSum += green;
        s.redSum += red;
        s.blueBlue += blue * blue;
        s.greenGreen += green * green;
        s.redRed += red * red;
        s.blueGreen += blue * green;
        s.blueRed += blue * red;
        s.greenRed += green * red;
    }
    s.blueBlue = pixelCount * s.blueBlue - s.blueSum * s.blueSum;
    s.greenGreen = pixelCount * s.greenGreen - s.greenSum * s.greenSum;
    s.redRed = pixelCount * s.redRed - s.redSum * s.redSum;
    s.blueGreen = pixelCount * s.blueGreen - s.blueSum * s.greenSum;
    s.blueRed = pixelCount * s.blueRed - s.blueSum * s.redSum;
    s.greenRed = pixelCount * s.greenRed - s.greenSum * s.redSum;
    return s;
}

Word FitOneColor(const CBlockStatistics& statistics) {
    return WordOf({pixelCount, statistics.blueSum, statistics.greenSum, statistics.redSum, 0xffff});
}

VELMOR_FOR_WIDE_REGISTERS CTwoColors FitTwoColors(const CBlockPixels& pixels, const CBlockStatistics& statistics) {
    const auto errorOfOne = static_cast<float>(statistics.ErrorOfOneColor());
    const CVector axis = PrincipalAxis(statistics);
    const CVector sums{static_cast<float>(statistics.blueSum), static_cast<float>(statistics.greenSum),
                       static_cast<float>(statistics.redSum)};
    CGroup group = Beyond(pixels, axis, Dot(sums, axis) / pixelCount);
    for (int step = 0; step < 2 && IsDivision(group); ++step)
        group = Refine(pixels, statistics, group);
    if (!IsDivision(group)) {
        const Word color = FitOneColor(statistics);
        return {color, color, 1, errorOfOne};
    }
    CGroup rest = Complement(group, statistics);
    if (group.flags & 1 << (pixelCount - 1))
        std::swap(group, rest);
    return {WordOf(group), WordOf(rest), static_cast<std::uint16_t>(group.flags),
            errorOfOne - GainOf(group, statistics)};
}

VELMOR_FOR_WIDE_REGISTERS CEightColors FitEightColors(const CBlockPixels& pixels) {
    const CBlockPixels totals = TotalsOf(pixels);
    CDivisions best;
    TryDivision<1>(pixels, totals, best);
    TryDivision<2>(pixels, totals, best);
    TryDivision<3>(pixels, totals, best);
    TryDivision<4>(pixels, totals, best);
    TryDivision<5>(pixels, totals, best);
    TryDivision<6>(pixels, totals, best);
    TryDivision<7>(pixels, totals, best);
    return ColorsOf(best, totals);
}

} // namespace velmor
