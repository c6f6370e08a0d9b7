#include "image/clean/PegOutline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velmor {

namespace {

// The unknowns, in units of a pixel: the row's place along and across itself, its turn as the way of the slots'
// middles, the spacing, and half the sizes of the holes.
enum : std::size_t { Along, Across, Turn, Spacing, HalfLength, HalfWidth, Radius };

constexpr int rounds = 12;
constexpr double radiansPerDegree = std::numbers::pi / 180;
constexpr std::size_t roundHole = 1;

/// Solves for what the matrix times it is the vector; the matrix is symmetric and positive.
template<std::size_t N>
std::array<double, N> Solved(std::array<std::array<double, N>, N> matrix, std::array<double, N> vector) {
    for (std::size_t pivot = 0; pivot < N; ++pivot)
        for (std::size_t row = pivot + 1; row < N; ++row) {
            const double factor = matrix[row][pivot] / matrix[pivot][pivot];
            for (std::size_t column = pivot; column < N; ++column)
                matrix[row][column] -= factor * matrix[pivot][column];
            vector[row] -= factor * vector[pivot];
        }
    for (std::size_t row = N; row-- > 0;) {
        for (std::size_t column = row + 1; column < N; ++column)
            vector[row] -= matrix[row][column] * vector[column];
        vector[row] /= matrix[row][row];
    }
    return vector;
}

double TukeyWeight(double off, double spread) {
    const double part = off / spread;
    return std::abs(part) < 1 ? (1 - part * part) * (1 - part * part) : 0;
}

} // namespace

CPegOutline::CPegOutline(const CDarkGrid& page, const CBlobs& blobs, const CPegGuess& guess)
    : m_page(page), m_blobs(blobs), m_guess(guess) {}

std::optional<CPegs> CPegOutline::Fit() {
    const double widest = 0.45 * m_guess.pegs.slotWidth; // or a look inward would see the other side
    double reach = std::max(widest, 2.5);
    std::vector<CSample> samples;
    for (int round = 0; round < rounds; ++round) {
        samples = Sample();
        for (CSample& sample : samples)
            Look(sample, reach);
        Improve(samples, round < rounds / 2 ? 1.5 * reach : 2);
        reach = std::max(0.75 * reach, std::min(widest, 3.0));
        const CPegs& pegs = m_guess.pegs;
        if (!(pegs.slotWidth > 2 && pegs.slotLength > pegs.slotWidth && pegs.round > 2 &&
              pegs.spacing > pegs.round))
            return std::nullopt;
    }
    m_guess.pegs.confidence = ConfidenceOf(samples);
    return m_guess.pegs.confidence > 0 ? std::optional(m_guess.pegs) : std::nullopt;
}

std::vector<CPegOutline::CSample> CPegOutline::Sample() const {
    std::vector<CSample> samples;
    for (const std::size_t hole : {std::size_t{0}, std::size_t{2}})
        for (const bool isLong : {true, false})
            for (const int sign : {-1, 1})
                AddSide(samples, hole, isLong, sign);
    AddRound(samples);
    return samples;
}

// The straight part of a side: slots may be rounded at their ends.
void CPegOutline::AddSide(std::vector<CSample>& samples, std::size_t hole, bool isLong, int sign) const {
    const CPegs& pegs = m_guess.pegs;
    const double half = isLong ? pegs.slotLength / 2 - pegs.slotWidth / 2 : pegs.slotWidth / 4;
    const double middle = hole == 0 ? -pegs.spacing : pegs.spacing;
    const int count = std::clamp(static_cast<int>(2 * half), 3, 300);
    for (int i = 0; i < count; ++i) {
        const double place = half * (2.0 * i / (count - 1) - 1);
        if (isLong)
            samples.push_back(SampleAt(hole, middle + place, sign * pegs.slotWidth / 2, 0, sign, HalfWidth));
        else
            samples.push_back(SampleAt(hole, middle + sign * pegs.slotLength / 2, place, sign, 0, HalfLength));
    }
}

void CPegOutline::AddRound(std::vector<CSample>& samples) const {
    const double radius = m_guess.pegs.round / 2;
    const int count = std::clamp(static_cast<int>(2 * std::numbers::pi * radius), 8, 400);
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * std::numbers::pi * i / count;
        const double cosine = std::cos(angle), sine = std::sin(angle);
        samples.push_back(SampleAt(roundHole, radius * cosine, radius * sine, cosine, sine, Radius));
    }
}

// `along` and `across` are from the middle of the row.
CPegOutline::CSample CPegOutline::SampleAt(std::size_t hole, double along, double across, double outAlong,
                                           double outAcross, std::size_t size) const {
    const CPegs& pegs = m_guess.pegs;
    const double cosine = std::cos(pegs.degrees * radiansPerDegree);
    const double sine = std::sin(pegs.degrees * radiansPerDegree);
    CSample sample{};
    sample.hole = hole;
    sample.x = pegs.x + along * cosine - across * sine;
    sample.y = pegs.y + along * sine + across * cosine;
    sample.outwardX = outAlong * cosine - outAcross * sine;
    sample.outwardY = outAlong * sine + outAcross * cosine;
    sample.slopes[Along] = outAlong;
    sample.slopes[Across] = outAcross;
    sample.slopes[Turn] = (outAcross * along - outAlong * across) / pegs.spacing;
    sample.slopes[Spacing] = hole == roundHole ? 0 : hole == 0 ? -outAlong : outAlong;
    sample.slopes[size] = 1;
    return sample;
}

