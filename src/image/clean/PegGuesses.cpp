#include "image/clean/PegGuesses.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace velmor {

namespace {

constexpr std::size_t mostCandidates = 600; // of each kind
constexpr std::size_t mostGuesses = 48;
constexpr double leastSpacing = 80; // pixels; less is no scan
constexpr double leastPart = 0.18; // of the page's width, that the spacing is: what is punched is made for its pegs
constexpr double mostPart = 0.5;
constexpr double mostTurn = 15 * std::numbers::pi / 180;
constexpr double edgePart = 0.35;       // of the page's height, in which the row lies
constexpr double mostSizeMisfit = 0.32; // of logarithms
constexpr double mostSpacingMisfit = 0.08;
constexpr double mostSlotTurn = 0.12; // radians, of a slot against its row

// The sizes that all standards share, as parts of the spacing.
constexpr double slotLength = 0.121, slotWidth = 0.03125, round = 0.0625;
constexpr double slotElongation = slotLength / slotWidth;
constexpr double discLength = 0.8660; // the rectangle of a disc's moments, for a disc of 1

struct CCandidate {
    const CBlob* blob;
    double misfit; ///< of the shape
};

double Misfit(double size, double expected) {
    return std::abs(std::log(size / expected));
}

class CGuesses {
public:
    CGuesses(const CBlobs& blobs, CSize page, std::optional<double> spacing) : m_page(page), m_spacing(spacing) {
        for (const CBlob& blob : blobs.All())
            Sort(blob);
        for (std::vector<CCandidate>* candidates : {&m_slots, &m_rounds})
            Best(*candidates, mostCandidates);
    }

    std::vector<CPegGuess> All() {
        for (const CCandidate& left : m_slots)
            for (const CCandidate& right : m_slots)
                if (left.blob->x < right.blob->x)
                    PairSlots(left, right);
        for (const CCandidate& middle : m_rounds)
            for (const CCandidate& slot : m_slots)
                PairWithRound(middle, slot);
        FindThird();
        Best(m_guesses, mostGuesses);
        std::vector<CPegGuess> guesses;
        for (const CGuess& guess : m_guesses)
            guesses.push_back(guess.guess);
        return guesses;
    }

private:
    struct CGuess {
        CPegGuess guess;
        double misfit;
    };

    template<class T>
    static void Best(std::vector<T>& all, std::size_t most) {
        std::ranges::stable_sort(all, {}, &T::misfit);
        all.erase(all.begin() + static_cast<std::ptrdiff_t>(std::min(all.size(), most)), all.end());
    }

    void Sort(const CBlob& blob) {
        constexpr double leastArea = 8;
        const double part = blob.y / m_page.height;
        if (blob.area < leastArea || (part > edgePart && part < 1 - edgePart))
            return;
        const double elongation = blob.length / blob.width;
        const double filled = Misfit(blob.Fill(), 1.02);
        if (filled > 0.3)
            return;
        if (const double off = Misfit(elongation, slotElongation);
            off < 0.55 && std::abs(blob.angle) < 2 * mostTurn)
            m_slots.push_back({&blob, filled + off / 2});
        if (const double off = Misfit(elongation, 1); off < 0.4)
            m_rounds.push_back({&blob, filled + off / 2});
    }

    void PairSlots(const CCandidate& left, const CCandidate& right) {
        if (Misfit(left.blob->length, right.blob->length) > mostSizeMisfit)
            return;
        const double x = (left.blob->x + right.blob->x) / 2, y = (left.blob->y + right.blob->y) / 2;
        Add(x, y, right.blob->x - x, right.blob->y - y, {left.blob, nullptr, right.blob},
            left.misfit + right.misfit);
    }

    void PairWithRound(const CCandidate& middle, const CCandidate& slot) {
        const bool isLeft = slot.blob->x < middle.blob->x;
        const double sign = isLeft ? -1 : 1;
        Add(middle.blob->x, middle.blob->y, sign * (slot.blob->x - middle.blob->x),
            sign * (slot.blob->y - middle.blob->y),
            {isLeft ? slot.blob : nullptr, middle.blob, isLeft ? nullptr : slot.blob}, middle.misfit + slot.misfit);
    }

    // A row from its middle and the way to its right slot.
    void Add(double x, double y, double wayX, double wayY, const std::array<const CBlob*, 3>& holes,
             double misfit) {
        const double spacing = std::hypot(wayX, wayY);
        const double angle = std::atan2(wayY, wayX);
        if (spacing < leastSpacing || spacing < leastPart * m_page.width || spacing > mostPart * m_page.width ||
            std::abs(angle) > mostTurn || (m_spacing && Misfit(spacing, *m_spacing) > mostSpacingMisfit))
            return;
        CGuess guess{{}, misfit};
        bool isFirst = true;
        for (std::size_t i = 0; i < holes.size(); ++i) {
            const CBlob* const hole = holes[i];
            if (hole == nullptr)
                continue;
            const double off = i == 1 ? Misfit(hole->length, discLength * round * spacing)
                                      : Misfit(hole->length, slotLength * spacing);
            if (off > mostSizeMisfit || (i != 1 && std::abs(hole->angle - angle) > mostSlotTurn) ||
                (!isFirst && hole->isDark != guess.guess.areDark))
                return;
            isFirst = false;
            guess.guess.areDark = hole->isDark;
            guess.guess.regions[i] = hole->number;
            guess.misfit += off;
        }
        CPegs& pegs = guess.guess.pegs;
        pegs.x = x;
        pegs.y = y;
        pegs.degrees = angle * 180 / std::numbers::pi;
        pegs.spacing = spacing;
        pegs.slotLength = slotLength * spacing;
        pegs.slotWidth = slotWidth * spacing;
        pegs.round = round * spacing;
        m_guesses.push_back(guess);
    }

    // Looks for the hole that each guess lacks where it should be. One that has all three goes before the others.
    void FindThird() {
        constexpr double missing = 1;
        for (CGuess& guess : m_guesses)
            for (std::size_t i = 0; i < 3; ++i) {
                int& region = guess.guess.regions[i];
                if (region >= 0)
                    continue;
                const CPegs::CPlace place = guess.guess.pegs.Middles()[i];
                const double near = slotLength * guess.guess.pegs.spacing / 3;
                guess.misfit += missing;
                for (const CCandidate& hole : i == 1 ? m_rounds : m_slots)
                    if (const double off = std::hypot(hole.blob->x - place.x, hole.blob->y - place.y);
                        off < near && hole.blob->isDark == guess.guess.areDark) {
                        region = hole.blob->number;
                        guess.misfit += hole.misfit + off / near / 2 - missing;
                        break;
                    }
            }
    }

    CSize m_page;
    std::optional<double> m_spacing;
    std::vector<CCandidate> m_slots;
    std::vector<CCandidate> m_rounds;
    std::vector<CGuess> m_guesses;
};

} // namespace

std::vector<CPegGuess> GuessPegs(const CBlobs& blobs, CSize page, std::optional<double> spacing) {
    return CGuesses(blobs, page, spacing).All();
}

} // namespace velmor
