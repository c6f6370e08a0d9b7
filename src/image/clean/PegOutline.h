#pragma once

#include "image/clean/Blobs.h"
#include "image/clean/DarkGrid.h"
#include "image/clean/Pegs.h"

#include <array>
#include <optional>
#include <vector>

namespace velmor {

/// Three holes as they may lie on a page, before their outlines have been looked at: where their row is, and which
/// regions they seem to be; none (-1) of a hole that has run together with something else.
struct CPegGuess {
    CPegs pegs;
    std::array<int, 3> regions{-1, -1, -1};
    bool areDark = false;
};

/// Lays the outlines of a slot, a round hole and a slot on those of a page, by least squares with Tukey's weights,
/// so that what is torn, dirty or drawn across counts for nothing. Sizes of the holes are found along with the
/// place, so the result does not depend on which standard it was, nor on how wide the threshold has made them.
class CPegOutline {
public:
    CPegOutline(const CDarkGrid& page, const CBlobs& blobs, const CPegGuess& guess);

    /// The pegs, unless too little of the outlines is there.
    std::optional<CPegs> Fit();

private:
    static constexpr std::size_t unknowns = 7;
    using Row = std::array<double, unknowns>;

    /// A point of the outlines and what moves it outward.
    struct CSample {
        std::size_t hole;
        double x, y; ///< on the page
        double outwardX, outwardY;
        Row slopes;     ///< by each unknown
        double off = 0; ///< how far outward the page's outline is
        bool isSeen = false;
    };

    std::vector<CSample> Sample() const;
    void AddSide(std::vector<CSample>& samples, std::size_t hole, bool isLong, int sign) const;
    void AddRound(std::vector<CSample>& samples) const;
    CSample SampleAt(std::size_t hole, double along, double across, double outAlong, double outAcross,
                     std::size_t size) const;
    void Look(CSample& sample, double reach) const;
    bool IsInside(std::size_t hole, double x, double y) const;
    void Improve(std::span<const CSample> samples, double spread);
    double ConfidenceOf(std::span<const CSample> samples) const;
    double SizeFit() const;

    const CDarkGrid& m_page;
    const CBlobs& m_blobs;
    CPegGuess m_guess;
};

} // namespace velmor