bool CPegOutline::IsInside(std::size_t hole, double x, double y) const {
    const int column = static_cast<int>(std::lround(x));
    const int row = static_cast<int>(std::lround(y));
    const CSize size = m_page.Size();
    if (column < 0 || row < 0 || column >= size.width || row >= size.height)
        return false;
    const int region = m_guess.regions[hole];
    return region < 0 ? m_page.IsDark(column, row) == m_guess.areDark : m_blobs.NumberAt(column, row) == region;
}

// Where the hole ends along the way outward: at the step that agrees with most of what is seen along it.
void CPegOutline::Look(CSample& sample, double reach) const {
    constexpr double step = 0.5;
    const int half = static_cast<int>(reach / step);
    std::array<bool, 512> inside{};
    const int count = std::min(2 * half + 1, static_cast<int>(inside.size()));
    int agreeing = 0; // with a step before the first place: all are outside
    for (int i = 0; i < count; ++i) {
        const double way = (i - half) * step;
        const bool is = IsInside(sample.hole, sample.x + way * sample.outwardX, sample.y + way * sample.outwardY);
        inside[static_cast<std::size_t>(i)] = is;
        agreeing += is ? 0 : 1;
    }
    int best = -1, firstBest = 0, lastBest = 0;
    for (int i = 0; i < count; ++i) {
        agreeing += inside[static_cast<std::size_t>(i)] ? 1 : -1; // with a step behind this place
        if (agreeing > best)
            best = agreeing, firstBest = i;
        if (agreeing == best)
            lastBest = i;
    }
    const bool isClear = lastBest == firstBest && firstBest > 0 && lastBest < count - 2;
    sample.isSeen = isClear && best >= 0.8 * count;
    sample.off = (firstBest - half + 0.5) * step;
}

void CPegOutline::Improve(std::span<const CSample> samples, double spread) {
    std::array<Row, unknowns> matrix{};
    Row vector{};
    for (std::size_t i = 0; i < unknowns; ++i)
        matrix[i][i] = 1e-3; // what nothing is seen of stays
    for (const CSample& sample : samples) {
        if (!sample.isSeen)
            continue;
        const double weight = TukeyWeight(sample.off, spread);
        for (std::size_t i = 0; i < unknowns; ++i) {
            for (std::size_t j = 0; j < unknowns; ++j)
                matrix[i][j] += weight * sample.slopes[i] * sample.slopes[j];
            vector[i] += weight * sample.slopes[i] * sample.off;
        }
    }
    const Row change = Solved(matrix, vector);
    CPegs& pegs = m_guess.pegs;
    const double cosine = std::cos(pegs.degrees * radiansPerDegree);
    const double sine = std::sin(pegs.degrees * radiansPerDegree);
    pegs.x += change[Along] * cosine - change[Across] * sine;
    pegs.y += change[Along] * sine + change[Across] * cosine;
    pegs.degrees += change[Turn] / pegs.spacing / radiansPerDegree;
    pegs.spacing += change[Spacing];
    pegs.slotLength += 2 * change[HalfLength];
    pegs.slotWidth += 2 * change[HalfWidth];
    pegs.round += 2 * change[Radius];
}

// How much of the outlines is there, and how near the sizes are to what they should be. 0 for too little.
double CPegOutline::ConfidenceOf(std::span<const CSample> samples) const {
    const CPegs& pegs = m_guess.pegs;
    const double close = std::clamp(0.07 * pegs.slotWidth, 0.75, 3.0);
    std::array<double, 3> there{}, all{};
    for (const CSample& sample : samples) {
        all[sample.hole] += 1;
        if (sample.isSeen && std::abs(sample.off) <= close)
            there[sample.hole] += 1;
    }
    double sum = 0, least = 1;
    for (std::size_t hole = 0; hole < 3; ++hole) {
        sum += there[hole] / all[hole];
        least = std::min(least, there[hole] / all[hole]);
    }
    constexpr double leastSeen = 0.7, leastOfOne = 0.35, leastFit = 0.3;
    const double fit = SizeFit();
    return sum / 3 < leastSeen || least < leastOfOne || fit < leastFit ? 0 : sum / 3 * fit;
}

// 1 for the sizes of a standard, less the further they are from it. Thresholds widen and narrow slots.
double CPegOutline::SizeFit() const {
    const CPegs& pegs = m_guess.pegs;
    const CPegStandard& usual = PegStandards().front();
    const auto misfit = [&](double size, double inches, double tolerance) {
        return std::log(size / pegs.spacing * usual.slotSpacingInches / inches) / tolerance;
    };
    const double length = misfit(pegs.slotLength, usual.slotLengthInches, 0.2);
    const double width = misfit(pegs.slotWidth, usual.slotWidthInches, 0.35);
    const double round = misfit(pegs.round, usual.roundInches, 0.2);
    return std::exp(-(length * length + width * width + round * round) / 2);
}

} // namespace velmor
